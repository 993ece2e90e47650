#pragma once

#include <vorn/base/VornExport.h>

#include <vorn/host/MvParametersEntryNode.h>
#include <vorn/host/Qt4GenericModelNode.h>

namespace vorn {
namespace core {

// The base of the styled model's rows, and the row of nodes of a kind without a styled row: 17-pixel
// rows with grid lines, the value column editable by access mode. Its factory makes the styled
// twin of each plain row, and the shared command row for commands.
class VORN_PARAMETERSQT4_API Qt4StyledParametersModelNode : public Qt4GenericModelNode
{
public:
    Qt4StyledParametersModelNode(boost::shared_ptr<GenericModel> model,
                                 boost::shared_ptr<GenericModelNode> node, const boost::any& data);
    Qt4StyledParametersModelNode(boost::shared_ptr<GenericModel> model,
                                 boost::shared_ptr<GenericModelNode> node,
                                 boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);
    ~Qt4StyledParametersModelNode() override;

    static boost::shared_ptr<Qt4StyledParametersModelNode> create(boost::shared_ptr<GenericModel> model,
                                                                  boost::shared_ptr<GenericModelNode> node,
                                                                  const boost::any& data);
    static boost::shared_ptr<Qt4StyledParametersModelNode>
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
