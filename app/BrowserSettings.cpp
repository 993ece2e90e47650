#include "BrowserSettings.h"

#include <vorn/host/MovaniApplication.h>

namespace vorn {
namespace browser {

namespace {

const QString modelKey = QStringLiteral("view/model");
const QString visibilityKey = QStringLiteral("view/visibility");
const QString viewModeKey = QStringLiteral("view/integerViewMode");
const QString geometryKey = QStringLiteral("window/geometry");
const QString splitterKey = QStringLiteral("window/splitter");
const QString directoryKey = QStringLiteral("files/lastDirectory");

} // namespace

BrowserSettings::BrowserSettings() : m_settings(QStringLiteral("Vorn"), QStringLiteral("parameter-browser"))
{}

// Unknown names (from a newer or hand-edited file) fall back to the defaults.
ModelKind BrowserSettings::modelKind() const
{
    ModelKind kind = ModelKind::Styled;
    parseModelKind(m_settings.value(modelKey).toString(), &kind);
    return kind;
}

void BrowserSettings::setModelKind(ModelKind kind)
{
    m_settings.setValue(modelKey, modelKindName(kind));
}

core::models::ParameterEntryVisibility BrowserSettings::visibility() const
{
    auto level = core::models::pevBeginner;
    parseVisibility(m_settings.value(visibilityKey).toString(), &level);
    return level;
}

void BrowserSettings::setVisibility(core::models::ParameterEntryVisibility level)
{
    m_settings.setValue(visibilityKey, visibilityName(level));
}

IntegerViewMode BrowserSettings::viewMode() const
{
    auto mode = IntegerViewMode::Decimal;
    parseViewMode(m_settings.value(viewModeKey).toString(), &mode);
    return mode;
}

void BrowserSettings::setViewMode(IntegerViewMode mode)
{
    m_settings.setValue(viewModeKey, viewModeName(mode));
    applyViewMode(mode);
}

QByteArray BrowserSettings::windowGeometry() const
{
    return m_settings.value(geometryKey).toByteArray();
}

void BrowserSettings::setWindowGeometry(const QByteArray& geometry)
{
    m_settings.setValue(geometryKey, geometry);
}

QByteArray BrowserSettings::splitterState() const
{
    return m_settings.value(splitterKey).toByteArray();
}

void BrowserSettings::setSplitterState(const QByteArray& state)
{
    m_settings.setValue(splitterKey, state);
}

QString BrowserSettings::lastDirectory() const
{
    return m_settings.value(directoryKey).toString();
}

void BrowserSettings::setLastDirectory(const QString& directory)
{
    m_settings.setValue(directoryKey, directory);
}

void BrowserSettings::applyViewMode(IntegerViewMode mode)
{
    core::MovaniApplication::setConfigIntEntry(integerViewModeKey(), static_cast<long long>(mode));
}

} // namespace browser
} // namespace vorn
