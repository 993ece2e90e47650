#include "family/genicam/GenicamLayout.h"

namespace vorn {
namespace core {
namespace models {
namespace genicam {

ParameterLimits FeatureLayout::choices() const
{
    ParameterLimits limits;
    for (const EnumEntryLayout& entry : entries)
        limits.choices.push_back(ParameterChoice{entry.value, entry.name, peamReadOnly, entry.displayName});
    return limits;
}

std::string refusedWriteMessage(const FeatureLayout& feature, const boost::any& value,
                                const std::string& reason)
{
    return feature.parameterKind().refusedWriteMessage(feature.name, value, feature.choices(), reason);
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
