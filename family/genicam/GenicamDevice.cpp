#include "family/genicam/GenicamDevice.h"

#include "family/genicam/AravisSupport.h"
#include "family/genicam/FeatureIo.h"
#include "family/genicam/OfflineDevice.h"

#include <arv.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <future>
#include <sstream>
#include <unordered_set>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

namespace {

// The serial number the simulated devices report (their DeviceID).
const char* const kSimulatedSerial = "VORN-SIM0";
const char* const kRootCategory = "Root";
// How long closing a tree waits for the device thread to end before leaving it to end alone.
const std::chrono::milliseconds kReleaseWait(250);
// How often an idle live device is asked whether it still answers.
const std::chrono::milliseconds kProbePeriod(200);
// How often an active command's pIsDone is read when the description gives no polling time.
const int kCommandPollMs = 100;
// The features a device names itself by, in the order its name is told. DeviceID is the serial
// number's name in older descriptions.
const char* const kIdentityFeatures[] = {"DeviceVendorName", "DeviceModelName", "DeviceSerialNumber",
                                         "DeviceID", "GevMACAddress"};
// What another device answering in place of the one opened is called when it does not say.
const char* const kUnnamedDevice = "a device that does not name itself";
const char* const kOnlyTheCameraTells = "only the camera can tell it (an offline description holds no value)";

std::string text(const char* s)
{
    return s ? std::string(s) : std::string();
}

// The parameter tree's texts are Latin-1, one byte a character; the GenICam library hands out UTF-8,
// whatever encoding the description was written in. Characters beyond Latin-1 become '?'.
std::string latin1(const char* s)
{
    std::string out;
    if (!s)
        return out;
    const auto* p = reinterpret_cast<const unsigned char*>(s);
    while (*p) {
        const unsigned char c = *p;
        int extra = c < 0x80 ? 0 : (c >> 5) == 0x6 ? 1 : (c >> 4) == 0xe ? 2 : (c >> 3) == 0x1e ? 3 : -1;
        unsigned long code = extra == 0   ? c
                             : extra == 1 ? (c & 0x1fu)
                             : extra == 2 ? (c & 0x0fu)
                                          : (c & 0x07u);
        ++p;
        for (int i = 0; i < extra && extra > 0; ++i, ++p) {
            if ((*p >> 6) != 0x2) {
                extra = -1;
                break;
            }
            code = (code << 6) | (*p & 0x3fu);
        }
        out += extra >= 0 && code <= 0xff ? static_cast<char>(code) : '?';
    }
    return out;
}

ParameterEntryVisibility visibilityOf(ArvGcVisibility visibility)
{
    switch (visibility) {
    case ARV_GC_VISIBILITY_EXPERT:
        return pevExpert;
    case ARV_GC_VISIBILITY_GURU:
        return pevGuru;
    case ARV_GC_VISIBILITY_INVISIBLE:
        return pevInvisible;
    default: // Beginner, and GenICam's default when none is given
        return pevBeginner;
    }
}

// Aravis numbers the representations in an order of its own; the names are GenICam's.
ParameterIntegerRepresentation representationOf(ArvGcRepresentation representation)
{
    switch (representation) {
    case ARV_GC_REPRESENTATION_LINEAR:
        return pirLinear;
    case ARV_GC_REPRESENTATION_LOGARITHMIC:
        return pirLogarithmic;
    case ARV_GC_REPRESENTATION_BOOLEAN:
        return pirBoolean;
    case ARV_GC_REPRESENTATION_HEX_NUMBER:
        return pirHexNumber;
    case ARV_GC_REPRESENTATION_IPV4_ADDRESS:
        return pirIPV4Address;
    case ARV_GC_REPRESENTATION_MAC_ADDRESS:
        return pirMACAddress;
    default: // PureNumber, and an integer that names none
        return pirPureNumber;
    }
}

} // namespace

class GenicamDevice::AccessClock
{
public:
    explicit AccessClock(std::atomic<std::int64_t>& started) : m_started(started)
    {
        m_outer = m_started.load() == 0;
        if (m_outer)
            m_started.store(nowMs());
    }
    ~AccessClock()
    {
        if (m_outer)
            m_started.store(0);
    }
    AccessClock(const AccessClock&) = delete;
    AccessClock& operator=(const AccessClock&) = delete;

private:
    std::atomic<std::int64_t>& m_started;
    bool m_outer = false;
};

std::int64_t GenicamDevice::nowMs()
{
    const auto ms =
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now().time_since_epoch()).count();
    return std::max<std::int64_t>(1, ms);
}

GenicamDevice::GenicamDevice(Publisher publisher) : m_publisher(std::move(publisher)) {}

GenicamDevice::~GenicamDevice()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = true;
    }
    m_wake.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

bool GenicamDevice::stopping()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_stop;
}

