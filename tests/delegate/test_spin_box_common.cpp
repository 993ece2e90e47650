// Behaviour that the signed and the unsigned 64-bit spin box share, run against both.
#include "SpinBoxTesting.h"

#include "support/Review.h"
#include "support/VirtualSlots.h"

#include <QMetaMethod>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>

using namespace vorn::test;

namespace {

// Collects the regions of the paint events a widget receives.
class PaintRecorder : public QObject
{
public:
    explicit PaintRecorder(QWidget* widget) { widget->installEventFilter(this); }
    QRegion painted;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent*>(event)->region();
        return QObject::eventFilter(watched, event);
    }
};

void sendWheel(QWidget* widget, int angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    const QPointF centre = QRectF(widget->rect()).center();
    QWheelEvent event(centre, widget->mapToGlobal(centre.toPoint()), QPoint(), QPoint(0, angle), Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
}

void clickAt(QWidget* widget, QPoint pos)
{
    QTest::mousePress(widget, Qt::LeftButton, Qt::NoModifier, pos);
    QTest::mouseRelease(widget, Qt::LeftButton, Qt::NoModifier, pos);
}

} // namespace

template <class Traits> class SpinBoxTest : public ::testing::Test
{
protected:
    using Value = typename Traits::Value;
    using Box = Exposed<typename Traits::Box>;

    Box box;
    QLineEdit* edit() { return box.lineEdit(); }
};

using BothBoxes = ::testing::Types<SignedBox, UnsignedBox>;
class BoxNames
{
public:
    template <class T> static std::string GetName(int)
    {
        return std::is_same<T, SignedBox>::value ? "Int64" : "UInt64";
    }
};
TYPED_TEST_SUITE(SpinBoxTest, BothBoxes, BoxNames);

// ----- initial state and the setters -----

TYPED_TEST(SpinBoxTest, newBoxShowsZeroWithRangeZeroToNinetyNineAndStepOne)
{
    EXPECT_EQ(this->edit()->text(), QStringLiteral("0"));
    EXPECT_EQ(this->box.text(), QStringLiteral("0"));
    EXPECT_EQ(this->box.value(), 0u);
    EXPECT_EQ(this->box.minimum(), 0u);
    EXPECT_EQ(this->box.maximum(), 99u);
    EXPECT_EQ(this->box.singleStep(), 1u);
    EXPECT_EQ(this->box.prefix(), QString());
    EXPECT_EQ(this->box.suffix(), QString());
    EXPECT_FALSE(this->box.wrapping());
}

TYPED_TEST(SpinBoxTest, setRangeMovesTheValueToTheMinimumAndEmitsBothSignals)
{
    ValueSpies<TypeParam> spies(&this->box);
    this->box.setRange(5, 10);
    EXPECT_EQ(this->box.minimum(), 5u);
    EXPECT_EQ(this->box.maximum(), 10u);
    EXPECT_EQ(this->box.value(), 5u);
    EXPECT_EQ(this->edit()->text(), QStringLiteral("5"));
    EXPECT_EQ(spies.numbers(), (QList<typename TypeParam::Value>{5}));
    EXPECT_EQ(spies.texts(), QStringList{"5"});
}

TYPED_TEST(SpinBoxTest, setRangeMovesAValueAboveTheRangeToTheMaximum)
{
    this->box.setValue(50);
    ValueSpies<TypeParam> spies(&this->box);
    this->box.setRange(0, 20);
    EXPECT_EQ(this->box.value(), 20u);
    EXPECT_EQ(spies.numbers(), (QList<typename TypeParam::Value>{20}));
    EXPECT_EQ(spies.texts(), QStringList{"20"});
}

TYPED_TEST(SpinBoxTest, setRangeKeepsAValueInsideAndEmitsNothing)
{
    this->box.setValue(7);
    ValueSpies<TypeParam> spies(&this->box);
    this->box.setRange(3, 9);
    EXPECT_EQ(this->box.value(), 7u);
    EXPECT_EQ(spies.number.count(), 0);
    EXPECT_EQ(spies.text.count(), 0);
}

TYPED_TEST(SpinBoxTest, setRangeStoresReversedBoundsAsGivenAndChecksTheMinimumFirst)
{
    ValueSpies<TypeParam> spies(&this->box);
    this->box.setRange(10, 5);
    EXPECT_EQ(this->box.minimum(), 10u);
    EXPECT_EQ(this->box.maximum(), 5u);
    // 0 is below the minimum, so the value goes there, even though that is above the maximum.
    EXPECT_EQ(this->box.value(), 10u);
    EXPECT_EQ(spies.numbers(), (QList<typename TypeParam::Value>{10}));
}

TYPED_TEST(SpinBoxTest, setMinimumRaisesTheMaximumWhenItPassesIt)
{
    this->box.setMinimum(150);
    EXPECT_EQ(this->box.minimum(), 150u);
    EXPECT_EQ(this->box.maximum(), 150u);
    EXPECT_EQ(this->box.value(), 150u);

    this->box.setMinimum(20);
    EXPECT_EQ(this->box.minimum(), 20u);
    EXPECT_EQ(this->box.maximum(), 150u);
    EXPECT_EQ(this->box.value(), 150u);
}

