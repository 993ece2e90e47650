#pragma once

#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of a floating-point feature: a field shows its index before the value.
class VORN_PARAMETERSQT4_API Qt4StyledParametersFloatNode : public Qt4StyledParametersModelNode
{
public:
    using Qt4StyledParametersModelNode::Qt4StyledParametersModelNode;
    ~Qt4StyledParametersFloatNode() override;

    static boost::shared_ptr<Qt4StyledParametersFloatNode> create(boost::shared_ptr<GenericModel> model,
                                                                  boost::shared_ptr<GenericModelNode> node,
                                                                  const boost::any& data);
    static boost::shared_ptr<Qt4StyledParametersFloatNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);

    void postInsert() override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataDecorationRole(int column) override;

private:
    QVariant m_icon;
};

} // namespace core
} // namespace vorn
