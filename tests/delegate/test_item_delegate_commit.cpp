// Committing edited values: the range and increment checks, the warning boxes, and what reaches the
// parameter tree's callback.

#include "ItemDelegateTesting.h"

#include <vorn/delegate/Qt4Int64SpinBox.h>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QSignalSpy>

#include <limits>

using namespace vorn::core;
using namespace vorn::core::models;
using namespace vorn::test;

namespace {

using CommitTest = DelegateFixture;

constexpr qint64 kMinInt = std::numeric_limits<qint64>::min();
constexpr qint64 kMaxInt = std::numeric_limits<qint64>::max();
constexpr quint64 kMaxUInt = std::numeric_limits<quint64>::max();

QString rangeText(const QString& value, const QString& name, const QString& min, const QString& max,
                  const QString& step)
{
    return QStringLiteral("Illegal number (") + value + QStringLiteral("): The value of <b>") + name +
           QStringLiteral("</b> must be between ") + min + QStringLiteral(" and ") + max +
           QStringLiteral(" (stepsize ") + step + QStringLiteral(").");
}

QString floatText(const QString& value, const QString& name, const QString& min, const QString& max)
{
    return QStringLiteral("Illegal number (") + value + QStringLiteral("): The value of <b>") + name +
           QStringLiteral("</b> must be between ") + min + QStringLiteral(" and ") + max +
           QStringLiteral(".");
}

QStringList titlesOf(const WarningCatcher& catcher)
{
    QStringList out;
    for (const Warning& w : catcher.warnings())
        out << w.title;
    return out;
}

QStringList textsOf(const WarningCatcher& catcher)
{
    QStringList out;
    for (const Warning& w : catcher.warnings())
        out << w.text;
    return out;
}

} // namespace

TEST_F(CommitTest, anIntegerInRangeReachesTheTreeAsLongLongAndTheViewShowsIt)
{
    tree->integer(nullptr, "Gain").value(3).range(-40, 100).step(1);
    show();
    WarningCatcher catcher;

    edit("Gain", QStringLiteral("42"));
    EXPECT_EQ(calls(), QStringList{QStringLiteral("Gain:long long=42")});
    ASSERT_EQ(tree->calls().size(), 1u);
    EXPECT_TRUE(tree->calls()[0].applied);
    EXPECT_EQ(tree->calls()[0].node, tree->find("Gain"));
    EXPECT_EQ(shown("Gain"), QStringLiteral("42"));
    EXPECT_TRUE(catcher.warnings().isEmpty());
}

