#include <vorn/host/Qt4AbstractModelNode.h>

#include <vorn/host/Qt4AbstractModel.h>

namespace vorn {
namespace core {

Qt4AbstractModelNode::Qt4AbstractModelNode() = default;

// A copy is a new, unplaced node: the tree position belongs to the original.
Qt4AbstractModelNode::Qt4AbstractModelNode(const Qt4AbstractModelNode&)
    : EnableThisPtr<Qt4AbstractModelNode>()
{}

Qt4AbstractModelNode& Qt4AbstractModelNode::operator=(const Qt4AbstractModelNode&)
{
    return *this;
}

Qt4AbstractModelNode::~Qt4AbstractModelNode() = default;

QVariant Qt4AbstractModelNode::data(int column, int role)
{
    switch (role) {
    case Qt::DisplayRole:
        return dataDisplayRole(column);
    case Qt::DecorationRole:
        return dataDecorationRole(column);
    case Qt::EditRole:
        return dataEditRole(column);
    case Qt::FontRole:
        return dataFontRole(column);
    case Qt::TextAlignmentRole:
        return dataTextAlignmentRole(column);
    case Qt::BackgroundRole:
        return dataBackgroundRole(column);
    case Qt::ForegroundRole:
        return dataForegroundRole(column);
    case Qt::ToolTipRole:
        return dataToolTipRole(column);
    case Qt::CheckStateRole:
        return dataCheckStateRole(column);
    case Qt::SizeHintRole:
        return dataSizeHintRole(column);
    case Qt4AbstractModel::BranchBackgroundRole:
        return dataBranchBackgroundRole(column);
    case Qt::UserRole:
        return QVariant::fromValue(Qt4AbstractModelNodePtr(this_pointer()));
    default:
        return QVariant();
    }
}

void Qt4AbstractModelNode::setCheckedState(int, Qt::CheckState) {}

QVariant Qt4AbstractModelNode::dataDisplayRole(int)
{
    return QVariant();
}

QVariant Qt4AbstractModelNode::dataDecorationRole(int)
{
    return QVariant();
}

QVariant Qt4AbstractModelNode::dataEditRole(int)
{
    return QVariant();
}

QVariant Qt4AbstractModelNode::dataFontRole(int)
{
    return QVariant();
}

QVariant Qt4AbstractModelNode::dataTextAlignmentRole(int)
{
    return QVariant();
}

QVariant Qt4AbstractModelNode::dataBackgroundRole(int)
{
    return QVariant();
}

QVariant Qt4AbstractModelNode::dataForegroundRole(int)
{
    return QVariant();
}

QVariant Qt4AbstractModelNode::dataToolTipRole(int)
{
    return QVariant();
}

QVariant Qt4AbstractModelNode::dataCheckStateRole(int)
{
    return QVariant();
}

QVariant Qt4AbstractModelNode::dataSizeHintRole(int)
{
    return QVariant();
}

QVariant Qt4AbstractModelNode::dataBranchBackgroundRole(int)
{
    return QVariant();
}

bool Qt4AbstractModelNode::isEnabled(int)
{
    return true;
}

bool Qt4AbstractModelNode::isReadOnly(int)
{
    return true;
}

bool Qt4AbstractModelNode::isSelectable(int)
{
    return true;
}

bool Qt4AbstractModelNode::isUserCheckable(int)
{
    return false;
}

bool Qt4AbstractModelNode::getUserFlag(int)
{
    return false;
}

bool Qt4AbstractModelNode::isGridEnabled(int)
{
    return false;
}

bool Qt4AbstractModelNode::hasIndexWidget(int)
{
    return false;
}

QWidget* Qt4AbstractModelNode::createIndexWidget(int)
{
    return nullptr;
}

bool Qt4AbstractModelNode::enableFirstColumnSpanning()
{
    return false;
}

bool Qt4AbstractModelNode::enableAutoExpand()
{
    return false;
}

bool Qt4AbstractModelNode::filterAcceptsNode()
{
    return true;
}

bool Qt4AbstractModelNode::isCustomSortingPossible(boost::shared_ptr<Qt4AbstractModelNode>)
{
    return false;
}

bool Qt4AbstractModelNode::lessThan(boost::shared_ptr<Qt4AbstractModelNode>, bool)
{
    return false;
}

unsigned long long Qt4AbstractModelNode::uid()
{
    return reinterpret_cast<quintptr>(this);
}

void Qt4AbstractModelNode::setupNode() {}

void Qt4AbstractModelNode::setupAsRootNode(boost::shared_ptr<Qt4AbstractModel> model)
{
    if (!model)
        return;
    Q_ASSERT(model->rootNode().get() == this);
    m_model = model.get();
    m_parent = nullptr;
    m_row = 0;
    model->buildRows();
}

void Qt4AbstractModelNode::appendChildNode(const boost::shared_ptr<Qt4AbstractModelNode>& child)
{
    Q_ASSERT(child && !child->m_parent);
    child->m_parent = this;
    child->m_model = m_model;
    child->m_row = childCount();
    m_children.push_back(child);
}

} // namespace core
} // namespace vorn
