#pragma once

// What the device thread hands to the GUI thread: the shape of the tree once, when the device is
// opened, and the values of features whenever they change. Plain values only, so that they can
// cross threads by copy.

#include <vorn/host/ParameterKind.h>

#include <boost/any.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

// Why a write or a read of a device that stopped answering failed, as the user reads it.
const char* const kNoAnswer = "the device does not answer";

struct EnumEntryLayout
{
    std::string name;
    std::string displayName;
    std::string toolTip;
    std::string description;
    long long value = 0;
    ParameterEntryVisibility visibility = pevBeginner;
};

// One feature of the description, whatever number of places it is shown in.
struct FeatureLayout
{
    std::string name;
    std::string displayName;
    std::string toolTip;
    std::string description;
    std::string unit;
    ParameterKindId kind = ParameterKindId::Entry;
    ParameterEntryVisibility visibility = pevBeginner;
    ParameterIntegerRepresentation representation = pirPureNumber;
    std::vector<EnumEntryLayout> entries;
    int pollingMs = 0; // 0: not polled
    // For a selector, the names of the features it selects, in the description's order.
    std::vector<std::string> selected;
    // Why the description does not let the value be evaluated ("its references loop: A -> B -> A"),
    // or empty.
    std::string problem;

    const ParameterKind& parameterKind() const { return ParameterKind::of(kind); }
    // The entries as writes are checked against them, all available.
    ParameterLimits choices() const;
};

// One node of the tree: the feature it shows and the place above it (-1: the root).
struct PlaceLayout
{
    int feature = 0;
    int parent = -1;
};

struct Layout
{
    std::vector<FeatureLayout> features;
    std::vector<PlaceLayout> places; // parents always come before their children
    bool live = false;               // a device that can vanish (not a simulated one)
};

// The message of a write to feature that was refused for reason: "Cannot set <feature> to
// <value>: <reason>", or "Cannot execute <feature>: <reason>" for a command.
std::string refusedWriteMessage(const FeatureLayout& feature, const boost::any& value,
                                const std::string& reason);

// A batch from the device thread to the GUI thread.
struct Publication
{
    std::vector<std::pair<int, ParameterState>> states; // feature index, new values
    std::vector<std::pair<int, std::string>> errors;    // place index (-1: the tree), message
    bool connected = true;
    // How many times the GUI had given the device up when the device thread last read everything
    // afresh: a GUI that gave up more often keeps the device for lost.
    std::uint64_t giveUpsAnswered = 0;
    std::uint64_t barrier = 0; // answers waitIdle's request with this number (0: none)
    // Set when which device answers at the address changes: what another device answering in
    // place of the one opened says it is, or empty once that is over.
    std::optional<std::string> stranger;

    bool empty() const { return states.empty() && errors.empty() && barrier == 0 && !stranger; }
};

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
