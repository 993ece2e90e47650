#include <vorn/delegate/Qt4UInt64SpinBoxValidator.h>

#include <vorn/delegate/Qt4UInt64SpinBox.h>
#include <vorn/delegate/private/SpinBox64Support.h>

Qt4UInt64SpinBoxValidator::Qt4UInt64SpinBoxValidator(Qt4UInt64SpinBox* spinBox)
    : QValidator(spinBox), spinBox(spinBox)
{
    Q_ASSERT(spinBox);
}

Qt4UInt64SpinBoxValidator::~Qt4UInt64SpinBoxValidator() = default;

QValidator::State Qt4UInt64SpinBoxValidator::validate(QString& input, int& pos) const
{
    vorn::core::detail::restoreAffixes(input, spinBox->prefix(), spinBox->suffix());
    return spinBox->validate(input, pos);
}

void Qt4UInt64SpinBoxValidator::fixup(QString& input) const
{
    spinBox->fixup(input);
}
