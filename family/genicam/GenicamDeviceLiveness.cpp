#include "family/genicam/GenicamDevice.h"

#include "family/genicam/AccessClock.h"
#include "family/genicam/FreshReads.h"

#include <arv.h>

#include <algorithm>
#include <cassert>
#include <cstdio>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

namespace {

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

} // namespace

void GenicamDevice::startTimers()
{
    const auto now = Clock::now();
    m_due.assign(m_layout.features.size(), now);
    m_watched.assign(m_layout.features.size(), 0);
    for (std::size_t i = 0; i < m_due.size(); ++i)
        m_due[i] = now + std::chrono::milliseconds(m_layout.features[i].pollingMs);
    m_nextProbe = now + kProbePeriod;
}

void GenicamDevice::learnIdentity()
{
    for (const char* name : kIdentityFeatures) {
        auto found = m_featureByName.find(name);
        if (found != m_featureByName.end() && m_layout.features[found->second].problem.empty())
            m_identityFeatures.push_back(found->second);
    }
    // Known from the values read at open: naming the device costs no read.
    m_identity = identityOf([this](int feature) { return m_published[feature]; });
    m_heartbeatMark = markReadAtOpen();
    if (m_heartbeatMark.empty())
        m_heartbeatMark = heartbeat();
}

std::string GenicamDevice::markReadAtOpen() const
{
    // A GigE Vision description names the serial number of the bootstrap registers as a feature
    // (DeviceID, DeviceSerialNumber): when one maps exactly the heartbeat's registers, its value read
    // at open is what the heartbeat would read.
    for (int feature : m_identityFeatures) {
        const int described = m_bindings[static_cast<std::size_t>(feature)].described;
        if (described < 0)
            continue;
        const GenicamDescription::Node& node = m_description.nodeAt(described);
        if (node.tag != "StringReg" || node.dynamicAddress ||
            node.address != static_cast<std::int64_t>(m_heartbeatAddress) ||
            node.bytes != static_cast<std::int64_t>(m_heartbeatSize))
            continue;
        const ParameterState& state = m_published[static_cast<std::size_t>(feature)];
        const auto* value = std::get_if<std::string>(&state.value);
        if (!state.valid || !value || value->size() > m_heartbeatSize)
            continue;
        // Only printable ASCII reads back byte for byte; anything else is read from the device.
        if (!std::all_of(value->begin(), value->end(), [](char c) { return c >= 0x20 && c < 0x7f; }))
            continue;
        return markOf(*value);
    }
    return std::string();
}

std::string GenicamDevice::markOf(const std::string& bytes)
{
    // The bytes up to the first zero, as a string reads them; never empty, which means no answer.
    return "=" + std::string(bytes.c_str());
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
        return std::string();
    return markOf(mark);
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
        // The device may have restarted, or be another one: nothing cached of it holds.
        FreshReads fresh(m_gc);
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

GenicamDevice::Clock::time_point GenicamDevice::nextDeadline() const
{
    auto deadline = Clock::now() + std::chrono::hours(1);
    if (m_layout.live)
        deadline = std::min(deadline, m_nextProbe);
    if (m_errors.lost())
        return deadline;
    for (std::size_t i = 0; i < m_due.size(); ++i)
        if (polledNow(i))
            deadline = std::min(deadline, m_due[i]);
    return deadline;
}

bool GenicamDevice::polledNow(std::size_t feature) const
{
    assert(feature < m_due.size());
    // A command is read again while it runs, wherever it is: its end is what the user waits for.
    if (m_published[feature].active)
        return true;
    // A value off screen may change unseen; it is read once it comes into view.
    return m_layout.features[feature].pollingMs > 0 && (m_watchAll || m_watched[feature]);
}

void GenicamDevice::setWatched(const Job& job)
{
    if (m_due.empty())
        return; // not open (yet): nothing is polled
    std::vector<char> watched(m_due.size(), 0);
    for (int feature : job.watched)
        if (feature >= 0 && static_cast<std::size_t>(feature) < watched.size())
            watched[static_cast<std::size_t>(feature)] = 1;
    const auto now = Clock::now();
    for (std::size_t i = 0; i < watched.size(); ++i) {
        // What comes into view may have changed meanwhile: it is read at once, then at its period.
        const bool wasWatched = m_watchAll || m_watched[i];
        if (!wasWatched && (job.watchAll || watched[i]))
            m_due[i] = now;
    }
    m_watchAll = job.watchAll;
    m_watched.swap(watched);
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
    for (std::size_t i = 0; i < m_due.size(); ++i) {
        if (!polledNow(i))
            continue;
        int period = m_layout.features[i].pollingMs;
        if (period <= 0)
            period = kCommandPollMs;
        if (now >= m_due[i]) {
            due.push_back(static_cast<int>(i));
            m_due[i] = now + std::chrono::milliseconds(period);
        }
    }
    if (due.empty())
        return;
    // A polled value changes on the device by itself: the cache cannot know it.
    FreshReads fresh(m_gc);
    Publication publication;
    readSome(due, publication);
    publish(publication);
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
