#include "ModelTestSupport.h"
#include "support/ModelDump.h"

#include "example/ExampleTree.h"
#include <vorn/delegate/CenteredCommandButton.h>
#include <vorn/delegate/Qt4ParametersItemDelegate.h>
#include <vorn/host/Qt4GenericTreeView.h>
#include <vorn/models/Qt4ParametersFilterModel.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>
#include <vorn/models/Qt4StyledBooleanParametersModel.h>
#include <vorn/models/Qt4StyledBooleanParametersModelNode.h>
#include <vorn/models/Qt4StyledParametersModel.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSortFilterProxyModel>

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

// Every structural signal of a model, as "signal parent first..last", in the order they came. A parent
// is named by its column-0 text ("root" for the invisible root); layout signals name their parents and
// hint.
class SignalRecorder : public QObject
{
public:
    explicit SignalRecorder(QAbstractItemModel* model) : m_model(model)
    {
        auto range = [this](const char* what) {
            return [this, what](const QModelIndex& parent, int first, int last) {
                m_log << QStringLiteral("%1 %2 %3..%4")
                             .arg(QLatin1String(what), name(parent))
                             .arg(first)
                             .arg(last);
            };
        };
        connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, range("aboutToRemove"));
        connect(model, &QAbstractItemModel::rowsRemoved, this, range("removed"));
        connect(model, &QAbstractItemModel::rowsAboutToBeInserted, this, range("aboutToInsert"));
        connect(model, &QAbstractItemModel::rowsInserted, this, range("inserted"));
        auto layout = [this](const char* what) {
            return [this, what](const QList<QPersistentModelIndex>& parents,
                                QAbstractItemModel::LayoutChangeHint hint) {
                m_log << QStringLiteral("%1 parents=%2 hint=%3")
                             .arg(QLatin1String(what))
                             .arg(parents.size())
                             .arg(hint);
            };
        };
        connect(model, &QAbstractItemModel::layoutAboutToBeChanged, this, layout("layoutAboutToBeChanged"));
        connect(model, &QAbstractItemModel::layoutChanged, this, layout("layoutChanged"));
        connect(model, &QAbstractItemModel::modelAboutToBeReset, this,
                [this] { m_log << "modelAboutToBeReset"; });
        connect(model, &QAbstractItemModel::modelReset, this, [this] { m_log << "modelReset"; });
        connect(model, &QAbstractItemModel::rowsAboutToBeMoved, this,
                [this] { m_log << "rowsAboutToBeMoved"; });
    }

    QStringList take()
    {
        const QStringList log = m_log;
        m_log.clear();
        return log;
    }

private:
    QString name(const QModelIndex& parent) const
    {
        return parent.isValid() ? parent.data().toString() : QStringLiteral("root");
    }

    QAbstractItemModel* m_model;
    QStringList m_log;
};

const QString layoutPair[] = {QStringLiteral("layoutAboutToBeChanged parents=0 hint=0"),
                              QStringLiteral("layoutChanged parents=0 hint=0")};

