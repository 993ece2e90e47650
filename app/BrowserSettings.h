#pragma once

#include "ViewChoices.h"

#include <QByteArray>
#include <QSettings>
#include <QString>

namespace vorn {
namespace browser {

// What the browser remembers between runs (in the user's QSettings of "Vorn/parameter-browser"):
// the toolbar's choices, the window's geometry and the folder of the last value file. The integer
// view mode is also the host setting that the styled model reads, so setting it here updates both.
class BrowserSettings
{
public:
    BrowserSettings();

    ModelKind modelKind() const;
    void setModelKind(ModelKind kind);
    core::models::ParameterEntryVisibility visibility() const;
    void setVisibility(core::models::ParameterEntryVisibility level);
    IntegerViewMode viewMode() const;
    void setViewMode(IntegerViewMode mode);

    QByteArray windowGeometry() const;
    void setWindowGeometry(const QByteArray& geometry);
    QByteArray splitterState() const;
    void setSplitterState(const QByteArray& state);
    QString lastDirectory() const;
    void setLastDirectory(const QString& directory);

    // Hands the view mode to the host setting the styled model reads; the browser calls it at
    // start-up with the remembered mode and whenever the mode changes.
    static void applyViewMode(IntegerViewMode mode);

private:
    QSettings m_settings;
};

} // namespace browser
} // namespace vorn
