#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>

#include <vorn/models/Qt4StyledBooleanParametersBooleanNode.h>
#include <vorn/models/Qt4StyledBooleanParametersCategoryNode.h>
#include <vorn/models/Qt4StyledBooleanParametersEntryNode.h>
#include <vorn/models/private/RowTemplates.h>

#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersCategoryNode.h>

namespace vorn {
namespace core {
namespace rows {

// Categories, booleans and plain entries only: the framework leaves out every other kind, and all below
// it.
struct EventsFactory
{
    template <class... Args>
    static boost::shared_ptr<Qt4GenericModelNode> create(const boost::shared_ptr<GenericModelNode>& node,
                                                         const Args&... args)
    {
        using namespace models;
        if (!node)
            return boost::shared_ptr<Qt4GenericModelNode>();
        const std::uint32_t type = node->typeId();
        if (type == MvParametersCategoryNode::typeId())
            return Qt4StyledBooleanParametersCategoryNode::create(args...);
        if (type == MvParametersBooleanNode::typeId())
            return Qt4StyledBooleanParametersBooleanNode::create(args...);
        if (type == MvParametersEntryNode::typeId())
            return Qt4StyledBooleanParametersEntryNode::create(args...);
        return boost::shared_ptr<Qt4GenericModelNode>();
    }
};

template class StyledBaseRow<Qt4StyledBooleanParametersModelNode, 16, EventsFactory>;

} // namespace rows
} // namespace core
} // namespace vorn
