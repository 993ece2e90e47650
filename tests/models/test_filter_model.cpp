#include "ModelTestSupport.h"
#include "support/ModelDump.h"

#include "example/ExampleTree.h"
#include <vorn/delegate/CenteredCommandButton.h>
#include <vorn/host/Qt4GenericTreeView.h>
#include <vorn/models/Qt4ParametersFilterModel.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>
#include <vorn/models/Qt4StyledBooleanParametersModel.h>
#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>
#include <vorn/models/Qt4StyledParametersModel.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

#include <QAbstractItemModelTester>
#include <QPushButton>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace vorn::core;
using namespace vorn::core::models;
using namespace vorn::test;

namespace {

struct FilterModelTest : ::testing::Test
{
    boost::shared_ptr<InMemoryParameterTree> tree = InMemoryParameterTree::create();
    boost::shared_ptr<Qt4ParametersFilterModel> filter;

    FilterModelTest()
    {
        auto cat = tree->category(tree->root(), "Cat").node();
        tree->integer(cat, "Beginner").visibility(pevBeginner);
        tree->integer(cat, "Expert").visibility(pevExpert);
        tree->integer(cat, "Guru").visibility(pevGuru);
        tree->integer(cat, "Invisible").visibility(pevInvisible);
        tree->integer(cat, "Internal").type(petInternal);
        tree->integer(cat, "NotImplemented").access(peamNotImplemented);
        tree->integer(cat, "NotAvailable").access(peamNotAvailable);
        auto guruCat = tree->category(tree->root(), "GuruCat").visibility(pevGuru).node();
        tree->integer(guruCat, "BeginnerInGuru").visibility(pevBeginner);
        auto emptied = tree->category(tree->root(), "Emptied").node();
        tree->integer(emptied, "OnlyGuru").visibility(pevGuru);
    }

    void build() { filter = Qt4ParametersFilterModel::create(plainModel(tree), nullptr); }
    QStringList rows() { return dumpRows(filter.get()); }
};

} // namespace

TEST_F(FilterModelTest, startsAtLevelOne)
{
    build();
    EXPECT_EQ(filter->getCurrentVisibility(), pevExpert);
    EXPECT_EQ(rows(),
              (QStringList{"Cat | ", "  Beginner | 0", "  Expert | 0", "  NotAvailable | 0", "Emptied | "}));
}

TEST_F(FilterModelTest, levelTwoShowsGuruRowsAfterTwoLayoutChanges)
{
    build();
    QSignalSpy about(filter.get(), &QAbstractItemModel::layoutAboutToBeChanged);
    QSignalSpy changed(filter.get(), &QAbstractItemModel::layoutChanged);
    filter->changeVisibility(pevGuru);
    EXPECT_EQ(about.count(), 2);
    EXPECT_EQ(changed.count(), 2);
    for (const auto& args : changed) {
        EXPECT_TRUE(args.at(0).value<QList<QPersistentModelIndex>>().isEmpty());
        EXPECT_EQ(args.at(1).value<QAbstractItemModel::LayoutChangeHint>(),
                  QAbstractItemModel::NoLayoutChangeHint);
    }
    EXPECT_EQ(filter->getCurrentVisibility(), pevGuru);
    EXPECT_EQ(rows(),
              (QStringList{"Cat | ", "  Beginner | 0", "  Expert | 0", "  Guru | 0", "  NotAvailable | 0",
                           "GuruCat | ", "  BeginnerInGuru | 0", "Emptied | ", "  OnlyGuru | 0"}));
}

TEST_F(FilterModelTest, internalAndNotImplementedRowsStayHiddenAtEveryLevel)
{
    build();
    for (auto level : {pevBeginner, pevExpert, pevGuru, pevInvisible, pevAll}) {
        filter->changeVisibility(level);
        const QStringList shown = rows();
        EXPECT_FALSE(shown.contains("  Internal | 0")) << level;
        EXPECT_FALSE(shown.contains("  NotImplemented | 0")) << level;
        EXPECT_TRUE(shown.contains("  NotAvailable | 0")) << level;
    }
    filter->changeVisibility(pevAll);
    EXPECT_TRUE(rows().contains("  Invisible | 0"));
}

