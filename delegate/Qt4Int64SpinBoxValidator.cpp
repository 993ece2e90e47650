#include <vorn/delegate/Qt4Int64SpinBoxValidator.h>

#include <vorn/delegate/Qt4Int64SpinBox.h>
#include <vorn/delegate/private/SpinBox64Support.h>

Qt4Int64SpinBoxValidator::Qt4Int64SpinBoxValidator(Qt4Int64SpinBox* spinBox)
    : QValidator(spinBox), spinBox(spinBox)
{
    Q_ASSERT(spinBox);
}

Qt4Int64SpinBoxValidator::~Qt4Int64SpinBoxValidator() = default;

QValidator::State Qt4Int64SpinBoxValidator::validate(QString& input, int& pos) const
{
    vorn::core::detail::restoreAffixes(input, spinBox->prefix(), spinBox->suffix());
    return spinBox->validate(input, pos);
}

void Qt4Int64SpinBoxValidator::fixup(QString& input) const
{
    spinBox->fixup(input);
}
