// Register traffic per operation, counted by the offline device that serves a description's
// registers: each costs a network round trip on a real camera, so the backend reads what the work
// needs and no more.
// Aravis first: GLib's headers use "signals" as a name, which Qt's headers define away.
#include <arv.h>

#include "genicam/GenicamTestSupport.h"
#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>

using namespace vorn::test;

namespace {

// The traffic since the last call.
class TrafficMeter
{
public:
    explicit TrafficMeter(const boost::shared_ptr<GenicamParameterTree>& tree) : m_tree(tree)
    {
        m_last = tree->registerTraffic();
    }
    std::pair<std::uint64_t, std::uint64_t> since()
    {
        const auto now = m_tree->registerTraffic();
        const std::pair<std::uint64_t, std::uint64_t> delta{now.reads - m_last.reads,
                                                            now.writes - m_last.writes};
        m_last = now;
        return delta;
    }

private:
    boost::shared_ptr<GenicamParameterTree> m_tree;
    GenicamParameterTree::RegisterTraffic m_last;
};

using Traffic = std::pair<std::uint64_t, std::uint64_t>; // reads, writes

} // namespace

TEST(GenicamTraffic, aRefreshReadsEveryFeatureOnce)
{
    auto tree = GenicamParameterTree::openXmlFile(sharedFile("simulated-camera.xml"));
    ASSERT_TRUE(tree);
    TrafficMeter meter(tree);
    tree->refresh();
    ASSERT_TRUE(tree->waitIdle());
    // 27 features; Width and Height read their bound (SensorWidth, SensorHeight) too, PayloadSize
    // reads Width, Height and the pixel format's register: a refresh reads past the cache.
    EXPECT_EQ(meter.since(), Traffic(32, 0));
}

TEST(GenicamTraffic, aWriteReadsBackOnlyWhatItMayChange)
{
    auto tree = GenicamParameterTree::openXmlFile(sharedFile("simulated-camera.xml"));
    ASSERT_TRUE(tree);
    TrafficMeter meter(tree);
    writeAndWait(tree, "GainRaw", 3LL);
    EXPECT_EQ(valueOf(tree->find("GainRaw")), "3");
    // One write. GainRaw's limits are constants and its register, read at open, holds what was
    // written (the description lets it be cached): not read. The three trigger registers are read: their
    // address follows the trigger selector, so the write may have been to one of them.
    EXPECT_EQ(meter.since(), Traffic(3, 1));
}

TEST(GenicamTraffic, aWriteReadsBackWhatItInvalidates)
{
    auto tree = GenicamParameterTree::openXmlFile(ownFile("invalidator.xml"));
    ASSERT_TRUE(tree);
    TrafficMeter meter(tree);
    writeAndWait(tree, "Binning", 2LL);
    EXPECT_EQ(valueOf(tree->find("Binning")), "2");
    // Binning is written; WidthMax's register names it as its invalidator and is read again. Gain and
    // Temperature are not read.
    EXPECT_EQ(meter.since(), Traffic(1, 1));
    writeAndWait(tree, "Gain", 7LL);
    EXPECT_EQ(meter.since(), Traffic(0, 1));
}

TEST(GenicamTraffic, aWriteReadsBackWhatIsComputedFromIt)
{
    auto tree = GenicamParameterTree::openXmlFile(ownFile("selector.xml"));
    ASSERT_TRUE(tree);
    writeAndWait(tree, "OffsetX", 10LL);
    // Width's bound is computed from OffsetX's register: it is read back with it.
    auto width = boost::dynamic_pointer_cast<MvParametersIntegerNode>(tree->find("Width"));
    ASSERT_TRUE(width);
    EXPECT_EQ(width->getMaxValue(), 90);
    writeAndWait(tree, "OffsetX", 30LL);
    EXPECT_EQ(width->getMaxValue(), 70);
}

TEST(GenicamTraffic, aValueWhoseAddressFollowsASelectorIsReadFromTheDevice)
{
    auto tree = GenicamParameterTree::openXmlFile(ownFile("selector.xml"));
    ASSERT_TRUE(tree);
    // Gain under Red holds 9 on the device.
    tree->post([](ArvDevice* device) {
        guint32 nine = GUINT32_TO_LE(9);
        arv_device_write_memory(device, 0x204, sizeof nine, &nine, nullptr);
    });
    ASSERT_TRUE(tree->waitIdle());
    TrafficMeter meter(tree);
    writeAndWait(tree, "Gain", 5LL);
    // Gain's register address follows the selector: each access of Gain goes past the cache to the
    // device, the selector's register with it.
    EXPECT_EQ(meter.since(), Traffic(5, 1));
    writeAndWait(tree, "GainSelector", 1LL); // Red
    // Gain under Red is another register: read from the device, not taken from what the cache holds
    // of Gain under All.
    EXPECT_EQ(valueOf(tree->find("Gain")), "9");
    EXPECT_EQ(meter.since(), Traffic(3, 1));
    writeAndWait(tree, "GainSelector", 0LL); // All
    EXPECT_EQ(valueOf(tree->find("Gain")), "5");
    EXPECT_EQ(meter.since(), Traffic(3, 1));
}

