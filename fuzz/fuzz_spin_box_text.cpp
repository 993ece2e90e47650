// The 64-bit spin boxes' text handling under arbitrary input: validate, valueFromText, textFromValue,
// fixup, the line-edit validator, prefixes and suffixes of any characters, several locales, typing
// into the line edit and stepping. Nothing may crash, and every answer must agree with a plain
// reading of the text.
//
// Input: a header of five bytes (box, locale, encoding, wrapping; prefix and suffix lengths; range;
// step count), then text: prefix, suffix and up to eight edits separated by line feeds.
#include "FuzzSupport.h"

#include "delegate/SpinBoxKinds.h"

#include <QLineEdit>
#include <QLocale>
#include <QStringList>

#include <limits>

using vorn::fuzz::FuzzInput;
using vorn::test::Exposed;
using vorn::test::numberPart;
using Signed = vorn::test::SignedBox;
using Unsigned = vorn::test::UnsignedBox;

namespace {

QLocale localeNumber(int n)
{
    switch (n) {
    case 0:
        return QLocale::c();
    case 1:
        return QLocale(QLocale::German, QLocale::Germany); // '.' groups
    case 2:
        return QLocale(QLocale::French, QLocale::France); // no-break space groups
    case 3:
        return QLocale(QLocale::German, QLocale::Switzerland); // apostrophe groups
    case 4:
        return QLocale(QLocale::Arabic, QLocale::Egypt); // own digits and minus sign
    case 5:
        return QLocale(QLocale::Hindi, QLocale::India);
    case 6:
        return QLocale(QLocale::Swedish, QLocale::Sweden); // minus sign U+2212
    default:
        return QLocale(QLocale::English, QLocale::UnitedStates);
    }
}

template <class Kind> void checkText(Exposed<typename Kind::Box>& box, const QString& text)
{
    using Value = typename Kind::Value;
    const QString prefix = box.prefix();
    const QString suffix = box.suffix();
    const QString number = numberPart(text, prefix, suffix);
    const QChar separator = QLocale().groupSeparator();
    bool converts = false;
    const Value converted = Kind::convert(number, &converts);
    const QByteArray shown = text.toUtf8();

    QString input = text;
    int pos = input.size();
    const QValidator::State state = box.validate(input, pos);
    FUZZ_CHECK(input == text, "validate changed the text '%s'", shown.constData());
    FUZZ_CHECK(state != QValidator::Intermediate, "Intermediate for '%s'", shown.constData());
    FUZZ_CHECK((state == QValidator::Acceptable) == (number.isEmpty() || converts), "state %d for '%s'",
               int(state), shown.constData());
    FUZZ_CHECK(box.valueFromText(text) == (converts ? converted : Value(0)), "valueFromText of '%s'",
               shown.constData());

    // Locales with digits or a minus sign of their own show numbers that the decimal reading does not
    // take back; the box keeps the locale's look there and the round trip holds for the others.
    const bool roundTrips =
        QLocale().zeroDigit() == QLatin1Char('0') && QLocale().negativeSign() == QLatin1Char('-');
    if (state == QValidator::Acceptable && !number.isEmpty() && roundTrips) {
        const QString own = box.textFromValue(box.valueFromText(text));
        FUZZ_CHECK(!own.contains(separator), "group separator shown for '%s'", shown.constData());
        FUZZ_CHECK(box.valueFromText(prefix + own + suffix) == converted, "'%s' does not read back",
                   shown.constData());
    }

    QString fixed = text;
    box.fixup(fixed);
    FUZZ_CHECK(fixed == QString(text).remove(separator), "fixup of '%s'", shown.constData());

    const QValidator* validator = box.lineEdit()->validator();
    FUZZ_CHECK(validator, "no validator");
    QString viaValidator = text;
    int validatorPos = viaValidator.size();
    const QValidator::State validatorState = validator->validate(viaValidator, validatorPos);
    FUZZ_CHECK(viaValidator.startsWith(prefix) && viaValidator.endsWith(suffix),
               "the validator lost an affix of '%s'", shown.constData());
    QString again = viaValidator;
    int againPos = 0;
    FUZZ_CHECK(validatorState == box.validate(again, againPos), "validator and box disagree on '%s'",
               shown.constData());
}

template <class Kind> void run(FuzzInput& in, std::uint8_t mode)
{
    using Value = typename Kind::Value;
    const int prefixLength = in.range(0, 6);
    const int suffixLength = in.range(0, 6);
    const int rangeKind = in.range(0, 3);
    const int steps = static_cast<signed char>(in.byte());
    const bool wrapping = mode & 0x40;

    const QByteArray text = in.rest();
    QString all;
    if (mode & 0x20) {
        // Any 16-bit units, unpaired surrogates included.
        all.resize(text.size() / 2);
        std::memcpy(all.data(), text.constData(), static_cast<std::size_t>(all.size()) * 2);
    } else {
        all = QString::fromUtf8(text);
    }
    const QString prefix = all.left(prefixLength);
    all.remove(0, prefix.size());
    const QString suffix = all.left(suffixLength);
    all.remove(0, suffix.size());
    const QStringList edits = all.split(QLatin1Char('\n')).mid(0, 8);

    Exposed<typename Kind::Box> box;
    box.setPrefix(prefix);
    box.setSuffix(suffix);
    box.setWrapping(wrapping);
    Value minimum = 0, maximum = 99;
    switch (rangeKind) {
    case 1:
        minimum = std::numeric_limits<Value>::min();
        maximum = std::numeric_limits<Value>::max();
        break;
    case 2:
        minimum = maximum = 7;
        break;
    case 3:
        minimum = Value(5);
        maximum = Value(std::numeric_limits<Value>::max() - 5);
        break;
    default:
        break;
    }
    box.setRange(minimum, maximum);
    box.setSingleStep(Value(steps ? steps : 1));

    for (const QString& edit : edits) {
        checkText<Kind>(box, edit);
        // As if typed or pasted over the whole field: the value follows an accepted text.
        box.lineEdit()->selectAll();
        box.lineEdit()->insert(edit);
        const QString now = box.lineEdit()->text();
        QString check = now;
        int checkPos = 0;
        if (box.validate(check, checkPos) == QValidator::Acceptable &&
            !numberPart(now, prefix, suffix).isEmpty())
            FUZZ_CHECK(box.value() == box.valueFromText(now), "value does not follow the text");
        // A step lands inside the range (a typed value may lie outside it; no step leaves it there).
        box.stepBy(steps);
        if (!wrapping && steps != 0)
            FUZZ_CHECK(box.value() >= minimum && box.value() <= maximum, "stepped out of range");
        checkText<Kind>(box, box.lineEdit()->text());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzInput in(data, size);
    const std::uint8_t mode = in.byte();
    const QLocale saved;
    QLocale::setDefault(localeNumber((mode >> 1) & 7));
    if (mode & 1)
        run<Unsigned>(in, mode);
    else
        run<Signed>(in, mode);
    QLocale::setDefault(saved);
    return 0;
}
