#include <vorn/models/Qt4ParametersStringNode.h>

#include <vorn/models/private/ParameterRowSupport.h>
#include <vorn/models/private/RowFactory.h>

#include <vorn/host/MvParametersStringNode.h>

namespace vorn {
namespace core {

Qt4ParametersStringNode::~Qt4ParametersStringNode() = default;

boost::shared_ptr<Qt4ParametersStringNode>
Qt4ParametersStringNode::create(boost::shared_ptr<GenericModel> model,
                                boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4ParametersStringNode>(model, node, data);
}

boost::shared_ptr<Qt4ParametersStringNode>
Qt4ParametersStringNode::create(boost::shared_ptr<GenericModel> model,
                                boost::shared_ptr<GenericModelNode> node,
                                boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4ParametersStringNode>(model, node, parentNode, data);
}

void Qt4ParametersStringNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = rows::typeIcon(":/parameters/string.png");
}

// The text is shown as it stands, whatever the data-valid flag says: a string has no invalid form.
QVariant Qt4ParametersStringNode::dataDisplayRole(int column)
{
    if (column != 1)
        return Qt4ParametersModelNode::dataDisplayRole(column);
    return rows::text(rows::nodeAs<models::MvParametersStringNode>(node()).getNodeValue());
}

QVariant Qt4ParametersStringNode::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

QVariant Qt4ParametersStringNode::dataFontRole(int column)
{
    return column == 1 ? rows::rowFonts().fixedBold : rows::rowFonts().plain;
}

} // namespace core
} // namespace vorn
