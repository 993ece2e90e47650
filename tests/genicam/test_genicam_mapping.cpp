// Small descriptions of our own, one concern each: how features map onto nodes, unsigned 64-bit
// registers, access and refused writes, commands with pIsDone, and polling.
// Aravis first: GLib's headers use "signals" as a name, which Qt's headers define away.
#include <arv.h>

#include "genicam/GenicamTestSupport.h"
#include "support/Eventually.h"

#include <gtest/gtest.h>

#include <QTest>

using namespace vorn::test;

namespace {

using Strings = std::vector<std::string>;

boost::shared_ptr<GenicamParameterTree> openOwn(const std::string& name)
{
    std::string error;
    auto tree = GenicamParameterTree::openXmlFile(ownFile(name), &error);
    EXPECT_TRUE(tree) << error;
    return tree;
}

template <class Node>
boost::shared_ptr<Node> as(const boost::shared_ptr<GenicamParameterTree>& tree, const std::string& name)
{
    auto node = boost::dynamic_pointer_cast<Node>(tree->find(name));
    EXPECT_TRUE(node) << name << " is missing or of another kind";
    return node;
}

// Reads bytes of the simulated device's register memory on the device thread.
std::vector<unsigned char> readMemory(const boost::shared_ptr<GenicamParameterTree>& tree, guint64 address,
                                      guint32 size)
{
    auto bytes = std::make_shared<std::vector<unsigned char>>(size);
    tree->post([bytes, address, size](ArvDevice* device) {
        arv_device_read_memory(device, address, size, bytes->data(), nullptr);
    });
    EXPECT_TRUE(tree->waitIdle());
    return *bytes;
}

// Changes register memory behind the tree's back, as the device itself would.
void writeMemory(const boost::shared_ptr<GenicamParameterTree>& tree, guint64 address,
                 std::vector<unsigned char> bytes)
{
    tree->post([address, bytes](ArvDevice* device) mutable {
        arv_device_write_memory(device, address, static_cast<guint32>(bytes.size()), bytes.data(), nullptr);
    });
    EXPECT_TRUE(tree->waitIdle());
}

} // namespace

TEST(GenicamMapping, followsCategoriesAndSkipsLoopsAndUnknownFeatures)
{
    auto tree = openOwn("mapping.xml");
    ASSERT_TRUE(tree);
    EXPECT_EQ(childNames(tree->model()->root()), (Strings{"Image", "Network"}));
    EXPECT_EQ(childNames(tree->find("Image")), (Strings{"Width", "Exposure", "Gain", "Shared", "Nested"}));
    // Nested lists Image, its own ancestor: that place is left out rather than followed forever.
    EXPECT_EQ(childNames(tree->find("Nested")), (Strings{"Label"}));
    // NoSuchFeature names no node and is left out.
    EXPECT_EQ(childNames(tree->find("Network")),
              (Strings{"Address", "Mac", "Flags", "Enable", "Count", "Level", "Plain", "Hidden", "Shared",
                       "Raw", "Flag"}));
}

TEST(GenicamMapping, showsAFeatureOfTwoCategoriesInBothBoundToTheSameFeature)
{
    auto tree = openOwn("mapping.xml");
    ASSERT_TRUE(tree);
    auto places = tree->nodes("Shared");
    ASSERT_EQ(places.size(), 2u);
    EXPECT_NE(places[0], places[1]);
    EXPECT_EQ(childrenOf(tree->find("Image"))[3], places[0]);
    EXPECT_EQ(childrenOf(tree->find("Network"))[8], places[1]);
    EXPECT_EQ(places[1]->getDisplayName(), "Shared value");

    ModelRecorder recorder(tree->model());
    // Written through the second place, read back in both.
    writeThroughCallback(places[1], boost::any(77LL));
    ASSERT_TRUE(tree->waitIdle());
    EXPECT_TRUE(recorder.errors.empty()) << recorder.errors.front();
    EXPECT_EQ(valueOf(places[0]), "77");
    EXPECT_EQ(valueOf(places[1]), "77");
    EXPECT_EQ(std::count(recorder.changed.begin(), recorder.changed.end(), "Shared"), 2);
}

