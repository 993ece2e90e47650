// What only the signed 64-bit spin box does: negative numbers, the signed limits and wrapping at
// both ends.
#include "SpinBoxTesting.h"

using namespace vorn::test;

namespace {

using Box = Exposed<Qt4Int64SpinBox>;
constexpr qint64 kMax = std::numeric_limits<qint64>::max();
constexpr qint64 kMin = std::numeric_limits<qint64>::min();

} // namespace

TEST(Qt4Int64SpinBoxTest, steppingPastTheSignedMaximumWrapsNegativeAndIsBoundedToTheMinimum)
{
    Box box;
    box.setRange(-5, kMax);
    box.setValue(kMax);
    ValueSpies<SignedBox> spies(&box);
    box.stepBy(10);
    EXPECT_EQ(box.value(), -5);
    EXPECT_EQ(spies.numbers(), QList<qint64>{-5});
    EXPECT_EQ(spies.texts(), QStringList{"-5"});
}

TEST(Qt4Int64SpinBoxTest, wrappedSumIsBoundedEvenWhenTheRangeDoesNotHoldTheValue)
{
    // 0..99 does not contain the value; the wrapped sum is simply bounded like any other number.
    Box box;
    box.setValue(kMax);
    box.stepBy(1);
    EXPECT_EQ(box.value(), 0);
}

TEST(Qt4Int64SpinBoxTest, steppingBelowTheSignedMinimumWrapsPositiveAndIsBoundedToTheMaximum)
{
    Box box;
    box.setRange(kMin, 1000);
    box.setValue(kMin);
    box.stepBy(-1);
    EXPECT_EQ(box.value(), 1000);
}

TEST(Qt4Int64SpinBoxTest, stepsReachTheSignedLimitsExactly)
{
    Box box;
    box.setRange(kMin, kMax);
    box.setValue(kMax - 3);
    box.setSingleStep(3);
    box.stepBy(1);
    EXPECT_EQ(box.value(), kMax);
    EXPECT_EQ(box.text(), QStringLiteral("9223372036854775807"));
    box.setValue(kMin + 3);
    box.stepBy(-1);
    EXPECT_EQ(box.value(), kMin);
    EXPECT_EQ(box.text(), QStringLiteral("-9223372036854775808"));
}

TEST(Qt4Int64SpinBoxTest, hugeStepTimesStepCountWrapsLikeThe64BitProduct)
{
    Box box;
    box.setRange(kMin, kMax);
    box.setSingleStep(Q_INT64_C(1) << 62);
    box.stepBy(2); // 2^63 wraps to the minimum
    EXPECT_EQ(box.value(), kMin);
    box.stepBy(-3); // -2^63 - 3 * 2^62 is -2^62 modulo 2^64
    EXPECT_EQ(box.value(), -(Q_INT64_C(1) << 62));
}

TEST(Qt4Int64SpinBoxTest, steppingBelowTheMinimumIsBoundedToTheMinimum)
{
    Box box;
    box.setValue(3);
    box.setSingleStep(7);
    ValueSpies<SignedBox> spies(&box);
    box.stepBy(-1);
    EXPECT_EQ(box.value(), 0);
    EXPECT_EQ(spies.texts(), QStringList{"0"});
}

TEST(Qt4Int64SpinBoxTest, negativeSingleStepIsKeptAndStepsTheOtherWay)
{
    Box box;
    box.setSingleStep(-2);
    EXPECT_EQ(box.singleStep(), -2);
    box.setValue(10);
    box.stepBy(1);
    EXPECT_EQ(box.value(), 8);
    box.stepBy(-3);
    EXPECT_EQ(box.value(), 14);
}

TEST(Qt4Int64SpinBoxTest, wrappingCarriesTheOverhangToTheOtherEnd)
{
    Box box;
    box.setWrapping(true);
    box.setRange(-10, 10);
    box.setSingleStep(5);

    box.setValue(9);
    box.stepBy(1); // 14 is 4 past the maximum: minimum + 4 - 1
    EXPECT_EQ(box.value(), -7);

    box.setValue(-9);
    box.stepBy(-1); // -14 is 4 below the minimum: maximum - 4 + 1
    EXPECT_EQ(box.value(), 7);

    box.setValue(-5);
    box.stepBy(-1); // exactly the minimum: no wrap
    EXPECT_EQ(box.value(), -10);
}

TEST(Qt4Int64SpinBoxTest, wrappingDoesNotBoundAnOverhangLargerThanTheRange)
{
    Box box;
    box.setWrapping(true);
    box.setRange(0, 10);
    box.setSingleStep(50);
    box.setValue(5);
    box.stepBy(1); // 55: 45 past the maximum gives 0 + 45 - 1
    EXPECT_EQ(box.value(), 44);
}

TEST(Qt4Int64SpinBoxTest, wrappingOverTheFullRangeFollowsThe64BitWrap)
{
    Box box;
    box.setWrapping(true);
    box.setRange(kMin, kMax);
    box.setValue(kMax);
    box.stepBy(1);
    EXPECT_EQ(box.value(), kMin);
    box.stepBy(-1);
    EXPECT_EQ(box.value(), kMax);
}