void GenicamDevice::release(std::unique_ptr<GenicamDevice> device)
{
    if (!device)
        return;
    {
        std::lock_guard<std::mutex> lock(device->m_mutex);
        device->m_stop = true;
        device->m_jobs.clear(); // nothing queued is worth a device access any more
    }
    device->m_wake.notify_all();
    if (!device->m_finished.valid() || device->m_finished.wait_for(kReleaseWait) == std::future_status::ready)
        return; // the destructor joins a thread that has ended, or was never started
    std::thread([device = std::move(device)]() mutable { device.reset(); }).detach();
}

GenicamDevice::OpenResult GenicamDevice::open(Source source, const std::string& what)
{
    auto opened = std::make_shared<std::promise<std::shared_ptr<OpenResult>>>();
    std::future<std::shared_ptr<OpenResult>> result = opened->get_future();
    start(source, what, [opened](std::shared_ptr<OpenResult> r) { opened->set_value(std::move(r)); });
    return *result.get();
}

void GenicamDevice::start(Source source, const std::string& what,
                          std::function<void(std::shared_ptr<OpenResult>)> opened)
{
    auto finished = std::make_shared<std::promise<void>>();
    m_finished = finished->get_future();
    m_thread = std::thread([this, source, what, opened, finished] {
        AravisQuietScope quiet;
        auto result = std::make_shared<OpenResult>();
        std::string error;
        result->ok = openSource(source, what, &error);
        if (result->ok && !buildLayout(&error)) {
            result->ok = false;
            error = (source == Source::Simulated ? std::string("simulated camera") : what) + ": " + error;
        }
        if (result->ok && source == Source::XmlFile)
            startAtAllowedValues();
        if (result->ok) {
            for (std::size_t i = 0; i < m_layout.features.size(); ++i)
                m_published[i] = read(static_cast<int>(i));
            if (m_layout.live) {
                for (const char* name : kIdentityFeatures) {
                    auto found = m_featureByName.find(name);
                    if (found != m_featureByName.end() && m_layout.features[found->second].problem.empty())
                        m_identityFeatures.push_back(found->second);
                }
                // Known from the values just read: naming the device costs no read at open.
                m_identity = identityOf([this](int feature) { return m_published[feature]; });
                m_heartbeatMark = heartbeat();
            }
            result->layout = m_layout;
            result->states = m_published;
            result->identity = m_identity;
        } else {
            result->error = error;
        }
        const bool ok = result->ok;
        opened(std::move(result));
        if (ok)
            run();
        if (m_ownGc)
            g_object_unref(m_ownGc);
        m_ownGc = nullptr;
        if (m_device)
            g_object_unref(m_device);
        m_device = nullptr;
        m_gc = nullptr;
        finished->set_value();
    });
}

bool GenicamDevice::openSource(Source source, const std::string& what, std::string* error)
{
    GError* e = nullptr;
    std::string label = what;
    switch (source) {
    case Source::Simulated: {
        label = "simulated camera";
        guardSimulatedDeviceMemory();
        std::lock_guard<std::mutex> lock(aravisSystemMutex());
        arv_set_fake_camera_genicam_filename(nullptr);
        m_device = arv_fake_device_new(kSimulatedSerial, &e);
        break;
    }
    case Source::XmlFile: {
        // Read once and checked here first; the GenICam library then parses what was read.
        if (!m_description.loadFile(what, error))
            return false;
        std::string reason;
        m_device = OfflineDevice::create(m_description.xml(), &reason);
        if (!m_device) {
            *error = what + ": " + reason;
            return false;
        }
        break;
    }
    case Source::Device: {
        if (what.empty()) {
            *error = "no device id given";
            return false;
        }
        std::lock_guard<std::mutex> lock(aravisSystemMutex());
        m_device = arv_open_device(what.c_str(), &e);
        break;
    }
    }
    if (!m_device) {
        std::string reason = e ? reasonOf(e) : AravisQuietScope::lastMessage();
        if (reason.empty())
            reason = "unknown error";
        *error = label + ": cannot open the device (" + reason + ")";
        if (e)
            g_error_free(e);
        return false;
    }
    m_gc = arv_device_get_genicam(m_device);
    if (!m_gc) {
        *error = label + ": the device has no usable GenICam description";
        return false;
    }
    if (source != Source::XmlFile) {
        // A device's description is input from outside too: checked before anything of it is
        // evaluated, and parsed again by the GenICam library where the check had to rewrite it.
        std::size_t size = 0;
        const char* xml = arv_device_get_genicam_xml(m_device, &size);
        if (!xml || size == 0) {
            *error = label + ": the device has no usable GenICam description";
            return false;
        }
        if (!m_description.load(xml, size, label, error))
            return false;
        const std::string& checked = m_description.xml();
        if (checked.size() != size || std::memcmp(checked.data(), xml, size) != 0) {
            m_ownGc = arv_gc_new(m_device, checked.data(), checked.size());
            if (!m_ownGc) {
                *error = label + ": the device has no usable GenICam description";
                return false;
            }
            m_gc = m_ownGc;
        }
    }
    // Aravis checks neither ranges nor access unless asked to.
    arv_gc_set_range_check_policy(m_gc, ARV_RANGE_CHECK_POLICY_ENABLE);
    arv_gc_set_access_check_policy(m_gc, ARV_ACCESS_CHECK_POLICY_ENABLE);
    m_layout.live = source == Source::Device;
    if (ARV_IS_GV_DEVICE(m_device)) {
        // The heartbeat reads the serial number a GigE Vision device keeps in its bootstrap
        // registers: a packet like any register read, and a camera swapped for another at the same
        // address shows at once.
        m_heartbeatAddress = 0xd8;
        m_heartbeatSize = 16;
    }
    m_errors.setLive(m_layout.live);
    return true;
}

