// End to end over GigE Vision: Aravis's simulated network camera on the loopback interface, written
// through the tree and read back with Aravis's command line tool, then stopped and started again
// while the GUI thread's event loop is watched for stalls.
#include "genicam/GenicamTestSupport.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <fcntl.h>
#include <iostream>
#include <sys/file.h>
#include <unistd.h>

using namespace vorn::test;

namespace {

const char* const kCameraTool = "arv-fake-gv-camera-0.8";
const char* const kControlTool = "arv-tool-0.8";
const char* const kAddress = "127.0.0.1";
// The camera never outlives this, even if the test process dies without cleaning up.
const int kCameraLifetimeSeconds = 120;

// The camera listens on the loopback's GigE Vision port, which only one camera can hold: test runs
// on the same machine take turns.
class LoopbackPortLock
{
public:
    bool acquire(int timeoutMs)
    {
        m_fd = ::open("/tmp/vorn-genicam-gv-loopback.lock", O_CREAT | O_RDWR, 0666);
        if (m_fd < 0)
            return false;
        QElapsedTimer waited;
        waited.start();
        while (::flock(m_fd, LOCK_EX | LOCK_NB) != 0) {
            if (waited.elapsed() > timeoutMs)
                return false;
            QTest::qWait(100);
        }
        return true;
    }
    ~LoopbackPortLock()
    {
        if (m_fd >= 0)
            ::close(m_fd); // releases the lock
    }

private:
    int m_fd = -1;
};

// One simulated GigE Vision camera process with its own serial number, stopped by its process id.
class FakeGvCamera
{
public:
    explicit FakeGvCamera(const QString& serial) : m_serial(serial) {}
    ~FakeGvCamera() { stop(); }

    bool start()
    {
        stop();
        m_process.reset(new QProcess());
        m_process->setProcessChannelMode(QProcess::MergedChannels);
        m_process->start(QStringLiteral("timeout"),
                         {QStringLiteral("--signal=TERM"), QString::number(kCameraLifetimeSeconds),
                          QString::fromLatin1(kCameraTool), QStringLiteral("-i"),
                          QString::fromLatin1(kAddress), QStringLiteral("-s"), m_serial});
        return m_process->waitForStarted(5000);
    }

    void stop()
    {
        if (!m_process)
            return;
        const qint64 pid = m_process->processId();
        if (pid > 0 && m_process->state() != QProcess::NotRunning) {
            ::kill(static_cast<pid_t>(pid), SIGTERM);
            if (!m_process->waitForFinished(3000)) {
                ::kill(static_cast<pid_t>(pid), SIGKILL);
                m_process->waitForFinished(3000);
            }
        }
        m_output += m_process->readAll();
        m_process.reset();
    }

    QByteArray output() const { return m_output; }

private:
    QString m_serial;
    std::unique_ptr<QProcess> m_process;
    QByteArray m_output;
};

// Opens the camera once it answers.
boost::shared_ptr<GenicamParameterTree> openWhenReady(std::string* error)
{
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        auto tree = GenicamParameterTree::openDevice(kAddress, error);
        if (tree || waited.elapsed() > 10000)
            return tree;
        QTest::qWait(200);
    }
}

// Reads features with Aravis's command line tool: "Name = value ..." lines.
std::map<std::string, std::string> readWithControlTool(const QStringList& features)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QString::fromLatin1(kControlTool),
               QStringList{QStringLiteral("-a"), QString::fromLatin1(kAddress), QStringLiteral("control")} +
                   features);
    std::map<std::string, std::string> values;
    if (!tool.waitForFinished(15000)) {
        tool.kill();
        tool.waitForFinished(3000);
        return values;
    }
    for (const QByteArray& line : tool.readAll().split('\n')) {
        const int equals = line.indexOf(" = ");
        if (equals <= 0)
            continue;
        const QByteArray value = line.mid(equals + 3);
        const int space = value.indexOf(' ');
        values[line.left(equals).trimmed().toStdString()] =
            (space < 0 ? value : value.left(space)).trimmed().toStdString();
    }
    return values;
}

bool everyNodeInvalid(const boost::shared_ptr<GenicamParameterTree>& tree)
{
    std::vector<boost::shared_ptr<MvParametersEntryNode>> pending = childrenOf(tree->model()->root());
    while (!pending.empty()) {
        auto node = pending.back();
        pending.pop_back();
        if (node->getDataValid())
            return false;
        for (const auto& child : childrenOf(node))
            pending.push_back(child);
    }
    return true;
}

// Measures the longest time the GUI thread's event loop did not get to a 5 ms timer.
class StallProbe
{
public:
    StallProbe()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            m_longest = std::max(m_longest, m_sinceTick.elapsed());
            m_sinceTick.restart();
        });
        m_sinceTick.start();
        m_timer.start(5);
    }
    qint64 longestMs() const { return std::max(m_longest, m_sinceTick.elapsed()); }

private:
    QTimer m_timer;
    QElapsedTimer m_sinceTick;
    qint64 m_longest = 0;
};

} // namespace

