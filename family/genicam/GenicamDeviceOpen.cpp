#include "family/genicam/GenicamDevice.h"

#include "family/genicam/AravisSupport.h"
#include "family/genicam/FreshReads.h"
#include "family/genicam/OfflineDevice.h"

#include <arv.h>

#include <cstring>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

namespace {

// The serial number the simulated devices report (their DeviceID).
const char* const kSimulatedSerial = "VORN-SIM0";

} // namespace

void GenicamDevice::openOnThread(Source source, const std::string& what, OpenResult& result)
{
    std::string error;
    result.ok = openSource(source, what, &error);
    if (result.ok && !buildLayout(&error)) {
        result.ok = false;
        error = (source == Source::Simulated ? std::string("simulated camera") : what) + ": " + error;
    }
    if (!result.ok) {
        result.error = error;
        return;
    }
    if (source == Source::XmlFile)
        startAtAllowedValues();
    for (std::size_t i = 0; i < m_layout.features.size(); ++i)
        m_published[i] = read(static_cast<int>(i));
    if (m_layout.live)
        learnIdentity();
    result.layout = m_layout;
    result.states = m_published;
    result.identity = m_identity;
}

void GenicamDevice::closeSource()
{
    if (m_ownGc)
        g_object_unref(m_ownGc);
    m_ownGc = nullptr;
    if (m_device)
        g_object_unref(m_device);
    m_device = nullptr;
    m_gc = nullptr;
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
    FreshReads::useCache(m_gc);
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
    FeatureMapping mapping(m_gc, m_description);
    if (!mapping.map(error))
        return false;
    const bool live = m_layout.live;
    m_layout = std::move(mapping.layout());
    m_layout.live = live;
    m_bindings = std::move(mapping.bindings());
    m_featureByName = std::move(mapping.featureByName());
    m_published.assign(m_layout.features.size(), ParameterState());
    startTimers();
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

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
