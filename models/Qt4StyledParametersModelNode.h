#pragma once

#include <vorn/models/Qt4ParameterRows.h>

namespace vorn {
namespace core {

// The base of every row of a Qt4StyledParametersModel, and the row of the tree's root and of parameter
// nodes of a kind that has no styled row of its own: 17-pixel rows with grid lines. Its factory picks
// the styled row class by the parameter node's exact type id.
class VORN_PARAMETERSQT4_API Qt4StyledParametersModelNode
    : public rows::StyledBaseRow<Qt4StyledParametersModelNode, 17>
{
public:
    using StyledBaseRow::StyledBaseRow;
    ~Qt4StyledParametersModelNode() override;

protected:
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     boost::shared_ptr<GenericModelNode> parent,
                                                     const boost::any& data) override;
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     const boost::any& data) override;
};

} // namespace core
} // namespace vorn
