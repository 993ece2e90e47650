#pragma once

#include <vorn/host/GenericModel.h>
#include <vorn/host/MvParametersRootNode.h>

namespace vorn {
namespace core {
namespace models {

// A parameter tree as a generic model: its root node, and the change notification of GenericModel.
// Backends call notifyNodesChanged after values changed (on the GUI thread), so views follow.
class VORN_PARAMETERS_API MvParametersModel : public GenericModel
{
public:
    // A model with a root node named "Root".
    static boost::shared_ptr<MvParametersModel> create();
    ~MvParametersModel() override;

    boost::shared_ptr<MvParametersRootNode> root() const { return m_root; }

    // Creates a node of class T that belongs to this model (not yet placed in the tree).
    template <class T, class... Args> boost::shared_ptr<T> createNode(const Args&... args)
    {
        return boost::shared_ptr<T>(new T(shared_from_this(), args...));
    }

protected:
    MvParametersModel();

private:
    boost::shared_ptr<MvParametersRootNode> m_root;
};

// Writes value to node through the callback of the node's tree, as every view does it. Returns false
// and writes nothing when the tree or its callback is gone.
VORN_PARAMETERS_API bool writeThroughCallback(const boost::shared_ptr<MvParametersEntryNode>& node,
                                              const boost::any& value);

} // namespace models
} // namespace core
} // namespace vorn
