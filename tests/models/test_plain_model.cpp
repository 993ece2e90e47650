#include "ModelTestSupport.h"
#include "support/ModelDump.h"

#include "example/ExampleTree.h"
#include <vorn/models/Qt4ParametersBooleanNode.h>
#include <vorn/models/Qt4ParametersCategoryNode.h>
#include <vorn/models/Qt4ParametersEntryNode.h>
#include <vorn/models/Qt4ParametersEnumerationNode.h>
#include <vorn/models/Qt4ParametersFloatNode.h>
#include <vorn/models/Qt4ParametersIntegerNode.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>
#include <vorn/models/Qt4ParametersStringNode.h>
#include <vorn/models/Qt4ParametersUInt64Node.h>
#include <vorn/models/Qt4StyledBooleanParametersModel.h>
#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>
#include <vorn/models/Qt4StyledParametersModel.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QColor>

#include <gtest/gtest.h>

#include <typeinfo>

using namespace vorn::core;
using namespace vorn::core::models;
using namespace vorn::test;

namespace {

// A parameter class of a host's own: an integer that reports a type id of its own.
class SpecialIntegerNode : public MvParametersIntegerNode
{
public:
    using MvParametersIntegerNode::MvParametersIntegerNode;

protected:
    std::uint32_t doTypeId() const override { return 0x1234; }
};

struct PlainModelTest : ::testing::Test
{
    boost::shared_ptr<InMemoryParameterTree> tree = InMemoryParameterTree::create();
    boost::shared_ptr<Qt4ParametersModel> model;

    void build() { model = plainModel(tree); }
    QModelIndex value(const char* name) { return findRow(model.get(), QString::fromLatin1(name), 1); }
    QModelIndex name(const char* name) { return findRow(model.get(), QString::fromLatin1(name), 0); }
    QString text(const char* n) { return value(n).data().toString(); }
};

} // namespace

// --- the model ---------------------------------------------------------------------------------

TEST_F(PlainModelTest, headersAreFeatureAndValueOnly)
{
    build();
    EXPECT_EQ(model->headerData(0, Qt::Horizontal, Qt::DisplayRole), QVariant(QStringLiteral("Feature")));
    EXPECT_EQ(model->headerData(1, Qt::Horizontal, Qt::DisplayRole), QVariant(QStringLiteral("Value")));
    EXPECT_FALSE(model->headerData(2, Qt::Horizontal, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model->headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model->headerData(0, Qt::Horizontal, Qt::ToolTipRole).isValid());
    EXPECT_FALSE(model->headerData(-1, Qt::Horizontal, Qt::DisplayRole).isValid());
}

TEST_F(PlainModelTest, columnCountIsTwoForEveryParent)
{
    auto cat = tree->category(tree->root(), "Cat").node();
    tree->integer(cat, "Leaf");
    build();
    EXPECT_EQ(model->columnCount(QModelIndex()), 2);
    EXPECT_EQ(model->columnCount(name("Cat")), 2);
    EXPECT_EQ(model->columnCount(name("Leaf")), 2);
    EXPECT_EQ(model->columnCount(value("Leaf")), 2);
}

TEST_F(PlainModelTest, emptyRootGivesAUsableModelWithoutRows)
{
    auto empty = Qt4ParametersModel::create(boost::shared_ptr<Qt4AbstractModelNode>());
    QAbstractItemModelTester tester(empty.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(empty->rowCount(), 0);
    EXPECT_FALSE(empty->rootNode());
    EXPECT_EQ(empty->headerData(1, Qt::Horizontal), QVariant(QStringLiteral("Value")));

    // A root that was never bound builds no rows of its own.
    auto root = Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any());
    tree->integer(tree->root(), "X");
    EXPECT_EQ(root->childCount(), 0);
    EXPECT_EQ(root->model(), nullptr);
}

TEST_F(PlainModelTest, opensFullyExpanded)
{
    build();
    EXPECT_EQ(model->getInitialExpansionDepth(), -1);
}

// --- the factory and the base row ----------------------------------------------------------------

TEST_F(PlainModelTest, factoryPicksTheRowClassByExactTypeId)
{
    auto cat = tree->category(tree->root(), "Cat").node();
    tree->entry(cat, "Plain");
    tree->string(cat, "Str");
    tree->integer(cat, "Int");
    tree->uint64(cat, "U64");
    tree->floating(cat, "Flt");
    tree->boolean(cat, "Bool");
    tree->enumeration(cat, "Enum").entry("A", 1);
    tree->place(cat, tree->model()->createNode<SpecialIntegerNode>(std::string("Special")));
    build();

    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("Cat"))), typeid(Qt4ParametersCategoryNode));
    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("Plain"))), typeid(Qt4ParametersEntryNode));
    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("Str"))), typeid(Qt4ParametersStringNode));
    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("Int"))), typeid(Qt4ParametersIntegerNode));
    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("U64"))), typeid(Qt4ParametersUInt64Node));
    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("Flt"))), typeid(Qt4ParametersFloatNode));
    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("Bool"))), typeid(Qt4ParametersBooleanNode));
    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("Enum"))), typeid(Qt4ParametersEnumerationNode));
    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("Special"))), typeid(Qt4ParametersModelNode))
        << "a subclass with its own type id falls through to the plain row";
}

