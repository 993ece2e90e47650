#include <vorn/models/Qt4ParametersFilterModel.h>

#include <vorn/host/MvParametersEntryNode.h>
#include <vorn/host/Qt4GenericModelNode.h>

namespace vorn {
namespace core {

using namespace models;

struct Qt4ParametersFilterModel::Private
{
    boost::shared_ptr<Qt4GenericModel> sourceModel;
    ParameterEntryVisibility visibility = pevExpert;
};

namespace {

// The generic node behind a source index. Every row of the parameter models is a Qt4GenericModelNode,
// and the pointer is read without taking a reference: this runs for every row on every refilter.
GenericModelNode* genericNodeOf(const QModelIndex& sourceIndex)
{
    auto* row = static_cast<Qt4AbstractModelNode*>(sourceIndex.internalPointer());
    if (!row)
        return nullptr;
    Q_ASSERT(dynamic_cast<Qt4GenericModelNode*>(row));
    return static_cast<Qt4GenericModelNode*>(row)->node().get();
}

} // namespace

Qt4ParametersFilterModel::Qt4ParametersFilterModel(QObject* parent)
    : QSortFilterProxyModel(parent), d(new Private())
{}

Qt4ParametersFilterModel::~Qt4ParametersFilterModel() = default;

boost::shared_ptr<Qt4ParametersFilterModel>
Qt4ParametersFilterModel::create(boost::shared_ptr<Qt4GenericModel> sourceModel, QObject* parent)
{
    boost::shared_ptr<Qt4ParametersFilterModel> model(new Qt4ParametersFilterModel(parent));
    model->d->sourceModel = sourceModel;
    model->setSourceModel(sourceModel.get());
    return model;
}

void Qt4ParametersFilterModel::changeVisibility(ParameterEntryVisibility visibility)
{
    applyVisibility(pevAll);
    applyVisibility(visibility);
}

// One pass of a level change. invalidateFilter() keeps the mapping of every row that stays and tells
// listeners (views, proxies stacked above) of each run of rows that goes or comes, so they can follow
// row by row; the layout change after it lets them redo what hangs on rows coming back (spanning, index
// widgets). Every range moves the persistent indexes of the model once, so views that keep one per
// expanded row should let go of them while a burst of ranges lasts (Qt4GenericTreeView does).
void Qt4ParametersFilterModel::applyVisibility(ParameterEntryVisibility visibility)
{
    d->visibility = visibility;
    invalidateFilter();
    emit layoutAboutToBeChanged(QList<QPersistentModelIndex>(), QAbstractItemModel::NoLayoutChangeHint);
    emit layoutChanged(QList<QPersistentModelIndex>(), QAbstractItemModel::NoLayoutChangeHint);
}

ParameterEntryVisibility Qt4ParametersFilterModel::getCurrentVisibility() const
{
    return d->visibility == pevBeginner ? pevExpert : d->visibility;
}

// The rule looks at the row's own entry only: a hidden category hides its subtree, and a shown one
// stays even when all its children are hidden.
bool Qt4ParametersFilterModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    const QModelIndex index = sourceModel()->index(sourceRow, 0, sourceParent);
    const auto* entry = static_cast<const MvParametersEntryNode*>(genericNodeOf(index));
    if (!entry)
        return false;
    if (entry->getType() == petInternal)
        return false;
    if (entry->getAccessMode() == peamNotImplemented)
        return false;
    return static_cast<qint32>(entry->getVisibility()) <= static_cast<qint32>(d->visibility);
}

// Only custom sort keys order rows; rows without them compare equal and keep their source order.
bool Qt4ParametersFilterModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const GenericModelNode* l = genericNodeOf(left);
    const GenericModelNode* r = genericNodeOf(right);
    if (!l || !r)
        return false;
    if (l->hasCustomSortKey() && r->hasCustomSortKey())
        return l->customSortKey() < r->customSortKey();
    return false;
}

} // namespace core
} // namespace vorn