TEST_F(FilterModelTest, hiddenCategoryHidesItsSubtreeAndAShownOneStaysWhenEmptied)
{
    build();
    filter->changeVisibility(pevBeginner);
    EXPECT_EQ(rows(), (QStringList{"Cat | ", "  Beginner | 0", "  NotAvailable | 0", "Emptied | "}));
}

TEST_F(FilterModelTest, levelZeroIsReportedAsOne)
{
    build();
    filter->changeVisibility(pevBeginner);
    EXPECT_EQ(filter->getCurrentVisibility(), pevExpert);
    EXPECT_FALSE(rows().contains("  Expert | 0")) << "but filtering uses the level that was set";
}

TEST(FilterModelSortTest, sortsByCustomKeysOnlyAndKeepsRowsWithoutKeysInPlace)
{
    auto tree = InMemoryParameterTree::create();
    tree->integer(tree->root(), "Ten").sortKey(10);
    tree->integer(tree->root(), "NoKeyA");
    tree->integer(tree->root(), "Two").sortKey(2);
    tree->integer(tree->root(), "NoKeyB");
    tree->integer(tree->root(), "Huge").sortKey(18446744073709551615ull);
    auto filter = Qt4ParametersFilterModel::create(plainModel(tree), nullptr);
    EXPECT_EQ(dumpRows(filter.get()),
              (QStringList{"Ten | 0", "NoKeyA | 0", "Two | 0", "NoKeyB | 0", "Huge | 0"}))
        << "the filter model never starts a sort itself";
    filter->sort(0);
    const QStringList sorted = dumpRows(filter.get());
    EXPECT_LT(sorted.indexOf("Two | 0"), sorted.indexOf("Ten | 0"));
    EXPECT_LT(sorted.indexOf("Ten | 0"), sorted.indexOf("Huge | 0"));
    EXPECT_LT(sorted.indexOf("NoKeyA | 0"), sorted.indexOf("NoKeyB | 0"));
    const QModelIndex two = findRow(filter.get(), "Two");
    const QModelIndex ten = findRow(filter.get(), "Ten");
    const QModelIndex noKey = findRow(filter.get(), "NoKeyA");
    auto* source = filter->sourceModel();
    Q_UNUSED(source);
    // lessThan itself: keys compare unsigned, and a row without a key is never less nor greater.
    // It is protected: reached through a member pointer taken in a subclass (the filter model is not
    // one, so it must not be cast to it).
    struct Probe : Qt4ParametersFilterModel
    {
        static auto lessThanOf() { return &Probe::lessThan; }
    };
    const auto lessThan = [&](const QModelIndex& left, const QModelIndex& right) {
        return (filter.get()->*Probe::lessThanOf())(left, right);
    };
    EXPECT_TRUE(lessThan(filter->mapToSource(two), filter->mapToSource(ten)));
    EXPECT_FALSE(lessThan(filter->mapToSource(ten), filter->mapToSource(two)));
    EXPECT_FALSE(lessThan(filter->mapToSource(noKey), filter->mapToSource(two)));
    EXPECT_FALSE(lessThan(filter->mapToSource(two), filter->mapToSource(noKey)));
    EXPECT_FALSE(lessThan(QModelIndex(), filter->mapToSource(two)));
}

TEST(FilterModelLifetimeTest, keepsItsSourceModelAlive)
{
    auto tree = InMemoryParameterTree::create();
    tree->integer(tree->root(), "X");
    boost::weak_ptr<Qt4ParametersModel> weakSource;
    boost::shared_ptr<Qt4ParametersFilterModel> filter;
    {
        auto source = plainModel(tree);
        weakSource = source;
        filter = Qt4ParametersFilterModel::create(source, nullptr);
    }
    EXPECT_FALSE(weakSource.expired());
    EXPECT_EQ(filter->rowCount(), 1);
    filter.reset();
    EXPECT_TRUE(weakSource.expired());
}

