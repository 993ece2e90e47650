#include <vorn/models/Qt4StyledParametersModelNode.h>

#include <vorn/models/Qt4ParametersCommandNode.h>
#include <vorn/models/Qt4StyledParametersBooleanNode.h>
#include <vorn/models/Qt4StyledParametersCategoryNode.h>
#include <vorn/models/Qt4StyledParametersEntryNode.h>
#include <vorn/models/Qt4StyledParametersEnumerationNode.h>
#include <vorn/models/Qt4StyledParametersFloatNode.h>
#include <vorn/models/Qt4StyledParametersIntegerNode.h>
#include <vorn/models/Qt4StyledParametersStringNode.h>
#include <vorn/models/Qt4StyledParametersUInt64Node.h>
#include <vorn/models/private/RowFactory.h>
#include <vorn/models/private/RowTemplates.h>

namespace vorn {
namespace core {
namespace rows {

// The styled rows, by the parameter node's exact type id, as the plain family's factory picks its own.
struct StyledFactory
{
    using Base = Qt4StyledParametersModelNode;
    using Category = Qt4StyledParametersCategoryNode;
    using String = Qt4StyledParametersStringNode;
    using Integer = Qt4StyledParametersIntegerNode;
    using UInt64 = Qt4StyledParametersUInt64Node;
    using Float = Qt4StyledParametersFloatNode;
    using Boolean = Qt4StyledParametersBooleanNode;
    using Command = Qt4ParametersCommandNode; // one command row serves both two-column families
    using Enumeration = Qt4StyledParametersEnumerationNode;
    using Entry = Qt4StyledParametersEntryNode;

    template <class... Args>
    static boost::shared_ptr<Qt4GenericModelNode> create(const boost::shared_ptr<GenericModelNode>& node,
                                                         const Args&... args)
    {
        return createRowFor<StyledFactory>(node, args...);
    }
};

template class StyledBaseRow<Qt4StyledParametersModelNode, 17, StyledFactory>;

} // namespace rows
} // namespace core
} // namespace vorn
