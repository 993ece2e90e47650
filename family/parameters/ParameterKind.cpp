#include <vorn/host/ParameterKind.h>

#include <vorn/host/MvParametersEntryNode.h>
#include <vorn/host/ParameterText.h>

#include <cmath>

namespace vorn {
namespace core {
namespace models {

namespace {

bool sameValue(const ParameterValue& a, const ParameterValue& b)
{
    // A float that reads NaN every time has not changed.
    const double* x = std::get_if<double>(&a);
    const double* y = std::get_if<double>(&b);
    if (x && y)
        return *x == *y || (std::isnan(*x) && std::isnan(*y));
    return a == b;
}

} // namespace

boost::any toAny(const ParameterValue& value)
{
    return std::visit(
        [](const auto& v) -> boost::any {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, std::monostate>)
                return boost::any();
            else
                return boost::any(v);
        },
        value);
}

ParameterValue fromAny(const boost::any& value)
{
    if (const auto* v = boost::any_cast<long long>(&value))
        return *v;
    if (const auto* v = boost::any_cast<unsigned long long>(&value))
        return *v;
    if (const auto* v = boost::any_cast<double>(&value))
        return *v;
    if (const auto* v = boost::any_cast<bool>(&value))
        return *v;
    if (const auto* v = boost::any_cast<std::string>(&value))
        return *v;
    return std::monostate();
}

bool ParameterLimits::operator==(const ParameterLimits& other) const
{
    return sameValue(minimum, other.minimum) && sameValue(maximum, other.maximum) &&
           sameValue(increment, other.increment) && maxLength == other.maxLength && choices == other.choices;
}

bool ParameterState::operator==(const ParameterState& other) const
{
    return valid == other.valid && access == other.access && sameValue(value, other.value) &&
           limits == other.limits && active == other.active && problem == other.problem;
}

ParameterKind::ParameterKind(ParameterKindId id, const char* name, bool holdsValue)
    : m_id(id), m_name(name), m_holdsValue(holdsValue)
{}

ParameterKind::~ParameterKind() = default;

ParameterValue ParameterKind::value(const MvParametersEntryNode&) const
{
    return std::monostate();
}

ParameterLimits ParameterKind::limits(const MvParametersEntryNode&) const
{
    return ParameterLimits();
}

ParameterPresentation ParameterKind::presentation(const MvParametersEntryNode&) const
{
    return ParameterPresentation();
}

void ParameterKind::apply(MvParametersEntryNode& node, const ParameterState& state) const
{
    node.setAccessMode(state.access);
    node.setDataValid(state.valid);
    setValue(node, state.value);
    setLimits(node, state.limits);
    setActive(node, state.active);
}

void ParameterKind::setValue(MvParametersEntryNode&, const ParameterValue&) const {}

void ParameterKind::setLimits(MvParametersEntryNode&, const ParameterLimits&) const {}

void ParameterKind::setActive(MvParametersEntryNode&, bool) const {}

bool ParameterKind::active(const MvParametersEntryNode&) const
{
    return false;
}

void ParameterKind::setPresentation(MvParametersEntryNode&, const ParameterPresentation&) const {}

bool ParameterKind::writable(const MvParametersEntryNode& node) const
{
    return node.isWritable();
}

std::string ParameterKind::refusal(const boost::any&, const ParameterLimits&) const
{
    return "the feature holds no value";
}

std::string ParameterKind::accessRefusal(ParameterEntryAccessMode access, bool locked)
{
    switch (access) {
    case peamReadWrite:
    case peamReadWriteIfValid:
        return locked ? "the feature is locked" : std::string();
    case peamNotImplemented:
        return "the feature is not implemented";
    case peamReadOnly:
        return locked ? "the feature is locked" : "the feature is read-only";
    default:
        return "the feature is not available";
    }
}

std::string ParameterKind::refusedWriteMessage(const std::string& feature, const boost::any& value,
                                               const ParameterLimits& limits, const std::string& reason) const
{
    if (m_id == ParameterKindId::Command)
        return "Cannot execute " + feature + ": " + reason;
    const std::string text = describe(value, limits);
    if (text.empty())
        return "Cannot set " + feature + ": " + reason;
    return "Cannot set " + feature + " to " + text + ": " + reason;
}

std::optional<EditWarning> ParameterKind::editWarning(const MvParametersEntryNode&, const boost::any&) const
{
    return std::nullopt;
}

std::optional<std::string> ParameterKind::format(const MvParametersEntryNode&) const
{
    return std::nullopt;
}

bool ParameterKind::parse(const MvParametersEntryNode&, const std::string&, boost::any*,
                          std::string* reason) const
{
    *reason = "the feature has no value that can be set";
    return false;
}

std::string ParameterKind::describe(const boost::any& value, const ParameterLimits&) const
{
    return std::visit(
        [](const auto& v) -> std::string {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, std::monostate>)
                return std::string();
            else if constexpr (std::is_same_v<T, bool>)
                return v ? "true" : "false";
            else if constexpr (std::is_same_v<T, double>)
                return texts::floatText(v);
            else if constexpr (std::is_same_v<T, std::string>)
                return "\"" + v + "\"";
            else
                return texts::digits(v, 10);
        },
        fromAny(value));
}

std::string ParameterKind::rangeText(const MvParametersEntryNode&) const
{
    return std::string();
}

std::string ParameterKind::incrementText(const MvParametersEntryNode&) const
{
    return std::string();
}

} // namespace models
} // namespace core
} // namespace vorn
