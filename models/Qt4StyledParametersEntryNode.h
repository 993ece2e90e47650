#pragma once

#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of a plain entry: its name in red.
class VORN_PARAMETERSQT4_API Qt4StyledParametersEntryNode : public Qt4StyledParametersModelNode
{
public:
    using Qt4StyledParametersModelNode::Qt4StyledParametersModelNode;
    ~Qt4StyledParametersEntryNode() override;

    static boost::shared_ptr<Qt4StyledParametersEntryNode> create(boost::shared_ptr<GenericModel> model,
                                                                  boost::shared_ptr<GenericModelNode> node,
                                                                  const boost::any& data);
    static boost::shared_ptr<Qt4StyledParametersEntryNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);

    void postInsert() override;
    QVariant dataForegroundRole(int column) override;

private:
    QVariant m_foreground;
};

} // namespace core
} // namespace vorn
