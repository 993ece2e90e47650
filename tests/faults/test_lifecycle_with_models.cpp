// The library's entry points called from many threads while the GUI thread shows all three models
// behind the filter model in a view and edits through them: nothing crashes or hangs, the use count
// ends where it began, every write reaches the tree once, the models keep their rows and pass Qt's
// model tester, and the GUI thread keeps running. Once with the host holding its own init
// throughout, once without, so that the count also falls to zero (and the library's singletons go
// and come back) while the models live.
#include "FaultTestSupport.h"
#include "support/Eventually.h"

#include "example/ExampleTree.h"
#include "models/ModelTestSupport.h"
#include "support/ModelDump.h"
#include <vorn/host/Qt4GenericTreeView.h>
#include <vorn/host/VornCore.h>
#include <vorn/lib/VornParametersQt4.h>
#include <vorn/lib/private/LibraryInitController.h>
#include <vorn/models/Qt4ParametersFilterModel.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>
#include <vorn/models/Qt4StyledBooleanParametersModel.h>
#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>
#include <vorn/models/Qt4StyledParametersModel.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

using namespace vorn::core;
using namespace vorn::core::models;
using namespace vorn::test;

namespace {

const int kThreads = 8;
// What the GUI thread does while the threads run; they keep going until it is done.
const int kGuiRounds = 60;
// Between two pairs a thread rests this long, as a host's threads do between their own work: the
// entry points' spin lock never sleeps, so eight threads in a tight loop would only show how two
// processors are shared (the frame's stress test does that).
const std::chrono::microseconds kRest(200);

// Rows by name only: values change with the writes, the rows must not.
QStringList rowNames(const QAbstractItemModel* model)
{
    QStringList names;
    for (const QString& row : dumpRows(model))
        names << row.section(QStringLiteral(" | "), 0, 0);
    return names;
}

void runWithModels(bool hostHoldsInit)
{
    if (hostHoldsInit)
        VornParametersQt4Init();
    const std::uint32_t countBefore = LibraryInitController::useCount();
    // Each time the count falls to zero the library tears down, which deinitialises its dependencies.
    const unsigned long long teardownsBefore = VornCoreDeinitCalls();

    auto tree = vorn::example::buildExampleTree(0);
    auto plain =
        Qt4ParametersModel::create(Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    auto styled = Qt4StyledParametersModel::create(
        Qt4StyledParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    auto events = Qt4StyledBooleanParametersModel::create(
        Qt4StyledBooleanParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    auto filter = Qt4ParametersFilterModel::create(plain, nullptr);
    const auto fatal = QAbstractItemModelTester::FailureReportingMode::Fatal;
    QAbstractItemModelTester plainTester(plain.get(), fatal), styledTester(styled.get(), fatal),
        eventsTester(events.get(), fatal), filterTester(filter.get(), fatal);
    Qt4GenericTreeView view;
    view.setModel(filter.get());
    view.resize(480, 640);
    view.show();
    view.expandAll();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    const QStringList plainRows = rowNames(plain.get()), styledRows = rowNames(styled.get()),
                      eventsRows = rowNames(events.get());

    std::atomic<int> finished{0};
    std::atomic<long> pairsDone{0};
    std::atomic<bool> go{false}, guiDone{false};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&] {
            while (!go.load())
                std::this_thread::yield();
            while (!guiDone.load()) {
                VornParametersQt4Init();
                VornParametersQt4Deinit();
                ++pairsDone;
                std::this_thread::sleep_for(kRest);
            }
            ++finished;
        });
    }

    // The GUI thread's share: writes through the tree's callback, level changes, reads and repaints.
    const char* const writable[] = {"Width", "Height", "ExposureTime", "ReverseX"};
    int writes = 0;
    int level = 0;
    QTimer work;
    QObject::connect(&work, &QTimer::timeout, [&] {
        const char* name = writable[writes % 4];
        boost::any value = writes % 4 == 2   ? boost::any(1000.0 + writes)
                           : writes % 4 == 3 ? boost::any(writes % 8 == 3)
                                             : boost::any(static_cast<long long>(64 + 16 * (writes % 32)));
        EXPECT_TRUE(writeThroughCallback(tree->find(name), value));
        ++writes;
        filter->changeVisibility(static_cast<ParameterEntryVisibility>(level++ % 5));
        dumpRows(styled.get());
        dumpRows(events.get());
        view.viewport()->update();
        if (writes >= kGuiRounds)
            guiDone = true;
    });
    StallProbe probe;
    QElapsedTimer clock;
    clock.start();
    work.start(2);
    go = true;
    VORN_WAIT_UNTIL(finished.load() == kThreads, 300000);
    for (auto& thread : threads)
        thread.join();
    work.stop();
    const qint64 tookMs = clock.elapsed();
    Stalls stalls;
    stalls.take(probe);

    EXPECT_EQ(LibraryInitController::useCount(), countBefore);
    EXPECT_GT(pairsDone.load(), 0);
    if (hostHoldsInit)
        EXPECT_EQ(VornCoreDeinitCalls(), teardownsBefore) << "torn down while the host held an init";
    else
        EXPECT_GT(VornCoreDeinitCalls(), teardownsBefore) << "the count never fell to zero";
    EXPECT_EQ(tree->calls().size(), static_cast<std::size_t>(writes))
        << "a write reached the tree twice or not at all";
    for (const auto& call : tree->calls())
        EXPECT_TRUE(call.applied) << call.node->getName() << ": " << call.error;
    filter->changeVisibility(pevAll);
    EXPECT_EQ(rowNames(plain.get()), plainRows);
    EXPECT_EQ(rowNames(styled.get()), styledRows);
    EXPECT_EQ(rowNames(events.get()), eventsRows);
    // The last width written is the one the tree holds and the model shows.
    const int lastWidthWrite = (writes - 1) - (writes - 1) % 4;
    const long long lastWidth = 64 + 16 * (lastWidthWrite % 32);
    EXPECT_EQ(boost::static_pointer_cast<MvParametersIntegerNode>(tree->find("Width"))->getNodeValue(),
              lastWidth);
    EXPECT_TRUE(findRow(plain.get(), QStringLiteral("Width"), 1)
                    .data()
                    .toString()
                    .startsWith(QString::number(lastWidth)));

    reportFault(std::string(hostHoldsInit ? "host holds an init: " : "count falls to zero: ") +
                std::to_string(kThreads) + " threads, " + std::to_string(pairsDone.load()) +
                " init/deinit pairs in " + std::to_string(tookMs) + " ms while the GUI thread made " +
                std::to_string(writes) + " writes and level changes; " + stalls.text());
    stalls.reportAgainstBounds();
    if (hostHoldsInit)
        VornParametersQt4Deinit();
}

} // namespace

TEST(LifecycleWithModels, initAndDeinitFromManyThreadsWhileTheHostHoldsItsInit)
{
    runWithModels(true);
}

TEST(LifecycleWithModels, initAndDeinitFromManyThreadsWhileTheCountFallsToZero)
{
    runWithModels(false);
}
