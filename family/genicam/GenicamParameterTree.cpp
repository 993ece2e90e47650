#include <vorn/host/GenicamParameterTree.h>

#include "family/genicam/AravisSupport.h"
#include "family/genicam/GenicamDevice.h"

#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/ParameterKind.h>

#include <arv.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QThread>
#include <QTimer>

#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <unordered_map>

namespace vorn {
namespace core {
namespace models {

using genicam::FeatureLayout;
using genicam::GenicamDevice;
using genicam::Layout;
using genicam::Publication;

namespace {

// A live device whose access takes longer than this is given up for lost until it answers again.
const std::int64_t kGiveUpMs = 500;
const int kWatchdogPeriodMs = 100;

// Work from the device thread for the GUI thread. It waits here under a lock of ours, and a bare
// event wakes the GUI thread to run it: what crosses the threads is ordered by that lock, which
// thread checkers see, not only by Qt's event queue, which they cannot. The device thread holds it
// by a shared pointer, so it may outlive the tree; once closed, it takes nothing more.
class Inbox
{
public:
    explicit Inbox(QObject* target) : m_target(target) {}

    void post(std::function<void()> work)
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_target)
            return;
        const bool wake = m_work.empty(); // otherwise its wake-up is on the way
        m_work.push_back(std::move(work));
        if (wake)
            QCoreApplication::postEvent(m_target, new QEvent(QEvent::User));
    }
    std::deque<std::function<void()>> take()
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        std::deque<std::function<void()>> work;
        work.swap(m_work);
        return work;
    }
    void close()
    {
        std::deque<std::function<void()>> dropped;
        std::lock_guard<std::mutex> lock(m_mutex);
        m_target = nullptr;
        dropped.swap(m_work);
    }

private:
    std::mutex m_mutex;
    QObject* m_target;
    std::deque<std::function<void()>> m_work;
};

// Runs the inbox's work on the GUI thread.
class Mailbox : public QObject
{
public:
    Mailbox() : m_inbox(std::make_shared<Inbox>(this)) {}
    ~Mailbox() override { m_inbox->close(); }
    const std::shared_ptr<Inbox>& inbox() const { return m_inbox; }

protected:
    void customEvent(QEvent*) override
    {
        std::deque<std::function<void()>> work = m_inbox->take();
        // A piece of work may close the tree, and this mailbox with it: the rest is dropped then.
        QPointer<QObject> alive(this);
        for (auto& piece : work) {
            if (!alive)
                return;
            piece();
        }
    }

private:
    std::shared_ptr<Inbox> m_inbox;
};

} // namespace

class VORN_DECL_HIDDEN GenicamParameterTree::Impl
{
public:
    // The root's callback: hands each write to the device thread and returns at once.
    class Callback : public ParameterModelCallback
    {
    public:
        explicit Callback(Impl* impl) : m_impl(impl) {}
        void setValue(boost::shared_ptr<MvParametersEntryNode> node, boost::any value) override
        {
            if (m_impl)
                m_impl->write(node, value);
        }
        void detach() { m_impl = nullptr; }

    private:
        Impl* m_impl;
    };

    ~Impl()
    {
        if (callback)
            callback->detach();
        watchdog.reset();
        // The mailbox closes first: nothing the device thread sends from now on reaches the GUI.
        receiver.reset();
        // A device access under way (a camera that stopped answering waits out its time-outs) is not
        // waited for beyond a moment: the device thread finishes it and releases the device alone.
        GenicamDevice::release(std::move(device));
    }

    void build(const GenicamDevice::OpenResult& opened);
    // Shows what the device thread opened: the nodes, the callback, the watchdog of a live device.
    void finishOpen(int kind, const std::string& what, const GenicamDevice::OpenResult& opened);
    void addEntries(MvParametersEnumerationNode& node, const std::vector<genicam::EnumEntryLayout>& entries);
    void apply(const Publication& publication);
    void applyToNodes(int feature);
    void setConnected(bool connected, const std::string& why);
    void write(const boost::shared_ptr<MvParametersEntryNode>& node, const boost::any& value);
    void checkDevice();

    std::string source;
    boost::shared_ptr<MvParametersModel> model;
    boost::shared_ptr<Callback> callback;
    Layout layout;
    std::vector<ParameterState> states;
    std::vector<boost::shared_ptr<MvParametersEntryNode>> placeNodes;
    std::vector<std::vector<int>> placesOf; // per feature
    std::unordered_map<const MvParametersEntryNode*, int> placeOfNode;
    std::unordered_map<std::string, int> featureByName;
    bool connected = true;
    std::string identity;      // what the device opened says it is
    std::string stranger;      // what another device answering in its place says it is
    std::uint64_t giveUps = 0; // times the GUI gave the device up for lost
    std::uint64_t lastBarrier = 0;
    std::uint64_t answeredBarrier = 0;
    std::deque<std::pair<std::uint64_t, std::function<void()>>> idleWaiters; // by barrier, ascending
    std::unique_ptr<Mailbox> receiver;
    std::unique_ptr<QTimer> watchdog;
    std::unique_ptr<GenicamDevice> device;
};

