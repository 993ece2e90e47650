// Descriptions written as a careless or hostile author would: reference loops through every kind of
// reference, formulas at the edges of integer arithmetic, sizes no camera has, nesting and lattices,
// entities and encodings, files that are not files. Each opens within a moment and either shows the
// rest of the tree with the broken feature unreadable and its reason, or is refused with a message
// naming the file and what is wrong. None crashes, hangs or shows a made-up value.
#include "genicam/GenicamTestSupport.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

using namespace vorn::test;
using Strings = std::vector<std::string>;

namespace {

const char* const kHead = R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="Hostile" VendorName="Vorn" ToolTip="t" StandardNameSpace="None"
  SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0"
  SubMinorVersion="0" ProductGuid="0" VersionGuid="0" xmlns="http://www.genicam.org/GenApi/Version_1_1">
)";
const char* const kTail =
    R"(  <IntReg Name="Register"><Address>0x100</Address><Length>4</Length><AccessMode>RW</AccessMode>
    <pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <Port Name="Device"/>
</RegisterDescription>
)";

// A description whose Root lists the features named, with the nodes given; Fine is always there,
// to show that the rest of the tree works.
std::string describe(const std::string& features, const std::string& nodes)
{
    return kHead + std::string("  <Category Name=\"Root\"><pFeature>Fine</pFeature>") + features +
           "</Category>\n  <Integer Name=\"Fine\"><Value>3</Value></Integer>\n" + nodes + kTail;
}

std::string feature(const std::string& name)
{
    return "<pFeature>" + name + "</pFeature>";
}

class GenicamHostile : public ::testing::Test
{
protected:
    std::string write(const std::string& name, const std::string& content)
    {
        const std::string path = m_dir.path().toStdString() + "/" + name;
        std::ofstream(path, std::ios::binary) << content;
        // VORN_SEED_DIR=fuzz/corpus/fuzz_genicam_xml keeps each shape as a fuzzer seed.
        const char* seeds = std::getenv("VORN_SEED_DIR");
        if (seeds && content.size() <= 65536) {
            const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
            std::string seed = std::string(test->test_suite_name()) + "-" + test->name() + "-" + name;
            std::replace(seed.begin(), seed.end(), '/', '-');
            std::ofstream(std::string(seeds) + "/" + seed, std::ios::binary) << content;
        }
        return path;
    }

    boost::shared_ptr<GenicamParameterTree> open(const std::string& content)
    {
        std::string error;
        auto tree = GenicamParameterTree::openXmlFile(write("hostile.xml", content), &error);
        EXPECT_TRUE(tree) << error;
        if (tree) {
            EXPECT_EQ(valueOf(tree->find("Fine")), "3") << "the rest of the tree works";
        }
        return tree;
    }

    // The feature shows no value, and its tool tip and description pane say why.
    void expectUnreadable(const boost::shared_ptr<GenicamParameterTree>& tree, const std::string& name,
                          const std::string& why)
    {
        ASSERT_TRUE(tree);
        auto node = tree->find(name);
        ASSERT_TRUE(node) << name;
        EXPECT_FALSE(node->getDataValid()) << name;
        EXPECT_EQ(node->getToolTip(), "Unreadable: " + why) << name;
        EXPECT_EQ(node->getDescription(), "Unreadable: " + why) << name;
    }

    std::string refusal(const std::string& path)
    {
        std::string error;
        auto tree = GenicamParameterTree::openXmlFile(path, &error);
        EXPECT_FALSE(tree) << path;
        return error;
    }

    QTemporaryDir m_dir;
};

// One node referring to itself through each kind of reference the GenICam library follows to
// evaluate a value: without the check it would recurse until the stack overflows.
struct SelfReference
{
    const char* reference;
    const char* node;
};

class GenicamSelfReference : public GenicamHostile, public ::testing::WithParamInterface<SelfReference>
{};

} // namespace

TEST_F(GenicamHostile, aValueThatNamesItselfIsUnreadableWithTheLoopNamed)
{
    auto tree = open(describe(feature("A"), "  <Integer Name=\"A\"><pValue>A</pValue></Integer>\n"));
    expectUnreadable(tree, "A", "its references loop: A -> A");
}