TEST(GenicamMapping, takesTextsVisibilityUnitsAndRanges)
{
    auto tree = openOwn("mapping.xml");
    ASSERT_TRUE(tree);
    auto image = tree->find("Image");
    EXPECT_EQ(image->getDisplayName(), "Image settings");
    EXPECT_EQ(image->getToolTip(), "Size and exposure of the image");
    EXPECT_EQ(tree->find("Nested")->getVisibility(), pevExpert);

    auto width = as<MvParametersIntegerNode>(tree, "Width");
    ASSERT_TRUE(width);
    EXPECT_EQ(width->getDisplayName(), "Image width");
    EXPECT_EQ(width->getToolTip(), "Width of the image");
    EXPECT_EQ(width->getDescription(), "Width of the image, in pixels, after binning.");
    EXPECT_EQ(width->getVisibility(), pevBeginner);
    EXPECT_EQ(width->getUnit(), "px");
    EXPECT_EQ(width->getNodeValue(), 640);
    EXPECT_EQ(width->getMinValue(), 16);
    EXPECT_EQ(width->getMaxValue(), 4096);
    EXPECT_EQ(width->getStepValue(), 16);
    EXPECT_EQ(width->getAccessMode(), peamReadWriteIfValid);
    EXPECT_TRUE(width->getDataValid());

    auto exposure = as<MvParametersFloatNode>(tree, "Exposure");
    ASSERT_TRUE(exposure);
    EXPECT_EQ(exposure->getVisibility(), pevExpert);
    EXPECT_EQ(exposure->getUnit(), "us");
    EXPECT_DOUBLE_EQ(exposure->getNodeValue(), 1000.5);
    EXPECT_DOUBLE_EQ(exposure->getMinValue(), 10.0);
    EXPECT_DOUBLE_EQ(exposure->getMaxValue(), 1000000.0);
    EXPECT_EQ(exposure->getToolTip(), "Exposure time.");
    EXPECT_EQ(exposure->getDisplayName(), "Exposure");

    EXPECT_EQ(tree->find("Gain")->getVisibility(), pevGuru);
    EXPECT_EQ(tree->find("Hidden")->getVisibility(), pevInvisible);
    auto level = as<MvParametersIntegerNode>(tree, "Level");
    ASSERT_TRUE(level);
    EXPECT_EQ(level->getNodeValue(), -4);
    EXPECT_EQ(level->getMinValue(), -10);
    EXPECT_EQ(level->getMaxValue(), 10);
}

TEST(GenicamMapping, mapsRepresentationsByTheirGenicamNames)
{
    auto tree = openOwn("mapping.xml");
    ASSERT_TRUE(tree);
    auto representation = [&](const std::string& name) {
        auto node = as<MvParametersIntegerNode>(tree, name);
        return node ? node->getRepresentation() : ParameterIntegerRepresentation(-1);
    };
    EXPECT_EQ(representation("Width"), pirLinear);
    EXPECT_EQ(representation("Gain"), pirLogarithmic);
    EXPECT_EQ(representation("Count"), pirPureNumber);
    EXPECT_EQ(representation("Enable"), pirBoolean);
    EXPECT_EQ(representation("Flags"), pirHexNumber);
    EXPECT_EQ(representation("Address"), pirIPV4Address);
    EXPECT_EQ(representation("Mac"), pirMACAddress);
    EXPECT_EQ(representation("Plain"), pirPureNumber) << "an integer that names none is a plain number";
    EXPECT_EQ(valueOf(tree->find("Address")), "3232235777");
    EXPECT_EQ(valueOf(tree->find("Mac")), "73588229375");
    EXPECT_EQ(valueOf(tree->find("Flags")), "48879");
}

TEST(GenicamMapping, makesOtherNodesPlainEntries)
{
    auto tree = openOwn("mapping.xml");
    ASSERT_TRUE(tree);
    auto raw = tree->find("Raw");
    ASSERT_TRUE(raw);
    EXPECT_EQ(typeOf(raw), pntEntry);
    EXPECT_EQ(raw->getAccessMode(), peamReadOnly);
    EXPECT_EQ(raw->getDescription(), "Raw calibration data.");
    ModelRecorder recorder(tree->model());
    writeThroughCallback(raw, boost::any(1LL));
    ASSERT_TRUE(tree->waitIdle());
    EXPECT_EQ(recorder.errors, (Strings{"Cannot set Raw to 1: the feature holds no value"}));
}

