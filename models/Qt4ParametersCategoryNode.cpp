#include <vorn/models/Qt4ParametersCategoryNode.h>

#include <vorn/models/private/ParameterRowSupport.h>
#include <vorn/models/private/RowFactory.h>

namespace vorn {
namespace core {

Qt4ParametersCategoryNode::~Qt4ParametersCategoryNode() = default;

boost::shared_ptr<Qt4ParametersCategoryNode>
Qt4ParametersCategoryNode::create(boost::shared_ptr<GenericModel> model,
                                  boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4ParametersCategoryNode>(model, node, data);
}

boost::shared_ptr<Qt4ParametersCategoryNode>
Qt4ParametersCategoryNode::create(boost::shared_ptr<GenericModel> model,
                                  boost::shared_ptr<GenericModelNode> node,
                                  boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4ParametersCategoryNode>(model, node, parentNode, data);
}

void Qt4ParametersCategoryNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_font = rows::rowFonts().bold;
}

QVariant Qt4ParametersCategoryNode::dataFontRole(int column)
{
    return column == 0 ? m_font : QVariant();
}

bool Qt4ParametersCategoryNode::enableFirstColumnSpanning()
{
    return true;
}

} // namespace core
} // namespace vorn
