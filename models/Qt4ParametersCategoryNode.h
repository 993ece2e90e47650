#pragma once

#include <vorn/models/Qt4ParameterRows.h>
#include <vorn/models/Qt4ParametersModelNode.h>

namespace vorn {
namespace core {

// The row of a category: a bold name that spans both columns.
class VORN_PARAMETERSQT4_API Qt4ParametersCategoryNode
    : public rows::Row<Qt4ParametersModelNode, Qt4ParametersCategoryNode>
{
public:
    using Row::Row;
    ~Qt4ParametersCategoryNode() override;

    void postInsert() override;
    QVariant dataFontRole(int column) override;
    bool enableFirstColumnSpanning() override;

private:
    QVariant m_font;
};

} // namespace core
} // namespace vorn
