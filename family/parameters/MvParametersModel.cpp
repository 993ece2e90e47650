#include <vorn/host/MvParametersModel.h>

namespace vorn {
namespace core {
namespace models {

MvParametersModel::MvParametersModel() = default;

MvParametersModel::~MvParametersModel() = default;

boost::shared_ptr<MvParametersModel> MvParametersModel::create()
{
    boost::shared_ptr<MvParametersModel> model(new MvParametersModel());
    model->m_root = model->createNode<MvParametersRootNode>(std::string("Root"));
    return model;
}

bool writeThroughCallback(const boost::shared_ptr<MvParametersEntryNode>& node, const boost::any& value)
{
    if (!node)
        return false;
    auto model = boost::dynamic_pointer_cast<MvParametersModel>(node->model());
    if (!model || !model->root())
        return false;
    boost::shared_ptr<ParameterModelCallback> callback = model->root()->getCallback().lock();
    if (!callback)
        return false;
    callback->setValue(node, value);
    return true;
}

} // namespace models
} // namespace core
} // namespace vorn
