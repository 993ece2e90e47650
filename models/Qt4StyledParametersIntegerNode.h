#pragma once

#include <vorn/models/IntegerDetails.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

namespace vorn {
namespace core {

// The styled row of a signed 64-bit integer: plain numbers follow the view mode (decimal, hex or binary) with
// a field index in front, and a details tool tip shows the value in every base.
class VORN_PARAMETERSQT4_API Qt4StyledParametersIntegerNode : public Qt4StyledParametersModelNode
{
public:
    using Qt4StyledParametersModelNode::Qt4StyledParametersModelNode;
    ~Qt4StyledParametersIntegerNode() override;

    static boost::shared_ptr<Qt4StyledParametersIntegerNode> create(boost::shared_ptr<GenericModel> model,
                                                                    boost::shared_ptr<GenericModelNode> node,
                                                                    const boost::any& data);
    static boost::shared_ptr<Qt4StyledParametersIntegerNode>
    create(boost::shared_ptr<GenericModel> model, boost::shared_ptr<GenericModelNode> node,
           boost::shared_ptr<GenericModelNode> parentNode, const boost::any& data);

    void postInsert() override;
    void setCheckedState(int column, Qt::CheckState state) override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataDecorationRole(int column) override;
    QVariant dataFontRole(int column) override;
    QVariant dataToolTipRole(int column) override;
    QVariant dataCheckStateRole(int column) override;
    bool isUserCheckable(int column) override;

private:
    QVariant m_icon;
    // What the value column showed last, for the details tool tip.
    rows::IntegerDetails<long long> m_details;
};

} // namespace core
} // namespace vorn
