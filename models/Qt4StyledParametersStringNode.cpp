#include <vorn/models/Qt4StyledParametersStringNode.h>

#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/StyledRowSupport.h>

#include <vorn/host/MvParametersStringNode.h>

namespace vorn {
namespace core {

Qt4StyledParametersStringNode::~Qt4StyledParametersStringNode() = default;

boost::shared_ptr<Qt4StyledParametersStringNode>
Qt4StyledParametersStringNode::create(boost::shared_ptr<GenericModel> model,
                                      boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersStringNode>(model, node, data);
}

boost::shared_ptr<Qt4StyledParametersStringNode>
Qt4StyledParametersStringNode::create(boost::shared_ptr<GenericModel> model,
                                      boost::shared_ptr<GenericModelNode> node,
                                      boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersStringNode>(model, node, parentNode, data);
}

void Qt4StyledParametersStringNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/string.png");
}

QVariant Qt4StyledParametersStringNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4StyledParametersModelNode::dataDisplayRole(column);
    return rows::text(rows::nodeAs<models::MvParametersStringNode>(node()).getNodeValue());
}

QVariant Qt4StyledParametersStringNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

QVariant Qt4StyledParametersStringNode::dataFontRole(int column)
{
    return column == 1 ? rows::rowFonts().fixedBold : Qt4StyledParametersModelNode::dataFontRole(column);
}

} // namespace core
} // namespace vorn