void runLevelsWithTester(const boost::shared_ptr<InMemoryParameterTree>& tree,
                         const boost::shared_ptr<Qt4GenericModel>& source)
{
    auto filter = Qt4ParametersFilterModel::create(source, nullptr);
    QAbstractItemModelTester tester(filter.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (auto level : {pevBeginner, pevExpert, pevGuru, pevInvisible, pevAll, pevInvisible, pevGuru,
                       pevExpert, pevBeginner})
        filter->changeVisibility(level);
    tree->notifyAllChanged();
}

TEST(FilterModelTesterTest, passesTheModelTesterWhileTheLevelChangesOnEveryModel)
{
    auto tree = vorn::example::buildExampleTree(0);
    runLevelsWithTester(tree, plainModel(tree));
    runLevelsWithTester(tree, Qt4StyledParametersModel::create(Qt4StyledParametersModelNode::create(
                                  tree->model(), tree->root(), boost::any())));
    runLevelsWithTester(
        tree, Qt4StyledBooleanParametersModel::create(
                  Qt4StyledBooleanParametersModelNode::create(tree->model(), tree->root(), boost::any())));
}

// The model tester walks the whole model on every inserted or removed range, so the large tree has
// its levels clustered in larger categories, which keeps the ranges per level change few.
TEST(FilterModelTesterTest, passesTheModelTesterWhileTheLevelChangesOnALargeTree)
{
    auto tree = vorn::example::buildGeneratedTree(10000, vorn::example::VisibilityLayout::Clustered, 500);
    runLevelsWithTester(tree, plainModel(tree));
}

TEST(FilterModelViewTest, levelChangesKeepExpansionButtonsAndSpanningOnRowsThatStayAndComeBack)
{
    auto tree = vorn::example::buildExampleTree(0);
    auto source = plainModel(tree);
    auto filter = Qt4ParametersFilterModel::create(source, nullptr);
    Qt4GenericTreeView view;
    view.setModel(filter.get());
    view.resize(600, 800);
    view.show();

    auto buttonOf = [&](const char* name) -> QPushButton* {
        const QModelIndex index = findRow(filter.get(), QString::fromLatin1(name));
        auto* widget = qobject_cast<CenteredCommandButton*>(view.indexWidget(index.sibling(index.row(), 1)));
        return widget ? widget->ui.commandButton : nullptr;
    };
    auto spanned = [&](const char* name) {
        const QModelIndex index = findRow(filter.get(), QString::fromLatin1(name));
        return index.isValid() && view.isFirstColumnSpanned(index.row(), index.parent());
    };

    filter->changeVisibility(pevAll);
    view.expandAll();
    ASSERT_TRUE(buttonOf("Acquisition Start"));
    ASSERT_TRUE(buttonOf("Device Reset"));
    EXPECT_TRUE(spanned("Counters"));

    // The user collapses one category; the level change must not open it again.
    view.collapse(findRow(filter.get(), "Image Format Control"));
    filter->changeVisibility(pevBeginner);
    EXPECT_FALSE(findRow(filter.get(), "Device Reset").isValid()) << "a guru command";
    EXPECT_FALSE(findRow(filter.get(), "Counters").isValid());
    EXPECT_TRUE(view.isExpanded(findRow(filter.get(), "Acquisition Control")));
    EXPECT_FALSE(view.isExpanded(requireRow(filter.get(), "Image Format Control")));
    QPushButton* start = buttonOf("Acquisition Start");
    ASSERT_TRUE(start);
    EXPECT_EQ(start->text(), QStringLiteral("Execute"));
    EXPECT_TRUE(spanned("Acquisition Control"));

    filter->changeVisibility(pevAll);
    EXPECT_TRUE(spanned("Counters")) << "spanning comes back with the row";
    QPushButton* reset = buttonOf("Device Reset");
    ASSERT_TRUE(reset) << "the button comes back with the row";
    EXPECT_EQ(reset->text(), QStringLiteral("Execute"));
    ASSERT_TRUE(buttonOf("Acquisition Start")) << "a row that stayed keeps a button";
    EXPECT_EQ(buttonOf("Acquisition Start")->text(), QStringLiteral("Execute"));
    EXPECT_TRUE(view.isExpanded(findRow(filter.get(), "Acquisition Control")));

    // Every shown command row holds exactly its own button.
    for (const char* name : {"Acquisition Start", "Acquisition Stop", "Device Reset"}) {
        const QModelIndex index = findRow(filter.get(), QString::fromLatin1(name));
        EXPECT_TRUE(view.indexWidget(index.sibling(index.row(), 1))) << name;
        EXPECT_FALSE(view.indexWidget(index)) << name;
    }
}
