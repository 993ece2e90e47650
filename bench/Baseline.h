#pragma once

// What a host would write instead of our models: a QStandardItemModel filled from the parameter tree
// with the texts, icons, fonts, check states, tool tips, size hints and colours our plain model shows,
// under a QSortFilterProxyModel that applies the same visibility rule.

#include <vorn/host/MvParametersEntryNode.h>

#include <QSortFilterProxyModel>
#include <QStandardItemModel>

#include <memory>

namespace vorn {
namespace bench {

// The role that carries what the filter needs (type, access mode, visibility) in one integer.
constexpr int FilterKeyRole = Qt::UserRole + 10;

// Every node below root as a row of two items (name, value), in tree order.
std::unique_ptr<QStandardItemModel> buildBaselineModel(const core::models::MvParametersEntryNode& root);

// Hides internal nodes, features that are not implemented and those above the current level; a hidden
// category hides its subtree. A level change is one invalidateFilter().
class BaselineFilterModel : public QSortFilterProxyModel
{
public:
    explicit BaselineFilterModel(QObject* parent = nullptr) : QSortFilterProxyModel(parent) {}

    void changeVisibility(int level)
    {
        m_level = level;
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    int m_level = 1;
};

} // namespace bench
} // namespace vorn
