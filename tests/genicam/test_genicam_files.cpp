// The shared GenICam descriptions, opened as simulated devices: the whole tree as the backend
// builds it, and the time each one takes to open.
#include "genicam/GenicamTestSupport.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <iostream>

using namespace vorn::test;

namespace {

using Strings = std::vector<std::string>;

boost::shared_ptr<GenicamParameterTree> openShared(const std::string& name)
{
    std::string error;
    QElapsedTimer timer;
    timer.start();
    auto tree = GenicamParameterTree::openXmlFile(sharedFile(name), &error);
    const double ms = timer.nsecsElapsed() / 1e6;
    EXPECT_TRUE(tree) << error;
    EXPECT_TRUE(error.empty()) << error;
    std::cout << "[ timing   ] opening " << name << " took " << ms << " ms" << std::endl;
    return tree;
}

template <class Node>
boost::shared_ptr<Node> as(const boost::shared_ptr<GenicamParameterTree>& tree, const std::string& name)
{
    auto node = boost::dynamic_pointer_cast<Node>(tree->find(name));
    EXPECT_TRUE(node) << name << " is missing or of another kind";
    return node;
}

} // namespace

TEST(GenicamSimulatedCameraFile, showsCategoriesInDocumentOrder)
{
    auto tree = openShared("simulated-camera.xml");
    ASSERT_TRUE(tree);
    EXPECT_EQ(childNames(tree->model()->root()),
              (Strings{"DeviceControl", "ImageFormatControl", "AcquisitionControl", "AnalogControl",
                       "TransportLayerControl", "Debug"}));
    for (const auto& category : childrenOf(tree->model()->root())) {
        EXPECT_EQ(kindOf(category), "Category") << category->getName();
        EXPECT_EQ(category->getAccessMode(), peamReadOnly) << category->getName();
        EXPECT_EQ(category->getVisibility(), pevBeginner) << category->getName();
    }
    EXPECT_EQ(tree->source(), sharedFile("simulated-camera.xml"));
    EXPECT_EQ(tree->deviceState(), GenicamParameterTree::dsConnected);
}

TEST(GenicamSimulatedCameraFile, showsEveryFeatureWithItsKindAccessAndValue)
{
    auto tree = openShared("simulated-camera.xml");
    ASSERT_TRUE(tree);
    EXPECT_EQ(dumpTree(tree), (Strings{
                                  "DeviceControl Category a4 v0 ",
                                  "  DeviceVendorName String a4 v0 \"Aravis\"",
                                  "  DeviceModelName String a4 v0 \"Fake\"",
                                  "  DeviceManufacturerInfo String a4 v0 -",
                                  "  DeviceID String a4 v0 -",
                                  "  DeviceVersion String a4 v0 -",
                                  "ImageFormatControl Category a4 v0 ",
                                  "  SensorHeight Integer a4 v0 0",
                                  "  SensorWidth Integer a4 v0 0",
                                  "  OffsetX Integer a5 v0 0",
                                  "  OffsetY Integer a5 v0 0",
                                  "  Width Integer a5 v0 1",
                                  "  Height Integer a5 v0 1",
                                  "  BinningHorizontal Integer a5 v0 1",
                                  "  BinningVertical Integer a5 v0 1",
                                  "  PixelFormat Enumeration a5 v0 BayerBG8",
                                  "AcquisitionControl Category a4 v0 ",
                                  "  AcquisitionMode Enumeration a5 v0 Continuous",
                                  "  AcquisitionStart Command a3 v0 idle",
                                  "  AcquisitionStop Command a3 v0 idle",
                                  "  TriggerSelector Enumeration a5 v0 FrameStart",
                                  "  TriggerMode Enumeration a5 v0 Off",
                                  "  TriggerSoftware Command a3 v0 idle",
                                  "  TriggerSource Enumeration a5 v0 Line0",
                                  "  TriggerActivation Enumeration a5 v0 RisingEdge",
                                  "  ExposureTimeAbs Float a5 v0 10",
                                  "AnalogControl Category a4 v0 ",
                                  "  GainRaw Integer a5 v0 0",
                                  "  GainAuto Enumeration a5 v0 Off",
                                  "TransportLayerControl Category a4 v0 ",
                                  "  PayloadSize Integer a4 v0 1",
                                  "Debug Category a4 v0 ",
                                  "  TestRegister Integer a5 v0 0",
                              }));
}

TEST(GenicamSimulatedCameraFile, saysWhyWhatOnlyTheCameraKnowsHasNoValue)
{
    auto tree = openShared("simulated-camera.xml");
    ASSERT_TRUE(tree);
    auto id = tree->find("DeviceID");
    ASSERT_TRUE(id);
    EXPECT_FALSE(id->getDataValid());
    EXPECT_EQ(id->getToolTip(),
              "Unreadable: only the camera can tell it (an offline description holds no value)");
    // The identity the description gives of itself stands for the camera's.
    EXPECT_EQ(valueOf(tree->find("DeviceVendorName")), "\"Aravis\"");
    EXPECT_EQ(valueOf(tree->find("DeviceModelName")), "\"Fake\"");
}

