#pragma once

// The choices a person makes about how the tree is shown (model, visibility level, integer view
// mode), with the names the command line and the settings file use for them.

#include <vorn/host/ParameterEnums.h>
#include <vorn/models/IntegerViewModeKey.h>

#include <QString>
#include <QStringList>

namespace vorn {
namespace browser {

// Which of the library's three models shows the tree.
enum class ModelKind {
    Plain,  // two columns, compact 14-pixel rows
    Styled, // two columns with grid, icons, bold categories and integer details
    Events, // the booleans only, as one column of check boxes
};

// How the styled model writes integers; the numbers are the host setting's values.
enum class IntegerViewMode {
    Decimal = 0,
    Hexadecimal = 1,
    Binary = 2,
};

// The host setting that the styled model reads for its integer view mode.
using core::rows::integerViewModeKey;

inline QStringList modelKindNames()
{
    return {QStringLiteral("plain"), QStringLiteral("styled"), QStringLiteral("events")};
}

inline QStringList visibilityNames()
{
    return {QStringLiteral("beginner"), QStringLiteral("expert"), QStringLiteral("guru"),
            QStringLiteral("all")};
}

inline QStringList viewModeNames()
{
    return {QStringLiteral("decimal"), QStringLiteral("hex"), QStringLiteral("binary")};
}

inline QString modelKindName(ModelKind kind)
{
    return modelKindNames().value(static_cast<int>(kind));
}

inline bool parseModelKind(const QString& name, ModelKind* kind)
{
    const int i = modelKindNames().indexOf(name.toLower());
    if (i < 0)
        return false;
    *kind = static_cast<ModelKind>(i);
    return true;
}

// Beginner, Expert and Guru are the filter's levels 0 to 2; "all" is level 4, which also shows the
// features a device marks invisible (level 3).
inline QString visibilityName(core::models::ParameterEntryVisibility level)
{
    if (level >= core::models::pevInvisible)
        return visibilityNames().last();
    return visibilityNames().value(static_cast<int>(level));
}

inline bool parseVisibility(const QString& name, core::models::ParameterEntryVisibility* level)
{
    const int i = visibilityNames().indexOf(name.toLower());
    if (i < 0)
        return false;
    *level = i == 3 ? core::models::pevAll : static_cast<core::models::ParameterEntryVisibility>(i);
    return true;
}

inline QString viewModeName(IntegerViewMode mode)
{
    return viewModeNames().value(static_cast<int>(mode));
}

inline bool parseViewMode(const QString& name, IntegerViewMode* mode)
{
    const int i = viewModeNames().indexOf(name.toLower());
    if (i < 0)
        return false;
    *mode = static_cast<IntegerViewMode>(i);
    return true;
}

} // namespace browser
} // namespace vorn
