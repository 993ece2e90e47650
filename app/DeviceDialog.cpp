#include "DeviceDialog.h"

#include <vorn/host/GenicamParameterTree.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QtConcurrent/QtConcurrentRun>

namespace vorn {
namespace browser {

DeviceDialog::DeviceDialog(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Connect to Device"));
    auto* layout = new QVBoxLayout(this);

    layout->addWidget(new QLabel(QStringLiteral("Devices found:"), this));
    m_devices = new QTreeWidget(this);
    m_devices->setRootIsDecorated(false);
    m_devices->setAlternatingRowColors(true);
    m_devices->setHeaderLabels({QStringLiteral("Id"), QStringLiteral("Vendor"), QStringLiteral("Model"),
                                QStringLiteral("Serial"), QStringLiteral("Address"),
                                QStringLiteral("Protocol")});
    m_devices->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    layout->addWidget(m_devices, 1);

    auto* form = new QFormLayout;
    m_id = new QLineEdit(this);
    m_id->setPlaceholderText(QStringLiteral("a device id from the list, or an address such as 192.168.0.10"));
    form->addRow(QStringLiteral("Device:"), m_id);
    layout->addLayout(form);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Connect"));
    m_searchAgain = buttons->addButton(QStringLiteral("Search Again"), QDialogButtonBox::ActionRole);
    layout->addWidget(buttons);

    connect(m_searchAgain, &QPushButton::clicked, this, &DeviceDialog::discover);
    connect(&m_search, &QFutureWatcher<Devices>::finished, this, [this] { showDevices(m_search.result()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_devices, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item)
            m_id->setText(item->text(0));
    });
    connect(m_devices, &QTreeWidget::itemDoubleClicked, this, &QDialog::accept);
    // Nothing to connect to until a device is chosen or typed.
    auto* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setEnabled(false);
    connect(m_id, &QLineEdit::textChanged, ok,
            [ok](const QString& text) { ok->setEnabled(!text.trimmed().isEmpty()); });

    resize(680, 320);
}

QString DeviceDialog::deviceId() const
{
    return m_id->text().trimmed();
}

void DeviceDialog::discover()
{
    if (m_search.isRunning())
        return;
    m_devices->clear();
    auto* item = new QTreeWidgetItem(m_devices, {QStringLiteral("Searching...")});
    item->setFlags(Qt::NoItemFlags);
    m_searchAgain->setEnabled(false);
    // The result is only looked at through the watcher, which this dialog owns: a dialog closed
    // during a search leaves the worker to finish alone.
    m_search.setFuture(QtConcurrent::run([] { return core::models::GenicamParameterTree::listDevices(); }));
}

void DeviceDialog::showDevices(const Devices& devices)
{
    m_searchAgain->setEnabled(true);
    m_devices->clear();
    for (const auto& d : devices) {
        auto* item = new QTreeWidgetItem(m_devices);
        int column = 0;
        for (const std::string* text : {&d.id, &d.vendor, &d.model, &d.serial, &d.address, &d.protocol})
            item->setText(column++, QString::fromStdString(*text));
    }
    if (devices.empty()) {
        auto* item = new QTreeWidgetItem(m_devices, {QStringLiteral("No device found")});
        item->setFlags(Qt::NoItemFlags);
    } else if (m_id->text().trimmed().isEmpty()) {
        // What was typed meanwhile stays.
        m_devices->setCurrentItem(m_devices->topLevelItem(0));
    }
    emit searched();
}

} // namespace browser
} // namespace vorn