bool GenicamDevice::buildLayout(std::string* error)
{
    ArvGcNode* root = arv_gc_get_node(m_gc, kRootCategory);
    if (!root || !ARV_IS_GC_CATEGORY(root)) {
        *error = "the description has no category named Root";
        return false;
    }
    if (!addFeatures(root, error))
        return false;
    m_published.assign(m_layout.features.size(), ParameterState());
    const auto now = Clock::now();
    for (std::size_t i = 0; i < m_bindings.size(); ++i)
        m_bindings[i].due = now + std::chrono::milliseconds(m_layout.features[i].pollingMs);
    m_nextProbe = now + kProbePeriod;
    return true;
}

void GenicamDevice::startAtAllowedValues()
{
    // Offline, the registers behind a description start at zero, which many features do not allow
    // (an exposure time of 0, a value no enumeration entry has). A fresh camera starts at values its
    // description allows, and so does the offline device: each feature outside what it allows is set
    // to its minimum, or to its enumeration's first available entry. Read-only registers too, so the
    // access check is off meanwhile (nothing but this device sees these writes).
    // A bound may itself rest on a register still at zero (a width up to the sensor's width), so
    // the range check is off too: the minimum is what the description allows at the least.
    arv_gc_set_access_check_policy(m_gc, ARV_ACCESS_CHECK_POLICY_DISABLE);
    arv_gc_set_range_check_policy(m_gc, ARV_RANGE_CHECK_POLICY_DISABLE);
    for (std::size_t i = 0; i < m_layout.features.size(); ++i) {
        const FeatureLayout& f = m_layout.features[i];
        if (!f.problem.empty() || !f.parameterKind().holdsValue())
            continue;
        const ParameterState state = read(static_cast<int>(i));
        // A value off the increment's grid is the description's own (a Value it gives), not zeros.
        ParameterLimits bounds = state.limits;
        bounds.increment = ParameterValue();
        if (!state.valid || f.parameterKind().refusal(toAny(state.value), bounds).empty())
            continue;
        // A choice of entries starts at the first available one; a range at its least value; other
        // kinds (strings, booleans) allow whatever they hold.
        ParameterValue start = state.limits.minimum;
        for (const ParameterChoice& choice : state.limits.choices) {
            if (choice.access != peamNotImplemented && choice.access != peamNotAvailable) {
                start = choice.value;
                break;
            }
        }
        if (std::holds_alternative<std::monostate>(start))
            continue;
        GError* e = nullptr;
        m_bindings[i].io->write(m_bindings[i].nodes, toAny(start), &e);
        g_clear_error(&e);
    }
    // The device information a camera keeps in read-only registers, the description names itself.
    const std::pair<const char*, const std::string*> identity[] = {
        {"DeviceVendorName", &m_description.vendorName()}, {"DeviceModelName", &m_description.modelName()}};
    for (const auto& [name, value] : identity) {
        auto found = m_featureByName.find(name);
        if (found == m_featureByName.end() || value->empty())
            continue;
        const FeatureLayout& f = m_layout.features[found->second];
        if (!f.problem.empty())
            continue;
        const ParameterState state = read(found->second);
        if (!std::holds_alternative<std::string>(state.value))
            continue;
        std::string text = *value;
        if (state.limits.maxLength && *state.limits.maxLength >= 0 &&
            text.size() > static_cast<std::size_t>(*state.limits.maxLength))
            text.resize(static_cast<std::size_t>(*state.limits.maxLength));
        GError* e = nullptr;
        m_bindings[found->second].io->write(m_bindings[found->second].nodes, boost::any(text), &e);
        g_clear_error(&e);
    }
    arv_gc_set_access_check_policy(m_gc, ARV_ACCESS_CHECK_POLICY_ENABLE);
    arv_gc_set_range_check_policy(m_gc, ARV_RANGE_CHECK_POLICY_ENABLE);
    m_errors.takeMessage();
    m_offline = true;
}