TEST_F(PlainModelTest, unknownKindShowsNameNoValueAndABoldValueFont)
{
    tree->place(tree->root(), tree->model()->createNode<SpecialIntegerNode>(std::string("Special")));
    build();
    EXPECT_EQ(name("Special").data().toString(), QStringLiteral("Special"));
    EXPECT_FALSE(value("Special").data().isValid());
    EXPECT_EQ(fontOf(value("Special")).weight(), 75);
    EXPECT_EQ(fontOf(name("Special")), QApplication::font());
    EXPECT_FALSE(value("Special").data(Qt::DecorationRole).isValid());
}

TEST_F(PlainModelTest, valueColumnIsEditableByAccessMode)
{
    const std::vector<std::pair<const char*, ParameterEntryAccessMode>> modes = {
        {"Undefined", peamUndefined}, {"NI", peamNotImplemented}, {"NA", peamNotAvailable},
        {"RW", peamReadWrite},        {"RO", peamReadOnly},       {"RWValid", peamReadWriteIfValid}};
    for (const auto& m : modes)
        tree->integer(tree->root(), m.first).access(m.second);
    tree->integer(tree->root(), "RWInvalid").access(peamReadWriteIfValid).dataValid(false);
    tree->integer(tree->root(), "RWOnInvalid").access(peamReadWrite).dataValid(false);
    build();

    const Qt::ItemFlags editable = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable;
    for (const char* n : {"RW", "RWValid", "RWOnInvalid"})
        EXPECT_EQ(model->flags(value(n)) & editable, editable) << n;
    for (const char* n : {"Undefined", "NI", "NA", "RO", "RWInvalid"}) {
        EXPECT_EQ(model->flags(value(n)) & editable, Qt::ItemIsSelectable) << n;
        auto row = rowAt<Qt4ParametersModelNode>(value(n));
        EXPECT_FALSE(row->isEnabled(1));
        EXPECT_TRUE(row->isReadOnly(1));
    }
    for (const auto& m : modes) {
        auto row = rowAt<Qt4ParametersModelNode>(name(m.first));
        EXPECT_TRUE(row->isEnabled(0));
        EXPECT_TRUE(row->isReadOnly(0));
        EXPECT_TRUE(row->isSelectable(0));
        EXPECT_TRUE(row->isSelectable(1));
    }
}

