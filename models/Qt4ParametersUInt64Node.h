#pragma once

#include <vorn/models/Qt4ParametersModelNode.h>

namespace vorn {
namespace core {

// The row of an unsigned 64-bit integer feature: decimal, "0x" hex, dotted or colon address with its
// unit, or a check box, by the parameter's representation.
class VORN_PARAMETERSQT4_API Qt4ParametersUInt64Node : public Qt4ParametersModelNode
{
public:
    using Qt4ParametersModelNode::Qt4ParametersModelNode;
    ~Qt4ParametersUInt64Node() override;

    static boost::shared_ptr<Qt4ParametersUInt64Node> create(boost::shared_ptr<GenericModel> model,
                                                             boost::shared_ptr<GenericModelNode> node,
                                                             const boost::any& data);
    static boost::shared_ptr<Qt4ParametersUInt64Node> create(boost::shared_ptr<GenericModel> model,
                                                             boost::shared_ptr<GenericModelNode> node,
                                                             boost::shared_ptr<GenericModelNode> parentNode,
                                                             const boost::any& data);

    void postInsert() override;
    void setCheckedState(int column, Qt::CheckState state) override;
    QVariant dataDisplayRole(int column) override;
    QVariant dataDecorationRole(int column) override;
    QVariant dataFontRole(int column) override;
    QVariant dataCheckStateRole(int column) override;
    bool isUserCheckable(int column) override;

private:
    QVariant m_icon;
};

} // namespace core
} // namespace vorn
