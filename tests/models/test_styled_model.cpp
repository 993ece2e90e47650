#include "ModelTestSupport.h"

#include "example/ExampleTree.h"
#include <vorn/host/MovaniApplication.h>
#include <vorn/models/Qt4ParametersCommandNode.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>
#include <vorn/models/Qt4StyledParametersCategoryNode.h>
#include <vorn/models/Qt4StyledParametersEntryNode.h>
#include <vorn/models/Qt4StyledParametersIntegerNode.h>
#include <vorn/models/Qt4StyledParametersModel.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>
#include <vorn/models/Qt4StyledParametersUInt64Node.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QColor>

#include <gtest/gtest.h>

#include <typeinfo>

using namespace vorn::core;
using namespace vorn::core::models;
using namespace vorn::test;

namespace {

const char* const kViewMode = "gui.preferences.gui.params.integer.viewmode";

struct StyledModelTest : ::testing::Test
{
    boost::shared_ptr<InMemoryParameterTree> tree = InMemoryParameterTree::create();
    boost::shared_ptr<Qt4StyledParametersModel> model;

    StyledModelTest() { MovaniApplication::removeConfigEntry(kViewMode); }
    ~StyledModelTest() override { MovaniApplication::removeConfigEntry(kViewMode); }

    void build()
    {
        model = Qt4StyledParametersModel::create(
            Qt4StyledParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    }
    QModelIndex value(const char* n) { return findRow(model.get(), QString::fromLatin1(n), 1); }
    QModelIndex name(const char* n) { return findRow(model.get(), QString::fromLatin1(n), 0); }
    QString text(const char* n) { return value(n).data().toString(); }
};

class ForeignNode : public MvParametersEntryNode
{
public:
    using MvParametersEntryNode::MvParametersEntryNode;

protected:
    std::uint32_t doTypeId() const override { return 0x4242; }
};

} // namespace

TEST_F(StyledModelTest, headersAreBoldAndLeftAligned)
{
    build();
    EXPECT_EQ(model->headerData(0, Qt::Horizontal, Qt::DisplayRole), QVariant(QStringLiteral("Feature")));
    EXPECT_EQ(model->headerData(1, Qt::Horizontal, Qt::DisplayRole), QVariant(QStringLiteral("Value")));
    for (int section : {0, 1}) {
        const QFont font = model->headerData(section, Qt::Horizontal, Qt::FontRole).value<QFont>();
        EXPECT_EQ(font.weight(), 75);
        EXPECT_EQ(font.family(), QApplication::font().family());
        EXPECT_EQ(model->headerData(section, Qt::Horizontal, Qt::TextAlignmentRole), QVariant(1));
        EXPECT_FALSE(model->headerData(section, Qt::Horizontal, Qt::ToolTipRole).isValid());
    }
    for (int role : {Qt::DisplayRole, Qt::FontRole, Qt::TextAlignmentRole}) {
        EXPECT_FALSE(model->headerData(0, Qt::Vertical, role).isValid());
        EXPECT_FALSE(model->headerData(2, Qt::Horizontal, role).isValid());
    }
    EXPECT_EQ(model->columnCount(), 2);
    EXPECT_EQ(model->getInitialExpansionDepth(), 0);
}

TEST_F(StyledModelTest, categoryRowIsATwelvePixelBoldSpanningRowWithoutGrid)
{
    auto cat = tree->category(tree->root(), "Cat").node();
    tree->integer(cat, "Leaf");
    build();
    auto row = rowAt<Qt4StyledParametersCategoryNode>(name("Cat"));
    ASSERT_TRUE(row);
    EXPECT_EQ(name("Cat").data(Qt::SizeHintRole).toSize(), QSize(-1, 12));
    EXPECT_FALSE(value("Cat").data(Qt::SizeHintRole).isValid());
    EXPECT_TRUE(row->enableFirstColumnSpanning());
    EXPECT_FALSE(row->isGridEnabled(0));
    EXPECT_FALSE(row->isGridEnabled(1));
    EXPECT_EQ(fontOf(name("Cat")).weight(), 75);
    EXPECT_EQ(fontOf(value("Cat")), QApplication::font());
    EXPECT_EQ(name("Cat").data().toString(), QStringLiteral("Cat"));
    EXPECT_FALSE(value("Cat").data().isValid());
    EXPECT_TRUE(rowAt<Qt4AbstractModelNode>(name("Leaf"))->isGridEnabled(1));
}

TEST_F(StyledModelTest, plainEntryIsRedAndUnknownKindsGetTheBaseRow)
{
    tree->entry(tree->root(), "Plain");
    tree->place(tree->root(), tree->model()->createNode<ForeignNode>(std::string("Foreign")));
    tree->command(tree->root(), "Run");
    build();
    EXPECT_EQ(name("Plain").data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
    EXPECT_FALSE(value("Plain").data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("Plain"))), typeid(Qt4StyledParametersEntryNode));
    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("Foreign"))), typeid(Qt4StyledParametersModelNode));
    EXPECT_FALSE(name("Foreign").data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(typeid(*rowAt<Qt4AbstractModelNode>(name("Run"))), typeid(Qt4ParametersCommandNode));
    EXPECT_EQ(name("Foreign").data(Qt::SizeHintRole).toSize(), QSize(-1, 17));
    EXPECT_EQ(name("Run").data(Qt::SizeHintRole).toSize(), QSize(-1, 17));
}

