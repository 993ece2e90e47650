#pragma once

#include <QDialog>
#include <QFutureWatcher>

#include <vorn/host/GenicamParameterTree.h>

#include <vector>

class QLineEdit;
class QPushButton;
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
    // Whether a search is under way.
    bool isSearching() const { return m_search.isRunning(); }

public slots:
    // Looks for devices again. GigE Vision discovery waits about a second for answers, so the search
    // runs on a worker thread; the list says "Searching..." meanwhile and the dialog stays in use.
    void discover();

signals:
    // The list shows what the last search found.
    void searched();

private:
    using Devices = std::vector<core::models::GenicamParameterTree::DeviceInfo>;
    void showDevices(const Devices& devices);

    QTreeWidget* m_devices = nullptr;
    QLineEdit* m_id = nullptr;
    QPushButton* m_searchAgain = nullptr;
    QFutureWatcher<Devices> m_search;
};

} // namespace browser
} // namespace vorn