TEST_F(PlainModelTest, everyRowIsFourteenPixelsHighWithTheSameToolTipInBothColumns)
{
    auto cat = tree->category(tree->root(), "Cat").toolTip("c tip").node();
    tree->entry(cat, "Plain").toolTip("p tip");
    tree->string(cat, "Str").toolTip("s tip");
    tree->integer(cat, "Int").toolTip("i tip");
    tree->uint64(cat, "U64").toolTip("u tip");
    tree->floating(cat, "Flt").toolTip("f tip");
    tree->boolean(cat, "Bool").toolTip("b tip");
    tree->enumeration(cat, "Enum").entry("A", 1).toolTip("e tip");
    tree->place(cat, tree->model()->createNode<SpecialIntegerNode>(std::string("Special")));
    build();
    for (const char* n : {"Cat", "Plain", "Str", "Int", "U64", "Flt", "Bool", "Enum", "Special"}) {
        EXPECT_EQ(name(n).data(Qt::SizeHintRole).toSize(), QSize(-1, 14)) << n;
        EXPECT_EQ(value(n).data(Qt::SizeHintRole).toSize(), QSize(-1, 14)) << n;
        EXPECT_EQ(name(n).data(Qt::ToolTipRole), value(n).data(Qt::ToolTipRole)) << n;
    }
    EXPECT_EQ(value("Int").data(Qt::ToolTipRole).toString(), QStringLiteral("i tip"));
}

TEST_F(PlainModelTest, textsAreLatin1BytesOneCharacterEach)
{
    tree->floating(tree->root(), "Temp")
        .displayName("Temperatur (\xB0"
                     "C)")
        .toolTip("Gr\xF6\xDF"
                 "e")
        .unit("\xB5s")
        .value(2);
    build();
    const QModelIndex temp = findRow(model.get(), QString::fromUtf8("Temperatur (\u00B0C)"));
    ASSERT_TRUE(temp.isValid());
    EXPECT_EQ(findRow(model.get(), QString::fromUtf8("Temperatur (\u00B0C)"), 1).data().toString(),
              QString::fromUtf8("2 \u00B5s"));
    EXPECT_EQ(temp.data(Qt::ToolTipRole).toString(), QString::fromUtf8("Gr\u00F6\u00DFe"));
}

// --- integer and unsigned rows ---------------------------------------------------------------------

TEST_F(PlainModelTest, integerTextsByRepresentation)
{
    tree->integer(tree->root(), "Hex").value(255).representation(pirHexNumber).unit("ms");
    tree->integer(tree->root(), "Dec").value(255).representation(pirLinear);
    tree->integer(tree->root(), "Seven")
        .value(255)
        .representation(static_cast<ParameterIntegerRepresentation>(7));
    tree->integer(tree->root(), "Minus")
        .value(255)
        .representation(static_cast<ParameterIntegerRepresentation>(-1));
    tree->integer(tree->root(), "Log").value(255).representation(pirLogarithmic).unit("dB");
    tree->integer(tree->root(), "Ip").value(0xC0A80001).representation(pirIPV4Address).unit("addr");
    tree->integer(tree->root(), "Mac").value(0x0000AABBCCDDEEFFll).representation(pirMACAddress).unit("x");
    tree->integer(tree->root(), "ShortMac").value(0x0102).representation(pirMACAddress);
    tree->integer(tree->root(), "NegHex").value(-255).representation(pirHexNumber);
    tree->integer(tree->root(), "Min").value(-9223372036854775807ll - 1);
    tree->integer(tree->root(), "MinHex").value(-9223372036854775807ll - 1).representation(pirHexNumber);
    tree->integer(tree->root(), "Max").value(9223372036854775807ll).unit("");
    tree->integer(tree->root(), "HighIp").value(0x7F000001C0A80001ll).representation(pirIPV4Address);
    tree->uint64(tree->root(), "UMax").value(18446744073709551615ull);
    tree->uint64(tree->root(), "UHex").value(18446744073709551615ull).representation(pirHexNumber).unit("B");
    tree->uint64(tree->root(), "UAbove").value(9223372036854775808ull).unit("ticks");
    tree->uint64(tree->root(), "UMac").value(0xFFFF0000AABBCCDDull).representation(pirMACAddress);
    tree->uint64(tree->root(), "UIp").value(0xC0A80001ull).representation(pirIPV4Address);
    build();
    EXPECT_EQ(text("Hex"), QStringLiteral("0xff ms"));
    EXPECT_EQ(text("Dec"), QStringLiteral("255"));
    EXPECT_EQ(text("Seven"), QStringLiteral("255"));
    EXPECT_EQ(text("Minus"), QStringLiteral("255"));
    EXPECT_EQ(text("Log"), QStringLiteral("255 dB"));
    EXPECT_EQ(text("Ip"), QStringLiteral("192.168.0.1"));
    EXPECT_EQ(text("Mac"), QStringLiteral("ff:ee:dd:cc:bb:aa"));
    EXPECT_EQ(text("ShortMac"), QStringLiteral("02:01:00:00:00:00"));
    EXPECT_EQ(text("NegHex"), QStringLiteral("0x-ff"));
    EXPECT_EQ(text("Min"), QStringLiteral("-9223372036854775808"));
    EXPECT_EQ(text("MinHex"), QStringLiteral("0x-8000000000000000"));
    EXPECT_EQ(text("Max"), QStringLiteral("9223372036854775807"));
    EXPECT_EQ(text("HighIp"), QStringLiteral("192.168.0.1"));
    EXPECT_EQ(text("UMax"), QStringLiteral("18446744073709551615"));
    EXPECT_EQ(text("UHex"), QStringLiteral("0xffffffffffffffff B"));
    EXPECT_EQ(text("UAbove"), QStringLiteral("9223372036854775808 ticks"));
    EXPECT_EQ(text("UMac"), QStringLiteral("dd:cc:bb:aa:00:00"));
    EXPECT_EQ(text("UIp"), QStringLiteral("192.168.0.1"));
}

