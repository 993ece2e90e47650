#pragma once

#include <QSortFilterProxyModel>

namespace vorn {
namespace browser {

// The search box's filter: keeps the rows whose feature name or shown name contains the search text
// (case does not matter), every row above them so that they stay in place, and everything below a
// matching category, so that searching "Acquisition" shows what that category holds.
class FeatureSearchModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit FeatureSearchModel(QObject* parent = nullptr);

    void setSearchText(const QString& text);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    bool matches(const QModelIndex& sourceIndex) const;

    QString m_text;
};

} // namespace browser
} // namespace vorn
