// End to end over GigE Vision: Aravis's simulated network camera on the loopback interface, written
// through the tree and read back with Aravis's command line tool, then stopped and started again
// while the GUI thread's event loop is watched for stalls.
#include "genicam/FakeGvCamera.h"
#include "genicam/GenicamTestSupport.h"
#include "support/Eventually.h"
#include "support/StallProbe.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>

#include <atomic>
#include <iostream>

using namespace vorn::test;

namespace {

bool everyNodeInvalid(const boost::shared_ptr<GenicamParameterTree>& tree)
{
    std::vector<boost::shared_ptr<MvParametersEntryNode>> pending = childrenOf(tree->model()->root());
    while (!pending.empty()) {
        auto node = pending.back();
        pending.pop_back();
        if (node->getDataValid())
            return false;
        for (const auto& child : childrenOf(node))
            pending.push_back(child);
    }
    return true;
}

} // namespace

TEST(GenicamGvCamera, writesOverTheNetworkAndFollowsTheCameraAwayAndBack)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    const QString serial = QStringLiteral("VT%1").arg(::getpid());
    FakeGvCamera camera(serial);
    ASSERT_TRUE(camera.start()) << "cannot start " << kCameraTool;

    std::string error;
    auto tree = openWhenReady(&error);
    ASSERT_TRUE(tree) << error << "\n" << camera.output().toStdString();
    EXPECT_EQ(valueOf(tree->find("DeviceID")), "\"" + serial.toStdString() + "\"")
        << "another camera answers on " << kCameraAddress;
    EXPECT_EQ(tree->source(), kCameraAddress);
    EXPECT_EQ(tree->deviceState(), GenicamParameterTree::dsConnected);

    bool listed = false;
    for (const auto& device : GenicamParameterTree::listDevices())
        listed |= device.serial == serial.toStdString() && device.address == kCameraAddress;
    EXPECT_TRUE(listed) << "the camera is not among the devices present";

    // An integer, a float and an enumeration, through the root's callback.
    ModelRecorder recorder(tree->model());
    auto pixelFormat = boost::dynamic_pointer_cast<MvParametersEnumerationNode>(tree->find("PixelFormat"));
    ASSERT_TRUE(pixelFormat);
    auto mono16 = pixelFormat->getEnumEntryNodesEntry("Mono16");
    ASSERT_TRUE(mono16);
    writeThroughCallback(tree->find("Width"), boost::any(320LL));
    writeThroughCallback(tree->find("ExposureTimeAbs"), boost::any(2500.0));
    writeThroughCallback(pixelFormat, boost::any(mono16->getValue()));
    writeThroughCallback(tree->find("BinningHorizontal"), boost::any(17LL));
    ASSERT_TRUE(tree->waitIdle(10000));
    EXPECT_EQ(recorder.errors,
              std::vector<std::string>{"Cannot set BinningHorizontal to 17: 17 is above the maximum 16"});
    EXPECT_EQ(valueOf(tree->find("Width")), "320");
    EXPECT_EQ(valueOf(tree->find("ExposureTimeAbs")), "2500");
    EXPECT_EQ(valueOf(pixelFormat), "Mono16");
    EXPECT_EQ(valueOf(tree->find("PayloadSize")), std::to_string(320 * 512 * 2));

    const auto readBack =
        readWithControlTool({"Width", "ExposureTimeAbs", "PixelFormat", "BinningHorizontal"});
    EXPECT_EQ(readBack.count("Width") ? readBack.at("Width") : "(not read)", "320");
    EXPECT_EQ(readBack.count("ExposureTimeAbs") ? readBack.at("ExposureTimeAbs") : "(not read)", "2500");
    EXPECT_EQ(readBack.count("PixelFormat") ? readBack.at("PixelFormat") : "(not read)", "Mono16");
    EXPECT_EQ(readBack.count("BinningHorizontal") ? readBack.at("BinningHorizontal") : "(not read)", "1");

    // The camera goes away: every value turns invalid within a second, and the GUI keeps running.
    recorder.clear();
    StallProbe probe;
    QElapsedTimer sinceStop;
    camera.stop();
    sinceStop.start();
    VORN_WAIT_UNTIL(everyNodeInvalid(tree), 5000);
    const qint64 lostAfterMs = sinceStop.elapsed(); // reported below; the wait above bounds it
    EXPECT_EQ(tree->deviceState(), GenicamParameterTree::dsLost);
    EXPECT_GE(recorder.allChanged, 1) << "the model was told";
    ASSERT_FALSE(recorder.errors.empty());
    EXPECT_EQ(
        recorder.errors.front().rfind(std::string("Lost the connection to ") + kCameraAddress + ": ", 0), 0u)
        << recorder.errors.front();

    // A write now is refused as soon as the device thread gets to it, naming the reason.
    recorder.clear();
    QElapsedTimer refused;
    refused.start();
    writeThroughCallback(tree->find("Width"), boost::any(640LL));
    VORN_WAIT_UNTIL(!recorder.errors.empty(), 10000);
    EXPECT_EQ(recorder.errors.front(), "Cannot set Width to 640: the device does not answer");
    const qint64 refusedAfterMs = refused.elapsed();

    // The camera comes back (a new process: its values start afresh), and so do the values.
    ASSERT_TRUE(camera.start());
    QElapsedTimer sinceStart;
    sinceStart.start();
    VORN_WAIT_UNTIL(tree->deviceState() == GenicamParameterTree::dsConnected &&
                        tree->find("Width")->getDataValid(),
                    15000);
    const qint64 backAfterMs = sinceStart.elapsed();
    EXPECT_EQ(valueOf(tree->find("Width")), "512");
    EXPECT_EQ(valueOf(tree->find("DeviceID")), "\"" + serial.toStdString() + "\"");
    writeThroughCallback(tree->find("Width"), boost::any(256LL));
    ASSERT_TRUE(tree->waitIdle(10000));
    EXPECT_EQ(valueOf(tree->find("Width")), "256");

    const qint64 longestStall = probe.longestMs();
    std::cout << "[ timing   ] values invalid " << lostAfterMs << " ms after the camera stopped; back "
              << backAfterMs << " ms after it restarted; a write while away refused after " << refusedAfterMs
              << " ms; longest GUI stall " << longestStall << " ms" << std::endl;
    tree.reset();
    camera.stop();
}

