#pragma once

#include <vorn/host/GenicamParameterTree.h>
#include <vorn/host/InMemoryParameterTree.h>

#include "EditHistory.h"
#include "FeatureFailure.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vorn {
namespace browser {

// One open parameter tree, whatever it comes from: Aravis's simulated camera, a description file, a
// live device or the built-in example tree. It owns the tree (and with it the device thread) and
// answers the few questions the browser asks of any tree.
class ParameterSource
{
public:
    using EntryPtr = boost::shared_ptr<core::models::MvParametersEntryNode>;

    // Each gives an empty pointer and, in *error, a one-line reason when the tree cannot be opened.
    static std::unique_ptr<ParameterSource> openSimulated(QString* error);
    static std::unique_ptr<ParameterSource> openXmlFile(const QString& path, QString* error);
    static std::unique_ptr<ParameterSource> openDevice(const QString& deviceId, QString* error);
    static std::unique_ptr<ParameterSource> openExample();
    // A live device opened without waiting: done gets the source, or nullptr and the reason, later on
    // the event loop; letting go of the returned Opening first cancels (done is not called).
    using OpenDone = std::function<void(std::unique_ptr<ParameterSource> source, const QString& error)>;
    static std::unique_ptr<core::models::GenicamParameterTree::Opening>
    openDeviceLater(const QString& deviceId, OpenDone done);

    ~ParameterSource();

    boost::shared_ptr<core::models::MvParametersModel> model() const;
    // What is shown, in words: "simulated camera", the file's path, the device id, "example device".
    QString description() const;
    // False while a live device does not answer.
    bool isConnected() const;
    // While another device answers at a live device's address: that address and what the other
    // device says it is, "<address> (<vendor> <model>, serial <serial>...)"; empty otherwise.
    QString answeringDevice() const;
    // The values changed through the tree's callback (by the views, loads, --set), most recent last.
    const EditHistory* history() const { return m_history.get(); }
    // Told the name of each command run through the tree, as it is handed to the tree.
    void setCommandObserver(std::function<void(const std::string& name)> observer)
    {
        m_history->setCommandObserver(std::move(observer));
    }
    // Writes back the value before the latest change (through the same checks as any write); false
    // with nothing done when there is no change to take back. Failures as FeatureWriter reports them.
    bool undo(std::vector<FeatureFailure>* failures, std::string* what);

    // The GenICam tree shown (Aravis's simulated camera, a description file, a live device), for
    // jobs of a host's own on its device thread; empty for the example tree.
    const boost::shared_ptr<core::models::GenicamParameterTree>& genicamTree() const { return m_device; }

    // Whether registers can be read and written by address (a GenICam device, not the example).
    bool hasRegisters() const { return m_device != nullptr; }
    // A 32-bit register, answered on the GUI thread later (an error where there are no registers).
    using RegisterAnswer = std::function<void(bool ok, std::uint32_t value, const std::string& error)>;
    void readRegister(std::uint64_t address, RegisterAnswer done);
    void writeRegister(std::uint64_t address, std::uint32_t value, RegisterAnswer done);

    // The selectors, each with the features whose values it selects, in tree order.
    std::vector<std::pair<std::string, std::vector<std::string>>> selectors() const;
    // How often the feature is read again by itself, in milliseconds; 0 when it is not.
    int pollingMs(const std::string& feature) const;
    // A description file opened without its camera: the values are the offline device's own.
    bool isOffline() const { return m_offline; }

    // Every node that shows this feature, in tree order. A feature listed in two categories has a
    // node in each; the nodes of a field (one feature with several indexes) all share its name.
    std::vector<EntryPtr> nodesNamed(const std::string& name) const;

    // Returns when every write asked for so far has been answered and its result shown; false when
    // that takes longer than timeoutMs. Without a limit (the default) every write's outcome is
    // waited for, however long the device's own time-outs make it: none gets lost to a wait that
    // gave up first.
    bool waitIdle(int timeoutMs = -1);
    // Calls done from the event loop once every write so far has its outcome reported; never after
    // this source is gone.
    void whenIdle(std::function<void()> done);
    // Reads every value again, for changes the tree cannot see by itself.
    void refresh();
    // The features a view shows now: only these, of the features with a polling time, are read again
    // by themselves (see GenicamParameterTree::setFeaturesOnScreen).
    void setFeaturesOnScreen(const std::vector<std::string>& features);

private:
    ParameterSource() = default;
    static std::unique_ptr<ParameterSource>
    ofDevice(const QString& deviceId, const boost::shared_ptr<core::models::GenicamParameterTree>& tree);
    void keepHistory();

    boost::shared_ptr<core::models::GenicamParameterTree> m_device;
    boost::shared_ptr<core::models::InMemoryParameterTree> m_example;
    QString m_description;
    QString m_address; // a live device's id
    bool m_offline = false;
    boost::shared_ptr<EditHistory> m_history; // between the tree's root and its callback
    // Calls of whenIdle on the example tree end with it.
    std::unique_ptr<QObject> m_idleContext = std::make_unique<QObject>();
};

} // namespace browser
} // namespace vorn
