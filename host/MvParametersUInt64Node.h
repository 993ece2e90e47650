#pragma once

#include <vorn/host/MvParametersIntegralNode.h>

namespace vorn {
namespace core {
namespace models {

// An unsigned 64-bit integer feature: values above 2^63 keep their meaning.
class VORN_PARAMETERS_API MvParametersUInt64Node
    : public MvParametersIntegralNode<MvParametersUInt64Node, unsigned long long>
{
public:
    using MvParametersIntegralNode::MvParametersIntegralNode;
    ~MvParametersUInt64Node() override;
    static std::uint32_t typeId() { return pntUInt64; }
};

} // namespace models
} // namespace core
} // namespace vorn
