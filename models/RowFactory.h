#pragma once

// The shape every row class's create() has: construct, take into a shared pointer (which wires the
// shared-this link) and let the framework finish the row.

#include <boost/shared_ptr.hpp>

namespace vorn {
namespace core {
namespace rows {

template <class Row, class... Args> boost::shared_ptr<Row> createRow(const Args&... args)
{
    boost::shared_ptr<Row> row(new Row(args...));
    row->postConstruct();
    return row;
}

} // namespace rows
} // namespace core
} // namespace vorn