TYPED_TEST(SpinBoxTest, setMinimumToTheCurrentMinimumChangesNothing)
{
    this->box.setRange(10, 20);
    this->box.setValue(3); // below the range: setValue does not check
    ValueSpies<TypeParam> spies(&this->box);
    this->box.setMinimum(10);
    EXPECT_EQ(this->box.value(), 3u);
    EXPECT_EQ(spies.number.count(), 0);
}

TYPED_TEST(SpinBoxTest, setMaximumLowersTheMinimumWhenItPassesIt)
{
    this->box.setRange(40, 60);
    this->box.setMaximum(30);
    EXPECT_EQ(this->box.minimum(), 30u);
    EXPECT_EQ(this->box.maximum(), 30u);
    EXPECT_EQ(this->box.value(), 30u);

    this->box.setMaximum(80);
    EXPECT_EQ(this->box.minimum(), 30u);
    EXPECT_EQ(this->box.maximum(), 80u);
    EXPECT_EQ(this->box.value(), 30u);
}

TYPED_TEST(SpinBoxTest, setMaximumToTheCurrentMaximumChangesNothing)
{
    this->box.setValue(500);
    ValueSpies<TypeParam> spies(&this->box);
    this->box.setMaximum(99);
    EXPECT_EQ(this->box.value(), 500u);
    EXPECT_EQ(spies.number.count(), 0);
}

TYPED_TEST(SpinBoxTest, singleStepOfZeroKeepsThePreviousStep)
{
    this->box.setSingleStep(7);
    this->box.setSingleStep(0);
    EXPECT_EQ(this->box.singleStep(), 7u);
    this->box.stepBy(1);
    EXPECT_EQ(this->box.value(), 7u);
}

TYPED_TEST(SpinBoxTest, setValueStoresAValueOutsideTheRangeAndEmitsBothSignals)
{
    ValueSpies<TypeParam> spies(&this->box);
    this->box.setValue(1000);
    EXPECT_EQ(this->box.value(), 1000u);
    EXPECT_EQ(this->edit()->text(), QStringLiteral("1000"));
    EXPECT_EQ(spies.numbers(), (QList<typename TypeParam::Value>{1000}));
    EXPECT_EQ(spies.texts(), QStringList{"1000"});
}

TYPED_TEST(SpinBoxTest, setValueEmitsBothSignalsAlsoWhenTheValueIsUnchanged)
{
    this->box.setValue(4);
    ValueSpies<TypeParam> spies(&this->box);
    this->box.setValue(4);
    this->box.setValue(4);
    EXPECT_EQ(spies.numbers(), (QList<typename TypeParam::Value>{4, 4}));
    EXPECT_EQ(spies.texts(), (QStringList{"4", "4"}));
}

TYPED_TEST(SpinBoxTest, textSignalCarriesPrefixAndSuffix)
{
    this->box.setPrefix(QStringLiteral("x="));
    this->box.setSuffix(QStringLiteral(" px"));
    ValueSpies<TypeParam> spies(&this->box);
    this->box.setValue(5);
    EXPECT_EQ(spies.texts(), QStringList{"x=5 px"});
    EXPECT_EQ(this->edit()->text(), QStringLiteral("x=5 px"));
}

TYPED_TEST(SpinBoxTest, prefixAndSuffixRefreshTheTextWithoutSignals)
{
    this->box.setValue(12);
    ValueSpies<TypeParam> spies(&this->box);
    QSignalSpy editorText(this->edit(), &QLineEdit::textChanged);
    this->box.setPrefix(QStringLiteral("$"));
    EXPECT_EQ(this->edit()->text(), QStringLiteral("$12"));
    this->box.setSuffix(QStringLiteral(" ms"));
    EXPECT_EQ(this->edit()->text(), QStringLiteral("$12 ms"));
    EXPECT_EQ(this->box.prefix(), QStringLiteral("$"));
    EXPECT_EQ(this->box.suffix(), QStringLiteral(" ms"));
    EXPECT_EQ(spies.number.count(), 0);
    EXPECT_EQ(spies.text.count(), 0);
    EXPECT_EQ(editorText.count(), 0);
}

TYPED_TEST(SpinBoxTest, lineEditUsesTheBoldApplicationFont)
{
    const QFont font = this->edit()->font();
    EXPECT_EQ(font.weight(), 75);
    EXPECT_EQ(font.family(), QApplication::font().family());
    EXPECT_EQ(font.pointSizeF(), QApplication::font().pointSizeF());
}

TYPED_TEST(SpinBoxTest, validatorIsInstalledAndOwnedByTheBox)
{
    const QValidator* validator = this->edit()->validator();
    ASSERT_NE(validator, nullptr);
    EXPECT_NE(dynamic_cast<const typename TypeParam::Validator*>(validator), nullptr);
    EXPECT_EQ(validator->parent(), &this->box);
}

// ----- typing -----