bool GenicamDevice::addFeatures(ArvGcNode* root, std::string* error)
{
    // A category appears under every category that lists it, as the description says; one that
    // lists itself or an ancestor is left out there. The walk keeps its own stack (the nesting is
    // the description's to choose), and the rows it makes are capped: categories listed by several
    // parents multiply, and a small file can describe a lattice of millions of rows.
    struct Level
    {
        const GSList* next; // the category's next feature
        int place;          // the category's row, -1 for Root
        std::string name;
    };
    std::vector<Level> levels;
    std::unordered_set<std::string> onPath{kRootCategory}; // the names in levels
    levels.push_back(Level{arv_gc_category_get_features(ARV_GC_CATEGORY(root)), -1, kRootCategory});
    while (!levels.empty()) {
        Level& level = levels.back();
        if (!level.next) {
            onPath.erase(level.name);
            levels.pop_back();
            continue;
        }
        const std::string name = static_cast<const char*>(level.next->data);
        level.next = level.next->next;
        const int parentPlace = level.place;
        ArvGcNode* node = arv_gc_get_node(m_gc, name.c_str());
        if (!node || !ARV_IS_GC_FEATURE_NODE(node))
            continue;
        const bool isCategory = ARV_IS_GC_CATEGORY(node);
        if (isCategory && onPath.count(name))
            continue;
        if (m_layout.places.size() >= kMaxRows) {
            *error = "the description makes more than " + std::to_string(kMaxRows) +
                     " rows (its categories are listed by many parents; " + name + " is one too many)";
            return false;
        }
        const int feature = addFeature(name, node);
        const int place = static_cast<int>(m_layout.places.size());
        m_layout.places.push_back(PlaceLayout{feature, parentPlace});
        if (isCategory) {
            onPath.insert(name);
            levels.push_back(Level{arv_gc_category_get_features(ARV_GC_CATEGORY(node)), place, name});
        }
    }
    return true;
}

int GenicamDevice::addFeature(const std::string& name, ArvGcNode* node)
{
    auto known = m_featureByName.find(name);
    if (known != m_featureByName.end())
        return known->second;

    auto* featureNode = ARV_GC_FEATURE_NODE(node);
    const GenicamDescription::Node* described = m_description.node(name);
    FeatureLayout f;
    Binding b;
    b.nodes.node = node;
    b.described = m_description.indexOf(name);
    f.name = name;
    if (described)
        f.problem = described->problem;
    f.displayName = latin1(arv_gc_feature_node_get_display_name(featureNode));
    f.toolTip = latin1(arv_gc_feature_node_get_tooltip(featureNode));
    f.description = latin1(arv_gc_feature_node_get_description(featureNode));
    f.visibility = visibilityOf(arv_gc_feature_node_get_visibility(featureNode));

    const std::string tag = text(arv_dom_node_get_node_name(ARV_DOM_NODE(node)));
    if (ARV_IS_GC_CATEGORY(node)) {
        f.kind = ParameterKindId::Category;
    } else if (ARV_IS_GC_COMMAND(node)) {
        f.kind = ParameterKindId::Command;
        if (described && !described->isDone.empty())
            b.nodes.isDone = arv_gc_get_node(m_gc, described->isDone.c_str());
    } else if (ARV_IS_GC_ENUMERATION(node)) {
        f.kind = ParameterKindId::Enumeration;
        // The entries are the enumeration's children in the document; Aravis's own list of them
        // runs backwards.
        for (ArvDomNode* child = arv_dom_node_get_first_child(ARV_DOM_NODE(node)); child;
             child = arv_dom_node_get_next_sibling(child)) {
            if (!ARV_IS_GC_ENUM_ENTRY(child))
                continue;
            auto* entryNode = ARV_GC_FEATURE_NODE(child);
            EnumEntryLayout entry;
            entry.name = text(arv_gc_feature_node_get_name(entryNode));
            entry.displayName = latin1(arv_gc_feature_node_get_display_name(entryNode));
            entry.toolTip = latin1(arv_gc_feature_node_get_tooltip(entryNode));
            entry.description = latin1(arv_gc_feature_node_get_description(entryNode));
            entry.visibility = visibilityOf(arv_gc_feature_node_get_visibility(entryNode));
            GError* e = nullptr;
            entry.value = arv_gc_enum_entry_get_value(ARV_GC_ENUM_ENTRY(child), &e);
            if (e)
                g_error_free(e);
            f.entries.push_back(entry);
            const GenicamDescription::Node* entryDescribed = m_description.entry(name, entry.name);
            const bool evaluable = !entryDescribed || entryDescribed->problem.empty();
            b.nodes.entries.push_back(evaluable ? ARV_GC_NODE(child) : nullptr);
        }
    } else if (ARV_IS_GC_BOOLEAN(node)) {
        f.kind = ParameterKindId::Boolean;
    } else if (ARV_IS_GC_INTEGER(node)) {
        f.kind = ParameterKindId::Integer;
        // An IntReg is unsigned unless it says otherwise. At 8 bytes its values above 2^63 do not
        // fit Aravis's signed integers, so it is read and written as bytes.
        if (tag == "IntReg" && ARV_IS_GC_REGISTER(node) && f.problem.empty() &&
            (!described || described->sign != "Signed")) {
            GError* e = nullptr;
            const guint64 length = arv_gc_register_get_length(ARV_GC_REGISTER(node), &e);
            if (e)
                g_error_free(e);
            else if (length == 8)
                f.kind = ParameterKindId::UInt64;
        }
        b.nodes.bigEndian = described && described->endianess == "BigEndian";
        f.unit = latin1(arv_gc_integer_get_unit(ARV_GC_INTEGER(node)));
        f.representation = representationOf(arv_gc_integer_get_representation(ARV_GC_INTEGER(node)));
    } else if (ARV_IS_GC_FLOAT(node)) {
        f.kind = ParameterKindId::Float;
        f.unit = latin1(arv_gc_float_get_unit(ARV_GC_FLOAT(node)));
    } else if (ARV_IS_GC_STRING(node)) {
        f.kind = ParameterKindId::String;
    } else {
        f.kind = ParameterKindId::Entry;
    }

    // A feature polls at its own period, or at that of the node that holds its value.
    for (int depth = 0; described && depth < 8; ++depth) {
        if (described->pollingMs > 0) {
            f.pollingMs = described->pollingMs;
            break;
        }
        described = described->value.empty() ? nullptr : m_description.node(described->value);
    }

    // The features whose values depend on this one's (a gain per GainSelector value).
    if (ARV_IS_GC_SELECTOR(node) && arv_gc_selector_is_selector(ARV_GC_SELECTOR(node))) {
        for (const GSList* it = arv_gc_selector_get_selected_features(ARV_GC_SELECTOR(node)); it;
             it = it->next)
            if (ARV_IS_GC_FEATURE_NODE(it->data))
                f.selected.push_back(text(arv_gc_feature_node_get_name(ARV_GC_FEATURE_NODE(it->data))));
    }

    b.io = &FeatureIo::of(f.kind);
    const int index = static_cast<int>(m_layout.features.size());
    m_layout.features.push_back(f);
    m_bindings.push_back(b);
    m_featureByName[name] = index;
    return index;
}

