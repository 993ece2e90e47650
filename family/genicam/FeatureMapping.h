#pragma once

#include "family/genicam/FeatureIo.h"
#include "family/genicam/GenicamDescription.h"
#include "family/genicam/GenicamLayout.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

// ArvGcNode comes with FeatureIo.h.
typedef struct _ArvGc ArvGc;

namespace vorn {
namespace core {
namespace models {
namespace genicam {

// What the device thread keeps per feature besides its layout: the GenICam library's nodes behind it.
struct FeatureBinding
{
    FeatureNodes nodes;
    const FeatureIo* io = nullptr; // the Aravis side of the feature's kind
    int described = -1;            // the feature's node in the checked description, -1 when it has none
};

// Maps a description, as the GenICam library made its nodes, onto the tree's features and rows. A
// live device, the simulated camera and a description file opened offline all go through it, so a
// feature shows the same whatever serves its registers. Reads nothing from the device but the length
// of an 8-byte register's node, which the description states.
class FeatureMapping
{
public:
    // The most rows a description may make; no camera comes near (the largest have a few thousand).
    static constexpr std::size_t kMaxRows = 250000;

    FeatureMapping(ArvGc* gc, const GenicamDescription& description);
    FeatureMapping(const FeatureMapping&) = delete;
    FeatureMapping& operator=(const FeatureMapping&) = delete;

    // Walks the categories from Root; false with the reason when the description cannot be shown.
    bool map(std::string* error);

    Layout& layout() { return m_layout; }
    std::vector<FeatureBinding>& bindings() { return m_bindings; }
    std::unordered_map<std::string, int>& featureByName() { return m_featureByName; }

private:
    int addFeature(const std::string& name, ArvGcNode* node);

    ArvGc* m_gc;
    const GenicamDescription& m_description;
    Layout m_layout;
    std::vector<FeatureBinding> m_bindings; // in the order of m_layout.features
    std::unordered_map<std::string, int> m_featureByName;
};

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
