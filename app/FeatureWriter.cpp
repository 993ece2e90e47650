#include "FeatureWriter.h"

#include "FeatureTreeWalk.h"
#include "ParameterSource.h"

#include <vorn/host/MvParametersModel.h>
#include <vorn/host/ParameterKind.h>

#include <deque>
#include <map>
#include <unordered_map>

namespace vorn {
namespace browser {

using namespace core::models;

namespace {

bool isFieldIndex(const MvParametersEntryNode& node, int index)
{
    const ParameterPresentation p = ParameterKind::of(node).presentation(node);
    return p.isField && p.fieldIndex == index;
}

// Whether the node shows this value now (commands never do: executing is never a no-op).
bool holds(const MvParametersEntryNode& node, const boost::any& value)
{
    const ParameterKind& kind = ParameterKind::of(node);
    return kind.holdsValue() && node.getDataValid() && kind.value(node) == fromAny(value);
}

// Collects what the tree reports while a batch of writes is answered.
class ErrorCollector : public core::GenericModelObserver
{
public:
    explicit ErrorCollector(const boost::shared_ptr<core::GenericModel>& model) : m_model(model)
    {
        m_model->addObserver(this);
    }
    ~ErrorCollector() override { m_model->removeObserver(this); }

    void nodesChanged(const std::vector<boost::shared_ptr<core::GenericModelNode>>&) override {}
    void allNodesChanged() override {}
    void errorReported(const boost::shared_ptr<core::GenericModelNode>& node,
                       const std::string& message) override
    {
        errors.emplace_back(node.get(), message);
    }

    std::vector<std::pair<const core::GenericModelNode*, std::string>> errors;

private:
    boost::shared_ptr<core::GenericModel> m_model;
};

} // namespace

std::vector<FeatureFailure> FeatureWriter::apply(const std::vector<FeatureAssignment>& assignments)
{
    ErrorCollector collector(m_source.model());
    // Every feature by name, found in one walk: a file of many lines must not walk the tree per line.
    std::unordered_map<std::string, std::vector<boost::shared_ptr<MvParametersEntryNode>>> byName;
    FeatureTreeWalk::forEach(m_source.model()->root(), [&byName](const FeatureTreeWalk::EntryPtr& node, int) {
        byName[node->getName()].push_back(node);
    });
    static const std::vector<boost::shared_ptr<MvParametersEntryNode>> none;
    std::vector<std::string> messages(assignments.size());
    // The assignments written to each node, oldest first: the tree answers a node's writes in order.
    std::map<const core::GenericModelNode*, std::deque<std::size_t>> written;
    bool pending = false; // writes the tree has not answered yet

    for (std::size_t i = 0; i < assignments.size(); ++i) {
        const FeatureAssignment& a = assignments[i];
        const std::string what = "Cannot set " + a.key() + (a.value.empty() ? "" : " to " + a.value);
        boost::shared_ptr<MvParametersEntryNode> node;
        auto named = byName.find(a.name);
        for (const auto& candidate : named == byName.end() ? none : named->second) {
            if (a.fieldIndex < 0 || isFieldIndex(*candidate, a.fieldIndex)) {
                node = candidate;
                break;
            }
        }
        if (!node) {
            messages[i] = what + ": no such feature";
            continue;
        }
        boost::any value;
        std::string reason;
        if (!ParameterKind::of(*node).parse(*node, a.value, &value, &reason)) {
            messages[i] = what + ": " + reason;
            continue;
        }
        // A value the feature holds already is not written again: a device may refuse even its own
        // current value (one off the increment, say), and a file saved from it would not load. The
        // node's value counts only once the tree has answered the writes before it, which may have
        // changed it (a selector, say).
        if (holds(*node, value)) {
            if (pending)
                m_source.waitIdle();
            pending = false;
            if (holds(*node, value))
                continue;
        }
        const std::size_t reported = collector.errors.size();
        if (!writeThroughCallback(node, value)) {
            messages[i] = what + ": the tree is closed";
            continue;
        }
        // A tree that checks writes at once has answered already; others answer after waitIdle.
        if (collector.errors.size() > reported && collector.errors.back().first == node.get()) {
            messages[i] = collector.errors.back().second;
            collector.errors.pop_back();
            continue;
        }
        written[node.get()].push_back(i);
        pending = true;
    }

    // Every write's outcome, however long the device takes to give it.
    m_source.waitIdle();

    std::vector<std::string> unplaced;
    for (const auto& [node, message] : collector.errors) {
        auto it = written.find(node);
        if (it == written.end() || it->second.empty()) {
            unplaced.push_back(message);
            continue;
        }
        messages[it->second.front()] = message;
        it->second.pop_front();
    }

    std::vector<FeatureFailure> failures;
    for (std::size_t i = 0; i < messages.size(); ++i)
        if (!messages[i].empty())
            failures.push_back({i < assignments.size() ? assignments[i].line : 0, messages[i]});
    for (const std::string& message : unplaced)
        failures.push_back({0, message});
    return failures;
}

} // namespace browser
} // namespace vorn
