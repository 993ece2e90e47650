#include <vorn/host/GenericModel.h>

#include <algorithm>

namespace vorn {
namespace core {

GenericModelObserver::~GenericModelObserver() = default;

void GenericModelObserver::errorReported(const boost::shared_ptr<GenericModelNode>&, const std::string&) {}

GenericModel::GenericModel() = default;

GenericModel::~GenericModel() = default;

void GenericModel::addObserver(GenericModelObserver* observer)
{
    if (observer && std::find(m_observers.begin(), m_observers.end(), observer) == m_observers.end())
        m_observers.push_back(observer);
}

void GenericModel::removeObserver(GenericModelObserver* observer)
{
    m_observers.erase(std::remove(m_observers.begin(), m_observers.end(), observer), m_observers.end());
}

// Observers may come and go while they are told (a view may drop its model on a change), so each
// notification walks a copy and skips observers that left in the meantime.
template <class F> void GenericModel::forEachObserver(F f)
{
    const std::vector<GenericModelObserver*> snapshot = m_observers;
    for (GenericModelObserver* observer : snapshot) {
        if (std::find(m_observers.begin(), m_observers.end(), observer) != m_observers.end())
            f(observer);
    }
}

void GenericModel::notifyNodesChanged(const std::vector<boost::shared_ptr<GenericModelNode>>& nodes)
{
    if (nodes.empty())
        return;
    forEachObserver([&](GenericModelObserver* o) { o->nodesChanged(nodes); });
}

void GenericModel::notifyAllNodesChanged()
{
    forEachObserver([](GenericModelObserver* o) { o->allNodesChanged(); });
}

void GenericModel::notifyError(const boost::shared_ptr<GenericModelNode>& node, const std::string& message)
{
    forEachObserver([&](GenericModelObserver* o) { o->errorReported(node, message); });
}

} // namespace core
} // namespace vorn
