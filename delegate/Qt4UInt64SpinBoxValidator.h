#pragma once

#include <vorn/base/VornExport.h>

#include <QValidator>

class Qt4UInt64SpinBox;

// The line-edit validator of Qt4UInt64SpinBox: puts back a prefix or suffix that an edit removed and
// leaves the judgement of the number to the spin box.
class VORN_PARAMETERSQT4_API Qt4UInt64SpinBoxValidator : public QValidator
{
    Q_OBJECT

public:
    // The spin box is also the validator's parent, so it outlives the validator.
    explicit Qt4UInt64SpinBoxValidator(Qt4UInt64SpinBox* spinBox);
    ~Qt4UInt64SpinBoxValidator() override;

    State validate(QString& input, int& pos) const override;
    void fixup(QString& input) const override;

private:
    Qt4UInt64SpinBox* spinBox;
};