// A camera replaced by another at the same address: the other one answers the heartbeat, but its
// values are not the tree's, so the tree stays disconnected, says which device answers and refuses
// writes; once the camera opened is back, the tree attaches to it again.
TEST(GenicamGvCamera, anotherCameraAtTheSameAddressIsNotAttachedTo)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    const std::string ours = "VA" + std::to_string(::getpid());
    const std::string theirs = "VB" + std::to_string(::getpid());
    FakeGvCamera camera(QString::fromStdString(ours));
    ASSERT_TRUE(camera.start()) << "cannot start " << kCameraTool;
    std::string error;
    auto tree = openWhenReady(&error);
    ASSERT_TRUE(tree) << error << "\n" << camera.output().toStdString();
    // The simulated camera's description names no MAC address feature.
    EXPECT_EQ(tree->identity(), "Aravis Fake, serial " + ours);
    EXPECT_EQ(tree->answeringDevice(), "");

    ModelRecorder recorder(tree->model());
    camera.stop();
    FakeGvCamera other(QString::fromStdString(theirs));
    ASSERT_TRUE(other.start());
    VORN_WAIT_UNTIL(tree->deviceState() == GenicamParameterTree::dsOtherDevice, 15000);
    EXPECT_EQ(tree->answeringDevice(), "Aravis Fake, serial " + theirs);
    EXPECT_FALSE(tree->find("Width")->getDataValid());
    EXPECT_FALSE(tree->find("DeviceID")->getDataValid()) << "the other camera's serial is not shown as ours";
    const std::string told = std::string("Another device answers at ") + kCameraAddress +
                             ": Aravis Fake, serial " + theirs + " (this tree shows Aravis Fake, serial " +
                             ours + "); the tree stays disconnected until that device answers";
    EXPECT_EQ(std::count(recorder.errors.begin(), recorder.errors.end(), told), 1)
        << ::testing::PrintToString(recorder.errors);

    // Still the other camera a second later: the tree has not attached, and the message is not repeated.
    QTest::qWait(1000);
    EXPECT_EQ(tree->deviceState(), GenicamParameterTree::dsOtherDevice);
    EXPECT_EQ(std::count(recorder.errors.begin(), recorder.errors.end(), told), 1);
    recorder.clear();
    writeThroughCallback(tree->find("Width"), boost::any(640LL));
    EXPECT_EQ(recorder.errors,
              std::vector<std::string>{std::string("Cannot set Width to 640: another device answers at ") +
                                       kCameraAddress + " (Aravis Fake, serial " + theirs + ")"});
    const auto readBack = readWithControlTool({"Width"});
    EXPECT_EQ(readBack.count("Width") ? readBack.at("Width") : "(not read)", "512")
        << "nothing written to it";

    // The camera opened comes back: attached again, with its own values.
    other.stop();
    ASSERT_TRUE(camera.start());
    VORN_WAIT_UNTIL(tree->deviceState() == GenicamParameterTree::dsConnected &&
                        tree->find("DeviceID")->getDataValid(),
                    15000);
    EXPECT_EQ(tree->answeringDevice(), "");
    EXPECT_EQ(valueOf(tree->find("DeviceID")), "\"" + ours + "\"");
    tree.reset();
    camera.stop();
}

