#pragma once

#include "delegate/SpinBoxKinds.h"

#include <QApplication>
#include <QLineEdit>
#include <QLocale>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QTest>

#include <gtest/gtest.h>

#include <limits>

namespace vorn {
namespace test {

// Sets the default locale for the lifetime of the guard.
class DefaultLocale
{
public:
    explicit DefaultLocale(const QLocale& locale) { QLocale::setDefault(locale); }
    ~DefaultLocale() { QLocale::setDefault(saved); }

private:
    QLocale saved;
};

// Spies on both valueChanged signals of a spin box.
template <class Traits> struct ValueSpies
{
    using Value = typename Traits::Value;
    using Box = typename Traits::Box;

    explicit ValueSpies(Box* box)
        : number(box, QOverload<Value>::of(&Box::valueChanged)),
          text(box, QOverload<const QString&>::of(&Box::valueChanged))
    {}

    QList<Value> numbers() const
    {
        QList<Value> out;
        for (const QList<QVariant>& args : number)
            out << args.at(0).value<Value>();
        return out;
    }
    QStringList texts() const
    {
        QStringList out;
        for (const QList<QVariant>& args : text)
            out << args.at(0).toString();
        return out;
    }
    void clear()
    {
        number.clear();
        text.clear();
    }

    QSignalSpy number;
    QSignalSpy text;
};

// Types text into a widget one character at a time, as key events carrying the character, so that
// characters outside Latin-1 (some locales' group separators) go through the same path.
inline void typeText(QWidget* widget, const QString& text)
{
    for (QChar c : text)
        QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c), Qt::NoModifier);
}

inline void showAndFocus(QWidget* widget)
{
    widget->resize(220, widget->sizeHint().height());
    widget->show();
    widget->activateWindow();
    widget->setFocus();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(widget));
}

} // namespace test
} // namespace vorn
