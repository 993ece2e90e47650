#include "FeatureSearchModel.h"

#include "FeatureIndex.h"

#include <vorn/host/MvParametersEntryNode.h>
#include <vorn/host/Qt4GenericModelNode.h>

namespace vorn {
namespace browser {

FeatureSearchModel::FeatureSearchModel(QObject* parent) : QSortFilterProxyModel(parent)
{
    // Ancestors of a matching row stay, so that every match is shown where it lives in the tree.
    setRecursiveFilteringEnabled(true);
}

void FeatureSearchModel::setSearchText(const QString& text)
{
    const QString wanted = text.trimmed();
    if (wanted == m_text)
        return;
    m_text = wanted;
    invalidateFilter();
}

bool FeatureSearchModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    if (m_text.isEmpty())
        return true;
    if (matches(sourceModel()->index(sourceRow, 0, sourceParent)))
        return true;
    for (QModelIndex above = sourceParent; above.isValid(); above = above.parent())
        if (matches(above))
            return true;
    return false;
}

bool FeatureSearchModel::matches(const QModelIndex& sourceIndex) const
{
    if (sourceIndex.data(Qt::DisplayRole).toString().contains(m_text, Qt::CaseInsensitive))
        return true;
    // The feature name ("ExposureTime") also finds a row that shows its display name ("Exposure Time").
    const auto entry = featureAt(sourceIndex);
    return entry && QString::fromLatin1(entry->getName().c_str()).contains(m_text, Qt::CaseInsensitive);
}

} // namespace browser
} // namespace vorn
