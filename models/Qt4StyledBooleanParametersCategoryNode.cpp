#include <vorn/models/Qt4StyledBooleanParametersCategoryNode.h>

#include <vorn/models/private/RowFactory.h>

#include <vorn/models/private/StyledRowSupport.h>

#include <QSize>

namespace vorn {
namespace core {

Qt4StyledBooleanParametersCategoryNode::~Qt4StyledBooleanParametersCategoryNode() = default;

boost::shared_ptr<Qt4StyledBooleanParametersCategoryNode> Qt4StyledBooleanParametersCategoryNode::create(
    boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledBooleanParametersCategoryNode>(model, node, data);
}

boost::shared_ptr<Qt4StyledBooleanParametersCategoryNode> Qt4StyledBooleanParametersCategoryNode::create(
    boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
    boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledBooleanParametersCategoryNode>(model, node, parentNode, data);
}

void Qt4StyledBooleanParametersCategoryNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_text = rows::entryName(node(), 0);
    m_font = rows::rowFonts().bold;
}

QVariant Qt4StyledBooleanParametersCategoryNode::dataDisplayRole(int column)
{
    return column == 0 ? m_text : QVariant();
}

QVariant Qt4StyledBooleanParametersCategoryNode::dataFontRole(int column)
{
    return column == 0 ? m_font : rows::rowFonts().plain;
}

QVariant Qt4StyledBooleanParametersCategoryNode::dataBackgroundRole(int column)
{
    return column == 0 ? m_background : QVariant();
}

QVariant Qt4StyledBooleanParametersCategoryNode::dataForegroundRole(int column)
{
    return column == 0 ? m_foreground : QVariant();
}

QVariant Qt4StyledBooleanParametersCategoryNode::dataSizeHintRole(int column)
{
    return column == 0 ? QVariant(QSize(-1, 12)) : QVariant();
}

bool Qt4StyledBooleanParametersCategoryNode::isGridEnabled(int)
{
    return false;
}

bool Qt4StyledBooleanParametersCategoryNode::enableFirstColumnSpanning()
{
    return true;
}

bool Qt4StyledBooleanParametersCategoryNode::enableAutoExpand()
{
    return true;
}

} // namespace core
} // namespace vorn