TEST_F(GenicamHostile, twoValuesThatNameEachOtherAreBothUnreadable)
{
    auto tree =
        open(describe(feature("A") + feature("B"), "  <Integer Name=\"A\"><pValue>B</pValue></Integer>\n"
                                                   "  <Integer Name=\"B\"><pValue>A</pValue></Integer>\n"));
    expectUnreadable(tree, "A", "its references loop: A -> B -> A");
    expectUnreadable(tree, "B", "its references loop: A -> B -> A");
}

TEST_F(GenicamHostile, whatDependsOnALoopSaysSo)
{
    auto tree = open(describe(feature("User"), "  <Integer Name=\"User\"><pValue>A</pValue></Integer>\n"
                                               "  <Integer Name=\"A\"><pValue>B</pValue></Integer>\n"
                                               "  <Integer Name=\"B\"><pValue>A</pValue></Integer>\n"));
    expectUnreadable(tree, "User", "it depends on A, and its references loop: A -> B -> A");
}

TEST_F(GenicamHostile, aLongLoopIsNamedByItsFirstNodes)
{
    std::string nodes;
    for (int i = 0; i < 20; ++i)
        nodes += "  <Integer Name=\"N" + std::to_string(i) + "\"><pValue>N" + std::to_string((i + 1) % 20) +
                 "</pValue></Integer>\n";
    auto tree = open(describe(feature("N5"), nodes));
    expectUnreadable(tree, "N5",
                     "its references loop: N0 -> N1 -> N2 -> N3 -> N4 -> N5 -> N6 -> N7 -> ... -> N0");
}

TEST_F(GenicamHostile, aReferenceToNothingIsUnreadableWithItsName)
{
    auto tree = open(describe(feature("A") + feature("B"),
                              "  <Integer Name=\"A\"><pValue>Missing</pValue></Integer>\n"
                              "  <Integer Name=\"B\"><pMax>Missing</pMax>"
                              "<Value>1</Value></Integer>\n"));
    expectUnreadable(tree, "A", "it refers to Missing, which the description does not define");
    expectUnreadable(tree, "B", "it refers to Missing, which the description does not define");
}

TEST_F(GenicamHostile, loopsThroughCategoriesSelectorsAndInvalidatorsAreHarmless)
{
    // A category listing itself, a selector selecting itself and a cache invalidated by itself
    // evaluate nothing; the category is left out where it would contain itself.
    auto tree =
        open(describe(feature("Loop") + feature("S"),
                      "  <Category Name=\"Loop\"><pFeature>Loop</pFeature><pFeature>S</pFeature></Category>\n"
                      "  <Integer Name=\"S\"><pValue>Register</pValue><pSelected>S</pSelected>"
                      "<pInvalidator>S</pInvalidator></Integer>\n"));
    ASSERT_TRUE(tree);
    EXPECT_EQ(childNames(tree->find("Loop")), (Strings{"S"}));
    EXPECT_EQ(valueOf(tree->find("S")), "0");
}

TEST_P(GenicamSelfReference, isUnreadableWithTheLoopNamed)
{
    const SelfReference& r = GetParam();
    auto tree = open(describe(feature("A"), r.node));
    expectUnreadable(tree, "A", "its references loop: A -> A");
}

INSTANTIATE_TEST_SUITE_P(
    EveryReference, GenicamSelfReference,
    ::testing::Values(
        SelfReference{"pValue", "<Integer Name=\"A\"><pValue>A</pValue></Integer>"},
        SelfReference{"pVariable", "<IntSwissKnife Name=\"A\"><pVariable Name=\"X\">A</pVariable>"
                                   "<Formula>X + 1</Formula></IntSwissKnife>"},
        SelfReference{"pAddress", "<IntReg Name=\"A\"><pAddress>A</pAddress><Length>4</Length>"
                                  "<AccessMode>RO</AccessMode><pPort>Device</pPort></IntReg>"},
        SelfReference{"pLength", "<StringReg Name=\"A\"><Address>0</Address><pLength>A</pLength>"
                                 "<AccessMode>RO</AccessMode><pPort>Device</pPort></StringReg>"},
        SelfReference{"pIndex",
                      "<IntReg Name=\"A\"><Address>0</Address><pIndex Offset=\"4\">A</pIndex>"
                      "<Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort></IntReg>"},
        SelfReference{"pMin", "<Integer Name=\"A\"><Value>1</Value><pMin>A</pMin></Integer>"},
        SelfReference{"pMax", "<Integer Name=\"A\"><Value>1</Value><pMax>A</pMax></Integer>"},
        SelfReference{"pInc", "<Integer Name=\"A\"><Value>1</Value><pInc>A</pInc></Integer>"},
        SelfReference{"pIsAvailable",
                      "<Integer Name=\"A\"><pIsAvailable>A</pIsAvailable><Value>1</Value></Integer>"},
        SelfReference{"pIsImplemented",
                      "<Integer Name=\"A\"><pIsImplemented>A</pIsImplemented><Value>1</Value></Integer>"},
        SelfReference{"pIsLocked", "<Integer Name=\"A\"><pIsLocked>A</pIsLocked><Value>1</Value></Integer>"},
        SelfReference{"pPort", "<IntReg Name=\"A\"><Address>0</Address><Length>4</Length>"
                               "<AccessMode>RO</AccessMode><pPort>A</pPort></IntReg>"}),
    [](const ::testing::TestParamInfo<SelfReference>& info) { return std::string(info.param.reference); });

