#pragma once

#include <vorn/host/MvParametersEntryNode.h>

#include <functional>

namespace vorn {
namespace browser {

// Visits the features below a node of a parameter tree in tree order (each node before its children,
// siblings in their order), with their depth below the start node (its children have depth 0).
class FeatureTreeWalk
{
public:
    using EntryPtr = boost::shared_ptr<core::models::MvParametersEntryNode>;
    using Visitor = std::function<void(const EntryPtr& node, int depth)>;

    static void forEach(const EntryPtr& start, const Visitor& visit) { walk(start, 0, visit); }

private:
    static void walk(const EntryPtr& parent, int depth, const Visitor& visit)
    {
        if (!parent)
            return;
        const auto children = parent->getChildNodesEntryNode();
        if (!children)
            return;
        for (const auto& child : children->children()) {
            auto entry = boost::dynamic_pointer_cast<core::models::MvParametersEntryNode>(child);
            if (!entry)
                continue;
            visit(entry, depth);
            walk(entry, depth + 1, visit);
        }
    }
};

} // namespace browser
} // namespace vorn
