// Takes the README's pictures of the parameter browser from a real window: run it under an X server
// (scripts/make-screenshots.sh starts Xvfb) with the folder to write into. Each picture is grabbed
// from the screen, so that dialogs and menus show where a person sees them, next to the window.

#include "BrowserStyle.h"
#include "BrowserWindow.h"
#include "DeviceDialog.h"
#include "ParameterSource.h"
#include "RegisterDialog.h"

#include <vorn/host/Qt4GenericTreeView.h>

#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QStandardPaths>
#include <QTest>

#include <cstdio>

using namespace vorn::browser;

namespace {

QString g_folder;
int g_failures = 0;

void settle(int ms = 300)
{
    QTest::qWait(ms);
}

// The screen inside `area`, written as NAME.png into the output folder.
void shoot(const QString& name, QRect area)
{
    settle();
    QScreen* screen = QGuiApplication::primaryScreen();
    area = area.intersected(screen->geometry());
    const QPixmap picture = screen->grabWindow(0, area.x(), area.y(), area.width(), area.height());
    const QString path = QDir(g_folder).filePath(name + QStringLiteral(".png"));
    if (picture.isNull() || !picture.save(path)) {
        std::fprintf(stderr, "browser-screenshots: cannot write %s\n", qPrintable(path));
        ++g_failures;
        return;
    }
    std::printf("Wrote %s\n", qPrintable(path));
}

QRect frameOf(const QWidget* widget)
{
    return widget->frameGeometry();
}

void fail(const char* what)
{
    std::fprintf(stderr, "browser-screenshots: %s\n", what);
    ++g_failures;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (argc != 2 || QGuiApplication::platformName() != QLatin1String("xcb")) {
        std::fprintf(stderr, "usage: browser-screenshots FOLDER (under an X server)\n");
        return 2;
    }
    g_folder = QString::fromLocal8Bit(argv[1]);
    // Pictures of a first run: settings of their own, emptied first.
    QStandardPaths::setTestModeEnabled(true);
    QSettings(QStringLiteral("Vorn"), QStringLiteral("parameter-browser")).clear();
    BrowserStyle::apply();

    QString error;
    auto camera = ParameterSource::openSimulated(&error);
    if (!camera) {
        std::fprintf(stderr, "browser-screenshots: %s\n", qPrintable(error));
        return 1;
    }
    BrowserWindow window;
    window.setSource(std::move(camera));
    window.resize(BrowserWindow::defaultSize());
    window.move(20, 20);
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowExposed(&window) || !QTest::qWaitForWindowActive(&window))
        fail("the window was never shown");
    settle(800);

    // An enumeration: the description pane lists its entries, the log dock what happened.
    if (auto* dock = window.findChild<QDockWidget*>(QStringLiteral("logDock"))) {
        dock->show();
        window.resizeDocks({dock}, {110}, Qt::Vertical);
    }
    // A change made from the keyboard, as a person makes it (it goes to the log and to Undo).
    if (!window.selectFeature(QStringLiteral("Width")))
        fail("no Width");
    window.view()->setFocus();
    settle();
    QTest::keyClick(window.view(), Qt::Key_F2);
    settle();
    if (QWidget* editor = QApplication::focusWidget()) {
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, QStringLiteral("640"));
        QTest::keyClick(editor, Qt::Key_Return);
    } else {
        fail("F2 opened no editor");
    }
    settle();
    if (!window.selectFeature(QStringLiteral("PixelFormat")))
        fail("no PixelFormat");
    shoot(QStringLiteral("browser-enumeration"), frameOf(&window));

    // Editing from the keyboard: F2 on the selected value opens its editor.
    if (!window.selectFeature(QStringLiteral("ExposureTimeAbs")))
        fail("no ExposureTimeAbs");
    window.view()->setFocus();
    settle();
    QTest::keyClick(window.view(), Qt::Key_F2);
    shoot(QStringLiteral("browser-editing"), frameOf(&window));
    if (QWidget* editor = QApplication::focusWidget())
        QTest::keyClick(editor, Qt::Key_Escape);

    // Undo: the Edit menu names the change it writes back.
    QMenu* edit = nullptr;
    for (QAction* action : window.menuBar()->actions())
        if (action->text() == QLatin1String("&Edit"))
            edit = action->menu();
    if (edit) {
        const QRect item = window.menuBar()->actionGeometry(edit->menuAction());
        edit->popup(window.menuBar()->mapToGlobal(item.bottomLeft()));
        shoot(QStringLiteral("browser-undo"), frameOf(&window).united(edit->frameGeometry()));
        edit->hide();
    } else {
        fail("no Edit menu");
    }

    // Registers (Guru level): 0x100 holds the simulated camera's Width.
    window.setVisibility(vorn::core::models::pevGuru);
    settle();
    if (RegisterDialog* registers = window.openRegisters()) {
        registers->move(window.frameGeometry().right() - registers->width() - 40, 160);
        if (auto* address = registers->findChild<QLineEdit*>(QStringLiteral("address")))
            address->setText(QStringLiteral("0x100"));
        registers->read();
        if (!QTest::qWaitFor([registers] { return !registers->status().endsWith(QStringLiteral("...")); },
                             5000))
            fail("the register read never answered");
        shoot(QStringLiteral("browser-registers"), frameOf(&window).united(frameOf(registers)));
        registers->close();
    } else {
        fail("no register dialog");
    }

    // The cameras found.
    DeviceDialog devices(&window);
    devices.show();
    devices.move(window.frameGeometry().center() - QPoint(devices.width() / 2, devices.height() / 2));
    devices.discover();
    if (!QTest::qWaitFor([&devices] { return !devices.isSearching(); }, 10000))
        fail("the device search never ended");
    shoot(QStringLiteral("browser-connect"), frameOf(&window).united(frameOf(&devices)));
    devices.close();

    return g_failures == 0 ? 0 : 1;
}
