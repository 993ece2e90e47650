#include "family/genicam/FeatureIo.h"

#include <arv.h>

#include <cstring>

#include <climits>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

namespace {

// Errors that mean the device did not answer rather than refused.
bool isLoss(const GError* error)
{
    if (!error || error->domain != ARV_DEVICE_ERROR)
        return false;
    return error->code == ARV_DEVICE_ERROR_TIMEOUT || error->code == ARV_DEVICE_ERROR_NOT_CONNECTED ||
           error->code == ARV_DEVICE_ERROR_TRANSFER_ERROR;
}

// One read of the device: its result, or nothing when it failed (the error is noted, then dropped).
template <class Read> auto attempt(AccessErrors& errors, Read read) -> std::optional<decltype(read(nullptr))>
{
    GError* error = nullptr;
    const auto value = read(&error);
    errors.note(error);
    const bool ok = !error;
    g_clear_error(&error);
    if (!ok)
        return std::nullopt;
    return value;
}

// Only features whose value can be read are read: write-only, missing and unavailable ones have none.
bool readable(ParameterEntryAccessMode access)
{
    return access != peamNotImplemented && access != peamNotAvailable && access != peamReadWrite;
}

template <class T> ParameterValue valueOr(const std::optional<T>& value)
{
    return value ? ParameterValue(*value) : ParameterValue();
}

// Categories and plain entries: nothing to read but their presence.
class StructureIo final : public FeatureIo
{
public:
    void read(const FeatureLayout&, const FeatureNodes&, ParameterState& state, AccessErrors&) const override
    {
        state.valid = true;
    }
};

// A command is running while the node its pIsDone names reads false (0); without pIsDone it never is.
class CommandIo final : public FeatureIo
{
public:
    void read(const FeatureLayout&, const FeatureNodes& nodes, ParameterState& state,
              AccessErrors& errors) const override
    {
        state.valid = true;
        ArvGcNode* isDone = nodes.isDone;
        if (!isDone)
            return;
        const auto done = attempt(errors, [isDone](GError** e) {
            if (ARV_IS_GC_BOOLEAN(isDone))
                return arv_gc_boolean_get_value(ARV_GC_BOOLEAN(isDone), e) != FALSE;
            if (ARV_IS_GC_INTEGER(isDone))
                return arv_gc_integer_get_value(ARV_GC_INTEGER(isDone), e) != 0;
            if (ARV_IS_GC_FLOAT(isDone))
                return arv_gc_float_get_value(ARV_GC_FLOAT(isDone), e) != 0.0;
            return true;
        });
        state.valid = done.has_value();
        state.active = done && !*done;
    }

    void write(const FeatureNodes& nodes, const boost::any&, GError** error) const override
    {
        arv_gc_command_execute(ARV_GC_COMMAND(nodes.node), error);
    }
};

class IntegerIo final : public FeatureIo
{
public:
    void read(const FeatureLayout& feature, const FeatureNodes& nodes, ParameterState& state,
              AccessErrors& errors) const override
    {
        if (!readable(state.access))
            return;
        auto* node = ARV_GC_INTEGER(nodes.node);
        const auto value = attempt(errors, [node](GError** e) { return arv_gc_integer_get_value(node, e); });
        state.valid = value.has_value();
        state.value = value.value_or(0);
        state.limits = writeLimits(feature, nodes, boost::any(), errors);
    }

    ParameterLimits writeLimits(const FeatureLayout&, const FeatureNodes& nodes, const boost::any&,
                                AccessErrors& errors) const override
    {
        auto* node = ARV_GC_INTEGER(nodes.node);
        ParameterLimits limits;
        limits.minimum =
            valueOr(attempt(errors, [node](GError** e) { return arv_gc_integer_get_min(node, e); }));
        if (!errors.lost())
            limits.maximum =
                valueOr(attempt(errors, [node](GError** e) { return arv_gc_integer_get_max(node, e); }));
        if (!errors.lost())
            limits.increment = increment(node, errors);
        return limits;
    }

    void write(const FeatureNodes& nodes, const boost::any& value, GError** error) const override
    {
        arv_gc_integer_set_value(ARV_GC_INTEGER(nodes.node), boost::any_cast<long long>(value), error);
    }