TYPED_TEST(SpinBoxTest, typingAValueOutsideTheRangeIsAcceptedAndBecomesTheValue)
{
    showAndFocus(&this->box);
    this->edit()->selectAll();
    ValueSpies<TypeParam> spies(&this->box);
    QTest::keyClicks(&this->box, QStringLiteral("1000"));
    EXPECT_EQ(this->box.value(), 1000u);
    EXPECT_EQ(this->edit()->text(), QStringLiteral("1000"));
    // Every keystroke becomes the value at once.
    EXPECT_EQ(spies.numbers(), (QList<typename TypeParam::Value>{1, 10, 100, 1000}));
    EXPECT_EQ(spies.texts(), (QStringList{"1", "10", "100", "1000"}));
}

TYPED_TEST(SpinBoxTest, clearingTheTextGivesZeroAndLeavesTheFieldEmpty)
{
    this->box.setValue(42);
    showAndFocus(&this->box);
    this->edit()->selectAll();
    ValueSpies<TypeParam> spies(&this->box);
    QTest::keyClick(&this->box, Qt::Key_Backspace);
    EXPECT_EQ(this->box.value(), 0u);
    EXPECT_EQ(this->edit()->text(), QString());
    EXPECT_EQ(spies.numbers(), (QList<typename TypeParam::Value>{0}));
    EXPECT_EQ(spies.texts(), QStringList{""});
    EXPECT_EQ(this->box.textFromValue(0), QString());
}

TYPED_TEST(SpinBoxTest, clearedFieldShowsNoNumberUntilOneIsTyped)
{
    showAndFocus(&this->box);
    this->edit()->selectAll();
    QTest::keyClick(&this->box, Qt::Key_Backspace);
    ASSERT_EQ(this->edit()->text(), QString());

    // Values set or stepped while the field is cleared are stored but not shown.
    this->box.setValue(7);
    EXPECT_EQ(this->box.value(), 7u);
    EXPECT_EQ(this->edit()->text(), QString());
    this->box.stepBy(1);
    EXPECT_EQ(this->box.value(), 8u);
    EXPECT_EQ(this->edit()->text(), QString());

    QTest::keyClicks(&this->box, QStringLiteral("3"));
    EXPECT_EQ(this->box.value(), 3u);
    EXPECT_EQ(this->edit()->text(), QStringLiteral("3"));
    this->box.setValue(21);
    EXPECT_EQ(this->edit()->text(), QStringLiteral("21"));
}

TYPED_TEST(SpinBoxTest, typingWithAPrefixAddsThePrefixBack)
{
    this->box.setPrefix(QStringLiteral("x"));
    showAndFocus(&this->box);
    this->edit()->selectAll();
    QTest::keyClicks(&this->box, QStringLiteral("5"));
    EXPECT_EQ(this->edit()->text(), QStringLiteral("x5"));
    EXPECT_EQ(this->box.value(), 5u);
}

TYPED_TEST(SpinBoxTest, typingInsideTheNumberKeepsPrefixAndSuffix)
{
    this->box.setPrefix(QStringLiteral("<"));
    this->box.setSuffix(QStringLiteral(" ms"));
    this->box.setValue(12);
    showAndFocus(&this->box);
    this->edit()->setCursorPosition(3); // after "<12"
    QTest::keyClicks(&this->box, QStringLiteral("34"));
    EXPECT_EQ(this->edit()->text(), QStringLiteral("<1234 ms"));
    EXPECT_EQ(this->box.value(), 1234u);
}

TYPED_TEST(SpinBoxTest, typedGroupSeparatorIsRejected)
{
    for (const QLocale& locale :
         {QLocale::c(), QLocale(QLocale::German, QLocale::Germany), QLocale(QLocale::French, QLocale::France),
          QLocale(QLocale::German, QLocale::Switzerland), QLocale(QLocale::Swedish, QLocale::Sweden)}) {
        const std::string name = locale.name().toStdString();
        DefaultLocale guard(locale);
        typename TestFixture::Box box;
        box.setValue(1000);
        showAndFocus(&box);
        box.lineEdit()->setCursorPosition(1);
        ValueSpies<TypeParam> spies(&box);
        typeText(&box, QString(locale.groupSeparator()));
        EXPECT_EQ(box.lineEdit()->text(), QStringLiteral("1000")) << name;
        EXPECT_EQ(box.value(), 1000u) << name;
        EXPECT_EQ(spies.number.count(), 0) << name;
        EXPECT_EQ(spies.text.count(), 0) << name;
        QString grouped = QStringLiteral("1") + locale.groupSeparator() + QStringLiteral("000");
        int pos = 0;
        EXPECT_EQ(box.validate(grouped, pos), QValidator::Invalid) << name;
        // Digits still go in where the separator was refused.
        QTest::keyClicks(&box, QStringLiteral("2"));
        EXPECT_EQ(box.value(), 12000u) << name;
    }
}

