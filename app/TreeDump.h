#pragma once

#include <QAbstractItemModel>
#include <QString>

namespace vorn {
namespace browser {

// The rows of an item model as text, the way the view shows them: a header line with the column
// titles, then every row in tree order (collapsed ones included), indented by two spaces per level,
// with the columns aligned. A check box reads "[x]" or "[ ]" before the cell's text, and a cell that
// the view fills with a button (a command's Execute) reads "[Execute]".
class TreeDump
{
public:
    static QString render(const QAbstractItemModel& model);
};

} // namespace browser
} // namespace vorn
