// What only the unsigned 64-bit spin box does: values above 2^63, unsigned comparisons and the
// unsigned step arithmetic with its upward-only wrapping.
#include "SpinBoxTesting.h"

using namespace vorn::test;

namespace {

using Box = Exposed<Qt4UInt64SpinBox>;
constexpr quint64 kMax = std::numeric_limits<quint64>::max();
constexpr quint64 kHalf = Q_UINT64_C(1) << 63;

} // namespace

TEST(Qt4UInt64SpinBoxTest, steppingBelowZeroGivesTheMaximumNotTheMinimum)
{
    Box box;
    box.setMinimum(1);
    box.setValue(2);
    box.setSingleStep(5);
    ValueSpies<UnsignedBox> spies(&box);
    box.stepBy(-1);
    EXPECT_EQ(box.value(), 99u);
    EXPECT_EQ(spies.numbers(), QList<quint64>{99});
    EXPECT_EQ(spies.texts(), QStringList{"99"});
}

TEST(Qt4UInt64SpinBoxTest, steppingDownWithinTheRangeStaysAboveZero)
{
    Box box;
    box.setValue(10);
    box.setSingleStep(2);
    box.stepBy(-3);
    EXPECT_EQ(box.value(), 4u);
}

TEST(Qt4UInt64SpinBoxTest, steppingPastTheUnsignedMaximumWrapsToZeroAndIsBounded)
{
    Box box;
    box.setRange(3, kMax);
    box.setValue(kMax);
    box.stepBy(1); // 0 after the wrap, bounded to the minimum
    EXPECT_EQ(box.value(), 3u);
}

TEST(Qt4UInt64SpinBoxTest, valuesAboveTwoToTheSixtyThreeCompareUnsigned)
{
    Box box;
    box.setRange(0, kMax);
    box.setValue(kHalf);
    EXPECT_EQ(box.stepEnabled(), QAbstractSpinBox::StepEnabled(QAbstractSpinBox::StepUpEnabled |
                                                               QAbstractSpinBox::StepDownEnabled));
    box.setSingleStep(Q_UINT64_C(1) << 62);
    box.stepBy(1);
    EXPECT_EQ(box.value(), kHalf + (Q_UINT64_C(1) << 62));
    EXPECT_EQ(box.text(), QStringLiteral("13835058055282163712"));
    box.stepBy(1); // 2^64 wraps to 0, the minimum
    EXPECT_EQ(box.value(), 0u);

    // A range above 2^63 moves small values up, not down.
    box.setRange(kHalf, kHalf + 10);
    EXPECT_EQ(box.value(), kHalf);
    EXPECT_EQ(box.text(), QStringLiteral("9223372036854775808"));
}

TEST(Qt4UInt64SpinBoxTest, stepsReachTheUnsignedMaximumExactly)
{
    Box box;
    box.setRange(0, kMax);
    box.setValue(kMax - 10);
    box.setSingleStep(5);
    box.stepBy(2);
    EXPECT_EQ(box.value(), kMax);
    EXPECT_EQ(box.text(), QStringLiteral("18446744073709551615"));
    EXPECT_EQ(box.stepEnabled(), QAbstractSpinBox::StepEnabled(QAbstractSpinBox::StepDownEnabled));
}

TEST(Qt4UInt64SpinBoxTest, textOfTheUnsignedLimitsIsComplete)
{
    Box box;
    EXPECT_EQ(box.textFromValue(kMax), QStringLiteral("18446744073709551615"));
    EXPECT_EQ(box.valueFromText(QStringLiteral("18446744073709551615")), kMax);
    EXPECT_EQ(box.valueFromText(QStringLiteral("9223372036854775808")), kHalf);
    EXPECT_EQ(box.valueFromText(QStringLiteral("18446744073709551616")), 0u);
    EXPECT_EQ(box.valueFromText(QStringLiteral("-1")), 0u);
}

TEST(Qt4UInt64SpinBoxTest, validateRejectsEverySign)
{
    Box box;
    for (const char* text : {"-1", "-0", "-", "18446744073709551616"}) {
        QString input = QString::fromLatin1(text);
        int pos = 0;
        EXPECT_EQ(box.validate(input, pos), QValidator::Invalid) << text;
    }
    for (const char* text : {"+1", "18446744073709551615", "9223372036854775808"}) {
        QString input = QString::fromLatin1(text);
        int pos = 0;
        EXPECT_EQ(box.validate(input, pos), QValidator::Acceptable) << text;
    }
}

TEST(Qt4UInt64SpinBoxTest, typingAboveTheSignedLimitsUpToTheUnsignedMaximum)
{
    Box box;
    showAndFocus(&box);
    box.lineEdit()->selectAll();
    QTest::keyClicks(&box, QStringLiteral("9223372036854775808"));
    EXPECT_EQ(box.value(), kHalf);

    box.lineEdit()->selectAll();
    QTest::keyClicks(&box, QStringLiteral("18446744073709551615"));
    EXPECT_EQ(box.value(), kMax);
    QTest::keyClicks(&box, QStringLiteral("0"));
    EXPECT_EQ(box.lineEdit()->text(), QStringLiteral("18446744073709551615"));
    EXPECT_EQ(box.value(), kMax);

    QTest::keyClick(&box, Qt::Key_Home);
    QTest::keyClicks(&box, QStringLiteral("-"));
    EXPECT_EQ(box.lineEdit()->text(), QStringLiteral("18446744073709551615"));
}

TEST(Qt4UInt64SpinBoxTest, wrappingMapsEveryUpwardStepNotEndingOnTheMaximum)
{
    // The upward wrap fires whenever the new value differs from the maximum, also inside the range.
    Box box;
    box.setWrapping(true);
    box.setValue(10);
    box.stepBy(1); // 0 + (11 - 99) - 1 modulo 2^64
    EXPECT_EQ(box.value(), Q_UINT64_C(18446744073709551527));

    box.setValue(98);
    box.stepBy(1);
    EXPECT_EQ(box.value(), 99u);
}

TEST(Qt4UInt64SpinBoxTest, wrappingHasNoDownwardWrapAndNoBounds)
{
    Box box;
    box.setWrapping(true);
    box.setRange(5, 99);
    box.setValue(6);
    box.setSingleStep(3);
    box.stepBy(-1); // below the minimum, kept as it is
    EXPECT_EQ(box.value(), 3u);
}

TEST(Qt4UInt64SpinBoxTest, wrappingBelowZeroGoesThroughTheUpwardTest)
{
    // 0 - 1 wraps to 2^64 - 1, which is "greater" than the old value and therefore wrapped upward.
    Box box;
    box.setWrapping(true);
    box.setValue(0);
    box.stepBy(-1);
    EXPECT_EQ(box.value(), kMax - 99 - 1);
}

TEST(Qt4UInt64SpinBoxTest, keysWorkAboveTheSignedLimit)
{
    Box box;
    box.setRange(kHalf - 5, kMax);
    box.setValue(kHalf - 1);
    showAndFocus(&box);
    QTest::keyClick(&box, Qt::Key_Up);
    EXPECT_EQ(box.value(), kHalf);
    EXPECT_EQ(box.lineEdit()->text(), QStringLiteral("9223372036854775808"));
    QTest::keyClick(&box, Qt::Key_PageUp);
    EXPECT_EQ(box.value(), kHalf + 10);
    QTest::keyClick(&box, Qt::Key_PageDown);
    QTest::keyClick(&box, Qt::Key_PageDown);
    EXPECT_EQ(box.value(), kHalf - 5);
}