// A camera that stops answering while a write waits for it: closing the tree (as quitting the
// browser does) does not wait out the write's time-outs. The time it takes is reported.
TEST(GenicamGvCamera, closingWhileTheCameraHangsDoesNotWaitForIt)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    FakeGvCamera camera(QStringLiteral("VC%1").arg(::getpid()));
    ASSERT_TRUE(camera.start()) << "cannot start " << kCameraTool;
    std::string error;
    auto tree = openWhenReady(&error);
    ASSERT_TRUE(tree) << error << "\n" << camera.output().toStdString();
    ModelRecorder recorder(tree->model());
    std::atomic<bool> frozen{false};
    tree->post([&](ArvDevice*) { frozen = camera.freeze(); });
    for (long long width = 320; width < 330; ++width)
        writeThroughCallback(tree->find("Width"), boost::any(width));
    VORN_WAIT_UNTIL(frozen.load(), 5000);
    QTest::qWait(50); // the first write is on its way to the camera now
    QElapsedTimer closing;
    closing.start();
    tree.reset();
    const qint64 closedAfterMs = closing.elapsed();
    std::cout << "[ timing   ] a tree whose camera hangs in a write closed in " << closedAfterMs << " ms"
              << std::endl;
    camera.stop();
}

// Two cameras open at once, each with its own tree and device thread: what is written to one never
// shows in the other, and one camera going away leaves the other connected.
TEST(GenicamGvCamera, twoCamerasAtOnceShareNothing)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    const std::string serialA = "VA" + std::to_string(::getpid());
    const std::string serialB = "VB" + std::to_string(::getpid());
    FakeGvCamera cameraA(QString::fromStdString(serialA));
    FakeGvCamera cameraB(QString::fromStdString(serialB), kSecondLoopbackAddress);
    ASSERT_TRUE(cameraA.start() && cameraB.start()) << "cannot start " << kCameraTool;
    std::string error;
    auto treeA = openWhenReady(&error);
    ASSERT_TRUE(treeA) << error << "\n" << cameraA.output().toStdString();
    auto treeB = openWhenReady(&error, kSecondLoopbackAddress);
    ASSERT_TRUE(treeB) << error << "\n" << cameraB.output().toStdString();
    EXPECT_EQ(treeA->identity(), "Aravis Fake, serial " + serialA);
    EXPECT_EQ(treeB->identity(), "Aravis Fake, serial " + serialB);

    writeThroughCallback(treeA->find("Width"), boost::any(320LL));
    writeThroughCallback(treeB->find("Width"), boost::any(640LL));
    ASSERT_TRUE(treeA->waitIdle(10000) && treeB->waitIdle(10000));
    EXPECT_EQ(valueOf(treeA->find("Width")), "320");
    EXPECT_EQ(valueOf(treeB->find("Width")), "640");
    EXPECT_EQ(readWithControlTool({"Width"})["Width"], "320");
    EXPECT_EQ(readWithControlTool({"Width"}, kSecondLoopbackAddress)["Width"], "640");

    cameraA.stop();
    VORN_WAIT_UNTIL(treeA->deviceState() == GenicamParameterTree::dsLost, 5000);
    EXPECT_EQ(treeB->deviceState(), GenicamParameterTree::dsConnected);
    writeThroughCallback(treeB->find("Width"), boost::any(800LL));
    ASSERT_TRUE(treeB->waitIdle(10000));
    EXPECT_EQ(valueOf(treeB->find("Width")), "800");
    treeA.reset();
    treeB.reset();
    cameraB.stop();
}