TEST(GenicamSimulatedCameraFile, takesDisplayNamesDescriptionsUnitsAndRanges)
{
    auto tree = openShared("simulated-camera.xml");
    ASSERT_TRUE(tree);
    auto vendor = tree->find("DeviceVendorName");
    ASSERT_TRUE(vendor);
    EXPECT_EQ(vendor->getDisplayName(), "Vendor Name");
    EXPECT_EQ(vendor->getDescription(), "");
    EXPECT_EQ(vendor->getToolTip(), "");
    // Without a display name a feature shows its name; without a tool tip, its description.
    auto sensorWidth = tree->find("SensorWidth");
    EXPECT_EQ(sensorWidth->getDisplayName(), "SensorWidth");
    EXPECT_EQ(sensorWidth->getDescription(), "Full width of image sensor.");
    EXPECT_EQ(sensorWidth->getToolTip(), "Full width of image sensor.");

    auto width = as<MvParametersIntegerNode>(tree, "Width");
    ASSERT_TRUE(width);
    EXPECT_EQ(width->getMinValue(), 1);
    // Offline, the sensor's width is a register no file fills in.
    EXPECT_EQ(width->getMaxValue(), 0);
    EXPECT_EQ(width->getStepValue(), 1);
    EXPECT_EQ(width->getRepresentation(), pirPureNumber);
    EXPECT_EQ(width->getUnit(), "");
    auto gain = as<MvParametersIntegerNode>(tree, "GainRaw");
    ASSERT_TRUE(gain);
    EXPECT_EQ(gain->getMinValue(), 0);
    EXPECT_EQ(gain->getMaxValue(), 10);
    auto exposure = as<MvParametersFloatNode>(tree, "ExposureTimeAbs");
    ASSERT_TRUE(exposure);
    EXPECT_DOUBLE_EQ(exposure->getMinValue(), 10.0);
    EXPECT_DOUBLE_EQ(exposure->getMaxValue(), 10000000.0);
    // Offline, a register starts at the least its feature allows, not at zero.
    EXPECT_DOUBLE_EQ(exposure->getNodeValue(), 10.0);

    auto pixelFormat = as<MvParametersEnumerationNode>(tree, "PixelFormat");
    ASSERT_TRUE(pixelFormat);
    EXPECT_EQ(pixelFormat->getDisplayName(), "Pixel format");
    EXPECT_EQ(entryNames(pixelFormat),
              (Strings{"BayerBG8", "BayerGB8", "BayerGR8", "BayerRG8", "Mono8", "RGB8", "Mono16"}))
        << "entries keep document order";
    EXPECT_EQ(pixelFormat->getNodeIntValue(), 17301515) << "the first entry";
    EXPECT_EQ(pixelFormat->getEnumEntryNodesEntry("RGB8")->getValue(), 35127316);
    EXPECT_EQ(entryNames(tree->find("AcquisitionMode")),
              (Strings{"Continuous", "SingleFrame", "MultiFrame"}));
    EXPECT_EQ(tree->find("AcquisitionMode")->getDisplayName(), "Acquisition mode");
}

TEST(GenicamReferenceNodeTypesFile, mapsKindsVisibilityAndUnreadableChunkValues)
{
    auto tree = openShared("reference-node-types.xml");
    ASSERT_TRUE(tree);
    // Chunk features read from image buffers; without one their values are not valid.
    EXPECT_EQ(dumpTree(tree), (Strings{
                                  "RWFloat Float a5 v2 0.1",
                                  "RWBoolean Boolean a5 v1 true",
                                  "RWInteger Integer a5 v3 1",
                                  "Enumeration Enumeration a5 v0 Entry0",
                                  "ChunkInt Integer a4 v0 -",
                                  "ChunkString String a4 v0 -",
                                  "ChunkFloat Float a4 v0 -",
                                  "ChunkBoolean Boolean a4 v0 -",
                              }));
    auto rwFloat = as<MvParametersFloatNode>(tree, "RWFloat");
    ASSERT_TRUE(rwFloat);
    EXPECT_DOUBLE_EQ(rwFloat->getMinValue(), -10.0);
    EXPECT_DOUBLE_EQ(rwFloat->getMaxValue(), 10.0);
    auto rwInteger = as<MvParametersIntegerNode>(tree, "RWInteger");
    ASSERT_TRUE(rwInteger);
    EXPECT_EQ(rwInteger->getMinValue(), -10);
    EXPECT_EQ(rwInteger->getMaxValue(), 10);
    EXPECT_EQ(rwInteger->getStepValue(), 2);
    EXPECT_EQ(rwInteger->getVisibility(), pevInvisible);
}

