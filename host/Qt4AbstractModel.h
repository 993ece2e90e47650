#pragma once

#include <vorn/host/Qt4AbstractModelNode.h>

#include <QAbstractItemModel>

#include <boost/enable_shared_from_this.hpp>

#include <vector>

namespace vorn {
namespace core {

// A Qt item model over a tree of Qt4AbstractModelNode objects. Every question about an index goes to
// the node behind it; index(), parent() and data() take constant time, as they run for every visible
// cell on every repaint.
class VORN_MODELQT4_API Qt4AbstractModel : public QAbstractItemModel,
                                           public boost::enable_shared_from_this<Qt4AbstractModel>
{
    Q_OBJECT

public:
    // The role a view asks for the brush behind a row's branch indicator.
    static constexpr int BranchBackgroundRole = Qt::UserRole + 1;

    explicit Qt4AbstractModel(boost::shared_ptr<Qt4AbstractModelNode> root, QObject* parent = nullptr);
    ~Qt4AbstractModel() override;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // How many levels a view expands when it first shows the model: -1 all, 0 none, n levels.
    virtual int getInitialExpansionDepth();

    boost::shared_ptr<Qt4AbstractModelNode> rootNode() const { return m_root; }
    // The node behind an index of this model; null for an invalid index.
    Qt4AbstractModelNode* nodeFromIndex(const QModelIndex& index) const
    {
        Q_ASSERT(!index.isValid() || index.model() == this);
        return index.isValid() ? static_cast<Qt4AbstractModelNode*>(index.internalPointer()) : nullptr;
    }
    QModelIndex indexOfNode(const Qt4AbstractModelNode* node, int column = 0) const;

signals:
    // The tree behind the model reported a failed request (for example a write a device refused).
    // Declared here, in the one class of the model hierarchy that has a meta-object.
    void errorReported(const QString& message);

public:
    // Calls setupNode() on each node and tells views that their rows changed, as one dataChanged
    // range per parent.
    void refreshNodes(const std::vector<Qt4AbstractModelNode*>& nodes);
    // The same for every row of the model.
    void refreshAll();

private:
    friend class Qt4AbstractModelNode;
    // Builds the rows below the root; called when the root is bound with setupAsRootNode.
    void buildRows();
    void emitChangedRanges(std::vector<Qt4AbstractModelNode*>& nodes);

    boost::shared_ptr<Qt4AbstractModelNode> m_root;
};

} // namespace core
} // namespace vorn
