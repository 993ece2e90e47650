#pragma once

#include <vorn/host/GenericModel.h>
#include <vorn/host/Qt4AbstractModel.h>

#include <QHash>

namespace vorn {
namespace core {

class Qt4GenericModelNode;

// A Qt4AbstractModel built from a root item node over a generic model. It listens to the generic
// model's change notification: the rows of changed nodes get setupNode() and dataChanged, so views
// follow value changes without any host code; failed requests come out as errorReported. It declares
// no meta-object of its own, nor do the models built on it: their metaObject(), qt_metacast() and
// qt_metacall() stay Qt4AbstractModel's.
class VORN_MODELQT4_API Qt4GenericModel : public Qt4AbstractModel
{
public:
    explicit Qt4GenericModel(boost::shared_ptr<Qt4AbstractModelNode> root);
    ~Qt4GenericModel() override;

    // The rows that show this generic node (one per place it appears).
    std::vector<Qt4GenericModelNode*> rowsOf(const GenericModelNode* node) const;

    // Used by Qt4GenericModelNode::postInsert.
    void registerRow(Qt4GenericModelNode* row);

private:
    friend class Qt4AbstractModel;
    class Observer;
    void observeGenericModel();
    void detachObserver();

    QMultiHash<const GenericModelNode*, Qt4GenericModelNode*> m_rows;
    boost::shared_ptr<GenericModel> m_observed;
    Observer* m_observer = nullptr;
};

} // namespace core
} // namespace vorn
