#pragma once

// What a host would write instead of our models: a QStandardItemModel filled from the parameter tree
// with the texts, icons, fonts, check states, tool tips, size hints and colours our plain model shows,
// under a QSortFilterProxyModel that applies the same visibility rule.

#include <vorn/host/MvParametersEntryNode.h>

#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVector>

#include <memory>

namespace vorn {
namespace bench {

// The role that carries what the filter needs (type, access mode, visibility) in one integer.
constexpr int FilterKeyRole = Qt::UserRole + 10;

// Every node below root as a row of two items (name, value), in tree order.
std::unique_ptr<QStandardItemModel> buildBaselineModel(const core::models::MvParametersEntryNode& root);

// The role that marks command rows, whose value cell holds a button.
constexpr int CommandRole = Qt::UserRole + 11;

// Hides internal nodes, features that are not implemented and those above the current level; a hidden
// category hides its subtree. A level change is one invalidate(): the whole mapping goes at once inside
// one layout change, which a QTreeView over an expanded tree takes far faster than invalidateFilter()'s
// rows removed and inserted range by range.
class BaselineFilterModel : public QSortFilterProxyModel
{
public:
    explicit BaselineFilterModel(QObject* parent = nullptr) : QSortFilterProxyModel(parent) {}

    void changeVisibility(int level)
    {
        m_level = level;
        invalidate();
    }

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    int m_level = 1;
};

// What a careful developer puts in a QTreeView for command rows: a push button as the index widget of
// the value cell, only for the rows on screen (made as they scroll in, released as they leave), placed
// on the next turn of the event loop after a scroll, resize or layout.
class BaselineTreeView : public QTreeView
{
public:
    BaselineTreeView();

protected:
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void schedule();
    void syncButtons();

    QVector<QPersistentModelIndex> m_cells;
    bool m_scheduled = false;
};

// A QStyledItemDelegate that draws the light grey cell grid of the styled look, once per cell.
class BaselineGridDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

} // namespace bench
} // namespace vorn
