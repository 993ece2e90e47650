#pragma once

#include <vorn/host/MvParametersEntryNode.h>

namespace vorn {
namespace core {
namespace models {

// A feature that is executed rather than given a value; active while the command runs.
class VORN_PARAMETERS_API MvParametersCommandNode
    : public TypedParameterNode<MvParametersCommandNode, MvParametersEntryNode>
{
public:
    using TypedParameterNode::TypedParameterNode;
    ~MvParametersCommandNode() override;
    static std::uint32_t typeId() { return pntCommand; }

    bool getActive() const { return m_active; }
    void setActive(bool active) { m_active = active; }

private:
    bool m_active = false;
};

} // namespace models
} // namespace core
} // namespace vorn
