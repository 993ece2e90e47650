// What the parameter kinds say of values: values as text and back (what value files and the command line
// write and read), refusals, editor warnings, and the number texts they are made of.

#include <vorn/host/InMemoryParameterTree.h>
#include <vorn/host/ParameterKind.h>
#include <vorn/host/ParameterText.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <limits>

using namespace vorn::core::models;

namespace {

class ValueTextTest : public ::testing::Test
{
protected:
    boost::shared_ptr<InMemoryParameterTree> tree = InMemoryParameterTree::create();

    // The value parse() makes of text, or the reason it gives.
    template <class T> T parsed(const MvParametersEntryNode& node, const std::string& text)
    {
        boost::any value;
        std::string reason;
        EXPECT_TRUE(ParameterKind::of(node).parse(node, text, &value, &reason)) << text << ": " << reason;
        const T* typed = boost::any_cast<T>(&value);
        EXPECT_TRUE(typed) << text << " gives a " << value.type().name();
        return typed ? *typed : T();
    }
    std::string refusal(const MvParametersEntryNode& node, const std::string& text)
    {
        boost::any value;
        std::string reason;
        EXPECT_FALSE(ParameterKind::of(node).parse(node, text, &value, &reason)) << text;
        EXPECT_TRUE(value.empty());
        return reason;
    }
};

TEST_F(ValueTextTest, integersReadInDecimalHexAndBinaryForms)
{
    auto width = tree->integer(tree->root(), "Width").value(-42).node();
    EXPECT_EQ(*ParameterKind::of(*width).format(*width), "-42");
    EXPECT_EQ(parsed<long long>(*width, "640"), 640);
    EXPECT_EQ(parsed<long long>(*width, " -17 "), -17);
    EXPECT_EQ(parsed<long long>(*width, "+5"), 5);
    EXPECT_EQ(parsed<long long>(*width, "0x1F"), 31);
    EXPECT_EQ(parsed<long long>(*width, "-0x10"), -16);
    EXPECT_EQ(parsed<long long>(*width, "0b101"), 5);
    EXPECT_EQ(parsed<long long>(*width, "9223372036854775807"), std::numeric_limits<long long>::max());
    EXPECT_EQ(parsed<long long>(*width, "-9223372036854775808"), std::numeric_limits<long long>::min());
    EXPECT_EQ(refusal(*width, "9223372036854775808"), "outside the 64-bit integer range");
    EXPECT_EQ(refusal(*width, "12px"), "not an integer");
    EXPECT_EQ(refusal(*width, ""), "not an integer");
    EXPECT_EQ(refusal(*width, "1.2.3.256"), "not an integer");
    EXPECT_EQ(refusal(*width, "1.2.3"), "not an integer");
    EXPECT_EQ(refusal(*width, "true"), "not an integer");
}

TEST_F(ValueTextTest, integersAreWrittenInTheFormTheirRepresentationSuggests)
{
    auto hex = tree->integer(tree->root(), "Payload").representation(pirHexNumber).value(255).node();
    auto ip = tree->integer(tree->root(), "Ip").representation(pirIPV4Address).value(0xC0A80142).node();
    auto mac =
        tree->uint64(tree->root(), "Mac").representation(pirMACAddress).value(0x563412EFCDABull).node();
    auto check = tree->integer(tree->root(), "Enable").representation(pirBoolean).value(1).node();
    EXPECT_EQ(*ParameterKind::of(*hex).format(*hex), "0xff");
    EXPECT_EQ(*ParameterKind::of(*ip).format(*ip), "192.168.1.66");
    EXPECT_EQ(*ParameterKind::of(*mac).format(*mac), "0x563412efcdab");
    EXPECT_EQ(*ParameterKind::of(*check).format(*check), "1");
    // Each form reads back as the same number.
    EXPECT_EQ(parsed<long long>(*hex, "0xff"), 255);
    EXPECT_EQ(parsed<long long>(*ip, "192.168.1.66"), 0xC0A80142);
    EXPECT_EQ(parsed<unsigned long long>(*mac, "0x563412efcdab"), 0x563412EFCDABull);
    // MAC addresses also read as the models show them, least significant byte first.
    EXPECT_EQ(parsed<unsigned long long>(*mac, "ab:cd:ef:12:34:56"), 0x563412EFCDABull);
    // Check boxes take words as well.
    EXPECT_EQ(parsed<long long>(*check, "false"), 0);
    EXPECT_EQ(parsed<long long>(*check, "TRUE"), 1);
}

TEST_F(ValueTextTest, addressTextIsOnlyForAddresses)
{
    auto width = tree->integer(tree->root(), "Width").value(1).node();
    auto ip = tree->integer(tree->root(), "Ip").representation(pirIPV4Address).value(0x1C0A80142ll).node();
    auto mac = tree->uint64(tree->root(), "Mac").representation(pirMACAddress).value(1).node();
    // Dotted and colon text is a mistake for a plain integer, and each form only for its own kind.
    EXPECT_EQ(refusal(*width, "192.168.1.66"), "not an integer");
    EXPECT_EQ(refusal(*width, "ab:cd:ef:12:34:56"), "not an integer");
    EXPECT_EQ(refusal(*ip, "ab:cd:ef:12:34:56"), "not an integer");
    EXPECT_EQ(refusal(*mac, "192.168.1.66"), "not an unsigned integer");
    // An address feature holding more than 32 bits is written whole, and reads back the same.
    EXPECT_EQ(*ParameterKind::of(*ip).format(*ip), "7527203138");
    EXPECT_EQ(parsed<long long>(*ip, "7527203138"), 0x1C0A80142ll);
    ip->setNodeValue(-1);
    EXPECT_EQ(*ParameterKind::of(*ip).format(*ip), "-1");
}

TEST_F(ValueTextTest, floatsKeepNanAndInfinities)
{
    auto gain = tree->floating(tree->root(), "Gain").value(0).node();
    for (double v : {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                     std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min()}) {
        gain->setNodeValue(v);
        const std::string text = *ParameterKind::of(*gain).format(*gain);
        EXPECT_EQ(parsed<double>(*gain, text), v) << text;
    }
    gain->setNodeValue(std::numeric_limits<double>::quiet_NaN());
    const std::string text = *ParameterKind::of(*gain).format(*gain);
    EXPECT_EQ(text, "nan");
    EXPECT_TRUE(std::isnan(parsed<double>(*gain, text)));
}

TEST_F(ValueTextTest, unsignedIntegersKeepTheirTopBit)
{
    auto stamp = tree->uint64(tree->root(), "Stamp").value(18446744073709551615ull).node();
    EXPECT_EQ(*ParameterKind::of(*stamp).format(*stamp), "18446744073709551615");
    EXPECT_EQ(parsed<unsigned long long>(*stamp, "18446744073709551615"), 18446744073709551615ull);
    EXPECT_EQ(parsed<unsigned long long>(*stamp, "0xffffffffffffffff"), 18446744073709551615ull);
    EXPECT_EQ(refusal(*stamp, "18446744073709551616"), "not an unsigned integer");
    EXPECT_EQ(refusal(*stamp, "-1"), "negative, but the feature is unsigned");
}

TEST_F(ValueTextTest, floatsAreWrittenShortestAndReadBackExactly)
{
    auto exposure = tree->floating(tree->root(), "Exposure").value(29.97).node();
    EXPECT_EQ(*ParameterKind::of(*exposure).format(*exposure), "29.97");
    for (double v : {0.1, 1e-300, 123456789.125, -2.5, 1e6, 0.0}) {
        exposure->setNodeValue(v);
        const std::string text = *ParameterKind::of(*exposure).format(*exposure);
        EXPECT_EQ(parsed<double>(*exposure, text), v) << text;
    }
    // Whole numbers read best in plain digits, as far as a double holds them exactly.
    EXPECT_EQ(texts::exactFloatText(1e7), "10000000");
    EXPECT_EQ(texts::exactFloatText(-20.0), "-20");
    EXPECT_EQ(texts::exactFloatText(1e15), "1e+15");
    EXPECT_EQ(texts::exactFloatText(0.001), "0.001");
    EXPECT_EQ(parsed<double>(*exposure, "2.5e3"), 2500.0);
    EXPECT_EQ(refusal(*exposure, "2,5"), "not a number");
    EXPECT_EQ(refusal(*exposure, "fast"), "not a number");
}

TEST_F(ValueTextTest, booleansAreTrueOrFalse)
{
    auto flag = tree->boolean(tree->root(), "Flag").value(true).node();
    EXPECT_EQ(*ParameterKind::of(*flag).format(*flag), "true");
    flag->setValueSet(false);
    EXPECT_EQ(*ParameterKind::of(*flag).format(*flag), "false");
    for (const char* yes : {"true", "True", "1", "yes", "on"})
        EXPECT_TRUE(parsed<bool>(*flag, yes)) << yes;
    for (const char* no : {"false", "0", "no", "OFF"})
        EXPECT_FALSE(parsed<bool>(*flag, no)) << no;
    EXPECT_EQ(refusal(*flag, "2"), "not a boolean (true or false)");
}

TEST_F(ValueTextTest, enumerationsGoBySymbolicNameAndReadShownNamesAndNumbersToo)
{
    auto format = tree->enumeration(tree->root(), "PixelFormat")
                      .entry("Mono8", 17)
                      .entry("RGB8", 35, "RGB 8")
                      .entry("Mono16", 18, "Mono 16", peamNotAvailable)
                      .value("RGB8")
                      .node();
    EXPECT_EQ(*ParameterKind::of(*format).format(*format), "RGB8");
    EXPECT_EQ(parsed<long long>(*format, "Mono8"), 17);
    EXPECT_EQ(parsed<long long>(*format, "RGB 8"), 35);
    EXPECT_EQ(parsed<long long>(*format, "rgb8"), 35);
    EXPECT_EQ(parsed<long long>(*format, "35"), 35);
    // Whether an entry is available now is the tree's to say: it may be after an earlier write.
    EXPECT_EQ(parsed<long long>(*format, "Mono16"), 18);
    EXPECT_EQ(refusal(*format, "Mono99"), "no such entry (the entries are Mono8, RGB8, Mono16)");
    // A value that names no entry cannot be written back.
    format->setNodeIntValue(99);
    EXPECT_FALSE(ParameterKind::of(*format).format(*format));
}

TEST_F(ValueTextTest, stringsAreTakenAsWrittenAndTheTreeChecksTheirLength)
{
    auto id = tree->string(tree->root(), "UserID").value("cam = 1").maxLength(8).node();
    const ParameterKind& kind = ParameterKind::of(*id);
    EXPECT_EQ(*kind.format(*id), "cam = 1");
    EXPECT_EQ(parsed<std::string>(*id, " two  "), " two  ");
    EXPECT_EQ(parsed<std::string>(*id, ""), "");
    EXPECT_EQ(parsed<std::string>(*id, "123456789"), "123456789");
    EXPECT_EQ(kind.refusal(std::string("123456789"), kind.limits(*id)), "the text is longer than 8 bytes");
    EXPECT_EQ(kind.refusal(std::string("12345678"), kind.limits(*id)), "");
}

TEST_F(ValueTextTest, commandsTakeNoValueAndHaveNone)
{
    auto start = tree->command(tree->root(), "AcquisitionStart").node();
    EXPECT_FALSE(ParameterKind::of(*start).format(*start));
    boost::any value = 1;
    std::string reason;
    EXPECT_TRUE(ParameterKind::of(*start).parse(*start, "", &value, &reason));
    EXPECT_TRUE(value.empty());
    EXPECT_TRUE(ParameterKind::of(*start).parse(*start, "Execute", &value, &reason));
    EXPECT_EQ(refusal(*start, "now"), "a command takes no value (write Name= or Name=execute)");
}

TEST_F(ValueTextTest, categoriesAndValuesThatCouldNotBeReadHaveNoText)
{
    auto category = tree->category(tree->root(), "Control").node();
    auto lost = tree->integer(category, "Gain").value(3).dataValid(false).node();
    EXPECT_FALSE(ParameterKind::of(*category).format(*category));
    EXPECT_FALSE(ParameterKind::of(*lost).format(*lost));
    EXPECT_EQ(refusal(*category, "1"), "a category has no value");
}

} // namespace
