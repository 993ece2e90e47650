// Boolean features.
#include "family/parameters/kinds/KindSupport.h"

#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersModel.h>

namespace vorn {
namespace core {
namespace models {
namespace kinds {

namespace {

class BooleanKind final : public ParameterKind
{
public:
    BooleanKind() : ParameterKind(ParameterKindId::Boolean, "Boolean", true) {}

    boost::shared_ptr<MvParametersEntryNode> createNode(const boost::shared_ptr<MvParametersModel>& model,
                                                        const std::string& name) const override
    {
        return model->createNode<MvParametersBooleanNode>(name);
    }

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

private:
    static const MvParametersBooleanNode& as(const MvParametersEntryNode& node)
    {
        return static_cast<const MvParametersBooleanNode&>(node);
    }
};

} // namespace

const ParameterKind& booleanKind()
{
    static const BooleanKind kind;
    return kind;
}

} // namespace kinds
} // namespace models
} // namespace core
} // namespace vorn
