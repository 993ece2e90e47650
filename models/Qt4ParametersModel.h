#pragma once

#include <vorn/base/VornExport.h>

#include <vorn/host/Qt4GenericModel.h>

namespace vorn {
namespace core {

// The plain two-column model of a parameter tree: column 0 "Feature" (name, icon), column 1 "Value".
// Rows, indexes and data come from the framework, which asks the row behind each index. It has no
// meta-object of its own: metaObject(), qt_metacast() and qt_metacall() are the framework model's, so
// the model's entries in the virtual table are those of Qt4AbstractModel.
struct VORN_PARAMETERSQT4_API Qt4ParametersModel : public Qt4GenericModel
{
public:
    // The only way to make a model: binds root (when given) to the new model, which builds its rows.
    static boost::shared_ptr<Qt4ParametersModel> create(boost::shared_ptr<Qt4AbstractModelNode> root);

    explicit Qt4ParametersModel(boost::shared_ptr<Qt4AbstractModelNode> root);
    ~Qt4ParametersModel() override;

    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    int getInitialExpansionDepth() override;
};

} // namespace core
} // namespace vorn