TYPED_TEST(SpinBoxTest, typedGroupSeparatorAfterTheNumberIsRejectedUnlessItIsASpace)
{
    // Separators that are not white space never pass. The conversion ignores white space around
    // the number, so a space-like separator typed at the very end passes as such and vanishes when
    // the text is shown again.
    for (const QLocale& locale :
         {QLocale::c(), QLocale(QLocale::German, QLocale::Germany),
          QLocale(QLocale::German, QLocale::Switzerland), QLocale(QLocale::French, QLocale::France),
          QLocale(QLocale::Swedish, QLocale::Sweden)}) {
        const std::string name = locale.name().toStdString();
        DefaultLocale guard(locale);
        const bool space = locale.groupSeparator().isSpace();
        typename TestFixture::Box box;
        box.setValue(5);
        showAndFocus(&box);
        box.lineEdit()->end(false);
        ValueSpies<TypeParam> spies(&box);
        typeText(&box, QString(locale.groupSeparator()));
        EXPECT_EQ(box.lineEdit()->text(), QStringLiteral("5")) << name;
        EXPECT_EQ(box.value(), 5u) << name;
        EXPECT_EQ(spies.number.count(), space ? 1 : 0) << name;
    }
}

TYPED_TEST(SpinBoxTest, typedLettersAreRejected)
{
    this->box.setValue(4);
    showAndFocus(&this->box);
    this->edit()->end(false);
    ValueSpies<TypeParam> spies(&this->box);
    QTest::keyClicks(&this->box, QStringLiteral("ax."));
    EXPECT_EQ(this->edit()->text(), QStringLiteral("4"));
    EXPECT_EQ(this->box.value(), 4u);
    EXPECT_EQ(spies.number.count(), 0);
}

TYPED_TEST(SpinBoxTest, spaceBetweenDigitsIsRejectedButATrailingOneIsDropped)
{
    this->box.setValue(45);
    showAndFocus(&this->box);
    this->edit()->setCursorPosition(1);
    QTest::keyClicks(&this->box, QStringLiteral(" "));
    EXPECT_EQ(this->edit()->text(), QStringLiteral("45"));

    this->edit()->end(false);
    QTest::keyClicks(&this->box, QStringLiteral(" "));
    EXPECT_EQ(this->edit()->text(), QStringLiteral("45"));
    QTest::keyClicks(&this->box, QStringLiteral("6"));
    EXPECT_EQ(this->edit()->text(), QStringLiteral("456"));
    EXPECT_EQ(this->box.value(), 456u);
}

// ----- validation and conversion -----

TYPED_TEST(SpinBoxTest, validateAcceptsNumbersOutsideTheRangeAndNeverAnswersIntermediate)
{
    const struct
    {
        const char* text;
        QValidator::State state;
    } cases[] = {
        {"", QValidator::Acceptable},    {"0", QValidator::Acceptable},   {"99", QValidator::Acceptable},
        {"100", QValidator::Acceptable}, {"+5", QValidator::Acceptable},  {" 12", QValidator::Acceptable},
        {"12 ", QValidator::Acceptable}, {"1 2", QValidator::Invalid},    {"1,0", QValidator::Invalid},
        {"0x10", QValidator::Invalid},   {"abc", QValidator::Invalid},    {"5e3", QValidator::Invalid},
        {"+", QValidator::Invalid},      {"010", QValidator::Acceptable}, {"1.5", QValidator::Invalid}};
    for (const auto& c : cases) {
        QString input = QString::fromLatin1(c.text);
        int pos = input.size();
        EXPECT_EQ(this->box.validate(input, pos), c.state) << c.text;
        EXPECT_EQ(input, QString::fromLatin1(c.text)) << "validate leaves its input alone";
    }
}

TYPED_TEST(SpinBoxTest, validateStripsPrefixAndSuffixCaseSensitively)
{
    this->box.setPrefix(QStringLiteral("Pre"));
    this->box.setSuffix(QStringLiteral("Suf"));
    const struct
    {
        const char* text;
        QValidator::State state;
    } cases[] = {{"Pre5Suf", QValidator::Acceptable}, {"5Suf", QValidator::Acceptable},
                 {"Pre5", QValidator::Acceptable},    {"5", QValidator::Acceptable},
                 {"PreSuf", QValidator::Acceptable},  {"pre5Suf", QValidator::Invalid},
                 {"Pre5suf", QValidator::Invalid},    {"PrePre5Suf", QValidator::Invalid}};
    for (const auto& c : cases) {
        QString input = QString::fromLatin1(c.text);
        int pos = 0;
        EXPECT_EQ(this->box.validate(input, pos), c.state) << c.text;
    }
}

TYPED_TEST(SpinBoxTest, validateOfAnEmptyNumberMarksTheTextClearedAndANumberUnmarksIt)
{
    QString empty;
    int pos = 0;
    this->box.validate(empty, pos);
    EXPECT_EQ(this->box.textFromValue(5), QString());
    QString bad = QStringLiteral("x");
    this->box.validate(bad, pos);
    // An unconvertible number part is not empty: the mark goes.
    EXPECT_EQ(this->box.textFromValue(5), QStringLiteral("5"));
    this->box.validate(empty, pos);
    QString number = QStringLiteral("8");
    this->box.validate(number, pos);
    EXPECT_EQ(this->box.textFromValue(5), QStringLiteral("5"));
}

