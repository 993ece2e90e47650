#include <vorn/host/Qt4GenericTreeView.h>

#include <vorn/host/Qt4AbstractModel.h>

#include <QAbstractProxyModel>
#include <QScrollBar>
#include <QSet>
#include <QTimer>

namespace vorn {
namespace core {

Qt4GenericTreeView::Qt4GenericTreeView(QWidget* parent) : QTreeView(parent) {}

// The delegate may outlive the view and close an editor while the base classes are torn down.
Qt4GenericTreeView::~Qt4GenericTreeView()
{
    disconnect(m_sizeHintConnection);
}

void Qt4GenericTreeView::setModel(QAbstractItemModel* newModel)
{
    // Only our own connections go: QTreeView keeps its own on the model.
    for (const QMetaObject::Connection& c : qAsConst(m_connections))
        disconnect(c);
    m_connections.clear();
    m_widgetCells.clear();
    m_heldExpanded.clear();
    m_heldScroll = -1;
    m_changingRows = false;
    m_decorationsPending = false;
    QTreeView::setModel(newModel);
    if (!newModel)
        return;
    if (QAbstractItemDelegate* delegate = itemDelegate(); delegate && delegate != m_sizeHintDelegate) {
        disconnect(m_sizeHintConnection);
        m_sizeHintDelegate = delegate;
        m_sizeHintConnection = connect(delegate, &QAbstractItemDelegate::sizeHintChanged, this,
                                       &Qt4GenericTreeView::rowSizeHintChanged);
    }
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
    decorateAllRows();
    syncIndexWidgets();
}

void Qt4GenericTreeView::decorateAllRows()
{
    m_decorationsPending = false;
    QAbstractItemModel* m = model();
    if (!m)
        return;
    Qt4AbstractModel* source = sourceModel();
    if (!source) {
        const int rows = m->rowCount();
        if (rows > 0)
            decorateRows(QModelIndex(), 0, rows - 1);
        return;
    }
    // Every row is decorated again on each layout change, so only the rows that ask for spanning or
    // expansion are looked up in the view's model; they are found in the framework model's own tree.
    // Walking the view's model instead would make an index, a proxy mapping and a variant per row.
    // Rows are visited in tree order, the order in which QTreeView finds them fastest.
    QVector<Qt4AbstractModelNode*> spanning;
    QVector<Qt4AbstractModelNode*> pending;
    Qt4AbstractModelNode* root = source->rootNode().get();
    for (int row = root ? root->childCount() - 1 : -1; row >= 0; --row)
        pending.append(root->childAt(row));
    while (!pending.isEmpty()) {
        Qt4AbstractModelNode* node = pending.takeLast();
        for (int row = node->childCount() - 1; row >= 0; --row)
            pending.append(node->childAt(row));
        if (node->enableAutoExpand()) {
            const QModelIndex index = viewIndexOf(source->indexOfNode(node, 0));
            if (index.isValid() && !isExpanded(index)) // invalid: filtered out, or below such a row
                expand(index);
        }
        if (node->enableFirstColumnSpanning())
            spanning.append(node);
    }
    applySpanning(spanning);
}

QModelIndex Qt4GenericTreeView::viewIndexOf(const QModelIndex& sourceIndex) const
{
    QVector<const QAbstractProxyModel*> proxies; // from the view's model down to the framework model
    for (auto* proxy = qobject_cast<QAbstractProxyModel*>(model()); proxy;
         proxy = qobject_cast<QAbstractProxyModel*>(proxy->sourceModel()))
        proxies.append(proxy);
    QModelIndex index = sourceIndex;
    for (int i = proxies.size() - 1; i >= 0 && index.isValid(); --i)
        index = proxies[i]->mapFromSource(index);
    return index;
}

// setFirstColumnSpanned() repaints the row's rectangle, and with rows of different heights QTreeView
// finds a row's place by adding up the heights of the rows above it. Telling it for the loop that all
// rows are alike makes each call constant; the rectangles only choose what to repaint, and after a
// layout the whole viewport is repainted anyway.
void Qt4GenericTreeView::applySpanning(const QVector<Qt4AbstractModelNode*>& nodes)
{
    Qt4AbstractModel* source = sourceModel();
    if (!source || nodes.isEmpty())
        return;
    QVector<const QAbstractProxyModel*> proxies; // from the framework model up to the view's model
    for (auto* proxy = qobject_cast<QAbstractProxyModel*>(model()); proxy;
         proxy = qobject_cast<QAbstractProxyModel*>(proxy->sourceModel()))
        proxies.prepend(proxy);
    executeDelayedItemsLayout(); // once, before the loop, not inside the first call
    const bool uniform = uniformRowHeights();
    setUniformRowHeights(true);
    for (Qt4AbstractModelNode* node : nodes) {
        QModelIndex index = source->indexOfNode(node, 0);
        for (const QAbstractProxyModel* proxy : qAsConst(proxies))
            index = proxy->mapFromSource(index);
        if (index.isValid() && !isFirstColumnSpanned(index.row(), index.parent()))
            setFirstColumnSpanned(index.row(), index.parent(), true);
    }
    setUniformRowHeights(uniform);
}

// Whether this call of doItemsLayout() is QAbstractItemView's answer to the sizeHintChanged signal of
// the delegate that rowSizeHintChanged() answers. A delegate seen for the first time is connected now,
// and this one signal still gets the full layout.
bool Qt4GenericTreeView::isDelegatesSizeHintSignal()
{
    QObject* from = sender();
    auto* delegate = qobject_cast<QAbstractItemDelegate*>(from);
    if (!delegate || m_relayingSizeHint)
        return false;
    static const int signal =
        QAbstractItemDelegate::staticMetaObject.indexOfSignal("sizeHintChanged(QModelIndex)");
    if (senderSignalIndex() != signal)
        return false;
    if (delegate == m_sizeHintDelegate)
        return true;
    disconnect(m_sizeHintConnection);
    m_sizeHintDelegate = delegate;
    m_sizeHintConnection = connect(delegate, &QAbstractItemDelegate::sizeHintChanged, this,
                                   &Qt4GenericTreeView::rowSizeHintChanged);
    return false;
}

void Qt4GenericTreeView::rowSizeHintChanged(const QModelIndex& index)
{
    QAbstractItemModel* m = model();
    if (!m)
        return;
    // QTreeView measures a row again when one of its cells changes and moves the rows below. The cell
    // told must hold no editor: QAbstractItemView fills the editor of a changed cell again, and this
    // runs while an editor opens or closes.
    QModelIndex quiet;
    if (index.isValid() && index.model() == m) {
        const int columns = m->columnCount(index.parent());
        for (int column = 0; column < columns && !quiet.isValid(); ++column) {
            const QModelIndex cell = index.sibling(index.row(), column);
            if (!indexWidget(cell))
                quiet = cell;
        }
    }
    if (!quiet.isValid()) {
        // No row to measure (the editor's row may be gone), or no such cell: everything again, as Qt.
        m_relayingSizeHint = true;
        doItemsLayout();
        m_relayingSizeHint = false;
        return;
    }
    dataChanged(quiet, quiet);
    updateEditorGeometries();
    // An editor that is opening tells its size before the view has registered it: place it once more
    // when the view is done.
    QMetaObject::invokeMethod(this, "updateEditorGeometries", Qt::QueuedConnection);
}

void Qt4GenericTreeView::doItemsLayout()
{
    if (isDelegatesSizeHintSignal())
        return; // rowSizeHintChanged() measures the one row
    QTreeView::doItemsLayout();
    if (m_changingRows)
        return;
    if (m_heldScroll >= 0) {
        verticalScrollBar()->setValue(m_heldScroll);
        m_heldScroll = -1;
    }
    if (m_decorationsPending) {
        // Widgets are placed on the next turn of the event loop: this may run inside a paint event.
        decorateAllRows();
        scheduleIndexWidgetSync();
    }
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
    m_decorationsPending = false;
    m_heldExpanded.clear();
    m_heldScroll = -1;
    m_widgetCells.clear(); // a reset released every widget with its index
    applyInitialExpansion();
    applyRowDecorations();
}

// A proxy that filters out a row drops its spanning and index widgets with it; a layout change is
// where rows come back, so everything shown is decorated again (rows that kept theirs are skipped),
// after the layout that QAbstractItemView schedules for the change.
void Qt4GenericTreeView::onLayoutChanged()
{
    if (m_changingRows) {
        endRowChanges();
        return;
    }
    scheduleDecorations();
}

// Decorations come with the next layout. QAbstractItemView lays out a hidden view only when asked, so
// on the next turn of the event loop the layout is run here if it has not run by then.
void Qt4GenericTreeView::scheduleDecorations()
{
    m_decorationsPending = true;
    scheduleDelayedItemsLayout();
    QTimer::singleShot(0, this, [this] {
        if (!m_decorationsPending || m_changingRows)
            return;
        executeDelayedItemsLayout();
        if (m_decorationsPending) // no layout was pending
            applyRowDecorations();
    });
}

void Qt4GenericTreeView::beginRowChanges()
{
    if (m_changingRows)
        return;
    m_changingRows = true;
    releaseIndexWidgets();
    holdRowsForBurst();
    QTimer::singleShot(0, this, [this] {
        if (m_changingRows)
            endRowChanges();
    });
}

void Qt4GenericTreeView::endRowChanges()
{
    m_changingRows = false;
    restoreHeldRows();
    scheduleDecorations();
}

// Runs in the slot of the burst's first range, before Qt moves the persistent indexes for it. Walks
// the rows in view (through expanded rows only: rows expanded below a collapsed one keep their
// persistent indexes, and are few), drops each row's spanning and collapses each expanded row.
void Qt4GenericTreeView::holdRowsForBurst()
{
    QAbstractItemModel* m = model();
    Qt4AbstractModel* source = sourceModel();
    if (!m || !source)
        return;
    // Between the bursts of one change no layout runs, so the position is still the one to go back to.
    m_heldScroll = verticalScrollBar()->value();
    QVector<QModelIndex> expanded;
    QVector<QModelIndex> spanned;
    QVector<QModelIndex> pending{QModelIndex()};
    while (!pending.isEmpty()) {
        const QModelIndex parent = pending.takeLast();
        const int rows = m->rowCount(parent);
        for (int row = 0; row < rows; ++row) {
            const QModelIndex index = m->index(row, 0, parent);
            const Qt4AbstractModelNode* node = nodeAt(index);
            if (!node || node->childCount() == 0) // leaves are neither spanned nor expanded here
                continue;
            if (isFirstColumnSpanned(row, parent))
                spanned.append(index);
            if (isExpanded(index)) {
                expanded.append(index);
                pending.append(index);
            }
        }
    }
    const bool uniform = uniformRowHeights(); // as in applySpanning
    setUniformRowHeights(true);
    for (const QModelIndex& index : qAsConst(spanned))
        setFirstColumnSpanned(index.row(), index.parent(), false);
    setUniformRowHeights(uniform);
    // With a layout pending, collapse() and expand() only forget and remember the row.
    scheduleDelayedItemsLayout();
    const bool wasBlocked = blockSignals(true); // the rows are open again when the burst ends
    for (const QModelIndex& index : qAsConst(expanded)) {
        Qt4AbstractModelNode* node = nodeAt(index);
        m_heldExpanded.append(QPersistentModelIndex(source->indexOfNode(node, 0)));
        collapse(index);
    }
    blockSignals(wasBlocked);
}

void Qt4GenericTreeView::restoreHeldRows()
{
    if (m_heldExpanded.isEmpty())
        return;
    scheduleDelayedItemsLayout();
    const bool wasBlocked = blockSignals(true);
    for (const QPersistentModelIndex& held : qAsConst(m_heldExpanded)) {
        const QModelIndex index = viewIndexOf(held);
        if (index.isValid()) // rows the burst took out come back collapsed, as in any QTreeView
            expand(index);
    }
    blockSignals(wasBlocked);
    m_heldExpanded.clear();
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
