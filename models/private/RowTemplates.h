#pragma once

// The definitions of the row templates of vorn/models/Qt4ParameterRows.h. Only the library's row
// classes include them, to instantiate the templates for themselves.

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/private/ValueTexts.h>

#include <vorn/host/MvParametersStringNode.h>

#include <QColor>
#include <QSize>

namespace vorn {
namespace core {
namespace rows {

template <class Self, int rowHeight, class Factory>
QVariant StyledBaseRow<Self, rowHeight, Factory>::dataDisplayRole(int column)
{
    return entryName(this->node(), column);
}

template <class Self, int rowHeight, class Factory>
QVariant StyledBaseRow<Self, rowHeight, Factory>::dataFontRole(int)
{
    return rowFonts().plain;
}

template <class Self, int rowHeight, class Factory>
QVariant StyledBaseRow<Self, rowHeight, Factory>::dataToolTipRole(int)
{
    return entryToolTip(this->node());
}

template <class Self, int rowHeight, class Factory>
QVariant StyledBaseRow<Self, rowHeight, Factory>::dataSizeHintRole(int)
{
    return QSize(-1, rowHeight);
}

template <class Self, int rowHeight, class Factory>
QVariant StyledBaseRow<Self, rowHeight, Factory>::dataBranchBackgroundRole(int)
{
    return QVariant();
}

template <class Self, int rowHeight, class Factory>
bool StyledBaseRow<Self, rowHeight, Factory>::isEnabled(int column)
{
    return column == 0 || valueEditable(this->node(), column);
}

template <class Self, int rowHeight, class Factory>
bool StyledBaseRow<Self, rowHeight, Factory>::isReadOnly(int column)
{
    return column == 0 || !valueEditable(this->node(), column);
}

template <class Self, int rowHeight, class Factory>
bool StyledBaseRow<Self, rowHeight, Factory>::isSelectable(int)
{
    return true;
}

template <class Self, int rowHeight, class Factory>
bool StyledBaseRow<Self, rowHeight, Factory>::isGridEnabled(int)
{
    return true;
}

template <class Self, int rowHeight, class Factory>
void StyledBaseRow<Self, rowHeight, Factory>::setupChildren()
{
    if (this->node())
        Qt4GenericModelNode::setupChildren(childContainerOf(this->node()));
}

template <class Self, int rowHeight, class Factory>
boost::shared_ptr<Qt4GenericModelNode>
StyledBaseRow<Self, rowHeight, Factory>::do_create(boost::shared_ptr<GenericModelNode> node,
                                                   boost::shared_ptr<GenericModelNode> parent,
                                                   const boost::any& data)
{
    return Factory::create(node, this->genericModel(), node, parent, data);
}

template <class Self, int rowHeight, class Factory>
boost::shared_ptr<Qt4GenericModelNode>
StyledBaseRow<Self, rowHeight, Factory>::do_create(boost::shared_ptr<GenericModelNode> node,
                                                   const boost::any& data)
{
    return Factory::create(node, this->genericModel(), node, data);
}

template <class Base, class Self> void EntryRow<Base, Self>::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_colour = QColor(Qt::red);
}

template <class Base, class Self> QVariant EntryRow<Base, Self>::dataForegroundRole(int column)
{
    return column == 0 ? m_colour : QVariant();
}

template <class Base, class Self, ValueText text> void ValueRow<Base, Self, text>::postInsert()
{
    Qt4GenericModelNode::postInsert();
    switch (text) {
    case ValueText::Float:
    case ValueText::FloatWithIndex:
        m_icon = typeIcon(":/parameters/float.png");
        break;
    case ValueText::Enumeration:
        m_icon = typeIcon(":/parameters/enumeration.png");
        break;
    case ValueText::String:
        m_icon = typeIcon(":/parameters/string.png");
        break;
    }
}

// A string shows whatever the tree holds, whether its last read succeeded or not.
template <class Base, class Self, ValueText text>
QVariant ValueRow<Base, Self, text>::dataDisplayRole(int column)
{
    if (column != 1)
        return Base::dataDisplayRole(column);
    const boost::shared_ptr<GenericModelNode>& node = this->node();
    switch (text) {
    case ValueText::Float:
        return floatDisplay(node, false);
    case ValueText::FloatWithIndex:
        return floatDisplay(node, true);
    case ValueText::Enumeration:
        return enumerationDisplay(node);
    case ValueText::String:
        break;
    }
    return rows::text(nodeAs<models::MvParametersStringNode>(node).getNodeValue());
}

template <class Base, class Self, ValueText text>
QVariant ValueRow<Base, Self, text>::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

template <class Base, class Self> QVariant StringRow<Base, Self>::dataFontRole(int column)
{
    return column == 1 ? rowFonts().fixedBold : Base::dataFontRole(column);
}

template <class Base, class Self> void BooleanRow<Base, Self>::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = typeIcon(":/parameters/boolean.png");
}

// The framework offers the check box only where isUserCheckable says so; the column needs no second check.
template <class Base, class Self> void BooleanRow<Base, Self>::setCheckedState(int, Qt::CheckState state)
{
    booleanSetChecked(this->node(), state);
}

// No text beside the check box; with invalid data the cell is empty.
template <class Base, class Self> QVariant BooleanRow<Base, Self>::dataDisplayRole(int column)
{
    if (column != 1)
        return Base::dataDisplayRole(column);
    return booleanAt(this->node()).getDataValid() ? QVariant() : QVariant(QString());
}

template <class Base, class Self> QVariant BooleanRow<Base, Self>::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

template <class Base, class Self> QVariant BooleanRow<Base, Self>::dataCheckStateRole(int column)
{
    return booleanCheckState(this->node(), column, 1);
}

template <class Base, class Self> bool BooleanRow<Base, Self>::isUserCheckable(int column)
{
    return column == 1 && booleanAt(this->node()).getDataValid();
}

template <class Base, class Node, class Self> void IntegralCheckRow<Base, Node, Self>::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_icon = typeIcon(":/parameters/integer.png");
}

