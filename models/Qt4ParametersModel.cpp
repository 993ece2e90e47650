#include <vorn/models/Qt4ParametersModel.h>

namespace vorn {
namespace core {

boost::shared_ptr<Qt4ParametersModel> Qt4ParametersModel::create(boost::shared_ptr<Qt4AbstractModelNode> root)
{
    boost::shared_ptr<Qt4ParametersModel> model(new Qt4ParametersModel(root));
    if (root)
        root->setupAsRootNode(model);
    return model;
}

Qt4ParametersModel::Qt4ParametersModel(boost::shared_ptr<Qt4AbstractModelNode> root)
    : Qt4GenericModel(std::move(root))
{}

Qt4ParametersModel::~Qt4ParametersModel() = default;

int Qt4ParametersModel::columnCount(const QModelIndex&) const
{
    return 2;
}

QVariant Qt4ParametersModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case 0:
        return QStringLiteral("Feature");
    case 1:
        return QStringLiteral("Value");
    default:
        return QVariant();
    }
}

int Qt4ParametersModel::getInitialExpansionDepth()
{
    return -1;
}

} // namespace core
} // namespace vorn
