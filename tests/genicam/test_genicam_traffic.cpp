// Register traffic per operation, counted by the offline device that serves a description's
// registers: each costs a network round trip on a real camera, so the backend reads what the work
// needs and no more.
#include "genicam/GenicamTestSupport.h"

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
    // reads Width, Height and the pixel format's register.
    EXPECT_EQ(meter.since(), Traffic(32, 0));
}

TEST(GenicamTraffic, aWriteReadsBackOnlyWhatItMayChange)
{
    auto tree = GenicamParameterTree::openXmlFile(sharedFile("simulated-camera.xml"));
    ASSERT_TRUE(tree);
    TrafficMeter meter(tree);
    writeAndWait(tree, "GainRaw", 3LL);
    EXPECT_EQ(valueOf(tree->find("GainRaw")), "3");
    // One write; the value checked, written, and GainRaw read back: not the 32 reads of everything.
    EXPECT_EQ(meter.since(), Traffic(4, 1));
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

TEST(GenicamTraffic, aRefusedWriteReadsBackItsOwnFeatureOnly)
{
    auto tree = GenicamParameterTree::openXmlFile(sharedFile("simulated-camera.xml"));
    ASSERT_TRUE(tree);
    TrafficMeter meter(tree);
    ModelRecorder recorder(tree->model());
    writeAndWait(tree, "Width", 99999LL);
    ASSERT_EQ(recorder.errors.size(), 1u);
    // Width's bound read for the check; Width and its bound read back. Nothing written.
    EXPECT_EQ(meter.since(), Traffic(3, 0));
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
