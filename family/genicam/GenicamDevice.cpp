#include "family/genicam/GenicamDevice.h"

#include "family/genicam/AravisSupport.h"

#include <arv.h>

#include <algorithm>
#include <climits>
#include <future>
#include <sstream>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

namespace {

// The serial number the simulated devices report (their DeviceID).
const char* const kSimulatedSerial = "VORN-SIM0";
const char* const kRootCategory = "Root";
// How often an idle live device is asked whether it still answers.
const std::chrono::milliseconds kProbePeriod(200);
// How often an active command's pIsDone is read when the description gives no polling time.
const int kCommandPollMs = 100;

std::string text(const char* s)
{
    return s ? std::string(s) : std::string();
}

// Aravis prefixes messages with the names of the nodes it went through ("[Width] [WidthReg] ...");
// the feature is named by our own message already.
std::string reasonOf(const GError* error)
{
    std::string message = error && error->message ? error->message : "unknown error";
    while (!message.empty() && message[0] == '[') {
        const auto end = message.find("] ");
        if (end == std::string::npos)
            break;
        message.erase(0, end + 2);
    }
    return message;
}

// Errors that mean the device did not answer rather than refused.
bool isLoss(const GError* error)
{
    if (!error || error->domain != ARV_DEVICE_ERROR)
        return false;
    return error->code == ARV_DEVICE_ERROR_TIMEOUT || error->code == ARV_DEVICE_ERROR_NOT_CONNECTED ||
           error->code == ARV_DEVICE_ERROR_TRANSFER_ERROR;
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

std::string wrongType(const char* expected)
{
    return std::string("expects a value of type ") + expected;
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

GenicamDevice::OpenResult GenicamDevice::open(Source source, const std::string& what)
{
    auto result = std::make_shared<OpenResult>();
    // Shared with the thread: it may still be inside set_value when this function has returned.
    auto opened = std::make_shared<std::promise<void>>();
    std::future<void> done = opened->get_future();
    m_thread = std::thread([this, source, what, result, opened] {
        AravisQuietScope quiet;
        std::string error;
        result->ok = openSource(source, what, &error) && buildLayout(&error);
        if (result->ok) {
            for (std::size_t i = 0; i < m_layout.features.size(); ++i)
                m_published[i] = read(static_cast<int>(i));
            result->layout = m_layout;
            result->states = m_published;
        } else {
            result->error = error;
        }
        opened->set_value();
        if (result->ok)
            run();
        if (m_device)
            g_object_unref(m_device);
        m_device = nullptr;
        m_gc = nullptr;
    });
    done.wait();
    return *result;
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
        // Checked here first: Aravis's parser would log libxml's complaints and carry on.
        if (!m_description.loadFile(what, error))
            return false;
        guardSimulatedDeviceMemory();
        std::lock_guard<std::mutex> lock(aravisSystemMutex());
        arv_set_fake_camera_genicam_filename(what.c_str());
        m_device = arv_fake_device_new(kSimulatedSerial, &e);
        // Later simulated cameras get the built-in description again.
        arv_set_fake_camera_genicam_filename(nullptr);
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
    // Aravis checks neither ranges nor access unless asked to.
    arv_gc_set_range_check_policy(m_gc, ARV_RANGE_CHECK_POLICY_ENABLE);
    arv_gc_set_access_check_policy(m_gc, ARV_ACCESS_CHECK_POLICY_ENABLE);
    if (source != Source::XmlFile) {
        std::size_t size = 0;
        const char* xml = arv_device_get_genicam_xml(m_device, &size);
        if (!xml || size == 0) {
            *error = label + ": the device has no usable GenICam description";
            return false;
        }
        if (!m_description.load(xml, size, label, error))
            return false;
    }
    m_layout.live = source == Source::Device;
    return true;
}

bool GenicamDevice::buildLayout(std::string* error)
{
    ArvGcNode* root = arv_gc_get_node(m_gc, kRootCategory);
    if (!root || !ARV_IS_GC_CATEGORY(root)) {
        *error = "the description has no category named Root";
        return false;
    }
    std::vector<std::string> ancestors{kRootCategory};
    addFeatures(root, -1, ancestors);
    m_published.assign(m_layout.features.size(), FeatureState());
    const auto now = Clock::now();
    for (std::size_t i = 0; i < m_bindings.size(); ++i)
        m_bindings[i].due = now + std::chrono::milliseconds(m_layout.features[i].pollingMs);
    m_nextProbe = now + kProbePeriod;
    return true;
}

void GenicamDevice::addFeatures(ArvGcNode* category, int parentPlace, std::vector<std::string>& ancestors)
{
    // Aravis keeps a category's features in document order.
    for (const GSList* it = arv_gc_category_get_features(ARV_GC_CATEGORY(category)); it; it = it->next) {
        const std::string name = static_cast<const char*>(it->data);
        ArvGcNode* node = arv_gc_get_node(m_gc, name.c_str());
        if (!node || !ARV_IS_GC_FEATURE_NODE(node))
            continue;
        const bool isCategory = ARV_IS_GC_CATEGORY(node);
        if (isCategory && std::find(ancestors.begin(), ancestors.end(), name) != ancestors.end())
            continue;
        const int feature = addFeature(name, node);
        const int place = static_cast<int>(m_layout.places.size());
        m_layout.places.push_back(PlaceLayout{feature, parentPlace});
        if (isCategory) {
            ancestors.push_back(name);
            addFeatures(node, place, ancestors);
            ancestors.pop_back();
        }
    }
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
    b.node = node;
    f.name = name;
    f.displayName = text(arv_gc_feature_node_get_display_name(featureNode));
    f.toolTip = text(arv_gc_feature_node_get_tooltip(featureNode));
    f.description = text(arv_gc_feature_node_get_description(featureNode));
    f.visibility = visibilityOf(arv_gc_feature_node_get_visibility(featureNode));

    const std::string tag = text(arv_dom_node_get_node_name(ARV_DOM_NODE(node)));
    if (ARV_IS_GC_CATEGORY(node)) {
        f.kind = FeatureKind::Category;
    } else if (ARV_IS_GC_COMMAND(node)) {
        f.kind = FeatureKind::Command;
        if (described && !described->isDone.empty())
            b.isDone = arv_gc_get_node(m_gc, described->isDone.c_str());
    } else if (ARV_IS_GC_ENUMERATION(node)) {
        f.kind = FeatureKind::Enumeration;
        // The entries are the enumeration's children in the document; Aravis's own list of them
        // runs backwards.
        for (ArvDomNode* child = arv_dom_node_get_first_child(ARV_DOM_NODE(node)); child;
             child = arv_dom_node_get_next_sibling(child)) {
            if (!ARV_IS_GC_ENUM_ENTRY(child))
                continue;
            auto* entryNode = ARV_GC_FEATURE_NODE(child);
            EnumEntryLayout entry;
            entry.name = text(arv_gc_feature_node_get_name(entryNode));
            entry.displayName = text(arv_gc_feature_node_get_display_name(entryNode));
            entry.toolTip = text(arv_gc_feature_node_get_tooltip(entryNode));
            entry.description = text(arv_gc_feature_node_get_description(entryNode));
            entry.visibility = visibilityOf(arv_gc_feature_node_get_visibility(entryNode));
            GError* e = nullptr;
            entry.value = arv_gc_enum_entry_get_value(ARV_GC_ENUM_ENTRY(child), &e);
            if (e)
                g_error_free(e);
            f.entries.push_back(entry);
            b.entries.push_back(ARV_GC_NODE(child));
        }
    } else if (ARV_IS_GC_BOOLEAN(node)) {
        f.kind = FeatureKind::Boolean;
    } else if (ARV_IS_GC_INTEGER(node)) {
        f.kind = FeatureKind::Integer;
        // An IntReg is unsigned unless it says otherwise. At 8 bytes its values above 2^63 do not
        // fit Aravis's signed integers, so it is read and written as bytes.
        if (tag == "IntReg" && ARV_IS_GC_REGISTER(node) && (!described || described->sign != "Signed")) {
            GError* e = nullptr;
            const guint64 length = arv_gc_register_get_length(ARV_GC_REGISTER(node), &e);
            if (e)
                g_error_free(e);
            else if (length == 8)
                f.kind = FeatureKind::UInt64;
        }
        b.bigEndian = described && described->endianess == "BigEndian";
        f.unit = text(arv_gc_integer_get_unit(ARV_GC_INTEGER(node)));
        f.representation = representationOf(arv_gc_integer_get_representation(ARV_GC_INTEGER(node)));
    } else if (ARV_IS_GC_FLOAT(node)) {
        f.kind = FeatureKind::Float;
        f.unit = text(arv_gc_float_get_unit(ARV_GC_FLOAT(node)));
    } else if (ARV_IS_GC_STRING(node)) {
        f.kind = FeatureKind::String;
    } else {
        f.kind = FeatureKind::Plain;
    }

    // A feature polls at its own period, or at that of the node that holds its value.
    for (int depth = 0; described && depth < 8; ++depth) {
        if (described->pollingMs > 0) {
            f.pollingMs = described->pollingMs;
            break;
        }
        described = described->value.empty() ? nullptr : m_description.node(described->value);
    }

    const int index = static_cast<int>(m_layout.features.size());
    m_layout.features.push_back(f);
    m_bindings.push_back(b);
    m_featureByName[name] = index;
    return index;
}

void GenicamDevice::noteError(const GError* error)
{
    if (m_layout.live && isLoss(error))
        m_lost = true;
}

ParameterEntryAccessMode GenicamDevice::accessOf(ArvGcNode* node, bool* locked)
{
    auto* feature = ARV_GC_FEATURE_NODE(node);
    GError* e = nullptr;
    const bool implemented = arv_gc_feature_node_is_implemented(feature, &e);
    noteError(e);
    g_clear_error(&e);
    if (!implemented)
        return peamNotImplemented;
    const bool available = arv_gc_feature_node_is_available(feature, &e);
    noteError(e);
    g_clear_error(&e);
    if (!available)
        return peamNotAvailable;
    const bool isLocked = arv_gc_feature_node_is_locked(feature, &e);
    noteError(e);
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

FeatureState GenicamDevice::read(int index)
{
    const FeatureLayout& f = m_layout.features[index];
    const Binding& b = m_bindings[index];
    FeatureState st;
    AccessClock clock(m_accessStarted);
    st.access = accessOf(b.node, nullptr);
    if (m_lost)
        return st;
    GError* e = nullptr;
    for (ArvGcNode* entry : b.entries) {
        auto* entryFeature = ARV_GC_FEATURE_NODE(entry);
        ParameterEntryAccessMode access = peamReadOnly;
        if (!arv_gc_feature_node_is_implemented(entryFeature, &e))
            access = peamNotImplemented;
        else if (!arv_gc_feature_node_is_available(entryFeature, &e))
            access = peamNotAvailable;
        noteError(e);
        g_clear_error(&e);
        st.entryAccess.push_back(access);
    }
    switch (f.kind) {
    case FeatureKind::Category:
    case FeatureKind::Plain:
        st.valid = true;
        return st;
    case FeatureKind::Command: {
        st.valid = true;
        if (!b.isDone)
            return st;
        bool done = true;
        if (ARV_IS_GC_BOOLEAN(b.isDone))
            done = arv_gc_boolean_get_value(ARV_GC_BOOLEAN(b.isDone), &e);
        else if (ARV_IS_GC_INTEGER(b.isDone))
            done = arv_gc_integer_get_value(ARV_GC_INTEGER(b.isDone), &e) != 0;
        else if (ARV_IS_GC_FLOAT(b.isDone))
            done = arv_gc_float_get_value(ARV_GC_FLOAT(b.isDone), &e) != 0.0;
        st.active = !e && !done;
        st.valid = !e;
        noteError(e);
        g_clear_error(&e);
        return st;
    }
    default:
        break;
    }
    // Write-only, missing and unavailable features have no value to read.
    if (st.access == peamNotImplemented || st.access == peamNotAvailable || st.access == peamReadWrite)
        return st;

    switch (f.kind) {
    case FeatureKind::Integer: {
        auto* node = ARV_GC_INTEGER(b.node);
        st.intValue = arv_gc_integer_get_value(node, &e);
        st.valid = !e;
        noteError(e);
        g_clear_error(&e);
        st.intMin = arv_gc_integer_get_min(node, &e);
        if (e)
            st.intMin = LLONG_MIN;
        g_clear_error(&e);
        st.intMax = arv_gc_integer_get_max(node, &e);
        if (e)
            st.intMax = LLONG_MAX;
        g_clear_error(&e);
        st.intInc = arv_gc_integer_get_inc(node, &e);
        if (e || st.intInc < 1)
            st.intInc = 1;
        g_clear_error(&e);
        break;
    }
    case FeatureKind::UInt64: {
        unsigned char bytes[8] = {};
        arv_gc_register_get(ARV_GC_REGISTER(b.node), bytes, sizeof bytes, &e);
        st.valid = !e;
        noteError(e);
        g_clear_error(&e);
        unsigned long long value = 0;
        for (int i = 0; i < 8; ++i) {
            const unsigned long long byte = bytes[b.bigEndian ? i : 7 - i];
            value = (value << 8) | byte;
        }
        st.uintValue = value;
        st.uintMax = ULLONG_MAX;
        const gint64 inc = arv_gc_integer_get_inc(ARV_GC_INTEGER(b.node), &e);
        st.uintInc = (e || inc < 1) ? 1 : static_cast<unsigned long long>(inc);
        g_clear_error(&e);
        break;
    }
    case FeatureKind::Float: {
        auto* node = ARV_GC_FLOAT(b.node);
        st.floatValue = arv_gc_float_get_value(node, &e);
        st.valid = !e;
        noteError(e);
        g_clear_error(&e);
        st.floatMin = arv_gc_float_get_min(node, &e);
        if (e)
            st.floatMin = -G_MAXDOUBLE;
        g_clear_error(&e);
        st.floatMax = arv_gc_float_get_max(node, &e);
        if (e)
            st.floatMax = G_MAXDOUBLE;
        g_clear_error(&e);
        break;
    }
    case FeatureKind::Boolean:
        st.boolValue = arv_gc_boolean_get_value(ARV_GC_BOOLEAN(b.node), &e);
        st.valid = !e;
        noteError(e);
        g_clear_error(&e);
        break;
    case FeatureKind::String: {
        const char* value = arv_gc_string_get_value(ARV_GC_STRING(b.node), &e);
        st.valid = !e;
        noteError(e);
        g_clear_error(&e);
        if (st.valid)
            st.text = text(value);
        st.maxLength = arv_gc_string_get_max_length(ARV_GC_STRING(b.node), &e);
        if (e)
            st.maxLength = 0;
        g_clear_error(&e);
        break;
    }
    case FeatureKind::Enumeration:
        st.intValue = arv_gc_enumeration_get_int_value(ARV_GC_ENUMERATION(b.node), &e);
        st.valid = !e;
        noteError(e);
        g_clear_error(&e);
        break;
    default:
        break;
    }
    return st;
}

template <class T, class Read> bool GenicamDevice::readForWrite(Read read, T* out)
{
    GError* error = nullptr;
    const T value = read(&error);
    const bool ok = !error;
    if (ok)
        *out = value;
    noteError(error);
    g_clear_error(&error);
    return ok;
}

std::string GenicamDevice::write(int index, const boost::any& value)
{
    const char* const lost = kNoAnswer;
    if (m_lost)
        return lost;
    const FeatureLayout& f = m_layout.features[index];
    const Binding& b = m_bindings[index];
    if (f.kind == FeatureKind::Category || f.kind == FeatureKind::Plain)
        return "the feature holds no value";

    AccessClock clock(m_accessStarted);
    bool locked = false;
    const ParameterEntryAccessMode access = accessOf(b.node, &locked);
    if (m_lost)
        return lost;
    // Aravis would write locked and unavailable features; the description says they must not be.
    if (access == peamNotImplemented)
        return "the feature is not implemented";
    if (access == peamNotAvailable)
        return "the feature is not available";
    if (locked)
        return "the feature is locked";
    if (access == peamReadOnly)
        return "the feature is read-only";

    GError* e = nullptr;
    switch (f.kind) {
    case FeatureKind::Integer: {
        const long long* v = boost::any_cast<long long>(&value);
        if (!v)
            return wrongType("long long");
        auto* node = ARV_GC_INTEGER(b.node);
        long long min = 0, max = 0, inc = 1;
        const bool hasMin =
            readForWrite([node](GError** error) { return arv_gc_integer_get_min(node, error); }, &min);
        const bool hasMax =
            !m_lost &&
            readForWrite([node](GError** error) { return arv_gc_integer_get_max(node, error); }, &max);
        const bool hasInc =
            !m_lost &&
            readForWrite([node](GError** error) { return arv_gc_integer_get_inc(node, error); }, &inc);
        if (m_lost)
            return lost;
        if (hasMin && *v < min)
            return toText(*v) + " is below the minimum " + toText(min);
        if (hasMax && *v > max)
            return toText(*v) + " is above the maximum " + toText(max);
        // Unsigned arithmetic: the distance from the minimum always fits.
        if (hasMin && hasInc && inc > 1 &&
            (static_cast<unsigned long long>(*v) - static_cast<unsigned long long>(min)) %
                    static_cast<unsigned long long>(inc) !=
                0)
            return toText(*v) + " is not a multiple of the increment " + toText(inc) + " from " + toText(min);
        arv_gc_integer_set_value(node, *v, &e);
        break;
    }
    case FeatureKind::UInt64: {
        const unsigned long long* v = boost::any_cast<unsigned long long>(&value);
        if (!v)
            return wrongType("unsigned long long");
        auto* node = ARV_GC_INTEGER(b.node);
        gint64 inc = 1;
        const bool hasInc =
            readForWrite([node](GError** error) { return arv_gc_integer_get_inc(node, error); }, &inc);
        if (m_lost)
            return lost;
        if (hasInc && inc > 1 && *v % static_cast<unsigned long long>(inc) != 0)
            return toText(*v) + " is not a multiple of the increment " + toText(inc);
        unsigned char bytes[8];
        for (int i = 0; i < 8; ++i) {
            const int shift = 8 * (b.bigEndian ? 7 - i : i);
            bytes[i] = static_cast<unsigned char>((*v >> shift) & 0xffu);
        }
        arv_gc_register_set(ARV_GC_REGISTER(b.node), bytes, sizeof bytes, &e);
        break;
    }
    case FeatureKind::Float: {
        const double* v = boost::any_cast<double>(&value);
        if (!v)
            return wrongType("double");
        auto* node = ARV_GC_FLOAT(b.node);
        double min = 0, max = 0;
        const bool hasMin =
            readForWrite([node](GError** error) { return arv_gc_float_get_min(node, error); }, &min);
        const bool hasMax =
            !m_lost &&
            readForWrite([node](GError** error) { return arv_gc_float_get_max(node, error); }, &max);
        if (m_lost)
            return lost;
        if (hasMin && !(*v >= min))
            return toText(*v) + " is below the minimum " + toText(min);
        if (hasMax && !(*v <= max))
            return toText(*v) + " is above the maximum " + toText(max);
        arv_gc_float_set_value(node, *v, &e);
        break;
    }
    case FeatureKind::Boolean: {
        const bool* v = boost::any_cast<bool>(&value);
        if (!v)
            return wrongType("bool");
        arv_gc_boolean_set_value(ARV_GC_BOOLEAN(b.node), *v, &e);
        break;
    }
    case FeatureKind::String: {
        const std::string* v = boost::any_cast<std::string>(&value);
        if (!v)
            return wrongType("std::string");
        auto* node = ARV_GC_STRING(b.node);
        gint64 maxLength = 0;
        const bool hasMaxLength = readForWrite(
            [node](GError** error) { return arv_gc_string_get_max_length(node, error); }, &maxLength);
        if (m_lost)
            return lost;
        if (hasMaxLength && maxLength > 0 && static_cast<long long>(v->size()) > maxLength)
            return "the text is longer than " + toText(maxLength) + " bytes";
        arv_gc_string_set_value(ARV_GC_STRING(b.node), v->c_str(), &e);
        break;
    }
    case FeatureKind::Enumeration: {
        const long long* v = boost::any_cast<long long>(&value);
        if (!v)
            return wrongType("long long");
        std::size_t entry = 0;
        while (entry < f.entries.size() && f.entries[entry].value != *v)
            ++entry;
        if (entry == f.entries.size())
            return "no entry has the value " + toText(*v);
        auto* entryNode = ARV_GC_FEATURE_NODE(b.entries[entry]);
        gboolean implemented = TRUE, available = TRUE;
        readForWrite(
            [entryNode](GError** error) { return arv_gc_feature_node_is_implemented(entryNode, error); },
            &implemented);
        if (!m_lost)
            readForWrite(
                [entryNode](GError** error) { return arv_gc_feature_node_is_available(entryNode, error); },
                &available);
        if (m_lost)
            return lost;
        if (!implemented)
            return "the entry " + f.entries[entry].name + " is not implemented";
        if (!available)
            return "the entry " + f.entries[entry].name + " is not available";
        arv_gc_enumeration_set_int_value(ARV_GC_ENUMERATION(b.node), *v, &e);
        break;
    }
    case FeatureKind::Command:
        if (!value.empty())
            return "a command takes no value";
        arv_gc_command_execute(ARV_GC_COMMAND(b.node), &e);
        break;
    default:
        return "the feature holds no value";
    }
    if (!e)
        return std::string();
    noteError(e);
    std::string reason = reasonOf(e);
    g_error_free(e);
    return m_lost ? std::string(lost) + " (" + reason + ")" : reason;
}

bool GenicamDevice::readInto(int feature, Publication& publication)
{
    // Reading on after a loss would wait for the device once per feature.
    if (m_lost)
        return false;
    FeatureState st = read(feature);
    if (m_lost)
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
    publication.connected = !m_lost;
    publication.giveUpsAnswered = m_giveUpsAnswered;
    const bool news = force || m_lost != m_lostPublished;
    if (publication.empty() && !news)
        return;
    m_lostPublished = m_lost;
    m_publisher(std::make_shared<Publication>(std::move(publication)));
    publication = Publication();
}

void GenicamDevice::probe()
{
    guint32 value = 0;
    GError* e = nullptr;
    {
        AccessClock clock(m_accessStarted);
        // Address 0 is the bootstrap's version register on GigE Vision and USB3 Vision devices.
        arv_device_read_register(m_device, 0, &value, &e);
    }
    const bool lost = isLoss(e);
    g_clear_error(&e);
    Publication publication;
    const std::uint64_t giveUps = m_giveUps.load();
    bool recovered = false;
    if (lost) {
        m_lost = true;
    } else if (m_lost || giveUps != m_giveUpsAnswered) {
        // Whatever was shown before may be stale: the device may have restarted in between.
        m_lost = false;
        readAll(publication);
        recovered = !m_lost;
        if (recovered)
            m_giveUpsAnswered = giveUps;
    }
    publish(publication, recovered);
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
    // Writes that queued up together are read back once.
    Publication publication;
    bool dirty = false;
    for (Job& job : jobs) {
        switch (job.type) {
        case Job::Write: {
            const std::string reason = write(job.feature, job.value);
            if (!reason.empty())
                publication.errors.emplace_back(
                    job.place, refusedWriteMessage(m_layout.features[job.feature], job.value, reason));
            dirty = true;
            break;
        }
        case Job::Refresh:
            dirty = true;
            break;
        case Job::Raw:
            // A host's job may take its time (starting a stream, say): it is not timed as a
            // device access.
            if (job.raw)
                job.raw(m_device);
            break;
        case Job::Barrier:
            if (dirty)
                readAll(publication);
            dirty = false;
            publication.barrier = job.barrier;
            publish(publication);
            break;
        default:
            break;
        }
    }
    if (dirty)
        readAll(publication);
    publish(publication);
}

GenicamDevice::Clock::time_point GenicamDevice::nextDeadline() const
{
    auto deadline = Clock::now() + std::chrono::hours(1);
    if (m_layout.live)
        deadline = std::min(deadline, m_nextProbe);
    if (m_lost)
        return deadline;
    for (std::size_t i = 0; i < m_bindings.size(); ++i) {
        const bool polled = m_layout.features[i].pollingMs > 0 ||
                            (m_layout.features[i].kind == FeatureKind::Command && m_published[i].active);
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
    if (m_lost)
        return;
    std::vector<int> due;
    for (std::size_t i = 0; i < m_bindings.size(); ++i) {
        int period = m_layout.features[i].pollingMs;
        if (period <= 0 && m_layout.features[i].kind == FeatureKind::Command && m_published[i].active)
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
