#include "example/ExampleTree.h"

#include <QTimer>

namespace vorn {
namespace example {

using namespace core::models;

boost::shared_ptr<InMemoryParameterTree> buildExampleTree(int activeMilliseconds)
{
    auto tree = InMemoryParameterTree::create();
    auto root = tree->root();

    auto device =
        tree->category(root, "DeviceControl").displayName("Device Control").toolTip("The device itself");
    tree->string(device, "DeviceVendorName").displayName("Vendor").value("Vorn Imaging").access(peamReadOnly);
    tree->string(device, "DeviceModelName").displayName("Model").value("VX-1200 Demo").access(peamReadOnly);
    tree->string(device, "DeviceUserID")
        .displayName("User ID")
        .value("bench-cam-1")
        .maxLength(16)
        .toolTip("A name of your choice for this camera");
    tree->floating(device, "DeviceTemperature")
        .displayName("Temperature")
        .value(41.5)
        .range(-40, 120)
        .unit("\xB0"
              "C")
        .access(peamReadOnly);
    tree->command(device, "DeviceReset")
        .displayName("Device Reset")
        .visibility(pevGuru)
        .toolTip("Restarts the device");

    auto format = tree->category(root, "ImageFormatControl").displayName("Image Format Control");
    tree->integer(format, "Width")
        .value(1280)
        .range(16, 4096)
        .step(16)
        .unit("px")
        .toolTip("Width of the image");
    tree->integer(format, "Height")
        .value(960)
        .range(16, 3072)
        .step(2)
        .unit("px")
        .toolTip("Height of the image");
    tree->integer(format, "OffsetX").value(0).range(0, 2816).step(16).unit("px").visibility(pevExpert);
    tree->enumeration(format, "PixelFormat")
        .displayName("Pixel Format")
        .entry("Mono8", 0x01080001)
        .entry("Mono12", 0x01100005, "Mono 12")
        .entry("Mono16", 0x01100007, "Mono 16", peamNotAvailable)
        .entry("RGB8", 0x02180014, "RGB 8")
        .value("Mono8");
    tree->boolean(format, "ReverseX").displayName("Reverse X").value(false);
    tree->boolean(format, "ReverseY").displayName("Reverse Y").value(true);
    tree->enumeration(format, "TestPattern")
        .displayName("Test Pattern")
        .entry("Off", 0)
        .entry("GreyRamp", 1, "Grey Ramp")
        .intValue(7)
        .visibility(pevExpert);

    auto acquisition = tree->category(root, "AcquisitionControl").displayName("Acquisition Control");
    tree->enumeration(acquisition, "AcquisitionMode")
        .displayName("Acquisition Mode")
        .entry("Continuous", 0)
        .entry("SingleFrame", 1, "Single Frame")
        .value("Continuous");
    tree->command(acquisition, "AcquisitionStart")
        .displayName("Acquisition Start")
        .toolTip("Starts the acquisition")
        .onExecute([tree = boost::weak_ptr<InMemoryParameterTree>(tree),
                    activeMilliseconds](const boost::shared_ptr<MvParametersCommandNode>& command) {
            if (activeMilliseconds <= 0)
                return;
            command->setActive(true);
            boost::weak_ptr<MvParametersCommandNode> weakCommand = command;
            QTimer::singleShot(activeMilliseconds, [tree, weakCommand] {
                auto t = tree.lock();
                auto c = weakCommand.lock();
                if (!t || !c)
                    return;
                c->setActive(false);
                t->notifyChanged(c);
            });
        });
    tree->command(acquisition, "AcquisitionStop").displayName("Acquisition Stop").access(peamReadOnly);
    tree->floating(acquisition, "ExposureTime")
        .displayName("Exposure Time")
        .value(10000)
        .range(20, 1e6)
        .unit("\xB5s");
    tree->floating(acquisition, "AcquisitionFrameRate")
        .displayName("Frame Rate")
        .value(29.97)
        .range(1, 120)
        .unit("Hz");
    tree->integer(acquisition, "TriggerEnable")
        .displayName("Trigger Enable")
        .representation(pirBoolean)
        .range(0, 1)
        .value(1);

    auto transport =
        tree->category(root, "TransportLayerControl").displayName("Transport Layer").visibility(pevExpert);
    tree->integer(transport, "GevCurrentIPAddress")
        .displayName("Current IP Address")
        .representation(pirIPV4Address)
        .value(0xC0A80142)
        .access(peamReadOnly);
    tree->uint64(transport, "GevMACAddress")
        .displayName("MAC Address")
        .representation(pirMACAddress)
        .value(0x0000563412EFCDABull)
        .access(peamReadOnly);
    tree->integer(transport, "PayloadSize")
        .displayName("Payload Size")
        .representation(pirHexNumber)
        .unit("B")
        .value(1228800)
        .access(peamReadOnly);
    tree->uint64(transport, "TimestampLatch")
        .displayName("Timestamp")
        .value(9223372036854775808ull + 12345)
        .range(0, 18446744073709551615ull)
        .access(peamReadWriteIfValid);
    tree->uint64(transport, "StreamEnable")
        .displayName("Stream Enable")
        .representation(pirBoolean)
        .range(0, 1)
        .value(0);

    auto counters =
        tree->category(root, "CounterAndTimerControl").displayName("Counters").visibility(pevGuru);
    for (int i = 0; i < 3; ++i)
        tree->integer(counters, "CounterValue")
            .displayName("Counter Value")
            .field(i)
            .value(100 * i)
            .range(0, 1 << 20);
    tree->floating(counters, "TimerDuration")
        .displayName("Timer Duration")
        .field(1)
        .value(0.5)
        .range(0, 10)
        .unit("s");
    tree->integer(counters, "CounterReset")
        .displayName("Counter Reset")
        .value(0)
        .access(peamNotAvailable)
        .dataValid(false);
    tree->entry(counters, "CounterEventSource").displayName("Counter Event Source (unsupported)");
    tree->integer(counters, "InternalRegister").type(petInternal).value(3);
    tree->integer(counters, "NotImplementedFeature").access(peamNotImplemented);
    return tree;
}

namespace {

ParameterEntryVisibility featureVisibility(int i, VisibilityLayout layout, int categorySize)
{
    if (layout == VisibilityLayout::Interleaved)
        return static_cast<ParameterEntryVisibility>(i % 4);
    const int percent = (i % categorySize) * 100 / categorySize;
    return percent < 60 ? pevBeginner : percent < 80 ? pevExpert : percent < 90 ? pevGuru : pevInvisible;
}

} // namespace

boost::shared_ptr<InMemoryParameterTree> buildGeneratedTree(int count, VisibilityLayout layout,
                                                            int categorySize)
{
    auto tree = InMemoryParameterTree::create();
    boost::shared_ptr<MvParametersCategoryNode> category;
    for (int i = 0; i < count; ++i) {
        if (i % categorySize == 0)
            category = tree->category(tree->root(), "Category" + std::to_string(i / categorySize))
                           .visibility(static_cast<ParameterEntryVisibility>((i / categorySize) % 3));
        const std::string name = "Feature" + std::to_string(i);
        const auto visibility = featureVisibility(i, layout, categorySize);
        const auto access =
            (i % 7 == 0) ? peamReadOnly : (i % 11 == 0 ? peamReadWriteIfValid : peamReadWrite);
        boost::shared_ptr<MvParametersEntryNode> node;
        switch (i % 8) {
        case 0:
            node = tree->integer(category, name).value(i).range(0, 1 << 30).unit(i % 16 == 0 ? "px" : "");
            break;
        case 1:
            node = tree->uint64(category, name).value(9223372036854775808ull + i).range(0, ~0ull);
            break;
        case 2:
            node = tree->floating(category, name).value(i * 0.25).range(-1e9, 1e9).unit("ms");
            break;
        case 3:
            node = tree->boolean(category, name).value(i % 2 == 1);
            break;
        case 4:
            node = tree->string(category, name).value("text " + std::to_string(i));
            break;
        case 5:
            node = tree->enumeration(category, name)
                       .entry("Off", 0)
                       .entry("On", 1)
                       .entry("Auto", 2)
                       .value("Auto");
            break;
        case 6:
            node = tree->command(category, name);
            break;
        default:
            node = tree->integer(category, name).value(i).range(0, 1 << 30).representation(pirHexNumber);
            break;
        }
        node->setVisibility(visibility);
        node->setAccessMode(access);
        node->setCustomSortKey(static_cast<std::uint64_t>(count - i));
    }
    return tree;
}

} // namespace example
} // namespace vorn
