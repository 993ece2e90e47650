#include <vorn/host/InMemoryParameterTree.h>

#include <vorn/host/ParameterKind.h>

namespace vorn {
namespace core {
namespace models {

// The tree's callback: every write is recorded, then checked and applied like a device would.
class InMemoryParameterTree::Callback : public ParameterModelCallback
{
public:
    explicit Callback(InMemoryParameterTree* tree) : m_tree(tree) {}

    void setValue(boost::shared_ptr<MvParametersEntryNode> node, boost::any value) override
    {
        m_tree->record(node, value);
    }

private:
    InMemoryParameterTree* m_tree;
};

InMemoryParameterTree::InMemoryParameterTree() : m_model(MvParametersModel::create()) {}

InMemoryParameterTree::~InMemoryParameterTree() = default;

boost::shared_ptr<InMemoryParameterTree> InMemoryParameterTree::create()
{
    boost::shared_ptr<InMemoryParameterTree> tree(new InMemoryParameterTree());
    tree->m_callback.reset(new Callback(tree.get()));
    tree->m_model->root()->setCallback(tree->m_callback);
    return tree;
}

void InMemoryParameterTree::releaseCallback()
{
    m_callback.reset();
}

template <class Node, class... Args>
boost::shared_ptr<Node> InMemoryParameterTree::make(const Parent& parent, const std::string& name,
                                                    const Args&... args)
{
    boost::shared_ptr<Node> node = m_model->createNode<Node>(name, args...);
    place(parent, node);
    return node;
}

void InMemoryParameterTree::place(const Parent& parent, const boost::shared_ptr<MvParametersEntryNode>& node)
{
    (parent ? parent : Parent(root()))->addChild(node);
}

CategoryBuilder InMemoryParameterTree::category(const Parent& parent, const std::string& name)
{
    return CategoryBuilder(make<MvParametersCategoryNode>(parent, name));
}

PlainEntryBuilder InMemoryParameterTree::entry(const Parent& parent, const std::string& name)
{
    return PlainEntryBuilder(make<MvParametersEntryNode>(parent, name));
}

IntegerBuilder InMemoryParameterTree::integer(const Parent& parent, const std::string& name)
{
    return IntegerBuilder(make<MvParametersIntegerNode>(parent, name));
}

UInt64Builder InMemoryParameterTree::uint64(const Parent& parent, const std::string& name)
{
    return UInt64Builder(make<MvParametersUInt64Node>(parent, name));
}

FloatBuilder InMemoryParameterTree::floating(const Parent& parent, const std::string& name)
{
    return FloatBuilder(make<MvParametersFloatNode>(parent, name));
}

BooleanBuilder InMemoryParameterTree::boolean(const Parent& parent, const std::string& name)
{
    return BooleanBuilder(make<MvParametersBooleanNode>(parent, name));
}

StringBuilder InMemoryParameterTree::string(const Parent& parent, const std::string& name)
{
    return StringBuilder(make<MvParametersStringNode>(parent, name));
}

EnumerationBuilder InMemoryParameterTree::enumeration(const Parent& parent, const std::string& name)
{
    return EnumerationBuilder(make<MvParametersEnumerationNode>(parent, name));
}

CommandBuilder InMemoryParameterTree::command(const Parent& parent, const std::string& name)
{
    return CommandBuilder(make<MvParametersCommandNode>(parent, name), this);
}

EnumerationBuilder& EnumerationBuilder::entry(const std::string& symbolic, long long value,
                                              const std::string& displayName, ParameterEntryAccessMode access)
{
    auto model = m_node->model();
    boost::shared_ptr<MvParametersEnumEntryNode> e(new MvParametersEnumEntryNode(model, symbolic, value));
    e->setDisplayName(displayName);
    e->setAccessMode(access);
    m_node->addEntry(e);
    // The first entry becomes the value until one is chosen.
    if (m_node->getNodeValue().empty() && m_node->getEnumEntryNodesEntry(symbolic) == e)
        m_node->setNodeValue(symbolic);
    return *this;
}

CommandBuilder&
CommandBuilder::onExecute(std::function<void(const boost::shared_ptr<MvParametersCommandNode>&)> action)
{
    m_tree->setCommandAction(m_node, std::move(action));
    return *this;
}

namespace {

void collect(const boost::shared_ptr<MvParametersEntryNode>& node, const std::string& name,
             boost::shared_ptr<MvParametersEntryNode>& found)
{
    if (found || !node)
        return;
    if (node->getName() == name) {
        found = node;
        return;
    }
    if (auto children = node->getChildNodesEntryNode()) {
        for (const auto& child : children->children())
            collect(boost::static_pointer_cast<MvParametersEntryNode>(child), name, found);
    }
}

} // namespace

boost::shared_ptr<MvParametersEntryNode> InMemoryParameterTree::find(const std::string& name) const
{
    boost::shared_ptr<MvParametersEntryNode> found;
    if (auto children = root()->getChildNodesEntryNode()) {
        for (const auto& child : children->children())
            collect(boost::static_pointer_cast<MvParametersEntryNode>(child), name, found);
    }
    return found;
}

void InMemoryParameterTree::setCommandAction(const boost::shared_ptr<MvParametersCommandNode>& node,
                                             CommandAction action)
{
    for (auto& entry : m_actions) {
        if (entry.first == node.get()) {
            entry.second = std::move(action);
            return;
        }
    }
    m_actions.emplace_back(node.get(), std::move(action));
}

void InMemoryParameterTree::record(const boost::shared_ptr<MvParametersEntryNode>& node,
                                   const boost::any& value)
{
    Call call;
    call.node = node;
    call.value = value;
    call.error = apply(node, value);
    call.applied = call.error.empty();
    m_calls.push_back(call);
    if (call.applied) {
        notifyChanged(node);
    } else if (!node) {
        m_model->notifyError(node, "Cannot set (no node): " + call.error);
    } else {
        const ParameterKind& kind = ParameterKind::of(*node);
        m_model->notifyError(
            node, kind.refusedWriteMessage(node->getName(), value, kind.limits(*node), call.error));
    }
}

std::string InMemoryParameterTree::apply(const boost::shared_ptr<MvParametersEntryNode>& node,
                                         const boost::any& value)
{
    if (!node)
        return "no node given";
    const ParameterKind& kind = ParameterKind::of(*node);
    if (!kind.writable(*node)) {
        const std::string reason = ParameterKind::accessRefusal(node->getAccessMode());
        // Editable in principle, but its value could not be read: the tree does not take the write.
        return reason.empty() ? "the feature is not available" : reason;
    }
    const std::string reason = kind.refusal(value, kind.limits(*node));
    if (!reason.empty())
        return reason;
    kind.setValue(*node, fromAny(value));
    // An execution runs what the host gave the command to do (only commands have actions).
    for (const auto& entry : m_actions) {
        if (entry.first == node.get() && entry.second) {
            entry.second(boost::static_pointer_cast<MvParametersCommandNode>(node));
            break;
        }
    }
    return std::string();
}

void InMemoryParameterTree::notifyChanged(const boost::shared_ptr<MvParametersEntryNode>& node)
{
    m_model->notifyNodesChanged(std::vector<boost::shared_ptr<GenericModelNode>>(1, node));
}

void InMemoryParameterTree::notifyAllChanged()
{
    m_model->notifyAllNodesChanged();
}

} // namespace models
} // namespace core
} // namespace vorn
