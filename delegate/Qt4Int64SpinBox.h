#pragma once

#include <vorn/base/VornExport.h>

#include <QAbstractSpinBox>
#include <QString>
#include <QValidator>
#include <QtGlobal>

#include <boost/shared_ptr.hpp>

// A spin box for the full signed 64-bit range (QSpinBox stops at 32 bits); the editor of integer
// parameters. The text is always decimal, shown in the default locale without group separators.
//
// The box is deliberately permissive while the user types: every text whose number part converts
// becomes the value at once, even outside minimum..maximum, and setValue stores any value. The range
// and the increment are checked when the edited value is committed to the parameter. Stepping stays
// inside the range (or wraps around it when wrapping is on) and uses wrapping 64-bit arithmetic.
//
// Emptying the number part sets the value to 0 but leaves the field empty until a number is typed
// again, so that the user can start afresh without a 0 getting in the way.
class VORN_PARAMETERSQT4_API Qt4Int64SpinBox : public QAbstractSpinBox
{
    Q_OBJECT

public:
    explicit Qt4Int64SpinBox(QWidget* parent = nullptr);
    ~Qt4Int64SpinBox() override;

    QValidator::State validate(QString& input, int& pos) const override;
    void fixup(QString& input) const override;
    void stepBy(int steps) override;

    qint64 value() const;
    qint64 minimum() const;
    qint64 maximum() const;
    qint64 singleStep() const;
    QString prefix() const;
    QString suffix() const;

    // Stores both bounds as given (no swap when min > max), then moves the value into them.
    void setRange(qint64 min, qint64 max);
    void setMinimum(qint64 m);
    void setMaximum(qint64 m);
    // A step of 0 would make the arrows do nothing and is ignored; negative steps are kept.
    void setSingleStep(qint64 s);
    void setPrefix(const QString& prefix);
    void setSuffix(const QString& suffix);

    virtual QString textFromValue(qint64 v) const;
    virtual qint64 valueFromText(const QString& text) const;

Q_SIGNALS:
    void valueChanged(qint64 i);
    void valueChanged(const QString& text);

public Q_SLOTS:
    // Stores v without a range check and emits both valueChanged signals, also when v is unchanged.
    void setValue(qint64 v);
    void editorTextChanged(const QString& t);

protected:
    StepEnabled stepEnabled() const override;

private:
    void updateText();

    struct D;
    boost::shared_ptr<D> d;
};
