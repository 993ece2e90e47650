#include "FeatureModelStack.h"

#include "FeatureSearchModel.h"

#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>
#include <vorn/models/Qt4StyledBooleanParametersModel.h>
#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>
#include <vorn/models/Qt4StyledParametersModel.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace browser {

namespace {

boost::shared_ptr<core::Qt4GenericModel>
parametersModel(const boost::shared_ptr<core::models::MvParametersModel>& tree, ModelKind kind)
{
    switch (kind) {
    case ModelKind::Styled:
        return core::Qt4StyledParametersModel::create(
            core::Qt4StyledParametersModelNode::create(tree, tree->root(), boost::any()));
    case ModelKind::Events:
        return core::Qt4StyledBooleanParametersModel::create(
            core::Qt4StyledBooleanParametersModelNode::create(tree, tree->root(), boost::any()));
    case ModelKind::Plain:
        break;
    }
    return core::Qt4ParametersModel::create(
        core::Qt4ParametersModelNode::create(tree, tree->root(), boost::any()));
}

} // namespace

FeatureModelStack::FeatureModelStack(const boost::shared_ptr<core::models::MvParametersModel>& tree,
                                     ModelKind kind)
    : m_parameters(parametersModel(tree, kind)),
      m_filter(core::Qt4ParametersFilterModel::create(m_parameters)), m_search(new FeatureSearchModel)
{
    m_search->setSourceModel(m_filter.get());
}

// The search model goes first: a proxy must not outlive the model below it.
FeatureModelStack::~FeatureModelStack()
{
    m_search.reset();
    m_filter.reset();
}

QAbstractItemModel* FeatureModelStack::view() const
{
    return m_search.get();
}

void FeatureModelStack::setVisibility(core::models::ParameterEntryVisibility level)
{
    m_filter->changeVisibility(level);
}

void FeatureModelStack::setSearchText(const QString& text)
{
    m_search->setSearchText(text);
}

void FeatureModelStack::refreshAll()
{
    m_parameters->refreshAll();
}

} // namespace browser
} // namespace vorn
