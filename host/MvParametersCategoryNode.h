#pragma once

#include <vorn/host/MvParametersEntryNode.h>

namespace vorn {
namespace core {
namespace models {

// A folder of features.
class VORN_PARAMETERS_API MvParametersCategoryNode
    : public TypedParameterNode<MvParametersCategoryNode, MvParametersEntryNode>
{
public:
    using TypedParameterNode::TypedParameterNode;
    ~MvParametersCategoryNode() override;
    static std::uint32_t typeId() { return pntCategory; }
};

} // namespace models
} // namespace core
} // namespace vorn
