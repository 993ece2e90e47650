#include "FeatureFacts.h"

#include "FeatureValueText.h"

#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/MvParametersUInt64Node.h>

namespace vorn {
namespace browser {

using namespace core::models;

namespace {

// Parameter texts are 8-bit strings in which each byte is one Latin-1 character.
QString latin1(const std::string& s)
{
    return QString::fromLatin1(s.data(), static_cast<int>(s.size()));
}

QString floatText(double value)
{
    return QString::fromStdString(FeatureValueText::floatText(value));
}

template <class Node> QString integralRange(const Node& node)
{
    return QStringLiteral("%1 to %2").arg(node.getMinValue()).arg(node.getMaxValue());
}

} // namespace

std::uint32_t FeatureFacts::typeId() const
{
    return static_cast<const core::GenericModelNode&>(m_node).typeId();
}

QString FeatureFacts::name() const
{
    return latin1(m_node.getName());
}

QString FeatureFacts::displayName() const
{
    return latin1(m_node.getDisplayName());
}

QString FeatureFacts::description() const
{
    // Trees without descriptions often carry the text as a tool tip only.
    const std::string& text = m_node.getDescription().empty() ? m_node.getToolTip() : m_node.getDescription();
    return latin1(text);
}

QString FeatureFacts::kind() const
{
    switch (typeId()) {
    case pntCategory:
        return QStringLiteral("Category");
    case pntInteger:
        return QStringLiteral("Integer");
    case pntUInt64:
        return QStringLiteral("Unsigned 64-bit integer");
    case pntFloat:
        return QStringLiteral("Float");
    case pntBoolean:
        return QStringLiteral("Boolean");
    case pntString:
        return QStringLiteral("String");
    case pntEnumeration:
        return QStringLiteral("Enumeration");
    case pntCommand:
        return QStringLiteral("Command");
    default:
        return QStringLiteral("Other");
    }
}

// Editable features whose value cannot be read are told apart: a write-only feature is never read,
// and a read/write one may be unreadable for now (a device that does not answer).
QString FeatureFacts::access() const
{
    const auto mode = m_node.getAccessMode();
    if (mode == peamReadWrite && !m_node.getDataValid())
        return QStringLiteral("write-only");
    if (mode == peamReadWriteIfValid && !m_node.getDataValid())
        return QStringLiteral("read/write, unreadable now");
    return accessName(mode);
}

QString FeatureFacts::visibility() const
{
    return visibilityName(m_node.getVisibility());
}

QString FeatureFacts::range() const
{
    switch (typeId()) {
    case pntInteger:
        return integralRange(static_cast<const MvParametersIntegerNode&>(m_node));
    case pntUInt64:
        return integralRange(static_cast<const MvParametersUInt64Node&>(m_node));
    case pntFloat: {
        const auto& f = static_cast<const MvParametersFloatNode&>(m_node);
        return QStringLiteral("%1 to %2").arg(floatText(f.getMinValue()), floatText(f.getMaxValue()));
    }
    default:
        return QString();
    }
}

QString FeatureFacts::increment() const
{
    switch (typeId()) {
    case pntInteger:
        return QString::number(static_cast<const MvParametersIntegerNode&>(m_node).getStepValue());
    case pntUInt64:
        return QString::number(static_cast<const MvParametersUInt64Node&>(m_node).getStepValue());
    default:
        return QString();
    }
}

QString FeatureFacts::unit() const
{
    switch (typeId()) {
    case pntInteger:
        return latin1(static_cast<const MvParametersIntegerNode&>(m_node).getUnit());
    case pntUInt64:
        return latin1(static_cast<const MvParametersUInt64Node&>(m_node).getUnit());
    case pntFloat:
        return latin1(static_cast<const MvParametersFloatNode&>(m_node).getUnit());
    default:
        return QString();
    }
}

QString FeatureFacts::representation() const
{
    switch (typeId()) {
    case pntInteger:
        return representationName(static_cast<const MvParametersIntegerNode&>(m_node).getRepresentation());
    case pntUInt64:
        return representationName(static_cast<const MvParametersUInt64Node&>(m_node).getRepresentation());
    default:
        return QString();
    }
}

bool FeatureFacts::hasValue() const
{
    switch (typeId()) {
    case pntInteger:
    case pntUInt64:
    case pntFloat:
    case pntBoolean:
    case pntString:
    case pntEnumeration:
        return true;
    default:
        return false;
    }
}

QString FeatureFacts::accessName(ParameterEntryAccessMode mode)
{
    switch (mode) {
    case peamNotImplemented:
        return QStringLiteral("not implemented");
    case peamNotAvailable:
        return QStringLiteral("not available");
    case peamReadWrite:
        return QStringLiteral("read/write");
    case peamReadOnly:
        return QStringLiteral("read-only");
    case peamReadWriteIfValid:
        return QStringLiteral("read/write");
    default:
        return QStringLiteral("undefined");
    }
}

QString FeatureFacts::visibilityName(ParameterEntryVisibility level)
{
    switch (level) {
    case pevBeginner:
        return QStringLiteral("Beginner");
    case pevExpert:
        return QStringLiteral("Expert");
    case pevGuru:
        return QStringLiteral("Guru");
    default:
        return QStringLiteral("Invisible");
    }
}

QString FeatureFacts::representationName(ParameterIntegerRepresentation representation)
{
    switch (representation) {
    case pirLinear:
        return QStringLiteral("Linear");
    case pirLogarithmic:
        return QStringLiteral("Logarithmic");
    case pirPureNumber:
        return QStringLiteral("Pure number");
    case pirBoolean:
        return QStringLiteral("Boolean (check box)");
    case pirHexNumber:
        return QStringLiteral("Hexadecimal number");
    case pirIPV4Address:
        return QStringLiteral("IPv4 address");
    case pirMACAddress:
        return QStringLiteral("MAC address");
    default:
        return QStringLiteral("Unknown (%1)").arg(static_cast<int>(representation));
    }
}

} // namespace browser
} // namespace vorn