TEST_F(GenicamHostile, anIntegerFormulaThatWouldTrapIsUnreadable)
{
    // The most negative integer divided by -1 does not fit; the processor traps on it.
    auto tree = open(
        describe(feature("Quotient") + feature("Remainder"),
                 "  <Integer Name=\"Least\"><Value>-9223372036854775808</Value></Integer>\n"
                 "  <Integer Name=\"MinusOne\"><Value>-1</Value></Integer>\n"
                 "  <IntSwissKnife Name=\"Quotient\"><pVariable Name=\"L\">Least</pVariable>"
                 "<pVariable Name=\"M\">MinusOne</pVariable><Formula>L / M</Formula></IntSwissKnife>\n"
                 "  <IntSwissKnife Name=\"Remainder\"><pVariable Name=\"L\">Least</pVariable>"
                 "<pVariable Name=\"M\">MinusOne</pVariable><Formula>L % M</Formula></IntSwissKnife>\n"));
    expectUnreadable(tree, "Quotient", "its formula fails: the quotient does not fit in 64 bits");
    // Its remainder is 0, and fits.
    EXPECT_EQ(valueOf(tree->find("Remainder")), "0");
}

TEST_F(GenicamHostile, aDivisionByZeroIsUnreadableNotZero)
{
    auto tree = open(describe(feature("Ratio") + feature("Float"),
                              "  <Integer Name=\"Zero\"><Value>0</Value></Integer>\n"
                              "  <IntSwissKnife Name=\"Ratio\"><pVariable Name=\"Z\">Zero</pVariable>"
                              "<Formula>10 / Z</Formula></IntSwissKnife>\n"
                              "  <SwissKnife Name=\"Float\"><pVariable Name=\"Z\">Zero</pVariable>"
                              "<Formula>1.5 / Z</Formula></SwissKnife>\n"));
    expectUnreadable(tree, "Ratio", "its formula fails: division by zero");
    expectUnreadable(tree, "Float", "its formula fails: division by zero");
}

TEST_F(GenicamHostile, aFormulaOnTheWayToAValueFailsItToo)
{
    auto tree = open(describe(feature("Width"),
                              "  <Integer Name=\"Zero\"><Value>0</Value></Integer>\n"
                              "  <IntSwissKnife Name=\"Ratio\"><pVariable Name=\"Z\">Zero</pVariable>"
                              "<Formula>10 / Z</Formula></IntSwissKnife>\n"
                              "  <Integer Name=\"Width\"><pValue>Ratio</pValue></Integer>\n"));
    expectUnreadable(tree, "Width", "its value passes through Ratio, whose formula fails: division by zero");
}

TEST_F(GenicamHostile, aFormulaThatDoesNotParseIsUnreadable)
{
    auto tree =
        open(describe(feature("Broken") + feature("Unknown"),
                      "  <IntSwissKnife Name=\"Broken\"><Formula>1 +* 2</Formula></IntSwissKnife>\n"
                      "  <IntSwissKnife Name=\"Unknown\"><Formula>Y + 2</Formula></IntSwissKnife>\n"));
    ASSERT_TRUE(tree);
    EXPECT_FALSE(tree->find("Broken")->getDataValid());
    EXPECT_EQ(
        tree->find("Broken")->getToolTip().rfind("Unreadable: its Formula \"1 +* 2\" does not parse: ", 0),
        0u)
        << tree->find("Broken")->getToolTip();
    expectUnreadable(tree, "Unknown", "its formula uses Y, which the node does not define");
}

