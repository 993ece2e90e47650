#include "delegate/Qt4Int64SpinBoxValidator.h"

#include "delegate/Qt4Int64SpinBox.h"
#include "delegate/SpinBox64Support.h"

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
