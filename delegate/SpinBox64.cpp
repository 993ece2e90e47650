// The 64-bit spin boxes and their validators: the template both are made of, compiled here for the two
// of them, and what the named classes add (construction and their slots).
#include <vorn/delegate/Qt4Int64SpinBox.h>
#include <vorn/delegate/Qt4Int64SpinBoxValidator.h>
#include <vorn/delegate/Qt4UInt64SpinBox.h>
#include <vorn/delegate/Qt4UInt64SpinBoxValidator.h>

#include <QApplication>
#include <QLineEdit>
#include <QLocale>
#include <QStyle>
#include <QStyleOptionSpinBox>

#include <type_traits>

namespace vorn {
namespace core {
namespace detail {

namespace {

template <class Value> struct SpinBox64Number;

template <> struct SpinBox64Number<qint64>
{
    static qint64 convert(const QString& digits, bool* ok) { return digits.toLongLong(ok, 10); }
    static QString format(qint64 v) { return QLocale().toString(static_cast<qlonglong>(v)); }
};

template <> struct SpinBox64Number<quint64>
{
    static quint64 convert(const QString& digits, bool* ok) { return digits.toULongLong(ok, 10); }
    static QString format(quint64 v) { return QLocale().toString(static_cast<qulonglong>(v)); }
};

// The number part of a spin box text: the prefix is removed when the text starts with it and the
// suffix when the text ends with it (both case-sensitive). A text that lacks either keeps that end.
inline QString stripAffixes(const QString& text, const QString& prefix, const QString& suffix)
{
    QString copy = text;
    if (!prefix.isEmpty() && copy.startsWith(prefix))
        copy.remove(0, prefix.size());
    if (!suffix.isEmpty() && copy.endsWith(suffix))
        copy.chop(suffix.size());
    return copy;
}

// Group separators would make the text unreadable for the decimal conversion, which uses the C
// locale's rules, so they are never shown and are dropped from text the user finishes editing.
inline QString withoutGroupSeparators(QString text)
{
    text.remove(QLocale().groupSeparator());
    return text;
}

template <class Value> QString formatNumber(Value v)
{
    return withoutGroupSeparators(SpinBox64Number<Value>::format(v));
}

// The value of a spin box text; an empty number part and an unconvertible one both read as 0.
template <class Value> Value numberFromText(const QString& text, const QString& prefix, const QString& suffix)
{
    const QString digits = stripAffixes(text, prefix, suffix);
    if (digits.isEmpty())
        return 0;
    bool ok = false;
    const Value v = SpinBox64Number<Value>::convert(digits, &ok);
    return ok ? v : Value(0);
}

// Accepts an empty number part (and notes it in textCleared, so that the emptied field stays empty)
// and any number the decimal conversion reads; rejects everything else. Never Intermediate and no
// range check: the range is enforced where the value is committed, not while it is typed.
template <class Value>
QValidator::State validateText(const QString& input, const QString& prefix, const QString& suffix,
                               bool& textCleared)
{
    const QString digits = stripAffixes(input, prefix, suffix);
    if (digits.isEmpty()) {
        textCleared = true;
        return QValidator::Acceptable;
    }
    textCleared = false;
    bool ok = false;
    SpinBox64Number<Value>::convert(digits, &ok);
    return ok ? QValidator::Acceptable : QValidator::Invalid;
}

// The line edit validates whole texts: an edit that removed the prefix or the suffix gets them back
// before the number part is judged.
inline void restoreAffixes(QString& input, const QString& prefix, const QString& suffix)
{
    if (!prefix.isEmpty() && !input.startsWith(prefix))
        input.prepend(prefix);
    if (!suffix.isEmpty() && !input.endsWith(suffix))
        input.append(suffix);
}

// Shows text in the spin box's line edit without feeding it back as user input, keeps the cursor
// inside the number part and repaints the arrow buttons, whose enabled look depends on the value.
inline void showSpinBoxText(QAbstractSpinBox* box, QLineEdit* edit, const QString& prefix,
                            const QString& number, const QString& suffix, QAbstractSpinBox::StepEnabled steps)
{
    Q_ASSERT(box);
    Q_ASSERT(edit);
    const bool wasEmpty = edit->text().isEmpty();
    const int oldCursor = edit->cursorPosition();
    const QString text = prefix + number + suffix;

    const bool wasBlocked = edit->blockSignals(true);
    edit->setText(text);
    int cursor = qMax(prefix.size(), qMin(oldCursor, edit->displayText().size() - suffix.size()));
    if (wasEmpty)
        cursor = prefix.size();
    edit->setCursorPosition(cursor);
    edit->blockSignals(wasBlocked);

    QStyleOptionSpinBox option;
    option.initFrom(box);
    option.stepEnabled = steps;
    option.subControls = QStyle::SC_SpinBoxFrame | QStyle::SC_SpinBoxUp | QStyle::SC_SpinBoxDown;
    option.buttonSymbols = box->buttonSymbols();
    option.frame = box->hasFrame();
    box->update(box->style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, box));
    box->update(box->style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxDown, box));
}

// value + step * steps modulo 2^64. The arithmetic runs on unsigned numbers, where wrapping is
// defined, and the result is read back as Value: for qint64 that is the two's complement wrap of
// the signed sum, with no overflow check by design.
template <class Value> Value steppedValue(Value value, Value step, int steps)
{
    static_assert(sizeof(Value) == 8, "64-bit values only");
    const quint64 product = static_cast<quint64>(step) * static_cast<quint64>(static_cast<qint64>(steps));
    return static_cast<Value>(static_cast<quint64>(value) + product);
}

// a - b modulo 2^64, read back as Value (see steppedValue).
template <class Value> Value wrappingDifference(Value a, Value b)
{
    return static_cast<Value>(static_cast<quint64>(a) - static_cast<quint64>(b));
}

// a + b modulo 2^64, read back as Value (see steppedValue).
template <class Value> Value wrappingSum(Value a, Value b)
{
    return static_cast<Value>(static_cast<quint64>(a) + static_cast<quint64>(b));
}

} // namespace

template <class Value, class Self> struct SpinBox64<Value, Self>::D
{
    Value value = 0;
    Value minimum = 0;
    Value maximum = 99;
    Value singleStep = 1;
    QString prefix;
    QString suffix;
    // Set while the user has emptied the number part; textFromValue then answers an empty text.
    bool textCleared = false;
};

template <class Value, class Self>
SpinBox64<Value, Self>::SpinBox64(QWidget* parent)
    // Nothing here may treat this as a Self yet: the named class is not constructed until this returns.
    : QAbstractSpinBox(parent), d(new D)
{
    updateText();
}

template <class Value, class Self> SpinBox64<Value, Self>::~SpinBox64() = default;

template <class Value, class Self> void SpinBox64<Value, Self>::setUpLineEdit(QValidator* validator)
{
    QFont bold = QApplication::font();
    bold.setWeight(75);
    lineEdit()->setFont(bold);
    lineEdit()->setValidator(validator);
}

template <class Value, class Self> Value SpinBox64<Value, Self>::value() const
{
    return d->value;
}

template <class Value, class Self> Value SpinBox64<Value, Self>::minimum() const
{
    return d->minimum;
}

template <class Value, class Self> Value SpinBox64<Value, Self>::maximum() const
{
    return d->maximum;
}

template <class Value, class Self> Value SpinBox64<Value, Self>::singleStep() const
{
    return d->singleStep;
}

template <class Value, class Self> QString SpinBox64<Value, Self>::prefix() const
{
    return d->prefix;
}

template <class Value, class Self> QString SpinBox64<Value, Self>::suffix() const
{
    return d->suffix;
}

template <class Value, class Self> void SpinBox64<Value, Self>::setRange(Value min, Value max)
{
    d->minimum = min;
    d->maximum = max;
    if (d->value < d->minimum)
        self()->setValue(d->minimum);
    else if (d->value > d->maximum)
        self()->setValue(d->maximum);
}

template <class Value, class Self> void SpinBox64<Value, Self>::setMinimum(Value m)
{
    if (m == d->minimum)
        return;
    setRange(m, qMax(d->maximum, m));
}

template <class Value, class Self> void SpinBox64<Value, Self>::setMaximum(Value m)
{
    if (m == d->maximum)
        return;
    setRange(qMin(d->minimum, m), m);
}

template <class Value, class Self> void SpinBox64<Value, Self>::setSingleStep(Value s)
{
    if (s == 0)
        return;
    d->singleStep = s;
}

template <class Value, class Self> void SpinBox64<Value, Self>::setPrefix(const QString& prefix)
{
    d->prefix = prefix;
    updateText();
}

template <class Value, class Self> void SpinBox64<Value, Self>::setSuffix(const QString& suffix)
{
    d->suffix = suffix;
    updateText();
}

template <class Value, class Self> void SpinBox64<Value, Self>::storeValue(Value v)
{
    d->value = v;
    updateText();
    Q_EMIT self()->valueChanged(v);
    Q_EMIT self()->valueChanged(d->prefix + textFromValue(v) + d->suffix);
}

template <class Value, class Self> QString SpinBox64<Value, Self>::textFromValue(Value v) const
{
    if (d->textCleared)
        return QString();
    return formatNumber(v);
}

template <class Value, class Self> Value SpinBox64<Value, Self>::valueFromText(const QString& text) const
{
    return numberFromText<Value>(text, d->prefix, d->suffix);
}

template <class Value, class Self>
QValidator::State SpinBox64<Value, Self>::validate(QString& input, int& pos) const
{
    Q_UNUSED(pos);
    return validateText<Value>(input, d->prefix, d->suffix, d->textCleared);
}

template <class Value, class Self> void SpinBox64<Value, Self>::fixup(QString& input) const
{
    input = withoutGroupSeparators(input);
}

template <class Value, class Self> void SpinBox64<Value, Self>::takeText(const QString& t)
{
    QString copy = t;
    int pos = lineEdit()->cursorPosition();
    if (validate(copy, pos) == QValidator::Acceptable)
        self()->setValue(valueFromText(copy));
}

template <class Value, class Self> QAbstractSpinBox::StepEnabled SpinBox64<Value, Self>::stepEnabled() const
{
    if (wrapping())
        return StepUpEnabled | StepDownEnabled;
    StepEnabled steps = StepNone;
    if (d->value < d->maximum)
        steps |= StepUpEnabled;
    if (d->value > d->minimum)
        steps |= StepDownEnabled;
    return steps;
}

template <class Value, class Self> void SpinBox64<Value, Self>::stepBy(int steps)
{
    if (steps == 0)
        return;
    const Value old = d->value;
    // Unsigned: a step below 0 wraps to a large number, which the bounding below turns into the maximum.
    Value next = steppedValue(old, d->singleStep, steps);
    if (wrapping()) {
        if constexpr (std::is_signed<Value>::value) {
            // Whatever went past one end comes back in at the other.
            const Value pastMaximum = wrappingDifference(next, d->maximum);
            const Value pastMinimum = wrappingDifference(next, d->minimum);
            if (next > old && pastMaximum >= 1)
                next = wrappingSum(d->minimum, wrappingDifference(pastMaximum, Value(1)));
            else if (next < old && pastMinimum < 0)
                next = wrappingSum(d->maximum, wrappingSum(pastMinimum, Value(1)));
        } else {
            // Only the upward end wraps. The test is that of the signed box carried over to unsigned
            // numbers, where "next - maximum >= 1" means "next differs from maximum"; it is kept as it
            // is, as the delegate never turns wrapping on.
            if (next > old && next - d->maximum != 0)
                next = d->minimum + (next - d->maximum) - 1;
        }
    } else {
        // A sum that wrapped past the 64-bit limit is bounded like any other number.
        next = qMax(d->minimum, qMin(d->maximum, next));
    }
    self()->setValue(next);
    lineEdit()->selectAll();
}

template <class Value, class Self> void SpinBox64<Value, Self>::updateText()
{
    showSpinBoxText(this, lineEdit(), d->prefix, textFromValue(d->value), d->suffix, stepEnabled());
}

template <class Box>
SpinBoxValidator64<Box>::SpinBoxValidator64(Box* spinBox) : QValidator(spinBox), spinBox(spinBox)
{
    Q_ASSERT(spinBox);
}

template <class Box> SpinBoxValidator64<Box>::~SpinBoxValidator64() = default;

template <class Box> QValidator::State SpinBoxValidator64<Box>::validate(QString& input, int& pos) const
{
    restoreAffixes(input, spinBox->prefix(), spinBox->suffix());
    return spinBox->validate(input, pos);
}

template <class Box> void SpinBoxValidator64<Box>::fixup(QString& input) const
{
    spinBox->fixup(input);
}

template class SpinBox64<qint64, Qt4Int64SpinBox>;
template class SpinBox64<quint64, Qt4UInt64SpinBox>;
template class SpinBoxValidator64<Qt4Int64SpinBox>;
template class SpinBoxValidator64<Qt4UInt64SpinBox>;

} // namespace detail
} // namespace core
} // namespace vorn