ParameterEntryAccessMode GenicamDevice::accessOf(ArvGcNode* node, bool* locked)
{
    auto* feature = ARV_GC_FEATURE_NODE(node);
    GError* e = nullptr;
    const bool implemented = arv_gc_feature_node_is_implemented(feature, &e);
    m_errors.note(e);
    g_clear_error(&e);
    if (!implemented)
        return peamNotImplemented;
    const bool available = arv_gc_feature_node_is_available(feature, &e);
    m_errors.note(e);
    g_clear_error(&e);
    if (!available)
        return peamNotAvailable;
    const bool isLocked = arv_gc_feature_node_is_locked(feature, &e);
    m_errors.note(e);
    g_clear_error(&e);
    if (locked)
        *locked = isLocked;
    if (isLocked)
        return peamReadOnly;
    switch (arv_gc_feature_node_get_actual_access_mode(feature)) {
    case ARV_GC_ACCESS_MODE_WO:
        return peamReadWrite;
    case ARV_GC_ACCESS_MODE_RW:
        return peamReadWriteIfValid;
    default:
        return peamReadOnly;
    }
}

ParameterState GenicamDevice::read(int index)
{
    const Binding& b = m_bindings[index];
    const FeatureLayout& f = m_layout.features[index];
    ParameterState state;
    // What the description does not let be evaluated is never handed to the GenICam library.
    if (!f.problem.empty()) {
        state.problem = f.problem;
        return state;
    }
    AccessClock clock(m_accessStarted);
    m_errors.takeMessage();
    state.access = accessOf(b.nodes.node, nullptr);
    if (m_errors.lost())
        return state;
    state.problem = evaluationProblem(index);
    if (!state.problem.empty() || m_errors.lost())
        return state;
    b.io->read(f, b.nodes, state, m_errors);
    if (m_offline && state.valid && state.access == peamReadOnly && std::get_if<std::string>(&state.value) &&
        std::get_if<std::string>(&state.value)->empty()) {
        // What a camera reports of itself (its serial number, its firmware) no file holds.
        state.valid = false;
        state.problem = kOnlyTheCameraTells;
        return state;
    }
    if (state.valid)
        return state;
    switch (state.access) {
    case peamReadWrite:
        state.problem = "it can be written, but not read";
        break;
    case peamNotImplemented:
        state.problem = "the device does not implement it";
        break;
    case peamNotAvailable:
        state.problem = "it is not available now";
        break;
    default:
        state.problem = m_errors.lost() ? std::string(kNoAnswer) : m_errors.takeMessage();
        break;
    }
    return state;
}