TYPED_TEST(SpinBoxTest, validatorPutsBackPrefixAndSuffixBeforeJudging)
{
    this->box.setPrefix(QStringLiteral("<"));
    this->box.setSuffix(QStringLiteral(">"));
    const QValidator* validator = this->edit()->validator();
    ASSERT_NE(validator, nullptr);

    QString input = QStringLiteral("5");
    int pos = 1;
    EXPECT_EQ(validator->validate(input, pos), QValidator::Acceptable);
    EXPECT_EQ(input, QStringLiteral("<5>"));

    input = QStringLiteral("<7>");
    EXPECT_EQ(validator->validate(input, pos), QValidator::Acceptable);
    EXPECT_EQ(input, QStringLiteral("<7>"));

    input = QStringLiteral("<7");
    EXPECT_EQ(validator->validate(input, pos), QValidator::Acceptable);
    EXPECT_EQ(input, QStringLiteral("<7>"));

    input = QStringLiteral("q");
    EXPECT_EQ(validator->validate(input, pos), QValidator::Invalid);
    EXPECT_EQ(input, QStringLiteral("<q>"));
}

TYPED_TEST(SpinBoxTest, validatorWithoutAffixesLeavesTheInputAlone)
{
    const QValidator* validator = this->edit()->validator();
    QString input = QStringLiteral("17");
    int pos = 2;
    EXPECT_EQ(validator->validate(input, pos), QValidator::Acceptable);
    EXPECT_EQ(input, QStringLiteral("17"));
    EXPECT_EQ(pos, 2);
}

TYPED_TEST(SpinBoxTest, fixupRemovesTheDefaultLocalesGroupSeparatorsOnly)
{
    QString c = QStringLiteral("1,234,567.8");
    this->box.fixup(c);
    EXPECT_EQ(c, QStringLiteral("1234567.8"));

    DefaultLocale german(QLocale(QLocale::German, QLocale::Germany));
    QString de = QStringLiteral("1.234.567,8");
    this->box.fixup(de);
    EXPECT_EQ(de, QStringLiteral("1234567,8"));

    // The validator hands fixing up to the spin box.
    QString viaValidator = QStringLiteral("9.876");
    this->edit()->validator()->fixup(viaValidator);
    EXPECT_EQ(viaValidator, QStringLiteral("9876"));
}

TYPED_TEST(SpinBoxTest, valueFromTextStripsAffixesAndReadsEmptyOrBadTextAsZero)
{
    EXPECT_EQ(this->box.valueFromText(QStringLiteral("42")), 42u);
    EXPECT_EQ(this->box.valueFromText(QStringLiteral("+42")), 42u);
    EXPECT_EQ(this->box.valueFromText(QStringLiteral(" 42 ")), 42u);
    EXPECT_EQ(this->box.valueFromText(QString()), 0u);
    EXPECT_EQ(this->box.valueFromText(QStringLiteral("4x2")), 0u);
    EXPECT_EQ(this->box.valueFromText(QStringLiteral("1,000")), 0u);

    this->box.setPrefix(QStringLiteral("v="));
    this->box.setSuffix(QStringLiteral("Hz"));
    EXPECT_EQ(this->box.valueFromText(QStringLiteral("v=42Hz")), 42u);
    EXPECT_EQ(this->box.valueFromText(QStringLiteral("42Hz")), 42u);
    EXPECT_EQ(this->box.valueFromText(QStringLiteral("v=42")), 42u);
    EXPECT_EQ(this->box.valueFromText(QStringLiteral("v=Hz")), 0u);
    EXPECT_EQ(this->box.valueFromText(QStringLiteral("V=42Hz")), 0u);
}

TYPED_TEST(SpinBoxTest, textFromValueUsesTheDefaultLocaleWithoutGroupSeparators)
{
    for (const QLocale& locale :
         {QLocale::c(), QLocale(QLocale::German, QLocale::Germany), QLocale(QLocale::French, QLocale::France),
          QLocale(QLocale::German, QLocale::Switzerland), QLocale(QLocale::English, QLocale::India)}) {
        DefaultLocale guard(locale);
        EXPECT_EQ(this->box.textFromValue(1234567), QStringLiteral("1234567")) << locale.name().toStdString();
        EXPECT_EQ(this->box.textFromValue(0), QStringLiteral("0"));
    }
}

TYPED_TEST(SpinBoxTest, editorTextChangedSetsTheValueOnlyForAcceptableText)
{
    ValueSpies<TypeParam> spies(&this->box);
    this->box.editorTextChanged(QStringLiteral("17"));
    EXPECT_EQ(this->box.value(), 17u);
    EXPECT_EQ(this->edit()->text(), QStringLiteral("17"));
    this->box.editorTextChanged(QStringLiteral("1x7"));
    EXPECT_EQ(this->box.value(), 17u);
    EXPECT_EQ(spies.numbers(), (QList<typename TypeParam::Value>{17}));
}

// ----- the editor text -----

