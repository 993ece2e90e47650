// The parameter browser: shows the features of a device (Aravis's simulated camera unless told
// otherwise) in the library's models and lets people edit them. With no display it renders its window
// into a PNG and says where. See --help for the command line.

#include "BrowserOptions.h"
#include "BrowserSettings.h"
#include "BrowserStyle.h"
#include "BrowserWindow.h"
#include "FeatureModelStack.h"
#include "FeatureValueStore.h"
#include "FeatureWriter.h"
#include "LibraryScope.h"
#include "ParameterSource.h"
#include "TreeDump.h"

#include <vorn/host/GenicamParameterTree.h>
#include <vorn/host/Qt4GenericTreeView.h>

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QPixmap>

#include <cstdio>
#include <cstdlib>

using namespace vorn::browser;

namespace {

QtMessageHandler qtHandler = nullptr;

// The offscreen platform notes every change of a window's size limits, which it has no window
// manager to tell; that note says nothing to a person who asked for a screenshot.
void quietOffscreenNotes(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (message == QLatin1String("This plugin does not support propagateSizeHints()"))
        return;
    if (qtHandler)
        qtHandler(type, context, message);
}

int fail(const QString& reason)
{
    std::fprintf(stderr, "parameter-browser: %s\n", qPrintable(reason));
    return 1;
}

// True when nothing was refused; otherwise each reason on a line of its own.
bool reportRefused(const std::vector<FeatureFailure>& refused)
{
    for (const QString& line : FeatureValueStore::reportLines(refused))
        fail(line);
    return refused.empty();
}

int listDevices()
{
    const auto devices = vorn::core::models::GenicamParameterTree::listDevices();
    if (devices.empty()) {
        std::printf("No device found.\n");
        return 0;
    }
    for (const auto& d : devices)
        std::printf("%s\t%s %s (serial %s, %s, %s)\n", d.id.c_str(), d.vendor.c_str(), d.model.c_str(),
                    d.serial.c_str(), d.address.c_str(), d.protocol.c_str());
    return 0;
}

std::unique_ptr<ParameterSource> openSource(const BrowserOptions& options, QString* error)
{
    switch (options.source) {
    case BrowserOptions::Source::Example:
        return ParameterSource::openExample();
    case BrowserOptions::Source::XmlFile:
        return ParameterSource::openXmlFile(options.xmlFile, error);
    case BrowserOptions::Source::Device:
        return ParameterSource::openDevice(options.deviceId, error);
    case BrowserOptions::Source::Simulated:
        break;
    }
    return ParameterSource::openSimulated(error);
}

// --dump does not depend on what the window remembers: the same command prints the same tree.
void dump(ParameterSource& source, const BrowserOptions& options)
{
    BrowserSettings::applyViewMode(options.viewMode.value_or(IntegerViewMode::Decimal));
    FeatureModelStack models(source.model(), options.model.value_or(ModelKind::Styled));
    models.setVisibility(options.visibility.value_or(vorn::core::models::pevBeginner));
    std::fputs(TreeDump::render(*models.view()).toUtf8().constData(), stdout);
    std::fflush(stdout);
}

int screenshot(BrowserWindow& window, const QString& path)
{
    // Twice: the first pass lays out what changed, the second the widgets inside the tree's rows.
    for (int i = 0; i < 2; ++i)
        QApplication::processEvents();
    if (!window.grab().save(path))
        return fail(QStringLiteral("cannot write %1").arg(path));
    std::printf("Wrote a screenshot of the window to %s\n", qPrintable(path));
    return 0;
}

int run(BrowserOptions& options)
{
    if (options.listDevices)
        return listDevices();

    QString error;
    std::unique_ptr<ParameterSource> source = openSource(options, &error);
    if (!source)
        return fail(error);

    // Values from a file first, then those of the command line, each in their order.
    if (!options.loadFile.isEmpty()) {
        const auto refused = FeatureValueStore::load(*source, options.loadFile, &error);
        if (!error.isEmpty())
            return fail(error);
        if (!reportRefused(refused))
            return 1;
    }
    if (!options.assignments.empty() && !reportRefused(FeatureWriter(*source).apply(options.assignments)))
        return 1;
    // Values of a device that stopped answering are out of date: neither saved nor printed as if
    // they were the device's.
    if ((!options.saveFile.isEmpty() || options.dump) && (!source->waitIdle() || !source->isConnected()))
        return fail(QStringLiteral("%1: the device does not answer; nothing was saved or printed")
                        .arg(source->description()));
    if (!options.saveFile.isEmpty()) {
        if (!FeatureValueStore::save(*source, options.saveFile, &error))
            return fail(error);
        if (!options.dump && options.screenshot.isEmpty())
            return 0;
    }
    if (options.dump) {
        dump(*source, options);
        if (options.screenshot.isEmpty())
            return 0;
    }

    BrowserWindow window;
    if (options.model)
        window.setModelKind(*options.model);
    if (options.visibility)
        window.setVisibility(*options.visibility);
    if (options.viewMode)
        window.setViewMode(*options.viewMode);
    window.setSource(std::move(source));
    // Pictures come out the same size wherever the window was left last time.
    if (!options.screenshot.isEmpty())
        window.resize(BrowserWindow::defaultSize());
    // Shown and laid out before rows are opened and scrolled to, so that the view scrolls for the
    // height it really has.
    window.show();
    QApplication::processEvents();
    if (options.expand)
        window.view()->expandAll();
    if (!options.select.isEmpty() && !window.selectFeature(options.select))
        std::fprintf(stderr, "parameter-browser: no feature %s is shown at this visibility level\n",
                     qPrintable(options.select));

    if (!options.screenshot.isEmpty())
        return screenshot(window, options.screenshot);
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    BrowserOptions options;
    QString error;
    if (!BrowserOptions::parse(arguments, &options, &error)) {
        std::fprintf(stderr, "parameter-browser: %s (see --help)\n", qPrintable(error));
        return 2;
    }
    const bool hasDisplay = std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY");
    if (!hasDisplay && !options.headless())
        options.screenshot = QDir::current().absoluteFilePath(QStringLiteral("parameter-browser.png"));
    // Runs that show no window need no display, even where there is one.
    if ((options.headless() || !hasDisplay) && !std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);

    qtHandler = qInstallMessageHandler(quietOffscreenNotes);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("parameter-browser"));
    QApplication::setOrganizationName(QStringLiteral("Vorn"));
    // The same picture the desktop entry names, for window managers that take it from the window.
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/vorn/browser/vorn-parameter-browser.png")));
    QApplication::setDesktopFileName(QStringLiteral("vorn-parameter-browser"));
    if (options.help) {
        std::fputs(qPrintable(BrowserOptions::helpText()), stdout);
        return 0;
    }
    BrowserStyle::apply();

    // The library stays initialised until everything made of it is gone (run's locals).
    LibraryScope library;
    return run(options);
}
