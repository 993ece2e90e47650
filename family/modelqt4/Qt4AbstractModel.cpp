#include <vorn/host/Qt4AbstractModel.h>

#include <vorn/host/Qt4GenericModel.h>

#include <algorithm>
#include <unordered_map>

namespace vorn {
namespace core {

Qt4AbstractModel::Qt4AbstractModel(boost::shared_ptr<Qt4AbstractModelNode> root, QObject* parent)
    : QAbstractItemModel(parent), m_root(std::move(root))
{}

Qt4AbstractModel::~Qt4AbstractModel() = default;

QModelIndex Qt4AbstractModel::indexOfNode(const Qt4AbstractModelNode* node, int column) const
{
    if (!node || node == m_root.get() || !node->parentNode())
        return QModelIndex();
    return createIndex(node->row(), column, const_cast<Qt4AbstractModelNode*>(node));
}

QModelIndex Qt4AbstractModel::index(int row, int column, const QModelIndex& parent) const
{
    if (row < 0 || column < 0 || column >= columnCount(parent))
        return QModelIndex();
    if (parent.isValid() && parent.column() != 0)
        return QModelIndex();
    const Qt4AbstractModelNode* parentNode = parent.isValid() ? nodeFromIndex(parent) : m_root.get();
    if (!parentNode)
        return QModelIndex();
    Qt4AbstractModelNode* child = parentNode->childAt(row);
    return child ? createIndex(row, column, child) : QModelIndex();
}

QModelIndex Qt4AbstractModel::parent(const QModelIndex& child) const
{
    const Qt4AbstractModelNode* node = nodeFromIndex(child);
    if (!node)
        return QModelIndex();
    Qt4AbstractModelNode* parentNode = node->parentNode();
    if (!parentNode || parentNode == m_root.get())
        return QModelIndex();
    return createIndex(parentNode->row(), 0, parentNode);
}

int Qt4AbstractModel::rowCount(const QModelIndex& parent) const
{
    // Only the first column carries children, as QTreeView expects.
    if (parent.column() > 0)
        return 0;
    const Qt4AbstractModelNode* node = parent.isValid() ? nodeFromIndex(parent) : m_root.get();
    return node ? node->childCount() : 0;
}

int Qt4AbstractModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant Qt4AbstractModel::data(const QModelIndex& index, int role) const
{
    Qt4AbstractModelNode* node = nodeFromIndex(index);
    return node ? node->data(index.column(), role) : QVariant();
}

bool Qt4AbstractModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    Qt4AbstractModelNode* node = nodeFromIndex(index);
    if (!node || role != Qt::CheckStateRole)
        return false;
    // The node hands the change to its owner; the row follows when the owner reports the new value.
    node->setCheckedState(index.column(), static_cast<Qt::CheckState>(value.toInt()));
    return true;
}

Qt::ItemFlags Qt4AbstractModel::flags(const QModelIndex& index) const
{
    Qt4AbstractModelNode* node = nodeFromIndex(index);
    if (!node)
        return Qt::NoItemFlags;
    const int column = index.column();
    Qt::ItemFlags result = Qt::NoItemFlags;
    if (node->isEnabled(column))
        result |= Qt::ItemIsEnabled;
    if (node->isSelectable(column))
        result |= Qt::ItemIsSelectable;
    if (!node->isReadOnly(column))
        result |= Qt::ItemIsEditable;
    if (node->isUserCheckable(column))
        result |= Qt::ItemIsUserCheckable;
    if (node->childCount() == 0)
        result |= Qt::ItemNeverHasChildren;
    return result;
}

int Qt4AbstractModel::getInitialExpansionDepth()
{
    return -1;
}

void Qt4AbstractModel::buildRows()
{
    Q_ASSERT(m_root);
    Q_ASSERT(m_root->childCount() == 0);
    beginResetModel();
    m_root->setupChildren();
    endResetModel();
    if (auto* generic = dynamic_cast<Qt4GenericModel*>(this))
        generic->observeGenericModel();
}

void Qt4AbstractModel::refreshNodes(const std::vector<Qt4AbstractModelNode*>& nodes)
{
    std::vector<Qt4AbstractModelNode*> changed;
    changed.reserve(nodes.size());
    for (Qt4AbstractModelNode* node : nodes) {
        if (!node || node == m_root.get())
            continue;
        Q_ASSERT(node->model() == this);
        node->setupNode();
        changed.push_back(node);
    }
    emitChangedRanges(changed);
}

void Qt4AbstractModel::refreshAll()
{
    if (!m_root)
        return;
    std::vector<Qt4AbstractModelNode*> all;
    std::vector<Qt4AbstractModelNode*> pending(1, m_root.get());
    while (!pending.empty()) {
        Qt4AbstractModelNode* node = pending.back();
        pending.pop_back();
        for (int row = 0; row < node->childCount(); ++row) {
            all.push_back(node->childAt(row));
            pending.push_back(node->childAt(row));
        }
    }
    refreshNodes(all);
}

// One dataChanged per parent, spanning the changed rows and every column: views repaint a range in
// one go, where a signal per cell would cost a layout pass each.
void Qt4AbstractModel::emitChangedRanges(std::vector<Qt4AbstractModelNode*>& nodes)
{
    if (nodes.empty())
        return;
    std::unordered_map<Qt4AbstractModelNode*, std::pair<int, int>> ranges;
    std::vector<Qt4AbstractModelNode*> parentsInOrder;
    for (Qt4AbstractModelNode* node : nodes) {
        Qt4AbstractModelNode* parentNode = node->parentNode();
        auto it = ranges.find(parentNode);
        if (it == ranges.end()) {
            ranges.emplace(parentNode, std::make_pair(node->row(), node->row()));
            parentsInOrder.push_back(parentNode);
        } else {
            it->second.first = std::min(it->second.first, node->row());
            it->second.second = std::max(it->second.second, node->row());
        }
    }
    for (Qt4AbstractModelNode* parentNode : parentsInOrder) {
        const std::pair<int, int> range = ranges[parentNode];
        const QModelIndex parentIndex = indexOfNode(parentNode);
        const int lastColumn = columnCount(parentIndex) - 1;
        emit dataChanged(index(range.first, 0, parentIndex), index(range.second, lastColumn, parentIndex));
    }
}

} // namespace core
} // namespace vorn
