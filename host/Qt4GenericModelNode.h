#pragma once

#include <vorn/host/Qt4GenericModelBaseNode.h>

namespace vorn {
namespace core {

// An item node bound to one GenericModelNode. Its children are made by do_create for each child of
// the generic node handed to setupChildren, in order; a null result leaves that child (and everything
// below it) out.
class VORN_MODELQT4_API Qt4GenericModelNode : public Qt4GenericModelBaseNode
{
public:
    Qt4GenericModelNode(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
                        const boost::any& extra);
    Qt4GenericModelNode(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
                        boost::shared_ptr<GenericModelNode> parent, const boost::any& extra);
    Qt4GenericModelNode(const Qt4GenericModelNode& other);
    Qt4GenericModelNode& operator=(const Qt4GenericModelNode& other);
    ~Qt4GenericModelNode() override;

    // Registers the row with its model, so that change notifications of the generic node reach it.
    void postInsert() override;
    unsigned long long uid() override;

    // Called once a shared pointer owns a newly made node.
    void postConstruct();

    // Rows read their node on every data() call: a reference, so that reading takes no atomic count.
    const boost::shared_ptr<GenericModelNode>& node() const { return m_node; }
    // The generic node given as parent to the four-argument constructor (empty otherwise).
    boost::shared_ptr<GenericModelNode> parentGenericNode() const { return m_parentNode; }
    const boost::any& extra() const { return m_extra; }

protected:
    // Refreshes state the row keeps beyond what data() reads live; the framework calls it after the
    // generic node reported a change. Nothing to do here.
    void setupNode() override;
    // Builds one row per child of container that do_create accepts.
    void setupChildren(boost::shared_ptr<GenericModelNode> container);
    using Qt4AbstractModelNode::setupChildren;

private:
    boost::shared_ptr<GenericModelNode> m_node;
    boost::shared_ptr<GenericModelNode> m_parentNode;
    boost::any m_extra;
};

} // namespace core
} // namespace vorn