TEST_F(GenicamHostile, aRegisterLongerThanAnyCameraHasIsNotRead)
{
    auto tree = open(describe(feature("Huge"),
                              "  <StringReg Name=\"Huge\"><Address>0</Address><Length>1099511627776</Length>"
                              "<AccessMode>RW</AccessMode><pPort>Device</pPort></StringReg>\n"));
    expectUnreadable(tree, "Huge",
                     "its register is 1099511627776 bytes long; registers above 65536 bytes are not read");
    ModelRecorder recorder(tree->model());
    writeAndWait(tree, "Huge", std::string("x"));
    EXPECT_EQ(recorder.errors,
              (Strings{"Cannot set Huge to \"x\": its register is 1099511627776 bytes long; registers "
                       "above 65536 bytes are not read"}));
}

TEST_F(GenicamHostile, aLengthReadFromAnotherNodeIsCheckedBeforeTheRead)
{
    auto tree = open(describe(feature("Text"),
                              "  <Integer Name=\"Size\"><Value>1099511627776</Value></Integer>\n"
                              "  <StringReg Name=\"Text\"><Address>0</Address><pLength>Size</pLength>"
                              "<AccessMode>RO</AccessMode><pPort>Device</pPort></StringReg>\n"));
    expectUnreadable(tree, "Text",
                     "the register Text would be 1099511627776 bytes long; registers above 65536 bytes "
                     "are not read");
}

TEST_F(GenicamHostile, fiftyThousandNestedCategoriesOpen)
{
    std::string nodes;
    const int depth = 50000;
    for (int i = 0; i < depth; ++i)
        nodes += "<Category Name=\"C" + std::to_string(i) + "\"><pFeature>C" + std::to_string(i + 1) +
                 "</pFeature></Category>\n";
    nodes += "<Integer Name=\"C" + std::to_string(depth) + "\"><Value>7</Value></Integer>\n";
    auto tree = open(describe(feature("C0"), nodes));
    ASSERT_TRUE(tree);
    auto deepest = tree->find("C" + std::to_string(depth));
    ASSERT_TRUE(deepest);
    EXPECT_EQ(valueOf(deepest), "7");
}

TEST_F(GenicamHostile, aLatticeOfCategoriesIsRefusedBeyondTheRowCap)
{
    // Twenty levels of two categories, each listing both of the next level: 2^21 rows from 4 KB.
    std::string nodes;
    const int depth = 20;
    for (int i = 0; i < depth; ++i) {
        const std::string next = std::to_string(i + 1);
        for (const char* side : {"A", "B"})
            nodes += std::string("<Category Name=\"") + side + std::to_string(i) + "\"><pFeature>A" + next +
                     "</pFeature><pFeature>B" + next + "</pFeature></Category>\n";
    }
    nodes += "<Integer Name=\"A" + std::to_string(depth) + "\"><Value>1</Value></Integer>\n";
    nodes += "<Integer Name=\"B" + std::to_string(depth) + "\"><Value>2</Value></Integer>\n";
    const std::string path = write("lattice.xml", describe(feature("A0"), nodes));
    const std::string error = refusal(path);
    EXPECT_EQ(error.rfind(path +
                              ": the description makes more than 250000 rows (its categories are listed by "
                              "many parents; ",
                          0),
              0u)
        << error;
}

TEST_F(GenicamHostile, aSmallLatticeShowsEachCategoryUnderEachParent)
{
    auto tree = open(describe(feature("A") + feature("B"),
                              "<Category Name=\"A\"><pFeature>Shared</pFeature></Category>\n"
                              "<Category Name=\"B\"><pFeature>Shared</pFeature></Category>\n"
                              "<Category Name=\"Shared\"><pFeature>Fine</pFeature></Category>\n"));
    ASSERT_TRUE(tree);
    EXPECT_EQ(childNames(tree->find("A")), (Strings{"Shared"}));
    EXPECT_EQ(childNames(tree->find("B")), (Strings{"Shared"}));
}

