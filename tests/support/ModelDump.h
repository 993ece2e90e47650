#pragma once

#include <QAbstractItemModel>
#include <QStringList>

#include <QVariant>

#include <gtest/gtest.h>

#include <ostream>

// Readable values in test failure messages.
inline void PrintTo(const QString& s, std::ostream* os)
{
    *os << '"' << s.toStdString() << '"';
}

inline void PrintTo(const QStringList& list, std::ostream* os)
{
    *os << "{\n";
    for (const QString& s : list)
        *os << "  \"" << s.toStdString() << "\"\n";
    *os << "}";
}

inline void PrintTo(const QVariant& v, std::ostream* os)
{
    *os << "QVariant(" << v.typeName() << ", \"" << v.toString().toStdString() << "\")";
}

namespace vorn {
namespace test {

// The first index in tree order whose column 0 shows text (display role), in column `column`.
inline QModelIndex findRow(const QAbstractItemModel* model, const QString& text, int column = 0,
                           const QModelIndex& parent = QModelIndex())
{
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        if (index.data().toString() == text)
            return index.sibling(row, column);
        const QModelIndex below = findRow(model, text, column, index);
        if (below.isValid())
            return below;
    }
    return QModelIndex();
}

// findRow for a row the check needs: a missing row fails the test instead of passing a check on an
// invalid index (an invalid index is never expanded, spanned or decorated).
inline QModelIndex requireRow(const QAbstractItemModel* model, const QString& text, int column = 0)
{
    const QModelIndex index = findRow(model, text, column);
    if (!index.isValid())
        ADD_FAILURE() << "no row shows \"" << text.toStdString() << "\"";
    return index;
}

// Every row of a model in tree order as "indent + column texts joined by ' | '", with two spaces of
// indent per level, for comparing whole trees as strings.
inline void dumpRows(const QAbstractItemModel* model, const QModelIndex& parent, int depth, QStringList& out)
{
    const int columns = model->columnCount(parent);
    for (int row = 0; row < model->rowCount(parent); ++row) {
        QStringList cells;
        for (int column = 0; column < columns; ++column)
            cells << model->index(row, column, parent).data(Qt::DisplayRole).toString();
        out << QString(depth * 2, QLatin1Char(' ')) + cells.join(QStringLiteral(" | "));
        dumpRows(model, model->index(row, 0, parent), depth + 1, out);
    }
}

inline QStringList dumpRows(const QAbstractItemModel* model)
{
    QStringList out;
    dumpRows(model, QModelIndex(), 0, out);
    return out;
}

} // namespace test
} // namespace vorn
