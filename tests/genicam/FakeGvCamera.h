#pragma once

// Aravis's simulated GigE Vision camera as a separate process on the loopback interface, for the
// tests that need a live device: started, frozen, resumed and stopped by its process id, opened
// through the GenICam backend, and read back with Aravis's command line tool. Each test program that
// serves one runs in a network of its own (vorn_test(... PRIVATE_NETWORK)), where its camera is the
// only one on the loopback.

#include <vorn/host/GenicamParameterTree.h>

#include "support/PrivateNetwork.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <QTest>
#include <QThread>

#include <csignal>
#include <map>
#include <memory>
#include <string>
#include <unistd.h>

namespace vorn {
namespace test {

const char* const kCameraTool = "arv-fake-gv-camera-0.8";
const char* const kControlTool = "arv-tool-0.8";
const char* const kCameraAddress = "127.0.0.1";
// The camera never outlives this, even if the test process dies without cleaning up.
const int kCameraLifetimeSeconds = 120;

// Empty when this program can serve a camera: the tools are installed and the program runs in a
// network of its own. Otherwise why not, for the test to skip with.
inline std::string whyNoCamera()
{
    if (QStandardPaths::findExecutable(QString::fromLatin1(kCameraTool)).isEmpty() ||
        QStandardPaths::findExecutable(QString::fromLatin1(kControlTool)).isEmpty() ||
        QStandardPaths::findExecutable(QStringLiteral("timeout")).isEmpty())
        return std::string(kCameraTool) + " or " + kControlTool +
               " is not installed (Debian: aravis-tools, aravis-tools-cli)";
    return whyNoPrivateNetwork();
}

// One simulated GigE Vision camera process with its own serial number, stopped by its process id.
class FakeGvCamera
{
public:
    // address: one of the private loopback's (kCameraAddress, kSecondLoopbackAddress).
    explicit FakeGvCamera(const QString& serial, const char* address = kCameraAddress)
        : m_serial(serial), m_address(address)
    {}
    ~FakeGvCamera() { stop(); }

    bool start()
    {
        stop();
        m_process.reset(new QProcess());
        m_process->setProcessChannelMode(QProcess::MergedChannels);
        m_process->start(QStringLiteral("timeout"),
                         {QStringLiteral("--signal=TERM"), QString::number(kCameraLifetimeSeconds),
                          QString::fromLatin1(kCameraTool), QStringLiteral("-i"),
                          QString::fromLatin1(m_address), QStringLiteral("-s"), m_serial});
        return m_process->waitForStarted(5000);
    }

    void stop()
    {
        if (!m_process)
            return;
        resume();
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

    // Freezes the camera: it stops answering, but keeps its values for when it is resumed. Returns
    // once the camera stands still (a stop signal takes effect only when the camera next runs).
    // Safe to call from any thread.
    bool freeze()
    {
        const pid_t pid = cameraProcess();
        if (pid <= 0 || ::kill(pid, SIGSTOP) != 0)
            return false;
        QElapsedTimer waited;
        waited.start();
        while (waited.elapsed() < 5000) {
            QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
            if (!stat.open(QIODevice::ReadOnly))
                return false;
            // "pid (name) state ...": the state follows the name's closing parenthesis.
            const QByteArray line = stat.readAll();
            const int close = line.lastIndexOf(')');
            if (close > 0 && line.mid(close + 2, 1) == "T")
                return true;
            QThread::msleep(1);
        }
        return false;
    }
    void resume()
    {
        const pid_t pid = cameraProcess();
        if (pid > 0)
            ::kill(pid, SIGCONT);
    }

    QByteArray output() const { return m_output; }
    QString serial() const { return m_serial; }

private:
    // The camera runs under timeout(1), as its only child.
    pid_t cameraProcess() const
    {
        if (!m_process || m_process->processId() <= 0)
            return 0;
        const pid_t parent = static_cast<pid_t>(m_process->processId());
        QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(parent));
        if (!children.open(QIODevice::ReadOnly))
            return 0;
        return static_cast<pid_t>(children.readAll().trimmed().split(' ').value(0).toInt());
    }

    QString m_serial;
    const char* m_address;
    std::unique_ptr<QProcess> m_process;
    QByteArray m_output;
};

// Opens the camera once it answers.
inline boost::shared_ptr<core::models::GenicamParameterTree>
openWhenReady(std::string* error, const char* address = kCameraAddress)
{
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        auto tree = core::models::GenicamParameterTree::openDevice(address, error);
        if (tree || waited.elapsed() > 10000)
            return tree;
        QTest::qWait(200);
    }
}

// Reads features with Aravis's command line tool: "Name = value ..." lines.
inline std::map<std::string, std::string> readWithControlTool(const QStringList& features,
                                                              const char* address = kCameraAddress)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QString::fromLatin1(kControlTool),
               QStringList{QStringLiteral("-a"), QString::fromLatin1(address), QStringLiteral("control")} +
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

} // namespace test
} // namespace vorn
