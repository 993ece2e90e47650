#include <vorn/host/MvParametersEnumerationNode.h>

namespace vorn {
namespace core {
namespace models {

MvParametersEnumEntryNode::MvParametersEnumEntryNode(const boost::shared_ptr<GenericModel>& model,
                                                     const std::string& symbolic, long long value)
    : TypedParameterNode(model, symbolic), m_value(value)
{
    setAccessMode(peamReadOnly);
}

MvParametersEnumEntryNode::~MvParametersEnumEntryNode() = default;

MvParametersEnumerationNode::MvParametersEnumerationNode(const boost::shared_ptr<GenericModel>& model,
                                                         const std::string& name)
    : TypedParameterNode(model, name), m_entries(new ChildNodesEntryNode(model))
{}

MvParametersEnumerationNode::~MvParametersEnumerationNode() = default;

boost::shared_ptr<GenericModelNodeChildrenIterator<MvParametersEnumEntryNode>>
MvParametersEnumerationNode::getEnumEntryNodes() const
{
    return boost::shared_ptr<GenericModelNodeChildrenIterator<MvParametersEnumEntryNode>>(
        new GenericModelNodeChildrenIterator<MvParametersEnumEntryNode>(m_entries));
}

boost::shared_ptr<MvParametersEnumEntryNode>
MvParametersEnumerationNode::getEnumEntryNodesEntry(const std::string& symbolic) const
{
    // Enumerations hold a handful of entries; a linear walk beats keeping an index up to date. Views
    // ask for the current entry on every repaint: the entry found last is tried first, and the walk
    // takes no reference until it found the entry.
    const auto& entries = m_entries->children();
    auto matches = [&](std::size_t i) {
        return static_cast<const MvParametersEnumEntryNode&>(*entries[i]).getSymbolic() == symbolic;
    };
    const std::size_t hint = m_lastFound.load(std::memory_order_relaxed);
    if (hint < entries.size() && matches(hint))
        return boost::static_pointer_cast<MvParametersEnumEntryNode>(entries[hint]);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (matches(i)) {
            m_lastFound.store(i, std::memory_order_relaxed);
            return boost::static_pointer_cast<MvParametersEnumEntryNode>(entries[i]);
        }
    }
    return boost::shared_ptr<MvParametersEnumEntryNode>();
}

boost::shared_ptr<MvParametersEnumEntryNode> MvParametersEnumerationNode::entryByValue(long long value) const
{
    for (const auto& child : m_entries->children()) {
        if (static_cast<const MvParametersEnumEntryNode&>(*child).getValue() == value)
            return boost::static_pointer_cast<MvParametersEnumEntryNode>(child);
    }
    return boost::shared_ptr<MvParametersEnumEntryNode>();
}

void MvParametersEnumerationNode::addEntry(const boost::shared_ptr<MvParametersEnumEntryNode>& entry)
{
    if (!entry)
        return;
    m_entries->appendChild(entry);
    entry->setParentNode(boost::const_pointer_cast<GenericModelNode>(shared_from_this()));
}

void MvParametersEnumerationNode::setNodeValue(const std::string& symbolic)
{
    m_value = symbolic;
    if (auto entry = getEnumEntryNodesEntry(symbolic))
        m_intValue = entry->getValue();
}

void MvParametersEnumerationNode::setNodeIntValue(long long value)
{
    m_intValue = value;
    auto entry = entryByValue(value);
    m_value = entry ? entry->getSymbolic() : std::string();
}

} // namespace models
} // namespace core
} // namespace vorn
