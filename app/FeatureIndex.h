#pragma once

#include <vorn/host/MvParametersEntryNode.h>
#include <vorn/host/Qt4GenericModelNode.h>

#include <QModelIndex>

namespace vorn {
namespace browser {

// The parameter an index of one of the parameter models shows (also through proxy models): the row the
// model answers Qt::UserRole with, and the parameter node behind it. Empty for other indexes.
inline boost::shared_ptr<core::models::MvParametersEntryNode> featureAt(const QModelIndex& index)
{
    const auto row = boost::dynamic_pointer_cast<core::Qt4GenericModelNode>(
        index.data(Qt::UserRole).value<core::Qt4AbstractModelNodePtr>());
    // Every row of the parameter models wraps a parameter node.
    return row ? boost::static_pointer_cast<core::models::MvParametersEntryNode>(row->node())
               : boost::shared_ptr<core::models::MvParametersEntryNode>();
}

} // namespace browser
} // namespace vorn
