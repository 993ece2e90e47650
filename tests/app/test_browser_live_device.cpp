// The browser on a device found on the network: Aravis's simulated GigE Vision camera on the
// loopback interface of the test's own network, listed by --list-devices and opened by --device.
// Skipped without Aravis's tools.

#include "BrowserProcess.h"
#include "genicam/FakeGvCamera.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

using vorn::test::BrowserRun;
using vorn::test::FakeGvCamera;
using vorn::test::kCameraAddress;
using vorn::test::runBrowser;
using vorn::test::whyNoCamera;

namespace {

TEST(LiveDevice, isListedAndOpensByItsAddress)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    const QString serial = QStringLiteral("BROWSER%1").arg(::getpid());
    FakeGvCamera camera(serial);
    ASSERT_TRUE(camera.start());

    // The camera answers once it has set itself up.
    BrowserRun opened;
    QElapsedTimer waited;
    waited.start();
    do {
        opened = runBrowser({QStringLiteral("--device"), QString::fromLatin1(kCameraAddress),
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
    EXPECT_TRUE(listed.out.contains(QString::fromLatin1(kCameraAddress))) << listed.out.toStdString();

    // Each line starts with the id that --device takes.
    QString id;
    for (const QString& line : listed.out.split(QLatin1Char('\n')))
        if (line.contains(serial))
            id = line.section(QLatin1Char('\t'), 0, 0);
    const BrowserRun byId = runBrowser({QStringLiteral("--device"), id, QStringLiteral("--dump")});
    EXPECT_EQ(byId.exitCode, 0) << id.toStdString() << ": " << byId.err.toStdString();
    EXPECT_TRUE(byId.out.contains(QStringLiteral("  Width                320\n"))) << byId.out.toStdString();
}

// A camera that does not answer: an error and a failing exit status, nothing printed, no file.
TEST(LiveDevice, aCameraThatDoesNotAnswerFailsTheCommandLine)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    FakeGvCamera camera(QStringLiteral("FROZEN%1").arg(::getpid()));
    ASSERT_TRUE(camera.start());
    const QString address = QString::fromLatin1(kCameraAddress);
    BrowserRun opened;
    QElapsedTimer waited;
    waited.start();
    do {
        opened = runBrowser({QStringLiteral("--device"), address, QStringLiteral("--dump")});
    } while (opened.exitCode != 0 && waited.elapsed() < 15000);
    ASSERT_EQ(opened.exitCode, 0) << opened.err.toStdString();

    ASSERT_TRUE(camera.freeze());
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    const QString saved = folder.filePath(QStringLiteral("values.txt"));
    const BrowserRun frozen = runBrowser(
        {QStringLiteral("--device"), address, QStringLiteral("--save"), saved, QStringLiteral("--dump")});
    EXPECT_EQ(frozen.exitCode, 1) << frozen.err.toStdString();
    EXPECT_EQ(frozen.out, QString());
    ASSERT_EQ(frozen.errorLines().size(), 1) << frozen.err.toStdString();
    EXPECT_TRUE(frozen.errorLines().first().startsWith(QStringLiteral("parameter-browser: ") + address +
                                                       QStringLiteral(": cannot open the device (")))
        << frozen.err.toStdString();
    EXPECT_FALSE(QFile::exists(saved));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              QStringList());
    camera.resume();
}

} // namespace