TEST(GenicamReferenceNodeTypesFile, keepsEnumerationEntriesInDocumentOrderWithTheirAccess)
{
    auto tree = openShared("reference-node-types.xml");
    ASSERT_TRUE(tree);
    auto enumeration = as<MvParametersEnumerationNode>(tree, "Enumeration");
    ASSERT_TRUE(enumeration);
    EXPECT_EQ(entryNames(enumeration),
              (Strings{"Entry0", "Entry1", "EntryNotAvailable", "EntryNotImplemented"}));
    EXPECT_EQ(enumeration->getEnumEntryNodesEntry("Entry0")->getAccessMode(), peamReadOnly);
    EXPECT_EQ(enumeration->getEnumEntryNodesEntry("Entry1")->getAccessMode(), peamReadOnly);
    EXPECT_EQ(enumeration->getEnumEntryNodesEntry("EntryNotAvailable")->getAccessMode(), peamNotAvailable);
    EXPECT_EQ(enumeration->getEnumEntryNodesEntry("EntryNotImplemented")->getAccessMode(),
              peamNotImplemented);
    EXPECT_EQ(enumeration->getEnumEntryNodesEntry("Entry1")->getValue(), 1);
}

TEST(GenicamVideoAdapterFile, mapsAvailabilityUnitsAndRegisterLayout)
{
    auto tree = openShared("video-adapter.xml");
    ASSERT_TRUE(tree);
    EXPECT_EQ(childNames(tree->model()->root()),
              (Strings{"DeviceControl", "ImageFormatControl", "AnalogControl", "AcquisitionControl",
                       "TransportLayerControl"}));
    EXPECT_EQ(childNames(tree->find("ImageFormatControl")),
              (Strings{"OffsetX", "OffsetY", "Width", "Height"}));
    EXPECT_EQ(childNames(tree->find("AcquisitionControl")),
              (Strings{"AcquisitionMode", "AcquisitionStart", "AcquisitionStop", "AcquisitionFrameRate",
                       "ExposureTimeAbs", "ExposureAuto"}));
    // Gain and exposure are available only while their switches (which read 0 here) allow them.
    EXPECT_EQ(tree->find("Gain")->getAccessMode(), peamNotAvailable);
    EXPECT_FALSE(tree->find("Gain")->getDataValid());
    EXPECT_EQ(tree->find("ExposureTimeAbs")->getAccessMode(), peamNotAvailable);
    auto frameRate = as<MvParametersFloatNode>(tree, "AcquisitionFrameRate");
    ASSERT_TRUE(frameRate);
    EXPECT_EQ(frameRate->getUnit(), "Hz");
    EXPECT_EQ(frameRate->getAccessMode(), peamReadWriteIfValid);
    EXPECT_TRUE(frameRate->getDataValid());
    auto start = as<MvParametersCommandNode>(tree, "AcquisitionStart");
    ASSERT_TRUE(start);
    EXPECT_EQ(start->getAccessMode(), peamReadWrite) << "a command writes a write-only register";
    EXPECT_FALSE(start->getActive());
    EXPECT_EQ(start->getToolTip(), "Start acquisition.");
    EXPECT_EQ(entryNames(tree->find("ExposureAuto")), (Strings{"Off", "Continuous"}));
    EXPECT_EQ(tree->find("PayloadSize")->getAccessMode(), peamReadOnly);
}

TEST(GenicamBuiltInSimulatedCamera, opensWithoutAnyInput)
{
    std::string error = "stale";
    QElapsedTimer timer;
    timer.start();
    auto tree = GenicamParameterTree::openSimulated(&error);
    std::cout << "[ timing   ] opening the built-in simulated camera took " << timer.nsecsElapsed() / 1e6
              << " ms" << std::endl;
    ASSERT_TRUE(tree) << error;
    EXPECT_TRUE(error.empty());
    EXPECT_EQ(tree->source(), "simulated camera");
    EXPECT_EQ(valueOf(tree->find("DeviceID")), "\"VORN-SIM0\"");
    EXPECT_EQ(valueOf(tree->find("Width")), "512");
    EXPECT_FALSE(childNames(tree->model()->root()).empty());
    EXPECT_EQ(childNames(tree->model()->root()).front(), "DeviceControl");
    auto callback = tree->model()->root()->getCallback().lock();
    EXPECT_TRUE(callback) << "the root carries the tree's callback";
}

TEST(GenicamBuiltInSimulatedCamera, comesBackAfterADescriptionFileWasOpened)
{
    // The simulated camera's description file name is process-wide in Aravis: a file opened before
    // must not leak into the next simulated camera.
    auto fromFile = GenicamParameterTree::openXmlFile(sharedFile("video-adapter.xml"));
    ASSERT_TRUE(fromFile);
    auto builtIn = GenicamParameterTree::openSimulated();
    ASSERT_TRUE(builtIn);
    EXPECT_TRUE(builtIn->find("PixelFormat"));
    EXPECT_FALSE(fromFile->find("PixelFormat"));
}
