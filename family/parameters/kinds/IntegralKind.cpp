// The signed and the unsigned 64-bit integer kinds: one implementation over the node class and its
// value type.
#include "family/parameters/kinds/KindSupport.h"

#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/MvParametersModel.h>
#include <vorn/host/MvParametersUInt64Node.h>
#include <vorn/host/ParameterText.h>

#include <limits>
#include <type_traits>

namespace vorn {
namespace core {
namespace models {
namespace kinds {

namespace {

template <class Node> class IntegralKind final : public ParameterKind
{
public:
    using T = typename Node::ValueType;
    static constexpr bool isSigned = std::is_signed<T>::value;

    IntegralKind()
        : ParameterKind(isSigned ? ParameterKindId::Integer : ParameterKindId::UInt64,
                        isSigned ? "Integer" : "Unsigned 64-bit integer", true)
    {}

    boost::shared_ptr<MvParametersEntryNode> createNode(const boost::shared_ptr<MvParametersModel>& model,
                                                        const std::string& name) const override
    {
        return model->createNode<Node>(name);
    }

    ParameterValue value(const MvParametersEntryNode& node) const override { return as(node).getNodeValue(); }

    ParameterLimits limits(const MvParametersEntryNode& node) const override
    {
        const Node& n = as(node);
        ParameterLimits limits;
        limits.minimum = n.getMinValue();
        limits.maximum = n.getMaxValue();
        limits.increment = n.getStepValue();
        return limits;
    }

    ParameterPresentation presentation(const MvParametersEntryNode& node) const override
    {
        const Node& n = as(node);
        ParameterPresentation p;
        p.unit = n.getUnit();
        p.representation = n.getRepresentation();
        p.isField = n.getIsField();
        p.fieldIndex = n.getCurrentFieldIndex();
        return p;
    }

    void setValue(MvParametersEntryNode& node, const ParameterValue& value) const override
    {
        if (const T* v = std::get_if<T>(&value))
            as(node).setNodeValue(*v);
    }

    void setLimits(MvParametersEntryNode& node, const ParameterLimits& limits) const override
    {
        Node& n = as(node);
        n.setRange(bound(limits.minimum, std::numeric_limits<T>::lowest()),
                   bound(limits.maximum, std::numeric_limits<T>::max()));
        n.setStepValue(bound(limits.increment, T(1)));
    }

    void setPresentation(MvParametersEntryNode& node, const ParameterPresentation& p) const override
    {
        Node& n = as(node);
        n.setUnit(p.unit);
        n.setRepresentation(p.representation.value_or(pirPureNumber));
        n.setField(p.isField, p.fieldIndex);
    }

    std::string refusal(const boost::any& value, const ParameterLimits& limits) const override
    {
        const T* v = boost::any_cast<T>(&value);
        if (!v)
            return std::string("expects a value of type ") + (isSigned ? "long long" : "unsigned long long");
        const T* min = std::get_if<T>(&limits.minimum);
        const T* max = std::get_if<T>(&limits.maximum);
        const T* step = std::get_if<T>(&limits.increment);
        if (min && *v < *min)
            return text(*v) + " is below the minimum " + text(*min);
        if (max && *v > *max)
            return text(*v) + " is above the maximum " + text(*max);
        // Increments count from the minimum (from 0 where it is not known), in unsigned arithmetic: the
        // distance from the minimum always fits, over the whole signed range too.
        const T from = min ? *min : T(0);
        if (step && *step > 1 && (U(*v) - U(from)) % U(*step) != 0)
            return text(*v) + " is not a multiple of the increment " + text(*step) + " from " + text(from);
        return std::string();
    }

    // The editor's check: the value inside the range and a whole number of increments above the minimum.
    // An increment of 0 accepts only the one value of a single-value range.
    std::optional<EditWarning> editWarning(const MvParametersEntryNode& node,
                                           const boost::any& value) const override
    {
        const T* v = boost::any_cast<T>(&value);
        if (!v)
            return std::nullopt;
        const Node& n = as(node);
        const T min = n.getMinValue();
        const T max = n.getMaxValue();
        const T step = n.getStepValue();
        if (accepts(*v, min, max, step))
            return std::nullopt;
        std::string text =
            "Illegal number (%1): The value of <b>%2</b> must be between %3 and %4 (stepsize %5).";
        for (const std::string& a : {texts::digits(*v, 10), n.getName(), texts::digits(min, 10),
                                     texts::digits(max, 10), texts::digits(step, 10)})
            text = texts::arg(text, a);
        return EditWarning{"Parameter Range", text};
    }

    // Decimal, or "0x" hex for hexadecimal numbers and MAC addresses (a negative value stays decimal),
    // dotted for IPv4 addresses.
    std::optional<std::string> format(const MvParametersEntryNode& node) const override
    {
        if (!node.getDataValid())
            return std::nullopt;
        const Node& n = as(node);
        const T v = n.getNodeValue();
        switch (n.getRepresentation()) {
        case pirHexNumber:
        case pirMACAddress:
            if (v < T(0))
                return text(v);
            return "0x" + texts::digits(v, 16);
        case pirIPV4Address:
            if (isSigned)
                return texts::integerText(v, pirIPV4Address, std::string());
            return text(v);
        default:
            return text(v);
        }
    }

    bool parse(const MvParametersEntryNode& node, const std::string& input, boost::any* value,
               std::string* reason) const override
    {
        bool flag = false;
        if (as(node).getRepresentation() == pirBoolean && booleanOf(input, &flag)) {
            *value = T(flag ? 1 : 0);
            return true;
        }
        bool negative = false;
        unsigned long long magnitude = 0;
        if (!integerOf(input, &negative, &magnitude)) {
            *reason = isSigned ? "not an integer" : "not an unsigned integer";
            return false;
        }
        if (isSigned) {
            const auto limit = static_cast<unsigned long long>(std::numeric_limits<long long>::max());
            if (magnitude > limit + (negative ? 1 : 0)) {
                *reason = "outside the 64-bit integer range";
                return false;
            }
            // Negating in unsigned arithmetic keeps the most negative value exact.
            *value = static_cast<T>(negative ? 0ull - magnitude : magnitude);
            return true;
        }
        if (negative && magnitude != 0) {
            *reason = "negative, but the feature is unsigned";
            return false;
        }
        *value = static_cast<T>(magnitude);
        return true;
    }

    std::string rangeText(const MvParametersEntryNode& node) const override
    {
        return text(as(node).getMinValue()) + " to " + text(as(node).getMaxValue());
    }

    std::string incrementText(const MvParametersEntryNode& node) const override
    {
        return text(as(node).getStepValue());
    }

private:
    using U = typename std::make_unsigned<T>::type;

    static Node& as(MvParametersEntryNode& node) { return static_cast<Node&>(node); }
    static const Node& as(const MvParametersEntryNode& node) { return static_cast<const Node&>(node); }
    static std::string text(T value) { return texts::digits(value, 10); }
    static T bound(const ParameterValue& value, T otherwise)
    {
        const T* v = std::get_if<T>(&value);
        return v ? *v : otherwise;
    }

    static bool accepts(T value, T min, T max, T step)
    {
        if (value < min || value > max)
            return false;
        if (step == 0)
            return min == max;
        if constexpr (isSigned) {
            // The difference is taken modulo 2^64: in a range wider than the signed type it wraps to a
            // negative number, and the truncating signed remainder decides. Every number is a multiple
            // of -1, and the most negative difference divided by -1 would trap.
            if (step == -1)
                return true;
            const T difference = static_cast<T>(U(value) - U(min));
            return difference % step == 0;
        } else {
            return (value - min) % step == 0;
        }
    }
};

} // namespace

const ParameterKind& integerKind()
{
    static const IntegralKind<MvParametersIntegerNode> kind;
    return kind;
}

const ParameterKind& uint64Kind()
{
    static const IntegralKind<MvParametersUInt64Node> kind;
    return kind;
}

} // namespace kinds
} // namespace models
} // namespace core
} // namespace vorn
