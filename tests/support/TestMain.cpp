// Shared main of the test programs: a network of the program's own when it asked for one, a home and
// settings of its own, a QApplication on the offscreen platform, then GoogleTest.
#include "support/PrivateNetwork.h"

#include <QApplication>
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

void setPath(const char* name, const QString& path)
{
    setenv(name, QFile::encodeName(path).constData(), 1);
}

// Each test process gets a home and settings folders of its own: ctest runs test cases in parallel,
// and two runs of the suite may run at once, so a settings file shared between processes (QSettings,
// and the test mode's ~/.qttest) would let one test see what another wrote. Caches stay where they
// were (font caches are shared safely, and are slow to rebuild).
void giveProcessItsOwnHome(const QTemporaryDir& home)
{
    if (!home.isValid())
        return;
    if (!std::getenv("XDG_CACHE_HOME"))
        setPath("XDG_CACHE_HOME", QDir::homePath() + QStringLiteral("/.cache"));
    const QDir root(home.path());
    for (const char* folder : {"config", "data", "state"})
        root.mkpath(QString::fromLatin1(folder));
    setPath("HOME", home.path());
    setPath("XDG_CONFIG_HOME", root.filePath(QStringLiteral("config")));
    setPath("XDG_DATA_HOME", root.filePath(QStringLiteral("data")));
    setPath("XDG_STATE_HOME", root.filePath(QStringLiteral("state")));
    if (!std::getenv("XDG_RUNTIME_DIR")) {
        root.mkpath(QStringLiteral("runtime"));
        QFile::setPermissions(root.filePath(QStringLiteral("runtime")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        setPath("XDG_RUNTIME_DIR", root.filePath(QStringLiteral("runtime")));
    }
}

} // namespace

int main(int argc, char** argv)
{
    // Before anything starts a thread: a new network namespace takes only the calling thread along.
    vorn::test::enterPrivateNetworkWhenAsked();
    // Tests never need a display; the offscreen platform also renders widgets for grabs.
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QTemporaryDir home(QDir::tempPath() + QStringLiteral("/vorn-test-home-XXXXXX"));
    giveProcessItsOwnHome(home);
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
