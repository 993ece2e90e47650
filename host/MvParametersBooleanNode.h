#pragma once

#include <vorn/host/MvParametersEntryNode.h>

namespace vorn {
namespace core {
namespace models {

// A boolean feature.
class VORN_PARAMETERS_API MvParametersBooleanNode
    : public TypedParameterNode<MvParametersBooleanNode, MvParametersEntryNode>
{
public:
    using TypedParameterNode::TypedParameterNode;
    ~MvParametersBooleanNode() override;
    static std::uint32_t typeId() { return pntBoolean; }

    bool getValueSet() const { return m_value; }
    void setValueSet(bool value) { m_value = value; }

private:
    bool m_value = false;
};

} // namespace models
} // namespace core
} // namespace vorn
