// The browser's window driven as a person does: the toolbar's visibility, model, integer view mode
// and search, an in-place edit, the description pane, the status bar, value files, and whether the
// chosen font fits the rows the models ask for.

#include "BrowserSettings.h"
#include "BrowserStyle.h"
#include "BrowserWindow.h"
#include "DeviceDialog.h"
#include "FeatureDetailsPane.h"
#include "FeatureModelStack.h"
#include "FeatureWriter.h"
#include "ParameterSource.h"
#include "RegisterDialog.h"

#include "support/Eventually.h"
#include "support/ModelDump.h"
#include "support/Review.h"

#include <vorn/delegate/CenteredCommandButton.h>
#include <vorn/delegate/Qt4ParametersItemDelegate.h>
#include <vorn/host/MovaniApplication.h>
#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/Qt4GenericTreeView.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4StyledBooleanParametersModel.h>
#include <vorn/models/Qt4StyledParametersModel.h>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace vorn::browser;
using namespace vorn::core;
using namespace vorn::core::models;

namespace {

using vorn::test::findRow;

QStringList namesShown(const QAbstractItemModel* model, const QModelIndex& parent = QModelIndex())
{
    QStringList names;
    for (int row = 0; row < model->rowCount(parent); ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        names << index.data().toString();
        names << namesShown(model, index);
    }
    return names;
}

void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

class BrowserWindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        // The window's settings go to a test location, emptied first: every test starts as a first run.
        QStandardPaths::setTestModeEnabled(true);
        QSettings(QStringLiteral("Vorn"), QStringLiteral("parameter-browser")).clear();
        BrowserStyle::apply();
        window.reset(new BrowserWindow);
        window->setSource(ParameterSource::openExample());
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    void TearDown() override
    {
        // The search box fades its clear button in and out; an animation still running when the
        // window goes is never freed (Qt's own), so the tests that type there let it end first.
        if (searchUsed)
            QTest::qWait(400);
        window.reset();
        QStandardPaths::setTestModeEnabled(false);
    }

    template <class T> T* child(const char* name) const
    {
        T* found = window->findChild<T*>(QLatin1String(name));
        EXPECT_TRUE(found) << name;
        return found;
    }
    // A choice in one of the toolbar's boxes, as a person makes it (the box emits both signals).
    void choose(const char* box, const QString& text)
    {
        auto* combo = child<QComboBox>(box);
        const int index = combo->findText(text);
        ASSERT_GE(index, 0) << text.toStdString();
        combo->setCurrentIndex(index);
        emit combo->activated(index);
        settle();
    }
    QAbstractItemModel* shown() const { return window->view()->model(); }
    QString valueShown(const char* name) const
    {
        return findRow(shown(), QLatin1String(name), 1).data().toString();
    }

    std::unique_ptr<BrowserWindow> window;
    bool searchUsed = false;
};

