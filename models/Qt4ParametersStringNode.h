#pragma once

#include <vorn/models/Qt4ParametersModelNode.h>

namespace vorn {
namespace core {

// The row of a string feature: the text in a bold fixed-width font.
class VORN_PARAMETERSQT4_API Qt4ParametersStringNode : public Qt4ParametersModelNode
{
public:
    using Qt4ParametersModelNode::Qt4ParametersModelNode;
    ~Qt4ParametersStringNode() override;

    static boost::shared_ptr<Qt4ParametersStringNode> create(boost::shared_ptr<GenericModel> model,
                                                             boost::shared_ptr<GenericModelNode> node,
                                                             const boost::any& data);
    static boost::shared_ptr<Qt4ParametersStringNode> create(boost::shared_ptr<GenericModel> model,
                                                             boost::shared_ptr<GenericModelNode> node,
                                                             boost::shared_ptr<GenericModelNode> parentNode,
                                                             const boost::any& data);

    void postInsert() override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataDecorationRole(int column) override;
    QVariant dataFontRole(int column) override;

private:
    QVariant m_icon;
};

} // namespace core
} // namespace vorn
