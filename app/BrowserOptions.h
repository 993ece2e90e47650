#pragma once

#include "FeatureAssignment.h"
#include "ViewChoices.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace vorn {
namespace browser {

// What the command line asks of the browser.
struct BrowserOptions
{
    enum class Source { Simulated, Example, XmlFile, Device };

    Source source = Source::Simulated;
    QString xmlFile;
    QString deviceId;

    bool listDevices = false;
    QString loadFile;
    QString saveFile;
    bool dump = false;
    QString screenshot;
    QString select;
    bool expand = false;
    std::vector<FeatureAssignment> assignments;

    // Unset: the window uses what it remembers, --dump the defaults below.
    std::optional<ModelKind> model;
    std::optional<core::models::ParameterEntryVisibility> visibility;
    std::optional<IntegerViewMode> viewMode;

    bool help = false;

    // Whether the run ends without showing the window (help, a dump, a screenshot, a saved file, a
    // list of devices).
    bool headless() const
    {
        return help || listDevices || dump || !screenshot.isEmpty() || !saveFile.isEmpty();
    }

    // False and a one-line reason in *error for arguments that make no sense.
    static bool parse(const QStringList& arguments, BrowserOptions* options, QString* error);
    // The text of --help; needs the application object.
    static QString helpText();
};

} // namespace browser
} // namespace vorn
