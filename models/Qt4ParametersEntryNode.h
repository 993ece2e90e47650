#pragma once

#include <vorn/models/Qt4ParametersModelNode.h>

namespace vorn {
namespace core {

// The row of a plain entry: a node that is no feature of a known kind. Its name shows in red.
class VORN_PARAMETERSQT4_API Qt4ParametersEntryNode : public Qt4ParametersModelNode
{
public:
    using Qt4ParametersModelNode::Qt4ParametersModelNode;
    ~Qt4ParametersEntryNode() override;

    static boost::shared_ptr<Qt4ParametersEntryNode> create(boost::shared_ptr<GenericModel> model,
                                                            boost::shared_ptr<GenericModelNode> node,
                                                            const boost::any& data);
    static boost::shared_ptr<Qt4ParametersEntryNode> create(boost::shared_ptr<GenericModel> model,
                                                            boost::shared_ptr<GenericModelNode> node,
                                                            boost::shared_ptr<GenericModelNode> parentNode,
                                                            const boost::any& data);

    void postInsert() override;
    QVariant dataForegroundRole(int column) override;

private:
    QVariant m_foreground;
};

} // namespace core
} // namespace vorn