TEST_F(GenicamHostile, deeplyNestedElementsAreRefusedByTheParser)
{
    std::string open;
    std::string close;
    for (int i = 0; i < 100000; ++i) {
        open += "<a>";
        close += "</a>";
    }
    const std::string path = write("deep.xml", kHead + open + close + kTail);
    const std::string error = refusal(path);
    EXPECT_EQ(error.rfind(path + ": not well-formed XML (line 5: Excessive depth in document", 0), 0u)
        << error;
}

TEST_F(GenicamHostile, internalEntitiesResolveAsXmlSays)
{
    std::string text =
        describe(feature("Gain") + feature("Label"),
                 "  <Integer Name=\"Gain\"><Value>&gain;</Value></Integer>\n"
                 "  <StringReg Name=\"Label\"><ToolTip>&who; tip</ToolTip><Address>0x200</Address>"
                 "<Length>16</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></StringReg>\n");
    text.insert(text.find("<RegisterDescription"),
                "<!DOCTYPE RegisterDescription [<!ENTITY gain \"42\"><!ENTITY who \"Vorn's\">]>\n");
    auto tree = open(text);
    ASSERT_TRUE(tree);
    EXPECT_EQ(valueOf(tree->find("Gain")), "42");
    EXPECT_EQ(tree->find("Label")->getToolTip(), "Vorn's tip");
}

TEST_F(GenicamHostile, externalEntitiesStayOff)
{
    const std::string secret = write("secret.txt", "12345");
    std::string text =
        describe(feature("Gain"), "  <Integer Name=\"Gain\"><Value>&secret;</Value></Integer>\n");
    text.insert(text.find("<RegisterDescription"),
                "<!DOCTYPE RegisterDescription [<!ENTITY secret SYSTEM \"file://" + secret + "\">]>\n");
    const std::string path = write("external.xml", text);
    std::string error;
    auto tree = GenicamParameterTree::openXmlFile(path, &error);
    if (tree) {
        EXPECT_NE(valueOf(tree->find("Gain")), "12345") << "the file named by the entity was read";
    } else {
        EXPECT_EQ(error.rfind(path + ": not well-formed XML", 0), 0u) << error;
    }
}

TEST_F(GenicamHostile, latinOneAndUtf8DescriptionsGiveTheSameTexts)
{
    // "µs" and "Größe", once in ISO-8859-1 and once in UTF-8: the tree holds Latin-1 texts.
    const std::string latin1Body = "  <Float Name=\"Time\"><DisplayName>Gr\xf6\xdf"
                                   "e</DisplayName><Value>1.5</Value>"
                                   "<Unit>\xb5s</Unit></Float>\n";
    const std::string utf8Body = "  <Float Name=\"Time\"><DisplayName>Gr\xc3\xb6\xc3\x9f"
                                 "e</DisplayName>"
                                 "<Value>1.5</Value><Unit>\xc2\xb5s</Unit></Float>\n";
    std::string latin1 = describe(feature("Time"), latin1Body);
    latin1.replace(latin1.find("utf-8"), 5, "ISO-8859-1");
    for (const std::string& text : {latin1, describe(feature("Time"), utf8Body)}) {
        auto tree = open(text);
        ASSERT_TRUE(tree);
        auto time = boost::dynamic_pointer_cast<MvParametersFloatNode>(tree->find("Time"));
        ASSERT_TRUE(time);
        EXPECT_EQ(time->getUnit(), "\xb5s");
        EXPECT_EQ(time->getDisplayName(), "Gr\xf6\xdf"
                                          "e");
    }
}

TEST_F(GenicamHostile, endlessDevicesAndPipesAreRefusedAtOnce)
{
    EXPECT_EQ(refusal("/dev/zero"), "/dev/zero: is a device, not a description file");
    const std::string fifo = m_dir.path().toStdString() + "/pipe.xml";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_EQ(refusal(fifo), fifo + ": is a pipe, not a description file");
}

TEST_F(GenicamHostile, aFileAboveTheSizeCapIsRefusedUnread)
{
    const std::string path = m_dir.path().toStdString() + "/huge.xml";
    const int fd = ::open(path.c_str(), O_CREAT | O_WRONLY, 0600);
    ASSERT_GE(fd, 0);
    ASSERT_EQ(::ftruncate(fd, (8 << 20) + 1), 0); // sparse: nothing is written
    ::close(fd);
    EXPECT_EQ(refusal(path), path + ": is 8388609 bytes; descriptions above 8388608 bytes are refused");
}

