#pragma once

#include "ViewChoices.h"

#include <vorn/host/MvParametersModel.h>
#include <vorn/host/Qt4GenericModel.h>
#include <vorn/models/Qt4ParametersFilterModel.h>

#include <memory>

namespace vorn {
namespace browser {

class FeatureSearchModel;

// The models between a parameter tree and the view, as a host builds them: the chosen parameter
// model over the tree's root, the library's filter model over it (visibility levels), and the search
// filter on top. The view shows view(); the stack keeps everything below it alive.
class FeatureModelStack
{
public:
    FeatureModelStack(const boost::shared_ptr<core::models::MvParametersModel>& tree, ModelKind kind);
    ~FeatureModelStack();
    FeatureModelStack(const FeatureModelStack&) = delete;
    FeatureModelStack& operator=(const FeatureModelStack&) = delete;

    // The model a view shows (the top of the stack).
    QAbstractItemModel* view() const;
    core::Qt4GenericModel* parameters() const { return m_parameters.get(); }
    core::Qt4ParametersFilterModel* filter() const { return m_filter.get(); }

    void setVisibility(core::models::ParameterEntryVisibility level);
    void setSearchText(const QString& text);
    // Asks every row for its texts again (after the integer view mode changed, say).
    void refreshAll();

private:
    boost::shared_ptr<core::Qt4GenericModel> m_parameters;
    boost::shared_ptr<core::Qt4ParametersFilterModel> m_filter;
    std::unique_ptr<FeatureSearchModel> m_search;
};

} // namespace browser
} // namespace vorn
