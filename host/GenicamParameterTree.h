#pragma once

#include <vorn/base/VornExport.h>
#include <vorn/host/MvParametersModel.h>

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// Aravis's device class, for hosts that hand jobs of their own to the device thread.
typedef struct _ArvDevice ArvDevice;

namespace vorn {
namespace core {
namespace models {

// A parameter tree over a GenICam device, built on Aravis: its simulated camera, any GenICam
// description file served by a simulated device with register memory, or a live device.
//
// How the description maps onto the tree:
// - The root's children are the features of the category "Root", each category's children its
//   features, both in document order. A feature listed in two categories has one node in each,
//   both bound to the same feature. A category that lists one of its ancestors is not followed again.
// - Integer-interface nodes become MvParametersIntegerNode, except IntReg nodes of 8 bytes without
//   sign, which become MvParametersUInt64Node: their value is read and written as the register's
//   bytes, so values above 2^63 keep their meaning; their range is 0 to 2^64-1.
//   Float, Boolean, String, Enumeration and Command nodes become the node of their kind,
//   categories MvParametersCategoryNode, every other node a category lists a plain
//   MvParametersEntryNode.
// - Enumeration entries keep document order. An entry that is not implemented gets access mode 1,
//   one that is not available 2 (the editor leaves both out), every other entry 4.
// - Access mode: not implemented 1, not available 2, write-only 3, read/write 5 (editable while the
//   last read succeeded), read-only or locked 4. Categories and plain entries are 4 when present.
//   Writes to locked, unavailable, unimplemented or read-only features are refused here, before
//   Aravis is asked (Aravis itself would write locked and unavailable features).
// - Data valid: the last read of the value succeeded and the device answers. Write-only, not
//   implemented and not available features are not read, so their data is never valid.
// - Visibility Beginner 0, Expert 1, Guru 2, Invisible 3. Integer representation by its GenICam
//   name: Linear 0, Logarithmic 1, PureNumber 2, Boolean 3, HexNumber 4, IPV4Address 5,
//   MACAddress 6; an integer without one is a PureNumber.
// - Display name falls back to the name, tool tip to the description; the description is also
//   kept on its own. Units, minimum, maximum and increment come from the feature.
// - A command is active while the node its pIsDone names reads false (0); a command without
//   pIsDone is never active. While a command is active it is read again every 100 ms.
// - A feature with a PollingTime (its own, or that of the node its pValue names) is read again at
//   that period while it is on screen (setFeaturesOnScreen).
//
// Threads: the tree belongs to the thread that opens it, which must run a Qt event loop (the GUI
// thread). A device thread of the tree's own holds every Aravis object. Node getters answer from
// values that the device thread read and the GUI thread applied; writes and command executions go
// through the root's callback onto the device thread without waiting. After each batch of writes
// the device thread reads every feature again and hands what changed to the GUI thread, which
// applies it to the nodes and tells the model (notifyNodesChanged). A refused write reaches the
// model's error channel (notifyError) as "Cannot set <feature> to <value>: <reason>" or
// "Cannot execute <feature>: <reason>", and nothing else changes. A live device that does not
// answer for half a second has every node's data marked invalid (the model is told, and one error
// names the device); the values come back once it answers again, and only if it is the same device
// (vendor, model, serial number and MAC address, as far as the description gives them).
//
// Opening waits for the device (and for the description to be read and parsed); after that the
// GUI thread never waits for the device.
class VORN_GENICAM_API GenicamParameterTree
{
public:
    enum DeviceState {
        dsConnected = 0, // the device answers
        dsLost = 1,      // the device stopped answering; every node's data is invalid
        // Another device answers at the device's address (see answeringDevice); every node's data
        // is invalid, and writes are refused, until the device opened answers again.
        dsOtherDevice = 2,
    };

    struct DeviceInfo
    {
        std::string id; // what openDevice takes
        std::string vendor;
        std::string model;
        std::string serial;
        std::string address;
        std::string protocol;
    };

    // Aravis's built-in simulated camera; error (when given) says why it could not be made.
    static boost::shared_ptr<GenicamParameterTree> openSimulated(std::string* error = nullptr);
    // A simulated device serving the description in this file from its own register memory, so
    // that any camera's description can be browsed and edited offline. A file that is missing,
    // unreadable, not well-formed or not a GenICam description gives an empty pointer and an error
    // that names the file and what is wrong.
    static boost::shared_ptr<GenicamParameterTree> openXmlFile(const std::string& path,
                                                               std::string* error = nullptr);
    // A live device by its Aravis id (see listDevices), or by its address.
    static boost::shared_ptr<GenicamParameterTree> openDevice(const std::string& deviceId,
                                                              std::string* error = nullptr);
    // A live device opened like openDevice, but without waiting: openDeviceLater returns at once,
    // the device is opened on the tree's device thread, and done is called later on this thread's
    // event loop with the tree, or with an empty pointer and the reason. Letting go of the Opening
    // before then cancels: done is not called, and the device is released on its thread.
    class VORN_GENICAM_API Opening
    {
    public:
        virtual ~Opening();
    };
    using OpenDone =
        std::function<void(boost::shared_ptr<GenicamParameterTree> tree, const std::string& error)>;
    static std::unique_ptr<Opening> openDeviceLater(const std::string& deviceId, OpenDone done);
    // The devices present. Waits for the discovery (about a second for GigE Vision).
    static std::vector<DeviceInfo> listDevices();

