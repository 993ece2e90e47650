// The browser on a device found on the network: Aravis's simulated GigE Vision camera on the
// loopback interface, listed by --list-devices and opened by --device. Skipped without Aravis's tools.

#include "BrowserProcess.h"

#include <QElapsedTimer>
#include <QStandardPaths>
#include <QTest>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

#include <memory>

using vorn::test::BrowserRun;
using vorn::test::runBrowser;

namespace {

const char* const kCameraTool = "arv-fake-gv-camera-0.8";
const char* const kAddress = "127.0.0.1";

// Only one camera can hold the loopback's GigE Vision port: test programs on this machine take turns
// through the same lock file.
class LoopbackPortLock
{
public:
    bool acquire(int timeoutMs)
    {
        m_fd = ::open("/tmp/vorn-genicam-gv-loopback.lock", O_CREAT | O_RDWR, 0666);
        QElapsedTimer waited;
        waited.start();
        while (m_fd >= 0 && ::flock(m_fd, LOCK_EX | LOCK_NB) != 0) {
            if (waited.elapsed() > timeoutMs)
                return false;
            QTest::qWait(100);
        }
        return m_fd >= 0;
    }
    ~LoopbackPortLock()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }

private:
    int m_fd = -1;
};

// The camera process, ended by its own process id (and by timeout(1) should this test die first).
class FakeCamera
{
public:
    bool start(const QString& serial)
    {
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(QStringLiteral("timeout"),
                        {QStringLiteral("--signal=TERM"), QStringLiteral("120"),
                         QString::fromLatin1(kCameraTool), QStringLiteral("-i"),
                         QString::fromLatin1(kAddress), QStringLiteral("-s"), serial});
        return m_process.waitForStarted(5000);
    }
    ~FakeCamera()
    {
        const qint64 pid = m_process.processId();
        if (pid <= 0 || m_process.state() == QProcess::NotRunning)
            return;
        ::kill(static_cast<pid_t>(pid), SIGTERM);
        if (!m_process.waitForFinished(3000)) {
            ::kill(static_cast<pid_t>(pid), SIGKILL);
            m_process.waitForFinished(3000);
        }
    }

private:
    QProcess m_process;
};

TEST(LiveDevice, isListedAndOpensByItsAddress)
{
    if (QStandardPaths::findExecutable(QString::fromLatin1(kCameraTool)).isEmpty())
        GTEST_SKIP() << kCameraTool << " is not installed";
    LoopbackPortLock lock;
    ASSERT_TRUE(lock.acquire(120000)) << "the loopback camera port stays taken";
    const QString serial = QStringLiteral("BROWSER%1").arg(::getpid());
    FakeCamera camera;
    ASSERT_TRUE(camera.start(serial));

    // The camera answers once it has set itself up.
    BrowserRun opened;
    QElapsedTimer waited;
    waited.start();
    do {
        opened = runBrowser({QStringLiteral("--device"), QString::fromLatin1(kAddress),
                             QStringLiteral("--set"), QStringLiteral("Width=320"), QStringLiteral("--dump")});
    } while (opened.exitCode != 0 && waited.elapsed() < 15000);
    ASSERT_EQ(opened.exitCode, 0) << opened.err.toStdString();
    EXPECT_TRUE(opened.out.contains(QStringLiteral("  Device ID            ") + serial))
        << opened.out.toStdString();
    EXPECT_TRUE(opened.out.contains(QStringLiteral("  Width                320\n")))
        << opened.out.toStdString();

    const BrowserRun listed = runBrowser({QStringLiteral("--list-devices")});
    EXPECT_EQ(listed.exitCode, 0);
    EXPECT_TRUE(listed.out.contains(serial)) << listed.out.toStdString();
    EXPECT_TRUE(listed.out.contains(QString::fromLatin1(kAddress))) << listed.out.toStdString();

    // Each line starts with the id that --device takes.
    QString id;
    for (const QString& line : listed.out.split(QLatin1Char('\n')))
        if (line.contains(serial))
            id = line.section(QLatin1Char('\t'), 0, 0);
    const BrowserRun byId = runBrowser({QStringLiteral("--device"), id, QStringLiteral("--dump")});
    EXPECT_EQ(byId.exitCode, 0) << id.toStdString() << ": " << byId.err.toStdString();
    EXPECT_TRUE(byId.out.contains(QStringLiteral("  Width                320\n"))) << byId.out.toStdString();
}

} // namespace
