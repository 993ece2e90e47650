#pragma once

#include "family/genicam/FeatureIo.h"
#include "family/genicam/FeatureMapping.h"
#include "family/genicam/GenicamDescription.h"
#include "family/genicam/GenicamLayout.h"
#include "family/genicam/OfflineDevice.h"

#include <boost/any.hpp>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

// ArvGcNode and GError come with FeatureIo.h.
typedef struct _ArvDevice ArvDevice;
typedef struct _ArvGc ArvGc;

namespace vorn {
namespace core {
namespace models {
namespace genicam {

// The device thread of one tree. Every Aravis object of the tree is made, used and released on
// it; the rest of the backend talks to it through a queue of jobs and hears back through the
// publisher, which is called on the device thread with each batch of changes.
class GenicamDevice
{
public:
    enum class Source { Simulated, XmlFile, Device };
    // The most rows a description may make; no camera comes near (the largest have a few thousand).
    static constexpr std::size_t kMaxRows = FeatureMapping::kMaxRows;
    using Publisher = std::function<void(std::shared_ptr<Publication>)>;

    struct OpenResult
    {
        bool ok = false;
        std::string error;
        Layout layout;
        std::vector<ParameterState> states; // every feature, in layout order
        std::string identity;               // what a live device says it is (see identityOf)
    };

    explicit GenicamDevice(Publisher publisher);
    // Stops the thread after its current job; the device is released on it.
    ~GenicamDevice();
    GenicamDevice(const GenicamDevice&) = delete;
    GenicamDevice& operator=(const GenicamDevice&) = delete;

    // Stops the device thread and destroys the device: here if the thread ends within a moment,
    // otherwise (a device access waiting out its time-outs) on a thread of its own once it ends, so
    // that closing never waits for a device. The publisher must drop what it is given from now on.
    static void release(std::unique_ptr<GenicamDevice> device);

    // Starts the thread and opens the source on it; waits for the result.
    OpenResult open(Source source, const std::string& what);
    // The same without waiting: opened gets the result, on the device thread.
    void start(Source source, const std::string& what,
               std::function<void(std::shared_ptr<OpenResult>)> opened);

    // place: the node the write came through, named again in an error.
    void write(int feature, int place, const boost::any& value);
    void refresh();
    void barrier(std::uint64_t id);
    void post(std::function<void(ArvDevice*)> job);
    // The features on screen: of the features with a polling time, only these are read again at
    // their period (a command that runs is read again wherever it is). Until this is called, every
    // polled feature is.
    void watch(std::vector<int> features);
    void watchAll();

    // When the device thread's current device access began, in milliseconds of the steady clock;
    // 0 while it does not wait for the device.
    std::int64_t accessStartedMs() const { return m_accessStarted.load(); }
    // Tells the device thread that the GUI gave the device up for lost (the n-th time): the device
    // thread then reads everything afresh once the device answers, and says so with n.
    void noteGivenUp(std::uint64_t n) { m_giveUps.store(n); }

    static std::int64_t nowMs();

    // The register reads and writes so far, where the device counts them (a description opened
    // offline); zeros otherwise. The device is set before open() returns and kept until destruction.
    OfflineDevice::Traffic traffic() const { return OfflineDevice::traffic(m_device); }

private:
    using Clock = std::chrono::steady_clock;

    struct Job
    {
        enum Type { Write, Refresh, Barrier, Raw, Watch } type = Refresh;
        int feature = -1;
        int place = -1;
        boost::any value;
        std::uint64_t barrier = 0;
        std::function<void(ArvDevice*)> raw;
        std::vector<int> watched;
        bool watchAll = false;
    };

    // The thread and its queue (GenicamDevice.cpp).
    void enqueue(Job job);
    bool stopping();
    void run();
    void handle(std::deque<Job>& jobs);
    // Hands the publication to the GUI when it says anything (or always, with force).
    void publish(Publication& publication, bool force = false);

    // Opening (GenicamDeviceOpen.cpp): the source, its description mapped to features, every feature
    // read once.
    void openOnThread(Source source, const std::string& what, OpenResult& result);
    bool openSource(Source source, const std::string& what, std::string* error);
    bool buildLayout(std::string* error);
    void startAtAllowedValues();
    void closeSource();