    GenicamParameterTree(const GenicamParameterTree&) = delete;
    GenicamParameterTree& operator=(const GenicamParameterTree&) = delete;
    // Stops the device thread (waiting for its current device access) and releases the device.
    // The model may outlive the tree; its callback then drops writes.
    ~GenicamParameterTree();

    boost::shared_ptr<MvParametersModel> model() const;
    DeviceState deviceState() const;
    // What was opened: "simulated camera", the file's path or the device id.
    const std::string& source() const;
    // What a live device said it is when it was opened, from the features the description gives for
    // it: "<vendor> <model>, serial <serial>, MAC <address>" (the parts it has); empty for a
    // simulated camera or a description file. Every reconnection checks it again.
    const std::string& identity() const;
    // In state dsOtherDevice, what the device answering in place of the one opened says it is.
    const std::string& answeringDevice() const;

    // The nodes that show this feature, in tree order; empty when the tree does not show it.
    std::vector<boost::shared_ptr<MvParametersEntryNode>> nodes(const std::string& feature) const;
    // The first node that shows this feature, or empty.
    boost::shared_ptr<MvParametersEntryNode> find(const std::string& feature) const;

    // The selectors of the device, each with the features whose values it selects (a gain per
    // GainSelector value), in tree order.
    std::vector<std::pair<std::string, std::vector<std::string>>> selectors() const;
    // How often the feature is read again by itself, in milliseconds (its PollingTime, or that of the
    // node its value comes from); 0 when it is not polled or not known.
    int pollingMs(const std::string& feature) const;
    // The features a view shows now. A value with a polling time is read again at its period only
    // while it is on screen (and once as it comes into view): each read is a round trip to the
    // device. Until a host says which features are on screen, every polled feature is read; a
    // command that runs is read until it is done wherever it is. Unknown names are ignored.
    void setFeaturesOnScreen(const std::vector<std::string>& features);
    void setAllFeaturesOnScreen();

    // The register reads and writes made so far, for a description opened offline (where the library
    // serves the registers itself and counts them); zeros for other sources. For measuring traffic.
    struct RegisterTraffic
    {
        std::uint64_t reads = 0;
        std::uint64_t writes = 0;
    };
    RegisterTraffic registerTraffic() const;

    // A 32-bit register by address, for what the description does not name: read or written on the
    // device thread, the answer handed to done on the GUI thread (the value, or the device's error).
    // A write is followed by a refresh, since any feature may show the register.
    using RegisterAnswer = std::function<void(bool ok, std::uint32_t value, const std::string& error)>;
    void readRegister(std::uint64_t address, RegisterAnswer done);
    void writeRegister(std::uint64_t address, std::uint32_t value, RegisterAnswer done);

    // Reads every feature again (for changes the tree cannot see, such as a job's).
    void refresh();
    // Runs job on the device thread with the device, for what the tree does not cover (streams,
    // raw registers). The tree does not read again after it: call refresh() when values may have
    // changed.
    void post(std::function<void(ArvDevice*)> job);
    // Processes Qt events until everything asked of the device thread so far has been answered
    // and applied; false when that took longer than timeoutMs (a negative timeoutMs: no limit; the
    // device thread answers everything, each device access within the device's own time-outs).
    // For tests and scripted hosts.
    bool waitIdle(int timeoutMs = 5000);
    // Calls done on this thread, from the event loop, once everything asked of the device thread so
    // far has been answered and applied (the outcome of each write reported). Never called when the
    // tree goes first.
    void whenIdle(std::function<void()> done);

private:
    class Impl;
    GenicamParameterTree();
    static boost::shared_ptr<GenicamParameterTree> open(int source, const std::string& what,
                                                        std::string* error);
    // A tree with its mailbox and its device, not started yet; empty without a Qt application.
    static boost::shared_ptr<GenicamParameterTree> prepare(std::string* error);

    std::unique_ptr<Impl> m_impl;
};

} // namespace models
} // namespace core
} // namespace vorn
