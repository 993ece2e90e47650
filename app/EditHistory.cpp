#include "EditHistory.h"

#include <vorn/host/MvParametersEntryNode.h>
#include <vorn/host/ParameterKind.h>

namespace vorn {
namespace browser {

using namespace core::models;

void EditHistory::setValue(boost::shared_ptr<MvParametersEntryNode> node, boost::any value)
{
    // The tree may refuse a command at once and report it before this returns; the observer hears
    // of the command first, so that it knows whose refusal that is.
    const bool command = node && ParameterKind::of(*node).id() == ParameterKindId::Command;
    if (command && m_commandObserver)
        m_commandObserver(node->getName());
    if (!m_paused && node) {
        const ParameterKind& kind = ParameterKind::of(*node);
        // Commands have no value to go back to; a value never read cannot be put back.
        const auto before = kind.holdsValue() ? kind.format(*node) : std::nullopt;
        if (before) {
            const ParameterPresentation p = kind.presentation(*node);
            Change change;
            change.previous = FeatureAssignment{node->getName(), p.isField ? p.fieldIndex : -1, *before, 0};
            change.now = kind.describe(value, kind.limits(*node));
            m_changes.push_back(change);
            if (m_changes.size() > kDepth)
                m_changes.pop_front();
        }
    }
    m_tree->setValue(std::move(node), std::move(value));
}

EditHistory::Change EditHistory::takeLatest()
{
    Change latest = m_changes.back();
    m_changes.pop_back();
    return latest;
}

} // namespace browser
} // namespace vorn
