#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;

namespace vorn {
namespace browser {

class ParameterSource;

// "Registers": reads and writes one 32-bit register by address, for the expert who needs what the
// description does not name. The device answers on its own thread; the dialog shows the value in hex
// and decimal, or the device's error, when the answer arrives (the window never waits for it).
class RegisterDialog : public QDialog
{
    Q_OBJECT

public:
    // The source must outlive the dialog (the window closes the dialog before it changes source).
    explicit RegisterDialog(ParameterSource& source, QWidget* parent = nullptr);

    // What the dialog says now: the last answer, or why a request could not be made.
    QString status() const;
    QString valueText() const;

public slots:
    void read();
    void write();

private:
    bool addressOf(quint64* address);
    void showAnswer(bool ok, quint32 value, const QString& error, const QString& what);

    ParameterSource& m_source;
    QLineEdit* m_address = nullptr;
    QLineEdit* m_value = nullptr;
    QLabel* m_decimal = nullptr;
    QLabel* m_status = nullptr;
};

} // namespace browser
} // namespace vorn
