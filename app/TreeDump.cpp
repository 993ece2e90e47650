#include "TreeDump.h"

#include <vorn/host/Qt4AbstractModelNode.h>

#include <QStringList>

#include <algorithm>
#include <vector>

namespace vorn {
namespace browser {

namespace {

struct Line
{
    int depth = 0;
    QStringList cells;
};

QString cellText(const QModelIndex& index)
{
    QStringList parts;
    const QVariant check = index.data(Qt::CheckStateRole);
    if (check.isValid())
        parts << (check.toInt() == Qt::Unchecked ? QStringLiteral("[ ]") : QStringLiteral("[x]"));
    const auto row = index.data(Qt::UserRole).value<core::Qt4AbstractModelNodePtr>();
    if (row && row->hasIndexWidget(index.column()))
        parts << QStringLiteral("[Execute]");
    const QString text = index.data(Qt::DisplayRole).toString();
    if (!text.isEmpty())
        parts << text;
    // One line per row: texts with line breaks keep them visible as \n.
    return parts.join(QLatin1Char(' ')).replace(QLatin1Char('\n'), QStringLiteral("\\n"));
}

// Every row in tree order. The nesting is the description's, so the walk keeps its own stack.
void collect(const QAbstractItemModel& model, std::vector<Line>& lines)
{
    struct Level
    {
        QModelIndex parent;
        int next;
    };
    std::vector<Level> levels{{QModelIndex(), 0}};
    while (!levels.empty()) {
        Level& level = levels.back();
        const QModelIndex parent = level.parent;
        if (level.next >= model.rowCount(parent)) {
            levels.pop_back();
            continue;
        }
        const int row = level.next++;
        Line line;
        line.depth = static_cast<int>(levels.size()) - 1;
        for (int column = 0; column < model.columnCount(parent); ++column)
            line.cells << cellText(model.index(row, column, parent));
        lines.push_back(line);
        levels.push_back(Level{model.index(row, 0, parent), 0});
    }
}

// The indentation of a row: two spaces a level, and beyond kMaxIndent levels the level as a number,
// so that a deep tree's dump grows with its rows and not with their square.
const int kMaxIndent = 32;

QString indentOf(int depth)
{
    if (depth <= kMaxIndent)
        return QString(2 * depth, QLatin1Char(' '));
    return QString(2 * kMaxIndent, QLatin1Char(' ')) + QStringLiteral("[%1] ").arg(depth);
}

} // namespace

QString TreeDump::render(const QAbstractItemModel& model)
{
    std::vector<Line> lines;
    Line header;
    for (int column = 0; column < model.columnCount(); ++column)
        header.cells << model.headerData(column, Qt::Horizontal).toString();
    lines.push_back(header);
    collect(model, lines);

    // Each column but the last is as wide as its widest cell (with the first column's indentation),
    // plus two spaces.
    std::vector<int> widths(static_cast<std::size_t>(std::max(0, header.cells.size() - 1)), 0);
    for (const Line& line : lines)
        for (int column = 0; column < static_cast<int>(widths.size()) && column < line.cells.size();
             ++column) {
            const int indent = column == 0 ? indentOf(line.depth).size() : 0;
            widths[column] = std::max(widths[column], indent + line.cells[column].size());
        }

    QString out;
    for (const Line& line : lines) {
        QString text;
        for (int column = 0; column < line.cells.size(); ++column) {
            QString cell = line.cells[column];
            if (column == 0)
                cell.prepend(indentOf(line.depth));
            if (column < static_cast<int>(widths.size()))
                cell = cell.leftJustified(widths[column] + 2);
            text += cell;
        }
        // Rows with nothing in their last columns end without padding.
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        out += text + QLatin1Char('\n');
    }
    return out;
}

} // namespace browser
} // namespace vorn
