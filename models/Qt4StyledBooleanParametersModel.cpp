#include <vorn/models/Qt4StyledBooleanParametersModel.h>

#include <vorn/models/private/RowAnswers.h>

namespace vorn {
namespace core {

boost::shared_ptr<Qt4StyledBooleanParametersModel>
Qt4StyledBooleanParametersModel::create(boost::shared_ptr<Qt4AbstractModelNode> root)
{
    boost::shared_ptr<Qt4StyledBooleanParametersModel> model(new Qt4StyledBooleanParametersModel(root));
    if (root)
        root->setupAsRootNode(model);
    return model;
}

Qt4StyledBooleanParametersModel::Qt4StyledBooleanParametersModel(boost::shared_ptr<Qt4AbstractModelNode> root)
    : Qt4GenericModel(std::move(root))
{}

Qt4StyledBooleanParametersModel::~Qt4StyledBooleanParametersModel() = default;

int Qt4StyledBooleanParametersModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant Qt4StyledBooleanParametersModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return rows::styledHeader(section, orientation, role, QStringList{QStringLiteral("Events")});
}

int Qt4StyledBooleanParametersModel::getInitialExpansionDepth()
{
    return 1;
}

} // namespace core
} // namespace vorn
