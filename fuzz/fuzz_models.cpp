// The item models and the filter model under arbitrary trees and arbitrary changes: a random
// in-memory tree, shown by one of the three models behind the filter model, then random writes
// through the tree's callback, check boxes set through the model, changes of visibility, access
// and type announced by the tree, visibility levels, sorting, and an expiring callback. Qt's model
// tester watches both models and stops at the first broken rule; the checks below add what the
// filter and the callback promise.
#include "FuzzSupport.h"

#include <vorn/host/InMemoryParameterTree.h>
#include <vorn/host/MovaniApplication.h>
#include <vorn/models/IntegerViewModeKey.h>
#include <vorn/models/Qt4ParametersFilterModel.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>
#include <vorn/models/Qt4StyledBooleanParametersModel.h>
#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>
#include <vorn/models/Qt4StyledParametersModel.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

#include <QAbstractItemModelTester>

#include <vector>

using namespace vorn::core;
using namespace vorn::core::models;
using vorn::fuzz::FuzzInput;

namespace {

struct Tree
{
    boost::shared_ptr<InMemoryParameterTree> tree = InMemoryParameterTree::create();
    std::vector<boost::shared_ptr<MvParametersEntryNode>> nodes;
    std::vector<boost::shared_ptr<MvParametersEntryNode>> parents; // categories, and the root
};

std::string name(FuzzInput& in, std::size_t number)
{
    // Mostly plain names; sometimes any bytes (the rows turn them into text themselves).
    return in.range(0, 7) == 0 ? in.bytes(12) : "N" + std::to_string(number);
}

template <class Builder> void describe(Builder&& b, FuzzInput& in)
{
    b.visibility(static_cast<ParameterEntryVisibility>(in.range(-1, 5)));
    b.access(static_cast<ParameterEntryAccessMode>(in.range(0, 6)));
    if (in.range(0, 7) == 0)
        b.type(static_cast<ParameterEntryType>(in.range(0, 2)));
    if (in.flag())
        b.sortKey(in.integral<std::uint8_t>());
    if (in.range(0, 7) == 0)
        b.dataValid(false);
    if (in.range(0, 7) == 0)
        b.toolTip(in.bytes(8)).displayName(in.bytes(8));
}

void addNode(Tree& t, FuzzInput& in)
{
    auto& tree = *t.tree;
    const auto parent = t.parents[static_cast<std::size_t>(in.range(0, int(t.parents.size()) - 1))];
    const std::string n = name(in, t.nodes.size());
    boost::shared_ptr<MvParametersEntryNode> node;
    switch (in.range(0, 8)) {
    case 0: {
        auto b = tree.category(parent, n);
        describe(b, in);
        node = b.node();
        t.parents.push_back(node);
        break;
    }
    case 1: {
        auto b = tree.integer(parent, n);
        const long long a = in.integral<std::int64_t>() >> in.range(0, 63);
        const long long z = in.integral<std::int64_t>() >> in.range(0, 63);
        b.range(std::min(a, z), std::max(a, z)).step(in.range(-1, 4)).value(in.integral<std::int64_t>());
        b.representation(static_cast<ParameterIntegerRepresentation>(in.range(0, 7)));
        if (in.flag())
            b.unit(in.bytes(4));
        describe(b, in);
        node = b.node();
        break;
    }
    case 2: {
        auto b = tree.uint64(parent, n);
        b.range(0, in.integral<std::uint64_t>()).step(in.range(0, 4)).value(in.integral<std::uint64_t>());
        b.representation(static_cast<ParameterIntegerRepresentation>(in.range(0, 7)));
        describe(b, in);
        node = b.node();
        break;
    }
    case 3: {
        auto b = tree.floating(parent, n);
        b.range(in.real(), in.real()).value(in.real());
        describe(b, in);
        node = b.node();
        break;
    }
    case 4: {
        auto b = tree.boolean(parent, n);
        b.value(in.flag());
        describe(b, in);
        node = b.node();
        break;
    }
    case 5: {
        auto b = tree.string(parent, n);
        b.value(in.bytes(16)).maxLength(in.range(-1, 20));
        describe(b, in);
        node = b.node();
        break;
    }
    case 6: {
        auto b = tree.enumeration(parent, n);
        const int entries = in.range(0, 4);
        for (int i = 0; i < entries; ++i)
            b.entry("E" + std::to_string(i), in.range(-2, 5), in.flag() ? in.bytes(6) : std::string(),
                    static_cast<ParameterEntryAccessMode>(in.range(0, 5)));
        if (in.flag())
            b.intValue(in.range(-2, 5));
        describe(b, in);
        node = b.node();
        break;
    }
    case 7: {
        auto b = tree.command(parent, n);
        b.active(in.flag());
        describe(b, in);
        node = b.node();
        break;
    }
    default: {
        auto b = tree.entry(parent, n);
        describe(b, in);
        node = b.node();
        break;
    }
    }
    t.nodes.push_back(node);
}

boost::any anyValue(FuzzInput& in)
{
    switch (in.range(0, 6)) {
    case 0:
        return boost::any(static_cast<long long>(in.integral<std::int64_t>() >> in.range(0, 63)));
    case 1:
        return boost::any(static_cast<unsigned long long>(in.integral<std::uint64_t>() >> in.range(0, 63)));
    case 2:
        return boost::any(in.real());
    case 3:
        return boost::any(in.flag());
    case 4:
        return boost::any(in.bytes(24));
    case 5:
        return boost::any(in.range(-3, 3)); // an int: a type no node takes
    default:
        return boost::any();
    }
}

boost::shared_ptr<Qt4GenericModel> makeModel(int kind, const boost::shared_ptr<InMemoryParameterTree>& tree)
{
    switch (kind) {
    case 0:
        return Qt4ParametersModel::create(
            Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    case 1:
        return Qt4StyledParametersModel::create(
            Qt4StyledParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    default:
        return Qt4StyledBooleanParametersModel::create(
            Qt4StyledBooleanParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    }
}

// Every index of the model, in tree order.
void collect(const QAbstractItemModel& model, const QModelIndex& parent, QModelIndexList& out)
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        for (int column = 0; column < model.columnCount(parent); ++column)
            out << model.index(row, column, parent);
        collect(model, model.index(row, 0, parent), out);
    }
}

QModelIndexList everyIndex(const QAbstractItemModel& model)
{
    QModelIndexList out;
    collect(model, QModelIndex(), out);
    return out;
}

// Reads every role of every index, as views and accessibility do.
void readAll(const QAbstractItemModel& model)
{
    for (const QModelIndex& index : everyIndex(model)) {
        for (int role = Qt::DisplayRole; role <= Qt::SizeHintRole; ++role)
            index.data(role);
        index.data(Qt::UserRole);
        model.flags(index);
    }
}

// What the filter lets through: no internal or unimplemented row, and none above the level.
void checkFilter(const Qt4ParametersFilterModel& filter, int level)
{
    for (const QModelIndex& index : everyIndex(filter)) {
        if (index.column() != 0)
            continue;
        const auto row = index.data(Qt::UserRole).value<Qt4AbstractModelNodePtr>();
        const auto generic = boost::dynamic_pointer_cast<Qt4GenericModelNode>(row);
        FUZZ_CHECK(generic, "a row without its model node");
        const auto entry = boost::dynamic_pointer_cast<MvParametersEntryNode>(generic->node());
        FUZZ_CHECK(entry, "a row without a parameter");
        FUZZ_CHECK(entry->getType() != petInternal, "internal row %s shown", entry->getName().c_str());
        FUZZ_CHECK(entry->getAccessMode() != peamNotImplemented, "unimplemented row %s shown",
                   entry->getName().c_str());
        FUZZ_CHECK(entry->getVisibility() <= level, "row %s of visibility %d shown at level %d",
                   entry->getName().c_str(), int(entry->getVisibility()), level);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput in(data, size);
    Tree t;
    t.parents.push_back(t.tree->root());
    const int nodes = in.range(0, 48);
    for (int i = 0; i < nodes; ++i)
        addNode(t, in);

    MovaniApplication::setConfigIntEntry(vorn::core::rows::integerViewModeKey(), in.range(0, 3));
    const auto model = makeModel(in.range(0, 2), t.tree);
    const auto filter = Qt4ParametersFilterModel::create(model, nullptr);
    const QAbstractItemModelTester modelTester(model.get(),
                                               QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QAbstractItemModelTester filterTester(filter.get(),
                                                QAbstractItemModelTester::FailureReportingMode::Fatal);
    int level = pevExpert;
    bool callbackGone = false;

    const int operations = in.range(0, 40);
    for (int op = 0; op < operations && !in.empty(); ++op) {
        const auto node = t.nodes.empty()
                              ? boost::shared_ptr<MvParametersEntryNode>()
                              : t.nodes[static_cast<std::size_t>(in.range(0, int(t.nodes.size()) - 1))];
        switch (in.range(0, 9)) {
        case 0:
        case 1: {
            if (!node)
                break;
            // Every write reaches the tree exactly once, or not at all once the callback is gone.
            const std::size_t before = t.tree->calls().size();
            const bool written = writeThroughCallback(node, anyValue(in));
            FUZZ_CHECK(written != callbackGone, "write through %s callback %s",
                       callbackGone ? "a gone" : "a live", written ? "went through" : "was dropped");
            FUZZ_CHECK(t.tree->calls().size() == before + (written ? 1 : 0), "write recorded %zu times",
                       t.tree->calls().size() - before);
            break;
        }
        case 2: {
            level = in.range(-1, 5);
            filter->changeVisibility(static_cast<ParameterEntryVisibility>(level));
            break;
        }
        case 3:
            if (node) {
                node->setVisibility(static_cast<ParameterEntryVisibility>(in.range(-1, 5)));
                t.tree->notifyChanged(node);
            }
            break;
        case 4:
            if (node) {
                node->setAccessMode(static_cast<ParameterEntryAccessMode>(in.range(0, 6)));
                node->setType(static_cast<ParameterEntryType>(in.range(0, 1)));
                t.tree->notifyChanged(node);
            }
            break;
        case 5:
            t.tree->notifyAllChanged();
            break;
        case 6: {
            // A check box clicked in the view, through the filter model.
            const QModelIndexList all = everyIndex(*filter);
            if (!all.isEmpty()) {
                const QModelIndex index = all.at(in.range(0, all.size() - 1));
                filter->setData(index, in.flag() ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
            }
            break;
        }
        case 7:
            filter->sort(in.range(-1, 1), in.flag() ? Qt::AscendingOrder : Qt::DescendingOrder);
            break;
        case 8:
            t.tree->releaseCallback();
            callbackGone = true;
            break;
        default:
            readAll(*filter);
            break;
        }
    }
    readAll(*model);
    readAll(*filter);
    checkFilter(*filter, level);
    return 0;
}
