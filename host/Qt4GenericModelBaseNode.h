#pragma once

#include <vorn/host/Qt4AbstractModelNode.h>

namespace vorn {
namespace core {

class GenericModel;

// An item node that knows the generic model of the tree it shows.
class VORN_MODELQT4_API Qt4GenericModelBaseNode : public Qt4AbstractModelNode
{
public:
    explicit Qt4GenericModelBaseNode(boost::shared_ptr<GenericModel> model);
    ~Qt4GenericModelBaseNode() override;

    boost::shared_ptr<GenericModel> genericModel() const { return m_genericModel; }

private:
    boost::shared_ptr<GenericModel> m_genericModel;
};

} // namespace core
} // namespace vorn
