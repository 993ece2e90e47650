// The feature value file: what the writer keeps and how it lays the file out, and what the reader
// makes of hand-written lines.

#include "FeatureValueFile.h"

#include <vorn/host/InMemoryParameterTree.h>
#include <vorn/host/ParameterKind.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

using namespace vorn::browser;
using namespace vorn::core::models;

namespace {

TEST(ValueFile, keepsTheWritableValuesInTreeOrderUnderTheirCategories)
{
    auto tree = InMemoryParameterTree::create();
    auto device = tree->category(tree->root(), "DeviceControl").displayName("Device Control");
    tree->string(device, "DeviceVendorName").value("Vorn").access(peamReadOnly);
    tree->string(device, "DeviceUserID").value("bench\tcam\\1");
    auto format = tree->category(tree->root(), "ImageFormatControl").displayName("Image Format Control");
    auto region = tree->category(format, "Region");
    tree->integer(region, "Width").value(640).range(16, 4096).step(16);
    tree->integer(region, "Height").value(480).dataValid(false);
    tree->integer(format, "Gain").value(3).access(peamReadWriteIfValid);
    tree->integer(format, "Locked").value(3).access(peamReadWriteIfValid).dataValid(false);
    tree->enumeration(format, "PixelFormat").entry("Mono8", 1).entry("RGB8", 2).value("RGB8");
    tree->command(format, "Reset");
    tree->integer(format, "Register").value(7).type(petInternal);
    auto counters = tree->category(tree->root(), "Counters");
    tree->integer(counters, "CounterValue").field(0).value(5);
    tree->integer(counters, "CounterValue").field(1).value(6);
    tree->category(tree->root(), "Empty");

    EXPECT_EQ(FeatureValueFile::write(tree->root(), "Saved for a test.\nSecond line."),
              "# Saved for a test.\n"
              "# Second line.\n"
              "\n"
              "# Device Control\n"
              "DeviceUserID=bench\\tcam\\\\1\n"
              "\n"
              "# Image Format Control > Region\n"
              "Width=640\n"
              "\n"
              "# Image Format Control\n"
              "Gain=3\n"
              "PixelFormat=RGB8\n"
              "\n"
              "# Counters\n"
              "CounterValue[0]=5\n"
              "CounterValue[1]=6\n");
}

TEST(ValueFile, writesAFeatureShownInTwoCategoriesOnce)
{
    auto tree = InMemoryParameterTree::create();
    auto gain = tree->integer(tree->category(tree->root(), "A"), "Gain").value(1).node();
    tree->place(tree->category(tree->root(), "B"), gain);
    EXPECT_EQ(FeatureValueFile::write(tree->root(), ""), "\n# A\nGain=1\n");
}

TEST(ValueFile, readsAssignmentsAndSkipsCommentsAndBlankLines)
{
    const auto reading = FeatureValueFile::read("# a comment\n"
                                                "\n"
                                                "Width=640\r\n"
                                                "  Height = 480\n"
                                                "   # an indented comment\n"
                                                "DeviceUserID=a=b\\n\\\\c\\d\n"
                                                "CounterValue[2]=7\n"
                                                "Empty=");
    ASSERT_TRUE(reading.problems.empty());
    ASSERT_EQ(reading.assignments.size(), 5u);
    const auto& a = reading.assignments;
    EXPECT_EQ(a[0].name, "Width");
    EXPECT_EQ(a[0].value, "640");
    EXPECT_EQ(a[0].line, 3);
    EXPECT_EQ(a[1].name, "Height");
    EXPECT_EQ(a[1].value, " 480");
    EXPECT_EQ(a[1].line, 4);
    EXPECT_EQ(a[2].value, "a=b\n\\c\\d");
    EXPECT_EQ(a[3].name, "CounterValue");
    EXPECT_EQ(a[3].fieldIndex, 2);
    EXPECT_EQ(a[3].key(), "CounterValue[2]");
    EXPECT_EQ(a[4].name, "Empty");
    EXPECT_EQ(a[4].value, "");
}

TEST(ValueFile, namesEveryLineThatIsNotAnAssignment)
{
    const auto reading =
        FeatureValueFile::read("Width=1\nno equals sign\n=5\nCounter[x]=1\nCounter[-1]=1\nOk=2\n");
    ASSERT_EQ(reading.assignments.size(), 2u);
    ASSERT_EQ(reading.problems.size(), 4u);
    EXPECT_EQ(reading.problems[0].text(), "line 2: expected Name=Value, found \"no equals sign\"");
    EXPECT_EQ(reading.problems[1].text(), "line 3: no feature name before '='");
    EXPECT_EQ(reading.problems[2].text(),
              "line 4: \"Counter[x]\" is not a feature name with an index such as Name[2]");
    EXPECT_EQ(reading.problems[3].line, 5);
}

TEST(ValueFile, escapesRoundTripEveryByte)
{
    std::string all;
    for (int c = 1; c < 256; ++c)
        all += static_cast<char>(c);
    const std::string escaped = FeatureValueFile::escape(all);
    EXPECT_EQ(escaped.find('\n'), std::string::npos);
    EXPECT_EQ(escaped.find('\r'), std::string::npos);
    EXPECT_EQ(FeatureValueFile::unescape(escaped), all);
}

TEST(ValueFile, everyKindRoundTripsExactlyAtItsEdges)
{
    auto tree = InMemoryParameterTree::create();
    auto root = tree->root();
    const double inf = std::numeric_limits<double>::infinity();
    tree->integer(root, "Least").value(std::numeric_limits<long long>::min()).range(LLONG_MIN, LLONG_MAX);
    tree->integer(root, "Most").value(std::numeric_limits<long long>::max()).range(LLONG_MIN, LLONG_MAX);
    tree->uint64(root, "Top").value(std::numeric_limits<unsigned long long>::max()).range(0, ULLONG_MAX);
    tree->integer(root, "Address").representation(pirIPV4Address).value(0xC0A80142).range(0, 0xffffffff);
    tree->integer(root, "Wide")
        .representation(pirIPV4Address)
        .value(0x1C0A80142ll)
        .range(LLONG_MIN, LLONG_MAX);
    tree->uint64(root, "Mac").representation(pirMACAddress).value(0x563412EFCDABull).range(0, ULLONG_MAX);
    tree->floating(root, "Tiny").value(std::numeric_limits<double>::denorm_min()).range(-inf, inf);
    tree->floating(root, "Third").value(1.0 / 3.0).range(-inf, inf);
    tree->floating(root, "Infinite").value(-inf).range(-inf, inf);
    tree->floating(root, "NotANumber").value(std::numeric_limits<double>::quiet_NaN()).range(-inf, inf);
    tree->boolean(root, "Flag").value(true);
    tree->enumeration(root, "Mode").entry("Off", 0).entry("On", 1).value("On");
    tree->string(root, "Text").value("a=b # not a comment\nsecond line\t\\ Caf\xe9").maxLength(200);

    const std::string file = FeatureValueFile::write(tree->root(), "");
    const auto reading = FeatureValueFile::read(file);
    ASSERT_TRUE(reading.problems.empty());
    ASSERT_EQ(reading.assignments.size(), 13u) << file;
    for (const FeatureAssignment& a : reading.assignments) {
        const auto node = tree->find(a.name);
        ASSERT_TRUE(node) << a.name;
        const ParameterKind& kind = ParameterKind::of(*node);
        boost::any value;
        std::string reason;
        ASSERT_TRUE(kind.parse(*node, a.value, &value, &reason)) << a.name << ": " << reason;
        const ParameterValue read = fromAny(value);
        const ParameterValue held = kind.value(*node);
        if (a.name == "NotANumber") {
            EXPECT_TRUE(std::isnan(std::get<double>(read)));
            continue;
        }
        EXPECT_TRUE(read == held) << a.name << " came back from \"" << a.value << "\"";
    }
}

TEST(ValueFile, theCommandLineFormTakesTheValueAsWritten)
{
    FeatureAssignment assignment;
    std::string reason;
    ASSERT_TRUE(FeatureValueFile::parseAssignment("Path=C:\\new", &assignment, &reason));
    EXPECT_EQ(assignment.value, "C:\\new");
    EXPECT_FALSE(FeatureValueFile::parseAssignment("Width", &assignment, &reason));
    EXPECT_EQ(reason, "expected Name=Value, found \"Width\"");
}

} // namespace
