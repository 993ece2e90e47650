#include "ModelTestSupport.h"
#include "support/ModelDump.h"

#include "example/ExampleTree.h"
#include <vorn/host/Qt4GenericTreeView.h>
#include <vorn/models/Qt4StyledBooleanParametersBooleanNode.h>
#include <vorn/models/Qt4StyledBooleanParametersCategoryNode.h>
#include <vorn/models/Qt4StyledBooleanParametersModel.h>
#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QColor>

#include <gtest/gtest.h>

using namespace vorn::core;
using namespace vorn::core::models;
using namespace vorn::test;

namespace {

struct EventsModelTest : ::testing::Test
{
    boost::shared_ptr<InMemoryParameterTree> tree = InMemoryParameterTree::create();
    boost::shared_ptr<Qt4StyledBooleanParametersModel> model;

    void build()
    {
        model = Qt4StyledBooleanParametersModel::create(
            Qt4StyledBooleanParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    }
    QModelIndex row(const char* n) { return findRow(model.get(), QString::fromLatin1(n)); }
};

} // namespace

TEST_F(EventsModelTest, showsOnlyCategoriesBooleansAndPlainEntries)
{
    auto events = tree->category(tree->root(), "Events").node();
    tree->integer(events, "Count");
    tree->boolean(events, "FrameStart").value(true);
    tree->string(events, "Label");
    tree->boolean(events, "FrameEnd");
    tree->uint64(events, "Big");
    tree->floating(events, "Gain");
    tree->enumeration(events, "Mode").entry("A", 1);
    tree->command(events, "Run");
    tree->entry(events, "Unknown");
    auto hiddenCategory = tree->category(events, "Inner").node();
    tree->boolean(hiddenCategory, "Deep");
    build();
    QAbstractItemModelTester tester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(dumpRows(model.get()), (QStringList{
                                         "Events",
                                         "  FrameStart",
                                         "  FrameEnd",
                                         "  Unknown",
                                         "  Inner",
                                         "    Deep",
                                     }));
    EXPECT_EQ(row("Unknown").data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
}

TEST_F(EventsModelTest, leavesOutEverythingBelowARowItDoesNotMake)
{
    // A plain entry's children stay; an integer's children (a selector's targets, say) go with it.
    auto selector = tree->integer(tree->root(), "Selector").node();
    auto target = tree->model()->createNode<MvParametersBooleanNode>(std::string("Selected"));
    selector->addChild(target);
    build();
    EXPECT_EQ(model->rowCount(), 0);
}

TEST_F(EventsModelTest, oneBoldEventsHeaderAndOneLevelOpen)
{
    build();
    EXPECT_EQ(model->columnCount(), 1);
    EXPECT_EQ(model->headerData(0, Qt::Horizontal, Qt::DisplayRole), QVariant(QStringLiteral("Events")));
    EXPECT_EQ(model->headerData(0, Qt::Horizontal, Qt::FontRole).value<QFont>().weight(), 75);
    EXPECT_EQ(model->headerData(0, Qt::Horizontal, Qt::TextAlignmentRole), QVariant(1));
    EXPECT_FALSE(model->headerData(1, Qt::Horizontal, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model->headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model->headerData(0, Qt::Horizontal, Qt::ToolTipRole).isValid());
    EXPECT_EQ(model->getInitialExpansionDepth(), 1);
}

TEST_F(EventsModelTest, categoriesOpenByThemselvesInAView)
{
    auto top = tree->category(tree->root(), "Top").node();
    auto inner = tree->category(top, "Inner").node();
    tree->boolean(inner, "Flag");
    build();
    Qt4GenericTreeView view;
    view.setModel(model.get());
    EXPECT_TRUE(view.isExpanded(row("Top")));
    EXPECT_TRUE(view.isExpanded(row("Inner")));
    EXPECT_TRUE(view.isFirstColumnSpanned(row("Top").row(), QModelIndex()));
}

TEST_F(EventsModelTest, tickingWritesABoolOnlyWhenTheFlagChanges)
{
    tree->boolean(tree->root(), "Set").value(true);
    tree->boolean(tree->root(), "Unset").value(false);
    build();
    EXPECT_TRUE(model->flags(row("Set")) & Qt::ItemIsUserCheckable);
    model->setData(row("Set"), Qt::Checked, Qt::CheckStateRole);
    EXPECT_TRUE(tree->calls().empty());
    model->setData(row("Unset"), Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(callsOf(*tree), QStringList{"Unset:bool=true"});
    EXPECT_EQ(row("Unset").data(Qt::CheckStateRole), QVariant(Qt::Checked));
    tree->releaseCallback();
    model->setData(row("Set"), Qt::Unchecked, Qt::CheckStateRole);
    EXPECT_EQ(tree->calls().size(), 1u);
}

TEST_F(EventsModelTest, setFlagsAreBold)
{
    tree->boolean(tree->root(), "Set").value(true);
    tree->boolean(tree->root(), "Unset").value(false);
    tree->boolean(tree->root(), "SetInvalid").value(true).dataValid(false);
    build();
    EXPECT_EQ(fontOf(row("Set")).weight(), 75);
    EXPECT_EQ(fontOf(row("Unset")), QApplication::font());
    EXPECT_EQ(fontOf(row("SetInvalid")), QApplication::font());
    EXPECT_EQ(rowAt<Qt4AbstractModelNode>(row("Set"))->dataFontRole(1).value<QFont>(), QApplication::font());
}

TEST_F(EventsModelTest, invalidFlagShowsNeitherState)
{
    tree->boolean(tree->root(), "Invalid").value(true).dataValid(false);
    tree->boolean(tree->root(), "Valid").value(false);
    build();
    EXPECT_FALSE(row("Invalid").data(Qt::CheckStateRole).isValid());
    EXPECT_EQ(row("Valid").data(Qt::CheckStateRole), QVariant(Qt::Unchecked));
    auto invalid = rowAt<Qt4AbstractModelNode>(row("Invalid"));
    EXPECT_EQ(invalid->dataDisplayRole(1), QVariant(QString()));
    EXPECT_EQ(invalid->dataDisplayRole(0), QVariant(QStringLiteral("Invalid")));
    EXPECT_FALSE(invalid->dataCheckStateRole(1).isValid());
}

TEST_F(EventsModelTest, rowsHaveNoIconsAndTheirOwnHeights)
{
    auto cat = tree->category(tree->root(), "Cat").toolTip("c").node();
    tree->boolean(cat, "Flag").toolTip("f");
    tree->entry(cat, "Plain");
    build();
    EXPECT_EQ(row("Cat").data(Qt::SizeHintRole).toSize(), QSize(-1, 12));
    EXPECT_EQ(row("Flag").data(Qt::SizeHintRole).toSize(), QSize(-1, 16));
    EXPECT_EQ(row("Plain").data(Qt::SizeHintRole).toSize(), QSize(-1, 16));
    for (const char* n : {"Cat", "Flag", "Plain"})
        EXPECT_FALSE(row(n).data(Qt::DecorationRole).isValid()) << n;
    auto category = rowAt<Qt4StyledBooleanParametersCategoryNode>(row("Cat"));
    ASSERT_TRUE(category);
    EXPECT_FALSE(category->isGridEnabled(0));
    EXPECT_TRUE(category->enableAutoExpand());
    EXPECT_FALSE(row("Cat").data(Qt::ForegroundRole).isValid());
    EXPECT_FALSE(row("Cat").data(Qt::BackgroundRole).isValid());
    EXPECT_EQ(fontOf(row("Cat")).weight(), 75);
    EXPECT_EQ(row("Flag").data(Qt::ToolTipRole).toString(), QStringLiteral("f"));
    EXPECT_TRUE(rowAt<Qt4AbstractModelNode>(row("Flag"))->isGridEnabled(0));
}

TEST(EventsModelTreeTest, passesTheModelTesterOnTheExampleAndALargeTree)
{
    for (auto tree : {vorn::example::buildExampleTree(0), vorn::example::buildGeneratedTree(10000)}) {
        auto model = Qt4StyledBooleanParametersModel::create(
            Qt4StyledBooleanParametersModelNode::create(tree->model(), tree->root(), boost::any()));
        QAbstractItemModelTester tester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        tree->notifyAllChanged();
        EXPECT_GT(model->rowCount(), 0);
    }
}
