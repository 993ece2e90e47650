// Faults that meet an open editor of the item delegate: the tree's callback expires while the user
// types, the tree behind the model is closed, and a live camera stops answering. The user's text
// survives until the commit, the commit writes nothing (or is refused with a message the host can
// show), nothing crashes, and the GUI thread keeps running.
#include "FaultTestSupport.h"
#include "support/Eventually.h"

#include "delegate/ItemDelegateTesting.h"
#include "genicam/FakeGvCamera.h"
#include "genicam/GenicamTestSupport.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <atomic>

using namespace vorn::core;
using namespace vorn::core::models;
using namespace vorn::test;

namespace {

class EditorFaults : public DelegateFixture
{
public:
    // Typing and committing as a user does, also for the GenICam views below.
    using DelegateFixture::pressEnter;
    using DelegateFixture::type;
};

// A view with the delegate over a GenICam tree's model.
struct GenicamView
{
    boost::shared_ptr<Qt4ParametersModel> model;
    boost::shared_ptr<Qt4ParametersItemDelegate> delegate = Qt4ParametersItemDelegate::create();
    std::unique_ptr<Qt4GenericTreeView> view;

    explicit GenicamView(const boost::shared_ptr<GenicamParameterTree>& tree)
    {
        model = Qt4ParametersModel::create(
            Qt4ParametersModelNode::create(tree->model(), tree->model()->root(), boost::any()));
        view.reset(new Qt4GenericTreeView);
        view->setItemDelegate(delegate.get());
        view->setModel(model.get());
        view->resize(480, 640);
        view->show();
        view->activateWindow();
    }
    QModelIndex value(const char* name) const { return findRow(model.get(), QString::fromLatin1(name), 1); }
    QWidget* open(const char* name)
    {
        view->scrollTo(value(name));
        view->edit(value(name));
        return view->indexWidget(value(name));
    }
};

} // namespace

TEST_F(EditorFaults, theCallbackExpiresWhileAnEditorIsOpen)
{
    auto gain = tree->integer(nullptr, "Gain").value(3).range(0, 100).node();
    tree->string(nullptr, "Name").value("cam");
    show();
    WarningCatcher catcher;
    StallProbe probe;

    QWidget* gainEditor = open("Gain");
    ASSERT_TRUE(gainEditor);
    type(gainEditor, QStringLiteral("42"));
    // The tree goes away under the open editor, and tells the views about it.
    tree->releaseCallback();
    tree->notifyAllChanged();
    settle();
    EXPECT_EQ(lineEditOf(gainEditor)->text(), QStringLiteral("42")) << "the user's text was overwritten";
    pressEnter(gainEditor);
    EXPECT_FALSE(view->indexWidget(value("Gain")));

    // A second editor opened after the callback went: the same.
    edit("Name", QStringLiteral("other"));

    EXPECT_TRUE(calls().isEmpty()) << "nothing reaches a tree whose callback is gone";
    EXPECT_TRUE(catcher.warnings().isEmpty()) << "an expired callback is not the user's mistake";
    EXPECT_EQ(gain->getNodeValue(), 3);
    EXPECT_EQ(shown("Gain"), QStringLiteral("3"));
    Stalls stalls;
    stalls.take(probe);
    reportFault("callback expired under an open editor: commit dropped, " +
                std::to_string(catcher.warnings().size()) + " warnings; " + stalls.text());
    stalls.reportAgainstBounds();
}