TEST_F(PlainModelTest, integerFontsFollowTheRepresentation)
{
    for (auto r : {pirHexNumber, pirIPV4Address, pirMACAddress, pirLinear, pirBoolean}) {
        tree->integer(tree->root(), "I" + std::to_string(r)).representation(r);
        tree->uint64(tree->root(), "U" + std::to_string(r)).representation(r);
    }
    build();
    for (const char* n : {"I4", "I5", "I6", "U4", "U5", "U6"}) {
        EXPECT_EQ(fontOf(value(n)).family(), QStringLiteral("Consolas")) << n;
        EXPECT_EQ(fontOf(value(n)).weight(), 75) << n;
        EXPECT_EQ(fontOf(name(n)), QApplication::font()) << n;
    }
    for (const char* n : {"I0", "I3", "U0", "U3"}) {
        EXPECT_EQ(fontOf(value(n)).family(), QApplication::font().family()) << n;
        EXPECT_EQ(fontOf(value(n)).weight(), 75) << n;
    }
}

TEST_F(PlainModelTest, integerCheckBoxWritesOnlyChanges)
{
    tree->integer(tree->root(), "Box").value(7).representation(pirBoolean).range(0, 10);
    tree->uint64(tree->root(), "UBox").value(0).representation(pirBoolean).range(0, 1);
    build();
    EXPECT_EQ(value("Box").data(Qt::CheckStateRole), QVariant(Qt::Checked));
    EXPECT_FALSE(value("Box").data().isValid());
    EXPECT_FALSE(name("Box").data(Qt::CheckStateRole).isValid());
    EXPECT_TRUE(model->flags(value("Box")) & Qt::ItemIsUserCheckable);
    EXPECT_FALSE(model->flags(name("Box")) & Qt::ItemIsUserCheckable);

    auto box = rowAt<Qt4ParametersIntegerNode>(value("Box"));
    box->setCheckedState(1, Qt::Checked);
    EXPECT_TRUE(tree->calls().empty()) << "7 already counts as checked";
    box->setCheckedState(1, Qt::Unchecked);
    model->setData(value("UBox"), Qt::Unchecked, Qt::CheckStateRole);
    model->setData(value("UBox"), Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(callsOf(*tree), (QStringList{"Box:long long=0", "UBox:unsigned long long=1"}));
    EXPECT_EQ(value("Box").data(Qt::CheckStateRole), QVariant(Qt::Unchecked));
    EXPECT_EQ(value("UBox").data(Qt::CheckStateRole), QVariant(Qt::Checked));
}

TEST_F(PlainModelTest, invalidIntegerDataShowsAnEmptyValueAndNoCheckBox)
{
    for (auto r : {pirLinear, pirBoolean, pirHexNumber, pirIPV4Address, pirMACAddress}) {
        tree->integer(tree->root(), "I" + std::to_string(r)).representation(r).value(1).dataValid(false);
        tree->uint64(tree->root(), "U" + std::to_string(r)).representation(r).value(1).dataValid(false);
    }
    build();
    for (const char* n : {"I0", "I3", "I4", "I5", "I6", "U0", "U3", "U4", "U5", "U6"}) {
        const QVariant v = value(n).data();
        EXPECT_TRUE(v.isValid()) << n;
        EXPECT_EQ(v.toString(), QString()) << n;
        EXPECT_FALSE(value(n).data(Qt::CheckStateRole).isValid()) << n;
        EXPECT_FALSE(rowAt<Qt4AbstractModelNode>(value(n))->isUserCheckable(1)) << n;
    }
}

TEST_F(PlainModelTest, iconsStandInTheNameColumnOnly)
{
    tree->integer(tree->root(), "Int");
    tree->uint64(tree->root(), "U64");
    tree->floating(tree->root(), "Flt");
    tree->boolean(tree->root(), "Bool");
    tree->string(tree->root(), "Str");
    tree->enumeration(tree->root(), "Enum").entry("A", 1);
    tree->category(tree->root(), "Cat");
    tree->entry(tree->root(), "Plain");
    build();
    EXPECT_TRUE(sameIcon(name("Int").data(Qt::DecorationRole), ":/parameters/integer.png"));
    EXPECT_TRUE(sameIcon(name("U64").data(Qt::DecorationRole), ":/parameters/integer.png"));
    EXPECT_TRUE(sameIcon(name("Flt").data(Qt::DecorationRole), ":/parameters/float.png"));
    EXPECT_TRUE(sameIcon(name("Bool").data(Qt::DecorationRole), ":/parameters/boolean.png"));
    EXPECT_TRUE(sameIcon(name("Str").data(Qt::DecorationRole), ":/parameters/string.png"));
    EXPECT_TRUE(sameIcon(name("Enum").data(Qt::DecorationRole), ":/parameters/enumeration.png"));
    EXPECT_FALSE(name("Cat").data(Qt::DecorationRole).isValid());
    EXPECT_FALSE(name("Plain").data(Qt::DecorationRole).isValid());
    for (const char* n : {"Int", "U64", "Flt", "Bool", "Str", "Enum"}) {
        EXPECT_FALSE(value(n).data(Qt::DecorationRole).isValid()) << n;
        EXPECT_EQ(name(n).data().toString(), QString::fromLatin1(n));
    }
}

// --- the other rows ----------------------------------------------------------------------------------

TEST_F(PlainModelTest, floatTextsUseSixSignificantDigits)
{
    tree->floating(tree->root(), "Volt").value(0.5).unit("V");
    tree->floating(tree->root(), "Tiny").value(0.0000001);
    tree->floating(tree->root(), "Long").value(3.14159265);
    tree->floating(tree->root(), "Field").value(0.5).field(3);
    tree->floating(tree->root(), "Invalid").value(1).dataValid(false).unit("V");
    build();
    EXPECT_EQ(text("Volt"), QStringLiteral("0.5 V"));
    EXPECT_EQ(text("Tiny"), QStringLiteral("1e-07"));
    EXPECT_EQ(text("Long"), QStringLiteral("3.14159"));
    EXPECT_EQ(text("Field"), QStringLiteral("0.5")) << "the plain row shows no field index";
    EXPECT_TRUE(value("Invalid").data().isValid());
    EXPECT_EQ(text("Invalid"), QString());
    EXPECT_EQ(fontOf(value("Volt")).weight(), 75);
}

TEST_F(PlainModelTest, enumerationShowsTheEntryOrTheIllegalValue)
{
    tree->enumeration(tree->root(), "Known").entry("Mono8", 1, "Mono 8").entry("RGB8", 2).value("Mono8");
    tree->enumeration(tree->root(), "NoDisplay").entry("Mono8", 1).entry("RGB8", 2).value("RGB8");
    tree->enumeration(tree->root(), "Unknown").entry("Mono8", 1).intValue(42);
    tree->enumeration(tree->root(), "Invalid").entry("Mono8", 1).value("Mono8").dataValid(false);
    build();
    EXPECT_EQ(text("Known"), QStringLiteral("Mono 8"));
    EXPECT_EQ(text("NoDisplay"), QStringLiteral("RGB8"));
    EXPECT_EQ(text("Unknown"), QStringLiteral("illegal enum value (42)"));
    EXPECT_EQ(text("Invalid"), QString());
    EXPECT_TRUE(value("Invalid").data().isValid());
}

TEST_F(PlainModelTest, booleanIsACheckBoxThatWritesABool)
{
    tree->boolean(tree->root(), "Set").value(true);
    tree->boolean(tree->root(), "Clear").value(false);
    tree->boolean(tree->root(), "Invalid").value(true).dataValid(false);
    build();
    EXPECT_EQ(value("Set").data(Qt::CheckStateRole), QVariant(Qt::Checked));
    EXPECT_EQ(value("Clear").data(Qt::CheckStateRole), QVariant(Qt::Unchecked));
    EXPECT_FALSE(value("Set").data().isValid());
    EXPECT_FALSE(name("Set").data(Qt::CheckStateRole).isValid());
    EXPECT_FALSE(value("Invalid").data(Qt::CheckStateRole).isValid());
    EXPECT_EQ(value("Invalid").data(), QVariant(QString()));
    EXPECT_FALSE(rowAt<Qt4AbstractModelNode>(value("Invalid"))->isUserCheckable(1));
    EXPECT_TRUE(rowAt<Qt4AbstractModelNode>(value("Set"))->isUserCheckable(1));
    EXPECT_FALSE(rowAt<Qt4AbstractModelNode>(value("Set"))->isUserCheckable(0));

    rowAt<Qt4ParametersBooleanNode>(value("Set"))->setCheckedState(1, Qt::Checked);
    EXPECT_TRUE(tree->calls().empty());
    model->setData(value("Set"), Qt::Unchecked, Qt::CheckStateRole);
    model->setData(value("Clear"), Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(callsOf(*tree), (QStringList{"Set:bool=false", "Clear:bool=true"}));
}

TEST_F(PlainModelTest, checkBoxWithExpiredCallbackWritesNothing)
{
    tree->boolean(tree->root(), "Flag").value(false);
    tree->integer(tree->root(), "Box").value(0).representation(pirBoolean);
    build();
    tree->releaseCallback();
    model->setData(value("Flag"), Qt::Checked, Qt::CheckStateRole);
    model->setData(value("Box"), Qt::Checked, Qt::CheckStateRole);
    EXPECT_TRUE(tree->calls().empty());
    EXPECT_EQ(value("Flag").data(Qt::CheckStateRole), QVariant(Qt::Unchecked));
}

TEST_F(PlainModelTest, categoryIsBoldAndSpansWithoutIcon)
{
    auto cat = tree->category(tree->root(), "Cat").node();
    tree->integer(cat, "Leaf");
    build();
    auto row = rowAt<Qt4ParametersCategoryNode>(name("Cat"));
    ASSERT_TRUE(row);
    EXPECT_EQ(fontOf(name("Cat")).weight(), 75);
    EXPECT_EQ(fontOf(name("Cat")).family(), QApplication::font().family());
    EXPECT_FALSE(value("Cat").data(Qt::FontRole).isValid());
    EXPECT_TRUE(row->enableFirstColumnSpanning());
    EXPECT_FALSE(row->enableAutoExpand());
    EXPECT_FALSE(rowAt<Qt4AbstractModelNode>(name("Leaf"))->enableFirstColumnSpanning());
    EXPECT_FALSE(name("Cat").data(Qt::DecorationRole).isValid());
    EXPECT_FALSE(value("Cat").data().isValid());
}

TEST_F(PlainModelTest, plainEntryNameIsRed)
{
    tree->entry(tree->root(), "Plain");
    build();
    EXPECT_EQ(name("Plain").data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
    EXPECT_FALSE(value("Plain").data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(fontOf(value("Plain")).weight(), 75);
}

TEST_F(PlainModelTest, stringShowsItsTextWhateverTheValidFlag)
{
    tree->string(tree->root(), "Empty").value("");
    tree->string(tree->root(), "EmptyInvalid").value("").dataValid(false);
    tree->string(tree->root(), "Kept").value("still here").dataValid(false);
    tree->string(tree->root(), "Long").value(std::string(5000, 'x'));
    build();
    EXPECT_EQ(value("Empty").data(), QVariant(QString()));
    EXPECT_EQ(value("EmptyInvalid").data(), QVariant(QString()));
    EXPECT_EQ(text("Kept"), QStringLiteral("still here"));
    EXPECT_EQ(text("Long").size(), 5000);
    EXPECT_EQ(fontOf(value("Kept")).family(), QStringLiteral("Consolas"));
    EXPECT_EQ(fontOf(value("Kept")).weight(), 75);
    EXPECT_EQ(fontOf(name("Kept")), QApplication::font());
}

TEST_F(PlainModelTest, rowsBeforePostInsertAnswerNoCachedRoles)
{
    auto node = tree->integer(tree->root(), "Int").node();
    auto cat = tree->category(tree->root(), "Cat").node();
    auto plain = tree->entry(tree->root(), "Plain").node();
    auto intRow = Qt4ParametersIntegerNode::create(tree->model(), node, boost::any());
    auto catRow = Qt4ParametersCategoryNode::create(tree->model(), cat, boost::any());
    auto plainRow = Qt4ParametersEntryNode::create(tree->model(), plain, boost::any());
    EXPECT_FALSE(intRow->dataDecorationRole(0).isValid());
    EXPECT_FALSE(catRow->dataFontRole(0).isValid());
    EXPECT_FALSE(plainRow->dataForegroundRole(0).isValid());
}

// --- whole trees ---------------------------------------------------------------------------------------

// The three models declare no meta-object of their own: metaObject(), qt_metacast() and qt_metacall()
// are the framework model's, and so is every signal they have.
TEST(ModelMetaObjectTest, everyModelUsesTheFrameworkModelsMetaObject)
{
    auto tree = vorn::example::buildExampleTree(0);
    const std::vector<boost::shared_ptr<Qt4GenericModel>> models{
        plainModel(tree),
        Qt4StyledParametersModel::create(
            Qt4StyledParametersModelNode::create(tree->model(), tree->root(), boost::any())),
        Qt4StyledBooleanParametersModel::create(
            Qt4StyledBooleanParametersModelNode::create(tree->model(), tree->root(), boost::any()))};
    for (const auto& model : models) {
        EXPECT_STREQ(model->metaObject()->className(), "vorn::core::Qt4AbstractModel");
        EXPECT_EQ(model->metaObject(), &Qt4AbstractModel::staticMetaObject);
        EXPECT_EQ(model->metaObject()->superClass(), &QAbstractItemModel::staticMetaObject);
        EXPECT_EQ(model->qt_metacast("vorn::core::Qt4AbstractModel"), static_cast<void*>(model.get()))
            << "qt_metacast knows the framework model";
        EXPECT_EQ(model->qt_metacast("vorn::core::Qt4ParametersModel"), nullptr);
        EXPECT_EQ(model->qt_metacast("vorn::core::Qt4GenericModel"), nullptr);
        EXPECT_EQ(model->metaObject()->indexOfSignal("errorReported(QString)"),
                  Qt4AbstractModel::staticMetaObject.indexOfSignal("errorReported(QString)"));
        EXPECT_GE(model->metaObject()->indexOfSignal("errorReported(QString)"), 0);
    }
    EXPECT_EQ(&Qt4ParametersModel::staticMetaObject, &Qt4AbstractModel::staticMetaObject);
    EXPECT_EQ(&Qt4StyledParametersModel::staticMetaObject, &Qt4AbstractModel::staticMetaObject);
    EXPECT_EQ(&Qt4StyledBooleanParametersModel::staticMetaObject, &Qt4AbstractModel::staticMetaObject);
}

TEST(ModelMetaObjectTest, errorsOfTheTreeStillReachListeners)
{
    auto tree = InMemoryParameterTree::create();
    auto width = tree->integer(tree->root(), "Width").value(640).range(16, 4096).node();
    auto model = plainModel(tree);
    QStringList errors;
    QObject::connect(model.get(), &Qt4ParametersModel::errorReported,
                     [&](const QString& message) { errors << message; });
    tree->model()->notifyError(width, "Cannot set Width to 5000: 5000 is above the maximum 4096");
    EXPECT_EQ(errors, (QStringList{"Cannot set Width to 5000: 5000 is above the maximum 4096"}));
}

TEST(PlainModelTreeTest, exampleTreeShowsEveryKind)
{
    auto tree = vorn::example::buildExampleTree(0);
    auto model = plainModel(tree);
    QAbstractItemModelTester tester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QStringList rows = dumpRows(model.get());
    EXPECT_EQ(rows.mid(0, 7), (QStringList{
                                  "Device Control | ",
                                  "  Vendor | Vorn Imaging",
                                  "  Model | VX-1200 Demo",
                                  "  User ID | bench-cam-1",
                                  QString::fromUtf8("  Temperature | 41.5 \u00B0C"),
                                  "  Device Reset | ",
                                  "Image Format Control | ",
                              }));
    EXPECT_TRUE(rows.contains("  Test Pattern | illegal enum value (7)"));
    EXPECT_TRUE(rows.contains("  Current IP Address | 192.168.1.66"));
    EXPECT_TRUE(rows.contains("  MAC Address | ab:cd:ef:12:34:56"));
    EXPECT_TRUE(rows.contains("  Payload Size | 0x12c000 B"));
    EXPECT_TRUE(rows.contains("  Timestamp | 9223372036854788153"));
}

TEST(PlainModelTreeTest, passesTheModelTesterOnALargeTreeWhileValuesChange)
{
    auto tree = vorn::example::buildGeneratedTree(10000);
    auto model = plainModel(tree);
    QAbstractItemModelTester tester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(model->rowCount(), 200);
    EXPECT_EQ(model->rowCount(model->index(0, 0)), 50);
    auto callback = tree->root()->getCallback().lock();
    int written = 0;
    for (int i = 0; i < 10000; i += 97) {
        auto node = tree->find("Feature" + std::to_string(i));
        if (!node->isWritable())
            continue;
        switch (i % 8) {
        case 0:
        case 7:
            callback->setValue(node, boost::any(static_cast<long long>(i + 1)));
            break;
        case 1:
            callback->setValue(node, boost::any(18446744073709551615ull - i));
            break;
        case 2:
            callback->setValue(node, boost::any(i * 0.5));
            break;
        case 3:
            callback->setValue(node, boost::any(i % 3 == 0));
            break;
        case 4:
            callback->setValue(node, boost::any(std::string("changed")));
            break;
        case 5:
            callback->setValue(node, boost::any(1ll));
            break;
        default:
            callback->setValue(node, boost::any());
            break;
        }
        ++written;
    }
    tree->notifyAllChanged();
    EXPECT_GT(written, 50);
    for (const auto& call : tree->calls())
        EXPECT_TRUE(call.applied) << call.error;
    EXPECT_EQ(model->index(1, 1, model->index(0, 0)).data().toString(),
              QStringLiteral("9223372036854775809"));
}
