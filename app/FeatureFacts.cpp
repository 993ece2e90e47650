#include "FeatureFacts.h"

#include <QStringList>

namespace vorn {
namespace browser {

using namespace core::models;

namespace {

// Parameter texts are 8-bit strings in which each byte is one Latin-1 character.
QString latin1(const std::string& s)
{
    return QString::fromLatin1(s.data(), static_cast<int>(s.size()));
}

} // namespace

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
    return QString::fromLatin1(m_kind.name());
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
    return QString::fromStdString(m_kind.rangeText(m_node));
}

QString FeatureFacts::increment() const
{
    return QString::fromStdString(m_kind.incrementText(m_node));
}

QString FeatureFacts::unit() const
{
    return latin1(m_kind.presentation(m_node).unit);
}

QString FeatureFacts::representation() const
{
    const auto representation = m_kind.presentation(m_node).representation;
    return representation ? representationName(*representation) : QString();
}

QString FeatureFacts::entries() const
{
    // The entry the feature holds now is marked, unless its value cannot be read.
    const ParameterValue current = m_node.getDataValid() ? m_kind.value(m_node) : ParameterValue();
    const auto isCurrent = [&current](const ParameterChoice& choice) {
        if (const auto* number = std::get_if<long long>(&current))
            return *number == choice.value;
        if (const auto* symbolic = std::get_if<std::string>(&current))
            return *symbolic == choice.symbolic;
        return false;
    };
    QStringList lines;
    for (const ParameterChoice& choice : m_kind.limits(m_node).choices) {
        const std::string& name = choice.displayName.empty() ? choice.symbolic : choice.displayName;
        QString line = QStringLiteral("%1 = %2").arg(latin1(name)).arg(choice.value);
        if (isCurrent(choice))
            line += QStringLiteral(", current");
        if (choice.access == peamNotImplemented)
            line += QStringLiteral(", not implemented");
        else if (choice.access == peamNotAvailable)
            line += QStringLiteral(", not available now");
        lines << line;
    }
    return lines.join(QLatin1Char('\n'));
}

bool FeatureFacts::hasValue() const
{
    return m_kind.holdsValue();
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
