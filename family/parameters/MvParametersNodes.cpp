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

MvParametersEntryNode::~MvParametersEntryNode()
{
    // A tree is as deep as its description makes it; torn down by nested destructors, a deep one would
    // overflow the stack. The nodes only this one still owns are taken apart here, level by level.
    std::vector<GenericModelNode::Ptr> pending = takeChildren();
    if (m_childNodes)
        pending.push_back(std::move(m_childNodes));
    while (!pending.empty()) {
        GenericModelNode::Ptr node = std::move(pending.back());
        pending.pop_back();
        if (!node || node.use_count() != 1)
            continue; // someone else holds it: not ours to take apart
        for (GenericModelNode::Ptr& child : node->takeChildren())
            pending.push_back(std::move(child));
        if (auto* entry = dynamic_cast<MvParametersEntryNode*>(node.get()); entry && entry->m_childNodes)
            pending.push_back(std::move(entry->m_childNodes));
    }
}

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
