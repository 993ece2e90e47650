#pragma once

#include <vorn/base/VornExport.h>

#include <vorn/host/MvParametersEntryNode.h>
#include <vorn/host/Qt4GenericModelNode.h>

namespace vorn {
namespace core {

// The base of the "Events" model's rows: the styled rows' answers on 16-pixel rows. Its factory makes
// rows for categories, booleans and plain entries only; every other kind is left out with all that
// lies below it.
class VORN_PARAMETERSQT4_API Qt4StyledBooleanParametersModelNode : public Qt4GenericModelNode
{
public:
    Qt4StyledBooleanParametersModelNode(boost::shared_ptr<GenericModel> model,
                                        boost::shared_ptr<GenericModelNode> node, const boost::any& data);
    Qt4StyledBooleanParametersModelNode(boost::shared_ptr<GenericModel> model,
                                        boost::shared_ptr<GenericModelNode> node,
                                        boost::shared_ptr<GenericModelNode> parentNode,
                                        const boost::any& data);
    ~Qt4StyledBooleanParametersModelNode() override;

    static boost::shared_ptr<Qt4StyledBooleanParametersModelNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           const boost::any& data);
    static boost::shared_ptr<Qt4StyledBooleanParametersModelNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);

    QVariant dataDisplayRole(int column) override;
    QVariant dataFontRole(int column) override;
    QVariant dataToolTipRole(int column) override;
    QVariant dataSizeHintRole(int column) override;
    QVariant dataBranchBackgroundRole(int column) override;
    bool isEnabled(int column) override;
    bool isReadOnly(int column) override;
    bool isSelectable(int column) override;
    bool isGridEnabled(int column) override;

protected:
    void setupChildren() override;
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     boost::shared_ptr<GenericModelNode> parent,
                                                     const boost::any& data) override;
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     const boost::any& data) override;
};

} // namespace core
} // namespace vorn
