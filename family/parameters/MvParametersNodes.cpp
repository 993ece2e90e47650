// Out-of-line members of the parameter node classes: one home for their virtual tables.
#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersCategoryNode.h>
#include <vorn/host/MvParametersCommandNode.h>
#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/MvParametersRootNode.h>
#include <vorn/host/MvParametersStringNode.h>
#include <vorn/host/MvParametersUInt64Node.h>

namespace vorn {
namespace core {

ParameterModelCallback::~ParameterModelCallback() = default;

namespace models {

MvParametersEntryNode::MvParametersEntryNode(const boost::shared_ptr<GenericModel>& model,
                                             const std::string& name)
    : GenericModelNode(model), m_name(name)
{}

MvParametersEntryNode::~MvParametersEntryNode() = default;

void MvParametersEntryNode::addChild(const boost::shared_ptr<MvParametersEntryNode>& child)
{
    if (!child)
        return;
    // The container is made on first use: most entries are leaves and need none.
    if (!m_childNodes)
        m_childNodes.reset(new ChildNodesEntryNode(model()));
    m_childNodes->appendChild(child);
    child->setParentNode(shared_from_this());
}

bool MvParametersEntryNode::isWritable() const
{
    return m_accessMode == peamReadWrite || (m_accessMode == peamReadWriteIfValid && m_dataValid);
}

MvParametersCategoryNode::~MvParametersCategoryNode() = default;
MvParametersStringNode::~MvParametersStringNode() = default;
MvParametersIntegerNode::~MvParametersIntegerNode() = default;
MvParametersUInt64Node::~MvParametersUInt64Node() = default;
MvParametersFloatNode::~MvParametersFloatNode() = default;
MvParametersBooleanNode::~MvParametersBooleanNode() = default;
MvParametersCommandNode::~MvParametersCommandNode() = default;
MvParametersRootNode::~MvParametersRootNode() = default;

} // namespace models
} // namespace core
} // namespace vorn
