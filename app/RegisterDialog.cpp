#include "RegisterDialog.h"

#include "ParameterSource.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace vorn {
namespace browser {

namespace {

// "0x..." for hex, decimal otherwise, as people write addresses and register values.
bool numberOf(const QString& text, quint64 limit, quint64* number)
{
    bool ok = false;
    const QString trimmed = text.trimmed();
    const quint64 n = trimmed.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)
                          ? trimmed.mid(2).toULongLong(&ok, 16)
                          : trimmed.toULongLong(&ok, 10);
    if (!ok || n > limit)
        return false;
    *number = n;
    return true;
}

} // namespace

RegisterDialog::RegisterDialog(ParameterSource& source, QWidget* parent) : QDialog(parent), m_source(source)
{
    setWindowTitle(QStringLiteral("Registers"));
    auto* form = new QFormLayout;
    m_address = new QLineEdit(this);
    m_address->setObjectName(QStringLiteral("address"));
    m_address->setPlaceholderText(QStringLiteral("0x0000"));
    m_value = new QLineEdit(this);
    m_value->setObjectName(QStringLiteral("value"));
    m_value->setPlaceholderText(QStringLiteral("0x00000000"));
    m_decimal = new QLabel(this);
    m_decimal->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addRow(QStringLiteral("&Address:"), m_address);
    form->addRow(QStringLiteral("&Value (hex):"), m_value);
    form->addRow(QStringLiteral("Decimal:"), m_decimal);

    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("status"));
    m_status->setWordWrap(true);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* read = buttons->addButton(QStringLiteral("&Read"), QDialogButtonBox::ActionRole);
    QPushButton* write = buttons->addButton(QStringLiteral("&Write"), QDialogButtonBox::ActionRole);
    connect(read, &QPushButton::clicked, this, &RegisterDialog::read);
    connect(write, &QPushButton::clicked, this, &RegisterDialog::write);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_status);
    layout->addWidget(buttons);
}

QString RegisterDialog::status() const
{
    return m_status->text();
}

QString RegisterDialog::valueText() const
{
    return m_value->text();
}

bool RegisterDialog::addressOf(quint64* address)
{
    if (numberOf(m_address->text(), Q_UINT64_C(0xffffffffffffffff), address))
        return true;
    m_status->setText(
        QStringLiteral("\"%1\" is not an address (write it in decimal or as 0x...)").arg(m_address->text()));
    return false;
}

void RegisterDialog::read()
{
    quint64 address = 0;
    if (!addressOf(&address))
        return;
    m_status->setText(QStringLiteral("Reading..."));
    QPointer<RegisterDialog> self(this);
    const QString what = QStringLiteral("Read 0x%1").arg(address, 0, 16);
    m_source.readRegister(address, [self, what](bool ok, std::uint32_t value, const std::string& error) {
        if (self)
            self->showAnswer(ok, value, QString::fromStdString(error), what);
    });
}

void RegisterDialog::write()
{
    quint64 address = 0;
    quint64 value = 0;
    if (!addressOf(&address))
        return;
    if (!numberOf(m_value->text(), 0xffffffffu, &value)) {
        m_status->setText(QStringLiteral("\"%1\" is not a 32-bit value (write it in decimal or as 0x...)")
                              .arg(m_value->text()));
        return;
    }
    m_status->setText(QStringLiteral("Writing..."));
    QPointer<RegisterDialog> self(this);
    const QString what = QStringLiteral("Wrote 0x%1").arg(address, 0, 16);
    m_source.writeRegister(address, static_cast<quint32>(value),
                           [self, what](bool ok, std::uint32_t written, const std::string& error) {
                               if (self)
                                   self->showAnswer(ok, written, QString::fromStdString(error), what);
                           });
}

void RegisterDialog::showAnswer(bool ok, quint32 value, const QString& error, const QString& what)
{
    if (!ok) {
        m_status->setText(QStringLiteral("The device refused: %1").arg(error));
        return;
    }
    m_value->setText(QStringLiteral("0x%1").arg(value, 8, 16, QLatin1Char('0')));
    m_decimal->setText(QString::number(value));
    m_status->setText(what);
}

} // namespace browser
} // namespace vorn
