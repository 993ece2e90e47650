// Shared main of the test programs: a QApplication on the offscreen platform, then GoogleTest.
#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv)
{
    // Tests never need a display; the offscreen platform also renders widgets for grabs.
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QTemporaryDir runtimeDir;
    if (!std::getenv("XDG_RUNTIME_DIR") && runtimeDir.isValid()) {
        QFile::setPermissions(runtimeDir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        setenv("XDG_RUNTIME_DIR", runtimeDir.path().toLocal8Bit().constData(), 1);
    }
    // Settings of our own: test programs run side by side (ctest -j, two suites at once), and
    // QSettings would otherwise share one file between them (in test mode, below HOME).
    QTemporaryDir settingsHome;
    if (settingsHome.isValid()) {
        setenv("HOME", settingsHome.path().toLocal8Bit().constData(), 1);
        setenv("XDG_CONFIG_HOME", (settingsHome.path() + QStringLiteral("/config")).toLocal8Bit().constData(),
               1);
    }
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
