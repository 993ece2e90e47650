#pragma once

#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>

namespace vorn {
namespace core {

// The "Events" row of a boolean: a check box in the name column, bold while the flag is set. The
// icon it loads is never shown: this model has no icons.
class VORN_PARAMETERSQT4_API Qt4StyledBooleanParametersBooleanNode
    : public Qt4StyledBooleanParametersModelNode
{
public:
    using Qt4StyledBooleanParametersModelNode::Qt4StyledBooleanParametersModelNode;
    ~Qt4StyledBooleanParametersBooleanNode() override;

    static boost::shared_ptr<Qt4StyledBooleanParametersBooleanNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           const boost::any& data);
    static boost::shared_ptr<Qt4StyledBooleanParametersBooleanNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);

    void postInsert() override;
    void setCheckedState(int column, Qt::CheckState state) override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataDecorationRole(int column) override;
    QVariant dataFontRole(int column) override;
    QVariant dataCheckStateRole(int column) override;
    bool isUserCheckable(int column) override;

private:
    QVariant m_icon;
};

} // namespace core
} // namespace vorn
