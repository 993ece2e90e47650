#pragma once

#include <vorn/base/VornExport.h>

#include <QAbstractSpinBox>
#include <QString>
#include <QValidator>
#include <QtGlobal>

#include <boost/shared_ptr.hpp>

// A spin box for the full unsigned 64-bit range (QSpinBox stops at 32 bits); the editor of 64-bit
// unsigned parameters. It behaves like Qt4Int64SpinBox with unsigned values, bounds and comparisons.
//
// Stepping uses unsigned arithmetic modulo 2^64: a step below 0 wraps to a large number and is then
// bounded to the maximum, not the minimum. With wrapping on, only the upper end wraps.
class VORN_PARAMETERSQT4_API Qt4UInt64SpinBox : public QAbstractSpinBox
{
    Q_OBJECT

public:
    explicit Qt4UInt64SpinBox(QWidget* parent = nullptr);
    ~Qt4UInt64SpinBox() override;

    QValidator::State validate(QString& input, int& pos) const override;
    void fixup(QString& input) const override;
    void stepBy(int steps) override;

    quint64 value() const;
    quint64 minimum() const;
    quint64 maximum() const;
    quint64 singleStep() const;
    QString prefix() const;
    QString suffix() const;

    // Stores both bounds as given (no swap when min > max), then moves the value into them.
    void setRange(quint64 min, quint64 max);
    void setMinimum(quint64 m);
    void setMaximum(quint64 m);
    // A step of 0 would make the arrows do nothing and is ignored; negative steps are kept.
    void setSingleStep(quint64 s);
    void setPrefix(const QString& prefix);
    void setSuffix(const QString& suffix);

    virtual QString textFromValue(quint64 v) const;
    virtual quint64 valueFromText(const QString& text) const;

Q_SIGNALS:
    void valueChanged(quint64 i);
    void valueChanged(const QString& text);

public Q_SLOTS:
    // Stores v without a range check and emits both valueChanged signals, also when v is unchanged.
    void setValue(quint64 v);
    void editorTextChanged(const QString& t);

protected:
    StepEnabled stepEnabled() const override;

private:
    void updateText();

    struct D;
    boost::shared_ptr<D> d;
};
