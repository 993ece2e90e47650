#pragma once

#include <QAbstractItemModel>
#include <QStringList>

#include <QVariant>

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
