// Command features: executed rather than given a value.
#include "family/parameters/kinds/KindSupport.h"

#include <vorn/host/MvParametersCommandNode.h>
#include <vorn/host/MvParametersModel.h>

namespace vorn {
namespace core {
namespace models {
namespace kinds {

namespace {

class CommandKind final : public ParameterKind
{
public:
    CommandKind() : ParameterKind(ParameterKindId::Command, "Command", false) {}

    boost::shared_ptr<MvParametersEntryNode> createNode(const boost::shared_ptr<MvParametersModel>& model,
                                                        const std::string& name) const override
    {
        return model->createNode<MvParametersCommandNode>(name);
    }

    void setActive(MvParametersEntryNode& node, bool active) const override
    {
        static_cast<MvParametersCommandNode&>(node).setActive(active);
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

const ParameterKind& commandKind()
{
    static const CommandKind kind;
    return kind;
}

} // namespace kinds
} // namespace models
} // namespace core
} // namespace vorn
