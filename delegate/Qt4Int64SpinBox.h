#pragma once

#include <vorn/delegate/SpinBox64.h>

// A spin box for the full signed 64-bit range (QSpinBox stops at 32 bits); the editor of integer
// parameters. The text is always decimal, shown in the default locale without group separators.
class VORN_PARAMETERSQT4_API Qt4Int64SpinBox : public vorn::core::detail::SpinBox64<qint64, Qt4Int64SpinBox>
{
    Q_OBJECT

public:
    explicit Qt4Int64SpinBox(QWidget* parent = nullptr);
    ~Qt4Int64SpinBox() override;

Q_SIGNALS:
    void valueChanged(qint64 i);
    void valueChanged(const QString& text);

public Q_SLOTS:
    void setValue(qint64 v);
    void editorTextChanged(const QString& t);
};
