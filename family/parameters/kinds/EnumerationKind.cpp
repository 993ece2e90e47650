// Enumeration features: a value that is one of a list of named entries.
#include "family/parameters/kinds/KindSupport.h"

#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/MvParametersModel.h>
#include <vorn/host/ParameterText.h>

namespace vorn {
namespace core {
namespace models {
namespace kinds {

namespace {

const ParameterChoice* choiceOf(const ParameterLimits& limits, long long value)
{
    for (const ParameterChoice& choice : limits.choices)
        if (choice.value == value)
            return &choice;
    return nullptr;
}

class EnumerationKind final : public ParameterKind
{
public:
    EnumerationKind() : ParameterKind(ParameterKindId::Enumeration, "Enumeration", true) {}

    boost::shared_ptr<MvParametersEntryNode> createNode(const boost::shared_ptr<MvParametersModel>& model,
                                                        const std::string& name) const override
    {
        return model->createNode<MvParametersEnumerationNode>(name);
    }

    ParameterValue value(const MvParametersEntryNode& node) const override
    {
        return as(node).getNodeIntValue();
    }

    // The entries, with whether each can be chosen now.
    ParameterLimits limits(const MvParametersEntryNode& node) const override
    {
        ParameterLimits limits;
        for (auto entries = as(node).getEnumEntryNodes(); entries->hasNext();) {
            const auto entry = entries->next();
            limits.choices.push_back(
                ParameterChoice{entry->getValue(), entry->getSymbolic(), entry->getAccessMode()});
        }
        return limits;
    }

    // The current entry follows the value: the one with that value, or none.
    void setValue(MvParametersEntryNode& node, const ParameterValue& value) const override
    {
        if (const long long* v = std::get_if<long long>(&value))
            static_cast<MvParametersEnumerationNode&>(node).setNodeIntValue(*v);
    }

    // The availability of the entries, in their order; the entries themselves belong to the node.
    void setLimits(MvParametersEntryNode& node, const ParameterLimits& limits) const override
    {
        auto entries = as(node).getEnumEntryNodes();
        for (std::size_t i = 0; i < limits.choices.size() && entries->hasNext(); ++i)
            entries->next()->setAccessMode(limits.choices[i].access);
    }

    std::string refusal(const boost::any& value, const ParameterLimits& limits) const override
    {
        const long long* v = boost::any_cast<long long>(&value);
        if (!v)
            return "expects a value of type long long";
        const ParameterChoice* choice = choiceOf(limits, *v);
        if (!choice)
            return "no entry has the value " + texts::digits(*v, 10);
        if (choice->access == peamNotImplemented)
            return "the entry " + choice->symbolic + " is not implemented";
        if (choice->access == peamNotAvailable)
            return "the entry " + choice->symbolic + " is not available";
        return std::string();
    }

    // A value is told by its entry's name where it has one.
    std::string describe(const boost::any& value, const ParameterLimits& limits) const override
    {
        if (const long long* v = boost::any_cast<long long>(&value))
            if (const ParameterChoice* choice = choiceOf(limits, *v))
                return choice->symbolic;
        return ParameterKind::describe(value, limits);
    }

    // The entry's symbolic name. A value that names no entry cannot be written back, so it has no text.
    std::optional<std::string> format(const MvParametersEntryNode& node) const override
    {
        if (!node.getDataValid() || as(node).getNodeValue().empty())
            return std::nullopt;
        return as(node).getNodeValue();
    }

    // An entry's symbolic name (in any case), its display name or its value. Whether the entry can be
    // chosen now is the tree's to say: an earlier write may have changed it.
    bool parse(const MvParametersEntryNode& node, const std::string& input, boost::any* value,
               std::string* reason) const override
    {
        const MvParametersEnumerationNode& e = as(node);
        const std::string text = trimmed(input);
        boost::shared_ptr<MvParametersEnumEntryNode> match = e.getEnumEntryNodesEntry(text);
        for (auto entries = e.getEnumEntryNodes(); !match && entries->hasNext();) {
            auto entry = entries->next();
            if (entry->getDisplayName() == text || lowered(entry->getSymbolic()) == lowered(text))
                match = entry;
        }
        if (!match) {
            bool negative = false;
            unsigned long long magnitude = 0;
            if (integerOf(text, &negative, &magnitude))
                match = e.entryByValue(static_cast<long long>(negative ? 0ull - magnitude : magnitude));
        }
        if (!match) {
            std::string names;
            for (auto entries = e.getEnumEntryNodes(); entries->hasNext();)
                names += (names.empty() ? "" : ", ") + entries->next()->getSymbolic();
            *reason = "no such entry (the entries are " + names + ")";
            return false;
        }
        *value = match->getValue();
        return true;
    }

private:
    static const MvParametersEnumerationNode& as(const MvParametersEntryNode& node)
    {
        return static_cast<const MvParametersEnumerationNode&>(node);
    }
};

} // namespace

const ParameterKind& enumerationKind()
{
    static const EnumerationKind kind;
    return kind;
}

} // namespace kinds
} // namespace models
} // namespace core
} // namespace vorn
