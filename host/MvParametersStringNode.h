#pragma once

#include <vorn/host/MvParametersEntryNode.h>

namespace vorn {
namespace core {
namespace models {

// A text feature.
class VORN_PARAMETERS_API MvParametersStringNode
    : public TypedParameterNode<MvParametersStringNode, MvParametersEntryNode>
{
public:
    using TypedParameterNode::TypedParameterNode;
    ~MvParametersStringNode() override;
    static std::uint32_t typeId() { return pntString; }

    const std::string& getNodeValue() const { return m_value; }
    long long getMaxLength() const { return m_maxLength; }

    void setNodeValue(const std::string& value) { m_value = value; }
    void setMaxLength(long long length) { m_maxLength = length; }

private:
    std::string m_value;
    long long m_maxLength = 255;
};

} // namespace models
} // namespace core
} // namespace vorn
