#pragma once

#include <vorn/base/VornExport.h>

#include <vorn/host/MvParametersEntryNode.h>
#include <vorn/host/Qt4GenericModelNode.h>

#include <array>

namespace vorn {
namespace core {

// The base of every row of a Qt4ParametersModel, and the row of the tree's root and of parameter
// nodes of a kind that has no row class of its own. Column 0 shows the name, column 1 the value;
// the value column is editable by access mode. Its factory picks the row class by the parameter
// node's exact type id.
class VORN_PARAMETERSQT4_API Qt4ParametersModelNode : public Qt4GenericModelNode
{
public:
    Qt4ParametersModelNode(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
                           const boost::any& data);
    Qt4ParametersModelNode(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
                           boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);
    Qt4ParametersModelNode(const Qt4ParametersModelNode& other);
    Qt4ParametersModelNode& operator=(const Qt4ParametersModelNode& other);
    ~Qt4ParametersModelNode() override;

    static boost::shared_ptr<Qt4ParametersModelNode> create(boost::shared_ptr<GenericModel> model,
                                                            boost::shared_ptr<GenericModelNode> node,
                                                            const boost::any& data);
    static boost::shared_ptr<Qt4ParametersModelNode> create(boost::shared_ptr<GenericModel> model,
                                                            boost::shared_ptr<GenericModelNode> node,
                                                            boost::shared_ptr<GenericModelNode> parentNode,
                                                            const boost::any& data);

    QVariant dataDisplayRole(int column) override;
    QVariant dataFontRole(int column) override;
    QVariant dataToolTipRole(int column) override;
    QVariant dataSizeHintRole(int column) override;
    bool isEnabled(int column) override;
    bool isReadOnly(int column) override;
    bool isSelectable(int column) override;

    // The wrapped parameter node (empty for a row over no node).
    boost::shared_ptr<models::MvParametersEntryNode> entry() const
    {
        return boost::static_pointer_cast<models::MvParametersEntryNode>(node());
    }

protected:
    void setupChildren() override;
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     boost::shared_ptr<GenericModelNode> parent,
                                                     const boost::any& data) override;
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     const boost::any& data) override;

    // A per-row cache that row classes may fill; shared by copies of the row.
    boost::shared_ptr<std::array<QVariant, 2>> m_values;
};

} // namespace core
} // namespace vorn
