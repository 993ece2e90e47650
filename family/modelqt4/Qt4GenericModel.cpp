#include <vorn/host/Qt4GenericModel.h>

#include <vorn/host/GenericModelNode.h>
#include <vorn/host/Qt4GenericModelNode.h>

namespace vorn {
namespace core {

// Relays the generic model's notifications to the item model; lives as long as the item model.
class Qt4GenericModel::Observer : public GenericModelObserver
{
public:
    explicit Observer(Qt4GenericModel* model) : m_model(model) {}

    void nodesChanged(const std::vector<boost::shared_ptr<GenericModelNode>>& nodes) override
    {
        std::vector<Qt4AbstractModelNode*> rows;
        for (const auto& node : nodes) {
            for (Qt4GenericModelNode* row : m_model->rowsOf(node.get()))
                rows.push_back(row);
        }
        m_model->refreshNodes(rows);
    }

    void allNodesChanged() override { m_model->refreshAll(); }

    void errorReported(const boost::shared_ptr<GenericModelNode>&, const std::string& message) override
    {
        emit m_model->errorReported(QString::fromStdString(message));
    }

private:
    Qt4GenericModel* m_model;
};

Qt4GenericModel::Qt4GenericModel(boost::shared_ptr<Qt4AbstractModelNode> root)
    : Qt4AbstractModel(std::move(root))
{}

Qt4GenericModel::~Qt4GenericModel()
{
    detachObserver();
}

void Qt4GenericModel::registerRow(Qt4GenericModelNode* row)
{
    Q_ASSERT(row);
    if (row->node())
        m_rows.insert(row->node().get(), row);
}

std::vector<Qt4GenericModelNode*> Qt4GenericModel::rowsOf(const GenericModelNode* node) const
{
    std::vector<Qt4GenericModelNode*> rows;
    for (auto it = m_rows.constFind(node); it != m_rows.constEnd() && it.key() == node; ++it)
        rows.push_back(it.value());
    return rows;
}

void Qt4GenericModel::observeGenericModel()
{
    auto* root = dynamic_cast<Qt4GenericModelBaseNode*>(rootNode().get());
    if (!root || !root->genericModel())
        return;
    detachObserver();
    m_observer = new Observer(this);
    m_observed = root->genericModel();
    m_observed->addObserver(m_observer);
}

void Qt4GenericModel::detachObserver()
{
    if (m_observed)
        m_observed->removeObserver(m_observer);
    m_observed.reset();
    delete m_observer;
    m_observer = nullptr;
}

} // namespace core
} // namespace vorn
