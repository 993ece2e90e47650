#pragma once

#include <vorn/host/MvParametersEntryNode.h>

namespace vorn {
namespace core {
namespace models {

// A floating-point feature.
class VORN_PARAMETERS_API MvParametersFloatNode
    : public TypedParameterNode<MvParametersFloatNode, MvParametersEntryNode>
{
public:
    using TypedParameterNode::TypedParameterNode;
    ~MvParametersFloatNode() override;
    static std::uint32_t typeId() { return pntFloat; }

    double getNodeValue() const { return m_value; }
    double getMinValue() const { return m_min; }
    double getMaxValue() const { return m_max; }
    const std::string& getUnit() const { return m_unit; }
    bool getIsField() const { return m_isField; }
    int getCurrentFieldIndex() const { return m_fieldIndex; }

    void setNodeValue(double value) { m_value = value; }
    void setRange(double min, double max)
    {
        m_min = min;
        m_max = max;
    }
    void setUnit(const std::string& unit) { m_unit = unit; }
    void setField(bool isField, int index)
    {
        m_isField = isField;
        m_fieldIndex = index;
    }

private:
    std::string m_unit;
    double m_value = 0.0;
    double m_min = 0.0;
    double m_max = 0.0;
    int m_fieldIndex = 0;
    bool m_isField = false;
};

} // namespace models
} // namespace core
} // namespace vorn
