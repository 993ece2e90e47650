#include <vorn/host/Qt4GenericModelNode.h>

#include <vorn/host/GenericModel.h>
#include <vorn/host/GenericModelNode.h>
#include <vorn/host/Qt4GenericModel.h>

namespace vorn {
namespace core {

Qt4GenericModelBaseNode::Qt4GenericModelBaseNode(boost::shared_ptr<GenericModel> model)
    : m_genericModel(std::move(model))
{}

Qt4GenericModelBaseNode::~Qt4GenericModelBaseNode() = default;

Qt4GenericModelNode::Qt4GenericModelNode(boost::shared_ptr<GenericModel> model,
                                         boost::shared_ptr<GenericModelNode> node, const boost::any& extra)
    : Qt4GenericModelBaseNode(std::move(model)), m_node(std::move(node)), m_extra(extra)
{}

Qt4GenericModelNode::Qt4GenericModelNode(boost::shared_ptr<GenericModel> model,
                                         boost::shared_ptr<GenericModelNode> node,
                                         boost::shared_ptr<GenericModelNode> parent, const boost::any& extra)
    : Qt4GenericModelBaseNode(std::move(model)), m_node(std::move(node)), m_parentNode(std::move(parent)),
      m_extra(extra)
{}

Qt4GenericModelNode::Qt4GenericModelNode(const Qt4GenericModelNode& other) = default;

Qt4GenericModelNode& Qt4GenericModelNode::operator=(const Qt4GenericModelNode& other) = default;

Qt4GenericModelNode::~Qt4GenericModelNode() = default;

void Qt4GenericModelNode::postInsert()
{
    if (auto* generic = dynamic_cast<Qt4GenericModel*>(model()))
        generic->registerRow(this);
}

unsigned long long Qt4GenericModelNode::uid()
{
    return reinterpret_cast<quintptr>(m_node.get());
}

void Qt4GenericModelNode::postConstruct()
{
    Q_ASSERT(!weak_from_this().expired());
}

void Qt4GenericModelNode::setupNode() {}

void Qt4GenericModelNode::setupChildren(boost::shared_ptr<GenericModelNode> container)
{
    if (!container)
        return;
    for (const auto& child : container->children()) {
        boost::shared_ptr<Qt4GenericModelNode> row = do_create(child, m_extra);
        if (!row)
            continue;
        appendChildNode(row);
        row->postInsert();
        row->setupChildren();
    }
}

} // namespace core
} // namespace vorn