std::string GenicamDevice::evaluationProblem(int index)
{
    const int described = m_bindings[index].described;
    if (described < 0)
        return std::string();
    const GenicamDescription::Node& node = m_description.closureOf(described);
    for (int formulaNode : node.dividingFormulas) {
        const GenicamDescription::Formulas* formulas = m_description.formulasAt(formulaNode);
        for (const Formula& formula : formulas->read) {
            Formula::Number value;
            std::string problem;
            auto variable = [&](const std::string& name, Formula::Number* out, std::string* why) {
                return formulaVariable(*formulas, name, out, why, 0);
            };
            if (!formula.evaluate(variable, formulas->integer, &value, &problem)) {
                const std::string& name = m_description.nameAt(formulaNode);
                return name == m_layout.features[index].name
                           ? "its formula fails: " + problem
                           : "its value passes through " + name + ", whose formula fails: " + problem;
            }
        }
    }
    for (int lengthNode : node.lengthNodes) {
        const std::string& lengthName = m_description.nodeAt(lengthNode).length;
        ArvGcNode* length = arv_gc_get_node(m_gc, lengthName.c_str());
        if (!length || !ARV_IS_GC_INTEGER(length))
            continue;
        GError* e = nullptr;
        const gint64 bytes = arv_gc_integer_get_value(ARV_GC_INTEGER(length), &e);
        m_errors.note(e);
        const bool failed = e != nullptr;
        g_clear_error(&e);
        if (failed)
            return "the length of " + m_description.nameAt(lengthNode) + " cannot be read";
        if (bytes < 0 || bytes > GenicamDescription::kMaxRegisterLength)
            return "the register " + m_description.nameAt(lengthNode) + " would be " + std::to_string(bytes) +
                   " bytes long; registers above " + std::to_string(GenicamDescription::kMaxRegisterLength) +
                   " bytes are not read";
    }
    return std::string();
}

bool GenicamDevice::formulaVariable(const GenicamDescription::Formulas& formulas, const std::string& name,
                                    Formula::Number* value, std::string* problem, int depth)
{
    // Constants and sub-expressions; the description was checked for sub-expressions that loop.
    auto constant = formulas.constants.find(name);
    if (constant != formulas.constants.end()) {
        auto formula = Formula::parse(constant->second, problem);
        if (!formula || depth > 32)
            return false;
        return formula->evaluate(
            [&](const std::string& inner, Formula::Number* out, std::string* why) {
                return formulaVariable(formulas, inner, out, why, depth + 1);
            },
            formulas.integer, value, problem);
    }
    std::string nodeName;
    auto variable = formulas.variables.find(name.substr(0, name.find('.')));
    if (variable != formulas.variables.end())
        nodeName = variable->second;
    else if (name == "FROM")
        nodeName = formulas.from;
    ArvGcNode* node = nodeName.empty() ? nullptr : arv_gc_get_node(m_gc, nodeName.c_str());
    if (!node) {
        *problem = "variable " + name + " that names nothing";
        return false;
    }
    GError* e = nullptr;
    if (ARV_IS_GC_FLOAT(node)) {
        value->integer = false;
        value->d = arv_gc_float_get_value(ARV_GC_FLOAT(node), &e);
    } else if (ARV_IS_GC_INTEGER(node)) {
        value->integer = true;
        value->i = arv_gc_integer_get_value(ARV_GC_INTEGER(node), &e);
    } else if (ARV_IS_GC_ENUMERATION(node)) {
        value->integer = true;
        value->i = arv_gc_enumeration_get_int_value(ARV_GC_ENUMERATION(node), &e);
    } else if (ARV_IS_GC_BOOLEAN(node)) {
        value->integer = true;
        value->i = arv_gc_boolean_get_value(ARV_GC_BOOLEAN(node), &e) ? 1 : 0;
    } else {
        *problem = "variable " + name + " that has no number";
        return false;
    }
    m_errors.note(e);
    const bool ok = !e;
    g_clear_error(&e);
    if (!ok)
        *problem = "variable " + name + " that cannot be read";
    return ok;
}

std::string GenicamDevice::write(int index, const boost::any& value)
{
    if (m_errors.lost())
        return kNoAnswer;
    const FeatureLayout& f = m_layout.features[index];
    const ParameterKind& kind = f.parameterKind();
    const Binding& b = m_bindings[index];
    if (!kind.takesWrites())
        return kind.refusal(value, ParameterLimits());
    if (!f.problem.empty())
        return f.problem;

    AccessClock clock(m_accessStarted);
    bool locked = false;
    const ParameterEntryAccessMode access = accessOf(b.nodes.node, &locked);
    if (m_errors.lost())
        return kNoAnswer;
    // Aravis would write locked and unavailable features; the description says they must not be.
    std::string reason = ParameterKind::accessRefusal(access, locked);
    if (!reason.empty())
        return reason;
    // Limits the device cannot tell are left out of the check, and to Aravis.
    const ParameterLimits limits = b.io->writeLimits(f, b.nodes, value, m_errors);
    if (m_errors.lost())
        return kNoAnswer;
    reason = kind.refusal(value, limits);
    if (!reason.empty())
        return reason;

    GError* e = nullptr;
    b.io->write(b.nodes, value, &e);
    if (!e)
        return std::string();
    m_errors.note(e);
    reason = reasonOf(e);
    g_error_free(e);
    return m_errors.lost() ? std::string(kNoAnswer) + " (" + reason + ")" : reason;
}

bool GenicamDevice::readInto(int feature, Publication& publication)
{
    // Reading on after a loss would wait for the device once per feature.
    if (m_errors.lost())
        return false;
    ParameterState st = read(feature);
    if (m_errors.lost())
        return false;
    if (st != m_published[feature]) {
        m_published[feature] = st;
        publication.states.emplace_back(feature, std::move(st));
    }
    return true;
}

