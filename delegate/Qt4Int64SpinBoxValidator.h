#pragma once

#include <vorn/delegate/SpinBox64.h>

class Qt4Int64SpinBox;

// The line-edit validator of Qt4Int64SpinBox.
class VORN_PARAMETERSQT4_API Qt4Int64SpinBoxValidator
    : public vorn::core::detail::SpinBoxValidator64<Qt4Int64SpinBox>
{
    Q_OBJECT

public:
    explicit Qt4Int64SpinBoxValidator(Qt4Int64SpinBox* spinBox);
    ~Qt4Int64SpinBoxValidator() override;
};