    // Reads and writes of features (GenicamDeviceIo.cpp).
    ParameterState read(int feature);
    // The features whose values a write to feature may change, itself among them; empty when that
    // cannot be told (then everything may have changed).
    const std::vector<int>& affectedBy(int feature);
    // Why reading the feature now would give a made-up value (a division by zero on its way, a
    // register length beyond what is read), or empty. Evaluates what the GenICam library would.
    std::string evaluationProblem(int feature);
    bool formulaVariable(const GenicamDescription::Formulas& formulas, const std::string& name,
                         Formula::Number* value, std::string* problem, int depth);
    ParameterEntryAccessMode accessOf(ArvGcNode* node, bool* locked);
    std::string write(int feature, const boost::any& value);
    // Whether the feature is read past the register cache (see GenicamDescription::Node).
    bool readsPastCache(int feature);
    // Reads a feature and notes it in the publication when it changed; false once the device is lost.
    bool readInto(int feature, Publication& publication);
    void readAll(Publication& publication);
    void readSome(const std::vector<int>& features, Publication& publication);

    // Liveness, reconnection and polling (GenicamDeviceLiveness.cpp).
    void startTimers();
    // Notes what the device opened says it is, from the values read at open.
    void learnIdentity();
    void runTimers();
    Clock::time_point nextDeadline() const;
    // Whether the feature is read again by itself now: a polled feature on screen, a running command.
    bool polledNow(std::size_t feature) const;
    void setWatched(const Job& job);
    void probe();
    // Reads the heartbeat's registers: their mark (markOf), or empty when the device did not answer.
    std::string heartbeat();
    // The heartbeat's mark as the values read at open tell it, or empty when they do not.
    std::string markReadAtOpen() const;
    static std::string markOf(const std::string& bytes);
    // What the device says it is, "<vendor> <model>, serial <serial>, MAC <address>", from the
    // identity features the description has, each state as stateOf gives it; empty without any.
    std::string identityOf(const std::function<ParameterState(int)>& stateOf) const;

    Publisher m_publisher;
    std::thread m_thread;
    std::future<void> m_finished; // ready once the thread has released the device
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Job> m_jobs;
    bool m_stop = false;
    std::atomic<std::int64_t> m_accessStarted{0};
    std::atomic<std::uint64_t> m_giveUps{0};

    // Device thread only.
    ArvDevice* m_device = nullptr;
    ArvGc* m_gc = nullptr;
    ArvGc* m_ownGc = nullptr; // a document of our own, made from the checked description
    GenicamDescription m_description;
    Layout m_layout;
    std::vector<FeatureBinding> m_bindings;
    std::vector<Clock::time_point> m_due; // each polled feature's next read
    bool m_watchAll = true;               // no host said which features are on screen
    std::vector<char> m_watched;          // otherwise, the features on screen
    std::unordered_map<std::string, int> m_featureByName;
    std::unordered_map<int, std::vector<int>> m_affected; // by affectedBy, made on first write
    std::vector<int> m_featureOfNode;                     // the feature each described node shows
    std::vector<int> m_undescribed;                       // features no node of the description names
    std::vector<ParameterState> m_published;
    AccessErrors m_errors; // a device that stopped answering is lost
    bool m_lostPublished = false;
    bool m_offline = false; // a description file without its camera
    std::uint64_t m_giveUpsAnswered = 0;
    Clock::time_point m_nextProbe;
    std::vector<int> m_identityFeatures; // the features a device names itself by
    std::string m_identity;              // what the device opened said it is
    std::string m_stranger;              // what another device answering in its place says it is
    // What the heartbeat reads: by default the version register that GigE Vision and USB3 Vision
    // devices keep at address 0.
    std::uint64_t m_heartbeatAddress = 0;
    std::size_t m_heartbeatSize = 4;
    std::string m_heartbeatMark; // what it read from the device opened
    std::string m_strangerMark;  // what it read from the other device answering in its place
};

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
