#pragma once

#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersCategoryNode.h>
#include <vorn/host/MvParametersCommandNode.h>
#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/MvParametersModel.h>
#include <vorn/host/MvParametersStringNode.h>
#include <vorn/host/MvParametersUInt64Node.h>

#include <boost/any.hpp>

#include <functional>
#include <string>
#include <vector>

namespace vorn {
namespace core {
namespace models {

class InMemoryParameterTree;

// Chainable description of one node of an in-memory tree. Every setter returns the builder, and
// node() (or the conversion) yields the node itself.
template <class Self, class Node> class EntryBuilder
{
public:
    explicit EntryBuilder(const boost::shared_ptr<Node>& node) : m_node(node) {}

    Self& displayName(const std::string& text)
    {
        return apply([&] { m_node->setDisplayName(text); });
    }
    Self& toolTip(const std::string& text)
    {
        return apply([&] { m_node->setToolTip(text); });
    }
    Self& description(const std::string& text)
    {
        return apply([&] { m_node->setDescription(text); });
    }
    Self& visibility(ParameterEntryVisibility v)
    {
        return apply([&] { m_node->setVisibility(v); });
    }
    Self& access(ParameterEntryAccessMode mode)
    {
        return apply([&] { m_node->setAccessMode(mode); });
    }
    Self& dataValid(bool valid)
    {
        return apply([&] { m_node->setDataValid(valid); });
    }
    Self& type(ParameterEntryType type)
    {
        return apply([&] { m_node->setType(type); });
    }
    Self& sortKey(std::uint64_t key)
    {
        return apply([&] { m_node->setCustomSortKey(key); });
    }

    boost::shared_ptr<Node> node() const { return m_node; }
    // Converts to a pointer to the node's class or any of its bases.
    template <class U> operator boost::shared_ptr<U>() const { return m_node; }

protected:
    template <class F> Self& apply(F f)
    {
        f();
        return static_cast<Self&>(*this);
    }

    boost::shared_ptr<Node> m_node;
};

class CategoryBuilder : public EntryBuilder<CategoryBuilder, MvParametersCategoryNode>
{
public:
    using EntryBuilder::EntryBuilder;
};

class PlainEntryBuilder : public EntryBuilder<PlainEntryBuilder, MvParametersEntryNode>
{
public:
    using EntryBuilder::EntryBuilder;
};

template <class Node> class IntegralBuilder : public EntryBuilder<IntegralBuilder<Node>, Node>
{
public:
    using T = typename Node::ValueType;
    using EntryBuilder<IntegralBuilder<Node>, Node>::EntryBuilder;

    IntegralBuilder& value(T v)
    {
        return this->apply([&] { this->m_node->setNodeValue(v); });
    }
    IntegralBuilder& range(T min, T max)
    {
        return this->apply([&] { this->m_node->setRange(min, max); });
    }
    IntegralBuilder& step(T s)
    {
        return this->apply([&] { this->m_node->setStepValue(s); });
    }
    IntegralBuilder& unit(const std::string& u)
    {
        return this->apply([&] { this->m_node->setUnit(u); });
    }
    IntegralBuilder& representation(ParameterIntegerRepresentation r)
    {
        return this->apply([&] { this->m_node->setRepresentation(r); });
    }
    IntegralBuilder& field(int index)
    {
        return this->apply([&] { this->m_node->setField(true, index); });
    }
    IntegralBuilder& viewMode(int mode)
    {
        return this->apply([&] { this->m_node->setViewMode(mode); });
    }
};

using IntegerBuilder = IntegralBuilder<MvParametersIntegerNode>;
using UInt64Builder = IntegralBuilder<MvParametersUInt64Node>;

class FloatBuilder : public EntryBuilder<FloatBuilder, MvParametersFloatNode>
{
public:
    using EntryBuilder::EntryBuilder;
    FloatBuilder& value(double v)
    {
        return apply([&] { m_node->setNodeValue(v); });
    }
    FloatBuilder& range(double min, double max)
    {
        return apply([&] { m_node->setRange(min, max); });
    }
    FloatBuilder& unit(const std::string& u)
    {
        return apply([&] { m_node->setUnit(u); });
    }
    FloatBuilder& field(int index)
    {
        return apply([&] { m_node->setField(true, index); });
    }
};

class BooleanBuilder : public EntryBuilder<BooleanBuilder, MvParametersBooleanNode>
{
public:
    using EntryBuilder::EntryBuilder;
    BooleanBuilder& value(bool v)
    {
        return apply([&] { m_node->setValueSet(v); });
    }
};

class StringBuilder : public EntryBuilder<StringBuilder, MvParametersStringNode>
{
public:
    using EntryBuilder::EntryBuilder;
    StringBuilder& value(const std::string& v)
    {
        return apply([&] { m_node->setNodeValue(v); });
    }
    StringBuilder& maxLength(long long n)
    {
        return apply([&] { m_node->setMaxLength(n); });
    }
};

class VORN_PARAMETERS_API EnumerationBuilder
    : public EntryBuilder<EnumerationBuilder, MvParametersEnumerationNode>
{
public:
    using EntryBuilder::EntryBuilder;
    // Appends an entry; displayName empty means the symbolic name is shown.
    EnumerationBuilder& entry(const std::string& symbolic, long long value,
                              const std::string& displayName = {},
                              ParameterEntryAccessMode access = peamReadOnly);
    EnumerationBuilder& value(const std::string& symbolic)
    {
        return apply([&] { m_node->setNodeValue(symbolic); });
    }
    EnumerationBuilder& intValue(long long v)
    {
        return apply([&] { m_node->setNodeIntValue(v); });
    }
};

class VORN_PARAMETERS_API CommandBuilder : public EntryBuilder<CommandBuilder, MvParametersCommandNode>
{
public:
    CommandBuilder(const boost::shared_ptr<MvParametersCommandNode>& node, InMemoryParameterTree* tree)
        : EntryBuilder(node), m_tree(tree)
    {}
    CommandBuilder& active(bool a)
    {
        return apply([&] { m_node->setActive(a); });
    }
    // What executing the command does; without an action an execution only is recorded.
    CommandBuilder& onExecute(std::function<void(const boost::shared_ptr<MvParametersCommandNode>&)> action);

private:
    InMemoryParameterTree* m_tree;
};

// A parameter tree held in memory, described in a few lines with the builders above. Its callback
// checks and applies written values the way a device would (type, access, range, increment, entry),
// notifies the model's observers, and records every call so that tests can assert what reached the tree.
// All calls belong on one thread (the GUI thread of the views that show the tree).
class VORN_PARAMETERS_API InMemoryParameterTree : public boost::enable_shared_from_this<InMemoryParameterTree>
{
public:
    struct Call
    {
        boost::shared_ptr<MvParametersEntryNode> node;
        boost::any value;
        bool applied = false;
        std::string error; // empty when applied
    };
    using CommandAction = std::function<void(const boost::shared_ptr<MvParametersCommandNode>&)>;

