#pragma once

#include "FeatureAssignment.h"

#include <vorn/host/ParameterModelCallback.h>

#include <deque>
#include <functional>
#include <string>

namespace vorn {
namespace browser {

// The values a person changed, most recent last, so that a change can be taken back: it stands
// between a tree's root and the tree's own callback, notes each value's previous text as a write
// passes, and hands the write on unchanged.
class EditHistory : public core::ParameterModelCallback
{
public:
    // Changes kept; older ones are forgotten.
    static constexpr std::size_t kDepth = 20;

    struct Change
    {
        FeatureAssignment previous; // the assignment that puts the old value back
        std::string now;            // the value written, as text
    };

    explicit EditHistory(const boost::shared_ptr<core::ParameterModelCallback>& tree) : m_tree(tree) {}

    void setValue(boost::shared_ptr<core::models::MvParametersEntryNode> node, boost::any value) override;

    const boost::shared_ptr<core::ParameterModelCallback>& tree() const { return m_tree; }
    bool empty() const { return m_changes.empty(); }
    const std::deque<Change>& changes() const { return m_changes; }
    // Takes the latest change off the history; the caller writes its previous value back (while
    // paused, so that the write back is not a change of its own).
    Change takeLatest();
    void pause(bool paused) { m_paused = paused; }
    // Told the name of each command run through the tree (after it was handed on), paused or not.
    void setCommandObserver(std::function<void(const std::string& name)> observer)
    {
        m_commandObserver = std::move(observer);
    }

private:
    boost::shared_ptr<core::ParameterModelCallback> m_tree;
    std::deque<Change> m_changes;
    bool m_paused = false;
    std::function<void(const std::string& name)> m_commandObserver;
};

} // namespace browser
} // namespace vorn