TYPED_TEST(SpinBoxTest, refreshingTheTextDoesNotFeedItBackAsInput)
{
    QSignalSpy editorText(this->edit(), &QLineEdit::textChanged);
    ValueSpies<TypeParam> spies(&this->box);
    this->box.setValue(33);
    EXPECT_EQ(editorText.count(), 0);
    EXPECT_EQ(spies.number.count(), 1);
    EXPECT_FALSE(this->edit()->signalsBlocked());

    // A blocking that was there before is left in place.
    this->edit()->blockSignals(true);
    this->box.setValue(34);
    EXPECT_TRUE(this->edit()->signalsBlocked());
    this->edit()->blockSignals(false);
    EXPECT_EQ(this->edit()->text(), QStringLiteral("34"));
}

TYPED_TEST(SpinBoxTest, cursorStaysBetweenPrefixAndSuffixWhenTheTextIsRefreshed)
{
    this->box.setPrefix(QStringLiteral("$"));
    this->box.setSuffix(QStringLiteral(" kg"));
    this->box.setValue(5);
    ASSERT_EQ(this->edit()->text(), QStringLiteral("$5 kg"));

    this->edit()->setCursorPosition(5); // at the very end, inside the suffix
    this->box.setValue(123);
    EXPECT_EQ(this->edit()->text(), QStringLiteral("$123 kg"));
    EXPECT_EQ(this->edit()->cursorPosition(), 4); // end of the number

    this->edit()->setCursorPosition(0); // before the prefix
    this->box.setValue(9);
    EXPECT_EQ(this->edit()->cursorPosition(), 1);

    this->edit()->setCursorPosition(3); // inside the suffix of "$9 kg"
    this->box.setValue(4567);           // "$4567 kg": the number now reaches past it
    EXPECT_EQ(this->edit()->cursorPosition(), 3);

    this->edit()->setCursorPosition(5); // end of "$4567"
    this->box.setValue(1);              // "$1 kg": bounded to the end of the shorter number
    EXPECT_EQ(this->edit()->cursorPosition(), 2);
}

TYPED_TEST(SpinBoxTest, refreshingAnEmptyFieldPutsTheCursorAfterThePrefix)
{
    showAndFocus(&this->box);
    this->edit()->selectAll();
    QTest::keyClick(&this->box, Qt::Key_Backspace);
    ASSERT_TRUE(this->edit()->text().isEmpty());
    this->box.setPrefix(QStringLiteral("No."));
    EXPECT_EQ(this->edit()->text(), QStringLiteral("No."));
    EXPECT_EQ(this->edit()->cursorPosition(), 3);
}

TYPED_TEST(SpinBoxTest, arrowButtonsAreRepaintedWhenTheValueChanges)
{
    this->box.setValue(50);
    showAndFocus(&this->box);
    QTest::qWait(20);
    PaintRecorder recorder(&this->box);
    this->box.setValue(99);
    QTest::qWait(20);
    const QRect up = this->box.buttonRect(QStyle::SC_SpinBoxUp);
    const QRect down = this->box.buttonRect(QStyle::SC_SpinBoxDown);
    ASSERT_FALSE(up.isEmpty());
    ASSERT_FALSE(down.isEmpty());
    EXPECT_TRUE(recorder.painted.contains(up));
    EXPECT_TRUE(recorder.painted.contains(down));
}

TYPED_TEST(SpinBoxTest, arrowLookFollowsTheEnabledSteps)
{
    // The arrows are drawn disabled at the bounds only where the style asks for it.
    if (!this->box.style()->styleHint(QStyle::SH_SpinControls_DisableOnBounds, nullptr, &this->box))
        GTEST_SKIP() << "style draws enabled arrows at the bounds";
    showAndFocus(&this->box);
    const QRect up = this->box.buttonRect(QStyle::SC_SpinBoxUp);
    this->box.setValue(50);
    const QImage middle = this->box.grab().toImage().copy(up);
    this->box.setValue(99);
    const QImage atMaximum = this->box.grab().toImage().copy(up);
    EXPECT_NE(middle, atMaximum);
}

// ----- stepping -----

TYPED_TEST(SpinBoxTest, stepEnabledFollowsTheBoundsOrWrapping)
{
    using SE = QAbstractSpinBox::StepEnabled;
    this->box.setRange(10, 20);
    EXPECT_EQ(this->box.stepEnabled(), SE(QAbstractSpinBox::StepUpEnabled));
    this->box.setValue(15);
    EXPECT_EQ(this->box.stepEnabled(),
              SE(QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled));
    this->box.setValue(20);
    EXPECT_EQ(this->box.stepEnabled(), SE(QAbstractSpinBox::StepDownEnabled));
    this->box.setValue(25);
    EXPECT_EQ(this->box.stepEnabled(), SE(QAbstractSpinBox::StepDownEnabled));
    this->box.setValue(5);
    EXPECT_EQ(this->box.stepEnabled(), SE(QAbstractSpinBox::StepUpEnabled));
    this->box.setRange(7, 7);
    this->box.setValue(7);
    EXPECT_EQ(this->box.stepEnabled(), SE(QAbstractSpinBox::StepNone));
    this->box.setWrapping(true);
    EXPECT_EQ(this->box.stepEnabled(),
              SE(QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled));
}

