// The device thread and the GUI thread: writes hand over without waiting, values come back
// through the event loop, and the model tells its views.
#include "genicam/GenicamTestSupport.h"
#include "support/Eventually.h"

#include "family/TestRows.h"
#include "support/StallProbe.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

using namespace vorn::test;

namespace {

boost::shared_ptr<GenicamParameterTree> openSimulated()
{
    std::string error;
    auto tree = GenicamParameterTree::openSimulated(&error);
    EXPECT_TRUE(tree) << error;
    return tree;
}

long long integerValue(const boost::shared_ptr<GenicamParameterTree>& tree, const std::string& name)
{
    return boost::static_pointer_cast<MvParametersIntegerNode>(tree->find(name))->getNodeValue();
}

} // namespace

TEST(GenicamThreads, aWriteReturnsBeforeTheDeviceAnswersAndComesBackThroughTheEventLoop)
{
    auto tree = openSimulated();
    ASSERT_TRUE(tree);
    ModelRecorder recorder(tree->model());
    ASSERT_TRUE(writeThroughCallback(tree->find("Width"), boost::any(256LL)));
    // Nodes change only on the GUI thread, when it applies what the device thread read.
    EXPECT_EQ(integerValue(tree, "Width"), 512);
    EXPECT_TRUE(recorder.changed.empty());
    ASSERT_TRUE(tree->waitIdle());
    EXPECT_EQ(integerValue(tree, "Width"), 256);
    EXPECT_TRUE(recorder.sawChange("Width"));
    EXPECT_FALSE(recorder.offGuiThread) << "the model was told on another thread";
}

TEST(GenicamThreads, readsEveryFeatureAgainAfterAWrite)
{
    auto tree = openSimulated();
    ASSERT_TRUE(tree);
    ModelRecorder recorder(tree->model());
    EXPECT_EQ(integerValue(tree, "PayloadSize"), 512 * 512);
    writeAndWait(tree, "Width", 256LL);
    // The payload is computed from the width: it changed too, and the model was told.
    EXPECT_EQ(integerValue(tree, "PayloadSize"), 256 * 512);
    EXPECT_TRUE(recorder.sawChange("PayloadSize"));
    EXPECT_FALSE(recorder.sawChange("Height")) << "only what changed is reported";
}

TEST(GenicamThreads, theQtModelFollowsValuesAndReportsRefusedWrites)
{
    auto tree = openSimulated();
    ASSERT_TRUE(tree);
    auto root = TestRow::create(tree->model(), tree->model()->root(), boost::any());
    auto model = TestModel::create(root);
    QSignalSpy errors(model.get(), &Qt4GenericModel::errorReported);
    QSignalSpy changes(model.get(), &QAbstractItemModel::dataChanged);

    auto widthRows = model->rowsOf(tree->find("Width").get());
    ASSERT_EQ(widthRows.size(), 1u);
    const QModelIndex widthIndex = model->index(widthRows[0]->row(), 1, model->index(1, 0));
    EXPECT_EQ(widthIndex.data().toString(), QStringLiteral("512"));

    writeThroughCallback(tree->find("Width"), boost::any(4096LL));
    ASSERT_TRUE(tree->waitIdle());
    ASSERT_EQ(errors.count(), 1);
    EXPECT_EQ(errors.at(0).at(0).toString(),
              QStringLiteral("Cannot set Width to 4096: 4096 is above the maximum 2048"));
    EXPECT_EQ(widthIndex.data().toString(), QStringLiteral("512"));

    writeThroughCallback(tree->find("Width"), boost::any(1024LL));
    ASSERT_TRUE(tree->waitIdle());
    EXPECT_EQ(errors.count(), 1);
    EXPECT_GE(changes.count(), 1);
    EXPECT_EQ(widthIndex.data().toString(), QStringLiteral("1024"));
}

TEST(GenicamThreads, writesQueuedTogetherAllReachTheDeviceInOrder)
{
    auto tree = openSimulated();
    ASSERT_TRUE(tree);
    ModelRecorder recorder(tree->model());
    for (long long width = 100; width < 140; ++width)
        writeThroughCallback(tree->find("Width"), boost::any(width));
    writeThroughCallback(tree->find("Height"), boost::any(64LL));
    ASSERT_TRUE(tree->waitIdle());
    EXPECT_TRUE(recorder.errors.empty());
    EXPECT_EQ(integerValue(tree, "Width"), 139);
    EXPECT_EQ(integerValue(tree, "Height"), 64);
    EXPECT_EQ(integerValue(tree, "PayloadSize"), 139 * 64);
}

