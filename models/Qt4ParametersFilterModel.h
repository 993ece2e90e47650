#pragma once

#include <vorn/base/VornExport.h>

#include <vorn/host/ParameterEnums.h>
#include <vorn/host/Qt4GenericModel.h>

#include <QSortFilterProxyModel>

namespace vorn {
namespace core {

// Hides the parameters above a visibility level, internal nodes and features that are not
// implemented, and sorts siblings by their custom sort keys only. It sits over any of the parameter
// models and keeps its source model alive. It overrides filterAcceptsRow and lessThan and nothing
// else of the proxy model: no meta-object of its own either, so metaObject() is QSortFilterProxyModel's.
class VORN_PARAMETERSQT4_API Qt4ParametersFilterModel : public QSortFilterProxyModel
{
public:
    static boost::shared_ptr<Qt4ParametersFilterModel> create(boost::shared_ptr<Qt4GenericModel> sourceModel,
                                                              QObject* parent = nullptr);
    ~Qt4ParametersFilterModel() override;

    // Shows the rows of this level and below, in two passes: every row is first let in again
    // (level 4), then the new level applies. Each pass re-filters with the proxy model's own row
    // signals (rows removed and inserted, runs of adjacent rows as one range) and then announces a
    // layout change with no parents and no hint.
    void changeVisibility(models::ParameterEntryVisibility visibility);
    models::ParameterEntryVisibility getCurrentVisibility() const;

protected:
    explicit Qt4ParametersFilterModel(QObject* parent);

    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    void applyVisibility(models::ParameterEntryVisibility visibility);

    struct Private;
    boost::shared_ptr<Private> d;
};

} // namespace core
} // namespace vorn
