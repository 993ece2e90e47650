// The parameter browser: shows a parameter tree in our tree view and edits its values in place. For
// now it shows the built-in example tree; with no display it renders the window offscreen into a PNG
// and says where.

#include "example/ExampleTree.h"

#include "delegate/Qt4ParametersItemDelegate.h"
#include "host/Qt4GenericTreeView.h"
#include "models/Qt4ParametersModel.h"
#include "models/Qt4ParametersModelNode.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QHeaderView>
#include <QMainWindow>
#include <QPixmap>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    const bool headless = !std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY");
    if (headless && !std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("parameter-browser"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Browse and edit the parameters of a device."));
    parser.addHelpOption();
    QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                  QStringLiteral("Render the window into this PNG file and exit."),
                                  QStringLiteral("file"));
    parser.addOption(screenshot);
    parser.process(app);

    auto tree = vorn::example::buildExampleTree();
    auto root = vorn::core::Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any());
    auto model = vorn::core::Qt4ParametersModel::create(root);
    // Edits values in place and writes them through the tree's callback; it outlives the view.
    auto delegate = vorn::core::Qt4ParametersItemDelegate::create();

    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Parameter Browser"));
    auto* view = new vorn::core::Qt4GenericTreeView(&window);
    view->setItemDelegate(delegate.get());
    view->setModel(model.get());
    view->setAlternatingRowColors(true);
    view->header()->resizeSection(0, 300);
    window.setCentralWidget(view);
    window.resize(640, 720);

    QString shotPath = parser.value(screenshot);
    if (shotPath.isEmpty() && headless)
        shotPath = QDir::current().absoluteFilePath(QStringLiteral("parameter-browser.png"));
    if (!shotPath.isEmpty()) {
        window.show();
        QApplication::processEvents();
        if (!window.grab().save(shotPath)) {
            std::fprintf(stderr, "parameter-browser: cannot write %s\n", qPrintable(shotPath));
            return 1;
        }
        std::printf("Wrote a screenshot of the window to %s\n", qPrintable(shotPath));
        return 0;
    }
    window.show();
    return app.exec();
}
