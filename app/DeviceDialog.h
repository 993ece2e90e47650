#pragma once

#include <QDialog>

class QLineEdit;
class QTreeWidget;

namespace vorn {
namespace browser {

// "Connect to device": the devices Aravis finds (id, vendor, model, serial number, address and
// protocol), with a box for an id or address that discovery does not reach (a camera in another
// subnet, say).
class DeviceDialog : public QDialog
{
    Q_OBJECT

public:
    explicit DeviceDialog(QWidget* parent = nullptr);

    // The id or address to open.
    QString deviceId() const;

public slots:
    // Looks for devices again; takes about a second, as GigE Vision discovery waits for answers.
    void discover();

private:
    QTreeWidget* m_devices = nullptr;
    QLineEdit* m_id = nullptr;
};

} // namespace browser
} // namespace vorn
