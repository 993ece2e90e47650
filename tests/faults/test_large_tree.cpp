// A tree of 100,000 parameters (20,000 in sanitized builds) loaded into a model, the filter model and a view,
// used, and unloaded again, over and over: the memory in use comes back to where it was after the first round
// (heap bytes and resident set, both bounded), and the GUI thread keeps running while it happens. The tree
// itself is built on a worker thread, as a device backend would read a description; everything Qt
// sees is made on the GUI thread.
//
// Four steps of the GUI thread grow with the size of the tree, and at this size each may take longer
// than an ordinary stall: making the rows (load), a level change (the view lays out every expanded
// row again), a jump to the end of the tree (Qt's tree view finds rows by walking the rows above
// them) and releasing the rows (unload). They are measured on their own and reported (the benchmarks
// judge their growth); the stall probe covers everything else.
#include "FaultTestSupport.h"

#include "example/ExampleTree.h"
#include <vorn/host/Qt4GenericTreeView.h>
#include <vorn/models/Qt4ParametersFilterModel.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QScrollBar>
#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <future>
#include <sstream>
#include <vector>

using namespace vorn::core;
using namespace vorn::core::models;
using namespace vorn::test;

namespace {

// Sanitized builds track every allocation: they load a fifth of the tree, three times.
#ifdef VORN_TEST_SANITIZED
const int kParameters = 20000;
const int kDefaultRounds = 3;
#else
const int kParameters = 100000;
const int kDefaultRounds = 5;
#endif
// Growth allowed from the end of the first round to the end of the last one: caches that fill
// once (fonts, icons, Qt's own) are in place after the first round.
const std::uint64_t kHeapGrowthLimit = 1u << 20;
const std::uint64_t kResidentGrowthLimit = 16u << 20;

int rounds()
{
    const char* text = std::getenv("VORN_LARGE_TREE_ROUNDS");
    const int n = text ? std::atoi(text) : 0;
    return n >= 2 ? n : kDefaultRounds;
}

// Runs step, and the view's work it leaves for the event loop, and returns how long both took; the
// stall probe does not count them.
template <class Step> qint64 timed(std::unique_ptr<StallProbe>& probe, Stalls& stalls, Step step)
{
    stalls.take(*probe);
    probe.reset();
    QElapsedTimer clock;
    clock.start();
    step();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    const qint64 ms = clock.elapsed();
    probe.reset(new StallProbe());
    return ms;
}

} // namespace

TEST(LargeTree, loadingAndUnloadingAVeryLargeTreeKeepsMemoryFlat)
{
    Qt4GenericTreeView view;
    view.resize(640, 800);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));

    std::vector<std::uint64_t> heap, resident;
    qint64 longestLoad = 0, longestLevelChange = 0, longestJump = 0, longestUnload = 0;
    Stalls stalls;
    auto probe = std::unique_ptr<StallProbe>(new StallProbe());
    const int n = rounds();
    for (int round = 0; round < n; ++round) {
        // The host's thread builds the tree while the GUI thread only waits; the probe starts afresh
        // after it, so that a busy machine's scheduling does not count as a stall of ours.
        stalls.take(*probe);
        auto building =
            std::async(std::launch::async, [] { return vorn::example::buildGeneratedTree(kParameters); });
        while (building.wait_for(std::chrono::milliseconds(0)) != std::future_status::ready)
            QTest::qWait(5);
        auto tree = building.get();
        probe.reset(new StallProbe());
        boost::shared_ptr<Qt4ParametersFilterModel> filter;

        longestLoad = std::max(longestLoad, timed(probe, stalls, [&] {
                                   auto model = Qt4ParametersModel::create(Qt4ParametersModelNode::create(
                                       tree->model(), tree->root(), boost::any()));
                                   filter = Qt4ParametersFilterModel::create(model, nullptr);
                                   view.setModel(filter.get());
                               }));
        QTest::qWait(20);

        // In use: a level change, a category closed and opened, a page down, a write, a jump to the end.
        longestLevelChange =
            std::max(longestLevelChange, timed(probe, stalls, [&] { filter->changeVisibility(pevGuru); }));
        QTest::qWait(20);
        view.collapse(filter->index(0, 0));
        QTest::qWait(10);
        view.expand(filter->index(0, 0));
        QTest::qWait(10);
        view.verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
        QTest::qWait(20);
        EXPECT_TRUE(writeThroughCallback(tree->find("Feature8"), boost::any(8LL)));
        QTest::qWait(20);
        longestJump = std::max(longestJump, timed(probe, stalls, [&] {
                                   view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
                               }));
        QTest::qWait(20);

        longestUnload = std::max(longestUnload, timed(probe, stalls, [&] {
                                     view.setModel(nullptr);
                                     filter.reset();
                                     tree.reset();
                                 }));
        QTest::qWait(20);
        heap.push_back(heapInUse());
        resident.push_back(residentBytes());
    }
    stalls.take(*probe);

    std::ostringstream figures;
    figures.precision(1);
    figures << std::fixed << kParameters << " parameters, " << n << " rounds; heap after each round (MiB):";
    for (std::uint64_t bytes : heap)
        figures << " " << mebibytes(bytes);
    figures << "; resident (MiB):";
    for (std::uint64_t bytes : resident)
        figures << " " << mebibytes(bytes);
    figures << "; longest load " << longestLoad << " ms, level change " << longestLevelChange
            << " ms, jump to the end " << longestJump << " ms, unload " << longestUnload << " ms; otherwise "
            << stalls.text();
    reportFault(figures.str());

    const std::uint64_t heapGrowth = heap.back() > heap.front() ? heap.back() - heap.front() : 0;
    EXPECT_LT(heapGrowth, kHeapGrowthLimit) << "the heap grew by " << heapGrowth << " bytes";
#ifndef VORN_TEST_SANITIZED
    // AddressSanitizer keeps freed memory in quarantine, so the resident set says nothing there.
    const std::uint64_t residentGrowth =
        resident.back() > resident.front() ? resident.back() - resident.front() : 0;
    EXPECT_LT(residentGrowth, kResidentGrowthLimit)
        << "the resident set grew by " << residentGrowth << " bytes";
#endif
    stalls.reportAgainstBounds();
}
