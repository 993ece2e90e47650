#include <vorn/models/Qt4StyledParametersModelNode.h>

#include <vorn/models/Qt4ParametersCommandNode.h>
#include <vorn/models/Qt4StyledParametersBooleanNode.h>
#include <vorn/models/Qt4StyledParametersCategoryNode.h>
#include <vorn/models/Qt4StyledParametersEntryNode.h>
#include <vorn/models/Qt4StyledParametersEnumerationNode.h>
#include <vorn/models/Qt4StyledParametersFloatNode.h>
#include <vorn/models/Qt4StyledParametersIntegerNode.h>
#include <vorn/models/Qt4StyledParametersStringNode.h>
#include <vorn/models/Qt4StyledParametersUInt64Node.h>
#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/RowTemplates.h>

namespace vorn {
namespace core {

Qt4StyledParametersModelNode::~Qt4StyledParametersModelNode() = default;

namespace {

struct StyledRows
{
    using Base = Qt4StyledParametersModelNode;
    using Category = Qt4StyledParametersCategoryNode;
    using String = Qt4StyledParametersStringNode;
    using Integer = Qt4StyledParametersIntegerNode;
    using UInt64 = Qt4StyledParametersUInt64Node;
    using Float = Qt4StyledParametersFloatNode;
    using Boolean = Qt4StyledParametersBooleanNode;
    using Command = Qt4ParametersCommandNode; // one command row serves both two-column families
    using Enumeration = Qt4StyledParametersEnumerationNode;
    using Entry = Qt4StyledParametersEntryNode;
};

} // namespace

boost::shared_ptr<Qt4GenericModelNode>
Qt4StyledParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node,
                                        boost::shared_ptr<GenericModelNode> parent, const boost::any& data)
{
    return rows::createRowFor<StyledRows>(node, genericModel(), node, parent, data);
}

boost::shared_ptr<Qt4GenericModelNode>
Qt4StyledParametersModelNode::do_create(boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRowFor<StyledRows>(node, genericModel(), node, data);
}

template class rows::StyledBaseRow<Qt4StyledParametersModelNode, 17>;

} // namespace core
} // namespace vorn
