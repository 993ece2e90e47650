#pragma once

#include <vorn/base/VornExport.h>

#include <QValidator>

class Qt4Int64SpinBox;

// The line-edit validator of Qt4Int64SpinBox: puts back a prefix or suffix that an edit removed and
// leaves the judgement of the number to the spin box.
class VORN_PARAMETERSQT4_API Qt4Int64SpinBoxValidator : public QValidator
{
    Q_OBJECT

public:
    // The spin box is also the validator's parent, so it outlives the validator.
    explicit Qt4Int64SpinBoxValidator(Qt4Int64SpinBox* spinBox);
    ~Qt4Int64SpinBoxValidator() override;

    State validate(QString& input, int& pos) const override;
    void fixup(QString& input) const override;

private:
    Qt4Int64SpinBox* spinBox;
};
