#pragma once

#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of a string feature: the text in a bold fixed-width font.
class VORN_PARAMETERSQT4_API Qt4StyledParametersStringNode : public Qt4StyledParametersModelNode
{
public:
    using Qt4StyledParametersModelNode::Qt4StyledParametersModelNode;
    ~Qt4StyledParametersStringNode() override;

    static boost::shared_ptr<Qt4StyledParametersStringNode> create(boost::shared_ptr<GenericModel> model,
                                                                   boost::shared_ptr<GenericModelNode> node,
                                                                   const boost::any& data);
    static boost::shared_ptr<Qt4StyledParametersStringNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);

    void postInsert() override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataDecorationRole(int column) override;
    QVariant dataFontRole(int column) override;

private:
    QVariant m_icon;
};

} // namespace core
} // namespace vorn