TEST_F(StyledModelTest, integersFollowTheHostViewModeWhenTheirOwnIsOpen)
{
    tree->integer(tree->root(), "Open").value(255).unit("mm");
    tree->integer(tree->root(), "OwnHex").value(255).unit("mm").viewMode(1);
    tree->integer(tree->root(), "OwnBinary").value(5).viewMode(2);
    tree->integer(tree->root(), "OwnDecimal").value(255).viewMode(0);
    tree->uint64(tree->root(), "Big").value(18446744073709551615ull);
    build();
    EXPECT_EQ(text("Open"), QStringLiteral("255 mm")) << "no entry: decimal";
    EXPECT_EQ(text("OwnHex"), QStringLiteral("0xff mm"));
    EXPECT_EQ(text("OwnBinary"), QStringLiteral("0b101"));
    MovaniApplication::setConfigIntEntry(kViewMode, 1);
    EXPECT_EQ(text("Open"), QStringLiteral("0xff mm"));
    EXPECT_EQ(text("Big"), QStringLiteral("0xffffffffffffffff"));
    EXPECT_EQ(text("OwnDecimal"), QStringLiteral("255"));
    MovaniApplication::setConfigIntEntry(kViewMode, 2);
    EXPECT_EQ(text("Open"), QStringLiteral("0b11111111 mm"));
    MovaniApplication::setConfigIntEntry(kViewMode, 7);
    EXPECT_EQ(text("Open"), QStringLiteral("255 mm"));
}

TEST_F(StyledModelTest, representationsWinOverTheViewMode)
{
    MovaniApplication::setConfigIntEntry(kViewMode, 2);
    tree->integer(tree->root(), "Hex").value(255).representation(pirHexNumber).unit("ms").field(3);
    tree->integer(tree->root(), "Ip").value(0xC0A80001).representation(pirIPV4Address);
    tree->integer(tree->root(), "Mac").value(0x0102).representation(pirMACAddress);
    tree->integer(tree->root(), "Box").value(1).representation(pirBoolean);
    tree->integer(tree->root(), "Invalid").value(1).dataValid(false);
    build();
    EXPECT_EQ(text("Hex"), QStringLiteral("0xff ms"));
    EXPECT_EQ(text("Ip"), QStringLiteral("192.168.0.1"));
    EXPECT_EQ(text("Mac"), QStringLiteral("02:01:00:00:00:00"));
    EXPECT_FALSE(value("Box").data().isValid());
    EXPECT_EQ(value("Box").data(Qt::CheckStateRole), QVariant(Qt::Checked));
    EXPECT_EQ(value("Invalid").data(), QVariant(QString()));
    for (const char* n : {"Hex", "Ip", "Mac", "Box", "Invalid"}) {
        value(n).data();
        EXPECT_FALSE(value(n).data(Qt::ToolTipRole).isValid()) << n << ": only plain numbers get details";
    }
}