TEST_F(BrowserWindowTest, firstRunShowsTheStyledModelAtTheBeginnerLevelWithTheLibrarysDelegate)
{
    EXPECT_EQ(window->modelKind(), ModelKind::Styled);
    EXPECT_EQ(window->visibility(), pevBeginner);
    EXPECT_EQ(window->viewMode(), IntegerViewMode::Decimal);
    // The view shows the search filter over the library's filter model over the styled model.
    EXPECT_EQ(shown(), window->models()->view());
    EXPECT_TRUE(dynamic_cast<Qt4StyledParametersModel*>(window->view()->sourceModel()));
    // (The filter answers level 0 as 1; it filters by the level it was given.)
    EXPECT_FALSE(namesShown(shown()).contains(QStringLiteral("OffsetX")));
    EXPECT_TRUE(dynamic_cast<Qt4ParametersItemDelegate*>(window->view()->itemDelegate()));
    EXPECT_EQ(shown()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Feature"));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("example device - Parameter Browser"));
    EXPECT_EQ(window->deviceStateText(), QStringLiteral("Connected: example device"));
}

TEST_F(BrowserWindowTest, theVisibilityBoxHidesAndShowsLevelsAndIsRemembered)
{
    QStringList names = namesShown(shown());
    EXPECT_TRUE(names.contains(QStringLiteral("Width")));
    EXPECT_FALSE(names.contains(QStringLiteral("OffsetX")));
    EXPECT_FALSE(names.contains(QStringLiteral("Transport Layer")));
    EXPECT_FALSE(names.contains(QStringLiteral("Counters")));

    choose("visibilityBox", QStringLiteral("Expert"));
    names = namesShown(shown());
    EXPECT_TRUE(names.contains(QStringLiteral("OffsetX")));
    EXPECT_TRUE(names.contains(QStringLiteral("Transport Layer")));
    EXPECT_FALSE(names.contains(QStringLiteral("Counters")));
    EXPECT_EQ(BrowserSettings().visibility(), pevExpert);

    choose("visibilityBox", QStringLiteral("Guru"));
    EXPECT_TRUE(namesShown(shown()).contains(QStringLiteral("Counters")));
    EXPECT_TRUE(namesShown(shown()).contains(QStringLiteral("Device Reset")));

    choose("visibilityBox", QStringLiteral("All"));
    EXPECT_EQ(window->models()->filter()->getCurrentVisibility(), pevAll);
    choose("visibilityBox", QStringLiteral("Beginner"));
    EXPECT_FALSE(namesShown(shown()).contains(QStringLiteral("OffsetX")));
}

TEST_F(BrowserWindowTest, theModelBoxSwitchesBetweenTheThreeModels)
{
    choose("modelBox", QStringLiteral("Plain"));
    EXPECT_TRUE(dynamic_cast<Qt4ParametersModel*>(window->view()->sourceModel()));
    EXPECT_EQ(shown()->columnCount(), 2);
    // The plain model opens fully expanded, and integers take no view mode there.
    EXPECT_TRUE(window->view()->isExpanded(findRow(shown(), QStringLiteral("Image Format Control"))));
    EXPECT_FALSE(child<QComboBox>("viewModeBox")->isEnabled());
    EXPECT_EQ(BrowserSettings().modelKind(), ModelKind::Plain);

    choose("modelBox", QStringLiteral("Events"));
    EXPECT_TRUE(dynamic_cast<Qt4StyledBooleanParametersModel*>(window->view()->sourceModel()));
    EXPECT_EQ(shown()->columnCount(), 1);
    EXPECT_EQ(shown()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Events"));
    const QStringList names = namesShown(shown());
    EXPECT_TRUE(names.contains(QStringLiteral("Reverse Y")));
    EXPECT_FALSE(names.contains(QStringLiteral("Width")));

    choose("modelBox", QStringLiteral("Styled"));
    EXPECT_TRUE(dynamic_cast<Qt4StyledParametersModel*>(window->view()->sourceModel()));
    EXPECT_TRUE(child<QComboBox>("viewModeBox")->isEnabled());
    // Each model gets a delegate of its own; the visibility level carries over.
    EXPECT_TRUE(dynamic_cast<Qt4ParametersItemDelegate*>(window->view()->itemDelegate()));
    EXPECT_TRUE(namesShown(shown()).contains(QStringLiteral("Width")));
    EXPECT_FALSE(namesShown(shown()).contains(QStringLiteral("OffsetX")));
}

TEST_F(BrowserWindowTest, theIntegerViewModeGoesToTheHostSettingAndTheViewFollows)
{
    EXPECT_EQ(valueShown("Width"), QStringLiteral("1280 px"));
    choose("viewModeBox", QStringLiteral("Hex"));
    EXPECT_EQ(MovaniApplication::getConfigIntEntry(integerViewModeKey(), -1), 1);
    EXPECT_EQ(valueShown("Width"), QStringLiteral("0x500 px"));
    choose("viewModeBox", QStringLiteral("Binary"));
    EXPECT_EQ(valueShown("Width"), QStringLiteral("0b10100000000 px"));
    EXPECT_EQ(BrowserSettings().viewMode(), IntegerViewMode::Binary);
    choose("viewModeBox", QStringLiteral("Decimal"));
    EXPECT_EQ(valueShown("Width"), QStringLiteral("1280 px"));
}

TEST_F(BrowserWindowTest, theSearchBoxKeepsMatchesWithTheirCategories)
{
    auto* search = child<QLineEdit>("searchBox");
    searchUsed = true;
    QTest::keyClicks(search, QStringLiteral("width"));
    settle();
    EXPECT_EQ(vorn::test::dumpRows(shown()),
              QStringList({QStringLiteral("Image Format Control | "), QStringLiteral("  Width | 1280 px")}));
    EXPECT_TRUE(window->view()->isExpanded(findRow(shown(), QStringLiteral("Image Format Control"))));

    // The feature name finds a row that shows another name.
    search->setText(QStringLiteral("AcquisitionFrameRate"));
    settle();
    EXPECT_EQ(namesShown(shown()),
              QStringList({QStringLiteral("Acquisition Control"), QStringLiteral("Frame Rate")}));

    // A matching category brings what it holds.
    search->setText(QStringLiteral("device control"));
    settle();
    const QStringList names = namesShown(shown());
    EXPECT_TRUE(names.contains(QStringLiteral("Vendor")));
    EXPECT_TRUE(names.contains(QStringLiteral("User ID")));
    EXPECT_FALSE(names.contains(QStringLiteral("Width")));

    // The search and the visibility level work together, also across a model switch.
    search->setText(QStringLiteral("offset"));
    settle();
    EXPECT_TRUE(namesShown(shown()).isEmpty());
    choose("visibilityBox", QStringLiteral("Expert"));
    choose("modelBox", QStringLiteral("Plain"));
    EXPECT_EQ(namesShown(shown()),
              QStringList({QStringLiteral("Image Format Control"), QStringLiteral("OffsetX")}));

    search->clear();
    settle();
    EXPECT_TRUE(namesShown(shown()).contains(QStringLiteral("Width")));
}

TEST_F(BrowserWindowTest, expansionAndSelectionAreKeptAcrossSearchModelAndVisibility)
{
    auto expanded = [this](const char* name) {
        const QModelIndex row = findRow(shown(), QLatin1String(name));
        EXPECT_TRUE(row.isValid()) << name;
        return window->view()->isExpanded(row);
    };
    // A first showing has its top-level categories open.
    EXPECT_TRUE(expanded("Device Control"));
    EXPECT_TRUE(expanded("Image Format Control"));
    EXPECT_TRUE(expanded("Acquisition Control"));
    // A person closes one and picks a feature, in a window small enough that the tree scrolls.
    window->resize(640, 360);
    settle();
    window->view()->collapse(findRow(shown(), QStringLiteral("Device Control")));
    ASSERT_TRUE(window->selectFeature(QStringLiteral("Height")));
    ASSERT_GT(window->view()->verticalScrollBar()->maximum(), 0) << "the tree fits: nothing to scroll";
    auto check = [&](const char* after) {
        EXPECT_FALSE(expanded("Device Control")) << after;
        EXPECT_TRUE(expanded("Image Format Control")) << after;
        EXPECT_TRUE(expanded("Acquisition Control")) << after;
        EXPECT_EQ(window->details()->shownText(QStringLiteral("Name")), QStringLiteral("Height")) << after;
        // The selected row stays where a person can see it.
        auto* view = window->view();
        EXPECT_TRUE(view->viewport()->rect().contains(view->visualRect(view->currentIndex())))
            << after << ": the selection is scrolled out of sight";
    };
    auto* search = child<QLineEdit>("searchBox");
    searchUsed = true;
    search->setText(QStringLiteral("height"));
    settle();
    EXPECT_TRUE(expanded("Image Format Control")) << "a search shows its matches";
    search->clear();
    settle();
    check("a search cleared");
    choose("modelBox", QStringLiteral("Plain"));
    check("a model switch");
    choose("visibilityBox", QStringLiteral("Guru"));
    check("a visibility change");
    choose("modelBox", QStringLiteral("Styled"));
    check("a switch back");
    window->refresh();
    settle();
    check("a refresh");
}

TEST_F(BrowserWindowTest, theKeyboardEditsValuesAndRunsCommands)
{
    auto* view = window->view();
    ASSERT_TRUE(window->selectFeature(QStringLiteral("Width")));
    view->setFocus();
    // An editor is open while the focus is in a widget on the view's viewport.
    auto editing = [view] {
        QWidget* focus = QApplication::focusWidget();
        return focus && view->viewport()->isAncestorOf(focus);
    };
    // F2 opens the editor; Escape leaves the value as it was.
    QTest::keyClick(view, Qt::Key_F2);
    ASSERT_TRUE(editing());
    QWidget* editor = QApplication::focusWidget();
    QTest::keyClick(editor, Qt::Key_Escape);
    settle();
    EXPECT_FALSE(editing());
    EXPECT_EQ(valueShown("Width"), QStringLiteral("1280 px"));
    // Enter opens it too, and Enter commits what was typed.
    QTest::keyClick(view, Qt::Key_Return);
    ASSERT_TRUE(editing());
    editor = QApplication::focusWidget();
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(editor, QStringLiteral("1024"));
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
    EXPECT_EQ(valueShown("Width"), QStringLiteral("1024 px"));

    // Space runs a selected command, as its button would.
    ASSERT_TRUE(window->selectFeature(QStringLiteral("AcquisitionStart")));
    settle();
    const QModelIndex row = view->currentIndex();
    QWidget* cell = view->indexWidget(row.sibling(row.row(), 1));
    ASSERT_TRUE(cell);
    auto* button = cell->findChild<QAbstractButton*>();
    ASSERT_TRUE(button);
    QSignalSpy clicked(button, &QAbstractButton::clicked);
    view->setFocus();
    QTest::keyClick(view, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(BrowserWindowTest, aCommandShowsThatItRunsAndThenDoneOrFailedWithTheReason)
{
    auto* view = window->view();
    ASSERT_TRUE(window->selectFeature(QStringLiteral("AcquisitionStart")));
    settle();
    const QModelIndex row = view->currentIndex();
    QWidget* cell = view->indexWidget(row.sibling(row.row(), 1));
    ASSERT_TRUE(cell);
    auto* button = cell->findChild<QAbstractButton*>();
    ASSERT_TRUE(button);
    const int before = window->logLines().size();
    auto logged = [&] {
        QStringList lines = window->logLines().mid(before);
        for (QString& line : lines)
            line = line.mid(10); // the time
        return lines;
    };
    // The example's acquisition runs for a while after it starts: its button says so, and the log
    // says it is done only once it no longer runs.
    view->setFocus();
    QTest::keyClick(view, Qt::Key_Space);
    settle();
    EXPECT_EQ(logged(), QStringList{QStringLiteral("Running AcquisitionStart")});
    EXPECT_EQ(button->text(), QStringLiteral("running..."));
    VORN_WAIT_EQ(logged().size(), 2, 5000);
    EXPECT_EQ(logged(), QStringList({QStringLiteral("Running AcquisitionStart"),
                                     QStringLiteral("AcquisitionStart done")}));
    EXPECT_EQ(button->text(), QStringLiteral("Execute"));

    // A command the tree refuses: its reason ends the account, in one line.
    FeatureWriter(*window->source()).apply({FeatureAssignment{"AcquisitionStop", -1, "", 0}});
    VORN_WAIT_EQ(logged().size(), 4, 5000);
    EXPECT_EQ(logged().mid(2),
              QStringList({QStringLiteral("Running AcquisitionStop"),
                           QStringLiteral("AcquisitionStop failed: the feature is read-only")}));
}

// The same account for a camera's command, once the device thread has answered it.
TEST_F(BrowserWindowTest, aCameraCommandIsDoneOnceTheDeviceAnswered)
{
    QString error;
    auto camera = ParameterSource::openSimulated(&error);
    ASSERT_TRUE(camera) << error.toStdString();
    window->setSource(std::move(camera));
    settle();
    const int before = window->logLines().size();
    auto logged = [&] {
        QStringList lines = window->logLines().mid(before);
        for (QString& line : lines)
            line = line.mid(10);
        return lines;
    };
    FeatureWriter(*window->source()).apply({FeatureAssignment{"AcquisitionStart", -1, "", 0}});
    VORN_WAIT_EQ(logged().size(), 2, 5000);
    EXPECT_EQ(logged(), QStringList({QStringLiteral("Running AcquisitionStart"),
                                     QStringLiteral("AcquisitionStart done")}));
}

TEST_F(BrowserWindowTest, eachModelSaysWhatItIsFor)
{
    auto* box = child<QComboBox>("modelBox");
    for (int i = 0; i < box->count(); ++i)
        EXPECT_FALSE(box->itemData(i, Qt::ToolTipRole).toString().isEmpty())
            << box->itemText(i).toStdString();
    EXPECT_TRUE(box->itemData(2, Qt::ToolTipRole).toString().contains(QStringLiteral("check boxes")));
}

TEST_F(BrowserWindowTest, aValueEditedInPlaceReachesTheTreeAndShows)
{
    ASSERT_TRUE(window->selectFeature(QStringLiteral("Width")));
    const QModelIndex value = findRow(shown(), QStringLiteral("Width"), 1);
    window->view()->edit(value);
    auto* editor = qobject_cast<QAbstractSpinBox*>(window->view()->indexWidget(value));
    ASSERT_TRUE(editor);
    QTest::keyClicks(editor, QStringLiteral("2048"));
    settle();
    vorn::test::saveForReview(window->grab().toImage(), QStringLiteral("browser-editing"));
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
    EXPECT_EQ(valueShown("Width"), QStringLiteral("2048 px"));
    const auto width = window->source()->nodesNamed("Width").front();
    EXPECT_EQ(boost::static_pointer_cast<MvParametersIntegerNode>(width)->getNodeValue(), 2048);

    // A check box in the value column toggles through the model as well.
    const QModelIndex reverse = findRow(shown(), QStringLiteral("Reverse X"), 1);
    ASSERT_TRUE(shown()->setData(reverse, Qt::Checked, Qt::CheckStateRole));
    settle();
    EXPECT_EQ(findRow(shown(), QStringLiteral("Reverse X"), 1).data(Qt::CheckStateRole).toInt(), Qt::Checked);
}

TEST_F(BrowserWindowTest, theDescriptionPaneDescribesTheSelectedFeature)
{
    const FeatureDetailsPane* pane = window->details();
    EXPECT_EQ(FeatureDetailsPane().shownText(QStringLiteral("Title")), QStringLiteral("No feature selected"));
    ASSERT_TRUE(window->selectFeature(QStringLiteral("Width")));
    EXPECT_EQ(pane->shownText(QStringLiteral("Title")), QStringLiteral("Width"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Name")), QStringLiteral("Width"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Kind")), QStringLiteral("Integer"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Access")), QStringLiteral("read/write"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Visibility")), QStringLiteral("Beginner"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Range")), QStringLiteral("16 to 4096"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Increment")), QStringLiteral("16"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Unit")), QStringLiteral("px"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Representation")), QStringLiteral("Linear"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Description")), QStringLiteral("Width of the image"));

    // A kind without a range shows none; the selection follows a change of model.
    ASSERT_TRUE(window->selectFeature(QStringLiteral("PixelFormat")));
    EXPECT_EQ(pane->shownText(QStringLiteral("Title")), QStringLiteral("Pixel Format"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Kind")), QStringLiteral("Enumeration"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Range")), QString());
    EXPECT_EQ(pane->shownText(QStringLiteral("Entries")),
              QStringLiteral("Mono8 = 17301505, current\nMono 12 = 17825797\n"
                             "Mono 16 = 17825799, not available now\nRGB 8 = 35127316"));
    choose("modelBox", QStringLiteral("Plain"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Name")), QStringLiteral("PixelFormat"));
}

// How a feature is polled, and the selectors it depends on or is, as the description says.
TEST_F(BrowserWindowTest, theDescriptionPaneNamesPollingAndSelectors)
{
    QString error;
    auto polled = ParameterSource::openXmlFile(QStringLiteral(VORN_GENICAM_TEST_DATA "/polling.xml"), &error);
    ASSERT_TRUE(polled) << error.toStdString();
    window->setSource(std::move(polled));
    settle();
    choose("visibilityBox", QStringLiteral("Guru"));
    auto* pane = child<FeatureDetailsPane>("detailsPane");
    ASSERT_TRUE(window->selectFeature(QStringLiteral("Temperature")));
    EXPECT_EQ(pane->shownText(QStringLiteral("Polling")), QStringLiteral("every 100 ms"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Selected by")), QString());
    ASSERT_TRUE(window->selectFeature(QStringLiteral("TemperatureMirror")));
    EXPECT_EQ(pane->shownText(QStringLiteral("Polling")), QString()) << "not polled: no line";

    auto selector =
        ParameterSource::openXmlFile(QStringLiteral(VORN_GENICAM_TEST_DATA "/selector.xml"), &error);
    ASSERT_TRUE(selector) << error.toStdString();
    window->setSource(std::move(selector));
    settle();
    ASSERT_TRUE(window->selectFeature(QStringLiteral("GainSelector")));
    EXPECT_EQ(pane->shownText(QStringLiteral("Selects")), QStringLiteral("Gain"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Selected by")), QString());
    ASSERT_TRUE(window->selectFeature(QStringLiteral("Gain")));
    EXPECT_EQ(pane->shownText(QStringLiteral("Selected by")), QStringLiteral("GainSelector"));
    EXPECT_EQ(pane->shownText(QStringLiteral("Selects")), QString());
}

// A polled value is a read every period: the window has the device read only those on screen.
TEST_F(BrowserWindowTest, onlyPolledFeaturesOnScreenAreRead)
{
    QString error;
    auto polled = ParameterSource::openXmlFile(QStringLiteral(VORN_GENICAM_TEST_DATA "/polling.xml"), &error);
    ASSERT_TRUE(polled) << error.toStdString();
    window->setSource(std::move(polled));
    settle();
    choose("visibilityBox", QStringLiteral("Guru"));
    const auto tree = window->source()->genicamTree();
    ASSERT_TRUE(tree);
    const auto readsSoFar = [&tree] { return tree->registerTraffic().reads; };

    // Temperature (100 ms) and Heartbeat (50 ms) in view: read again and again.
    window->view()->expandAll();
    window->view()->setCurrentIndex(QModelIndex());
    auto before = readsSoFar();
    VORN_WAIT_UNTIL(readsSoFar() >= before + 4, 5000);

    // Their category closed and nothing selected: nothing polled is on screen, nothing is read.
    window->view()->collapseAll();
    QTest::qWait(300);
    ASSERT_TRUE(window->source()->waitIdle(5000));
    before = readsSoFar();
    QTest::qWait(500);
    EXPECT_EQ(readsSoFar(), before);

    // The selected feature shows in the description pane, wherever the view is: read again.
    ASSERT_TRUE(window->selectFeature(QStringLiteral("Temperature")));
    before = readsSoFar();
    VORN_WAIT_UNTIL(readsSoFar() >= before + 2, 5000);
}

TEST_F(BrowserWindowTest, anOfflineDescriptionSaysSoAndShowsWhatTheFileHolds)
{
    const QString path = QStringLiteral(VORN_GENICAM_SHARED_DATA "/simulated-camera.xml");
    QString error;
    auto source = ParameterSource::openXmlFile(path, &error);
    ASSERT_TRUE(source) << error.toStdString();
    window->setSource(std::move(source));
    settle();
    EXPECT_EQ(window->deviceStateText(), path + QStringLiteral(": offline description"));
    choose("visibilityBox", QStringLiteral("Guru"));
    auto* pane = child<FeatureDetailsPane>("detailsPane");
    ASSERT_TRUE(pane);
    ASSERT_TRUE(window->selectFeature(QStringLiteral("PixelFormat")));
    EXPECT_EQ(pane->shownText(QStringLiteral("Entries")),
              QStringLiteral("BayerBG8 = 17301515, current\nBayerGB8 = 17301514\nBayerGR8 = 17301512\n"
                             "BayerRG8 = 17301513\nMono8 = 17301505\nRGB8 = 35127316\nMono16 = 17825799"));
    EXPECT_EQ(valueShown("Pixel format"), QStringLiteral("BayerBG8"));
    // What only the camera knows is blank, and says why.
    ASSERT_TRUE(window->selectFeature(QStringLiteral("DeviceID")));
    EXPECT_EQ(
        pane->shownText(QStringLiteral("Description")),
        QStringLiteral("Unreadable: only the camera can tell it (an offline description holds no value)"));
}

TEST_F(BrowserWindowTest, theStatusBarShowsTheLastErrorTheTreeReported)
{
    EXPECT_TRUE(window->lastErrorText().isEmpty());
    FeatureWriter(*window->source()).apply({FeatureAssignment{"Width", -1, "5000", 0}});
    settle();
    EXPECT_TRUE(window->lastErrorText().endsWith(
        QStringLiteral("Cannot set Width to 5000: 5000 is above the maximum 4096")))
        << window->lastErrorText().toStdString();
    EXPECT_EQ(child<QWidget>("lastErrorLabel")->toolTip(), window->lastErrorText());
    vorn::test::saveForReview(window->grab().toImage(), QStringLiteral("browser-error"));
}

TEST_F(BrowserWindowTest, theLogKeepsWhatHappenedWhen)
{
    FeatureWriter(*window->source()).apply({FeatureAssignment{"Width", -1, "5000", 0}});
    settle();
    QTemporaryDir dir;
    QString error;
    ASSERT_TRUE(window->saveValues(dir.filePath(QStringLiteral("v.txt")), &error));
    QStringList lines = window->logLines();
    // Each line starts with its time.
    for (QString& line : lines) {
        EXPECT_EQ(line.mid(2, 1), QStringLiteral(":")) << line.toStdString();
        line = line.mid(10);
    }
    EXPECT_EQ(
        lines,
        QStringList(
            {QStringLiteral("Connected: example device"),
             QStringLiteral("Cannot set Width to 5000: 5000 is above the maximum 4096"),
             QStringLiteral("Saved the feature values to %1").arg(dir.filePath(QStringLiteral("v.txt")))}));
}

TEST_F(BrowserWindowTest, theRegisterDialogReadsAndWritesTheSimulatedCamera)
{
    // Only for experts, and only where there is a device.
    EXPECT_FALSE(window->openRegisters());
    choose("visibilityBox", QStringLiteral("Guru"));
    EXPECT_FALSE(window->openRegisters()) << "the example device has no registers";
    QString error;
    auto camera = ParameterSource::openSimulated(&error);
    ASSERT_TRUE(camera) << error.toStdString();
    window->setSource(std::move(camera));
    settle();
    RegisterDialog* dialog = window->openRegisters();
    ASSERT_TRUE(dialog);
    auto* address = dialog->findChild<QLineEdit*>(QStringLiteral("address"));
    auto* value = dialog->findChild<QLineEdit*>(QStringLiteral("value"));
    ASSERT_TRUE(address && value);
    auto answered = [dialog] {
        return QTest::qWaitFor([dialog] { return !dialog->status().endsWith(QStringLiteral("...")); }, 5000);
    };
    // Width lives at 0x100: what the register holds is what the tree shows.
    address->setText(QStringLiteral("0x100"));
    dialog->read();
    ASSERT_TRUE(answered());
    EXPECT_EQ(dialog->status(), QStringLiteral("Read 0x100"));
    EXPECT_EQ(dialog->valueText(), QStringLiteral("0x00000200"));
    EXPECT_EQ(valueShown("Width"), QStringLiteral("512"));
    // A write reaches the register, and the tree reads it again.
    value->setText(QStringLiteral("256"));
    dialog->write();
    ASSERT_TRUE(answered());
    EXPECT_EQ(dialog->status(), QStringLiteral("Wrote 0x100"));
    ASSERT_TRUE(window->source()->waitIdle());
    settle();
    EXPECT_EQ(valueShown("Width"), QStringLiteral("256"));
    // What is not an address or a 32-bit value is said at once.
    address->setText(QStringLiteral("somewhere"));
    dialog->read();
    EXPECT_EQ(dialog->status(),
              QStringLiteral("\"somewhere\" is not an address (write it in decimal or as 0x...)"));
    // Back below Guru, the dialog goes.
    choose("visibilityBox", QStringLiteral("Beginner"));
    settle();
    EXPECT_FALSE(window->registers());
}

TEST_F(BrowserWindowTest, undoWritesBackThePreviousValuesOneChangeAtATime)
{
    EXPECT_FALSE(window->undoLastChange()) << "nothing changed yet";
    ASSERT_TRUE(
        FeatureWriter(*window->source())
            .apply({FeatureAssignment{"Width", -1, "1024", 0}, FeatureAssignment{"Width", -1, "640", 0},
                    FeatureAssignment{"PixelFormat", -1, "RGB8", 0}})
            .empty());
    settle();
    EXPECT_EQ(valueShown("Width"), QStringLiteral("640 px"));
    EXPECT_TRUE(window->undoLastChange());
    settle();
    EXPECT_EQ(valueShown("Pixel Format"), QStringLiteral("Mono8"));
    EXPECT_TRUE(window->undoLastChange());
    settle();
    EXPECT_EQ(valueShown("Width"), QStringLiteral("1024 px"));
    EXPECT_TRUE(window->undoLastChange());
    settle();
    EXPECT_EQ(valueShown("Width"), QStringLiteral("1280 px"));
    EXPECT_FALSE(window->undoLastChange()) << "an undo is no change of its own";
    const QStringList lines = window->logLines();
    ASSERT_GE(lines.size(), 3);
    EXPECT_TRUE(lines.last().endsWith(QStringLiteral("Undo Width: 1024 back to 1280")))
        << lines.last().toStdString();
}

TEST_F(BrowserWindowTest, aNewWindowShowsASecondDeviceBesideTheFirst)
{
    auto* action = window->findChild<QAction*>(QStringLiteral("newWindowAction"));
    ASSERT_TRUE(action);
    action->trigger();
    BrowserWindow* second = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* candidate = qobject_cast<BrowserWindow*>(widget); candidate && candidate != window.get())
            second = candidate;
    ASSERT_TRUE(second);
    EXPECT_EQ(second->deviceStateText(), QStringLiteral("Nothing open"));
    QString error;
    auto camera = ParameterSource::openSimulated(&error);
    ASSERT_TRUE(camera) << error.toStdString();
    second->setSource(std::move(camera));
    settle();
    // Each window its own device, side by side.
    EXPECT_EQ(second->windowTitle(), QStringLiteral("simulated camera - Parameter Browser"));
    EXPECT_EQ(window->deviceStateText(), QStringLiteral("Connected: example device"));
    EXPECT_EQ(second->deviceStateText(), QStringLiteral("Connected: simulated camera"));
    second->close();
    settle();
}

TEST_F(BrowserWindowTest, valuesSavedFromTheWindowComeBack)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("values.txt"));
    QString error;
    ASSERT_TRUE(window->saveValues(path, &error)) << error.toStdString();
    FeatureWriter(*window->source())
        .apply({FeatureAssignment{"Width", -1, "64", 0}, FeatureAssignment{"ReverseY", -1, "false", 0}});
    settle();
    EXPECT_EQ(valueShown("Width"), QStringLiteral("64 px"));
    EXPECT_TRUE(window->loadValues(path, &error).empty());
    settle();
    EXPECT_EQ(valueShown("Width"), QStringLiteral("1280 px"));

    const auto failures = window->loadValues(dir.filePath(QStringLiteral("missing.txt")), &error);
    EXPECT_TRUE(failures.empty());
    EXPECT_TRUE(error.contains(QStringLiteral("missing.txt")));
}

// A load waits for the camera to answer its writes while the event loop runs: a source change or a
// close asked for meanwhile (a menu action, a timer) waits for the load's end instead of freeing the
// camera's tree under it.
TEST_F(BrowserWindowTest, aSourceChangeOrCloseDuringALoadWaitsForItsWrites)
{
    QString error;
    auto camera = ParameterSource::openSimulated(&error);
    ASSERT_TRUE(camera) << error.toStdString();
    window->setSource(std::move(camera));
    settle();
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("values.txt"));
    ASSERT_TRUE(window->saveValues(path, &error)) << error.toStdString();
    ASSERT_TRUE(FeatureWriter(*window->source()).apply({FeatureAssignment{"Width", -1, "320", 0}}).empty());
    const ParameterSource* loadedInto = window->source();

    bool changedDuringTheLoad = false;
    QTimer::singleShot(0, window.get(), [&] {
        changedDuringTheLoad = true;
        window->openExampleDevice();
        window->close();
    });
    window->show();
    EXPECT_TRUE(window->loadValues(path, &error).empty()) << error.toStdString();
    EXPECT_TRUE(changedDuringTheLoad) << "the change was asked for while the load waited";
    settle();

    EXPECT_NE(window->source(), loadedInto);
    EXPECT_EQ(window->deviceStateText(), QStringLiteral("Connected: example device"));
    EXPECT_FALSE(window->isVisible()) << "closed once the load was over";
    const QStringList lines = window->logLines();
    const int waiting = lines.indexOf(QRegularExpression(QStringLiteral(
        ".* Waiting for the writes under way to be answered before the next source is shown")));
    const int loaded = lines.indexOf(
        QRegularExpression(QStringLiteral(".* Set every value from ") + QRegularExpression::escape(path)));
    ASSERT_GE(waiting, 0) << lines.join(QLatin1Char('\n')).toStdString();
    EXPECT_GT(loaded, waiting) << lines.join(QLatin1Char('\n')).toStdString();
}

TEST_F(BrowserWindowTest, theDeviceDialogConnectsOnlyOnceADeviceIsNamed)
{
    DeviceDialog dialog(window.get());
    dialog.show();
    QSignalSpy searched(&dialog, &DeviceDialog::searched);
    dialog.discover();
    EXPECT_TRUE(dialog.isSearching()) << "the search runs while the dialog is in use";
    VORN_WAIT_EQ(searched.count(), 1, 10000);
    EXPECT_FALSE(dialog.isSearching());
    auto* connectButton = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    auto* id = dialog.findChild<QLineEdit*>();
    ASSERT_TRUE(connectButton && id);
    id->clear();
    EXPECT_FALSE(connectButton->isEnabled());
    QTest::keyClicks(id, QStringLiteral("192.168.0.10"));
    EXPECT_TRUE(connectButton->isEnabled());
    EXPECT_EQ(dialog.deviceId(), QStringLiteral("192.168.0.10"));
    vorn::test::saveForReview(dialog.grab().toImage(), QStringLiteral("browser-device-dialog"));
}

// The models fix their row heights; the application font must fit them.
TEST_F(BrowserWindowTest, theApplicationFontFitsTheRowsTheModelsAskFor)
{
    const QFont font = QApplication::font();
    const QFontMetrics metrics(font);
    EXPECT_LE(metrics.height(), 14) << "plain rows are 14 pixels high";
    QFont bold = font;
    bold.setWeight(75);
    // Styled categories are 12 pixels high: the letters, descenders included, must fit.
    EXPECT_LE(QFontMetrics(bold).tightBoundingRect(QStringLiteral("Image Format Control gjpqy")).height(),
              12);
    // The command button is 64 by 16 pixels, and shows "Execute" or, while the command runs, "running...".
    CenteredCommandButton button;
    QPushButton* push = button.ui.commandButton;
    push->ensurePolished();
    QStyleOptionButton option;
    option.initFrom(push);
    option.rect = QRect(0, 0, 64, 16);
    const QRect room = push->style()->subElementRect(QStyle::SE_PushButtonContents, &option, push);
    for (const QString& text : {QStringLiteral("Execute"), QStringLiteral("running...")})
        EXPECT_LE(QFontMetrics(push->font()).horizontalAdvance(text), room.width()) << text.toStdString();
    EXPECT_LE(QFontMetrics(push->font()).height(), 16);
    // And the first column is wide enough for the longest name shown.
    choose("visibilityBox", QStringLiteral("All"));
    choose("modelBox", QStringLiteral("Plain"));
    const int needed = window->view()->indentation() * 2 +
                       metrics.horizontalAdvance(QStringLiteral("Counter Event Source (unsupported)"));
    EXPECT_GE(window->view()->header()->sectionSize(0), needed);
}

TEST_F(BrowserWindowTest, eachModelRendersForAPersonToLookAt)
{
    window->resize(BrowserWindow::defaultSize());
    choose("visibilityBox", QStringLiteral("Guru"));
    ASSERT_TRUE(window->selectFeature(QStringLiteral("ExposureTime")));
    for (const char* model : {"Plain", "Styled", "Events"}) {
        choose("modelBox", QLatin1String(model));
        window->view()->expandAll();
        settle();
        const QImage image = window->grab().toImage();
        EXPECT_EQ(image.size(), BrowserWindow::defaultSize());
        vorn::test::saveForReview(image,
                                  QStringLiteral("browser-%1").arg(QString::fromLatin1(model).toLower()));
    }
}

} // namespace