TEST(Qt4Int64SpinBoxTest, negativeNumbersUseTheLocaleMinusSign)
{
    Box box;
    box.setRange(-100, 100);
    box.setValue(-42);
    EXPECT_EQ(box.text(), QStringLiteral("-42"));
    DefaultLocale swedish(QLocale(QLocale::Swedish, QLocale::Sweden));
    EXPECT_EQ(box.textFromValue(-1234567), QStringLiteral("\u22121234567"));
}

TEST(Qt4Int64SpinBoxTest, textOfTheSignedLimitsIsComplete)
{
    Box box;
    EXPECT_EQ(box.textFromValue(kMax), QStringLiteral("9223372036854775807"));
    EXPECT_EQ(box.textFromValue(kMin), QStringLiteral("-9223372036854775808"));
    EXPECT_EQ(box.valueFromText(QStringLiteral("9223372036854775807")), kMax);
    EXPECT_EQ(box.valueFromText(QStringLiteral("-9223372036854775808")), kMin);
    // One beyond either limit does not convert and reads as 0.
    EXPECT_EQ(box.valueFromText(QStringLiteral("9223372036854775808")), 0);
    EXPECT_EQ(box.valueFromText(QStringLiteral("-9223372036854775809")), 0);
}

TEST(Qt4Int64SpinBoxTest, validateAcceptsNegativeNumbersAndMinusZero)
{
    Box box;
    for (const char* text : {"-1", "-0", "-9223372036854775808", "9223372036854775807"}) {
        QString input = QString::fromLatin1(text);
        int pos = 0;
        EXPECT_EQ(box.validate(input, pos), QValidator::Acceptable) << text;
    }
    for (const char* text : {"-", "--1", "9223372036854775808", "-9223372036854775809", "1-"}) {
        QString input = QString::fromLatin1(text);
        int pos = 0;
        EXPECT_EQ(box.validate(input, pos), QValidator::Invalid) << text;
    }
}

TEST(Qt4Int64SpinBoxTest, typingTheSignedMaximumWorksAndOneMoreDigitIsRejected)
{
    Box box;
    showAndFocus(&box);
    box.lineEdit()->selectAll();
    QTest::keyClicks(&box, QStringLiteral("9223372036854775807"));
    EXPECT_EQ(box.value(), kMax);
    QTest::keyClicks(&box, QStringLiteral("0"));
    EXPECT_EQ(box.lineEdit()->text(), QStringLiteral("9223372036854775807"));
    EXPECT_EQ(box.value(), kMax);
}

TEST(Qt4Int64SpinBoxTest, aLoneMinusIsRejectedButAMinusBeforeDigitsIsAccepted)
{
    Box box;
    showAndFocus(&box);
    box.lineEdit()->selectAll();
    QTest::keyClick(&box, Qt::Key_Backspace);
    ASSERT_TRUE(box.lineEdit()->text().isEmpty());
    // Every text must convert as it stands, so a number is typed first and signed afterwards.
    QTest::keyClicks(&box, QStringLiteral("-"));
    EXPECT_TRUE(box.lineEdit()->text().isEmpty());

    QTest::keyClicks(&box, QStringLiteral("922337203685477580"));
    QTest::keyClick(&box, Qt::Key_Home);
    QTest::keyClicks(&box, QStringLiteral("-"));
    EXPECT_EQ(box.value(), -Q_INT64_C(922337203685477580));
    QTest::keyClick(&box, Qt::Key_End);
    QTest::keyClicks(&box, QStringLiteral("8"));
    EXPECT_EQ(box.value(), kMin);
    EXPECT_EQ(box.lineEdit()->text(), QStringLiteral("-9223372036854775808"));
    // Past the minimum the digit is refused.
    QTest::keyClicks(&box, QStringLiteral("0"));
    EXPECT_EQ(box.value(), kMin);
}

TEST(Qt4Int64SpinBoxTest, stepEnabledComparesSigned)
{
    Box box;
    box.setRange(-10, 10);
    box.setValue(-10);
    EXPECT_EQ(box.stepEnabled(), QAbstractSpinBox::StepEnabled(QAbstractSpinBox::StepUpEnabled));
    box.setValue(kMin);
    EXPECT_EQ(box.stepEnabled(), QAbstractSpinBox::StepEnabled(QAbstractSpinBox::StepUpEnabled));
}

TEST(Qt4Int64SpinBoxTest, keysStepAcrossZeroIntoNegativeNumbers)
{
    Box box;
    box.setRange(-50, 50);
    box.setValue(1);
    showAndFocus(&box);
    QTest::keyClick(&box, Qt::Key_Down);
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(box.value(), -1);
    EXPECT_EQ(box.lineEdit()->text(), QStringLiteral("-1"));
    QTest::keyClick(&box, Qt::Key_PageDown);
    EXPECT_EQ(box.value(), -11);
}
