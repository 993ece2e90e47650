#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>

namespace vorn {
namespace core {

// The "Events" row of a boolean: a check box in the name column, bold while the flag is set. The
// icon it loads is never shown: this model has no icons.
class VORN_PARAMETERSQT4_API Qt4StyledBooleanParametersBooleanNode
    : public rows::Row<Qt4StyledBooleanParametersModelNode, Qt4StyledBooleanParametersBooleanNode>
{
public:
    using Row::Row;
    ~Qt4StyledBooleanParametersBooleanNode() override;

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
