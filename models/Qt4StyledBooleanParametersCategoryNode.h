#pragma once

#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>

namespace vorn {
namespace core {

// The "Events" row of a category: a bold, spanning, 12-pixel header that opens by itself. Its
// foreground and background stay empty, so the view's palette applies.
class VORN_PARAMETERSQT4_API Qt4StyledBooleanParametersCategoryNode
    : public Qt4StyledBooleanParametersModelNode
{
public:
    using Qt4StyledBooleanParametersModelNode::Qt4StyledBooleanParametersModelNode;
    ~Qt4StyledBooleanParametersCategoryNode() override;

    static boost::shared_ptr<Qt4StyledBooleanParametersCategoryNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           const boost::any& data);
    static boost::shared_ptr<Qt4StyledBooleanParametersCategoryNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);

    void postInsert() override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataFontRole(int column) override;
    QVariant dataBackgroundRole(int column) override;
    QVariant dataForegroundRole(int column) override;
    QVariant dataSizeHintRole(int column) override;
    bool isGridEnabled(int column) override;
    bool enableFirstColumnSpanning() override;
    bool enableAutoExpand() override;

private:
    QVariant m_font;
    QVariant m_foreground;
    QVariant m_background;
    QVariant m_text;
};

} // namespace core
} // namespace vorn
