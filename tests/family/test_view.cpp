#include "TestRows.h"

#include "support/ModelDump.h"
#include <vorn/host/Qt4GenericTreeView.h>

#include <QCoreApplication>
#include <QLabel>
#include <QSortFilterProxyModel>

#include <gtest/gtest.h>

using namespace vorn::test;

namespace {

boost::shared_ptr<InMemoryParameterTree> viewTree()
{
    auto tree = InMemoryParameterTree::create();
    auto span = tree->category(tree->root(), "SpanCat").node();
    tree->integer(span, "Width");
    tree->command(span, "WidgetRun");
    auto inner = tree->category(span, "Inner").node();
    tree->integer(inner, "Deep");
    auto autoCat = tree->category(tree->root(), "AutoCat").node();
    auto autoInner = tree->category(autoCat, "Plain").node();
    tree->integer(autoInner, "Leaf");
    return tree;
}

// Hides the rows whose name is in hidden.
class NameFilter : public QSortFilterProxyModel
{
public:
    std::set<QString> hidden;
    void refilter() { invalidateFilter(); }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override
    {
        return hidden.count(sourceModel()->index(row, 0, parent).data().toString()) == 0;
    }
};

using vorn::test::findRow;
using vorn::test::requireRow;

} // namespace

TEST(Qt4GenericTreeViewTest, expandsAllLevelsForDepthMinusOne)
{
    auto tree = viewTree();
    auto model = makeModel(tree, boost::any(), -1);
    Qt4GenericTreeView view;
    view.setModel(model.get());
    EXPECT_TRUE(view.isExpanded(requireRow(model.get(), "SpanCat")));
    EXPECT_TRUE(view.isExpanded(requireRow(model.get(), "Inner")));
    EXPECT_TRUE(view.isExpanded(requireRow(model.get(), "Plain")));
}

TEST(Qt4GenericTreeViewTest, expandsNothingForDepthZeroButAutoExpandRows)
{
    auto tree = viewTree();
    auto model = makeModel(tree, boost::any(), 0);
    Qt4GenericTreeView view;
    view.setModel(model.get());
    EXPECT_FALSE(view.isExpanded(requireRow(model.get(), "SpanCat")));
    EXPECT_FALSE(view.isExpanded(requireRow(model.get(), "Inner")));
    EXPECT_TRUE(view.isExpanded(requireRow(model.get(), "AutoCat")));
    EXPECT_FALSE(view.isExpanded(requireRow(model.get(), "Plain")));
}

TEST(Qt4GenericTreeViewTest, expandsOneLevelForDepthOne)
{
    auto tree = viewTree();
    auto model = makeModel(tree, boost::any(), 1);
    Qt4GenericTreeView view;
    view.setModel(model.get());
    EXPECT_TRUE(view.isExpanded(requireRow(model.get(), "SpanCat")));
    EXPECT_FALSE(view.isExpanded(requireRow(model.get(), "Inner")));
}

TEST(Qt4GenericTreeViewTest, spansRowsAndPlacesIndexWidgets)
{
    auto tree = viewTree();
    auto model = makeModel(tree);
    Qt4GenericTreeView view;
    view.setModel(model.get());
    const QModelIndex span = requireRow(model.get(), "SpanCat");
    EXPECT_TRUE(view.isFirstColumnSpanned(span.row(), span.parent()));
    const QModelIndex width = requireRow(model.get(), "Width");
    EXPECT_FALSE(view.isFirstColumnSpanned(width.row(), width.parent()));
    const QModelIndex run = requireRow(model.get(), "WidgetRun");
    auto* label = qobject_cast<QLabel*>(view.indexWidget(run.sibling(run.row(), 1)));
    ASSERT_TRUE(label);
    EXPECT_EQ(label->text(), QStringLiteral("button"));
    EXPECT_EQ(view.indexWidget(run), nullptr);
}

TEST(Qt4GenericTreeViewTest, rowsFilteredOutAndBackGetTheirDecorationsBack)
{
    auto tree = viewTree();
    auto model = makeModel(tree, boost::any(), 0);
    NameFilter proxy;
    proxy.setSourceModel(model.get());
    Qt4GenericTreeView view;
    view.setModel(&proxy);
    EXPECT_EQ(view.sourceModel(), model.get());

    proxy.hidden = {QStringLiteral("SpanCat"), QStringLiteral("AutoCat")};
    proxy.refilter();
    EXPECT_EQ(proxy.rowCount(), 0);

    // A filter change without a layout change is decorated on the next turn of the event loop.
    proxy.hidden.clear();
    proxy.refilter();
    QCoreApplication::processEvents();
    const QModelIndex span = requireRow(&proxy, "SpanCat");
    ASSERT_TRUE(span.isValid());
    EXPECT_TRUE(view.isFirstColumnSpanned(span.row(), span.parent()));
    EXPECT_TRUE(view.isExpanded(requireRow(&proxy, "AutoCat")));
    const QModelIndex run = requireRow(&proxy, "WidgetRun");
    EXPECT_FALSE(view.indexWidget(run.sibling(run.row(), 1))) << "its category is collapsed";
    view.expand(span);
    QCoreApplication::processEvents();
    EXPECT_TRUE(qobject_cast<QLabel*>(view.indexWidget(run.sibling(run.row(), 1))));

    // Hiding only the command row and showing it again through a layout change.
    proxy.hidden = {QStringLiteral("WidgetRun")};
    proxy.refilter();
    EXPECT_FALSE(findRow(&proxy, "WidgetRun").isValid());
    proxy.hidden.clear();
    proxy.refilter();
    emit proxy.layoutChanged(); // ends the batch: decorations come with the next layout, widgets after it
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    const QModelIndex again = requireRow(&proxy, "WidgetRun");
    EXPECT_TRUE(qobject_cast<QLabel*>(view.indexWidget(again.sibling(again.row(), 1))));
}

TEST(Qt4GenericTreeViewIndexWidgetTest, onlyRowsInViewHoldWidgetsAndScrollingBringsThem)
{
    auto tree = InMemoryParameterTree::create();
    for (int i = 0; i < 400; ++i)
        tree->command(tree->root(), "WidgetRun" + std::to_string(i));
    auto model = makeModel(tree);
    Qt4GenericTreeView view;
    view.resize(400, 300);
    view.setModel(model.get());
    view.show();
    QCoreApplication::processEvents();
    auto countWidgets = [&] {
        int n = 0;
        for (int row = 0; row < model->rowCount(); ++row)
            n += view.indexWidget(model->index(row, 1)) != nullptr;
        return n;
    };
    const int inView = countWidgets();
    EXPECT_GT(inView, 5);
    EXPECT_LT(inView, 40);
    EXPECT_TRUE(view.indexWidget(model->index(0, 1)));
    EXPECT_FALSE(view.indexWidget(model->index(399, 1)));

    view.scrollToBottom();
    QCoreApplication::processEvents();
    EXPECT_TRUE(view.indexWidget(model->index(399, 1)));
    EXPECT_FALSE(view.indexWidget(model->index(0, 1)));
    EXPECT_LT(countWidgets(), 40);
}