void GenicamParameterTree::Impl::build(const GenicamDevice::OpenResult& opened)
{
    layout = opened.layout;
    states = opened.states;
    model = MvParametersModel::create();
    placesOf.assign(layout.features.size(), std::vector<int>());
    for (std::size_t i = 0; i < layout.features.size(); ++i)
        featureByName[layout.features[i].name] = static_cast<int>(i);

    for (std::size_t p = 0; p < layout.places.size(); ++p) {
        const genicam::PlaceLayout& place = layout.places[p];
        const FeatureLayout& f = layout.features[place.feature];
        const ParameterKind& kind = f.parameterKind();
        boost::shared_ptr<MvParametersEntryNode> node = kind.createNode(model, f.name);
        ParameterPresentation presentation;
        presentation.unit = f.unit;
        presentation.representation = f.representation;
        kind.setPresentation(*node, presentation);
        if (f.kind == ParameterKindId::Enumeration)
            addEntries(static_cast<MvParametersEnumerationNode&>(*node), f.entries);
        node->setDisplayName(f.displayName);
        node->setToolTip(f.toolTip.empty() ? f.description : f.toolTip);
        node->setDescription(f.description);
        node->setVisibility(f.visibility);
        auto parent = place.parent < 0 ? boost::shared_ptr<MvParametersEntryNode>(model->root())
                                       : placeNodes[place.parent];
        parent->addChild(node);
        placeNodes.push_back(node);
        placesOf[place.feature].push_back(static_cast<int>(p));
        placeOfNode[node.get()] = static_cast<int>(p);
    }
    for (std::size_t i = 0; i < layout.features.size(); ++i)
        applyToNodes(static_cast<int>(i));
}

void GenicamParameterTree::Impl::addEntries(MvParametersEnumerationNode& node,
                                            const std::vector<genicam::EnumEntryLayout>& entries)
{
    for (const genicam::EnumEntryLayout& e : entries) {
        auto entry = model->createNode<MvParametersEnumEntryNode>(e.name, e.value);
        entry->setDisplayName(e.displayName);
        entry->setToolTip(e.toolTip.empty() ? e.description : e.toolTip);
        entry->setDescription(e.description);
        entry->setVisibility(e.visibility);
        node.addEntry(entry);
    }
}

// The device's data are valid only while it answers. A value that cannot be read says why in the
// node's tool tip and description: a row never stays blank without a reason.
void GenicamParameterTree::Impl::applyToNodes(int feature)
{
    const FeatureLayout& f = layout.features[feature];
    const ParameterKind& kind = f.parameterKind();
    ParameterState state = states[feature];
    if (!connected) {
        state.valid = false;
        state.problem = genicam::kNoAnswer;
    }
    const std::string toolTip = f.toolTip.empty() ? f.description : f.toolTip;
    const std::string why =
        state.valid || state.problem.empty() ? std::string() : "Unreadable: " + state.problem;
    auto explained = [&why](const std::string& text) {
        return why.empty() ? text : text.empty() ? why : text + "\n\n" + why;
    };
    for (int p : placesOf[feature]) {
        MvParametersEntryNode& node = *placeNodes[p];
        kind.apply(node, state);
        node.setToolTip(explained(toolTip));
        node.setDescription(explained(f.description));
    }
}

void GenicamParameterTree::Impl::setConnected(bool nowConnected, const std::string& why)
{
    if (connected == nowConnected)
        return;
    connected = nowConnected;
    for (std::size_t i = 0; i < layout.features.size(); ++i)
        applyToNodes(static_cast<int>(i));
    model->notifyAllNodesChanged();
    if (!connected)
        model->notifyError(model->root(), "Lost the connection to " + source + ": " + why);
}