TEST(GenicamThreads, theGuiThreadKeepsRunningWhileTheDeviceIsSlow)
{
    auto tree = openSimulated();
    ASSERT_TRUE(tree);
    ASSERT_EQ(integerValue(tree, "Width"), 512);
    // A device access that lasts until the test lets it end, then a write queued behind it.
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();
    std::atomic<bool> accessDone{false};
    tree->post([released, &accessDone](ArvDevice*) {
        released.wait_for(std::chrono::seconds(30));
        accessDone = true;
    });
    QElapsedTimer call;
    call.start();
    EXPECT_TRUE(writeThroughCallback(tree->find("Width"), boost::any(320LL)));
    const qint64 callMs = call.elapsed();
    // The write returned while the device thread was still in its access: it did not wait for it.
    EXPECT_FALSE(accessDone.load());
    EXPECT_EQ(integerValue(tree, "Width"), 512);

    StallProbe probe;
    QTest::qWait(100);
    release.set_value();
    VORN_WAIT_EQ(integerValue(tree, "Width"), 320LL, 3000);
    EXPECT_TRUE(accessDone.load());
    std::cout << "[ timing   ] write call " << callMs << " ms, longest GUI stall " << probe.longestMs()
              << " ms while the device thread was busy" << std::endl;
    EXPECT_EQ(tree->deviceState(), GenicamParameterTree::dsConnected) << "a simulated device never vanishes";
}

TEST(GenicamThreads, oneDeviceThreadPerTreeRunsEveryJob)
{
    auto first = openSimulated();
    auto second = GenicamParameterTree::openXmlFile(sharedFile("video-adapter.xml"));
    ASSERT_TRUE(first && second);
    std::vector<std::thread::id> ids(4);
    first->post([&](ArvDevice*) { ids[0] = std::this_thread::get_id(); });
    first->post([&](ArvDevice*) { ids[1] = std::this_thread::get_id(); });
    second->post([&](ArvDevice*) { ids[2] = std::this_thread::get_id(); });
    ASSERT_TRUE(first->waitIdle());
    ASSERT_TRUE(second->waitIdle());
    ids[3] = std::this_thread::get_id();
    EXPECT_EQ(ids[0], ids[1]);
    EXPECT_NE(ids[0], ids[2]);
    EXPECT_NE(ids[0], ids[3]);
    EXPECT_NE(ids[2], ids[3]);
    // Both trees answer on their own.
    writeAndWait(first, "Width", 128LL);
    writeAndWait(second, "OffsetX", 0LL);
    EXPECT_EQ(integerValue(first, "Width"), 128);
}

TEST(GenicamThreads, theModelMayOutliveItsTree)
{
    boost::shared_ptr<MvParametersModel> model;
    boost::shared_ptr<MvParametersEntryNode> width;
    std::unique_ptr<ModelRecorder> recorder;
    {
        auto tree = openSimulated();
        ASSERT_TRUE(tree);
        model = tree->model();
        width = tree->find("Width");
        ASSERT_EQ(integerValue(tree, "Width"), 512);
        recorder.reset(new ModelRecorder(model));
        // Writes still queued when the tree goes are dropped with its device thread.
        for (long long w = 64; w < 96; ++w)
            writeThroughCallback(width, boost::any(w));
    }
    EXPECT_FALSE(model->root()->getCallback().lock());
    EXPECT_FALSE(writeThroughCallback(width, boost::any(100LL)));
    EXPECT_EQ(width->getName(), "Width");
    // Nothing queued for the gone tree may arrive.
    QTest::qWait(20);
    EXPECT_TRUE(recorder->changed.empty());
    EXPECT_EQ(recorder->allChanged, 0);
    EXPECT_TRUE(recorder->errors.empty());
    EXPECT_EQ(boost::static_pointer_cast<MvParametersIntegerNode>(width)->getNodeValue(), 512);
}

// Closing a tree never waits for its device: a device access that does not end (here a job that
// holds the device thread until the test lets it go, as a camera that stopped answering holds it
// for its time-outs) is left to end on its own, and the writes queued behind it are dropped.
TEST(GenicamThreads, closingATreeDoesNotWaitForADeviceAccessUnderWay)
{
    struct Access
    {
        std::promise<void> entered;
        std::promise<void> letGo;
        std::atomic<bool> ended{false};
        std::atomic<int> writesAfter{0};
    };
    auto access = std::make_shared<Access>();
    auto letGo = access->letGo.get_future().share();
    boost::shared_ptr<MvParametersModel> model;
    {
        auto tree = openSimulated();
        ASSERT_TRUE(tree);
        model = tree->model();
        std::future<void> entered = access->entered.get_future();
        tree->post([access, letGo](ArvDevice*) {
            access->entered.set_value();
            letGo.wait_for(std::chrono::seconds(30));
            access->ended = true;
        });
        entered.wait();
        writeThroughCallback(tree->find("Width"), boost::any(320LL));
        tree->post([access](ArvDevice*) { ++access->writesAfter; });
    }
    EXPECT_FALSE(access->ended.load()) << "closing the tree waited for the device access";
    EXPECT_FALSE(model->root()->getCallback().lock());
    access->letGo.set_value();
    // The device thread ends alone, running nothing that was queued for the closed tree.
    QTest::qWait(100);
    EXPECT_EQ(access->writesAfter.load(), 0);
}

TEST(GenicamThreads, refusesNodesOfAnotherTree)
{
    auto tree = openSimulated();
    auto other = openSimulated();
    ASSERT_TRUE(tree && other);
    ModelRecorder recorder(tree->model());
    tree->model()->root()->getCallback().lock()->setValue(other->find("Width"), boost::any(64LL));
    EXPECT_EQ(recorder.errors,
              std::vector<std::string>{"Cannot set Width: the node is not part of this tree"});
    ASSERT_TRUE(other->waitIdle());
    EXPECT_EQ(integerValue(other, "Width"), 512);
}