TEST_F(StyledModelTest, fieldsShowTheirIndexAndTheDetailsToolTipHasTheRowsInOrder)
{
    tree->integer(tree->root(), "Signed").value(-5).field(3).unit("px");
    tree->uint64(tree->root(), "Unsigned").value(18446744073709551615ull).field(3);
    tree->integer(tree->root(), "NoField").value(10);
    build();
    EXPECT_FALSE(value("Signed").data(Qt::ToolTipRole).isValid()) << "empty until the value is shown";
    EXPECT_EQ(text("Signed"), QStringLiteral("[3] -5 px"));
    EXPECT_EQ(text("Unsigned"), QStringLiteral("[3] 18446744073709551615"));
    EXPECT_EQ(text("NoField"), QStringLiteral("10"));
    EXPECT_EQ(value("Signed").data(Qt::ToolTipRole).toString(),
              QStringLiteral("<b><u>Integer Parameter Details</u></b><br><table>"
                             "<tr><td><b>Name:</b></td><td>Signed</td></tr>"
                             "<tr><td><b>Index:</b></td><td>3</td></tr>"
                             "<tr><td><b>Decimal:</b></td><td>-5</td></tr>"
                             "<tr><td><b>Hexadecimal:</b></td><td>0x-5</td></tr>"
                             "<tr><td><b>Binary:</b></td><td>0b-101</td></tr>"
                             "</table>"));
    EXPECT_EQ(name("Signed").data(Qt::ToolTipRole), value("Signed").data(Qt::ToolTipRole));
    EXPECT_EQ(value("Unsigned").data(Qt::ToolTipRole).toString(),
              QString("<b><u>Integer Parameter Details</u></b><br><table>"
                      "<tr><td><b>Index:</b></td><td>3</td></tr>"
                      "<tr><td><b>Name:</b></td><td>Unsigned</td></tr>"
                      "<tr><td><b>Decimal:</b></td><td>18446744073709551615</td></tr>"
                      "<tr><td><b>Hexadecimal:</b></td><td>0xffffffffffffffff</td></tr>"
                      "<tr><td><b>Binary:</b></td><td>0b" +
                      QString(64, QLatin1Char('1')) + "</td></tr></table>"));
    EXPECT_EQ(value("NoField").data(Qt::ToolTipRole).toString(),
              QStringLiteral("<b><u>Integer Parameter Details</u></b><br><table>"
                             "<tr><td><b>Name:</b></td><td>NoField</td></tr>"
                             "<tr><td><b>Decimal:</b></td><td>10</td></tr>"
                             "<tr><td><b>Hexadecimal:</b></td><td>0xa</td></tr>"
                             "<tr><td><b>Binary:</b></td><td>0b1010</td></tr>"
                             "</table>"));
}

TEST_F(StyledModelTest, invalidDataKeepsThePreviousDetails)
{
    auto n = tree->integer(tree->root(), "Value").value(2).node();
    build();
    text("Value");
    const QString before = value("Value").data(Qt::ToolTipRole).toString();
    n->setDataValid(false);
    n->setNodeValue(3);
    EXPECT_EQ(text("Value"), QString());
    EXPECT_EQ(value("Value").data(Qt::ToolTipRole).toString(), before);
}