TEST(GenicamGvCamera, writesOverTheNetworkAndFollowsTheCameraAwayAndBack)
{
    if (QStandardPaths::findExecutable(QString::fromLatin1(kCameraTool)).isEmpty() ||
        QStandardPaths::findExecutable(QString::fromLatin1(kControlTool)).isEmpty() ||
        QStandardPaths::findExecutable(QStringLiteral("timeout")).isEmpty())
        GTEST_SKIP() << kCameraTool << " or " << kControlTool << " is not installed (Debian: aravis-tools, "
                     << "aravis-tools-cli)";

    LoopbackPortLock lock;
    ASSERT_TRUE(lock.acquire(90000)) << "another test run kept the loopback camera port for 90 s";
    const QString serial = QStringLiteral("VT%1").arg(::getpid());
    FakeGvCamera camera(serial);
    ASSERT_TRUE(camera.start()) << "cannot start " << kCameraTool;

    std::string error;
    auto tree = openWhenReady(&error);
    ASSERT_TRUE(tree) << error << "\n" << camera.output().toStdString();
    EXPECT_EQ(valueOf(tree->find("DeviceID")), "\"" + serial.toStdString() + "\"")
        << "another camera answers on " << kAddress;
    EXPECT_EQ(tree->source(), kAddress);
    EXPECT_EQ(tree->deviceState(), GenicamParameterTree::dsConnected);

    bool listed = false;
    for (const auto& device : GenicamParameterTree::listDevices())
        listed |= device.serial == serial.toStdString() && device.address == kAddress;
    EXPECT_TRUE(listed) << "the camera is not among the devices present";

    // An integer, a float and an enumeration, through the root's callback.
    ModelRecorder recorder(tree->model());
    auto pixelFormat = boost::dynamic_pointer_cast<MvParametersEnumerationNode>(tree->find("PixelFormat"));
    ASSERT_TRUE(pixelFormat);
    auto mono16 = pixelFormat->getEnumEntryNodesEntry("Mono16");
    ASSERT_TRUE(mono16);
    writeThroughCallback(tree->find("Width"), boost::any(320LL));
    writeThroughCallback(tree->find("ExposureTimeAbs"), boost::any(2500.0));
    writeThroughCallback(pixelFormat, boost::any(mono16->getValue()));
    writeThroughCallback(tree->find("BinningHorizontal"), boost::any(17LL));
    ASSERT_TRUE(tree->waitIdle(10000));
    EXPECT_EQ(recorder.errors,
              std::vector<std::string>{"Cannot set BinningHorizontal to 17: 17 is above the maximum 16"});
    EXPECT_EQ(valueOf(tree->find("Width")), "320");
    EXPECT_EQ(valueOf(tree->find("ExposureTimeAbs")), "2500");
    EXPECT_EQ(valueOf(pixelFormat), "Mono16");
    EXPECT_EQ(valueOf(tree->find("PayloadSize")), std::to_string(320 * 512 * 2));

    const auto readBack =
        readWithControlTool({"Width", "ExposureTimeAbs", "PixelFormat", "BinningHorizontal"});
    EXPECT_EQ(readBack.count("Width") ? readBack.at("Width") : "(not read)", "320");
    EXPECT_EQ(readBack.count("ExposureTimeAbs") ? readBack.at("ExposureTimeAbs") : "(not read)", "2500");
    EXPECT_EQ(readBack.count("PixelFormat") ? readBack.at("PixelFormat") : "(not read)", "Mono16");
    EXPECT_EQ(readBack.count("BinningHorizontal") ? readBack.at("BinningHorizontal") : "(not read)", "1");

    // The camera goes away: every value turns invalid within a second, and the GUI keeps running.
    recorder.clear();
    StallProbe probe;
    QElapsedTimer sinceStop;
    camera.stop();
    sinceStop.start();
    QTRY_VERIFY_WITH_TIMEOUT(everyNodeInvalid(tree), 5000);
    const qint64 lostAfterMs = sinceStop.elapsed();
    EXPECT_LT(lostAfterMs, 1000);
    EXPECT_EQ(tree->deviceState(), GenicamParameterTree::dsLost);
    EXPECT_GE(recorder.allChanged, 1) << "the model was told";
    ASSERT_FALSE(recorder.errors.empty());
    EXPECT_EQ(recorder.errors.front().rfind(std::string("Lost the connection to ") + kAddress + ": ", 0), 0u)
        << recorder.errors.front();

    // A write now is refused as soon as the device thread gets to it, naming the reason.
    recorder.clear();
    QElapsedTimer refused;
    refused.start();
    writeThroughCallback(tree->find("Width"), boost::any(640LL));
    QTRY_VERIFY_WITH_TIMEOUT(!recorder.errors.empty(), 10000);
    EXPECT_EQ(recorder.errors.front(), "Cannot set Width to 640: the device does not answer");
    const qint64 refusedAfterMs = refused.elapsed();

    // The camera comes back (a new process: its values start afresh), and so do the values.
    ASSERT_TRUE(camera.start());
    QElapsedTimer sinceStart;
    sinceStart.start();
    QTRY_VERIFY_WITH_TIMEOUT(tree->deviceState() == GenicamParameterTree::dsConnected &&
                                 tree->find("Width")->getDataValid(),
                             15000);
    const qint64 backAfterMs = sinceStart.elapsed();
    EXPECT_EQ(valueOf(tree->find("Width")), "512");
    EXPECT_EQ(valueOf(tree->find("DeviceID")), "\"" + serial.toStdString() + "\"");
    writeThroughCallback(tree->find("Width"), boost::any(256LL));
    ASSERT_TRUE(tree->waitIdle(10000));
    EXPECT_EQ(valueOf(tree->find("Width")), "256");

    const qint64 longestStall = probe.longestMs();
    std::cout << "[ timing   ] values invalid " << lostAfterMs << " ms after the camera stopped; back "
              << backAfterMs << " ms after it restarted; a write while away refused after " << refusedAfterMs
              << " ms; longest GUI stall " << longestStall << " ms" << std::endl;
    EXPECT_LT(longestStall, 200);
    tree.reset();
    camera.stop();
}