TEST(GenicamMapping, writesStringsBooleansFloatsAndCheckBoxIntegers)
{
    auto tree = openOwn("mapping.xml");
    ASSERT_TRUE(tree);
    ModelRecorder recorder(tree->model());
    EXPECT_EQ(valueOf(tree->find("Label")), "\"hello\"");
    EXPECT_EQ(valueOf(tree->find("Flag")), "true");
    writeAndWait(tree, "Label", std::string("world"));
    writeAndWait(tree, "Flag", false);
    writeAndWait(tree, "Exposure", 250.25);
    writeAndWait(tree, "Enable", 0LL);
    EXPECT_TRUE(recorder.errors.empty()) << recorder.errors.front();
    EXPECT_EQ(valueOf(tree->find("Label")), "\"world\"");
    EXPECT_EQ(valueOf(tree->find("Flag")), "false");
    EXPECT_EQ(valueOf(tree->find("Exposure")), "250.25");
    EXPECT_EQ(valueOf(tree->find("Enable")), "0");
    // The boolean's value lives in another integer, which the tree does not show; writing the
    // boolean changed it, and the boolean reads it back.
    writeAndWait(tree, "Flag", true);
    EXPECT_EQ(valueOf(tree->find("Flag")), "true");
}

TEST(GenicamUInt64, keepsValuesAboveTwoToTheSixtyThirdInBothByteOrders)
{
    auto tree = openOwn("uint64.xml");
    ASSERT_TRUE(tree);
    EXPECT_EQ(kindOf(tree->find("BigCounter")), "UInt64");
    EXPECT_EQ(kindOf(tree->find("LittleCounter")), "UInt64") << "an IntReg without Sign is unsigned";
    EXPECT_EQ(kindOf(tree->find("SignedCounter")), "Integer");
    EXPECT_EQ(kindOf(tree->find("SmallCounter")), "Integer");

    auto big = as<MvParametersUInt64Node>(tree, "BigCounter");
    ASSERT_TRUE(big);
    EXPECT_EQ(big->getDisplayName(), "Big-endian counter");
    EXPECT_EQ(big->getUnit(), "events");
    EXPECT_EQ(big->getRepresentation(), pirHexNumber);
    EXPECT_EQ(big->getMinValue(), 0u);
    EXPECT_EQ(big->getMaxValue(), 18446744073709551615ull);
    EXPECT_EQ(big->getAccessMode(), peamReadWriteIfValid);

    ModelRecorder recorder(tree->model());
    const unsigned long long aboveSigned = 9223372036854775813ull; // 2^63 + 5
    writeAndWait(tree, "BigCounter", aboveSigned);
    writeAndWait(tree, "LittleCounter", 18446744073709551614ull);
    EXPECT_TRUE(recorder.errors.empty()) << recorder.errors.front();
    EXPECT_EQ(big->getNodeValue(), aboveSigned);
    EXPECT_EQ(as<MvParametersUInt64Node>(tree, "LittleCounter")->getNodeValue(), 18446744073709551614ull);
    EXPECT_TRUE(recorder.sawChange("BigCounter"));

    // The register bytes hold the value in the description's byte order.
    EXPECT_EQ(readMemory(tree, 0x8000, 8), (std::vector<unsigned char>{0x80, 0, 0, 0, 0, 0, 0, 0x05}));
    EXPECT_EQ(readMemory(tree, 0x8008, 8),
              (std::vector<unsigned char>{0xfe, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff}));

    // And a value the device put there reads back whole.
    writeMemory(tree, 0x8000, {0xff, 0xee, 0xdd, 0xcc, 0xbb, 0xaa, 0x99, 0x88});
    tree->refresh();
    ASSERT_TRUE(tree->waitIdle());
    EXPECT_EQ(big->getNodeValue(), 0xffeeddccbbaa9988ull);
}

