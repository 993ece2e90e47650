// Writing values to a tree as the browser does (--set, Load feature values...): what reaches the
// tree, what is refused and how it is reported, and that a saved file restores every writable value.

#include "FeatureValueFile.h"
#include "FeatureWriter.h"
#include "ParameterSource.h"

#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/MvParametersStringNode.h>
#include <vorn/host/MvParametersUInt64Node.h>
#include <vorn/host/ParameterKind.h>

#include <gtest/gtest.h>

#include <memory>

#include <chrono>

#include <future>

#include <QTimer>

using namespace vorn::browser;
using namespace vorn::core::models;

namespace {

std::vector<std::string> texts(const std::vector<FeatureFailure>& failures)
{
    std::vector<std::string> out;
    for (const auto& f : failures)
        out.push_back(f.text());
    return out;
}

FeatureAssignment assign(const std::string& name, const std::string& value, int line = 0)
{
    return FeatureAssignment{name, -1, value, line};
}

std::string valueOf(ParameterSource& source, const std::string& name)
{
    const auto nodes = source.nodesNamed(name);
    return nodes.empty() ? "<none>"
                         : ParameterKind::of(*nodes.front()).format(*nodes.front()).value_or("<no value>");
}

template <class Node> std::string stepAway(const Node& n)
{
    using T = typename Node::ValueType;
    const T step = n.getStepValue() > 0 ? n.getStepValue() : T(1);
    const T v = n.getNodeValue();
    if (v <= n.getMaxValue() - step)
        return std::to_string(v + step);
    return std::to_string(v - step);
}

// Another value the feature accepts, as text: the next step up (or down), the other truth value,
// another available entry, a different string.
std::string otherValue(const MvParametersEntryNode& node)
{
    switch (static_cast<const vorn::core::GenericModelNode&>(node).typeId()) {
    case pntInteger:
        return stepAway(static_cast<const MvParametersIntegerNode&>(node));
    case pntUInt64:
        return stepAway(static_cast<const MvParametersUInt64Node&>(node));
    case pntFloat: {
        const auto& f = static_cast<const MvParametersFloatNode&>(node);
        return std::to_string(f.getNodeValue() == f.getMaxValue() ? f.getMinValue() : f.getMaxValue());
    }
    case pntBoolean:
        return static_cast<const MvParametersBooleanNode&>(node).getValueSet() ? "false" : "true";
    case pntEnumeration: {
        const auto& e = static_cast<const MvParametersEnumerationNode&>(node);
        for (auto entries = e.getEnumEntryNodes(); entries->hasNext();) {
            auto entry = entries->next();
            const auto access = entry->getAccessMode();
            if (entry->getSymbolic() != e.getNodeValue() && access != peamNotImplemented &&
                access != peamNotAvailable)
                return entry->getSymbolic();
        }
        return e.getNodeValue();
    }
    case pntString:
        return "changed";
    default:
        return std::string();
    }
}

int fieldIndexOf(const MvParametersEntryNode& node)
{
    switch (static_cast<const vorn::core::GenericModelNode&>(node).typeId()) {
    case pntInteger: {
        const auto& n = static_cast<const MvParametersIntegerNode&>(node);
        return n.getIsField() ? n.getCurrentFieldIndex() : -1;
    }
    case pntFloat: {
        const auto& n = static_cast<const MvParametersFloatNode&>(node);
        return n.getIsField() ? n.getCurrentFieldIndex() : -1;
    }
    default:
        return -1;
    }
}

boost::shared_ptr<MvParametersEntryNode> nodeFor(ParameterSource& source, const FeatureAssignment& a)
{
    for (const auto& node : source.nodesNamed(a.name))
        if (a.fieldIndex < 0 || fieldIndexOf(*node) == a.fieldIndex)
            return node;
    return nullptr;
}

// Saves the source's values, changes every one of them, loads the saved file and expects the very
// values that were saved.
void expectRoundTrip(ParameterSource& source)
{
    const auto root = source.model()->root();
    const std::string saved = FeatureValueFile::write(root, "");
    const auto reading = FeatureValueFile::read(saved);
    ASSERT_TRUE(reading.problems.empty());
    ASSERT_FALSE(reading.assignments.empty()) << source.description().toStdString();

    std::vector<FeatureAssignment> changes;
    for (const FeatureAssignment& a : reading.assignments) {
        const auto node = nodeFor(source, a);
        ASSERT_TRUE(node) << a.key();
        changes.push_back(FeatureAssignment{a.name, a.fieldIndex, otherValue(*node), 0});
    }
    // Some changes may be refused where features depend on each other; most are not.
    FeatureWriter(source).apply(changes);
    const std::string changed = FeatureValueFile::write(root, "");
    ASSERT_NE(changed, saved) << source.description().toStdString();

    const auto failures = FeatureWriter(source).apply(reading.assignments);
    EXPECT_TRUE(failures.empty()) << (failures.empty() ? "" : failures.front().text());
    EXPECT_EQ(FeatureValueFile::write(root, ""), saved) << source.description().toStdString();
}

TEST(FeatureWriter, setsEachAssignmentInOrderThroughTheCallback)
{
    auto source = ParameterSource::openExample();
    const auto failures =
        FeatureWriter(*source).apply({assign("Width", "640"), assign("Width", "1024"),
                                      assign("DeviceUserID", "cam"), assign("ReverseX", "on")});
    EXPECT_TRUE(failures.empty());
    EXPECT_EQ(valueOf(*source, "Width"), "1024");
    EXPECT_EQ(valueOf(*source, "DeviceUserID"), "cam");
    EXPECT_EQ(valueOf(*source, "ReverseX"), "true");
}

TEST(FeatureWriter, reportsEveryRefusalWithItsLineAndSetsTheRest)
{
    auto source = ParameterSource::openExample();
    const auto failures = FeatureWriter(*source).apply(
        {assign("Width", "4100", 2), assign("Height", "480", 3), assign("Nope", "1", 4),
         assign("DeviceVendorName", "x", 5), assign("ExposureTime", "slow", 6), assign("OffsetX", "32", 7)});
    EXPECT_EQ(texts(failures), (std::vector<std::string>{
                                   "line 2: Cannot set Width to 4100: 4100 is above the maximum 4096",
                                   "line 4: Cannot set Nope to 1: no such feature",
                                   "line 5: Cannot set DeviceVendorName to \"x\": the feature is read-only",
                                   "line 6: Cannot set ExposureTime to slow: not a number",
                               }));
    EXPECT_EQ(valueOf(*source, "Height"), "480");
    EXPECT_EQ(valueOf(*source, "OffsetX"), "32");
}

TEST(FeatureWriter, findsOneIndexOfAField)
{
    auto source = ParameterSource::openExample();
    auto failures = FeatureWriter(*source).apply({FeatureAssignment{"CounterValue", 1, "77", 0}});
    EXPECT_TRUE(failures.empty());
    const auto nodes = source->nodesNamed("CounterValue");
    ASSERT_EQ(nodes.size(), 3u);
    EXPECT_EQ(*ParameterKind::of(*nodes[0]).format(*nodes[0]), "0");
    EXPECT_EQ(*ParameterKind::of(*nodes[1]).format(*nodes[1]), "77");
    failures = FeatureWriter(*source).apply({FeatureAssignment{"CounterValue", 9, "1", 0}});
    EXPECT_EQ(texts(failures), std::vector<std::string>{"Cannot set CounterValue[9] to 1: no such feature"});
}

TEST(FeatureWriter, waitsForTheDeviceAndPlacesItsRefusals)
{
    QString error;
    auto source = ParameterSource::openSimulated(&error);
    ASSERT_TRUE(source) << error.toStdString();
    const auto failures = FeatureWriter(*source).apply(
        {assign("Width", "256", 1), assign("Height", "4097", 2), assign("PixelFormat", "Mono16", 3),
         assign("TestRegister", "7", 4), assign("DeviceModelName", "x", 5)});
    EXPECT_EQ(texts(failures), (std::vector<std::string>{
                                   "line 2: Cannot set Height to 4097: 4097 is above the maximum 2048",
                                   "line 5: Cannot set DeviceModelName to \"x\": the feature is read-only",
                               }));
    EXPECT_EQ(valueOf(*source, "Width"), "256");
    EXPECT_EQ(valueOf(*source, "PixelFormat"), "Mono16");
    EXPECT_EQ(valueOf(*source, "TestRegister"), "7");
}

// A device that takes longer than any fixed wait would allow (here a device access that holds the
// device thread for over five seconds, as a camera's time-outs do): the writer still waits for, and
// reports, the outcome of every write.
TEST(FeatureWriter, waitsForEveryOutcomeHoweverLongTheDeviceTakes)
{
    QString error;
    auto source = ParameterSource::openSimulated(&error);
    ASSERT_TRUE(source) << error.toStdString();
    ASSERT_TRUE(source->genicamTree());
    auto letGo = std::make_shared<std::promise<void>>();
    std::shared_future<void> released = letGo->get_future().share();
    source->genicamTree()->post([released](ArvDevice*) { released.wait_for(std::chrono::seconds(30)); });
    // Let go from the event loop the writer runs while it waits.
    QTimer::singleShot(6000, Qt::PreciseTimer, [letGo] { letGo->set_value(); });
    const auto failures =
        FeatureWriter(*source).apply({assign("Width", "256", 1), assign("Height", "4097", 2)});
    EXPECT_EQ(texts(failures), (std::vector<std::string>{
                                   "line 2: Cannot set Height to 4097: 4097 is above the maximum 2048",
                               }));
    EXPECT_EQ(valueOf(*source, "Width"), "256");
}

TEST(FeatureWriter, aSavedFileRestoresEveryWritableValueOfTheExample)
{
    auto source = ParameterSource::openExample();
    expectRoundTrip(*source);
}

TEST(FeatureWriter, aSavedFileRestoresEveryWritableValueOfTheSimulatedCamera)
{
    QString error;
    auto source = ParameterSource::openSimulated(&error);
    ASSERT_TRUE(source) << error.toStdString();
    expectRoundTrip(*source);
}

TEST(FeatureWriter, aSavedFileRestoresEveryWritableValueOfEachSharedDescription)
{
    for (const char* name : {"simulated-camera.xml", "reference-node-types.xml", "video-adapter.xml"}) {
        QString error;
        auto source = ParameterSource::openXmlFile(
            QStringLiteral(VORN_GENICAM_SHARED_DATA "/") + QLatin1String(name), &error);
        ASSERT_TRUE(source) << error.toStdString();
        expectRoundTrip(*source);
    }
}

} // namespace