Qt4Int64SpinBox::Qt4Int64SpinBox(QWidget* parent) : SpinBox64(parent)
{
    setUpLineEdit(new Qt4Int64SpinBoxValidator(this));
    connect(lineEdit(), SIGNAL(textChanged(const QString&)), this, SLOT(editorTextChanged(const QString&)));
}

Qt4Int64SpinBox::~Qt4Int64SpinBox() = default;

void Qt4Int64SpinBox::setValue(qint64 v)
{
    storeValue(v);
}

void Qt4Int64SpinBox::editorTextChanged(const QString& t)
{
    takeText(t);
}

Qt4Int64SpinBoxValidator::Qt4Int64SpinBoxValidator(Qt4Int64SpinBox* spinBox) : SpinBoxValidator64(spinBox) {}

Qt4Int64SpinBoxValidator::~Qt4Int64SpinBoxValidator() = default;

Qt4UInt64SpinBox::Qt4UInt64SpinBox(QWidget* parent) : SpinBox64(parent)
{
    setUpLineEdit(new Qt4UInt64SpinBoxValidator(this));
    connect(lineEdit(), SIGNAL(textChanged(const QString&)), this, SLOT(editorTextChanged(const QString&)));
}

Qt4UInt64SpinBox::~Qt4UInt64SpinBox() = default;

void Qt4UInt64SpinBox::setValue(quint64 v)
{
    storeValue(v);
}

void Qt4UInt64SpinBox::editorTextChanged(const QString& t)
{
    takeText(t);
}

Qt4UInt64SpinBoxValidator::Qt4UInt64SpinBoxValidator(Qt4UInt64SpinBox* spinBox) : SpinBoxValidator64(spinBox)
{}

Qt4UInt64SpinBoxValidator::~Qt4UInt64SpinBoxValidator() = default;
