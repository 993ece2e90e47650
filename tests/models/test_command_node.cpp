#include "ModelTestSupport.h"
#include "support/Eventually.h"

#include "example/ExampleTree.h"
#include "support/Review.h"
#include <vorn/delegate/CenteredCommandButton.h>
#include <vorn/host/Qt4GenericTreeView.h>
#include <vorn/models/Qt4ParametersCommandNode.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>

#include <QApplication>
#include <QHeaderView>
#include <QMetaMethod>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <set>

using namespace vorn::core;
using namespace vorn::core::models;
using namespace vorn::test;

namespace {

struct CommandNodeTest : ::testing::Test
{
    boost::shared_ptr<InMemoryParameterTree> tree = InMemoryParameterTree::create();
    boost::shared_ptr<Qt4ParametersModel> model;
    int executions = 0;

    boost::shared_ptr<MvParametersCommandNode> addCommand(const std::string& name,
                                                          ParameterEntryAccessMode access = peamReadWrite)
    {
        return tree->command(tree->root(), name)
            .toolTip("Runs " + name)
            .access(access)
            .onExecute([this](const boost::shared_ptr<MvParametersCommandNode>&) { ++executions; });
    }

    void build()
    {
        model = Qt4ParametersModel::create(
            Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    }

    boost::shared_ptr<Qt4ParametersCommandNode> row(const char* name)
    {
        return rowAt<Qt4ParametersCommandNode>(findRow(model.get(), QString::fromLatin1(name)));
    }

    // A button made by the row, owned by the test.
    std::unique_ptr<CenteredCommandButton> button(const char* name)
    {
        return std::unique_ptr<CenteredCommandButton>(
            qobject_cast<CenteredCommandButton*>(row(name)->createIndexWidget(1)));
    }
};

QPushButton* pushButtonIn(QWidget* w)
{
    auto* b = qobject_cast<CenteredCommandButton*>(w);
    return b ? b->ui.commandButton : nullptr;
}

} // namespace

TEST_F(CommandNodeTest, nameColumnShowsNameIconAndFontAndTheValueColumnNoText)
{
    addCommand("Run");
    build();
    const QModelIndex name = findRow(model.get(), "Run");
    const QModelIndex value = name.sibling(name.row(), 1);
    EXPECT_EQ(name.data().toString(), QStringLiteral("Run"));
    EXPECT_TRUE(sameIcon(name.data(Qt::DecorationRole), ":/parameters/command.png"));
    EXPECT_EQ(fontOf(name), QApplication::font());
    EXPECT_FALSE(value.data().isValid());
    EXPECT_FALSE(value.data(Qt::DecorationRole).isValid());
    EXPECT_FALSE(value.data(Qt::FontRole).isValid());
    EXPECT_EQ(name.data(Qt::ToolTipRole).toString(), QStringLiteral("Runs Run"));
    EXPECT_EQ(value.data(Qt::ToolTipRole).toString(), QStringLiteral("Runs Run"));
    EXPECT_EQ(name.data(Qt::SizeHintRole).toSize(), QSize(-1, 17));
    EXPECT_EQ(value.data(Qt::SizeHintRole).toSize(), QSize(-1, 17));
    EXPECT_TRUE(row("Run")->isGridEnabled(0));
    EXPECT_TRUE(row("Run")->isGridEnabled(1));
}

TEST_F(CommandNodeTest, displayCacheIsReadOnceAtInsertion)
{
    auto command = addCommand("Run");
    build();
    command->setDisplayName("Renamed");
    command->setToolTip("new tip");
    tree->notifyChanged(command);
    const QModelIndex name = findRow(model.get(), "Run");
    ASSERT_TRUE(name.isValid());
    EXPECT_EQ(name.data(Qt::ToolTipRole).toString(), QStringLiteral("Runs Run"));
}

TEST_F(CommandNodeTest, indexWidgetOnlyInTheValueColumn)
{
    addCommand("Run");
    build();
    auto r = row("Run");
    EXPECT_FALSE(r->hasIndexWidget(0));
    EXPECT_TRUE(r->hasIndexWidget(1));
    EXPECT_FALSE(r->hasIndexWidget(2));
    EXPECT_EQ(r->createIndexWidget(0), nullptr);
    EXPECT_EQ(r->createIndexWidget(2), nullptr);
}

TEST_F(CommandNodeTest, buttonIsEnabledForAccessThreeAndFiveOnly)
{
    addCommand("RW", peamReadWrite);
    addCommand("RWValid", peamReadWriteIfValid);
    auto invalid = addCommand("RWValidButInvalid", peamReadWriteIfValid);
    invalid->setDataValid(false);
    for (auto mode : {peamUndefined, peamNotImplemented, peamNotAvailable, peamReadOnly}) {
        addCommand("Mode" + std::to_string(mode), mode);
        addCommand("ActiveMode" + std::to_string(mode), mode)->setActive(true);
    }
    build();
    for (const char* n : {"RW", "RWValid", "RWValidButInvalid"}) {
        auto b = button(n);
        EXPECT_TRUE(b->ui.commandButton->isEnabled()) << n;
        EXPECT_EQ(b->ui.commandButton->text(), QStringLiteral("Execute")) << n;
    }
    for (const char* n : {"Mode0", "Mode1", "Mode2", "Mode4"}) {
        auto b = button(n);
        EXPECT_FALSE(b->ui.commandButton->isEnabled()) << n;
        EXPECT_EQ(b->ui.commandButton->text(), QStringLiteral("Execute")) << n;
    }
    for (const char* n : {"ActiveMode0", "ActiveMode1", "ActiveMode2", "ActiveMode4"}) {
        auto b = button(n);
        EXPECT_FALSE(b->ui.commandButton->isEnabled()) << n;
        EXPECT_EQ(b->ui.commandButton->text(), QStringLiteral("running...")) << n;
    }
}

TEST_F(CommandNodeTest, freshButtonShowsTheCurrentState)
{
    addCommand("Idle");
    addCommand("Busy")->setActive(true);
    build();
    auto idle = button("Idle");
    EXPECT_EQ(idle->ui.commandButton->text(), QStringLiteral("Execute"));
    EXPECT_TRUE(idle->ui.commandButton->isEnabled());
    auto busy = button("Busy");
    EXPECT_EQ(busy->ui.commandButton->text(), QStringLiteral("running..."));
    EXPECT_FALSE(busy->ui.commandButton->isEnabled());
}

TEST_F(CommandNodeTest, setupNodeEmitsActiveThenEnabled)
{
    auto command = addCommand("Run", peamReadOnly);
    command->setActive(true);
    build();
    auto r = row("Run");
    QStringList order;
    QObject::connect(r.get(), &Qt4ParametersCommandNode::buttonActive,
                     [&](bool v) { order << QStringLiteral("active=%1").arg(v); });
    QObject::connect(r.get(), &Qt4ParametersCommandNode::buttonEnabled,
                     [&](bool v) { order << QStringLiteral("enabled=%1").arg(v); });
    tree->notifyChanged(command); // the framework refreshes the row
    EXPECT_EQ(order, (QStringList{"active=1", "enabled=0"}));
}

TEST_F(CommandNodeTest, clickExecutesThroughTheCallbackWithAnEmptyValue)
{
    addCommand("Run");
    build();
    row("Run")->buttonClicked();
    EXPECT_EQ(callsOf(*tree), QStringList{"Run:empty="});
    EXPECT_EQ(executions, 1);
}

TEST_F(CommandNodeTest, clickWithReleasedCallbackDoesNothing)
{
    addCommand("Run");
    build();
    auto b = button("Run");
    tree->releaseCallback();
    QTest::mouseClick(b->ui.commandButton, Qt::LeftButton);
    EXPECT_TRUE(tree->calls().empty());
    EXPECT_EQ(executions, 0);
}

TEST_F(CommandNodeTest, metaObjectHasTheNodeSignalsAndSlotInOrder)
{
    const QMetaObject& mo = Qt4ParametersCommandNode::staticMetaObject;
    EXPECT_STREQ(mo.className(), "vorn::core::Qt4ParametersCommandNode");
    ASSERT_EQ(mo.methodCount() - mo.methodOffset(), 3);
    EXPECT_EQ(mo.method(mo.methodOffset()).methodSignature(), QByteArray("buttonActive(bool)"));
    EXPECT_EQ(mo.method(mo.methodOffset()).methodType(), QMetaMethod::Signal);
    EXPECT_EQ(mo.method(mo.methodOffset() + 1).methodSignature(), QByteArray("buttonEnabled(bool)"));
    EXPECT_EQ(mo.method(mo.methodOffset() + 1).methodType(), QMetaMethod::Signal);
    EXPECT_EQ(mo.method(mo.methodOffset() + 2).methodSignature(), QByteArray("buttonClicked()"));
    EXPECT_EQ(mo.method(mo.methodOffset() + 2).methodType(), QMetaMethod::Slot);
    EXPECT_EQ(mo.propertyCount(), mo.propertyOffset());
    EXPECT_EQ(mo.enumeratorCount(), mo.enumeratorOffset());
    EXPECT_EQ(mo.classInfoCount(), mo.classInfoOffset());
}

// The command row is a QObject first, so its row operations live in the table of its
// Qt4AbstractModelNode part. That table must have the framework's slots in their order: the operations
// the command row overrides differ from the plain row's entries, every other slot holds the same
// inherited function.
TEST_F(CommandNodeTest, nodeTableKeepsTheFrameworkSlotOrder)
{
    addCommand("Run");
    build();
    auto command = row("Run");
    auto plain = Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any());
    const Qt4AbstractModelNode* commandPart = command.get();
    const Qt4AbstractModelNode* plainPart = plain.get();
    void* const* commandTable = *reinterpret_cast<void* const* const*>(commandPart);
    void* const* plainTable = *reinterpret_cast<void* const* const*>(plainPart);