TEST_F(GenicamHostile, zippedDescriptionsOpenLikePlainOnes)
{
    std::string error;
    auto tree = GenicamParameterTree::openXmlFile(ownFile("zipped.zip"), &error);
    ASSERT_TRUE(tree) << error;
    EXPECT_EQ(valueOf(tree->find("Gain")), "12");
    const std::string broken = write("broken.zip", std::string("PK\x03\x04", 4) + std::string(40, 'x'));
    EXPECT_EQ(refusal(broken), broken + ": is a zip file that cannot be read: not a zip archive");
}

namespace {

std::string readBytes(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void putLittleEndian32(std::string* bytes, std::size_t at, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        (*bytes)[at + i] = static_cast<char>((value >> (8 * i)) & 0xff);
}

std::uint32_t littleEndian32(const std::string& bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (int i = 3; i >= 0; --i)
        value = (value << 8) | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

// Where the archive's single entry is described in its table of contents (the end record, 22 bytes
// without a comment, says where the table starts).
std::size_t centralEntry(const std::string& zip)
{
    return littleEndian32(zip, zip.size() - 22 + 16);
}

} // namespace

// A zip file is as hostile as the description inside it: each shape that lies about where things
// are or how large they are is refused with what is wrong, and nothing is read outside the file.
TEST_F(GenicamHostile, zipFilesThatLieAreRefusedWithWhatIsWrong)
{
    const std::string good = readBytes(ownFile("zipped.zip"));
    ASSERT_GT(good.size(), 22u + 46u);

    std::string farAway = good;
    putLittleEndian32(&farAway, farAway.size() - 22 + 16, 0xfffffff0u);
    const std::string offset = write("offset.zip", farAway);
    EXPECT_EQ(refusal(offset),
              offset + ": is a zip file that cannot be read: its table of contents contradicts its content");

    const std::string truncated = write("truncated.zip", good.substr(0, good.size() / 2));
    EXPECT_EQ(refusal(truncated), truncated + ": is a zip file that cannot be read: not a zip archive");

    std::string checksum = good;
    const std::uint32_t crc = littleEndian32(good, 14) ^ 0x5a5a5a5au;
    putLittleEndian32(&checksum, 14, crc);
    putLittleEndian32(&checksum, centralEntry(good) + 16, crc);
    const std::string badSum = write("checksum.zip", checksum);
    EXPECT_EQ(refusal(badSum), badSum + ": is a zip file whose Vorn_Zipped.xml cannot be unpacked: its "
                                        "content does not match its checksum");

    std::string text = good;
    for (std::size_t at = text.find("Vorn_Zipped.xml"); at != std::string::npos;
         at = text.find("Vorn_Zipped.xml", at + 1))
        text.replace(at, 15, "Vorn_Zipped.txt");
    const std::string noXml = write("text.zip", text);
    EXPECT_EQ(refusal(noXml), noXml + ": is a zip file without a description (.xml) in it");
}

// Nine MiB of description packed into nine KiB: the unpacking stops at the size a plain description
// may have, whether the archive says how large the entry is or lies about it.
TEST_F(GenicamHostile, zipFilesThatUnpackTooLargeAreRefused)
{
    const std::string large = ownFile("unpacks-too-large.zip");
    EXPECT_EQ(refusal(large), large + ": is a zip file whose Bomb.xml unpacks to more than 8388608 bytes; "
                                      "such descriptions are refused");

    std::string lying = readBytes(large);
    putLittleEndian32(&lying, 22, 100);
    putLittleEndian32(&lying, centralEntry(lying) + 24, 100);
    const std::string liar = write("liar.zip", lying);
    EXPECT_EQ(refusal(liar), liar + ": is a zip file whose Bomb.xml unpacks to more than 8388608 bytes; "
                                    "such descriptions are refused");
}

TEST_F(GenicamHostile, twoNodesOfOneNameKeepTheLastAsTheGenicamLibraryDoes)
{
    auto tree = open(describe(feature("Twice"), "  <Integer Name=\"Twice\"><Value>1</Value></Integer>\n"
                                                "  <Integer Name=\"Twice\"><Value>2</Value></Integer>\n"));
    ASSERT_TRUE(tree);
    EXPECT_EQ(valueOf(tree->find("Twice")), "2");
}