void GenicamParameterTree::Impl::apply(const Publication& publication)
{
    std::vector<boost::shared_ptr<GenericModelNode>> changed;
    for (const auto& entry : publication.states) {
        states[entry.first] = entry.second;
        applyToNodes(entry.first);
        for (int p : placesOf[entry.first])
            changed.push_back(placeNodes[p]);
    }
    if (publication.stranger)
        stranger = *publication.stranger;
    // A device given up for lost counts as back only once the device thread read it afresh since.
    const bool nowConnected = publication.connected && publication.giveUpsAnswered >= giveUps;
    if (connected != nowConnected)
        setConnected(nowConnected, stranger.empty() ? std::string(genicam::kNoAnswer)
                                                    : std::string("another device answers in its place"));
    else
        model->notifyNodesChanged(changed);
    if (publication.stranger && !stranger.empty())
        model->notifyError(model->root(), "Another device answers at " + source + ": " + stranger +
                                              " (this tree shows " + identity +
                                              "); the tree stays disconnected until that device answers");
    for (const auto& error : publication.errors) {
        boost::shared_ptr<GenericModelNode> node =
            error.first >= 0 && error.first < static_cast<int>(placeNodes.size())
                ? boost::shared_ptr<GenericModelNode>(placeNodes[error.first])
                : boost::shared_ptr<GenericModelNode>(model->root());
        model->notifyError(node, error.second);
    }
    if (publication.barrier > answeredBarrier)
        answeredBarrier = publication.barrier;
    // A waiter may free the tree: each is taken off the queue before it runs, and nothing of this
    // tree is touched after the last one.
    while (!idleWaiters.empty() && idleWaiters.front().first <= answeredBarrier) {
        std::function<void()> done = std::move(idleWaiters.front().second);
        idleWaiters.pop_front();
        QTimer::singleShot(0, receiver.get(), std::move(done));
    }
}

void GenicamParameterTree::Impl::write(const boost::shared_ptr<MvParametersEntryNode>& node,
                                       const boost::any& value)
{
    auto it = node ? placeOfNode.find(node.get()) : placeOfNode.end();
    if (it == placeOfNode.end()) {
        model->notifyError(node, "Cannot set " + (node ? node->getName() : std::string("(no node)")) +
                                     ": the node is not part of this tree");
        return;
    }
    const int feature = layout.places[it->second].feature;
    // The device was given up for lost: say so now rather than after its next time-out.
    if (!connected) {
        const std::string why = stranger.empty()
                                    ? std::string(genicam::kNoAnswer)
                                    : "another device answers at " + source + " (" + stranger + ")";
        model->notifyError(node, genicam::refusedWriteMessage(layout.features[feature], value, why));
        return;
    }
    device->write(feature, it->second, value);
}

void GenicamParameterTree::Impl::checkDevice()
{
    const std::int64_t started = device->accessStartedMs();
    if (!connected || started == 0 || GenicamDevice::nowMs() - started < kGiveUpMs)
        return;
    device->noteGivenUp(++giveUps);
    setConnected(false, "no answer for " + std::to_string(kGiveUpMs) + " ms");
}

GenicamParameterTree::GenicamParameterTree() : m_impl(new Impl()) {}

GenicamParameterTree::~GenicamParameterTree() = default;

boost::shared_ptr<GenicamParameterTree> GenicamParameterTree::prepare(std::string* error)
{
    if (!QCoreApplication::instance()) {
        *error = "the GenICam backend needs a QCoreApplication (its values reach the nodes through the "
                 "event loop)";
        return boost::shared_ptr<GenicamParameterTree>();
    }
    boost::shared_ptr<GenicamParameterTree> tree(new GenicamParameterTree());
    Impl* impl = tree->m_impl.get();
    impl->receiver.reset(new Mailbox());
    // impl lives as long as the mailbox that runs the work, so the work may use it.
    impl->device.reset(
        new GenicamDevice([impl, inbox = impl->receiver->inbox()](std::shared_ptr<Publication> publication) {
            inbox->post([impl, publication] { impl->apply(*publication); });
        }));
    return tree;
}

void GenicamParameterTree::Impl::finishOpen(int kind, const std::string& what,
                                            const GenicamDevice::OpenResult& opened)
{
    source = static_cast<GenicamDevice::Source>(kind) == GenicamDevice::Source::Simulated
                 ? std::string("simulated camera")
                 : what;
    identity = opened.identity;
    build(opened);
    callback.reset(new Impl::Callback(this));
    model->root()->setCallback(callback);
    if (opened.layout.live) {
        watchdog.reset(new QTimer());
        QObject::connect(watchdog.get(), &QTimer::timeout, receiver.get(), [this] { checkDevice(); });
        watchdog->start(kWatchdogPeriodMs);
    }
}

