#pragma once

#include "host/VornExport.h"

#include <QTreeView>

namespace vorn {
namespace core {

class Qt4AbstractModel;
class Qt4AbstractModelNode;

// The view side of the item-model framework: a tree view that honours what the rows of a
// Qt4AbstractModel ask for (initial expansion depth, first-column spanning, auto-expansion and index
// widgets), also when proxy models sit between the model and the view. Rows that a proxy removes and
// later shows again get their spanning and index widgets back.
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

    // Applies expansion depth, spanning, auto-expansion and index widgets to every row again.
    void applyRowDecorations();

protected:
    void rowsInserted(const QModelIndex& parent, int start, int end) override;

private:
    void onModelReset();
    void onLayoutChanged();
    void decorateRows(const QModelIndex& parent, int first, int last);
    void applyInitialExpansion();
};

} // namespace core
} // namespace vorn