    // Slots 2 to 33 (the destructor takes table entries 0 and 1).
    const std::set<int> overridden = {2, 5, 6, 8, 12, 14, 21, 22, 23, 30};
    for (int slot = 2; slot <= 33; ++slot) {
        if (overridden.count(slot))
            EXPECT_NE(commandTable[slot], plainTable[slot]) << "slot " << slot;
        else
            EXPECT_EQ(commandTable[slot], plainTable[slot]) << "slot " << slot;
    }
    // The base-class entry points reach the command row's own answers.
    EXPECT_EQ(commandPart->model(), model.get());
    EXPECT_EQ(const_cast<Qt4AbstractModelNode*>(commandPart)->dataSizeHintRole(0).toSize(), QSize(-1, 17));
    EXPECT_TRUE(const_cast<Qt4AbstractModelNode*>(commandPart)->hasIndexWidget(1));
}

TEST_F(CommandNodeTest, realClickInAViewReachesTheCallbackOnceAndTheButtonFollowsTheCommand)
{
    auto tree = vorn::example::buildExampleTree(200);
    auto model =
        Qt4ParametersModel::create(Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    Qt4GenericTreeView view;
    view.setModel(model.get());
    view.resize(600, 700);
    view.header()->resizeSection(0, 250);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));

    const QModelIndex name = findRow(model.get(), "Acquisition Start");
    QPushButton* push = pushButtonIn(view.indexWidget(name.sibling(name.row(), 1)));
    ASSERT_TRUE(push);
    EXPECT_EQ(push->text(), QStringLiteral("Execute"));
    EXPECT_TRUE(push->isEnabled());
    QTest::mouseClick(push, Qt::LeftButton);
    EXPECT_EQ(callsOf(*tree), QStringList{"AcquisitionStart:empty="});
    EXPECT_EQ(push->text(), QStringLiteral("running..."));
    EXPECT_FALSE(push->isEnabled());
    vorn::test::saveForReview(view.grab().toImage(), QStringLiteral("command-running"));

    QTest::mouseClick(push, Qt::LeftButton); // disabled while running
    EXPECT_EQ(tree->calls().size(), 1u);
    VORN_WAIT_EQ(push->text(), QStringLiteral("Execute"), 5000);
    EXPECT_TRUE(push->isEnabled());
    vorn::test::saveForReview(view.grab().toImage(), QStringLiteral("command-idle"));

    const QModelIndex stop = findRow(model.get(), "Acquisition Stop");
    QPushButton* stopButton = pushButtonIn(view.indexWidget(stop.sibling(stop.row(), 1)));
    ASSERT_TRUE(stopButton);
    EXPECT_FALSE(stopButton->isEnabled()) << "read-only command";
}