TEST_F(FilterModelTest, levelChangeRefiltersWithRowSignalsThenChangesTheLayoutOncePerPass)
{
    build();
    QAbstractItemModelTester sourceTester(filter->sourceModel(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    QAbstractItemModelTester tester(filter.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    // A proxy stacked above must see every row come and go as well.
    QSortFilterProxyModel above;
    above.setSourceModel(filter.get());
    QAbstractItemModelTester aboveTester(&above, QAbstractItemModelTester::FailureReportingMode::Fatal);
    ASSERT_EQ(rows(),
              (QStringList{"Cat | ", "  Beginner | 0", "  Expert | 0", "  NotAvailable | 0", "Emptied | "}));
    SignalRecorder recorder(filter.get());
    SignalRecorder aboveRecorder(&above);

    filter->changeVisibility(pevGuru);
    // Pass 1 at level 4 lets every row in again (Guru and Invisible come in as one run), then pass 2
    // at level 2 takes Invisible out.
    const QStringList expected{"aboutToInsert root 1..1",
                               "inserted root 1..1",
                               "aboutToInsert Cat 2..3",
                               "inserted Cat 2..3",
                               "aboutToInsert Emptied 0..0",
                               "inserted Emptied 0..0",
                               layoutPair[0],
                               layoutPair[1],
                               "aboutToRemove Cat 3..3",
                               "removed Cat 3..3",
                               layoutPair[0],
                               layoutPair[1]};
    EXPECT_EQ(recorder.take(), expected);
    EXPECT_EQ(rows(),
              (QStringList{"Cat | ", "  Beginner | 0", "  Expert | 0", "  Guru | 0", "  NotAvailable | 0",
                           "GuruCat | ", "  BeginnerInGuru | 0", "Emptied | ", "  OnlyGuru | 0"}));
    const QStringList seenAbove = aboveRecorder.take();
    EXPECT_EQ(seenAbove.filter(QStringLiteral("inserted ")),
              (QStringList{"inserted root 1..1", "inserted Cat 2..3", "inserted Emptied 0..0"}));
    EXPECT_EQ(seenAbove.filter(QStringLiteral("removed ")), (QStringList{"removed Cat 3..3"}));
    EXPECT_EQ(dumpRows(&above), rows());

    // Down to level 0: pass 1 brings Invisible back, pass 2 takes out every row above level 0. Rows
    // that go out next to each other go as one range, the last run first.
    filter->changeVisibility(pevBeginner);
    EXPECT_EQ(recorder.take(),
              (QStringList{"aboutToInsert Cat 3..3", "inserted Cat 3..3", layoutPair[0], layoutPair[1],
                           "aboutToRemove root 1..1", "removed root 1..1", "aboutToRemove Cat 1..3",
                           "removed Cat 1..3", "aboutToRemove Emptied 0..0", "removed Emptied 0..0",
                           layoutPair[0], layoutPair[1]}));
    EXPECT_EQ(rows(), (QStringList{"Cat | ", "  Beginner | 0", "  NotAvailable | 0", "Emptied | "}));
    EXPECT_EQ(dumpRows(&above), rows());

    // The same level again: pass 1 lets everything in, pass 2 takes the same rows out.
    filter->changeVisibility(pevBeginner);
    const QStringList again = recorder.take();
    EXPECT_EQ(again.mid(0, 8),
              (QStringList{"aboutToInsert root 1..1", "inserted root 1..1", "aboutToInsert Cat 1..3",
                           "inserted Cat 1..3", "aboutToInsert Emptied 0..0", "inserted Emptied 0..0",
                           layoutPair[0], layoutPair[1]}));
    EXPECT_EQ(again.mid(8),
              (QStringList{"aboutToRemove root 1..1", "removed root 1..1", "aboutToRemove Cat 1..3",
                           "removed Cat 1..3", "aboutToRemove Emptied 0..0", "removed Emptied 0..0",
                           layoutPair[0], layoutPair[1]}));
    EXPECT_EQ(rows(), (QStringList{"Cat | ", "  Beginner | 0", "  NotAvailable | 0", "Emptied | "}));
}

TEST_F(FilterModelTest, levelChangeKeepsRowsThatStayAndTheirPersistentIndexes)
{
    build();
    QAbstractItemModelTester tester(filter.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QPersistentModelIndex notAvailable(requireRow(filter.get(), "NotAvailable"));
    const QPersistentModelIndex emptied(requireRow(filter.get(), "Emptied"));
    filter->changeVisibility(pevAll);
    EXPECT_EQ(notAvailable.data().toString(), QStringLiteral("NotAvailable"));
    EXPECT_EQ(notAvailable.row(), 4) << "Guru and Invisible came in above it";
    EXPECT_EQ(emptied.row(), 2) << "GuruCat came in above it";
    filter->changeVisibility(pevBeginner);
    EXPECT_EQ(notAvailable.row(), 1);
    EXPECT_EQ(emptied.row(), 1);
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

TEST(FilterModelMetaObjectTest, isTheProxyModelsOwn)
{
    auto tree = InMemoryParameterTree::create();
    auto filter = Qt4ParametersFilterModel::create(plainModel(tree), nullptr);
    EXPECT_STREQ(filter->metaObject()->className(), "QSortFilterProxyModel");
    EXPECT_EQ(filter->metaObject(), &QSortFilterProxyModel::staticMetaObject);
    EXPECT_TRUE(filter->inherits("QSortFilterProxyModel"));
    EXPECT_EQ(filter->qt_metacast("vorn::core::Qt4ParametersFilterModel"), nullptr);
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

    // Spanning and index widgets come back with the layout after a level change, and the widgets on
    // the turn of the event loop after it.
    auto settle = [] {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    };
    filter->changeVisibility(pevAll);
    view.expandAll();
    settle();
    ASSERT_TRUE(buttonOf("Acquisition Start"));
    ASSERT_TRUE(buttonOf("Device Reset"));
    EXPECT_TRUE(spanned("Counters"));

    // The user collapses one category; the level change must not open it again.
    view.collapse(findRow(filter.get(), "Image Format Control"));
    filter->changeVisibility(pevBeginner);
    settle();
    EXPECT_FALSE(findRow(filter.get(), "Device Reset").isValid()) << "a guru command";
    EXPECT_FALSE(findRow(filter.get(), "Counters").isValid());
    EXPECT_TRUE(view.isExpanded(findRow(filter.get(), "Acquisition Control")));
    EXPECT_FALSE(view.isExpanded(requireRow(filter.get(), "Image Format Control")));
    QPushButton* start = buttonOf("Acquisition Start");
    ASSERT_TRUE(start);
    EXPECT_EQ(start->text(), QStringLiteral("Execute"));
    EXPECT_TRUE(spanned("Acquisition Control"));

    filter->changeVisibility(pevAll);
    settle();
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

namespace {

// Counts the view's layouts (calls of doItemsLayout) and the geometry updates that every layout of all
// rows ends with.
class CountingTreeView : public Qt4GenericTreeView
{
public:
    int layouts = 0;
    int geometryUpdates = 0;
    void doItemsLayout() override
    {
        ++layouts;
        Qt4GenericTreeView::doItemsLayout();
    }

protected:
    void updateGeometries() override
    {
        ++geometryUpdates;
        Qt4GenericTreeView::updateGeometries();
    }
};

} // namespace

// A level change on an expanded view is one burst of ranges per pass. The view takes it in one layout,
// keeps the expansion of every row that stays without telling anyone it was collapsed meanwhile, and
// keeps its scroll position. (No commands here: placing an index widget costs QTreeView a layout more.)
TEST(FilterModelViewTest, levelChangeCostsTheViewOneLayoutAndKeepsExpansionAndScrollPosition)
{
    auto tree = InMemoryParameterTree::create();
    for (int c = 0; c < 30; ++c) {
        auto category = tree->category(tree->root(), "Category" + std::to_string(c))
                            .visibility(static_cast<ParameterEntryVisibility>(c % 3))
                            .node();
        for (int i = 0; i < 20; ++i) // hidden rows interleaved
            tree->integer(category, "Feature" + std::to_string(c * 20 + i))
                .visibility(static_cast<ParameterEntryVisibility>(i % 4));
    }
    auto source = plainModel(tree);
    auto filter = Qt4ParametersFilterModel::create(source, nullptr);
    QAbstractItemModelTester tester(filter.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    CountingTreeView view;
    view.setModel(filter.get());
    view.resize(400, 300);
    view.show();
    auto settle = [] {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    };
    filter->changeVisibility(pevAll);
    view.expandAll();
    settle();
    // Collapse one category that stays at level 2, and scroll half way down.
    const QModelIndex folded = requireRow(filter.get(), "Category2");
    view.collapse(folded);
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum() / 2);
    settle();
    const int scrolled = view.verticalScrollBar()->value();
    QSignalSpy collapsed(&view, &QTreeView::collapsed);
    QSignalSpy expanded(&view, &QTreeView::expanded);
    QSignalSpy removed(filter.get(), &QAbstractItemModel::rowsRemoved);
    view.layouts = 0;

    filter->changeVisibility(pevGuru);
    EXPECT_TRUE(view.isExpanded(requireRow(filter.get(), "Category0")))
        << "expanded again when the call returns";
    settle();
    EXPECT_EQ(view.layouts, 1);
    EXPECT_GT(removed.count(), 1) << "the filter sent its ranges";
    EXPECT_EQ(collapsed.count(), 0);
    EXPECT_EQ(expanded.count(), 0);
    EXPECT_EQ(view.verticalScrollBar()->value(), scrolled);
    QStringList open;
    for (int row = 0; row < filter->rowCount(); ++row)
        if (view.isExpanded(filter->index(row, 0)))
            open << filter->index(row, 0).data().toString();
    // Every category passes at level 2 (their levels are 0 to 2); the folded one stays folded.
    EXPECT_EQ(open,
              (QStringList{"Category0",  "Category1",  "Category3",  "Category4",  "Category5",  "Category6",
                           "Category7",  "Category8",  "Category9",  "Category10", "Category11", "Category12",
                           "Category13", "Category14", "Category15", "Category16", "Category17", "Category18",
                           "Category19", "Category20", "Category21", "Category22", "Category23", "Category24",
                           "Category25", "Category26", "Category27", "Category28", "Category29"}));
    for (int row = 0; row < filter->rowCount(); ++row)
        EXPECT_TRUE(view.isFirstColumnSpanned(row, QModelIndex())) << row;
}

// The delegate gives a row in edit 20 pixels and tells the view through sizeHintChanged; the view
// measures that row again and moves the rows below it, without laying out the whole tree.
TEST(FilterModelViewTest, anOpenEditorGrowsItsRowWithoutALayoutOfTheTree)
{
    auto tree = InMemoryParameterTree::create();
    auto category = tree->category(tree->root(), "Cat").node();
    for (int i = 0; i < 10; ++i)
        tree->integer(category, "Feature" + std::to_string(i)).value(i).range(0, 100);
    auto filter = Qt4ParametersFilterModel::create(plainModel(tree), nullptr);
    auto delegate = Qt4ParametersItemDelegate::create();
    CountingTreeView view;
    view.setItemDelegate(delegate.get());
    view.setModel(filter.get());
    view.resize(400, 300);
    view.show();
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    const QModelIndex cell = requireRow(filter.get(), "Feature3", 1);
    const QModelIndex below = requireRow(filter.get(), "Feature4", 1);
    const int height = view.visualRect(cell).height();
    const int belowTop = view.visualRect(below).top();
    ASSERT_EQ(height, 14);
    view.geometryUpdates = 0;

    view.edit(cell);
    QWidget* editor = view.indexWidget(cell);
    ASSERT_TRUE(editor);
    EXPECT_EQ(view.visualRect(cell).height(), 20);
    EXPECT_EQ(view.visualRect(cell.sibling(cell.row(), 0)).height(), 20);
    EXPECT_EQ(view.visualRect(below).top(), belowTop + 6);
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(editor->geometry(), view.visualRect(cell)) << "the editor fills the taller cell";
    EXPECT_EQ(view.geometryUpdates, 0) << "no layout of all rows";

    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(editor, &escape);
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    EXPECT_FALSE(view.indexWidget(cell));
    EXPECT_EQ(view.visualRect(cell).height(), 14);
    EXPECT_EQ(view.visualRect(below).top(), belowTop);
    EXPECT_EQ(view.geometryUpdates, 0);
}