TYPED_TEST(SpinBoxTest, stepByZeroDoesNothing)
{
    this->box.setValue(3);
    ValueSpies<TypeParam> spies(&this->box);
    this->box.stepBy(0);
    EXPECT_EQ(this->box.value(), 3u);
    EXPECT_EQ(spies.number.count(), 0);
    EXPECT_EQ(spies.text.count(), 0);
}

TYPED_TEST(SpinBoxTest, stepByMultipliesTheStepAndStaysInTheRange)
{
    this->box.setSingleStep(7);
    ValueSpies<TypeParam> spies(&this->box);
    this->box.stepBy(3);
    EXPECT_EQ(this->box.value(), 21u);
    this->box.stepBy(20);
    EXPECT_EQ(this->box.value(), 99u);
    this->box.stepBy(-2);
    EXPECT_EQ(this->box.value(), 85u);
    this->box.setValue(10);
    this->box.stepBy(-1);
    EXPECT_EQ(this->box.value(), 3u);
    EXPECT_EQ(spies.numbers(), (QList<typename TypeParam::Value>{21, 99, 85, 10, 3}));
    EXPECT_EQ(spies.texts(), (QStringList{"21", "99", "85", "10", "3"}));
}

TYPED_TEST(SpinBoxTest, stepBySelectsTheWholeText)
{
    this->box.setPrefix(QStringLiteral("#"));
    this->box.stepBy(1);
    EXPECT_EQ(this->edit()->selectedText(), QStringLiteral("#1"));
}

TYPED_TEST(SpinBoxTest, wrappingStepLandingExactlyOnTheMaximumStaysThere)
{
    this->box.setWrapping(true);
    this->box.setRange(0, 10);
    this->box.setValue(5);
    this->box.setSingleStep(5);
    this->box.stepBy(1);
    EXPECT_EQ(this->box.value(), 10u);
}

TYPED_TEST(SpinBoxTest, upAndDownKeysStepBySingleSteps)
{
    this->box.setSingleStep(3);
    this->box.setValue(50);
    showAndFocus(&this->box);
    QTest::keyClick(&this->box, Qt::Key_Up);
    EXPECT_EQ(this->box.value(), 53u);
    QTest::keyClick(&this->box, Qt::Key_Up);
    EXPECT_EQ(this->box.value(), 56u);
    QTest::keyClick(&this->box, Qt::Key_Down);
    EXPECT_EQ(this->box.value(), 53u);
    EXPECT_EQ(this->edit()->text(), QStringLiteral("53"));
}

TYPED_TEST(SpinBoxTest, pageKeysStepByTenSteps)
{
    this->box.setSingleStep(2);
    this->box.setValue(40);
    showAndFocus(&this->box);
    QTest::keyClick(&this->box, Qt::Key_PageUp);
    EXPECT_EQ(this->box.value(), 60u);
    QTest::keyClick(&this->box, Qt::Key_PageDown);
    QTest::keyClick(&this->box, Qt::Key_PageDown);
    EXPECT_EQ(this->box.value(), 20u);
    QTest::keyClick(&this->box, Qt::Key_PageDown);
    EXPECT_EQ(this->box.value(), 0u);
}

TYPED_TEST(SpinBoxTest, keysDoNothingBeyondTheBounds)
{
    this->box.setValue(99);
    showAndFocus(&this->box);
    ValueSpies<TypeParam> spies(&this->box);
    QTest::keyClick(&this->box, Qt::Key_Up);
    QTest::keyClick(&this->box, Qt::Key_PageUp);
    EXPECT_EQ(spies.number.count(), 0);
    this->box.setValue(0);
    spies.clear();
    QTest::keyClick(&this->box, Qt::Key_Down);
    QTest::keyClick(&this->box, Qt::Key_PageDown);
    EXPECT_EQ(spies.number.count(), 0);
    EXPECT_EQ(this->box.value(), 0u);
}

TYPED_TEST(SpinBoxTest, mouseWheelStepsAndStepsTenfoldWithControl)
{
    this->box.setValue(50);
    showAndFocus(&this->box);
    sendWheel(&this->box, 120);
    EXPECT_EQ(this->box.value(), 51u);
    sendWheel(&this->box, -120);
    sendWheel(&this->box, -120);
    EXPECT_EQ(this->box.value(), 49u);
    sendWheel(&this->box, 120, Qt::ControlModifier);
    EXPECT_EQ(this->box.value(), 59u);
    // Half notches add up to a step.
    sendWheel(&this->box, 60);
    EXPECT_EQ(this->box.value(), 59u);
    sendWheel(&this->box, 60);
    EXPECT_EQ(this->box.value(), 60u);
}

