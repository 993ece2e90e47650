#pragma once

// The two 64-bit spin boxes named for the code that runs against each of them (tests and the fuzzer),
// and a reading of their texts that is independent of the spin boxes' own. No test framework here.

#include <vorn/delegate/Qt4Int64SpinBox.h>
#include <vorn/delegate/Qt4Int64SpinBoxValidator.h>
#include <vorn/delegate/Qt4UInt64SpinBox.h>
#include <vorn/delegate/Qt4UInt64SpinBoxValidator.h>

#include <QStyle>
#include <QStyleOptionSpinBox>

namespace vorn {
namespace test {

// Opens the protected parts of a spin box to the tests.
template <class Box> class Exposed : public Box
{
public:
    using Box::Box;
    using Box::initStyleOption;
    using Box::lineEdit;
    using Box::stepEnabled;

    QRect buttonRect(QStyle::SubControl control)
    {
        QStyleOptionSpinBox option;
        initStyleOption(&option);
        return this->style()->subControlRect(QStyle::CC_SpinBox, &option, control, this);
    }
};

// Names both spin boxes' types for the tests that run against each of them.
struct SignedBox
{
    using Value = qint64;
    using Box = Qt4Int64SpinBox;
    using Validator = Qt4Int64SpinBoxValidator;
    static qint64 convert(const QString& s, bool* ok) { return s.toLongLong(ok, 10); }
};

struct UnsignedBox
{
    using Value = quint64;
    using Box = Qt4UInt64SpinBox;
    using Validator = Qt4UInt64SpinBoxValidator;
    static quint64 convert(const QString& s, bool* ok) { return s.toULongLong(ok, 10); }
};

// The number part of a spin box text as a reader sees it: without the prefix it starts with and the
// suffix it ends with.
inline QString numberPart(QString text, const QString& prefix, const QString& suffix)
{
    if (!prefix.isEmpty() && text.left(prefix.size()) == prefix)
        text = text.mid(prefix.size());
    if (!suffix.isEmpty() && text.right(suffix.size()) == suffix)
        text.truncate(text.size() - suffix.size());
    return text;
}

} // namespace test
} // namespace vorn
