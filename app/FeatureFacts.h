#pragma once

#include <vorn/host/MvParametersEntryNode.h>
#include <vorn/host/ParameterKind.h>

#include <QString>

namespace vorn {
namespace browser {

// A feature's properties in the words a person reads in the description pane and in messages.
// Texts that do not apply to a feature's kind (the range of a string, say) are empty.
class FeatureFacts
{
public:
    explicit FeatureFacts(const core::models::MvParametersEntryNode& node)
        : m_node(node), m_kind(core::models::ParameterKind::of(node))
    {}

    QString name() const;
    QString displayName() const;
    QString description() const;
    QString kind() const;
    QString access() const;
    QString visibility() const;
    QString range() const;
    QString increment() const;
    QString unit() const;
    QString representation() const;
    // An enumeration's entries, one line each in entry order: display name, value, the one held now,
    // and why it cannot be chosen where it cannot ("Mono8 = 17301505, current", "RGB8 = 35127316, not
    // available now").
    QString entries() const;

    // Whether the feature holds a value (not a category, command or plain entry).
    bool hasValue() const;

    static QString accessName(core::models::ParameterEntryAccessMode mode);
    static QString visibilityName(core::models::ParameterEntryVisibility level);
    static QString representationName(core::models::ParameterIntegerRepresentation representation);

private:
    const core::models::MvParametersEntryNode& m_node;
    const core::models::ParameterKind& m_kind;
};

} // namespace browser
} // namespace vorn
