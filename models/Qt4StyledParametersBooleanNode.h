#pragma once

#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of a boolean feature: a check box in the value column that writes through the tree.
class VORN_PARAMETERSQT4_API Qt4StyledParametersBooleanNode : public Qt4StyledParametersModelNode
{
public:
    using Qt4StyledParametersModelNode::Qt4StyledParametersModelNode;
    ~Qt4StyledParametersBooleanNode() override;

    static boost::shared_ptr<Qt4StyledParametersBooleanNode> create(boost::shared_ptr<GenericModel> model,
                                                                    boost::shared_ptr<GenericModelNode> node,
                                                                    const boost::any& data);
    static boost::shared_ptr<Qt4StyledParametersBooleanNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);

    void postInsert() override;
    void setCheckedState(int column, Qt::CheckState state) override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataDecorationRole(int column) override;
    QVariant dataCheckStateRole(int column) override;
    bool isUserCheckable(int column) override;

private:
    QVariant m_icon;
};

} // namespace core
} // namespace vorn