// Opening without waiting: the GUI thread's event loop runs while the device is opened, and done
// comes once, later, with the tree; an opening let go of never calls done; a camera that does not
// answer gives the reason, later too.
TEST(GenicamGvCamera, opensWithoutWaitingAndCanBeCancelled)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    const std::string serial = "VO" + std::to_string(::getpid());
    FakeGvCamera camera(QString::fromStdString(serial));
    ASSERT_TRUE(camera.start()) << "cannot start " << kCameraTool;
    std::string error;
    ASSERT_TRUE(openWhenReady(&error)) << error << "\n" << camera.output().toStdString();

    int calls = 0;
    boost::shared_ptr<GenicamParameterTree> opened;
    std::string why;
    auto done = [&](boost::shared_ptr<GenicamParameterTree> tree, const std::string& reason) {
        ++calls;
        opened = tree;
        why = reason;
    };
    StallProbe probe;
    auto opening = GenicamParameterTree::openDeviceLater(kCameraAddress, done);
    ASSERT_TRUE(opening);
    EXPECT_EQ(calls, 0) << "done is called from the event loop, not from within";
    VORN_WAIT_UNTIL(calls == 1, 10000);
    ASSERT_TRUE(opened) << why;
    EXPECT_EQ(why, "");
    EXPECT_EQ(opened->identity(), "Aravis Fake, serial " + serial);
    EXPECT_EQ(valueOf(opened->find("DeviceID")), "\"" + serial + "\"");
    EXPECT_EQ(opened->deviceState(), GenicamParameterTree::dsConnected);
    writeThroughCallback(opened->find("Width"), boost::any(320LL));
    ASSERT_TRUE(opened->waitIdle(10000));
    EXPECT_EQ(valueOf(opened->find("Width")), "320");
    const qint64 openStall = probe.longestMs();
    opening.reset();
    opened.reset();

    int cancelledCalls = 0;
    auto cancelled =
        GenicamParameterTree::openDeviceLater(kCameraAddress, [&](boost::shared_ptr<GenicamParameterTree>,
                                                                  const std::string&) { ++cancelledCalls; });
    cancelled.reset();
    QTest::qWait(1500);
    EXPECT_EQ(cancelledCalls, 0);

    ASSERT_TRUE(camera.freeze());
    calls = 0;
    StallProbe frozenProbe;
    auto failing = GenicamParameterTree::openDeviceLater(kCameraAddress, done);
    VORN_WAIT_UNTIL(calls == 1, 30000);
    EXPECT_FALSE(opened);
    EXPECT_EQ(why.rfind(std::string(kCameraAddress) + ": cannot open the device (", 0), 0u) << why;
    std::cout << "[ timing   ] longest GUI stall while opening " << openStall
              << " ms; while a frozen camera was being opened " << frozenProbe.longestMs() << " ms"
              << std::endl;
    failing.reset();
    camera.resume();
    camera.stop();
}
