#pragma once

// What kind of parameter a node is, and everything that depends on the kind alone: the value it holds
// and the type that value travels in, its limits and how a write is checked against them, with the texts
// of a refusal, and how the value is written as text and read back. One ParameterKind per kind: the
// trees (in memory and on devices), the views, the editors and the browser all ask it, so that a kind
// behaves and reads the same everywhere.

#include <vorn/base/VornExport.h>
#include <vorn/host/ParameterEnums.h>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vorn {
namespace core {

class GenericModelNode;

namespace models {

class MvParametersEntryNode;
class MvParametersModel;

enum class ParameterKindId {
    Entry, // a plain entry, or a node of a class the library does not know
    Category,
    Integer,
    UInt64,
    Float,
    Boolean,
    String,
    Enumeration,
    Command,
};
constexpr std::size_t kParameterKindCount = 9;

// A parameter's value, of the type the tree's callback takes in its boost::any: long long for integers
// and enumerations (the entry's value), unsigned long long for unsigned 64-bit integers, double, bool,
// std::string; nothing for commands and kinds without a value.
using ParameterValue = std::variant<std::monostate, long long, unsigned long long, double, bool, std::string>;

VORN_PARAMETERS_API boost::any toAny(const ParameterValue& value);
// The value in a boost::any of one of the types above; nothing for an empty any or another type.
VORN_PARAMETERS_API ParameterValue fromAny(const boost::any& value);

// An enumeration entry as a write is checked against it.
struct ParameterChoice
{
    long long value = 0;
    std::string symbolic;
    ParameterEntryAccessMode access = peamReadOnly; // not implemented (1) and not available (2) refuse
    std::string displayName;                        // as a person reads it; the symbolic name if empty
    bool operator==(const ParameterChoice& other) const
    {
        return value == other.value && symbolic == other.symbolic && access == other.access &&
               displayName == other.displayName;
    }
};

// What a write is checked against. Bounds and increments are of the kind's value type; one that is not
// known (a device that could not tell) is empty and left out of the check.
struct VORN_PARAMETERS_API ParameterLimits
{
    ParameterValue minimum;
    ParameterValue maximum;
    ParameterValue increment;
    std::optional<long long> maxLength;   // strings, in bytes
    std::vector<ParameterChoice> choices; // enumerations, in entry order
    bool operator==(const ParameterLimits& other) const;
};

// How a value is shown beside the value itself; what does not apply to a kind stays at its default.
struct ParameterPresentation
{
    std::string unit;
    std::optional<ParameterIntegerRepresentation> representation; // integers only
    bool isField = false; // one index of a field, shown with its index
    int fieldIndex = 0;
};

// Everything a tree learns when it reads a parameter, in the form every kind shares.
struct VORN_PARAMETERS_API ParameterState
{
    bool valid = false; // the read succeeded
    ParameterEntryAccessMode access = peamNotAvailable;
    ParameterValue value;
    ParameterLimits limits;
    bool active = false; // a command that is running
    std::string problem; // why the value could not be read, when it could not
    bool operator==(const ParameterState& other) const;
    bool operator!=(const ParameterState& other) const { return !(*this == other); }
};

// The warning an editor shows instead of committing a value that may not be written.
struct EditWarning
{
    std::string title;
    std::string text; // rich text, UTF-8
};

class VORN_PARAMETERS_API ParameterKind
{
public:
    // The kind of a node, by its class's exact type id: a node of a class derived from a parameter class
    // that reports an id of its own is of the Entry kind, as is every node the library does not know.
    static const ParameterKind& of(const GenericModelNode& node);
    static const ParameterKind& of(ParameterKindId id);

    virtual ~ParameterKind();
    ParameterKind(const ParameterKind&) = delete;
    ParameterKind& operator=(const ParameterKind&) = delete;

    ParameterKindId id() const { return m_id; }
    // The name people read: "Integer", "Unsigned 64-bit integer", "Float", "Boolean", "String",
    // "Enumeration", "Command", "Category", "Other".
    const char* name() const { return m_name; }
    // Whether a parameter of the kind holds a value that can be read and set (every kind but categories,
    // commands and plain entries).
    bool holdsValue() const { return m_holdsValue; }
    // Whether a parameter of the kind takes writes at all: values, and the executions of commands.
    // Categories and plain entries refuse every write.
    bool takesWrites() const { return m_holdsValue || m_id == ParameterKindId::Command; }