    static boost::shared_ptr<InMemoryParameterTree> create();
    ~InMemoryParameterTree();

    boost::shared_ptr<MvParametersModel> model() const { return m_model; }
    boost::shared_ptr<MvParametersRootNode> root() const { return m_model->root(); }
    boost::shared_ptr<ParameterModelCallback> callback() const { return m_callback; }
    // Drops the tree's callback, so that the root's weak pointer expires (as while a tree is torn down).
    void releaseCallback();

    using Parent = boost::shared_ptr<MvParametersEntryNode>;
    CategoryBuilder category(const Parent& parent, const std::string& name);
    PlainEntryBuilder entry(const Parent& parent, const std::string& name);
    IntegerBuilder integer(const Parent& parent, const std::string& name);
    UInt64Builder uint64(const Parent& parent, const std::string& name);
    FloatBuilder floating(const Parent& parent, const std::string& name);
    BooleanBuilder boolean(const Parent& parent, const std::string& name);
    StringBuilder string(const Parent& parent, const std::string& name);
    EnumerationBuilder enumeration(const Parent& parent, const std::string& name);
    CommandBuilder command(const Parent& parent, const std::string& name);
    // Places a node of the tree's model made elsewhere (for example of a class of the host's own).
    void place(const Parent& parent, const boost::shared_ptr<MvParametersEntryNode>& node);

    // The first node with this name in tree order (depth first), or empty.
    boost::shared_ptr<MvParametersEntryNode> find(const std::string& name) const;

    const std::vector<Call>& calls() const { return m_calls; }
    void clearCalls() { m_calls.clear(); }

    void setCommandAction(const boost::shared_ptr<MvParametersCommandNode>& node, CommandAction action);

    // Applies value to node as a write through the callback does; returns the error text, empty on success.
    std::string apply(const boost::shared_ptr<MvParametersEntryNode>& node, const boost::any& value);
    // Tells the views that these nodes changed (after the host changed values behind their back).
    void notifyChanged(const boost::shared_ptr<MvParametersEntryNode>& node);
    void notifyAllChanged();

private:
    class Callback;
    friend class Callback;

    InMemoryParameterTree();
    void record(const boost::shared_ptr<MvParametersEntryNode>& node, const boost::any& value);
    template <class Node, class... Args>
    boost::shared_ptr<Node> make(const Parent& parent, const std::string& name, const Args&... args);

    boost::shared_ptr<MvParametersModel> m_model;
    boost::shared_ptr<ParameterModelCallback> m_callback;
    std::vector<Call> m_calls;
    std::vector<std::pair<MvParametersCommandNode*, CommandAction>> m_actions;
};

} // namespace models
} // namespace core
} // namespace vorn
