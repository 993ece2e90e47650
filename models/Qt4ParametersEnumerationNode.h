#pragma once

#include <vorn/models/Qt4ParametersModelNode.h>

namespace vorn {
namespace core {

// The row of an enumeration: the display name of the current entry.
class VORN_PARAMETERSQT4_API Qt4ParametersEnumerationNode : public Qt4ParametersModelNode
{
public:
    using Qt4ParametersModelNode::Qt4ParametersModelNode;
    ~Qt4ParametersEnumerationNode() override;

    static boost::shared_ptr<Qt4ParametersEnumerationNode> create(boost::shared_ptr<GenericModel> model,
                                                                  boost::shared_ptr<GenericModelNode> node,
                                                                  const boost::any& data);
    static boost::shared_ptr<Qt4ParametersEnumerationNode>
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
