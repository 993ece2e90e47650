// The parameter kinds, one class a kind, and the one place that tells them apart by the node classes'
// type ids. What a kind's rows and editors show is the views' (models/, delegate/); what its values
// mean, how writes of them are checked and how they read as text is here.
#include <vorn/host/ParameterKind.h>

#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersCategoryNode.h>
#include <vorn/host/MvParametersCommandNode.h>
#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/MvParametersModel.h>
#include <vorn/host/MvParametersStringNode.h>
#include <vorn/host/MvParametersUInt64Node.h>
#include <vorn/host/ParameterText.h>

#include <charconv>
#include <limits>
#include <type_traits>

namespace vorn {
namespace core {
namespace models {

namespace {

// ----- reading values from text -----

bool digitsOf(const std::string& text, int base, unsigned long long* magnitude)
{
    if (text.empty())
        return false;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), *magnitude, base);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

// a.b.c.d with four bytes, the first the most significant.
bool dottedOf(const std::string& text, unsigned long long* value)
{
    unsigned long long result = 0;
    std::size_t start = 0;
    for (int part = 0; part < 4; ++part) {
        const std::size_t dot = part < 3 ? text.find('.', start) : text.size();
        if (dot == std::string::npos)
            return false;
        unsigned long long byte = 0;
        if (!digitsOf(text.substr(start, dot - start), 10, &byte) || byte > 255)
            return false;
        result = (result << 8) | byte;
        start = dot + 1;
    }
    *value = result;
    return true;
}

// Six hex bytes joined by ':', the first the least significant.
bool colonOf(const std::string& text, unsigned long long* value)
{
    if (text.size() != 17)
        return false;
    unsigned long long result = 0;
    for (int i = 0; i < 6; ++i) {
        if (i > 0 && text[3 * i - 1] != ':')
            return false;
        unsigned long long byte = 0;
        if (!digitsOf(text.substr(3 * i, 2), 16, &byte))
            return false;
        result |= byte << (8 * i);
    }
    *value = result;
    return true;
}

using texts::trimmed;

std::string lowered(std::string text)
{
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

// An integer's sign and magnitude, written in decimal, with 0x or 0b, and for an IPv4 address or a
// MAC address also dotted or colon-separated (as the views show them; for other integers such text is
// a mistake, not a number); blanks around it are allowed.
bool integerOf(const std::string& input, ParameterIntegerRepresentation representation, bool* negative,
               unsigned long long* magnitude)
{
    std::string text = trimmed(input);
    *negative = !text.empty() && text[0] == '-';
    if (*negative || (!text.empty() && text[0] == '+'))
        text.erase(0, 1);
    const std::string prefix = lowered(text.substr(0, 2));
    if (prefix == "0x")
        return digitsOf(text.substr(2), 16, magnitude);
    if (prefix == "0b")
        return digitsOf(text.substr(2), 2, magnitude);
    if (!*negative && representation == pirIPV4Address && dottedOf(text, magnitude))
        return true;
    if (!*negative && representation == pirMACAddress && colonOf(text, magnitude))
        return true;
    return digitsOf(text, 10, magnitude);
}

// true/false, 1/0, yes/no, on/off, in any case.
bool booleanOf(const std::string& input, bool* value)
{
    const std::string text = lowered(trimmed(input));
    if (text == "true" || text == "1" || text == "yes" || text == "on") {
        *value = true;
        return true;
    }
    if (text == "false" || text == "0" || text == "no" || text == "off") {
        *value = false;
        return true;
    }
    return false;
}

// ----- the kinds -----

// A kind whose nodes are of class Node.
template <class Node> class KindOf : public ParameterKind
{
public:
    boost::shared_ptr<MvParametersEntryNode> createNode(const boost::shared_ptr<MvParametersModel>& model,
                                                        const std::string& name) const override
    {
        return model->createNode<Node>(name);
    }

protected:
    using ParameterKind::ParameterKind;

    static Node& as(MvParametersEntryNode& node) { return static_cast<Node&>(node); }
    static const Node& as(const MvParametersEntryNode& node) { return static_cast<const Node&>(node); }
};

class CategoryKind final : public KindOf<MvParametersCategoryNode>
{
public:
    CategoryKind() : KindOf(ParameterKindId::Category, "Category", false) {}

    bool parse(const MvParametersEntryNode&, const std::string&, boost::any*,
               std::string* reason) const override
    {
        *reason = "a category has no value";
        return false;
    }
};

class EntryKind final : public KindOf<MvParametersEntryNode>
{
public:
    EntryKind() : KindOf(ParameterKindId::Entry, "Other", false) {}
};

template <class Node> class IntegralKind final : public KindOf<Node>
{
public:
    using T = typename Node::ValueType;
    static constexpr bool isSigned = std::is_signed<T>::value;

    IntegralKind()
        : KindOf<Node>(isSigned ? ParameterKindId::Integer : ParameterKindId::UInt64,
                       isSigned ? "Integer" : "Unsigned 64-bit integer", true)
    {}

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
            // Dotted only where the value is an address: wider values would lose their upper bits.
            if (isSigned && v >= T(0) && v <= T(0xffffffff))
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
        if (!integerOf(input, as(node).getRepresentation(), &negative, &magnitude)) {
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

    using KindOf<Node>::as;
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

class FloatKind final : public KindOf<MvParametersFloatNode>
{
public:
    FloatKind() : KindOf(ParameterKindId::Float, "Float", true) {}

    ParameterValue value(const MvParametersEntryNode& node) const override { return as(node).getNodeValue(); }

    ParameterLimits limits(const MvParametersEntryNode& node) const override
    {
        ParameterLimits limits;
        limits.minimum = as(node).getMinValue();
        limits.maximum = as(node).getMaxValue();
        return limits;
    }

    ParameterPresentation presentation(const MvParametersEntryNode& node) const override
    {
        const MvParametersFloatNode& f = as(node);
        ParameterPresentation p;
        p.unit = f.getUnit();
        p.isField = f.getIsField();
        p.fieldIndex = f.getCurrentFieldIndex();
        return p;
    }

    void setValue(MvParametersEntryNode& node, const ParameterValue& value) const override
    {
        if (const double* v = std::get_if<double>(&value))
            as(node).setNodeValue(*v);
    }

    void setLimits(MvParametersEntryNode& node, const ParameterLimits& limits) const override
    {
        const double* min = std::get_if<double>(&limits.minimum);
        const double* max = std::get_if<double>(&limits.maximum);
        as(node).setRange(min ? *min : std::numeric_limits<double>::lowest(),
                          max ? *max : std::numeric_limits<double>::max());
    }

    void setPresentation(MvParametersEntryNode& node, const ParameterPresentation& p) const override
    {
        as(node).setUnit(p.unit);
        as(node).setField(p.isField, p.fieldIndex);
    }

    // NaN is inside no range.
    std::string refusal(const boost::any& value, const ParameterLimits& limits) const override
    {
        const double* v = boost::any_cast<double>(&value);
        if (!v)
            return "expects a value of type double";
        const double* min = std::get_if<double>(&limits.minimum);
        const double* max = std::get_if<double>(&limits.maximum);
        if (min && !(*v >= *min))
            return texts::floatText(*v) + " is below the minimum " + texts::floatText(*min);
        if (max && !(*v <= *max))
            return texts::floatText(*v) + " is above the maximum " + texts::floatText(*max);
        return std::string();
    }

    // The editor's check: the range only; floats have no increment.
    std::optional<EditWarning> editWarning(const MvParametersEntryNode& node,
                                           const boost::any& value) const override
    {
        const double* v = boost::any_cast<double>(&value);
        if (!v)
            return std::nullopt;
        const MvParametersFloatNode& f = as(node);
        if (!(f.getMinValue() > *v || *v > f.getMaxValue()))
            return std::nullopt;
        std::string text = "Illegal number (%1): The value of <b>%2</b> must be between %3 and %4.";
        for (const std::string& a : {texts::floatText(*v), f.getName(), texts::floatText(f.getMinValue()),
                                     texts::floatText(f.getMaxValue())})
            text = texts::arg(text, a);
        return EditWarning{"GenICam", text};
    }

    std::optional<std::string> format(const MvParametersEntryNode& node) const override
    {
        if (!node.getDataValid())
            return std::nullopt;
        return texts::exactFloatText(as(node).getNodeValue());
    }

    // Decimal or scientific notation with a point, as the C locale writes numbers; also nan and inf.
    bool parse(const MvParametersEntryNode&, const std::string& input, boost::any* value,
               std::string* reason) const override
    {
        std::string text = trimmed(input);
        if (!text.empty() && text[0] == '+')
            text.erase(0, 1);
        double number = 0;
        const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
        if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size()) {
            *reason = "not a number";
            return false;
        }
        *value = number;
        return true;
    }

    std::string rangeText(const MvParametersEntryNode& node) const override
    {
        return texts::exactFloatText(as(node).getMinValue()) + " to " +
               texts::exactFloatText(as(node).getMaxValue());
    }
};

class BooleanKind final : public KindOf<MvParametersBooleanNode>
{
public:
    BooleanKind() : KindOf(ParameterKindId::Boolean, "Boolean", true) {}

    ParameterValue value(const MvParametersEntryNode& node) const override { return as(node).getValueSet(); }

    void setValue(MvParametersEntryNode& node, const ParameterValue& value) const override
    {
        if (const bool* v = std::get_if<bool>(&value))
            static_cast<MvParametersBooleanNode&>(node).setValueSet(*v);
    }

    std::string refusal(const boost::any& value, const ParameterLimits&) const override
    {
        return boost::any_cast<bool>(&value) ? std::string() : "expects a value of type bool";
    }

    std::optional<std::string> format(const MvParametersEntryNode& node) const override
    {
        if (!node.getDataValid())
            return std::nullopt;
        return std::string(as(node).getValueSet() ? "true" : "false");
    }

    bool parse(const MvParametersEntryNode&, const std::string& text, boost::any* value,
               std::string* reason) const override
    {
        bool flag = false;
        if (!booleanOf(text, &flag)) {
            *reason = "not a boolean (true or false)";
            return false;
        }
        *value = flag;
        return true;
    }
};

class StringKind final : public KindOf<MvParametersStringNode>
{
public:
    StringKind() : KindOf(ParameterKindId::String, "String", true) {}

    ParameterValue value(const MvParametersEntryNode& node) const override { return as(node).getNodeValue(); }

    ParameterLimits limits(const MvParametersEntryNode& node) const override
    {
        ParameterLimits limits;
        limits.maxLength = as(node).getMaxLength();
        return limits;
    }

    void setValue(MvParametersEntryNode& node, const ParameterValue& value) const override
    {
        if (const std::string* v = std::get_if<std::string>(&value))
            as(node).setNodeValue(*v);
    }

    // A length that is not known is 0: no limit.
    void setLimits(MvParametersEntryNode& node, const ParameterLimits& limits) const override
    {
        as(node).setMaxLength(limits.maxLength.value_or(0));
    }

    // A maximum length of 0 or less sets no limit.
    std::string refusal(const boost::any& value, const ParameterLimits& limits) const override
    {
        const std::string* v = boost::any_cast<std::string>(&value);
        if (!v)
            return "expects a value of type std::string";
        if (limits.maxLength && *limits.maxLength > 0 &&
            static_cast<long long>(v->size()) > *limits.maxLength)
            return "the text is longer than " + texts::digits(*limits.maxLength, 10) + " bytes";
        return std::string();
    }

    std::optional<std::string> format(const MvParametersEntryNode& node) const override
    {
        if (!node.getDataValid())
            return std::nullopt;
        return as(node).getNodeValue();
    }

    // Any text: its length is the tree's to check, against the current limit.
    bool parse(const MvParametersEntryNode&, const std::string& text, boost::any* value,
               std::string*) const override
    {
        *value = text;
        return true;
    }
};

const ParameterChoice* choiceOf(const ParameterLimits& limits, long long value)
{
    for (const ParameterChoice& choice : limits.choices)
        if (choice.value == value)
            return &choice;
    return nullptr;
}

class EnumerationKind final : public KindOf<MvParametersEnumerationNode>
{
public:
    EnumerationKind() : KindOf(ParameterKindId::Enumeration, "Enumeration", true) {}

    ParameterValue value(const MvParametersEntryNode& node) const override
    {
        return as(node).getNodeIntValue();
    }

    // The entries, with whether each can be chosen now.
    ParameterLimits limits(const MvParametersEntryNode& node) const override
    {
        ParameterLimits limits;
        for (auto entries = as(node).getEnumEntryNodes(); entries->hasNext();) {
            const auto entry = entries->next();
            limits.choices.push_back(ParameterChoice{entry->getValue(), entry->getSymbolic(),
                                                     entry->getAccessMode(), entry->getDisplayName()});
        }
        return limits;
    }

    // The current entry follows the value: the one with that value, or none.
    void setValue(MvParametersEntryNode& node, const ParameterValue& value) const override
    {
        if (const long long* v = std::get_if<long long>(&value))
            static_cast<MvParametersEnumerationNode&>(node).setNodeIntValue(*v);
    }

    // The availability of the entries, in their order; the entries themselves belong to the node.
    void setLimits(MvParametersEntryNode& node, const ParameterLimits& limits) const override
    {
        auto entries = as(node).getEnumEntryNodes();
        for (std::size_t i = 0; i < limits.choices.size() && entries->hasNext(); ++i)
            entries->next()->setAccessMode(limits.choices[i].access);
    }

    std::string refusal(const boost::any& value, const ParameterLimits& limits) const override
    {
        const long long* v = boost::any_cast<long long>(&value);
        if (!v)
            return "expects a value of type long long";
        const ParameterChoice* choice = choiceOf(limits, *v);
        if (!choice)
            return "no entry has the value " + texts::digits(*v, 10);
        if (choice->access == peamNotImplemented)
            return "the entry " + choice->symbolic + " is not implemented";
        if (choice->access == peamNotAvailable)
            return "the entry " + choice->symbolic + " is not available";
        return std::string();
    }

    // A value is told by its entry's name where it has one.
    std::string describe(const boost::any& value, const ParameterLimits& limits) const override
    {
        if (const long long* v = boost::any_cast<long long>(&value))
            if (const ParameterChoice* choice = choiceOf(limits, *v))
                return choice->symbolic;
        return ParameterKind::describe(value, limits);
    }

    // The entry's symbolic name. A value that names no entry cannot be written back, so it has no text.
    std::optional<std::string> format(const MvParametersEntryNode& node) const override
    {
        if (!node.getDataValid() || as(node).getNodeValue().empty())
            return std::nullopt;
        return as(node).getNodeValue();
    }

    // An entry's symbolic name (in any case), its display name or its value. Whether the entry can be
    // chosen now is the tree's to say: an earlier write may have changed it.
    bool parse(const MvParametersEntryNode& node, const std::string& input, boost::any* value,
               std::string* reason) const override
    {
        const MvParametersEnumerationNode& e = as(node);
        const std::string text = trimmed(input);
        boost::shared_ptr<MvParametersEnumEntryNode> match = e.getEnumEntryNodesEntry(text);
        for (auto entries = e.getEnumEntryNodes(); !match && entries->hasNext();) {
            auto entry = entries->next();
            if (entry->getDisplayName() == text || lowered(entry->getSymbolic()) == lowered(text))
                match = entry;
        }
        if (!match) {
            bool negative = false;
            unsigned long long magnitude = 0;
            if (integerOf(text, pirPureNumber, &negative, &magnitude))
                match = e.entryByValue(static_cast<long long>(negative ? 0ull - magnitude : magnitude));
        }
        if (!match) {
            std::string names;
            for (auto entries = e.getEnumEntryNodes(); entries->hasNext();)
                names += (names.empty() ? "" : ", ") + entries->next()->getSymbolic();
            *reason = "no such entry (the entries are " + names + ")";
            return false;
        }
        *value = match->getValue();
        return true;
    }
};

class CommandKind final : public KindOf<MvParametersCommandNode>
{
public:
    CommandKind() : KindOf(ParameterKindId::Command, "Command", false) {}

    void setActive(MvParametersEntryNode& node, bool active) const override
    {
        static_cast<MvParametersCommandNode&>(node).setActive(active);
    }

    bool active(const MvParametersEntryNode& node) const override
    {
        return static_cast<const MvParametersCommandNode&>(node).getActive();
    }

    bool writable(const MvParametersEntryNode& node) const override
    {
        const ParameterEntryAccessMode mode = node.getAccessMode();
        return mode == peamReadWrite || mode == peamReadWriteIfValid;
    }

    // An execution travels as an empty value.
    std::string refusal(const boost::any& value, const ParameterLimits&) const override
    {
        return value.empty() ? std::string() : "a command takes no value";
    }

    bool parse(const MvParametersEntryNode&, const std::string& text, boost::any* value,
               std::string* reason) const override
    {
        const std::string word = lowered(trimmed(text));
        if (!word.empty() && word != "execute") {
            *reason = "a command takes no value (write Name= or Name=execute)";
            return false;
        }
        *value = boost::any();
        return true;
    }
};

} // namespace

// The one place that tells the kinds apart by the node classes' type ids.
const ParameterKind& ParameterKind::of(const GenericModelNode& node)
{
    switch (node.typeId()) {
    case pntCategory:
        return of(ParameterKindId::Category);
    case pntString:
        return of(ParameterKindId::String);
    case pntInteger:
        return of(ParameterKindId::Integer);
    case pntUInt64:
        return of(ParameterKindId::UInt64);
    case pntFloat:
        return of(ParameterKindId::Float);
    case pntBoolean:
        return of(ParameterKindId::Boolean);
    case pntCommand:
        return of(ParameterKindId::Command);
    case pntEnumeration:
        return of(ParameterKindId::Enumeration);
    default:
        return of(ParameterKindId::Entry);
    }
}

const ParameterKind& ParameterKind::of(ParameterKindId id)
{
    static const EntryKind entry;
    static const CategoryKind category;
    static const IntegralKind<MvParametersIntegerNode> integer;
    static const IntegralKind<MvParametersUInt64Node> uint64;
    static const FloatKind floating;
    static const BooleanKind boolean;
    static const StringKind string;
    static const EnumerationKind enumeration;
    static const CommandKind command;
    // In the order of ParameterKindId.
    static const ParameterKind* const kinds[] = {&entry,   &category, &integer,     &uint64, &floating,
                                                 &boolean, &string,   &enumeration, &command};
    static_assert(sizeof kinds / sizeof kinds[0] == kParameterKindCount, "a kind for every ParameterKindId");
    const auto index = static_cast<std::size_t>(id);
    return index < kParameterKindCount ? *kinds[index] : entry;
}

} // namespace models
} // namespace core
} // namespace vorn
