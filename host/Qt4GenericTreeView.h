#pragma once

#include <vorn/base/VornExport.h>

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
// A filter change reaches a view as many small row ranges, and QAbstractItemView answers each range
// with a full layout while any widget is placed. So while rows come and go, this view takes its index
// widgets out and defers spanning; both come back in one linear pass when the model's layout change
// ends the batch (or, for changes without one, on the next turn of the event loop).
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

    QList<QMetaObject::Connection> m_connections;
    // The cells that hold an index widget of ours.
    QVector<QPersistentModelIndex> m_widgetCells;
    bool m_changingRows = false;
    bool m_syncScheduled = false;
};

} // namespace core
} // namespace vorn
