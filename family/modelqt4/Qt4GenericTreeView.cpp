#include <vorn/host/Qt4GenericTreeView.h>

#include <vorn/host/Qt4AbstractModel.h>

#include <QAbstractProxyModel>
#include <QScrollBar>
#include <QSet>
#include <QTimer>

namespace vorn {
namespace core {

Qt4GenericTreeView::Qt4GenericTreeView(QWidget* parent) : QTreeView(parent) {}

Qt4GenericTreeView::~Qt4GenericTreeView() = default;

void Qt4GenericTreeView::setModel(QAbstractItemModel* newModel)
{
    // Only our own connections go: QTreeView keeps its own on the model.
    for (const QMetaObject::Connection& c : qAsConst(m_connections))
        disconnect(c);
    m_connections.clear();
    m_widgetCells.clear();
    m_changingRows = false;
    QTreeView::setModel(newModel);
    if (!newModel)
        return;
    // Connected after QTreeView's own handlers, so the view has caught up when these run. The first
    // range of a batch still reaches QTreeView with the widgets in place; the rest do not.
    m_connections << connect(newModel, &QAbstractItemModel::modelReset, this,
                             &Qt4GenericTreeView::onModelReset)
                  << connect(newModel, &QAbstractItemModel::layoutChanged, this,
                             &Qt4GenericTreeView::onLayoutChanged)
                  << connect(newModel, &QAbstractItemModel::rowsAboutToBeInserted, this,
                             &Qt4GenericTreeView::beginRowChanges)
                  << connect(newModel, &QAbstractItemModel::rowsAboutToBeRemoved, this,
                             &Qt4GenericTreeView::beginRowChanges);
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
    // Down through the proxies to the framework model's own index, whose internal pointer is the row.
    // This runs for every row on every layout change: asking data(Qt::UserRole) would wrap a shared
    // pointer in a QVariant each time.
    QModelIndex current = index;
    while (current.isValid()) {
        if (auto* framework = qobject_cast<const Qt4AbstractModel*>(current.model()))
            return framework->nodeFromIndex(current);
        auto* proxy = qobject_cast<const QAbstractProxyModel*>(current.model());
        if (!proxy)
            break;
        current = proxy->mapToSource(current);
    }
    // Some other model: the row is what it answers for Qt::UserRole, if anything. The model tree keeps
    // the node alive; the shared pointer in the variant is only the carrier.
    return index.data(Qt::UserRole).value<Qt4AbstractModelNodePtr>().get();
}

void Qt4GenericTreeView::applyRowDecorations()
{
    QAbstractItemModel* m = model();
    if (!m)
        return;
    Qt4AbstractModel* source = sourceModel();
    if (!source) {
        const int rows = m->rowCount();
        if (rows > 0)
            decorateRows(QModelIndex(), 0, rows - 1);
        syncIndexWidgets();
        return;
    }
    // Every row is decorated again on each layout change, so only the rows that ask for spanning or
    // expansion are looked up in the view's model; they are found in the framework model's own tree.
    // Walking the view's model instead would make an index, a proxy mapping and a variant per row.
    QVector<const QAbstractProxyModel*> proxies; // from the framework model up to the view's model
    for (auto* proxy = qobject_cast<QAbstractProxyModel*>(m); proxy;
         proxy = qobject_cast<QAbstractProxyModel*>(proxy->sourceModel()))
        proxies.prepend(proxy);
    QVector<Qt4AbstractModelNode*> pending{source->rootNode().get()};
    while (!pending.isEmpty()) {
        Qt4AbstractModelNode* parentNode = pending.takeLast();
        for (int row = parentNode->childCount() - 1; row >= 0; --row) {
            Qt4AbstractModelNode* node = parentNode->childAt(row);
            pending.append(node);
            const bool span = node->enableFirstColumnSpanning();
            const bool autoExpand = node->enableAutoExpand();
            if (!span && !autoExpand)
                continue;
            QModelIndex index = source->indexOfNode(node, 0);
            for (const QAbstractProxyModel* proxy : qAsConst(proxies))
                index = proxy->mapFromSource(index);
            if (!index.isValid()) // filtered out, or below a row that is
                continue;
            if (span && !isFirstColumnSpanned(index.row(), index.parent()))
                setFirstColumnSpanned(index.row(), index.parent(), true);
            if (autoExpand && !isExpanded(index))
                expand(index);
        }
    }
    syncIndexWidgets();
}

void Qt4GenericTreeView::rowsInserted(const QModelIndex& parent, int start, int end)
{
    QTreeView::rowsInserted(parent, start, end);
    if (m_changingRows)
        return;
    decorateRows(parent, start, end);
    scheduleIndexWidgetSync();
}

void Qt4GenericTreeView::updateGeometries()
{
    QTreeView::updateGeometries();
    scheduleIndexWidgetSync();
}

void Qt4GenericTreeView::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    if (dy != 0)
        scheduleIndexWidgetSync();
}

void Qt4GenericTreeView::onModelReset()
{
    m_changingRows = false;
    m_widgetCells.clear(); // a reset released every widget with its index
    applyInitialExpansion();
    applyRowDecorations();
}

// A proxy that filters out a row drops its spanning and index widgets with it; a layout change is
// where rows come back, so everything shown is decorated again (rows that kept theirs are skipped).
void Qt4GenericTreeView::onLayoutChanged()
{
    if (m_changingRows)
        endRowChanges();
    else
        applyRowDecorations();
}

void Qt4GenericTreeView::beginRowChanges()
{
    if (m_changingRows)
        return;
    m_changingRows = true;
    releaseIndexWidgets();
    QTimer::singleShot(0, this, [this] {
        if (m_changingRows)
            endRowChanges();
    });
}

void Qt4GenericTreeView::endRowChanges()
{
    m_changingRows = false;
    applyRowDecorations();
}

void Qt4GenericTreeView::releaseIndexWidgets()
{
    for (const QPersistentModelIndex& cell : qAsConst(m_widgetCells)) {
        if (cell.isValid() && indexWidget(cell))
            setIndexWidget(cell, nullptr);
    }
    m_widgetCells.clear();
}

void Qt4GenericTreeView::scheduleIndexWidgetSync()
{
    if (m_syncScheduled || !model())
        return;
    m_syncScheduled = true;
    QTimer::singleShot(0, this, [this] {
        m_syncScheduled = false;
        if (!m_changingRows)
            syncIndexWidgets();
    });
}

void Qt4GenericTreeView::syncIndexWidgets()
{
    QAbstractItemModel* m = model();
    if (!m || m_changingRows)
        return;
    // The rows in view, top to bottom, with the cells that want a widget.
    QSet<QModelIndex> wanted;
    QVector<QPair<QModelIndex, Qt4AbstractModelNode*>> toCreate;
    const int bottom = viewport()->height();
    for (QModelIndex index = indexAt(QPoint(0, 0)); index.isValid(); index = indexBelow(index)) {
        if (visualRect(index).top() > bottom)
            break;
        Qt4AbstractModelNode* node = nodeAt(index);
        if (!node)
            continue;
        const int columns = m->columnCount(index.parent());
        for (int column = 0; column < columns; ++column) {
            if (!node->hasIndexWidget(column))
                continue;
            const QModelIndex cell = index.sibling(index.row(), column);
            wanted.insert(cell);
            if (!indexWidget(cell))
                toCreate.append(qMakePair(cell, node));
        }
    }
    // Release the widgets of rows that left the view first, so placing the new ones walks fewer.
    QVector<QPersistentModelIndex> kept;
    for (const QPersistentModelIndex& cell : qAsConst(m_widgetCells)) {
        if (!cell.isValid())
            continue;
        if (wanted.contains(cell)) {
            kept.append(cell);
            continue;
        }
        if (indexWidget(cell))
            setIndexWidget(cell, nullptr);
    }
    m_widgetCells = kept;
    for (const auto& entry : qAsConst(toCreate)) {
        if (QWidget* widget = entry.second->createIndexWidget(entry.first.column())) {
            setIndexWidget(entry.first, widget);
            m_widgetCells.append(entry.first);
        }
    }
}

// Spanning and auto-expansion for the rows given and everything below them; index widgets are placed
// by syncIndexWidgets for the rows in view only.
void Qt4GenericTreeView::decorateRows(const QModelIndex& parent, int first, int last)
{
    QAbstractItemModel* m = model();
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = m->index(row, 0, parent);
        if (Qt4AbstractModelNode* node = nodeAt(index)) {
            if (node->enableFirstColumnSpanning() && !isFirstColumnSpanned(row, parent))
                setFirstColumnSpanned(row, parent, true);
            if (node->enableAutoExpand() && !isExpanded(index))
                expand(index);
            // A proxy maps the rows below a parent when it is first asked for them: asking for the
            // children of every leaf would make it map each leaf.
            if (node->childCount() == 0)
                continue;
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
