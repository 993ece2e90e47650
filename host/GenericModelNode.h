#pragma once

#include <vorn/base/VornExport.h>

#include <boost/enable_shared_from_this.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/weak_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vorn {
namespace core {

class GenericModel;
class GenericModelNode;

namespace aspects {

// The parent aspect of a node: a non-owning link to the node above it.
class VORN_CORE_API Parent
{
public:
    explicit Parent(boost::weak_ptr<GenericModelNode> parent = boost::weak_ptr<GenericModelNode>());

    // The parent node itself; empty for a root or a detached node.
    boost::shared_ptr<GenericModelNode> get() const;

private:
    boost::weak_ptr<GenericModelNode> m_parent;
};

} // namespace aspects

// A node of a generic model: an ordered list of children, a parent link, the model that owns it, a
// class identity and an optional custom sort key.
//
// typeId() is not virtual: classes further down publish a static typeId() of the same name, which a
// virtual member would forbid. The dynamic identity comes from the protected doTypeId() slot instead.
class VORN_CORE_API GenericModelNode : public boost::enable_shared_from_this<GenericModelNode>
{
public:
    using Ptr = boost::shared_ptr<GenericModelNode>;
    using Children = std::vector<Ptr>;

    explicit GenericModelNode(
        const boost::shared_ptr<GenericModel>& model = boost::shared_ptr<GenericModel>());
    GenericModelNode(const GenericModelNode&) = delete;
    GenericModelNode& operator=(const GenericModelNode&) = delete;
    virtual ~GenericModelNode();

    virtual boost::shared_ptr<aspects::Parent> _parent() const;
    virtual bool hasCustomSortKey() const;
    virtual std::uint64_t customSortKey() const;

    // The class identity of the node as its most derived class reports it.
    std::uint32_t typeId() const { return doTypeId(); }

    // The model that owns this node; empty once the model is gone.
    boost::shared_ptr<GenericModel> model() const;
    void setModel(const boost::shared_ptr<GenericModel>& model);

    const Children& children() const { return m_children; }
    std::size_t childCount() const { return m_children.size(); }
    Ptr child(std::size_t i) const { return i < m_children.size() ? m_children[i] : Ptr(); }

    // Hands the children over to the caller and leaves the node without any: for owners that take a
    // tree apart level by level rather than by as many nested destructors as the tree is deep.
    Children takeChildren();

    // Appends child in last position and makes this node its parent. A child without a model joins
    // this node's model.
    void appendChild(const Ptr& child);
    void setParentNode(const Ptr& parent);

    void setCustomSortKey(std::uint64_t key);
    void clearCustomSortKey();

protected:
    // Identity of the generic node class itself; every concrete class overrides it.
    virtual std::uint32_t doTypeId() const;

private:
    boost::weak_ptr<GenericModel> m_model;
    boost::weak_ptr<GenericModelNode> m_parent;
    Children m_children;
    std::uint64_t m_sortKey = 0;
    bool m_hasSortKey = false;
};

// Walks the children of a node that are of class T, in order, skipping any that are not.
template <class T> class GenericModelNodeChildrenIterator
{
public:
    explicit GenericModelNodeChildrenIterator(const boost::shared_ptr<GenericModelNode>& parent)
        : m_parent(parent)
    {
        skipForeign();
    }

    bool hasNext() const { return m_parent && m_index < m_parent->childCount(); }

    boost::shared_ptr<T> next()
    {
        if (!hasNext())
            return boost::shared_ptr<T>();
        boost::shared_ptr<T> result = boost::dynamic_pointer_cast<T>(m_parent->child(m_index++));
        skipForeign();
        return result;
    }

    void reset()
    {
        m_index = 0;
        skipForeign();
    }

private:
    void skipForeign()
    {
        while (hasNext() && !boost::dynamic_pointer_cast<T>(m_parent->child(m_index)))
            ++m_index;
    }

    boost::shared_ptr<GenericModelNode> m_parent;
    std::size_t m_index = 0;
};

} // namespace core
} // namespace vorn
