#pragma once

// The row implementations that the named row classes of the three model families are made of. A row
// kind behaves alike in every family that has it, so it is written once, over the family's base row
// class (Base) and the named class itself (Self, which create() makes). Each template overrides exactly
// the operations its row classes override; the named classes add nothing but their destructor.
//
// The templates are compiled into the library for the named classes only (Qt4ParameterRows.cpp), and
// exported from it: hosts use them through the named classes.

#include <vorn/base/VornExport.h>
#include <vorn/models/IntegerDetails.h>

#include <vorn/host/Qt4GenericModelNode.h>

#include <QVariant>

#include <boost/any.hpp>

namespace vorn {
namespace core {
namespace rows {

// What every row class has: its family's constructors, and create(), which makes a row in a shared
// pointer (wiring its shared this-pointer) and lets the framework finish it.
template <class Base, class Self> class VORN_PARAMETERSQT4_API Row : public Base
{
public:
    using Base::Base;

    static boost::shared_ptr<Self> create(boost::shared_ptr<GenericModel> model,
                                          boost::shared_ptr<GenericModelNode> node, const boost::any& data)
    {
        boost::shared_ptr<Self> row(new Self(std::move(model), std::move(node), data));
        row->postConstruct();
        return row;
    }
    static boost::shared_ptr<Self> create(boost::shared_ptr<GenericModel> model,
                                          boost::shared_ptr<GenericModelNode> node,
                                          boost::shared_ptr<GenericModelNode> parentNode,
                                          const boost::any& data)
    {
        boost::shared_ptr<Self> row(new Self(std::move(model), std::move(node), std::move(parentNode), data));
        row->postConstruct();
        return row;
    }
};

// The node factories of the two styled families: which row class a parameter node gets.
struct StyledFactory;
struct EventsFactory;

// The base row of the two styled families, the row of the tree's root and of kinds the family shows no
// differently: Latin-1 names and tool tips in the application font, grid lines, rows of a fixed height,
// the value column editable by access mode, and children from the parameter tree, each made by the
// family's Factory.
template <class Self, int rowHeight, class Factory>
class VORN_PARAMETERSQT4_API StyledBaseRow : public Row<Qt4GenericModelNode, Self>
{
public:
    using Row<Qt4GenericModelNode, Self>::Row;
    QVariant dataDisplayRole(int column) override;
    QVariant dataFontRole(int column) override;
    QVariant dataToolTipRole(int column) override;
    QVariant dataSizeHintRole(int column) override;
    QVariant dataBranchBackgroundRole(int column) override;
    bool isEnabled(int column) override;
    bool isReadOnly(int column) override;
    bool isSelectable(int column) override;
    bool isGridEnabled(int column) override;

protected:
    void setupChildren() override;
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     boost::shared_ptr<GenericModelNode> parent,
                                                     const boost::any& data) override;
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     const boost::any& data) override;
};

// A plain entry (or a node of a kind without a row of its own in the family): its name in red.
template <class Base, class Self> class VORN_PARAMETERSQT4_API EntryRow : public Row<Base, Self>
{
public:
    using Row<Base, Self>::Row;
    void postInsert() override;
    QVariant dataForegroundRole(int column) override;

private:
    QVariant m_colour;
};

// The value texts of ValueRow.
enum class ValueText {
    Float,          // the value and its unit
    FloatWithIndex, // the same after the field index, "[3] " (the styled family)
    Enumeration,    // the current entry's display name
    String,         // the text as it stands
};

// A row that shows its kind's icon beside the name and its value text in column 1.
template <class Base, class Self, ValueText text>
class VORN_PARAMETERSQT4_API ValueRow : public Row<Base, Self>
{
public:
    using Row<Base, Self>::Row;
    void postInsert() override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataDecorationRole(int column) override;

private:
    QVariant m_icon;
};

// A string row: the value in the bold fixed-width font.
template <class Base, class Self>
class VORN_PARAMETERSQT4_API StringRow : public ValueRow<Base, Self, ValueText::String>
{
public:
    using ValueRow<Base, Self, ValueText::String>::ValueRow;
    QVariant dataFontRole(int column) override;
};

// A boolean row of the two-column families: a check box in column 1, no text.
template <class Base, class Self> class VORN_PARAMETERSQT4_API BooleanRow : public Row<Base, Self>
{
public:
    using Row<Base, Self>::Row;
    void postInsert() override;
    void setCheckedState(int column, Qt::CheckState state) override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataDecorationRole(int column) override;
    QVariant dataCheckStateRole(int column) override;
    bool isUserCheckable(int column) override;

private:
    QVariant m_icon;
};

// What the integer rows of both two-column families share, over the parameter node class (signed or
// unsigned): the integer icon, and the check box of an integer shown as one (representation 3).
template <class Base, class Node, class Self>
class VORN_PARAMETERSQT4_API IntegralCheckRow : public Row<Base, Self>
{
public:
    using Row<Base, Self>::Row;
    void postInsert() override;
    void setCheckedState(int column, Qt::CheckState state) override;
    QVariant dataDecorationRole(int column) override;
    QVariant dataCheckStateRole(int column) override;
    bool isUserCheckable(int column) override;

private:
    QVariant m_icon;
};

// The plain family's integer row: the value by its representation in a bold font (hex and addresses
// fixed-width).
template <class Base, class Node, class Self>
class VORN_PARAMETERSQT4_API IntegralRow : public IntegralCheckRow<Base, Node, Self>
{
public:
    using IntegralCheckRow<Base, Node, Self>::IntegralCheckRow;
    QVariant dataDisplayRole(int column) override;
    QVariant dataFontRole(int column) override;
};

// The styled family's integer row: plain numbers follow the view mode (decimal, hex or binary) behind
// the field index, in the plain font, and a tool tip shows the value in every base.
template <class Base, class Node, class Self>
class VORN_PARAMETERSQT4_API StyledIntegralRow : public IntegralCheckRow<Base, Node, Self>
{
public:
    using IntegralCheckRow<Base, Node, Self>::IntegralCheckRow;
    QVariant dataToolTipRole(int column) override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataFontRole(int column) override;

private:
    // What the value column showed last, for the tool tip.
    IntegerDetails<typename Node::ValueType> m_details;
};

// A category of the styled families: its bold name spans the row, 12 pixels high, without grid.
template <class Base, class Self> class VORN_PARAMETERSQT4_API StyledCategoryRow : public Row<Base, Self>
{
public:
    using Row<Base, Self>::Row;
    void postInsert() override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataFontRole(int column) override;
    QVariant dataSizeHintRole(int column) override;
    bool isGridEnabled(int column) override;
    bool enableFirstColumnSpanning() override;

private:
    QVariant m_text;
    QVariant m_font;
};

} // namespace rows
} // namespace core
} // namespace vorn
