// Random texts against the text handling of both spin boxes: nothing may crash, and every answer
// must agree with a plain reading of the text.
#include "SpinBoxTesting.h"

#include <random>
#include <string>

using namespace vorn::test;

namespace {

constexpr int kTexts = 4000;

class TextSource
{
public:
    TextSource(std::uint32_t seed, QString prefix, QString suffix)
        : random(seed), prefix(std::move(prefix)), suffix(std::move(suffix))
    {}

    QString next()
    {
        QString text;
        const int pieces = pick(0, 6);
        for (int i = 0; i < pieces; ++i)
            text += piece();
        return text;
    }

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

    QString digits(int count)
    {
        QString out;
        for (int i = 0; i < count; ++i)
            out += QChar('0' + pick(0, 9));
        return out;
    }

    QString fragment(const QString& whole)
    {
        if (whole.isEmpty())
            return QString();
        const int from = pick(0, whole.size() - 1);
        return whole.mid(from, pick(1, whole.size() - from));
    }

    QString piece()
    {
        static const QString letters = QStringLiteral("abcxyzABCXYZeE");
        static const QString limits[] = {
            QStringLiteral("9223372036854775807"),  QStringLiteral("9223372036854775808"),
            QStringLiteral("-9223372036854775808"), QStringLiteral("-9223372036854775809"),
            QStringLiteral("18446744073709551615"), QStringLiteral("18446744073709551616"),
        };
        switch (pick(0, 13)) {
        case 0:
        case 1:
            return digits(pick(1, 6));
        case 2:
            return digits(pick(15, 21));
        case 3:
            return digits(pick(40, 300)); // very long run
        case 4:
            return QStringLiteral("-");
        case 5:
            return QStringLiteral("+");
        case 6:
            return QString(QLocale().groupSeparator());
        case 7:
            return pick(0, 1) ? prefix : fragment(prefix);
        case 8:
            return pick(0, 1) ? suffix : fragment(suffix);
        case 9:
            return QString(pick(1, 2), QLatin1Char(' '));
        case 10:
            return QString(letters.at(pick(0, letters.size() - 1)));
        case 11:
            return limits[pick(0, 5)];
        case 12:
            return QString(QChar(pick(0, 1) ? 0x00A0 : 0x2212)); // no-break space, minus sign
        default:
            return QStringLiteral(".");
        }
    }

    std::mt19937 random;
    QString prefix;
    QString suffix;
};

template <class Traits> void fuzz(std::uint32_t seed, const QString& prefix, const QString& suffix)
{
    using Value = typename Traits::Value;
    Exposed<typename Traits::Box> box;
    box.setRange(0, 99);
    box.setPrefix(prefix);
    box.setSuffix(suffix);
    const QValidator* validator = box.lineEdit()->validator();
    ASSERT_NE(validator, nullptr);
    const QChar separator = QLocale().groupSeparator();

    TextSource source(seed, prefix, suffix);
    int acceptable = 0;
    for (int i = 0; i < kTexts; ++i) {
        const QString text = source.next();
        const std::string shown = text.toStdString();

        const QString number = numberPart(text, prefix, suffix);
        bool converts = false;
        const Value converted = Traits::convert(number, &converts);

        QString input = text;
        int pos = input.size();
        const QValidator::State state = box.validate(input, pos);
        ASSERT_EQ(input, text) << shown;
        ASSERT_NE(state, QValidator::Intermediate) << shown;
        ASSERT_EQ(state == QValidator::Acceptable, number.isEmpty() || converts) << shown;
        acceptable += state == QValidator::Acceptable;

        ASSERT_EQ(box.valueFromText(text), converts ? converted : Value(0)) << shown;

        // What was accepted and is not empty reads back to the same value from its own text.
        if (state == QValidator::Acceptable && !number.isEmpty()) {
            const QString shownText = box.textFromValue(box.valueFromText(text));
            ASSERT_EQ(box.valueFromText(prefix + shownText + suffix), converted) << shown;
            ASSERT_FALSE(shownText.contains(separator)) << shown;
        }

        QString fixed = text;
        box.fixup(fixed);
        ASSERT_FALSE(fixed.contains(separator)) << shown;
        ASSERT_EQ(fixed, QString(text).remove(separator)) << shown;

        QString viaValidator = text;
        int validatorPos = viaValidator.size();
        const QValidator::State validatorState = validator->validate(viaValidator, validatorPos);
        ASSERT_TRUE(viaValidator.startsWith(prefix)) << shown;
        ASSERT_TRUE(viaValidator.endsWith(suffix)) << shown;
        QString again = viaValidator;
        int againPos = 0;
        ASSERT_EQ(validatorState, box.validate(again, againPos)) << shown;

        // Every tenth text also goes through the line edit as if pasted; the value then follows
        // the accepted text.
        if (i % 10 == 0) {
            box.lineEdit()->selectAll();
            box.lineEdit()->insert(text);
            const QString now = box.lineEdit()->text();
            QString check = now;
            int checkPos = 0;
            if (box.validate(check, checkPos) == QValidator::Acceptable &&
                !numberPart(now, prefix, suffix).isEmpty()) {
                ASSERT_EQ(box.value(), box.valueFromText(now)) << shown;
            }
        }
    }
    // The generator must reach both answers often, or the run proves little.
    EXPECT_GT(acceptable, kTexts / 10);
    EXPECT_LT(acceptable, kTexts * 9 / 10);
}

} // namespace

TEST(SpinBoxFuzzTest, signedTextHandlingAgreesWithAPlainReading)
{
    fuzz<SignedBox>(12345, QString(), QString());
}

TEST(SpinBoxFuzzTest, signedTextHandlingWithPrefixAndSuffix)
{
    fuzz<SignedBox>(12346, QStringLiteral("pre "), QStringLiteral(" suf"));
}

TEST(SpinBoxFuzzTest, signedTextHandlingInAGermanLocale)
{
    DefaultLocale german(QLocale(QLocale::German, QLocale::Germany));
    fuzz<SignedBox>(12347, QStringLiteral("x"), QStringLiteral("%"));
}

TEST(SpinBoxFuzzTest, unsignedTextHandlingAgreesWithAPlainReading)
{
    fuzz<UnsignedBox>(12345, QString(), QString());
}

TEST(SpinBoxFuzzTest, unsignedTextHandlingWithPrefixAndSuffix)
{
    fuzz<UnsignedBox>(12346, QStringLiteral("pre "), QStringLiteral(" suf"));
}

TEST(SpinBoxFuzzTest, unsignedTextHandlingInAFrenchLocale)
{
    DefaultLocale french(QLocale(QLocale::French, QLocale::France));
    fuzz<UnsignedBox>(12347, QStringLiteral("#"), QStringLiteral(" Hz"));
}