TEST(GenicamUInt64, refusesReadOnlyRegistersAndValuesOfTheWrongType)
{
    auto tree = openOwn("uint64.xml");
    ASSERT_TRUE(tree);
    auto readOnly = as<MvParametersUInt64Node>(tree, "ReadOnlyCounter");
    ASSERT_TRUE(readOnly);
    EXPECT_EQ(readOnly->getAccessMode(), peamReadOnly);
    ModelRecorder recorder(tree->model());
    writeAndWait(tree, "ReadOnlyCounter", 9223372036854775812ull);
    writeAndWait(tree, "BigCounter", 6LL);
    EXPECT_EQ(recorder.errors,
              (Strings{"Cannot set ReadOnlyCounter to 9223372036854775812: the feature is read-only",
                       "Cannot set BigCounter to 6: expects a value of type unsigned long long"}));
    EXPECT_EQ(readOnly->getNodeValue(), 0u) << "a refused write changes nothing";
    EXPECT_EQ(readMemory(tree, 0x8020, 8), std::vector<unsigned char>(8, 0));
}

TEST(GenicamAccess, mapsEachAccessStateOntoItsMode)
{
    auto tree = openOwn("access.xml");
    ASSERT_TRUE(tree);
    EXPECT_EQ(dumpTree(tree), (Strings{
                                  "Access Category a4 v0 ",
                                  "  Locked Integer a4 v0 5",
                                  "  Unavailable Integer a2 v0 -",
                                  "  Missing Integer a1 v0 -",
                                  "  ReadOnly Integer a4 v0 0",
                                  "  WriteOnly Integer a3 v0 -",
                                  "  ReadWrite Integer a5 v0 0",
                                  "  Mode Enumeration a5 v0 Off",
                                  "  LockedCommand Command a4 v0 idle",
                                  "Switches Category a4 v0 ",
                                  "  LockSwitch Integer a5 v0 1",
                                  "  AvailableSwitch Integer a5 v0 0",
                              }));
}

TEST(GenicamAccess, refusesLockedUnavailableMissingAndReadOnlyFeatures)
{
    auto tree = openOwn("access.xml");
    ASSERT_TRUE(tree);
    ModelRecorder recorder(tree->model());
    writeAndWait(tree, "Locked", 9LL);
    writeAndWait(tree, "Unavailable", 9LL);
    writeAndWait(tree, "Missing", 9LL);
    writeAndWait(tree, "ReadOnly", 9LL);
    writeAndWait(tree, "LockedCommand", boost::any());
    EXPECT_EQ(recorder.errors, (Strings{
                                   "Cannot set Locked to 9: the feature is locked",
                                   "Cannot set Unavailable to 9: the feature is not available",
                                   "Cannot set Missing to 9: the feature is not implemented",
                                   "Cannot set ReadOnly to 9: the feature is read-only",
                                   "Cannot execute LockedCommand: the feature is locked",
                               }));
    ASSERT_EQ(recorder.errorNodes.size(), 5u);
    EXPECT_EQ(recorder.errorNodes[0], tree->find("Locked")) << "the error names the node written";
    EXPECT_TRUE(recorder.changed.empty()) << "nothing else changes";
    EXPECT_EQ(valueOf(tree->find("Locked")), "5");
    EXPECT_EQ(readMemory(tree, 0x8210, 4), (std::vector<unsigned char>{0, 0, 0, 0}))
        << "the command did not run";

    // Unlocked and made available, the same writes go through.
    recorder.clear();
    writeAndWait(tree, "LockSwitch", 0LL);
    writeAndWait(tree, "AvailableSwitch", 1LL);
    EXPECT_EQ(tree->find("Locked")->getAccessMode(), peamReadWriteIfValid);
    EXPECT_EQ(tree->find("Unavailable")->getAccessMode(), peamReadWriteIfValid);
    EXPECT_EQ(valueOf(tree->find("Unavailable")), "6");
    writeAndWait(tree, "Locked", 9LL);
    writeAndWait(tree, "Unavailable", 10LL);
    writeAndWait(tree, "LockedCommand", boost::any());
    EXPECT_TRUE(recorder.errors.empty()) << recorder.errors.front();
    EXPECT_EQ(valueOf(tree->find("Locked")), "9");
    EXPECT_EQ(valueOf(tree->find("Unavailable")), "10");
    EXPECT_EQ(readMemory(tree, 0x8210, 4), (std::vector<unsigned char>{0, 0, 0, 1}));
}

