#include <vorn/models/Qt4StyledParametersModel.h>

#include <vorn/models/private/RowAnswers.h>

namespace vorn {
namespace core {

boost::shared_ptr<Qt4StyledParametersModel>
Qt4StyledParametersModel::create(boost::shared_ptr<Qt4AbstractModelNode> root)
{
    boost::shared_ptr<Qt4StyledParametersModel> model(new Qt4StyledParametersModel(root));
    if (root)
        root->setupAsRootNode(model);
    return model;
}

Qt4StyledParametersModel::Qt4StyledParametersModel(boost::shared_ptr<Qt4AbstractModelNode> root)
    : Qt4GenericModel(std::move(root))
{}

Qt4StyledParametersModel::~Qt4StyledParametersModel() = default;

int Qt4StyledParametersModel::columnCount(const QModelIndex&) const
{
    return 2;
}

QVariant Qt4StyledParametersModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return rows::styledHeader(section, orientation, role,
                              QStringList{QStringLiteral("Feature"), QStringLiteral("Value")});
}

int Qt4StyledParametersModel::getInitialExpansionDepth()
{
    return 0;
}

} // namespace core
} // namespace vorn