TEST(EditorFaultsGenicam, theTreeIsClosedWhileAnEditorIsOpen)
{
    std::string error;
    auto tree = GenicamParameterTree::openSimulated(&error);
    ASSERT_TRUE(tree) << error;
    GenicamView shown(tree);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(shown.view.get()));
    WarningCatcher catcher;
    StallProbe probe;
    QSignalSpy errors(shown.model.get(), &Qt4GenericModel::errorReported);

    QWidget* editor = shown.open("Width");
    ASSERT_TRUE(editor);
    EditorFaults::type(editor, QStringLiteral("256"));
    // The host closes the device; the model and its rows stay with the view.
    tree.reset();
    EditorFaults::pressEnter(editor);

    EXPECT_FALSE(shown.view->indexWidget(shown.value("Width")));
    EXPECT_EQ(shown.value("Width").data().toString(), QStringLiteral("512"));
    EXPECT_TRUE(catcher.warnings().isEmpty());
    EXPECT_EQ(errors.count(), 0);
    Stalls stalls;
    stalls.take(probe);
    reportFault("GenICam tree closed under an open editor: commit dropped; " + stalls.text());
    stalls.reportAgainstBounds();
}

TEST(EditorFaultsGenicam, theCameraVanishesWhileAnEditorIsOpen)
{
    if (const std::string why = whyNoCamera(); !why.empty())
        GTEST_SKIP() << why;
    FakeGvCamera camera(QStringLiteral("VE%1").arg(::getpid()));
    ASSERT_TRUE(camera.start()) << "cannot start " << kCameraTool;
    std::string error;
    auto tree = openWhenReady(&error);
    ASSERT_TRUE(tree) << error << "\n" << camera.output().toStdString();
    ASSERT_EQ(valueOf(tree->find("DeviceID")), "\"" + camera.serial().toStdString() + "\"")
        << "another camera answers on " << kCameraAddress;
    const std::string widthBefore = valueOf(tree->find("Width"));

    GenicamView shown(tree);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(shown.view.get()));
    WarningCatcher catcher;
    QSignalSpy errors(shown.model.get(), &Qt4GenericModel::errorReported);
    StallProbe probe;

    QWidget* editor = shown.open("Width");
    ASSERT_TRUE(editor);
    EditorFaults::type(editor, QStringLiteral("320"));
    ASSERT_TRUE(camera.freeze());
    VORN_WAIT_UNTIL(tree->deviceState() == GenicamParameterTree::dsLost, 5000);
    settle();
    // The model told the view that every value is invalid now; the editor keeps what was typed.
    EXPECT_EQ(lineEditOf(editor)->text(), QStringLiteral("320"));
    ASSERT_GE(errors.count(), 1);
    EXPECT_TRUE(errors.at(0).at(0).toString().startsWith(QStringLiteral("Lost the connection to ")))
        << errors.at(0).at(0).toString().toStdString();

    // The commit passes the delegate's checks and is refused by the tree at once, with a message.
    errors.clear();
    EditorFaults::pressEnter(editor);
    EXPECT_FALSE(shown.view->indexWidget(shown.value("Width")));
    ASSERT_EQ(errors.count(), 1);
    EXPECT_EQ(errors.at(0).at(0).toString(),
              QStringLiteral("Cannot set Width to 320: the device does not answer"));
    EXPECT_TRUE(catcher.warnings().isEmpty()) << "the value itself was fine";

    // Back: the camera never got the refused value, and the view shows what the camera holds.
    camera.resume();
    VORN_WAIT_UNTIL(tree->deviceState() == GenicamParameterTree::dsConnected &&
                        tree->find("Width")->getDataValid(),
                    20000);
    Stalls stalls;
    stalls.take(probe);
    const auto camerasView = readWithControlTool({"Width"});
    ASSERT_TRUE(camerasView.count("Width"));
    EXPECT_EQ(camerasView.at("Width"), widthBefore);
    EXPECT_EQ(shown.value("Width").data().toString().toStdString().substr(0, widthBefore.size()),
              widthBefore);
    reportFault("camera frozen under an open editor: the typed text kept, the commit refused with \"" +
                errors.at(0).at(0).toString().toStdString() + "\"; " + stalls.text());
    stalls.reportAgainstBounds();
    shown.view.reset();
    tree.reset();
    camera.stop();
}
