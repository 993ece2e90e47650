#pragma once

#include <vorn/host/MvParametersEntryNode.h>

namespace vorn {
namespace core {
namespace models {

// One entry of an enumeration: its integer value and symbolic name. Its display name and access mode
// are the entry node's own.
class VORN_PARAMETERS_API MvParametersEnumEntryNode
    : public TypedParameterNode<MvParametersEnumEntryNode, MvParametersEntryNode>
{
public:
    MvParametersEnumEntryNode(const boost::shared_ptr<GenericModel>& model, const std::string& symbolic,
                              long long value);
    ~MvParametersEnumEntryNode() override;
    static std::uint32_t typeId() { return pntEnumEntry; }

    long long getValue() const { return m_value; }
    const std::string& getSymbolic() const { return getName(); }

private:
    long long m_value;
};

} // namespace models
} // namespace core
} // namespace vorn
