#pragma once

#include <vorn/base/VornExport.h>

#include <QPointer>
#include <QTreeView>

namespace vorn {
namespace core {

class Qt4AbstractModel;
class Qt4AbstractModelNode;

// The view side of the item-model framework: a tree view that honours what the rows of a
// Qt4AbstractModel ask for (initial expansion depth, first-column spanning, auto-expansion and index
// widgets), also when proxy models sit between the model and the view. Rows that a proxy removes and
// later shows again get their spanning and index widgets back.
//
// Index widgets live only on the rows in view: QAbstractItemView places every index widget again on
// each layout, walking the rows above it, so widgets on all rows of a large tree would make every
// layout cost rows x widgets. Scrolling, resizing, expanding and collapsing bring widgets to the rows
// that come into view (on the next turn of the event loop) and release those that leave it.
//
// A filter change reaches a view as a burst of row ranges: every run of rows that goes or comes is one
// range. For each range Qt moves every persistent index of the model, and QTreeView keeps one per
// expanded row and one per spanned row; QAbstractItemView also places every index widget again. On a
// large expanded tree that makes a burst cost ranges x rows. So on the first range of a burst this view
// lets go of all of them: index widgets out, spanning dropped, expanded rows collapsed (remembered by
// the framework model's own rows, without a layout and without collapsed() signals). The model's
// layout change ends the burst (for changes without one, the next turn of the event loop): the rows
// that stayed are expanded again at once, and the next layout, the only one the burst costs, brings
// back spanning and the scroll position; index widgets follow on the next turn of the event loop.
//
// A delegate's sizeHintChanged(index) makes QAbstractItemView lay out every row again. An item delegate
// that gives rows in edit more room sends it when an editor opens and when it closes; this view
// measures only that row again instead (and places the editors), as QTreeView does for a changed row.
class VORN_MODELQT4_API Qt4GenericTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit Qt4GenericTreeView(QWidget* parent = nullptr);
    ~Qt4GenericTreeView() override;

    void setModel(QAbstractItemModel* model) override;

    // The framework model behind the view's model (through any proxies), or null.
    Qt4AbstractModel* sourceModel() const;
    // The row node behind an index of the view's model, or null.
    static Qt4AbstractModelNode* nodeAt(const QModelIndex& index);

    // Applies spanning and auto-expansion to every row again, and index widgets to the rows in view.
    void applyRowDecorations();
    void doItemsLayout() override;

private Q_SLOTS:
    void rowSizeHintChanged(const QModelIndex& index);
    // Places the index widgets of the rows in view now, and releases those of rows out of view.
    void syncIndexWidgets();

    // Whether rows are coming and going, with index widgets taken out until the change is over.
    bool isChangingRows() const { return m_changingRows; }

protected:
    void rowsInserted(const QModelIndex& parent, int start, int end) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void onModelReset();
    void onLayoutChanged();
    void beginRowChanges();
    void endRowChanges();
    void decorateRows(const QModelIndex& parent, int first, int last);
    void applyInitialExpansion();
    void releaseIndexWidgets();
    void scheduleIndexWidgetSync();
    void holdRowsForBurst();
    void restoreHeldRows();
    void decorateAllRows();
    void scheduleDecorations();
    void applySpanning(const QVector<Qt4AbstractModelNode*>& nodes);
    QModelIndex viewIndexOf(const QModelIndex& sourceIndex) const;
    bool isDelegatesSizeHintSignal();

    QList<QMetaObject::Connection> m_connections;
    // The cells that hold an index widget of ours.
    QVector<QPersistentModelIndex> m_widgetCells;
    // During a burst: the rows collapsed for it, as indexes of the framework model (which the burst
    // does not change), and the scroll position to go back to.
    QVector<QPersistentModelIndex> m_heldExpanded;
    int m_heldScroll = -1;
    bool m_changingRows = false;
    bool m_syncScheduled = false;
    // Spanning and auto-expansion wait for the next layout.
    bool m_decorationsPending = false;
    // The delegate whose sizeHintChanged this view answers row by row.
    QPointer<QAbstractItemDelegate> m_sizeHintDelegate;
    QMetaObject::Connection m_sizeHintConnection;
    bool m_relayingSizeHint = false;
};

} // namespace core
} // namespace vorn
