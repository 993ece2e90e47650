#pragma once

#include <vorn/delegate/SpinBox64.h>

class Qt4UInt64SpinBox;

// The line-edit validator of Qt4UInt64SpinBox.
class VORN_PARAMETERSQT4_API Qt4UInt64SpinBoxValidator
    : public vorn::core::detail::SpinBoxValidator64<Qt4UInt64SpinBox>
{
    Q_OBJECT

public:
    explicit Qt4UInt64SpinBoxValidator(Qt4UInt64SpinBox* spinBox);
    ~Qt4UInt64SpinBoxValidator() override;
};
