#include "host/Qt4GenericTreeView.h"

#include "host/Qt4AbstractModel.h"

#include <QAbstractProxyModel>

namespace vorn {
namespace core {

Qt4GenericTreeView::Qt4GenericTreeView(QWidget* parent) : QTreeView(parent) {}

Qt4GenericTreeView::~Qt4GenericTreeView() = default;

void Qt4GenericTreeView::setModel(QAbstractItemModel* newModel)
{
    // Only our own connections go: QTreeView keeps its own on the model.
    if (QAbstractItemModel* old = model()) {
        disconnect(old, &QAbstractItemModel::modelReset, this, &Qt4GenericTreeView::onModelReset);
        disconnect(old, &QAbstractItemModel::layoutChanged, this, &Qt4GenericTreeView::onLayoutChanged);
    }
    QTreeView::setModel(newModel);
    if (!newModel)
        return;
    // Connected after QTreeView's own handlers, so the view has caught up when these run.
    connect(newModel, &QAbstractItemModel::modelReset, this, &Qt4GenericTreeView::onModelReset);
    connect(newModel, &QAbstractItemModel::layoutChanged, this, &Qt4GenericTreeView::onLayoutChanged);
    onModelReset();
}

Qt4AbstractModel* Qt4GenericTreeView::sourceModel() const
{
    QAbstractItemModel* current = model();
    while (auto* proxy = qobject_cast<QAbstractProxyModel*>(current))
        current = proxy->sourceModel();
    return qobject_cast<Qt4AbstractModel*>(current);
}

Qt4AbstractModelNode* Qt4GenericTreeView::nodeAt(const QModelIndex& index)
{
    if (!index.isValid())
        return nullptr;
    // The model tree keeps the node alive; the shared pointer in the variant is only the carrier.
    return index.data(Qt::UserRole).value<Qt4AbstractModelNodePtr>().get();
}

void Qt4GenericTreeView::applyRowDecorations()
{
    QAbstractItemModel* m = model();
    if (!m)
        return;
    const int rows = m->rowCount();
    if (rows > 0)
        decorateRows(QModelIndex(), 0, rows - 1);
}

void Qt4GenericTreeView::rowsInserted(const QModelIndex& parent, int start, int end)
{
    QTreeView::rowsInserted(parent, start, end);
    decorateRows(parent, start, end);
}

void Qt4GenericTreeView::onModelReset()
{
    applyInitialExpansion();
    applyRowDecorations();
}

// A proxy that filters out a row drops its spanning and index widgets with it; a layout change is
// where rows come back, so everything shown is decorated again (rows that kept theirs are skipped).
void Qt4GenericTreeView::onLayoutChanged()
{
    applyRowDecorations();
}

void Qt4GenericTreeView::decorateRows(const QModelIndex& parent, int first, int last)
{
    QAbstractItemModel* m = model();
    const int columns = m->columnCount(parent);
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = m->index(row, 0, parent);
        if (Qt4AbstractModelNode* node = nodeAt(index)) {
            if (node->enableFirstColumnSpanning() && !isFirstColumnSpanned(row, parent))
                setFirstColumnSpanned(row, parent, true);
            for (int column = 0; column < columns; ++column) {
                if (!node->hasIndexWidget(column))
                    continue;
                const QModelIndex cell = m->index(row, column, parent);
                if (indexWidget(cell))
                    continue;
                if (QWidget* widget = node->createIndexWidget(column))
                    setIndexWidget(cell, widget);
            }
            if (node->enableAutoExpand() && !isExpanded(index))
                expand(index);
        }
        const int children = m->rowCount(index);
        if (children > 0)
            decorateRows(index, 0, children - 1);
    }
}

void Qt4GenericTreeView::applyInitialExpansion()
{
    Qt4AbstractModel* source = sourceModel();
    if (!source)
        return;
    const int depth = source->getInitialExpansionDepth();
    if (depth < 0)
        expandAll();
    else if (depth > 0)
        expandToDepth(depth - 1);
}

} // namespace core
} // namespace vorn