TYPED_TEST(SpinBoxTest, arrowButtonsStepOnClick)
{
    this->box.setValue(10);
    showAndFocus(&this->box);
    const QRect up = this->box.buttonRect(QStyle::SC_SpinBoxUp);
    const QRect down = this->box.buttonRect(QStyle::SC_SpinBoxDown);
    clickAt(&this->box, up.center());
    EXPECT_EQ(this->box.value(), 11u);
    clickAt(&this->box, up.center());
    EXPECT_EQ(this->box.value(), 12u);
    clickAt(&this->box, down.center());
    EXPECT_EQ(this->box.value(), 11u);

    this->box.setValue(99);
    clickAt(&this->box, up.center());
    EXPECT_EQ(this->box.value(), 99u);
}

// ----- class shape -----

TYPED_TEST(SpinBoxTest, ownVirtualOperationsFollowTheBaseClassTable)
{
    using Box = typename TypeParam::Box;
    using Probe = Exposed<Box>;
    const std::ptrdiff_t lastOfBase = virtualSlot(&Probe::stepEnabled);
    ASSERT_GT(lastOfBase, 0);
    EXPECT_EQ(virtualSlot(&Box::textFromValue), lastOfBase + 1);
    EXPECT_EQ(virtualSlot(&Box::valueFromText), lastOfBase + 2);
    EXPECT_EQ(virtualSlot(&Box::validate), virtualSlot(&QAbstractSpinBox::validate));
    EXPECT_EQ(virtualSlot(&Box::fixup), virtualSlot(&QAbstractSpinBox::fixup));
    EXPECT_EQ(virtualSlot(&Box::stepBy), virtualSlot(&QAbstractSpinBox::stepBy));
}

TYPED_TEST(SpinBoxTest, metaObjectHasBothSignalsThenBothSlots)
{
    const QMetaObject* meta = this->box.metaObject();
    const char* number = std::is_same<TypeParam, SignedBox>::value ? "qlonglong" : "qulonglong";
    ASSERT_EQ(meta->methodCount() - meta->methodOffset(), 4);
    const int first = meta->methodOffset();
    EXPECT_EQ(meta->method(first).methodSignature(), QByteArray("valueChanged(") + number + ")");
    EXPECT_EQ(meta->method(first).methodType(), QMetaMethod::Signal);
    EXPECT_EQ(meta->method(first + 1).methodSignature(), QByteArray("valueChanged(QString)"));
    EXPECT_EQ(meta->method(first + 1).methodType(), QMetaMethod::Signal);
    EXPECT_EQ(meta->method(first + 2).methodSignature(), QByteArray("setValue(") + number + ")");
    EXPECT_EQ(meta->method(first + 2).methodType(), QMetaMethod::Slot);
    EXPECT_EQ(meta->method(first + 3).methodSignature(), QByteArray("editorTextChanged(QString)"));
    EXPECT_EQ(meta->method(first + 3).methodType(), QMetaMethod::Slot);
    EXPECT_EQ(QByteArray(meta->className()),
              QByteArray(std::is_same<TypeParam, SignedBox>::value ? "Qt4Int64SpinBox" : "Qt4UInt64SpinBox"));
}

// ----- looks -----

TEST(SpinBoxLookTest, rendersTheLargestValuesForReview)
{
    // A desktop-sized font, as the editors get in a view; see the command button grab.
    const QFont saved = QApplication::font();
    QFont desktop = saved;
    desktop.setPointSize(9);
    QApplication::setFont(desktop);
    struct RestoreFont
    {
        QFont font;
        ~RestoreFont() { QApplication::setFont(font); }
    } restore{saved};

    Exposed<Qt4Int64SpinBox> smallest;
    smallest.setRange(std::numeric_limits<qint64>::min(), 0);
    smallest.setValue(std::numeric_limits<qint64>::min());
    Exposed<Qt4UInt64SpinBox> largest;
    largest.setRange(0, std::numeric_limits<quint64>::max());
    largest.setValue(std::numeric_limits<quint64>::max());
    largest.setSuffix(QStringLiteral(" B"));
    ASSERT_EQ(smallest.text(), QStringLiteral("-9223372036854775808"));
    ASSERT_EQ(largest.text(), QStringLiteral("18446744073709551615 B"));

    QImage sheet(260, 2 * 28, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    {
        QPainter painter(&sheet);
        int y = 0;
        for (QAbstractSpinBox* box :
             {static_cast<QAbstractSpinBox*>(&smallest), static_cast<QAbstractSpinBox*>(&largest)}) {
            box->resize(250, 24);
            showAndFocus(box);
            box->resize(250, 24);
            QTest::qWait(10);
            painter.drawImage(QPoint(5, y + 2), box->grab().toImage());
            y += 28;
        }
    }
    // The number is drawn: the text area is not one flat colour.
    const QImage text = sheet.copy(QRect(10, 6, 150, 16)).convertToFormat(QImage::Format_Grayscale8);
    int darkest = 255;
    for (int y = 0; y < text.height(); ++y)
        for (int x = 0; x < text.width(); ++x)
            darkest = qMin<int>(darkest, text.pixelColor(x, y).value());
    EXPECT_LT(darkest, 100);
    saveForReview(sheet.scaled(sheet.size() * 3), QStringLiteral("spin-boxes-64-bit"));
}
