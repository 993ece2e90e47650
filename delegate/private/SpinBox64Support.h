#pragma once

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <QLocale>
#include <QString>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QValidator>
#include <QtGlobal>

#include <type_traits>

// What Qt4Int64SpinBox and Qt4UInt64SpinBox have in common. Meta-object classes cannot be
// templates, so the two spin boxes stay concrete classes and share their text handling and the
// 64-bit step arithmetic through these function templates instead.
namespace vorn {
namespace core {
namespace detail {

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

} // namespace detail
} // namespace core
} // namespace vorn
