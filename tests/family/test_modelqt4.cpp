#include "TestRows.h"
#include "support/ModelDump.h"
#include "support/VirtualSlots.h"

#include <vorn/host/VornModelQt4.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace vorn::test;

namespace {

boost::shared_ptr<InMemoryParameterTree> sampleTree()
{
    auto tree = InMemoryParameterTree::create();
    auto format = tree->category(tree->root(), "Format").node();
    tree->integer(format, "Width").value(640).range(0, 4096);
    tree->integer(format, "Height").value(480).range(0, 4096);
    auto inner = tree->category(format, "Inner").node();
    tree->integer(inner, "Deep").value(1).range(0, 9);
    tree->string(inner, "Text").value("x");
    auto acq = tree->category(tree->root(), "Acquisition").node();
    tree->boolean(acq, "Enabled");
    tree->integer(acq, "Frames").value(3).range(0, 9);
    return tree;
}

} // namespace

TEST(Qt4GenericModelTest, rowsFollowTheTreeInOrder)
{
    auto tree = sampleTree();
    auto model = makeModel(tree);
    QAbstractItemModelTester tester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(dumpRows(model.get()), (QStringList{
                                         "Format | ",
                                         "  Width | 640",
                                         "  Height | 480",
                                         "  Inner | ",
                                         "    Deep | 1",
                                         "    Text | ",
                                         "Acquisition | ",
                                         "  Enabled | ",
                                         "  Frames | 3",
                                     }));
}

TEST(Qt4GenericModelTest, passesTheModelTesterWhileValuesChangeThroughTheCallback)
{
    auto tree = sampleTree();
    auto model = makeModel(tree);
    QAbstractItemModelTester tester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    auto callback = tree->root()->getCallback().lock();
    for (long long v = 0; v < 20; ++v) {
        callback->setValue(tree->find("Width"), boost::any(v * 100));
        callback->setValue(tree->find("Deep"), boost::any(v % 10));
    }
    tree->notifyAllChanged();
    EXPECT_EQ(model->index(0, 1, model->index(0, 0)).data().toString(), QStringLiteral("1900"));
}

