#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>

#include <vorn/models/Qt4StyledBooleanParametersBooleanNode.h>
#include <vorn/models/Qt4StyledBooleanParametersCategoryNode.h>
#include <vorn/models/Qt4StyledBooleanParametersEntryNode.h>
#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/RowTemplates.h>

namespace vorn {
namespace core {

using namespace models;

Qt4StyledBooleanParametersModelNode::~Qt4StyledBooleanParametersModelNode() = default;

namespace {

// Categories, booleans and plain entries only: the framework leaves out every other kind, and all
// below it.
template <class... Args>
boost::shared_ptr<Qt4GenericModelNode> createEventRow(const boost::shared_ptr<GenericModelNode>& node,
                                                      const Args&... args)
{
    if (!node)
        return boost::shared_ptr<Qt4GenericModelNode>();
    const std::uint32_t type = node->typeId();
    if (type == MvParametersCategoryNode::typeId())
        return Qt4StyledBooleanParametersCategoryNode::create(args...);
    if (type == MvParametersBooleanNode::typeId())
        return Qt4StyledBooleanParametersBooleanNode::create(args...);
    if (type == MvParametersEntryNode::typeId())
        return Qt4StyledBooleanParametersEntryNode::create(args...);
    return boost::shared_ptr<Qt4GenericModelNode>();
}

} // namespace

boost::shared_ptr<Qt4GenericModelNode>
Qt4StyledBooleanParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node,
                                               boost::shared_ptr<GenericModelNode> parent,
                                               const boost::any& data)
{
    return createEventRow(node, genericModel(), node, parent, data);
}

boost::shared_ptr<Qt4GenericModelNode>
Qt4StyledBooleanParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node,
                                               const boost::any& data)
{
    return createEventRow(node, genericModel(), node, data);
}

template class rows::StyledBaseRow<Qt4StyledBooleanParametersModelNode, 16>;

} // namespace core
} // namespace vorn
