#pragma once

#include <vorn/host/MvParametersEnumEntryNode.h>

#include <atomic>

namespace vorn {
namespace core {
namespace models {

// A feature whose value is one of a list of named entries.
class VORN_PARAMETERS_API MvParametersEnumerationNode
    : public TypedParameterNode<MvParametersEnumerationNode, MvParametersEntryNode>
{
public:
    MvParametersEnumerationNode(const boost::shared_ptr<GenericModel>& model, const std::string& name);
    ~MvParametersEnumerationNode() override;
    static std::uint32_t typeId() { return pntEnumeration; }

    // The current entry's symbolic name, and its integer value.
    const std::string& getNodeValue() const { return m_value; }
    long long getNodeIntValue() const { return m_intValue; }

    // The entries in their order.
    boost::shared_ptr<GenericModelNodeChildrenIterator<MvParametersEnumEntryNode>> getEnumEntryNodes() const;
    // The entry with this symbolic name; empty when there is none.
    boost::shared_ptr<MvParametersEnumEntryNode> getEnumEntryNodesEntry(const std::string& symbolic) const;
    // The entry with this integer value; empty when there is none.
    boost::shared_ptr<MvParametersEnumEntryNode> entryByValue(long long value) const;

    void addEntry(const boost::shared_ptr<MvParametersEnumEntryNode>& entry);
    // Makes the entry with this symbolic name current; the integer value follows when it exists.
    void setNodeValue(const std::string& symbolic);
    // Sets the integer value; the symbolic name follows the entry that has it, or is cleared.
    void setNodeIntValue(long long value);

private:
    boost::shared_ptr<ChildNodesEntryNode> m_entries;
    std::string m_value;
    long long m_intValue = 0;
    // Where the last lookup by symbolic name found its entry: views look up the current entry on
    // every repaint. Only a hint, kept so that concurrent readers stay well defined.
    mutable std::atomic<std::size_t> m_lastFound{0};
};

} // namespace models
} // namespace core
} // namespace vorn
