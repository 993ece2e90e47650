#pragma once

#include <vorn/models/Qt4ParameterRows.h>

namespace vorn {
namespace core {

// The base of the "Events" model's rows: the styled rows' answers on 16-pixel rows. Its factory makes
// rows for categories, booleans and plain entries only; every other kind is left out with all that
// lies below it.
class VORN_PARAMETERSQT4_API Qt4StyledBooleanParametersModelNode
    : public rows::StyledBaseRow<Qt4StyledBooleanParametersModelNode, 16>
{
public:
    using StyledBaseRow::StyledBaseRow;
    ~Qt4StyledBooleanParametersModelNode() override;

protected:
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     boost::shared_ptr<GenericModelNode> parent,
                                                     const boost::any& data) override;
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     const boost::any& data) override;
};

} // namespace core
} // namespace vorn
