#include <vorn/host/GenericModelNode.h>

#include <vorn/host/GenericModel.h>

namespace vorn {
namespace core {

namespace aspects {

Parent::Parent(boost::weak_ptr<GenericModelNode> parent) : m_parent(std::move(parent)) {}

boost::shared_ptr<GenericModelNode> Parent::get() const
{
    return m_parent.lock();
}

} // namespace aspects

namespace {
// The identity of a bare generic node, one that no parameter class claims.
constexpr std::uint32_t kGenericNodeTypeId = 0;
} // namespace

GenericModelNode::GenericModelNode(const boost::shared_ptr<GenericModel>& model) : m_model(model) {}

GenericModelNode::~GenericModelNode() = default;

boost::shared_ptr<aspects::Parent> GenericModelNode::_parent() const
{
    return boost::shared_ptr<aspects::Parent>(new aspects::Parent(m_parent));
}

bool GenericModelNode::hasCustomSortKey() const
{
    return m_hasSortKey;
}

std::uint64_t GenericModelNode::customSortKey() const
{
    return m_sortKey;
}

std::uint32_t GenericModelNode::doTypeId() const
{
    return kGenericNodeTypeId;
}

boost::shared_ptr<GenericModel> GenericModelNode::model() const
{
    return m_model.lock();
}

void GenericModelNode::setModel(const boost::shared_ptr<GenericModel>& model)
{
    m_model = model;
}

GenericModelNode::Children GenericModelNode::takeChildren()
{
    Children children;
    children.swap(m_children);
    return children;
}

void GenericModelNode::appendChild(const Ptr& child)
{
    if (!child)
        return;
    m_children.push_back(child);
    child->m_parent = weak_from_this();
    if (child->m_model.expired())
        child->m_model = m_model;
}

void GenericModelNode::setParentNode(const Ptr& parent)
{
    m_parent = parent;
}

void GenericModelNode::setCustomSortKey(std::uint64_t key)
{
    m_sortKey = key;
    m_hasSortKey = true;
}

void GenericModelNode::clearCustomSortKey()
{
    m_sortKey = 0;
    m_hasSortKey = false;
}

} // namespace core
} // namespace vorn
