#include <vorn/delegate/Qt4Int64SpinBox.h>

#include <vorn/delegate/Qt4Int64SpinBoxValidator.h>
#include <vorn/delegate/private/SpinBox64Support.h>

#include <QApplication>
#include <QLineEdit>

using namespace vorn::core::detail;

struct Qt4Int64SpinBox::D
{
    explicit D(Qt4Int64SpinBox* owner) : owner(owner) {}

    Qt4Int64SpinBox* owner;
    qint64 value = 0;
    qint64 minimum = 0;
    qint64 maximum = 99;
    qint64 singleStep = 1;
    QString prefix;
    QString suffix;
    // Set while the user has emptied the number part; textFromValue then answers an empty text.
    bool textCleared = false;
};

Qt4Int64SpinBox::Qt4Int64SpinBox(QWidget* parent) : QAbstractSpinBox(parent), d(new D(this))
{
    updateText();

    QFont bold = QApplication::font();
    bold.setWeight(75);
    lineEdit()->setFont(bold);

    lineEdit()->setValidator(new Qt4Int64SpinBoxValidator(this));
    connect(lineEdit(), SIGNAL(textChanged(const QString&)), this, SLOT(editorTextChanged(const QString&)));
}

Qt4Int64SpinBox::~Qt4Int64SpinBox() = default;

qint64 Qt4Int64SpinBox::value() const
{
    return d->value;
}

qint64 Qt4Int64SpinBox::minimum() const
{
    return d->minimum;
}

qint64 Qt4Int64SpinBox::maximum() const
{
    return d->maximum;
}

qint64 Qt4Int64SpinBox::singleStep() const
{
    return d->singleStep;
}

QString Qt4Int64SpinBox::prefix() const
{
    return d->prefix;
}

QString Qt4Int64SpinBox::suffix() const
{
    return d->suffix;
}

void Qt4Int64SpinBox::setRange(qint64 min, qint64 max)
{
    d->minimum = min;
    d->maximum = max;
    if (d->value < d->minimum)
        setValue(d->minimum);
    else if (d->value > d->maximum)
        setValue(d->maximum);
}

void Qt4Int64SpinBox::setMinimum(qint64 m)
{
    if (m == d->minimum)
        return;
    setRange(m, qMax(d->maximum, m));
}

void Qt4Int64SpinBox::setMaximum(qint64 m)
{
    if (m == d->maximum)
        return;
    setRange(qMin(d->minimum, m), m);
}

void Qt4Int64SpinBox::setSingleStep(qint64 s)
{
    if (s == 0)
        return;
    d->singleStep = s;
}

void Qt4Int64SpinBox::setPrefix(const QString& prefix)
{
    d->prefix = prefix;
    updateText();
}

void Qt4Int64SpinBox::setSuffix(const QString& suffix)
{
    d->suffix = suffix;
    updateText();
}

void Qt4Int64SpinBox::setValue(qint64 v)
{
    d->value = v;
    updateText();
    Q_EMIT valueChanged(v);
    Q_EMIT valueChanged(d->prefix + textFromValue(v) + d->suffix);
}

QString Qt4Int64SpinBox::textFromValue(qint64 v) const
{
    if (d->textCleared)
        return QString();
    return formatNumber(v);
}

qint64 Qt4Int64SpinBox::valueFromText(const QString& text) const
{
    return numberFromText<qint64>(text, d->prefix, d->suffix);
}

QValidator::State Qt4Int64SpinBox::validate(QString& input, int& pos) const
{
    Q_UNUSED(pos);
    return validateText<qint64>(input, d->prefix, d->suffix, d->textCleared);
}

void Qt4Int64SpinBox::fixup(QString& input) const
{
    input = withoutGroupSeparators(input);
}

void Qt4Int64SpinBox::editorTextChanged(const QString& t)
{
    QString copy = t;
    int pos = lineEdit()->cursorPosition();
    if (validate(copy, pos) == QValidator::Acceptable)
        setValue(valueFromText(copy));
}

QAbstractSpinBox::StepEnabled Qt4Int64SpinBox::stepEnabled() const
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

void Qt4Int64SpinBox::stepBy(int steps)
{
    if (steps == 0)
        return;
    const qint64 old = d->value;
    qint64 next = steppedValue(old, d->singleStep, steps);
    if (wrapping()) {
        // Whatever went past one end comes back in at the other.
        const qint64 pastMaximum = wrappingDifference(next, d->maximum);
        const qint64 pastMinimum = wrappingDifference(next, d->minimum);
        if (next > old && pastMaximum >= 1)
            next = wrappingSum(d->minimum, wrappingDifference(pastMaximum, qint64(1)));
        else if (next < old && pastMinimum < 0)
            next = wrappingSum(d->maximum, wrappingSum(pastMinimum, qint64(1)));
    } else {
        // A sum that wrapped past the 64-bit limit is bounded like any other number.
        next = qMax(d->minimum, qMin(d->maximum, next));
    }
    setValue(next);
    lineEdit()->selectAll();
}

void Qt4Int64SpinBox::updateText()
{
    showSpinBoxText(this, lineEdit(), d->prefix, textFromValue(d->value), d->suffix, stepEnabled());
}
