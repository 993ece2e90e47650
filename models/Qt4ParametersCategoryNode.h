#pragma once

#include <vorn/models/Qt4ParametersModelNode.h>

namespace vorn {
namespace core {

// The row of a category: a bold name that spans both columns.
class VORN_PARAMETERSQT4_API Qt4ParametersCategoryNode : public Qt4ParametersModelNode
{
public:
    using Qt4ParametersModelNode::Qt4ParametersModelNode;
    ~Qt4ParametersCategoryNode() override;

    static boost::shared_ptr<Qt4ParametersCategoryNode> create(boost::shared_ptr<GenericModel> model,
                                                               boost::shared_ptr<GenericModelNode> node,
                                                               const boost::any& data);
    static boost::shared_ptr<Qt4ParametersCategoryNode> create(boost::shared_ptr<GenericModel> model,
                                                               boost::shared_ptr<GenericModelNode> node,
                                                               boost::shared_ptr<GenericModelNode> parentNode,
                                                               const boost::any& data);

    void postInsert() override;
    QVariant dataFontRole(int column) override;
    bool enableFirstColumnSpanning() override;

private:
    QVariant m_font;
};

} // namespace core
} // namespace vorn
