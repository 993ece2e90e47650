#pragma once

// What the signed and the unsigned 64-bit spin boxes and their validators are made of, over the value
// type (qint64 or quint64) and the named class. Meta-object classes cannot be templates: the named
// classes hold the signals and slots (and forward the slots here), everything else is written once.

#include <vorn/base/VornExport.h>

#include <QAbstractSpinBox>
#include <QString>
#include <QValidator>
#include <QtGlobal>

#include <boost/shared_ptr.hpp>

namespace vorn {
namespace core {
namespace detail {

// The box is deliberately permissive while the user types: every text whose number part converts
// becomes the value at once, even outside minimum..maximum, and setValue stores any value. The range
// and the increment are checked when the edited value is committed to the parameter. Stepping stays
// inside the range (or wraps around it when wrapping is on) and uses wrapping 64-bit arithmetic.
//
// Emptying the number part sets the value to 0 but leaves the field empty until a number is typed
// again, so that the user can start afresh without a 0 getting in the way.
template <class Value, class Self> class VORN_PARAMETERSQT4_API SpinBox64 : public QAbstractSpinBox
{
public:
    ~SpinBox64() override;

    QValidator::State validate(QString& input, int& pos) const override;
    void fixup(QString& input) const override;
    void stepBy(int steps) override;

    Value value() const;
    Value minimum() const;
    Value maximum() const;
    Value singleStep() const;
    QString prefix() const;
    QString suffix() const;

    // Stores both bounds as given (no swap when min > max), then moves the value into them.
    void setRange(Value min, Value max);
    void setMinimum(Value m);
    void setMaximum(Value m);
    // A step of 0 would make the arrows do nothing and is ignored; negative steps are kept.
    void setSingleStep(Value s);
    void setPrefix(const QString& prefix);
    void setSuffix(const QString& suffix);

    virtual QString textFromValue(Value v) const;
    virtual Value valueFromText(const QString& text) const;

protected:
    explicit SpinBox64(QWidget* parent);

    StepEnabled stepEnabled() const override;

    // The named box's constructor: the bold font of the line edit, then its validator.
    void setUpLineEdit(QValidator* validator);
    // What the named box's slots do. setValue stores v without a range check and emits both
    // valueChanged signals, also when v is unchanged.
    void storeValue(Value v);
    void takeText(const QString& t);

private:
    void updateText();
    Self* self() { return static_cast<Self*>(this); }

    struct D;
    boost::shared_ptr<D> d;
};

// The line-edit validator of a 64-bit spin box: puts back a prefix or suffix that an edit removed and
// leaves the judgement of the number to the spin box.
template <class Box> class VORN_PARAMETERSQT4_API SpinBoxValidator64 : public QValidator
{
public:
    ~SpinBoxValidator64() override;

    State validate(QString& input, int& pos) const override;
    void fixup(QString& input) const override;

protected:
    // The spin box is also the validator's parent, so it outlives the validator.
    explicit SpinBoxValidator64(Box* spinBox);

private:
    Box* spinBox;
};

} // namespace detail
} // namespace core
} // namespace vorn
