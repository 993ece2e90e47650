#pragma once

#include <vorn/host/MvParametersEntryNode.h>
#include <vorn/host/ParameterModelCallback.h>

#include <boost/weak_ptr.hpp>

namespace vorn {
namespace core {
namespace models {

// The root of a parameter tree; it holds the callback through which values are written.
class VORN_PARAMETERS_API MvParametersRootNode
    : public TypedParameterNode<MvParametersRootNode, MvParametersEntryNode>
{
public:
    using TypedParameterNode::TypedParameterNode;
    ~MvParametersRootNode() override;
    static std::uint32_t typeId() { return pntRoot; }

    boost::weak_ptr<ParameterModelCallback> getCallback() const { return m_callback; }
    void setCallback(const boost::weak_ptr<ParameterModelCallback>& callback) { m_callback = callback; }

private:
    boost::weak_ptr<ParameterModelCallback> m_callback;
};

} // namespace models
} // namespace core
} // namespace vorn