TEST(GenicamTraffic, aRefusedWriteReadsNothing)
{
    auto tree = GenicamParameterTree::openXmlFile(sharedFile("simulated-camera.xml"));
    ASSERT_TRUE(tree);
    TrafficMeter meter(tree);
    ModelRecorder recorder(tree->model());
    writeAndWait(tree, "Width", 99999LL);
    ASSERT_EQ(recorder.errors.size(), 1u);
    // Width's bound (the sensor's width) is checked, and Width read back, from the registers read at
    // open: nothing changed them since. Nothing written.
    EXPECT_EQ(meter.since(), Traffic(0, 0));
}

TEST(GenicamTraffic, aRefreshReadsFromTheDeviceWhatIsCached)
{
    auto tree = GenicamParameterTree::openXmlFile(ownFile("invalidator.xml"));
    ASSERT_TRUE(tree);
    TrafficMeter meter(tree);
    tree->refresh();
    ASSERT_TRUE(tree->waitIdle());
    // A refresh is for what may have changed behind the tree's back: each register once.
    EXPECT_EQ(meter.since(), Traffic(4, 0));
}

TEST(GenicamTraffic, anIdleTreeReadsNothing)
{
    auto tree = GenicamParameterTree::openXmlFile(sharedFile("simulated-camera.xml"));
    ASSERT_TRUE(tree);
    TrafficMeter meter(tree);
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 500)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    EXPECT_EQ(meter.since(), Traffic(0, 0));
}

namespace {

// Lets the device thread run for ms milliseconds, the events of the tree applied.
void idleFor(int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

// Changes a big-endian 32-bit register behind the tree's back, as the device itself would.
void setRegister(const boost::shared_ptr<GenicamParameterTree>& tree, guint64 address, guint32 value)
{
    tree->post([address, value](ArvDevice* device) {
        guint32 bytes = GUINT32_TO_BE(value);
        arv_device_write_memory(device, address, sizeof bytes, &bytes, nullptr);
    });
    ASSERT_TRUE(tree->waitIdle());
}

} // namespace

TEST(GenicamTraffic, polledFeaturesAreReadOnlyWhileOnScreen)
{
    auto tree = GenicamParameterTree::openXmlFile(ownFile("polling.xml"));
    ASSERT_TRUE(tree);
    auto temperature = tree->find("Temperature");
    auto heartbeat = tree->find("Heartbeat");
    ASSERT_TRUE(temperature && heartbeat);
    // Until a view says what it shows, every polled feature is read at its period.
    setRegister(tree, 0x8304, 3);
    VORN_WAIT_EQ(valueOf(heartbeat), std::string("3"), 5000);

    // Only the mirror, which has no polling time, on screen: nothing at all is read.
    tree->setFeaturesOnScreen({"TemperatureMirror", "NoSuchFeature"});
    ASSERT_TRUE(tree->waitIdle());
    setRegister(tree, 0x8300, 42);
    setRegister(tree, 0x8304, 4);
    TrafficMeter meter(tree);
    idleFor(600);
    EXPECT_EQ(meter.since(), Traffic(0, 0));
    EXPECT_EQ(valueOf(temperature), "0") << "off screen, the change is not read";
    EXPECT_EQ(valueOf(heartbeat), "3");

    // The temperature comes into view: it is read; the heartbeat, polled twice as often, stays off
    // screen and unread.
    tree->setFeaturesOnScreen({"Temperature", "TemperatureMirror"});
    VORN_WAIT_EQ(valueOf(temperature), std::string("42"), 5000);
    setRegister(tree, 0x8300, 43);
    VORN_WAIT_EQ(valueOf(temperature), std::string("43"), 5000);
    EXPECT_EQ(valueOf(heartbeat), "3");
    EXPECT_GE(meter.since().first, 2u);

    // Every feature counts as on screen again.
    tree->setAllFeaturesOnScreen();
    VORN_WAIT_EQ(valueOf(heartbeat), std::string("4"), 5000);
}
