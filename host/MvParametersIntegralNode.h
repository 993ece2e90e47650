#pragma once

#include <vorn/host/MvParametersEntryNode.h>

namespace vorn {
namespace core {
namespace models {

// Fields shared by the signed and the unsigned 64-bit integer nodes; T is the value type.
template <class Derived, class T>
class MvParametersIntegralNode : public TypedParameterNode<Derived, MvParametersEntryNode>
{
public:
    using ValueType = T;
    using TypedParameterNode<Derived, MvParametersEntryNode>::TypedParameterNode;

    T getNodeValue() const { return m_value; }
    T getMinValue() const { return m_min; }
    T getMaxValue() const { return m_max; }
    T getStepValue() const { return m_step; }
    const std::string& getUnit() const { return m_unit; }
    ParameterIntegerRepresentation getRepresentation() const { return m_representation; }
    bool getIsField() const { return m_isField; }
    int getCurrentFieldIndex() const { return m_fieldIndex; }
    // -1 follows the host's integer view mode setting; 0 decimal, 1 hexadecimal, 2 binary.
    int getViewMode() const { return m_viewMode; }

    void setNodeValue(T value) { m_value = value; }
    void setRange(T min, T max)
    {
        m_min = min;
        m_max = max;
    }
    void setStepValue(T step) { m_step = step; }
    void setUnit(const std::string& unit) { m_unit = unit; }
    void setRepresentation(ParameterIntegerRepresentation r) { m_representation = r; }
    void setField(bool isField, int index)
    {
        m_isField = isField;
        m_fieldIndex = index;
    }
    void setViewMode(int mode) { m_viewMode = mode; }

private:
    std::string m_unit;
    T m_value = 0;
    T m_min = 0;
    T m_max = 0;
    T m_step = 1;
    ParameterIntegerRepresentation m_representation = pirLinear;
    int m_fieldIndex = 0;
    int m_viewMode = -1;
    bool m_isField = false;
};

} // namespace models
} // namespace core
} // namespace vorn
