// End to end over GigE Vision: Aravis's simulated network camera on the loopback interface, written
// through the tree and read back with Aravis's command line tool, then stopped and started again
// while the GUI thread's event loop is watched for stalls.
#include "genicam/FakeGvCamera.h"
#include "genicam/GenicamTestSupport.h"
#include "support/StallProbe.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTest>

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
    QTRY_VERIFY_WITH_TIMEOUT(everyNodeInvalid(tree), 5000);
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
    QTRY_VERIFY_WITH_TIMEOUT(!recorder.errors.empty(), 10000);
    EXPECT_EQ(recorder.errors.front(), "Cannot set Width to 640: the device does not answer");
    const qint64 refusedAfterMs = refused.elapsed();

    // The camera comes back (a new process: its values start afresh), and so do the values.
    ASSERT_TRUE(camera.start());
    QElapsedTimer sinceStart;
    sinceStart.start();
    QTRY_VERIFY_WITH_TIMEOUT(tree->deviceState() == GenicamParameterTree::dsConnected &&
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
