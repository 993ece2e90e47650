#pragma once

#include <vorn/delegate/SpinBox64.h>

// A spin box for the full unsigned 64-bit range (QSpinBox stops at 32 bits); the editor of 64-bit
// unsigned parameters. It behaves like Qt4Int64SpinBox with unsigned values, bounds and comparisons.
//
// Stepping uses unsigned arithmetic modulo 2^64: a step below 0 wraps to a large number and is then
// bounded to the maximum, not the minimum. With wrapping on, only the upper end wraps.
class VORN_PARAMETERSQT4_API Qt4UInt64SpinBox
    : public vorn::core::detail::SpinBox64<quint64, Qt4UInt64SpinBox>
{
    Q_OBJECT

public:
    explicit Qt4UInt64SpinBox(QWidget* parent = nullptr);
    ~Qt4UInt64SpinBox() override;

Q_SIGNALS:
    void valueChanged(quint64 i);
    void valueChanged(const QString& text);

public Q_SLOTS:
    void setValue(quint64 v);
    void editorTextChanged(const QString& t);
};
