#include <vorn/delegate/Qt4UInt64SpinBox.h>

#include <vorn/delegate/Qt4UInt64SpinBoxValidator.h>
#include <vorn/delegate/private/SpinBox64Support.h>

#include <QApplication>
#include <QLineEdit>

using namespace vorn::core::detail;

struct Qt4UInt64SpinBox::D
{
    explicit D(Qt4UInt64SpinBox* owner) : owner(owner) {}

    Qt4UInt64SpinBox* owner;
    quint64 value = 0;
    quint64 minimum = 0;
    quint64 maximum = 99;
    quint64 singleStep = 1;
    QString prefix;
    QString suffix;
    // Set while the user has emptied the number part; textFromValue then answers an empty text.
    bool textCleared = false;
};

Qt4UInt64SpinBox::Qt4UInt64SpinBox(QWidget* parent) : QAbstractSpinBox(parent), d(new D(this))
{
    updateText();

    QFont bold = QApplication::font();
    bold.setWeight(75);
    lineEdit()->setFont(bold);

    lineEdit()->setValidator(new Qt4UInt64SpinBoxValidator(this));
    connect(lineEdit(), SIGNAL(textChanged(const QString&)), this, SLOT(editorTextChanged(const QString&)));
}

Qt4UInt64SpinBox::~Qt4UInt64SpinBox() = default;

quint64 Qt4UInt64SpinBox::value() const
{
    return d->value;
}

quint64 Qt4UInt64SpinBox::minimum() const
{
    return d->minimum;
}

quint64 Qt4UInt64SpinBox::maximum() const
{
    return d->maximum;
}

quint64 Qt4UInt64SpinBox::singleStep() const
{
    return d->singleStep;
}

QString Qt4UInt64SpinBox::prefix() const
{
    return d->prefix;
}

QString Qt4UInt64SpinBox::suffix() const
{
    return d->suffix;
}

void Qt4UInt64SpinBox::setRange(quint64 min, quint64 max)
{
    d->minimum = min;
    d->maximum = max;
    if (d->value < d->minimum)
        setValue(d->minimum);
    else if (d->value > d->maximum)
        setValue(d->maximum);
}

void Qt4UInt64SpinBox::setMinimum(quint64 m)
{
    if (m == d->minimum)
        return;
    setRange(m, qMax(d->maximum, m));
}

void Qt4UInt64SpinBox::setMaximum(quint64 m)
{
    if (m == d->maximum)
        return;
    setRange(qMin(d->minimum, m), m);
}

void Qt4UInt64SpinBox::setSingleStep(quint64 s)
{
    if (s == 0)
        return;
    d->singleStep = s;
}

void Qt4UInt64SpinBox::setPrefix(const QString& prefix)
{
    d->prefix = prefix;
    updateText();
}

void Qt4UInt64SpinBox::setSuffix(const QString& suffix)
{
    d->suffix = suffix;
    updateText();
}

void Qt4UInt64SpinBox::setValue(quint64 v)
{
    d->value = v;
    updateText();
    Q_EMIT valueChanged(v);
    Q_EMIT valueChanged(d->prefix + textFromValue(v) + d->suffix);
}

QString Qt4UInt64SpinBox::textFromValue(quint64 v) const
{
    if (d->textCleared)
        return QString();
    return formatNumber(v);
}

quint64 Qt4UInt64SpinBox::valueFromText(const QString& text) const
{
    return numberFromText<quint64>(text, d->prefix, d->suffix);
}

QValidator::State Qt4UInt64SpinBox::validate(QString& input, int& pos) const
{
    Q_UNUSED(pos);
    return validateText<quint64>(input, d->prefix, d->suffix, d->textCleared);
}

void Qt4UInt64SpinBox::fixup(QString& input) const
{
    input = withoutGroupSeparators(input);
}

void Qt4UInt64SpinBox::editorTextChanged(const QString& t)
{
    QString copy = t;
    int pos = lineEdit()->cursorPosition();
    if (validate(copy, pos) == QValidator::Acceptable)
        setValue(valueFromText(copy));
}

QAbstractSpinBox::StepEnabled Qt4UInt64SpinBox::stepEnabled() const
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

void Qt4UInt64SpinBox::stepBy(int steps)
{
    if (steps == 0)
        return;
    const quint64 old = d->value;
    // A step below 0 wraps to a large number, which the bounding below turns into the maximum.
    quint64 next = steppedValue(old, d->singleStep, steps);
    if (wrapping()) {
        // Only the upward end wraps. The test is that of the signed box carried over to unsigned
        // numbers, where "next - maximum >= 1" means "next differs from maximum"; it is kept as it
        // is, as the delegate never turns wrapping on.
        if (next > old && next - d->maximum != 0)
            next = d->minimum + (next - d->maximum) - 1;
    } else {
        next = qMax(d->minimum, qMin(d->maximum, next));
    }
    setValue(next);
    lineEdit()->selectAll();
}

void Qt4UInt64SpinBox::updateText()
{
    showSpinBoxText(this, lineEdit(), d->prefix, textFromValue(d->value), d->suffix, stepEnabled());
}
