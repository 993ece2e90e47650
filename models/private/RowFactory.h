#pragma once

// How the root rows and the command row are made, and how the node factories of the two two-column
// families pick the row class by the parameter node's exact type id.

#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersCategoryNode.h>
#include <vorn/host/MvParametersCommandNode.h>
#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/MvParametersStringNode.h>
#include <vorn/host/MvParametersUInt64Node.h>
#include <vorn/host/Qt4GenericModelNode.h>

namespace vorn {
namespace core {
namespace rows {

// Constructs the row, takes it into a shared pointer (which wires the shared-this link) and lets the
// framework finish it.
template <class Row, class... Args> boost::shared_ptr<Row> createRow(Args&&... args)
{
    boost::shared_ptr<Row> row(new Row(std::forward<Args>(args)...));
    row->postConstruct();
    return row;
}

// Family names the row classes of one model family (Base, Category, String, Integer, UInt64, Float,
// Boolean, Command, Enumeration, Entry). The first class whose parameter type id equals the node's
// own wins, in this order; a node of a subclass that reports an id of its own falls through to Base.
template <class Family, class... Args>
boost::shared_ptr<Qt4GenericModelNode> createRowFor(const boost::shared_ptr<GenericModelNode>& node,
                                                    const Args&... args)
{
    using namespace models;
    if (node) {
        const std::uint32_t type = node->typeId();
        if (type == MvParametersCategoryNode::typeId())
            return Family::Category::create(args...);
        if (type == MvParametersStringNode::typeId())
            return Family::String::create(args...);
        if (type == MvParametersIntegerNode::typeId())
            return Family::Integer::create(args...);
        if (type == MvParametersUInt64Node::typeId())
            return Family::UInt64::create(args...);
        if (type == MvParametersFloatNode::typeId())
            return Family::Float::create(args...);
        if (type == MvParametersBooleanNode::typeId())
            return Family::Boolean::create(args...);
        if (type == MvParametersCommandNode::typeId())
            return Family::Command::create(args...);
        if (type == MvParametersEnumerationNode::typeId())
            return Family::Enumeration::create(args...);
        if (type == MvParametersEntryNode::typeId())
            return Family::Entry::create(args...);
    }
    return Family::Base::create(args...);
}

} // namespace rows
} // namespace core
} // namespace vorn