boost::shared_ptr<GenicamParameterTree> GenicamParameterTree::open(int source, const std::string& what,
                                                                   std::string* error)
{
    std::string ignored;
    std::string& message = error ? *error : ignored;
    message.clear();
    boost::shared_ptr<GenicamParameterTree> tree = prepare(&message);
    if (!tree)
        return tree;
    const GenicamDevice::OpenResult opened =
        tree->m_impl->device->open(static_cast<GenicamDevice::Source>(source), what);
    if (!opened.ok) {
        message = opened.error;
        return boost::shared_ptr<GenicamParameterTree>();
    }
    tree->m_impl->finishOpen(source, what, opened);
    return tree;
}

GenicamParameterTree::Opening::~Opening() = default;

namespace {

// Holds the tree while its device is being opened: letting go of it cancels.
class TreeOpening : public GenicamParameterTree::Opening
{
public:
    explicit TreeOpening(boost::shared_ptr<GenicamParameterTree> tree) : tree(std::move(tree)) {}
    boost::shared_ptr<GenicamParameterTree> tree;
    std::shared_ptr<char> waiting = std::make_shared<char>(); // expires when the caller lets go
};

} // namespace

std::unique_ptr<GenicamParameterTree::Opening>
GenicamParameterTree::openDeviceLater(const std::string& deviceId, OpenDone done)
{
    std::string error;
    boost::shared_ptr<GenicamParameterTree> tree = prepare(&error);
    if (!tree) {
        // Still later, as promised, and only if the caller keeps waiting.
        auto opening = std::make_unique<TreeOpening>(tree);
        std::weak_ptr<char> waiting = opening->waiting;
        QTimer::singleShot(0, [done, error, waiting] {
            if (!waiting.expired())
                done(nullptr, error);
        });
        return opening;
    }
    Impl* impl = tree->m_impl.get();
    const int kind = static_cast<int>(GenicamDevice::Source::Device);
    boost::weak_ptr<GenicamParameterTree> weak(tree);
    impl->device->start(GenicamDevice::Source::Device, deviceId,
                        [impl, inbox = impl->receiver->inbox(), weak, done, deviceId,
                         kind](std::shared_ptr<GenicamDevice::OpenResult> opened) {
                            // Runs only while the tree lives: an opening let go of closes the inbox.
                            inbox->post([impl, weak, done, deviceId, kind, opened] {
                                boost::shared_ptr<GenicamParameterTree> tree = weak.lock();
                                if (!tree)
                                    return;
                                if (!opened->ok) {
                                    // The caller lets go of the tree now; it goes after this event.
                                    QTimer::singleShot(0, QCoreApplication::instance(), [tree] {});
                                    done(nullptr, opened->error);
                                    return;
                                }
                                impl->finishOpen(kind, deviceId, *opened);
                                done(tree, std::string());
                            });
                        });
    return std::make_unique<TreeOpening>(tree);
}

boost::shared_ptr<GenicamParameterTree> GenicamParameterTree::openSimulated(std::string* error)
{
    return open(static_cast<int>(GenicamDevice::Source::Simulated), std::string(), error);
}

boost::shared_ptr<GenicamParameterTree> GenicamParameterTree::openXmlFile(const std::string& path,
                                                                          std::string* error)
{
    return open(static_cast<int>(GenicamDevice::Source::XmlFile), path, error);
}

boost::shared_ptr<GenicamParameterTree> GenicamParameterTree::openDevice(const std::string& deviceId,
                                                                         std::string* error)
{
    return open(static_cast<int>(GenicamDevice::Source::Device), deviceId, error);
}

std::vector<GenicamParameterTree::DeviceInfo> GenicamParameterTree::listDevices()
{
    // Discovery runs on a thread of its own, as every use of Aravis here does.
    return std::async(std::launch::async,
                      [] {
                          genicam::AravisQuietScope quiet;
                          std::lock_guard<std::mutex> lock(genicam::aravisSystemMutex());
                          arv_update_device_list();
                          std::vector<DeviceInfo> devices;
                          const unsigned count = arv_get_n_devices();
                          auto text = [](const char* s) { return s ? std::string(s) : std::string(); };
                          for (unsigned i = 0; i < count; ++i) {
                              DeviceInfo info;
                              info.id = text(arv_get_device_id(i));
                              info.vendor = text(arv_get_device_vendor(i));
                              info.model = text(arv_get_device_model(i));
                              info.serial = text(arv_get_device_serial_nbr(i));
                              info.address = text(arv_get_device_address(i));
                              info.protocol = text(arv_get_device_protocol(i));
                              devices.push_back(info);
                          }
                          return devices;
                      })
        .get();
}

boost::shared_ptr<MvParametersModel> GenicamParameterTree::model() const
{
    return m_impl->model;
}

