// Text features.
#include "family/parameters/kinds/KindSupport.h"

#include <vorn/host/MvParametersModel.h>
#include <vorn/host/MvParametersStringNode.h>
#include <vorn/host/ParameterText.h>

namespace vorn {
namespace core {
namespace models {
namespace kinds {

namespace {

class StringKind final : public ParameterKind
{
public:
    StringKind() : ParameterKind(ParameterKindId::String, "String", true) {}

    boost::shared_ptr<MvParametersEntryNode> createNode(const boost::shared_ptr<MvParametersModel>& model,
                                                        const std::string& name) const override
    {
        return model->createNode<MvParametersStringNode>(name);
    }

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

private:
    static MvParametersStringNode& as(MvParametersEntryNode& node)
    {
        return static_cast<MvParametersStringNode&>(node);
    }
    static const MvParametersStringNode& as(const MvParametersEntryNode& node)
    {
        return static_cast<const MvParametersStringNode&>(node);
    }
};

} // namespace

const ParameterKind& stringKind()
{
    static const StringKind kind;
    return kind;
}

} // namespace kinds
} // namespace models
} // namespace core
} // namespace vorn
