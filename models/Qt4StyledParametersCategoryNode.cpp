#include <vorn/models/Qt4StyledParametersCategoryNode.h>

#include <vorn/models/private/RowFactory.h>

#include <vorn/models/private/StyledRowSupport.h>

#include <QSize>

namespace vorn {
namespace core {

Qt4StyledParametersCategoryNode::~Qt4StyledParametersCategoryNode() = default;

boost::shared_ptr<Qt4StyledParametersCategoryNode>
Qt4StyledParametersCategoryNode::create(boost::shared_ptr<GenericModel> model,
                                        boost::shared_ptr<GenericModelNode> node, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersCategoryNode>(model, node, data);
}

boost::shared_ptr<Qt4StyledParametersCategoryNode> Qt4StyledParametersCategoryNode::create(
    boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
    boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data)
{
    return rows::createRow<Qt4StyledParametersCategoryNode>(model, node, parentNode, data);
}

void Qt4StyledParametersCategoryNode::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_text = rows::entryName(node(), 0);
    m_font = rows::rowFonts().bold;
}

QVariant Qt4StyledParametersCategoryNode::dataDisplayRole(int column)
{
    return column == 0 ? m_text : QVariant();
}

QVariant Qt4StyledParametersCategoryNode::dataFontRole(int column)
{
    return column == 0 ? m_font : rows::rowFonts().plain;
}

QVariant Qt4StyledParametersCategoryNode::dataSizeHintRole(int column)
{
    return column == 0 ? QVariant(QSize(-1, 12)) : QVariant();
}

bool Qt4StyledParametersCategoryNode::isGridEnabled(int)
{
    return false;
}

bool Qt4StyledParametersCategoryNode::enableFirstColumnSpanning()
{
    return true;
}

} // namespace core
} // namespace vorn
