#include "BrowserOptions.h"

#include "FeatureValueFile.h"

#include <QCommandLineParser>

#include <algorithm>

namespace vorn {
namespace browser {

namespace {

// Every option, for parsing and for the help text alike.
void declare(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Shows the features of a camera or any GenICam device, and lets you edit them.\n"
                       "With no source option it opens Aravis's simulated camera."));
    parser.addOptions({
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")},
        {QStringLiteral("xml"), QStringLiteral("Open this GenICam description file."),
         QStringLiteral("file")},
        {QStringLiteral("device"),
         QStringLiteral("Open this device (an id from --list-devices, or an address)."),
         QStringLiteral("id")},
        {QStringLiteral("example"), QStringLiteral("Open the built-in example device.")},
        {QStringLiteral("list-devices"), QStringLiteral("List the devices present and exit.")},
        {QStringLiteral("model"), QStringLiteral("The model: plain, styled or events."),
         QStringLiteral("name")},
        {QStringLiteral("visibility"), QStringLiteral("The visibility level: beginner, expert, guru or all."),
         QStringLiteral("level")},
        {QStringLiteral("view-mode"),
         QStringLiteral("How the styled model writes integers: decimal, hex or binary."),
         QStringLiteral("mode")},
        {QStringLiteral("load"), QStringLiteral("Set the feature values of this file (before any --set)."),
         QStringLiteral("file")},
        {QStringLiteral("set"),
         QStringLiteral("Set a feature (repeatable, in order; a command takes Name=)."),
         QStringLiteral("Name=Value")},
        {QStringLiteral("save"),
         QStringLiteral("Save the feature values to this file (after any --set) and exit."),
         QStringLiteral("file")},
        {QStringLiteral("dump"),
         QStringLiteral("Print the tree as the model shows it and exit (defaults: styled "
                        "model, beginner level, decimal integers).")},
        {QStringLiteral("screenshot"), QStringLiteral("Render the window into this PNG file and exit."),
         QStringLiteral("file")},
        {QStringLiteral("select"), QStringLiteral("Select this feature in the window (by its name)."),
         QStringLiteral("name")},
        {QStringLiteral("expand"), QStringLiteral("Open every category in the window.")},
    });
}

} // namespace

QString BrowserOptions::helpText()
{
    QCommandLineParser parser;
    declare(parser);
    return parser.helpText();
}

bool BrowserOptions::parse(const QStringList& arguments, BrowserOptions* options, QString* error)
{
    QCommandLineParser parser;
    declare(parser);
    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        return false;
    }
    if (!parser.positionalArguments().isEmpty()) {
        *error = QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().first());
        return false;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        options->help = true;
        return true;
    }

    const int sources = int(parser.isSet(QStringLiteral("xml"))) +
                        int(parser.isSet(QStringLiteral("device"))) +
                        int(parser.isSet(QStringLiteral("example")));
    if (sources > 1) {
        *error = QStringLiteral("give only one of --xml, --device and --example");
        return false;
    }
    if (parser.isSet(QStringLiteral("xml"))) {
        options->source = Source::XmlFile;
        options->xmlFile = parser.value(QStringLiteral("xml"));
    } else if (parser.isSet(QStringLiteral("device"))) {
        options->source = Source::Device;
        options->deviceId = parser.value(QStringLiteral("device"));
    } else if (parser.isSet(QStringLiteral("example"))) {
        options->source = Source::Example;
    }

    if (parser.isSet(QStringLiteral("model"))) {
        ModelKind kind;
        if (!parseModelKind(parser.value(QStringLiteral("model")), &kind)) {
            *error = QStringLiteral("unknown model \"%1\" (use plain, styled or events)")
                         .arg(parser.value(QStringLiteral("model")));
            return false;
        }
        options->model = kind;
    }
    if (parser.isSet(QStringLiteral("visibility"))) {
        core::models::ParameterEntryVisibility level;
        if (!parseVisibility(parser.value(QStringLiteral("visibility")), &level)) {
            *error = QStringLiteral("unknown visibility \"%1\" (use beginner, expert, guru or all)")
                         .arg(parser.value(QStringLiteral("visibility")));
            return false;
        }
        options->visibility = level;
    }
    if (parser.isSet(QStringLiteral("view-mode"))) {
        IntegerViewMode mode;
        if (!parseViewMode(parser.value(QStringLiteral("view-mode")), &mode)) {
            *error = QStringLiteral("unknown view mode \"%1\" (use decimal, hex or binary)")
                         .arg(parser.value(QStringLiteral("view-mode")));
            return false;
        }
        options->viewMode = mode;
    }
    for (const QString& text : parser.values(QStringLiteral("set"))) {
        FeatureAssignment assignment;
        std::string reason;
        // The tree's texts are Latin-1: a character beyond it would reach the device as '?'.
        if (std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() > 0xff; })) {
            *error = QStringLiteral("--set %1: only Latin-1 characters can be set").arg(text);
            return false;
        }
        if (!FeatureValueFile::parseAssignment(text.toLatin1().toStdString(), &assignment, &reason)) {
            *error = QStringLiteral("--set: %1").arg(QString::fromStdString(reason));
            return false;
        }
        options->assignments.push_back(assignment);
    }

    options->listDevices = parser.isSet(QStringLiteral("list-devices"));
    options->loadFile = parser.value(QStringLiteral("load"));
    options->saveFile = parser.value(QStringLiteral("save"));
    options->dump = parser.isSet(QStringLiteral("dump"));
    options->screenshot = parser.value(QStringLiteral("screenshot"));
    options->select = parser.value(QStringLiteral("select"));
    options->expand = parser.isSet(QStringLiteral("expand"));
    return true;
}

} // namespace browser
} // namespace vorn