    // An increment below 1 says nothing.
    template <class T = long long> static ParameterValue increment(ArvGcInteger* node, AccessErrors& errors)
    {
        const auto inc = attempt(errors, [node](GError** e) { return arv_gc_integer_get_inc(node, e); });
        return inc && *inc >= 1 ? ParameterValue(static_cast<T>(*inc)) : ParameterValue();
    }
};

// An 8-byte unsigned register, read and written as its bytes: values above 2^63 do not fit Aravis's
// signed integers. Its range is all 64-bit values.
class UInt64Io final : public FeatureIo
{
public:
    void read(const FeatureLayout& feature, const FeatureNodes& nodes, ParameterState& state,
              AccessErrors& errors) const override
    {
        if (!readable(state.access))
            return;
        unsigned char bytes[8] = {};
        GError* e = nullptr;
        arv_gc_register_get(ARV_GC_REGISTER(nodes.node), bytes, sizeof bytes, &e);
        state.valid = !e;
        errors.note(e);
        g_clear_error(&e);
        unsigned long long value = 0;
        for (int i = 0; i < 8; ++i)
            value = (value << 8) | bytes[nodes.bigEndian ? i : 7 - i];
        state.value = value;
        state.limits = writeLimits(feature, nodes, boost::any(), errors);
    }

    ParameterLimits writeLimits(const FeatureLayout&, const FeatureNodes& nodes, const boost::any&,
                                AccessErrors& errors) const override
    {
        ParameterLimits limits;
        limits.minimum = 0ull;
        limits.maximum = ULLONG_MAX;
        limits.increment = IntegerIo::increment<unsigned long long>(ARV_GC_INTEGER(nodes.node), errors);
        return limits;
    }

    void write(const FeatureNodes& nodes, const boost::any& value, GError** error) const override
    {
        const unsigned long long v = boost::any_cast<unsigned long long>(value);
        unsigned char bytes[8];
        for (int i = 0; i < 8; ++i)
            bytes[i] = static_cast<unsigned char>((v >> (8 * (nodes.bigEndian ? 7 - i : i))) & 0xffu);
        arv_gc_register_set(ARV_GC_REGISTER(nodes.node), bytes, sizeof bytes, error);
    }
};

class FloatIo final : public FeatureIo
{
public:
    void read(const FeatureLayout& feature, const FeatureNodes& nodes, ParameterState& state,
              AccessErrors& errors) const override
    {
        if (!readable(state.access))
            return;
        auto* node = ARV_GC_FLOAT(nodes.node);
        const auto value = attempt(errors, [node](GError** e) { return arv_gc_float_get_value(node, e); });
        state.valid = value.has_value();
        state.value = value.value_or(0.0);
        state.limits = writeLimits(feature, nodes, boost::any(), errors);
    }

    ParameterLimits writeLimits(const FeatureLayout&, const FeatureNodes& nodes, const boost::any&,
                                AccessErrors& errors) const override
    {
        auto* node = ARV_GC_FLOAT(nodes.node);
        ParameterLimits limits;
        limits.minimum =
            valueOr(attempt(errors, [node](GError** e) { return arv_gc_float_get_min(node, e); }));
        if (!errors.lost())
            limits.maximum =
                valueOr(attempt(errors, [node](GError** e) { return arv_gc_float_get_max(node, e); }));
        return limits;
    }

    void write(const FeatureNodes& nodes, const boost::any& value, GError** error) const override
    {
        arv_gc_float_set_value(ARV_GC_FLOAT(nodes.node), boost::any_cast<double>(value), error);
    }
};

class BooleanIo final : public FeatureIo
{
public:
    void read(const FeatureLayout&, const FeatureNodes& nodes, ParameterState& state,
              AccessErrors& errors) const override
    {
        if (!readable(state.access))
            return;
        auto* node = ARV_GC_BOOLEAN(nodes.node);
        const auto value =
            attempt(errors, [node](GError** e) { return arv_gc_boolean_get_value(node, e) != FALSE; });
        state.valid = value.has_value();
        state.value = value.value_or(false);
    }

    void write(const FeatureNodes& nodes, const boost::any& value, GError** error) const override
    {
        arv_gc_boolean_set_value(ARV_GC_BOOLEAN(nodes.node), boost::any_cast<bool>(value), error);
    }
};

class StringIo final : public FeatureIo
{
public:
    void read(const FeatureLayout& feature, const FeatureNodes& nodes, ParameterState& state,
              AccessErrors& errors) const override
    {
        if (!readable(state.access))
            return;
        auto* node = ARV_GC_STRING(nodes.node);
        state.limits = writeLimits(feature, nodes, boost::any(), errors);
        // A string register that fills its whole length has no terminating NUL in the GenICam
        // library's buffer: read no further than the register is long.
        const std::optional<long long> length = state.limits.maxLength;
        const auto value = attempt(errors, [node, length](GError** e) {
            const char* text = arv_gc_string_get_value(node, e);
            if (!text)
                return std::string();
            return length && *length >= 0
                       ? std::string(text, ::strnlen(text, static_cast<std::size_t>(*length)))
                       : std::string(text);
        });
        state.valid = value.has_value();
        state.value = value.value_or(std::string());
    }