void GenicamDevice::readAll(Publication& publication)
{
    for (std::size_t i = 0; i < m_layout.features.size(); ++i) {
        if (!readInto(static_cast<int>(i), publication))
            return;
    }
}

void GenicamDevice::readSome(const std::vector<int>& features, Publication& publication)
{
    for (int i : features) {
        if (!readInto(i, publication))
            return;
    }
}

void GenicamDevice::publish(Publication& publication, bool force)
{
    publication.connected = !m_errors.lost();
    publication.giveUpsAnswered = m_giveUpsAnswered;
    const bool news = force || m_errors.lost() != m_lostPublished;
    if (publication.empty() && !news)
        return;
    m_lostPublished = m_errors.lost();
    m_publisher(std::make_shared<Publication>(std::move(publication)));
    publication = Publication();
}

std::string GenicamDevice::heartbeat()
{
    std::string mark(m_heartbeatSize, '\0');
    GError* e = nullptr;
    {
        AccessClock clock(m_accessStarted);
        arv_device_read_memory(m_device, m_heartbeatAddress, static_cast<guint32>(mark.size()), &mark[0], &e);
    }
    AccessErrors heartbeat(true);
    heartbeat.note(e);
    g_clear_error(&e);
    if (heartbeat.lost())
        mark.clear();
    return mark;
}

void GenicamDevice::probe()
{
    const std::string mark = heartbeat();
    const bool lost = mark.empty();
    Publication publication;
    const std::uint64_t giveUps = m_giveUps.load();
    bool recovered = false;
    std::string stranger = m_stranger;
    if (lost) {
        m_errors.setLost(true);
        stranger.clear();
    } else if (!m_stranger.empty() && mark == m_strangerMark) {
        // The other device still answers: nothing to read until that changes.
    } else if (mark != m_heartbeatMark || m_errors.lost() || giveUps != m_giveUpsAnswered) {
        m_errors.setLost(false);
        // The answer may come from another device at the same address (a camera swapped, an
        // address handed to another): its values are not this tree's, so it is not attached to.
        stranger.clear();
        if (!m_identity.empty()) {
            stranger = identityOf([this](int feature) { return read(feature); });
            if (stranger == m_identity)
                stranger.clear();
            else if (stranger.empty())
                stranger = kUnnamedDevice;
        }
        if (m_errors.lost()) {
            stranger.clear();
        } else if (!stranger.empty()) {
            m_errors.setLost(true);
            m_strangerMark = mark;
        } else {
            m_heartbeatMark = mark;
            // Whatever was shown before may be stale: the device may have restarted in between.
            readAll(publication);
            recovered = !m_errors.lost();
            if (recovered)
                m_giveUpsAnswered = giveUps;
        }
    }
    if (stranger != m_stranger) {
        m_stranger = stranger;
        publication.stranger = stranger;
    }
    publish(publication, recovered);
}

std::string GenicamDevice::identityOf(const std::function<ParameterState(int)>& stateOf) const
{
    std::string name;
    std::string serial;
    std::string mac;
    for (int feature : m_identityFeatures) {
        const ParameterState state = stateOf(feature);
        if (!state.valid)
            continue;
        const std::string& featureName = m_layout.features[feature].name;
        if (featureName == "GevMACAddress") {
            const auto* value = std::get_if<long long>(&state.value);
            if (!value)
                continue;
            char text[18];
            const auto bits = static_cast<unsigned long long>(*value);
            std::snprintf(text, sizeof text, "%02llX:%02llX:%02llX:%02llX:%02llX:%02llX", (bits >> 40) & 0xff,
                          (bits >> 32) & 0xff, (bits >> 24) & 0xff, (bits >> 16) & 0xff, (bits >> 8) & 0xff,
                          bits & 0xff);
            mac = text;
            continue;
        }
        const auto* value = std::get_if<std::string>(&state.value);
        if (!value || value->empty())
            continue;
        if (featureName == "DeviceSerialNumber" || featureName == "DeviceID") {
            if (serial.empty())
                serial = *value;
        } else {
            name += (name.empty() ? "" : " ") + *value;
        }
    }
    std::string text = name;
    if (!serial.empty())
        text += (text.empty() ? "serial " : ", serial ") + serial;
    if (!mac.empty())
        text += (text.empty() ? "MAC " : ", MAC ") + mac;
    return text;
}

void GenicamDevice::enqueue(Job job)
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_wake.notify_one();
}

void GenicamDevice::write(int feature, int place, const boost::any& value)
{
    Job job;
    job.type = Job::Write;
    job.feature = feature;
    job.place = place;
    job.value = value;
    enqueue(std::move(job));
}

void GenicamDevice::refresh()
{
    Job job;
    job.type = Job::Refresh;
    enqueue(std::move(job));
}

void GenicamDevice::barrier(std::uint64_t id)
{
    Job job;
    job.type = Job::Barrier;
    job.barrier = id;
    enqueue(std::move(job));
}

void GenicamDevice::post(std::function<void(ArvDevice*)> raw)
{
    Job job;
    job.type = Job::Raw;
    job.raw = std::move(raw);
    enqueue(std::move(job));
}