TEST(GenicamAccess, refusesValuesOutOfRangeOrOffTheIncrement)
{
    auto tree = openOwn("access.xml");
    ASSERT_TRUE(tree);
    ModelRecorder recorder(tree->model());
    writeAndWait(tree, "ReadWrite", 1001LL);
    writeAndWait(tree, "ReadWrite", -10LL);
    writeAndWait(tree, "ReadWrite", 15LL);
    writeAndWait(tree, "ReadWrite", 2.5);
    EXPECT_EQ(recorder.errors,
              (Strings{
                  "Cannot set ReadWrite to 1001: 1001 is above the maximum 1000",
                  "Cannot set ReadWrite to -10: -10 is below the minimum 0",
                  "Cannot set ReadWrite to 15: 15 is not a multiple of the increment 10 from 0",
                  "Cannot set ReadWrite to 2.5: expects a value of type long long",
              }));
    EXPECT_EQ(valueOf(tree->find("ReadWrite")), "0");
    writeAndWait(tree, "ReadWrite", 30LL);
    EXPECT_EQ(valueOf(tree->find("ReadWrite")), "30");
    EXPECT_EQ(recorder.errors.size(), 4u);
}

TEST(GenicamAccess, writesWriteOnlyFeaturesWithoutShowingAValue)
{
    auto tree = openOwn("access.xml");
    ASSERT_TRUE(tree);
    ModelRecorder recorder(tree->model());
    writeAndWait(tree, "WriteOnly", 1234LL);
    EXPECT_TRUE(recorder.errors.empty()) << recorder.errors.front();
    EXPECT_EQ(readMemory(tree, 0x8204, 4), (std::vector<unsigned char>{0, 0, 0x04, 0xd2}));
    EXPECT_FALSE(tree->find("WriteOnly")->getDataValid());
    EXPECT_EQ(tree->find("WriteOnly")->getAccessMode(), peamReadWrite);
}

TEST(GenicamEnumeration, keepsEntriesInOrderAndMarksThoseNotOffered)
{
    auto tree = openOwn("access.xml");
    ASSERT_TRUE(tree);
    auto mode = as<MvParametersEnumerationNode>(tree, "Mode");
    ASSERT_TRUE(mode);
    EXPECT_EQ(mode->getDisplayName(), "Operating mode");
    EXPECT_EQ(entryNames(mode), (Strings{"Off", "On", "Turbo", "Legacy", "Eco"}));
    auto access = [&](const std::string& entry) {
        return mode->getEnumEntryNodesEntry(entry)->getAccessMode();
    };
    EXPECT_EQ(access("Off"), peamReadOnly);
    EXPECT_EQ(access("On"), peamReadOnly);
    EXPECT_EQ(access("Turbo"), peamNotAvailable);
    EXPECT_EQ(access("Legacy"), peamNotImplemented);
    EXPECT_EQ(access("Eco"), peamReadOnly);
    EXPECT_EQ(mode->getEnumEntryNodesEntry("Off")->getDisplayName(), "Switched off");
    EXPECT_EQ(mode->getEnumEntryNodesEntry("Eco")->getDisplayName(), "Eco");
    EXPECT_EQ(mode->getEnumEntryNodesEntry("Eco")->getValue(), 4);

    // Entries follow their switches as values are read again.
    writeAndWait(tree, "AvailableSwitch", 1LL);
    EXPECT_EQ(access("Turbo"), peamReadOnly);
}

