#pragma once

#include <vorn/base/VornExport.h>

#include <vorn/host/Qt4GenericModel.h>

namespace vorn {
namespace core {

// The styled two-column model: the plain model's tree with bold, left-aligned headers, opening with
// only the top level shown.
class VORN_PARAMETERSQT4_API Qt4StyledParametersModel : public Qt4GenericModel
{
public:
    static boost::shared_ptr<Qt4StyledParametersModel> create(boost::shared_ptr<Qt4AbstractModelNode> root);

    explicit Qt4StyledParametersModel(boost::shared_ptr<Qt4AbstractModelNode> root);
    ~Qt4StyledParametersModel() override;

    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    int getInitialExpansionDepth() override;
};

} // namespace core
} // namespace vorn
