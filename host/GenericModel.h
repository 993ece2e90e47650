#pragma once

#include <vorn/base/VornExport.h>

#include <boost/enable_shared_from_this.hpp>
#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace vorn {
namespace core {

class GenericModelNode;

// Told by a GenericModel when values of its nodes changed. Notifications are delivered on the thread
// that calls the notify functions; backends publish on the GUI thread, so item models can react at once.
class VORN_CORE_API GenericModelObserver
{
public:
    virtual ~GenericModelObserver();

    // The values of these nodes changed (their structure did not).
    virtual void nodesChanged(const std::vector<boost::shared_ptr<GenericModelNode>>& nodes) = 0;
    // Any value may have changed: refresh everything that is shown.
    virtual void allNodesChanged() = 0;
    // A request against the model failed; message names the node and the reason.
    virtual void errorReported(const boost::shared_ptr<GenericModelNode>& node, const std::string& message);
};

// A tree of GenericModelNode objects with change notification.
class VORN_CORE_API GenericModel : public boost::enable_shared_from_this<GenericModel>
{
public:
    GenericModel();
    GenericModel(const GenericModel&) = delete;
    GenericModel& operator=(const GenericModel&) = delete;
    virtual ~GenericModel();

    void addObserver(GenericModelObserver* observer);
    void removeObserver(GenericModelObserver* observer);
    std::size_t observerCount() const { return m_observers.size(); }

    void notifyNodesChanged(const std::vector<boost::shared_ptr<GenericModelNode>>& nodes);
    void notifyAllNodesChanged();
    void notifyError(const boost::shared_ptr<GenericModelNode>& node, const std::string& message);

private:
    template <class F> void forEachObserver(F f);

    std::vector<GenericModelObserver*> m_observers;
};

} // namespace core
} // namespace vorn