TEST(GenicamEnumeration, writesEntriesByValueAndRefusesThoseNotOffered)
{
    auto tree = openOwn("access.xml");
    ASSERT_TRUE(tree);
    auto mode = as<MvParametersEnumerationNode>(tree, "Mode");
    ASSERT_TRUE(mode);
    ModelRecorder recorder(tree->model());
    writeAndWait(tree, "Mode", 4LL);
    EXPECT_TRUE(recorder.errors.empty());
    EXPECT_EQ(mode->getNodeValue(), "Eco");
    EXPECT_EQ(mode->getNodeIntValue(), 4);
    EXPECT_EQ(readMemory(tree, 0x820c, 4), (std::vector<unsigned char>{0, 0, 0, 4}));
    writeAndWait(tree, "Mode", 2LL);
    writeAndWait(tree, "Mode", 3LL);
    writeAndWait(tree, "Mode", 9LL);
    EXPECT_EQ(recorder.errors, (Strings{
                                   "Cannot set Mode to Turbo: the entry Turbo is not available",
                                   "Cannot set Mode to Legacy: the entry Legacy is not implemented",
                                   "Cannot set Mode to 9: no entry has the value 9",
                               }));
    EXPECT_EQ(mode->getNodeValue(), "Eco");
}

TEST(GenicamCommand, isActiveUntilItsDoneNodeReadsTrue)
{
    auto tree = openOwn("command.xml");
    ASSERT_TRUE(tree);
    auto calibrate = as<MvParametersCommandNode>(tree, "Calibrate");
    ASSERT_TRUE(calibrate);
    EXPECT_EQ(calibrate->getDisplayName(), "Calibrate sensor");
    EXPECT_EQ(calibrate->getToolTip(), "Runs the sensor calibration.");
    EXPECT_FALSE(calibrate->getActive());
    ModelRecorder recorder(tree->model());
    writeAndWait(tree, "Calibrate", boost::any());
    EXPECT_TRUE(recorder.errors.empty()) << recorder.errors.front();
    EXPECT_TRUE(calibrate->getActive()) << "the register holds 1, so the done node reads false";
    EXPECT_TRUE(recorder.sawChange("Calibrate"));

    // The device finishes by clearing the register; the active command is read again by itself.
    recorder.clear();
    writeMemory(tree, 0x8100, {0, 0, 0, 0});
    VORN_WAIT_UNTIL(!calibrate->getActive(), 2000);
    EXPECT_TRUE(recorder.sawChange("Calibrate"));
}

TEST(GenicamCommand, withoutADoneNodeIsNeverActiveAndIsReadBackAfterwards)
{
    auto tree = openOwn("command.xml");
    ASSERT_TRUE(tree);
    auto reset = as<MvParametersCommandNode>(tree, "Reset");
    ASSERT_TRUE(reset);
    ModelRecorder recorder(tree->model());
    writeAndWait(tree, "Reset", boost::any());
    EXPECT_FALSE(reset->getActive());
    // Every feature is read again after a command: its register now holds the command value.
    EXPECT_EQ(valueOf(tree->find("ResetCount")), "1");
    writeAndWait(tree, "Reset", 1LL);
    EXPECT_EQ(recorder.errors, (Strings{"Cannot execute Reset: a command takes no value"}));
}

TEST(GenicamPolling, readsPolledFeaturesAgainAtTheirPeriod)
{
    auto tree = openOwn("polling.xml");
    ASSERT_TRUE(tree);
    auto temperature = as<MvParametersIntegerNode>(tree, "Temperature");
    auto mirror = as<MvParametersIntegerNode>(tree, "TemperatureMirror");
    auto heartbeat = as<MvParametersIntegerNode>(tree, "Heartbeat");
    ASSERT_TRUE(temperature && mirror && heartbeat);
    EXPECT_EQ(temperature->getUnit(), "C");
    ModelRecorder recorder(tree->model());

    // The device changes the registers by itself; nothing is written through the tree.
    writeMemory(tree, 0x8300, {0, 0, 0, 42});
    writeMemory(tree, 0x8304, {0, 0, 0, 7});
    VORN_WAIT_EQ(temperature->getNodeValue(), 42LL, 2000);
    VORN_WAIT_EQ(heartbeat->getNodeValue(), 7LL, 2000);
    EXPECT_TRUE(recorder.sawChange("Temperature"));
    EXPECT_TRUE(recorder.sawChange("Heartbeat"));

    // The mirror has no polling time of its own: it follows only when everything is read again.
    QTest::qWait(300);
    EXPECT_EQ(mirror->getNodeValue(), 0);
    tree->refresh();
    ASSERT_TRUE(tree->waitIdle());
    EXPECT_EQ(mirror->getNodeValue(), 42);
}
