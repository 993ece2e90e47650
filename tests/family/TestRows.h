#pragma once

// A small row family over the in-memory parameter tree, written the way a library of rows is
// written against the framework: a root row class with the factory, and a model with two columns.

#include <vorn/host/InMemoryParameterTree.h>
#include <vorn/host/Qt4GenericModel.h>
#include <vorn/host/Qt4GenericModelNode.h>

#include <QLabel>

#include <set>

namespace vorn {
namespace test {

using namespace vorn::core;
using namespace vorn::core::models;

class TestRow : public Qt4GenericModelNode
{
public:
    using Qt4GenericModelNode::Qt4GenericModelNode;

    static boost::shared_ptr<TestRow> create(boost::shared_ptr<GenericModel> model,
                                             boost::shared_ptr<GenericModelNode> node,
                                             const boost::any& extra)
    {
        boost::shared_ptr<TestRow> row(new TestRow(model, node, extra));
        row->postConstruct();
        return row;
    }

    boost::shared_ptr<MvParametersEntryNode> entry() const
    {
        return boost::static_pointer_cast<MvParametersEntryNode>(node());
    }

    QVariant dataDisplayRole(int column) override
    {
        if (column == 0)
            return QString::fromStdString(entry()->getDisplayName());
        if (static_cast<GenericModelNode&>(*entry()).typeId() == MvParametersIntegerNode::typeId())
            return QString::number(
                boost::static_pointer_cast<MvParametersIntegerNode>(entry())->getNodeValue());
        return QVariant();
    }

    void setCheckedState(int column, Qt::CheckState state) override
    {
        checkedCalls.push_back(std::make_pair(column, state));
    }

    void postInsert() override
    {
        Qt4GenericModelNode::postInsert();
        ++postInsertCalls;
    }

    bool enableFirstColumnSpanning() override { return starts("Span"); }
    bool enableAutoExpand() override { return starts("Auto"); }
    bool hasIndexWidget(int column) override { return column == 1 && starts("Widget"); }
    QWidget* createIndexWidget(int column) override
    {
        ++widgetsCreated;
        return column == 1 ? new QLabel(QStringLiteral("button")) : nullptr;
    }

    std::vector<std::pair<int, Qt::CheckState>> checkedCalls;
    int postInsertCalls = 0;
    int setupNodeCalls = 0;
    int widgetsCreated = 0;

protected:
    void setupNode() override { ++setupNodeCalls; }

    void setupChildren() override
    {
        if (entry())
            Qt4GenericModelNode::setupChildren(entry()->getChildNodesEntryNode());
    }

    // The extra value may name a node type to leave out: the row and everything below it.
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     const boost::any& extra) override
    {
        if (const std::uint32_t* skipped = boost::any_cast<std::uint32_t>(&extra)) {
            if (node->typeId() == *skipped)
                return boost::shared_ptr<Qt4GenericModelNode>();
        }
        return create(genericModel(), node, extra);
    }

    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode> node,
                                                     boost::shared_ptr<GenericModelNode>,
                                                     const boost::any& extra) override
    {
        return do_create(node, extra);
    }

private:
    bool starts(const char* prefix) const { return entry() && entry()->getName().rfind(prefix, 0) == 0; }
};

class TestModel : public Qt4GenericModel
{
public:
    static boost::shared_ptr<TestModel> create(boost::shared_ptr<Qt4AbstractModelNode> root, int depth = -1)
    {
        boost::shared_ptr<TestModel> model(new TestModel(root, depth));
        if (root)
            root->setupAsRootNode(model);
        return model;
    }

    int columnCount(const QModelIndex& = QModelIndex()) const override { return 2; }
    int getInitialExpansionDepth() override { return m_depth; }

private:
    TestModel(boost::shared_ptr<Qt4AbstractModelNode> root, int depth) : Qt4GenericModel(root), m_depth(depth)
    {}
    int m_depth;
};

inline boost::shared_ptr<TestModel> makeModel(const boost::shared_ptr<InMemoryParameterTree>& tree,
                                              const boost::any& extra = boost::any(), int depth = -1)
{
    auto root = TestRow::create(tree->model(), tree->root(), extra);
    return TestModel::create(root, depth);
}

} // namespace test
} // namespace vorn