    // ----- the tree's side: nodes, their values and limits -----

    // A node of the kind's class in model, not yet placed in the tree.
    virtual boost::shared_ptr<MvParametersEntryNode>
    createNode(const boost::shared_ptr<MvParametersModel>& model, const std::string& name) const = 0;
    virtual ParameterValue value(const MvParametersEntryNode& node) const;
    virtual ParameterLimits limits(const MvParametersEntryNode& node) const;
    virtual ParameterPresentation presentation(const MvParametersEntryNode& node) const;
    // What the owner of a tree sets on its nodes; each setter leaves alone what the kind does not have
    // (and a value of another type). Unknown limits become the widest ones.
    virtual void setValue(MvParametersEntryNode& node, const ParameterValue& value) const;
    virtual void setLimits(MvParametersEntryNode& node, const ParameterLimits& limits) const;
    virtual void setActive(MvParametersEntryNode& node, bool active) const;
    // Whether the node is a command that runs now (never for the other kinds).
    virtual bool active(const MvParametersEntryNode& node) const;
    virtual void setPresentation(MvParametersEntryNode& node,
                                 const ParameterPresentation& presentation) const;
    // What a tree has read into the node: access, validity, value, limits and the active state.
    void apply(MvParametersEntryNode& node, const ParameterState& state) const;

    // ----- writes -----

    // Whether the node's access mode lets a write through now: read/write, or read/write while its last
    // read succeeded (a command runs whenever it can be started; its data-valid flag says nothing about
    // that).
    virtual bool writable(const MvParametersEntryNode& node) const;

    // Why value may not be written to a parameter of the kind with these limits, or nothing: a value of
    // the wrong type ("expects a value of type long long"), out of range ("5 is below the minimum 16"),
    // off the increment, too long, or an entry that is missing or not available.
    virtual std::string refusal(const boost::any& value, const ParameterLimits& limits) const;
    // Why the access mode does not allow a write, or nothing ("the feature is read-only"; a locked
    // feature, which only devices tell apart, "the feature is locked").
    static std::string accessRefusal(ParameterEntryAccessMode access, bool locked = false);
    // The message of a refused write: "Cannot set <feature> to <value>: <reason>", without " to <value>"
    // for a value of a type the kind does not take, and "Cannot execute <feature>: <reason>" for a command.
    std::string refusedWriteMessage(const std::string& feature, const boost::any& value,
                                    const ParameterLimits& limits, const std::string& reason) const;

    // The warning an editor shows before it writes value, or nothing when value may be committed: the
    // minimum, the maximum and the increment of numbers. A parameter without an increment accepts only
    // the one value of a single-value range.
    virtual std::optional<EditWarning> editWarning(const MvParametersEntryNode& node,
                                                   const boost::any& value) const;

    // ----- texts -----

    // The value as people write it in value files and on the command line, read back by parse(); nothing
    // for a parameter without a value or whose last read failed.
    virtual std::optional<std::string> format(const MvParametersEntryNode& node) const;
    // The value for the tree's callback that text means, or false with the reason ("not an integer").
    // Limits are left to the tree, which knows the current ones.
    virtual bool parse(const MvParametersEntryNode& node, const std::string& text, boost::any* value,
                       std::string* reason) const;
    // A value as messages show it: numbers as written, an enumeration value by its entry's name, a text
    // in quotes; empty for a value of another type.
    virtual std::string describe(const boost::any& value, const ParameterLimits& limits) const;
    // The range and the increment as a person reads them ("16 to 4096", "16"); empty where they do not
    // apply.
    virtual std::string rangeText(const MvParametersEntryNode& node) const;
    virtual std::string incrementText(const MvParametersEntryNode& node) const;

protected:
    ParameterKind(ParameterKindId id, const char* name, bool holdsValue);

private:
    ParameterKindId m_id;
    const char* m_name;
    bool m_holdsValue;
};

} // namespace models
} // namespace core
} // namespace vorn
