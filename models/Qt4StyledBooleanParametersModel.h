#pragma once

#include <vorn/base/VornExport.h>

#include <vorn/host/Qt4GenericModel.h>

namespace vorn {
namespace core {

// The "Events" model: the boolean flags of a tree with their categories, as one column of check
// boxes under a bold "Events" header, opening one level deep.
class VORN_PARAMETERSQT4_API Qt4StyledBooleanParametersModel : public Qt4GenericModel
{
public:
    static boost::shared_ptr<Qt4StyledBooleanParametersModel>
    create(boost::shared_ptr<Qt4AbstractModelNode> root);

    explicit Qt4StyledBooleanParametersModel(boost::shared_ptr<Qt4AbstractModelNode> root);
    ~Qt4StyledBooleanParametersModel() override;

    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    int getInitialExpansionDepth() override;
};

} // namespace core
} // namespace vorn