// The framework offers the check box only where isUserCheckable says so; column and representation need
// no second check here.
template <class Base, class Node, class Self>
void IntegralCheckRow<Base, Node, Self>::setCheckedState(int, Qt::CheckState state)
{
    integerSetChecked<Node>(this->node(), state);
}

template <class Base, class Node, class Self>
QVariant IntegralCheckRow<Base, Node, Self>::dataDecorationRole(int column)
{
    return column == 0 ? m_icon : QVariant();
}

template <class Base, class Node, class Self>
QVariant IntegralCheckRow<Base, Node, Self>::dataCheckStateRole(int column)
{
    return integerCheckState<Node>(this->node(), column, 1);
}

template <class Base, class Node, class Self>
bool IntegralCheckRow<Base, Node, Self>::isUserCheckable(int column)
{
    return integerUserCheckable<Node>(this->node(), column, 1);
}

template <class Base, class Node, class Self>
QVariant IntegralRow<Base, Node, Self>::dataDisplayRole(int column)
{
    if (column != 1)
        return Base::dataDisplayRole(column);
    return integerDisplay<Node>(this->node());
}

template <class Base, class Node, class Self> QVariant IntegralRow<Base, Node, Self>::dataFontRole(int column)
{
    return column == 1 ? integerValueFont<Node>(this->node(), false) : rowFonts().plain;
}

template <class Base, class Node, class Self>
QVariant StyledIntegralRow<Base, Node, Self>::dataDisplayRole(int column)
{
    if (column != 1)
        return Base::dataDisplayRole(column);
    return styledIntegerDisplay<Node>(this->node(), m_details);
}

template <class Base, class Node, class Self>
QVariant StyledIntegralRow<Base, Node, Self>::dataFontRole(int column)
{
    return column == 1 ? integerValueFont<Node>(this->node(), true) : Base::dataFontRole(column);
}

// Empty until the value column has been shown once. The unsigned row names the field index before the
// name, the signed one after it.
template <class Base, class Node, class Self>
QVariant StyledIntegralRow<Base, Node, Self>::dataToolTipRole(int)
{
    if (!this->node())
        return QVariant();
    const IndexRowPlace place = std::is_signed<typename Node::ValueType>::value ? IndexRowPlace::AfterName
                                                                                : IndexRowPlace::BeforeName;
    const std::string& name = nodeAs<Node>(this->node()).getName();
    return m_details.toolTip([&](typename Node::ValueType value, bool isField, int fieldIndex) {
        return integerDetailsToolTip(name, isField, fieldIndex, value, place);
    });
}

template <class Base, class Self> void StyledCategoryRow<Base, Self>::postInsert()
{
    Qt4GenericModelNode::postInsert();
    m_text = entryName(this->node(), 0);
    m_font = rowFonts().bold;
}

template <class Base, class Self> QVariant StyledCategoryRow<Base, Self>::dataDisplayRole(int column)
{
    return column == 0 ? m_text : QVariant();
}

template <class Base, class Self> QVariant StyledCategoryRow<Base, Self>::dataFontRole(int column)
{
    return column == 0 ? m_font : rowFonts().plain;
}

template <class Base, class Self> QVariant StyledCategoryRow<Base, Self>::dataSizeHintRole(int column)
{
    return column == 0 ? QVariant(QSize(-1, 12)) : QVariant();
}

template <class Base, class Self> bool StyledCategoryRow<Base, Self>::isGridEnabled(int)
{
    return false;
}

template <class Base, class Self> bool StyledCategoryRow<Base, Self>::enableFirstColumnSpanning()
{
    return true;
}

} // namespace rows
} // namespace core
} // namespace vorn
