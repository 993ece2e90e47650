#pragma once

#include <vorn/host/MvParametersEntryNode.h>

#include <functional>
#include <vector>

namespace vorn {
namespace browser {

// Visits the features below a node of a parameter tree in tree order (each node before its children,
// siblings in their order), with their depth below the start node (its children have depth 0).
class FeatureTreeWalk
{
public:
    using EntryPtr = boost::shared_ptr<core::models::MvParametersEntryNode>;
    using Visitor = std::function<void(const EntryPtr& node, int depth)>;

    // Iterative: how deep a tree goes is up to the description it comes from.
    static void forEach(const EntryPtr& start, const Visitor& visit)
    {
        if (!start)
            return;
        struct Level
        {
            boost::shared_ptr<core::models::MvParametersEntryNode::ChildNodesEntryNode> children;
            std::size_t next;
        };
        std::vector<Level> path;
        if (auto children = start->getChildNodesEntryNode())
            path.push_back(Level{children, 0});
        while (!path.empty()) {
            Level& level = path.back();
            if (level.next >= level.children->childCount()) {
                path.pop_back();
                continue;
            }
            // Every child of a parameter node is a parameter node.
            const auto entry = boost::static_pointer_cast<core::models::MvParametersEntryNode>(
                level.children->child(level.next++));
            visit(entry, static_cast<int>(path.size()) - 1);
            if (auto children = entry->getChildNodesEntryNode())
                path.push_back(Level{children, 0});
        }
    }
};

} // namespace browser
} // namespace vorn
