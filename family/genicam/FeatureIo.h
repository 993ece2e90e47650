#pragma once

// How the features of each parameter kind are read from and written to their Aravis nodes: the device
// thread's only per-kind code. What a value means, how a write is checked and what a refusal says is
// the parameter kind's (vorn/host/ParameterKind.h); this is only Aravis's side of it.

#include "family/genicam/GenicamLayout.h"

#include <boost/any.hpp>

typedef struct _ArvGcNode ArvGcNode;
typedef struct _GError GError;

namespace vorn {
namespace core {
namespace models {
namespace genicam {

// The errors of a device's accesses: a live device that does not answer is lost, and the device thread
// makes no further access until it answers again.
class AccessErrors
{
public:
    explicit AccessErrors(bool live = false) : m_live(live) {}
    void note(const GError* error);
    bool lost() const { return m_lost; }
    // The message of the last error noted since the last call, then forgotten.
    std::string takeMessage()
    {
        std::string message;
        message.swap(m_message);
        return message;
    }
    void setLost(bool lost) { m_lost = lost; }
    void setLive(bool live) { m_live = live; }

private:
    bool m_live;
    bool m_lost = false;
    std::string m_message;
};

// The Aravis nodes of one feature.
struct FeatureNodes
{
    ArvGcNode* node = nullptr;
    // An enumeration's entries, in layout order; nullptr for an entry whose availability cannot be
    // evaluated (the description's problem), which counts as not available.
    std::vector<ArvGcNode*> entries;
    ArvGcNode* isDone = nullptr; // a command's pIsDone
    bool bigEndian = false;      // an unsigned 8-byte register
};

class FeatureIo
{
public:
    static const FeatureIo& of(ParameterKindId kind);
    virtual ~FeatureIo();

    // Reads the value and the limits into state, whose access mode is read already. Features that
    // cannot be read (write-only, not implemented, not available) keep no valid value.
    virtual void read(const FeatureLayout& feature, const FeatureNodes& nodes, ParameterState& state,
                      AccessErrors& errors) const = 0;
    // What a write of value is checked against, read now; what the device cannot tell stays empty.
    virtual ParameterLimits writeLimits(const FeatureLayout& feature, const FeatureNodes& nodes,
                                        const boost::any& value, AccessErrors& errors) const;
    // Writes a value that the parameter kind has checked.
    virtual void write(const FeatureNodes& nodes, const boost::any& value, GError** error) const;
};

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
