#include "family/genicam/FeatureMapping.h"

#include <arv.h>

#include <unordered_set>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

namespace {

const char* const kRootCategory = "Root";

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

FeatureMapping::FeatureMapping(ArvGc* gc, const GenicamDescription& description)
    : m_gc(gc), m_description(description)
{}

bool FeatureMapping::map(std::string* error)
{
    ArvGcNode* root = arv_gc_get_node(m_gc, kRootCategory);
    if (!root || !ARV_IS_GC_CATEGORY(root)) {
        *error = "the description has no category named Root";
        return false;
    }
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

int FeatureMapping::addFeature(const std::string& name, ArvGcNode* node)
{
    auto known = m_featureByName.find(name);
    if (known != m_featureByName.end())
        return known->second;

    auto* featureNode = ARV_GC_FEATURE_NODE(node);
    const GenicamDescription::Node* described = m_description.node(name);
    FeatureLayout f;
    FeatureBinding b;
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

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