TEST_F(CommitTest, anIntegerOutsideTheRangeIsRefusedWithAWarningAndKeepsItsValue)
{
    tree->integer(nullptr, "Gain").value(3).range(-40, 100).step(1);
    show();
    WarningCatcher catcher;

    edit("Gain", QStringLiteral("101"));
    edit("Gain", QStringLiteral("-41"));

    EXPECT_TRUE(calls().isEmpty());
    EXPECT_EQ(shown("Gain"), QStringLiteral("3"));
    ASSERT_EQ(catcher.warnings().size(), 2);
    EXPECT_EQ(titlesOf(catcher),
              (QStringList{QStringLiteral("Parameter Range"), QStringLiteral("Parameter Range")}));
    EXPECT_EQ(
        textsOf(catcher),
        (QStringList{QStringLiteral("Illegal number (101): The value of <b>Gain</b> must be between -40 "
                                    "and 100 (stepsize 1)."),
                     QStringLiteral("Illegal number (-41): The value of <b>Gain</b> must be between -40 "
                                    "and 100 (stepsize 1).")}));
    for (const Warning& w : catcher.warnings()) {
        EXPECT_FALSE(w.hasParent);
        EXPECT_EQ(w.icon, QMessageBox::Warning);
        EXPECT_EQ(w.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    }
}

TEST_F(CommitTest, anIntegerWithoutIncrementCommitsOnlyInASingleValueRange)
{
    tree->integer(nullptr, "Wide").value(0).range(0, 10).step(0);
    tree->integer(nullptr, "Fixed").value(7).range(7, 7).step(0);
    show();
    WarningCatcher catcher;

    edit("Wide", QStringLiteral("5"));
    edit("Fixed", QStringLiteral("7"));

    EXPECT_EQ(calls(), QStringList{QStringLiteral("Fixed:long long=7")});
    EXPECT_EQ(textsOf(catcher), QStringList{rangeText("5", "Wide", "0", "10", "0")});
    EXPECT_EQ(shown("Wide"), QStringLiteral("0"));
}

TEST_F(CommitTest, anIntegerMustLieOnTheIncrementCountedFromTheMinimum)
{
    tree->integer(nullptr, "Odd").value(1).range(1, 99).step(2);
    show();
    WarningCatcher catcher;

    edit("Odd", QStringLiteral("3"));
    edit("Odd", QStringLiteral("5"));
    edit("Odd", QStringLiteral("4"));
    edit("Odd", QStringLiteral("0"));
    edit("Odd", QStringLiteral("-1"));

    EXPECT_EQ(calls(), (QStringList{QStringLiteral("Odd:long long=3"), QStringLiteral("Odd:long long=5")}));
    EXPECT_EQ(textsOf(catcher),
              (QStringList{rangeText("4", "Odd", "1", "99", "2"), rangeText("0", "Odd", "1", "99", "2"),
                           rangeText("-1", "Odd", "1", "99", "2")}));
    EXPECT_EQ(shown("Odd"), QStringLiteral("5"));
}

TEST_F(CommitTest, anIntegerShownInHexIsReportedInDecimal)
{
    tree->integer(nullptr, "Address").value(16).range(16, 255).step(16).representation(pirHexNumber);
    show();
    WarningCatcher catcher;

    edit("Address", QStringLiteral("40"));
    EXPECT_EQ(textsOf(catcher), QStringList{rangeText("40", "Address", "16", "255", "16")});
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(CommitTest, aSignedDifferenceBeyondTheRangeOfTheTypeWrapsBeforeTheIncrementTest)
{
    // The increment test takes value - minimum in wrapping 64-bit arithmetic: the true difference
    // 2^63 + 1 is a multiple of 3, but it wraps to a negative number that is not, so 1 is refused.
    tree->integer(nullptr, "Huge").value(kMinInt).range(kMinInt, kMaxInt).step(3);
    show();
    WarningCatcher catcher;

    edit("Huge", QStringLiteral("1"));
    edit("Huge", QStringLiteral("-9223372036854775805"));

    EXPECT_EQ(calls(), QStringList{QStringLiteral("Huge:long long=-9223372036854775805")});
    EXPECT_EQ(textsOf(catcher),
              QStringList{rangeText("1", "Huge", "-9223372036854775808", "9223372036854775807", "3")});
}

TEST_F(CommitTest, anIncrementOfMinusOneWithTheMostNegativeDifferenceCommitsWithoutTrapping)
{
    tree->integer(nullptr, "Down").value(kMinInt).range(kMinInt, kMaxInt).step(-1);
    show();
    WarningCatcher catcher;

    // 0 - minimum wraps to the most negative 64-bit number.
    edit("Down", QStringLiteral("0"));
    edit("Down", QStringLiteral("5"));

    EXPECT_EQ(calls(), (QStringList{QStringLiteral("Down:long long=0"), QStringLiteral("Down:long long=5")}));
    EXPECT_TRUE(catcher.warnings().isEmpty());
}

TEST_F(CommitTest, uint64ValuesAboveTwoToTheSixtyThreeCompareAndDivideUnsigned)
{
    tree->uint64(nullptr, "Big").value(0).range(0, kMaxUInt).step(2);
    tree->uint64(nullptr, "High")
        .value(9223372036854775808ull)
        .range(9223372036854775808ull, kMaxUInt)
        .step(1);
    show();
    WarningCatcher catcher;

    edit("Big", QStringLiteral("18446744073709551614"));
    edit("Big", QStringLiteral("18446744073709551615"));
    edit("High", QStringLiteral("9223372036854775809"));
    edit("High", QStringLiteral("5"));

    EXPECT_EQ(calls(), (QStringList{QStringLiteral("Big:unsigned long long=18446744073709551614"),
                                    QStringLiteral("High:unsigned long long=9223372036854775809")}));
    EXPECT_EQ(textsOf(catcher),
              (QStringList{rangeText("18446744073709551615", "Big", "0", "18446744073709551615", "2"),
                           rangeText("5", "High", "9223372036854775808", "18446744073709551615", "1")}));
    EXPECT_EQ(titlesOf(catcher),
              (QStringList{QStringLiteral("Parameter Range"), QStringLiteral("Parameter Range")}));
    EXPECT_EQ(shown("Big"), QStringLiteral("18446744073709551614"));
}

TEST_F(CommitTest, uint64WithoutIncrementCommitsOnlyInASingleValueRange)
{
    tree->uint64(nullptr, "Wide").value(0).range(0, 10).step(0);
    tree->uint64(nullptr, "Fixed").value(7).range(7, 7).step(0);
    show();
    WarningCatcher catcher;

    edit("Wide", QStringLiteral("5"));
    edit("Fixed", QStringLiteral("7"));

    EXPECT_EQ(calls(), QStringList{QStringLiteral("Fixed:unsigned long long=7")});
    EXPECT_EQ(textsOf(catcher), QStringList{rangeText("5", "Wide", "0", "10", "0")});
}

TEST_F(CommitTest, aFloatInRangeReachesTheTreeAsDouble)
{
    tree->floating(nullptr, "Exposure").value(0.5).range(0.0, 10.0);
    show();
    WarningCatcher catcher;

    edit("Exposure", QStringLiteral("2.25"));
    EXPECT_EQ(calls(), QStringList{QStringLiteral("Exposure:double=2.25")});
    EXPECT_TRUE(catcher.warnings().isEmpty());
}

TEST_F(CommitTest, aFloatBelowAMinimumTheEditorRoundedAwayIsRefused)
{
    // The editor rounds its bounds to fifteen decimals, so it lets 0 through; the parameter does not.
    tree->floating(nullptr, "Exposure").value(0.5).range(1e-16, 1.0);
    show();
    WarningCatcher catcher;

    edit("Exposure", QStringLiteral("0"));
    EXPECT_TRUE(calls().isEmpty());
    ASSERT_EQ(catcher.warnings().size(), 1);
    EXPECT_EQ(catcher.warnings()[0].title, QStringLiteral("GenICam"));
    EXPECT_EQ(catcher.warnings()[0].text, floatText("0", "Exposure", "1e-16", "1"));
    EXPECT_FALSE(catcher.warnings()[0].hasParent);
    EXPECT_EQ(catcher.warnings()[0].buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

TEST_F(CommitTest, aFloatIsCheckedAgainstTheRangeTheParameterHasWhenCommitted)
{
    auto exposure = tree->floating(nullptr, "Exposure").value(1.0).range(0.0, 10.0).node();
    show();
    WarningCatcher catcher;

    QWidget* editor = open("Exposure");
    ASSERT_TRUE(editor);
    type(editor, QStringLiteral("8.125"));
    // The device narrows the range while the editor is open.
    exposure->setRange(0.0, 5.5);
    tree->notifyChanged(exposure);
    pressEnter(editor);

    EXPECT_TRUE(calls().isEmpty());
    EXPECT_EQ(textsOf(catcher), QStringList{floatText("8.125", "Exposure", "0", "5.5")});
    EXPECT_EQ(titlesOf(catcher), QStringList{QStringLiteral("GenICam")});
}

TEST_F(CommitTest, anEnumerationCommitsTheChosenEntrysValueAsLongLong)
{
    tree->enumeration(nullptr, "Mode")
        .entry("Off", 10, "", peamReadWrite)
        .entry("Hidden", 11, "", peamNotAvailable)
        .entry("On", 12, "", peamReadWrite)
        .value("Off");
    show();
    WarningCatcher catcher;

    auto* combo = qobject_cast<QComboBox*>(open("Mode"));
    ASSERT_TRUE(combo);
    QTest::keyClick(combo, Qt::Key_Down);
    ASSERT_EQ(combo->currentText(), QStringLiteral("On"));
    pressEnter(combo);

    EXPECT_EQ(calls(), QStringList{QStringLiteral("Mode:long long=12")});
    EXPECT_EQ(shown("Mode"), QStringLiteral("On"));
    EXPECT_TRUE(catcher.warnings().isEmpty());
}

TEST_F(CommitTest, anEmptyEnumerationEditorCommitsZero)
{
    tree->enumeration(nullptr, "Mode")
        .entry("A", 4, "", peamNotImplemented)
        .entry("B", 5, "", peamNotAvailable)
        .value("A");
    show();
    WarningCatcher catcher;

    auto* combo = qobject_cast<QComboBox*>(open("Mode"));
    ASSERT_TRUE(combo);
    EXPECT_EQ(combo->count(), 0);
    pressEnter(combo);

    EXPECT_EQ(calls(), QStringList{QStringLiteral("Mode:long long=0")});
    EXPECT_TRUE(catcher.warnings().isEmpty());
}

TEST_F(CommitTest, aStringCommitsItsTextAsUtf8)
{
    tree->string(nullptr, "Name")
        .value("Gr\xc3\xbc\xc3\x9f"
               "e")
        .maxLength(64);
    tree->string(nullptr, "Short").value("").maxLength(4);
    show();
    WarningCatcher catcher;

    // Committed unchanged, the text goes back as the bytes it came as.
    QWidget* editor = open("Name");
    ASSERT_TRUE(editor);
    pressEnter(editor);
    ASSERT_EQ(tree->calls().size(), 1u);
    const std::string* bytes = boost::any_cast<std::string>(&tree->calls()[0].value);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(*bytes, std::string("Gr\xc3\xbc\xc3\x9f"
                                  "e"));

    tree->clearCalls();
    edit("Name", QStringLiteral("Camera 7"));
    // The line edit stops at the maximum length.
    edit("Short", QStringLiteral("abcdef"));
    EXPECT_EQ(calls(), (QStringList{QStringLiteral("Name:std::string=Camera 7"),
                                    QStringLiteral("Short:std::string=abcd")}));
    EXPECT_TRUE(catcher.warnings().isEmpty());
}

TEST_F(CommitTest, theSameValueCommittedTwiceIsWrittenTwice)
{
    tree->integer(nullptr, "Gain").value(3).range(0, 100);
    show();

    edit("Gain", QStringLiteral("42"));
    edit("Gain", QStringLiteral("42"));
    // Enter on the unchanged value writes it as well.
    QWidget* editor = open("Gain");
    ASSERT_TRUE(editor);
    pressEnter(editor);

    EXPECT_EQ(calls(), (QStringList{QStringLiteral("Gain:long long=42"), QStringLiteral("Gain:long long=42"),
                                    QStringLiteral("Gain:long long=42")}));
}

TEST_F(CommitTest, aCommitAfterTheCallbackExpiredIsDroppedSilently)
{
    auto gain = tree->integer(nullptr, "Gain").value(3).range(0, 100).node();
    tree->string(nullptr, "Name").value("cam");
    show();
    WarningCatcher catcher;

    tree->releaseCallback();
    ASSERT_TRUE(tree->root()->getCallback().expired());
    edit("Gain", QStringLiteral("42"));
    edit("Name", QStringLiteral("other"));

    EXPECT_TRUE(calls().isEmpty());
    EXPECT_TRUE(catcher.warnings().isEmpty());
    EXPECT_EQ(gain->getNodeValue(), 3);
    EXPECT_EQ(shown("Gain"), QStringLiteral("3"));
    // The checks come first: a bad value is still refused with its warning.
    edit("Gain", QStringLiteral("101"));
    EXPECT_EQ(titlesOf(catcher), QStringList{QStringLiteral("Parameter Range")});
}

TEST_F(CommitTest, escapeClosesTheEditorWithoutWriting)
{
    tree->integer(nullptr, "Gain").value(3).range(0, 100);
    tree->string(nullptr, "Name").value("cam");
    show();
    WarningCatcher catcher;

    for (const char* name : {"Gain", "Name"}) {
        QWidget* editor = open(name);
        ASSERT_TRUE(editor) << name;
        type(editor, QStringLiteral("77"));
        pressEscape(editor);
        EXPECT_FALSE(view->indexWidget(value(name))) << name;
    }
    EXPECT_TRUE(calls().isEmpty());
    EXPECT_TRUE(catcher.warnings().isEmpty());
    EXPECT_EQ(shown("Gain"), QStringLiteral("3"));
}

TEST_F(CommitTest, aCommitNeverGoesThroughSetData)
{
    tree->integer(nullptr, "Gain").value(3).range(0, 100);
    show();
    QSignalSpy changed(model.get(), &QAbstractItemModel::dataChanged);

    // setModelData called directly: the value goes to the callback only.
    QWidget* editor = open("Gain");
    ASSERT_TRUE(editor);
    type(editor, QStringLiteral("8"));
    delegate->setModelData(editor, nullptr, value("Gain"));
    EXPECT_EQ(calls(), QStringList{QStringLiteral("Gain:long long=8")});
    // The only change notice is the tree's own.
    EXPECT_EQ(changed.count(), 1);
    pressEscape(editor);
}
