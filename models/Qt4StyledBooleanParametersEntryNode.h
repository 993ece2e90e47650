#pragma once

#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>

namespace vorn {
namespace core {

// The "Events" row of a plain entry: its name in red.
class VORN_PARAMETERSQT4_API Qt4StyledBooleanParametersEntryNode : public Qt4StyledBooleanParametersModelNode
{
public:
    using Qt4StyledBooleanParametersModelNode::Qt4StyledBooleanParametersModelNode;
    ~Qt4StyledBooleanParametersEntryNode() override;

    static boost::shared_ptr<Qt4StyledBooleanParametersEntryNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           const boost::any& data);
    static boost::shared_ptr<Qt4StyledBooleanParametersEntryNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);

    void postInsert() override;
    QVariant dataForegroundRole(int column) override;

private:
    QVariant m_foreground;
};

} // namespace core
} // namespace vorn
