#pragma once

#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of a category: a bold, spanning, 12-pixel header row without grid lines.
class VORN_PARAMETERSQT4_API Qt4StyledParametersCategoryNode : public Qt4StyledParametersModelNode
{
public:
    using Qt4StyledParametersModelNode::Qt4StyledParametersModelNode;
    ~Qt4StyledParametersCategoryNode() override;

    static boost::shared_ptr<Qt4StyledParametersCategoryNode> create(boost::shared_ptr<GenericModel> model,
                                                                     boost::shared_ptr<GenericModelNode> node,
                                                                     const boost::any& data);
    static boost::shared_ptr<Qt4StyledParametersCategoryNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);

    void postInsert() override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataFontRole(int column) override;
    QVariant dataSizeHintRole(int column) override;
    bool isGridEnabled(int column) override;
    bool enableFirstColumnSpanning() override;

private:
    QVariant m_text;
    QVariant m_font;
};

} // namespace core
} // namespace vorn