GenicamParameterTree::DeviceState GenicamParameterTree::deviceState() const
{
    return m_impl->connected ? dsConnected : m_impl->stranger.empty() ? dsLost : dsOtherDevice;
}

const std::string& GenicamParameterTree::identity() const
{
    return m_impl->identity;
}

const std::string& GenicamParameterTree::answeringDevice() const
{
    return m_impl->stranger;
}

const std::string& GenicamParameterTree::source() const
{
    return m_impl->source;
}

std::vector<boost::shared_ptr<MvParametersEntryNode>>
GenicamParameterTree::nodes(const std::string& feature) const
{
    std::vector<boost::shared_ptr<MvParametersEntryNode>> result;
    auto it = m_impl->featureByName.find(feature);
    if (it == m_impl->featureByName.end())
        return result;
    for (int p : m_impl->placesOf[it->second])
        result.push_back(m_impl->placeNodes[p]);
    return result;
}

boost::shared_ptr<MvParametersEntryNode> GenicamParameterTree::find(const std::string& feature) const
{
    auto all = nodes(feature);
    return all.empty() ? boost::shared_ptr<MvParametersEntryNode>() : all.front();
}

std::vector<std::pair<std::string, std::vector<std::string>>> GenicamParameterTree::selectors() const
{
    std::vector<std::pair<std::string, std::vector<std::string>>> result;
    for (const FeatureLayout& f : m_impl->layout.features)
        if (!f.selected.empty())
            result.emplace_back(f.name, f.selected);
    return result;
}

int GenicamParameterTree::pollingMs(const std::string& feature) const
{
    const auto it = m_impl->featureByName.find(feature);
    return it == m_impl->featureByName.end() ? 0 : m_impl->layout.features[it->second].pollingMs;
}

GenicamParameterTree::RegisterTraffic GenicamParameterTree::registerTraffic() const
{
    const auto counted = m_impl->device->traffic();
    return RegisterTraffic{counted.reads, counted.writes};
}

void GenicamParameterTree::readRegister(std::uint64_t address, RegisterAnswer done)
{
    m_impl->device->post([inbox = m_impl->receiver->inbox(), address, done](ArvDevice* device) {
        guint32 value = 0;
        GError* e = nullptr;
        const bool ok = device && arv_device_read_register(device, address, &value, &e) && !e;
        const std::string error = ok  ? std::string()
                                  : e ? genicam::reasonOf(e)
                                      : std::string(genicam::kNoAnswer);
        g_clear_error(&e);
        // Nothing reaches the GUI once the tree is closed.
        inbox->post([done, ok, value, error] { done(ok, value, error); });
    });
}

void GenicamParameterTree::writeRegister(std::uint64_t address, std::uint32_t value, RegisterAnswer done)
{
    m_impl->device->post([inbox = m_impl->receiver->inbox(), address, value, done](ArvDevice* device) {
        GError* e = nullptr;
        const bool ok = device && arv_device_write_register(device, address, value, &e) && !e;
        const std::string error = ok  ? std::string()
                                  : e ? genicam::reasonOf(e)
                                      : std::string(genicam::kNoAnswer);
        g_clear_error(&e);
        inbox->post([done, ok, value, error] { done(ok, value, error); });
    });
    refresh();
}

void GenicamParameterTree::setFeaturesOnScreen(const std::vector<std::string>& features)
{
    std::vector<int> watched;
    watched.reserve(features.size());
    for (const std::string& name : features) {
        const auto it = m_impl->featureByName.find(name);
        if (it != m_impl->featureByName.end())
            watched.push_back(it->second);
    }
    m_impl->device->watch(std::move(watched));
}

void GenicamParameterTree::setAllFeaturesOnScreen()
{
    m_impl->device->watchAll();
}

void GenicamParameterTree::refresh()
{
    m_impl->device->refresh();
}

void GenicamParameterTree::post(std::function<void(ArvDevice*)> job)
{
    m_impl->device->post(std::move(job));
}

void GenicamParameterTree::whenIdle(std::function<void()> done)
{
    const std::uint64_t id = ++m_impl->lastBarrier;
    m_impl->idleWaiters.emplace_back(id, std::move(done));
    m_impl->device->barrier(id);
}

bool GenicamParameterTree::waitIdle(int timeoutMs)
{
    const std::uint64_t id = ++m_impl->lastBarrier;
    m_impl->device->barrier(id);
    QElapsedTimer timer;
    timer.start();
    while (m_impl->answeredBarrier < id) {
        if (timeoutMs >= 0 && timer.elapsed() > timeoutMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        if (m_impl->answeredBarrier < id)
            QThread::usleep(200);
    }
    return true;
}

} // namespace models
} // namespace core
} // namespace vorn
