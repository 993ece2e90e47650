#include "CameraShapedTree.h"

#include <algorithm>
#include <random>
#include <vector>

namespace vorn {
namespace bench {

using namespace core::models;

const char* hiddenRowsName(HiddenRows layout)
{
    return layout == HiddenRows::Clustered ? "clustered" : "interleaved";
}

namespace {

class Generator
{
public:
    Generator(int features, HiddenRows layout, unsigned seed)
        : m_tree(InMemoryParameterTree::create()), m_left(features), m_layout(layout), m_random(seed)
    {}

    boost::shared_ptr<InMemoryParameterTree> run()
    {
        // Descriptions have a dozen or more top-level categories; each gets its share of the features.
        const int tops = std::max(3, m_left / 150);
        for (int top = 0; top < tops && m_left > 0; ++top) {
            m_budget = m_left / (tops - top);
            category(m_tree->root(), "Category" + std::to_string(top), 1, pick(2, 4));
        }
        return m_tree;
    }

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }
    bool chance(int percent) { return pick(0, 99) < percent; }

    // Categories: most for everyone, some for experts and gurus; a few invisible ones hold what vendors
    // keep for themselves.
    ParameterEntryVisibility categoryVisibility()
    {
        const int p = pick(0, 99);
        return p < 75 ? pevBeginner : p < 90 ? pevExpert : p < 97 ? pevGuru : pevInvisible;
    }

    ParameterEntryVisibility featureVisibility()
    {
        const int p = pick(0, 99);
        return p < 40 ? pevBeginner : p < 70 ? pevExpert : p < 90 ? pevGuru : pevInvisible;
    }

    ParameterEntryAccessMode access()
    {
        const int p = pick(0, 99);
        return p < 55   ? peamReadWrite
               : p < 85 ? peamReadOnly
               : p < 93 ? peamReadWriteIfValid
               : p < 98 ? peamNotAvailable
                        : peamNotImplemented;
    }

    // A category at `depth` (1 = top level) of a branch `deepest` levels deep: inner categories hold a
    // few subcategories and a few features of their own, the innermost 5 to 60 features.
    void category(const boost::shared_ptr<MvParametersEntryNode>& parent, const std::string& name, int depth,
                  int deepest)
    {
        auto node = m_tree->category(parent, name)
                        .displayName(name)
                        .toolTip("The " + name + " features.")
                        .visibility(depth == 1 ? pevBeginner : categoryVisibility())
                        .node();
        if (depth < deepest) {
            features(node, name, pick(0, 6));
            // A top-level category takes subcategories until its share is used up.
            const int children = depth == 1 ? 1 << 30 : pick(2, 5);
            for (int i = 0; i < children && m_budget > 0; ++i)
                category(node, name + "_" + std::to_string(i), depth + 1, deepest);
        } else {
            features(node, name, pick(5, 60));
        }
    }

    void features(const boost::shared_ptr<MvParametersEntryNode>& parent, const std::string& prefix,
                  int count)
    {
        count = std::min(count, m_budget);
        std::vector<ParameterEntryVisibility> levels(count);
        for (auto& level : levels)
            level = featureVisibility();
        if (m_layout == HiddenRows::Clustered) // vendors list the everyday features first
            std::stable_sort(levels.begin(), levels.end());
        for (int i = 0; i < count; ++i) {
            feature(parent, prefix + "F" + std::to_string(i), levels[i]);
            --m_left;
            --m_budget;
        }
    }

    void feature(const boost::shared_ptr<MvParametersEntryNode>& parent, const std::string& name,
                 ParameterEntryVisibility visibility)
    {
        const int kind = pick(0, 99);
        const int n = ++m_serial;
        boost::shared_ptr<MvParametersEntryNode> node;
        if (kind < 30) { // enumerations
            auto e = m_tree->enumeration(parent, name);
            const int entries = pick(2, 12);
            for (int i = 0; i < entries; ++i)
                e.entry("Value" + std::to_string(i), i, "Value " + std::to_string(i));
            e.intValue(pick(0, entries - 1));
            node = e.node();
        } else if (kind < 35) { // commands
            node = m_tree->command(parent, name).node();
        } else if (kind < 45) { // strings
            node = m_tree->string(parent, name).value("Text of " + name).maxLength(64).node();
        } else if (kind < 55) { // floats
            node = m_tree->floating(parent, name)
                       .value(n * 0.5)
                       .range(-1e6, 1e6)
                       .unit(chance(50) ? "us" : "")
                       .node();
        } else if (kind < 67) { // booleans
            node = m_tree->boolean(parent, name).value(chance(50)).node();
        } else { // integers, a few of them 64-bit unsigned, hexadecimal or addresses
            const int sub = pick(0, 9);
            if (sub == 0) {
                node = m_tree->uint64(parent, name).value(1000000ull * n).range(0, ~0ull).node();
            } else {
                auto i = m_tree->integer(parent, name).value(n % 4096 * 16).range(0, 65536).step(16);
                if (sub == 1)
                    i.representation(pirHexNumber);
                else if (sub == 2)
                    i.representation(pirIPV4Address).range(0, 0xffffffffll).step(1);
                else if (sub < 6)
                    i.unit("px");
                node = i.node();
            }
        }
        node->setDisplayName(name);
        node->setToolTip("What " + name + " does.");
        node->setVisibility(visibility);
        node->setAccessMode(access());
    }

    boost::shared_ptr<InMemoryParameterTree> m_tree;
    int m_left;
    int m_budget = 0; // features left for the current top-level category
    HiddenRows m_layout;
    std::mt19937 m_random;
    int m_serial = 0;
};

} // namespace

boost::shared_ptr<InMemoryParameterTree> buildCameraShapedTree(int features, HiddenRows layout, unsigned seed)
{
    return Generator(features, layout, seed).run();
}

} // namespace bench
} // namespace vorn