TEST(Qt4GenericModelTest, nullFactoryResultLeavesRowAndSubtreeOut)
{
    auto tree = sampleTree();
    auto model = makeModel(tree, boost::any(MvParametersCategoryNode::typeId()));
    EXPECT_EQ(model->rowCount(), 0) << "every top-level row is a category";

    auto noStrings = makeModel(tree, boost::any(MvParametersStringNode::typeId()));
    QAbstractItemModelTester tester(noStrings.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(dumpRows(noStrings.get()), (QStringList{
                                             "Format | ",
                                             "  Width | 640",
                                             "  Height | 480",
                                             "  Inner | ",
                                             "    Deep | 1",
                                             "Acquisition | ",
                                             "  Enabled | ",
                                             "  Frames | 3",
                                         }));
}

TEST(Qt4GenericModelTest, userRoleYieldsTheRowNode)
{
    auto tree = sampleTree();
    auto model = makeModel(tree);
    const QModelIndex width = model->index(0, 1, model->index(0, 0));
    const QVariant v = width.data(Qt::UserRole);
    EXPECT_EQ(QMetaType::typeName(v.userType()), QByteArray("vorn::core::Qt4AbstractModelNodePtr"));
    auto node = v.value<Qt4AbstractModelNodePtr>();
    ASSERT_TRUE(node);
    EXPECT_EQ(node.get(), model->nodeFromIndex(width));
    auto row = boost::dynamic_pointer_cast<TestRow>(node);
    ASSERT_TRUE(row);
    EXPECT_EQ(row->entry()->getName(), "Width");
    EXPECT_EQ(row->postInsertCalls, 1);
}

TEST(Qt4GenericModelTest, checkStateSetDataReachesSetCheckedState)
{
    auto tree = sampleTree();
    auto model = makeModel(tree);
    const QModelIndex enabled = model->index(0, 1, model->index(1, 0));
    EXPECT_TRUE(model->setData(enabled, Qt::Checked, Qt::CheckStateRole));
    EXPECT_TRUE(model->setData(enabled, Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_FALSE(model->setData(enabled, QStringLiteral("x"), Qt::EditRole));
    auto row =
        boost::dynamic_pointer_cast<TestRow>(enabled.data(Qt::UserRole).value<Qt4AbstractModelNodePtr>());
    ASSERT_TRUE(row);
    EXPECT_EQ(row->checkedCalls,
              (std::vector<std::pair<int, Qt::CheckState>>{{1, Qt::Checked}, {1, Qt::Unchecked}}));
}

TEST(Qt4GenericModelTest, callbackWriteEmitsDataChangedForThatRowOnly)
{
    auto tree = sampleTree();
    auto model = makeModel(tree);
    QSignalSpy spy(model.get(), &QAbstractItemModel::dataChanged);
    tree->root()->getCallback().lock()->setValue(tree->find("Height"), boost::any(720ll));
    ASSERT_EQ(spy.count(), 1);
    const QModelIndex format = model->index(0, 0);
    EXPECT_EQ(spy[0][0].toModelIndex(), model->index(1, 0, format));
    EXPECT_EQ(spy[0][1].toModelIndex(), model->index(1, 1, format));
    EXPECT_EQ(model->index(1, 1, format).data().toString(), QStringLiteral("720"));
    auto row = boost::dynamic_pointer_cast<TestRow>(
        model->index(1, 0, format).data(Qt::UserRole).value<Qt4AbstractModelNodePtr>());
    EXPECT_EQ(row->setupNodeCalls, 1);
}

TEST(Qt4GenericModelTest, refreshOfManyRowsIsOneRangePerParent)
{
    auto tree = sampleTree();
    auto model = makeModel(tree);
    QSignalSpy spy(model.get(), &QAbstractItemModel::dataChanged);
    tree->notifyAllChanged();
    // Parents: invisible root (2 rows), Format (3), Inner (2), Acquisition (2).
    ASSERT_EQ(spy.count(), 4);
    QStringList ranges;
    for (const auto& args : spy) {
        const QModelIndex a = args[0].toModelIndex(), b = args[1].toModelIndex();
        ranges << QStringLiteral("%1:%2,%3-%4,%5")
                      .arg(a.parent().data().toString())
                      .arg(a.row())
                      .arg(a.column())
                      .arg(b.row())
                      .arg(b.column());
    }
    ranges.sort();
    EXPECT_EQ(ranges, (QStringList{":0,0-1,1", "Acquisition:0,0-1,1", "Format:0,0-2,1", "Inner:0,0-1,1"}));
}

TEST(Qt4GenericModelTest, writeErrorsReachTheItemModel)
{
    auto tree = sampleTree();
    auto model = makeModel(tree);
    QSignalSpy spy(model.get(), &Qt4GenericModel::errorReported);
    tree->root()->getCallback().lock()->setValue(tree->find("Frames"), boost::any(99ll));
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy[0][0].toString(), QStringLiteral("Cannot set Frames to 99: 99 is above the maximum 9"));
}

TEST(Qt4GenericModelTest, modelWithoutRootShowsNothing)
{
    auto model = TestModel::create(boost::shared_ptr<Qt4AbstractModelNode>());
    QAbstractItemModelTester tester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(model->rowCount(), 0);
}

TEST(Qt4GenericModelTest, droppingTheModelDetachesFromTheTree)
{
    auto tree = sampleTree();
    {
        auto model = makeModel(tree);
        EXPECT_EQ(tree->model()->observerCount(), 1u);
    }
    EXPECT_EQ(tree->model()->observerCount(), 0u);
    tree->root()->getCallback().lock()->setValue(tree->find("Height"), boost::any(1ll));
}

namespace {
// Plain row: overrides nothing but what the framework leaves open.
class BareRow : public Qt4GenericModelNode
{
public:
    using Qt4GenericModelNode::Qt4GenericModelNode;
    static auto setupNodeSlot() { return &BareRow::setupNode; }
    static auto setupChildrenSlot() { return static_cast<void (BareRow::*)()>(&BareRow::setupChildren); }
    static auto createTwoSlot()
    {
        return static_cast<boost::shared_ptr<Qt4GenericModelNode> (BareRow::*)(
            boost::shared_ptr<GenericModelNode>, boost::shared_ptr<GenericModelNode>, const boost::any&)>(
            &BareRow::do_create);
    }
    static auto createOneSlot()
    {
        return static_cast<boost::shared_ptr<Qt4GenericModelNode> (BareRow::*)(
            boost::shared_ptr<GenericModelNode>, const boost::any&)>(&BareRow::do_create);
    }

protected:
    void setupChildren() override {}
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode>,
                                                     const boost::any&) override
    {
        return boost::shared_ptr<Qt4GenericModelNode>();
    }
    boost::shared_ptr<Qt4GenericModelNode> do_create(boost::shared_ptr<GenericModelNode>,
                                                     boost::shared_ptr<GenericModelNode>,
                                                     const boost::any&) override
    {
        return boost::shared_ptr<Qt4GenericModelNode>();
    }
};
} // namespace

TEST(Qt4AbstractModelNodeTest, virtualOperationsKeepTheirSlotOrder)
{
    using N = Qt4AbstractModelNode;
    const std::vector<std::ptrdiff_t> order = {
        virtualSlot(&N::postInsert),
        virtualSlot(&N::data),
        virtualSlot(&N::setCheckedState),
        virtualSlot(&N::dataDisplayRole),
        virtualSlot(&N::dataDecorationRole),
        virtualSlot(&N::dataEditRole),
        virtualSlot(&N::dataFontRole),
        virtualSlot(&N::dataTextAlignmentRole),
        virtualSlot(&N::dataBackgroundRole),
        virtualSlot(&N::dataForegroundRole),
        virtualSlot(&N::dataToolTipRole),
        virtualSlot(&N::dataCheckStateRole),
        virtualSlot(&N::dataSizeHintRole),
        virtualSlot(&N::dataBranchBackgroundRole),
        virtualSlot(&N::isEnabled),
        virtualSlot(&N::isReadOnly),
        virtualSlot(&N::isSelectable),
        virtualSlot(&N::isUserCheckable),
        virtualSlot(&N::getUserFlag),
        virtualSlot(&N::isGridEnabled),
        virtualSlot(&N::hasIndexWidget),
        virtualSlot(&N::createIndexWidget),
        virtualSlot(&N::enableFirstColumnSpanning),
        virtualSlot(&N::enableAutoExpand),
        virtualSlot(&N::filterAcceptsNode),
        virtualSlot(&N::isCustomSortingPossible),
        virtualSlot(&N::lessThan),
        virtualSlot(&N::uid),
        virtualSlot(BareRow::setupNodeSlot()),
        virtualSlot(BareRow::setupChildrenSlot()),
        virtualSlot(BareRow::createTwoSlot()),
        virtualSlot(BareRow::createOneSlot()),
    };
    // Slot 1 is the destructor (two table entries); operation n of the list sits at n + 1.
    for (std::size_t i = 0; i < order.size(); ++i)
        EXPECT_EQ(order[i], static_cast<std::ptrdiff_t>(i + 2)) << "operation " << i + 2;
}

TEST(Qt4AbstractModelNodeTest, rowThatOverridesNothingAnswersTheDefaults)
{
    auto tree = sampleTree();
    boost::shared_ptr<BareRow> row(new BareRow(tree->model(), tree->find("Width"), boost::any()));
    row->postConstruct();
    for (int role :
         std::vector<int>{Qt::DisplayRole, Qt::DecorationRole, Qt::EditRole, Qt::FontRole,
                          Qt::TextAlignmentRole, Qt::BackgroundRole, Qt::ForegroundRole, Qt::ToolTipRole,
                          Qt::CheckStateRole, Qt::SizeHintRole, Qt4AbstractModel::BranchBackgroundRole}) {
        for (int column : {0, 1})
            EXPECT_FALSE(row->data(column, role).isValid()) << "role " << role;
    }
    EXPECT_EQ(row->data(0, Qt::UserRole).value<Qt4AbstractModelNodePtr>(), row);
    EXPECT_TRUE(row->isEnabled(1));
    EXPECT_TRUE(row->isReadOnly(1));
    EXPECT_TRUE(row->isSelectable(1));
    EXPECT_FALSE(row->isUserCheckable(1));
    EXPECT_FALSE(row->getUserFlag(1));
    EXPECT_FALSE(row->isGridEnabled(1));
    EXPECT_FALSE(row->hasIndexWidget(1));
    EXPECT_EQ(row->createIndexWidget(1), nullptr);
    EXPECT_FALSE(row->enableFirstColumnSpanning());
    EXPECT_FALSE(row->enableAutoExpand());
    EXPECT_TRUE(row->filterAcceptsNode());
    EXPECT_FALSE(row->isCustomSortingPossible(row));
    EXPECT_FALSE(row->lessThan(row, false));
    EXPECT_EQ(row->uid(), reinterpret_cast<quintptr>(tree->find("Width").get()));
}

TEST(VornModelQt4Test, initRegistersTheNodeMetaTypeAndCounts)
{
    const unsigned before = VornModelQt4UseCount();
    VornModelQt4Init();
    EXPECT_NE(QMetaType::type("vorn::core::Qt4AbstractModelNodePtr"), 0);
    EXPECT_EQ(VornModelQt4UseCount(), before + 1);
    VornModelQt4Deinit();
    EXPECT_EQ(VornModelQt4UseCount(), before);
}