    ParameterLimits writeLimits(const FeatureLayout&, const FeatureNodes& nodes, const boost::any&,
                                AccessErrors& errors) const override
    {
        auto* node = ARV_GC_STRING(nodes.node);
        ParameterLimits limits;
        if (const auto length =
                attempt(errors, [node](GError** e) { return arv_gc_string_get_max_length(node, e); }))
            limits.maxLength = *length;
        return limits;
    }

    void write(const FeatureNodes& nodes, const boost::any& value, GError** error) const override
    {
        arv_gc_string_set_value(ARV_GC_STRING(nodes.node), boost::any_cast<std::string>(value).c_str(),
                                error);
    }
};

class EnumerationIo final : public FeatureIo
{
public:
    // Whether each entry can be chosen now is read with the value.
    void read(const FeatureLayout& feature, const FeatureNodes& nodes, ParameterState& state,
              AccessErrors& errors) const override
    {
        state.limits = feature.choices();
        for (std::size_t i = 0; i < nodes.entries.size() && i < state.limits.choices.size(); ++i)
            state.limits.choices[i].access = entryAccess(nodes.entries[i], errors);
        if (!readable(state.access))
            return;
        auto* node = ARV_GC_ENUMERATION(nodes.node);
        const auto value =
            attempt(errors, [node](GError** e) { return arv_gc_enumeration_get_int_value(node, e); });
        state.valid = value.has_value();
        state.value = static_cast<long long>(value.value_or(0));
    }

    // Only the entry written to is asked whether it can be chosen.
    ParameterLimits writeLimits(const FeatureLayout& feature, const FeatureNodes& nodes,
                                const boost::any& value, AccessErrors& errors) const override
    {
        ParameterLimits limits = feature.choices();
        const long long* v = boost::any_cast<long long>(&value);
        for (std::size_t i = 0; v && i < limits.choices.size() && i < nodes.entries.size(); ++i)
            if (limits.choices[i].value == *v)
                limits.choices[i].access = entryAccess(nodes.entries[i], errors);
        return limits;
    }

    void write(const FeatureNodes& nodes, const boost::any& value, GError** error) const override
    {
        arv_gc_enumeration_set_int_value(ARV_GC_ENUMERATION(nodes.node), boost::any_cast<long long>(value),
                                         error);
    }

private:
    static ParameterEntryAccessMode entryAccess(ArvGcNode* entry, AccessErrors& errors)
    {
        if (!entry)
            return peamNotAvailable;
        auto* feature = ARV_GC_FEATURE_NODE(entry);
        const auto implemented =
            attempt(errors, [feature](GError** e) { return arv_gc_feature_node_is_implemented(feature, e); });
        if (implemented && !*implemented)
            return peamNotImplemented;
        if (errors.lost())
            return peamReadOnly;
        const auto available =
            attempt(errors, [feature](GError** e) { return arv_gc_feature_node_is_available(feature, e); });
        return available && !*available ? peamNotAvailable : peamReadOnly;
    }
};

} // namespace

void AccessErrors::note(const GError* error)
{
    if (!error)
        return;
    if (m_live && isLoss(error))
        m_lost = true;
    // The GenICam library names the nodes it went through first ("[Width] [WidthReg] ...").
    std::string message = error->message ? error->message : "unknown error";
    while (!message.empty() && message[0] == '[') {
        const auto end = message.find("] ");
        if (end == std::string::npos)
            break;
        message.erase(0, end + 2);
    }
    m_message = message;
}

FeatureIo::~FeatureIo() = default;

ParameterLimits FeatureIo::writeLimits(const FeatureLayout&, const FeatureNodes&, const boost::any&,
                                       AccessErrors&) const
{
    return ParameterLimits();
}

// A kind without a value is never written: its parameter kind refuses every write first.
void FeatureIo::write(const FeatureNodes&, const boost::any&, GError**) const {}

const FeatureIo& FeatureIo::of(ParameterKindId kind)
{
    static const StructureIo structure;
    static const CommandIo command;
    static const IntegerIo integer;
    static const UInt64Io uint64;
    static const FloatIo floating;
    static const BooleanIo boolean;
    static const StringIo string;
    static const EnumerationIo enumeration;
    // In the order of ParameterKindId.
    static const FeatureIo* const io[] = {&structure, &structure, &integer,     &uint64, &floating,
                                          &boolean,   &string,    &enumeration, &command};
    static_assert(sizeof io / sizeof io[0] == kParameterKindCount, "Aravis's side of every kind");
    const auto index = static_cast<std::size_t>(kind);
    return index < kParameterKindCount ? *io[index] : structure;
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
