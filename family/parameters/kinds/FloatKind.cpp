// Floating-point features.
#include "family/parameters/kinds/KindSupport.h"

#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/MvParametersModel.h>
#include <vorn/host/ParameterText.h>

#include <charconv>
#include <limits>

namespace vorn {
namespace core {
namespace models {
namespace kinds {

namespace {

class FloatKind final : public ParameterKind
{
public:
    FloatKind() : ParameterKind(ParameterKindId::Float, "Float", true) {}

    boost::shared_ptr<MvParametersEntryNode> createNode(const boost::shared_ptr<MvParametersModel>& model,
                                                        const std::string& name) const override
    {
        return model->createNode<MvParametersFloatNode>(name);
    }

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

private:
    static MvParametersFloatNode& as(MvParametersEntryNode& node)
    {
        return static_cast<MvParametersFloatNode&>(node);
    }
    static const MvParametersFloatNode& as(const MvParametersEntryNode& node)
    {
        return static_cast<const MvParametersFloatNode&>(node);
    }
};

} // namespace

const ParameterKind& floatKind()
{
    static const FloatKind kind;
    return kind;
}

} // namespace kinds
} // namespace models
} // namespace core
} // namespace vorn
