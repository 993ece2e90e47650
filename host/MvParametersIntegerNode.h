#pragma once

#include <vorn/host/MvParametersIntegralNode.h>

namespace vorn {
namespace core {
namespace models {

// A signed 64-bit integer feature.
class VORN_PARAMETERS_API MvParametersIntegerNode
    : public MvParametersIntegralNode<MvParametersIntegerNode, long long>
{
public:
    using MvParametersIntegralNode::MvParametersIntegralNode;
    ~MvParametersIntegerNode() override;
    static std::uint32_t typeId() { return pntInteger; }
};

} // namespace models
} // namespace core
} // namespace vorn