TEST_F(StyledModelTest, floatFieldShowsItsIndexOnlyInTheStyledModel)
{
    tree->floating(tree->root(), "Volt").value(0.5).unit("V").field(3);
    tree->floating(tree->root(), "Tiny").value(0.0000001);
    build();
    EXPECT_EQ(text("Volt"), QStringLiteral("[3] 0.5 V"));
    EXPECT_EQ(text("Tiny"), QStringLiteral("1e-07"));
    auto plain =
        Qt4ParametersModel::create(Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    EXPECT_EQ(findRow(plain.get(), "Volt", 1).data().toString(), QStringLiteral("0.5 V"));
}

TEST_F(StyledModelTest, nameColumnIsEnabledAndReadOnlyEverywhere)
{
    auto cat = tree->category(tree->root(), "Cat").node();
    tree->entry(cat, "Plain");
    tree->string(cat, "Str").value("x");
    tree->integer(cat, "Int").access(peamReadWrite);
    tree->uint64(cat, "U64").access(peamReadWriteIfValid).dataValid(false);
    tree->floating(cat, "Flt").access(peamReadOnly);
    tree->boolean(cat, "Bool");
    tree->enumeration(cat, "Enum").entry("A", 1);
    tree->command(cat, "Run");
    build();
    for (const char* n : {"Cat", "Plain", "Str", "Int", "U64", "Flt", "Bool", "Enum", "Run"}) {
        auto row = rowAt<Qt4AbstractModelNode>(name(n));
        EXPECT_TRUE(row->isEnabled(0)) << n;
        EXPECT_TRUE(row->isReadOnly(0)) << n;
        EXPECT_TRUE(row->isSelectable(0)) << n;
        EXPECT_FALSE(row->dataBranchBackgroundRole(0).isValid()) << n;
    }
    EXPECT_TRUE(model->flags(value("Int")) & Qt::ItemIsEditable);
    EXPECT_FALSE(model->flags(value("U64")) & Qt::ItemIsEditable);
    EXPECT_FALSE(model->flags(value("Flt")) & Qt::ItemIsEnabled);
}

TEST_F(StyledModelTest, fontsAndIcons)
{
    tree->string(tree->root(), "Str").value("abc");
    tree->integer(tree->root(), "Dec").value(1);
    tree->integer(tree->root(), "Hex").value(1).representation(pirHexNumber);
    tree->uint64(tree->root(), "Mac").value(1).representation(pirMACAddress);
    tree->floating(tree->root(), "Flt");
    tree->boolean(tree->root(), "Bool").value(true);
    tree->enumeration(tree->root(), "Enum").entry("A", 1, "Alpha");
    build();
    EXPECT_EQ(fontOf(value("Str")).family(), QStringLiteral("Consolas"));
    EXPECT_EQ(fontOf(value("Str")).weight(), 75);
    EXPECT_EQ(fontOf(value("Dec")), QApplication::font()) << "plain numbers are not bold here";
    EXPECT_EQ(fontOf(value("Hex")).family(), QStringLiteral("Consolas"));
    EXPECT_EQ(fontOf(value("Mac")).weight(), 75);
    EXPECT_EQ(fontOf(value("Flt")), QApplication::font());
    EXPECT_EQ(fontOf(name("Str")), QApplication::font());
    EXPECT_EQ(text("Str"), QStringLiteral("abc"));
    EXPECT_EQ(text("Enum"), QStringLiteral("Alpha"));
    EXPECT_EQ(value("Bool").data(Qt::CheckStateRole), QVariant(Qt::Checked));
    EXPECT_TRUE(sameIcon(name("Str").data(Qt::DecorationRole), ":/parameters/string.png"));
    EXPECT_TRUE(sameIcon(name("Dec").data(Qt::DecorationRole), ":/parameters/integer.png"));
    EXPECT_TRUE(sameIcon(name("Mac").data(Qt::DecorationRole), ":/parameters/integer.png"));
    EXPECT_TRUE(sameIcon(name("Flt").data(Qt::DecorationRole), ":/parameters/float.png"));
    EXPECT_TRUE(sameIcon(name("Bool").data(Qt::DecorationRole), ":/parameters/boolean.png"));
    EXPECT_TRUE(sameIcon(name("Enum").data(Qt::DecorationRole), ":/parameters/enumeration.png"));
    for (const char* n : {"Str", "Dec", "Flt", "Bool", "Enum"})
        EXPECT_FALSE(value(n).data(Qt::DecorationRole).isValid()) << n;
}

TEST_F(StyledModelTest, checkBoxesWriteThroughTheCallback)
{
    tree->boolean(tree->root(), "Flag").value(false);
    tree->uint64(tree->root(), "UBox").value(1).representation(pirBoolean);
    build();
    model->setData(value("Flag"), Qt::Checked, Qt::CheckStateRole);
    model->setData(value("UBox"), Qt::Checked, Qt::CheckStateRole);
    model->setData(value("UBox"), Qt::Unchecked, Qt::CheckStateRole);
    EXPECT_EQ(callsOf(*tree), (QStringList{"Flag:bool=true", "UBox:unsigned long long=0"}));
}

TEST_F(StyledModelTest, textsAreLatin1)
{
    tree->category(tree->root(), "Cat").displayName("Kategorie \xC4");
    tree->integer(tree->root(), "Temp").displayName("T\xB0").unit("\xB0").value(3);
    tree->string(tree->root(), "Text").displayName("Text").value("\xE9t\xE9").toolTip("\xB5");
    build();
    EXPECT_TRUE(findRow(model.get(), QString::fromUtf8("Kategorie \u00C4")).isValid());
    const QModelIndex temp = findRow(model.get(), QString::fromUtf8("T\u00B0"), 1);
    EXPECT_EQ(temp.data().toString(), QString::fromUtf8("3 \u00B0"));
    const QModelIndex text = findRow(model.get(), "Text", 1);
    EXPECT_EQ(text.data().toString(), QString::fromUtf8("\u00E9t\u00E9"));
    EXPECT_EQ(text.data(Qt::ToolTipRole).toString(), QString::fromUtf8("\u00B5"));
}

TEST(StyledModelTreeTest, passesTheModelTesterOnTheExampleAndALargeTree)
{
    for (auto tree : {vorn::example::buildExampleTree(0), vorn::example::buildGeneratedTree(10000)}) {
        auto model = Qt4StyledParametersModel::create(
            Qt4StyledParametersModelNode::create(tree->model(), tree->root(), boost::any()));
        QAbstractItemModelTester tester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        tree->notifyAllChanged();
        EXPECT_GT(model->rowCount(), 0);
    }
}