void GenicamDevice::run()
{
    for (;;) {
        std::deque<Job> jobs;
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_wake.wait_until(lock, nextDeadline(), [this] { return m_stop || !m_jobs.empty(); });
            if (m_stop)
                return;
            jobs.swap(m_jobs);
        }
        if (!jobs.empty())
            handle(jobs);
        runTimers();
    }
}

void GenicamDevice::handle(std::deque<Job>& jobs)
{
    // Writes that queued up together are read back once, and only what they may have changed: a
    // refused write its own feature, a write that took the features it may affect (a refresh, all).
    Publication publication;
    bool dirty = false;
    bool everything = false;
    std::vector<char> pending(m_layout.features.size(), 0);
    auto readBack = [&]() {
        if (everything) {
            readAll(publication);
        } else {
            std::vector<int> features;
            for (std::size_t i = 0; i < pending.size(); ++i)
                if (pending[i])
                    features.push_back(static_cast<int>(i));
            readSome(features, publication);
        }
        std::fill(pending.begin(), pending.end(), 0);
        dirty = everything = false;
    };
    for (Job& job : jobs) {
        if (stopping())
            return; // the tree is closed: nobody waits for these any more
        switch (job.type) {
        case Job::Write: {
            const std::string reason = write(job.feature, job.value);
            if (!reason.empty()) {
                publication.errors.emplace_back(
                    job.place, refusedWriteMessage(m_layout.features[job.feature], job.value, reason));
                pending[static_cast<std::size_t>(job.feature)] = 1;
            } else {
                const std::vector<int>& affected = affectedBy(job.feature);
                if (affected.empty())
                    everything = true;
                for (int feature : affected)
                    pending[static_cast<std::size_t>(feature)] = 1;
            }
            dirty = true;
            break;
        }
        case Job::Refresh:
            dirty = everything = true;
            break;
        case Job::Raw:
            // A host's job may take its time (starting a stream, say): it is not timed as a
            // device access.
            if (job.raw)
                job.raw(m_device);
            break;
        case Job::Barrier:
            if (dirty)
                readBack();
            publication.barrier = job.barrier;
            publish(publication);
            break;
        default:
            break;
        }
    }
    if (dirty)
        readBack();
    publish(publication);
}

const std::vector<int>& GenicamDevice::affectedBy(int feature)
{
    auto known = m_affected.find(feature);
    if (known != m_affected.end())
        return known->second;
    std::vector<int>& features = m_affected[feature];
    const int described = m_bindings[static_cast<std::size_t>(feature)].described;
    // A feature the description does not know (a simulated camera's own) may affect anything:
    // features stays empty, and everything is read again.
    if (described < 0)
        return features;
    if (m_featureOfNode.empty()) {
        // Once: which feature shows each node, and the features no node describes (read always).
        for (std::size_t i = 0; i < m_bindings.size(); ++i) {
            const int node = m_bindings[i].described;
            if (node < 0) {
                m_undescribed.push_back(static_cast<int>(i));
                continue;
            }
            if (static_cast<std::size_t>(node) >= m_featureOfNode.size())
                m_featureOfNode.resize(static_cast<std::size_t>(node) + 1, -1);
            m_featureOfNode[static_cast<std::size_t>(node)] = static_cast<int>(i);
        }
    }
    for (int node : m_description.affectedBy(described))
        if (static_cast<std::size_t>(node) < m_featureOfNode.size() &&
            m_featureOfNode[static_cast<std::size_t>(node)] >= 0)
            features.push_back(m_featureOfNode[static_cast<std::size_t>(node)]);
    features.insert(features.end(), m_undescribed.begin(), m_undescribed.end());
    return features;
}

GenicamDevice::Clock::time_point GenicamDevice::nextDeadline() const
{
    auto deadline = Clock::now() + std::chrono::hours(1);
    if (m_layout.live)
        deadline = std::min(deadline, m_nextProbe);
    if (m_errors.lost())
        return deadline;
    for (std::size_t i = 0; i < m_bindings.size(); ++i) {
        // A command is read again while it runs.
        const bool polled = m_layout.features[i].pollingMs > 0 || m_published[i].active;
        if (polled)
            deadline = std::min(deadline, m_bindings[i].due);
    }
    return deadline;
}

void GenicamDevice::runTimers()
{
    auto now = Clock::now();
    if (m_layout.live && now >= m_nextProbe) {
        probe();
        now = Clock::now();
        m_nextProbe = now + kProbePeriod;
    }
    if (m_errors.lost())
        return;
    std::vector<int> due;
    for (std::size_t i = 0; i < m_bindings.size(); ++i) {
        int period = m_layout.features[i].pollingMs;
        if (period <= 0 && m_published[i].active)
            period = kCommandPollMs;
        if (period <= 0)
            continue;
        if (now >= m_bindings[i].due) {
            due.push_back(static_cast<int>(i));
            m_bindings[i].due = now + std::chrono::milliseconds(period);
        }
    }
    if (due.empty())
        return;
    Publication publication;
    readSome(due, publication);
    publish(publication);
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
