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

void collect(const QAbstractItemModel& model, const QModelIndex& parent, int depth, std::vector<Line>& lines)
{
    const int columns = model.columnCount(parent);
    for (int row = 0; row < model.rowCount(parent); ++row) {
        Line line;
        line.depth = depth;
        for (int column = 0; column < columns; ++column)
            line.cells << cellText(model.index(row, column, parent));
        lines.push_back(line);
        collect(model, model.index(row, 0, parent), depth + 1, lines);
    }
}

} // namespace

QString TreeDump::render(const QAbstractItemModel& model)
{
    std::vector<Line> lines;
    Line header;
    for (int column = 0; column < model.columnCount(); ++column)
        header.cells << model.headerData(column, Qt::Horizontal).toString();
    lines.push_back(header);
    collect(model, QModelIndex(), 0, lines);

    // Each column but the last is as wide as its widest cell (with the first column's indentation),
    // plus two spaces.
    std::vector<int> widths(static_cast<std::size_t>(std::max(0, header.cells.size() - 1)), 0);
    for (const Line& line : lines)
        for (int column = 0; column < static_cast<int>(widths.size()) && column < line.cells.size();
             ++column) {
            const int indent = column == 0 ? 2 * line.depth : 0;
            widths[column] = std::max(widths[column], indent + line.cells[column].size());
        }

    QString out;
    for (const Line& line : lines) {
        QString text;
        for (int column = 0; column < line.cells.size(); ++column) {
            QString cell = line.cells[column];
            if (column == 0)
                cell.prepend(QString(2 * line.depth, QLatin1Char(' ')));
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
