#include "support/Review.h"

#include <vorn/delegate/CenteredCommandButton.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>
#include <QTranslator>
#include <QTreeView>

#include <gtest/gtest.h>

using namespace vorn::test;

namespace {

// Answers the form's context only, so that tests see which texts go through translation.
class FormTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* sourceText, const char* disambiguation = nullptr,
                      int n = -1) const override
    {
        Q_UNUSED(disambiguation);
        Q_UNUSED(n);
        if (qstrcmp(context, "CenteredCommandButton") != 0)
            return QString();
        if (qstrcmp(sourceText, "Form") == 0)
            return QStringLiteral("Formular");
        if (qstrcmp(sourceText, "Execute") == 0)
            return QStringLiteral("Ausf\u00fchren");
        if (qstrcmp(sourceText, "running...") == 0)
            return QStringLiteral("l\u00e4uft...");
        return QString();
    }
    bool isEmpty() const override { return false; }
};

struct InstalledTranslator
{
    FormTranslator translator;
    InstalledTranslator() { QCoreApplication::installTranslator(&translator); }
    ~InstalledTranslator() { QCoreApplication::removeTranslator(&translator); }
};

QPushButton* button(CenteredCommandButton& w)
{
    return w.ui.commandButton;
}

void activateLayouts(QWidget& w)
{
    w.layout()->activate();
    QCoreApplication::processEvents();
}

// Runs the event loop until done() holds or a second has passed.
template <class F> bool waitUntil(F done)
{
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < 1000)
        QTest::qWait(5);
    return done();
}

} // namespace

// ----- construction -----

TEST(CenteredCommandButtonTest, startsRunningAndDisabledUntilItsOwnerReports)
{
    CenteredCommandButton w;
    EXPECT_EQ(button(w)->text(), QStringLiteral("running..."));
    EXPECT_FALSE(button(w)->isEnabled());
}

TEST(CenteredCommandButtonTest, isCreatedWithoutParentAsItsOwnWindow)
{
    CenteredCommandButton w;
    EXPECT_EQ(w.parentWidget(), nullptr);
    EXPECT_TRUE(w.isWindow());
    EXPECT_EQ(w.windowType(), Qt::Window);
}

TEST(CenteredCommandButtonTest, buttonUsesTheApplicationFontInsteadOfTheFormFont)
{
    const QFont saved = QApplication::font();
    QFont distinct(QStringLiteral("DejaVu Serif"), 13);
    distinct.setWeight(75);
    distinct.setItalic(true);
    QApplication::setFont(distinct);
    CenteredCommandButton w;
    const QFont f = button(w)->font();
    QApplication::setFont(saved);

    EXPECT_EQ(f.family(), distinct.family());
    EXPECT_EQ(f.pointSize(), 13);
    EXPECT_EQ(f.weight(), 75);
    EXPECT_TRUE(f.italic());
}

TEST(CenteredCommandButtonTest, buttonHasAFixedHeightOfSixteen)
{
    CenteredCommandButton w;
    EXPECT_EQ(button(w)->minimumHeight(), 16);
    EXPECT_EQ(button(w)->maximumHeight(), 16);
    EXPECT_EQ(button(w)->minimumSize(), QSize(64, 16));
    EXPECT_EQ(button(w)->maximumSize(), QSize(64, 16));
}

TEST(CenteredCommandButtonTest, formTextsAreSetAtConstruction)
{
    CenteredCommandButton w;
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Form"));
    EXPECT_EQ(w.objectName(), QStringLiteral("CenteredCommandButton"));
}

// ----- the state table -----

struct StateRow
{
    bool active;
    bool enabled;
    const char* text;
    bool buttonEnabled;
};

class CenteredCommandButtonStateTest : public ::testing::TestWithParam<StateRow>
{};

TEST_P(CenteredCommandButtonStateTest, showsTheTextAndEnabledStateOfTheTable)
{
    const StateRow row = GetParam();
    // Both orders of the two calls end in the same state.
    {
        CenteredCommandButton w;
        w.setEnableState(row.enabled);
        w.setActivationState(row.active);
        EXPECT_EQ(button(w)->text(), QString::fromLatin1(row.text));
        EXPECT_EQ(button(w)->isEnabled(), row.buttonEnabled);
    }
    {
        CenteredCommandButton w;
        w.setActivationState(row.active);
        w.setEnableState(row.enabled);
        EXPECT_EQ(button(w)->text(), QString::fromLatin1(row.text));
        EXPECT_EQ(button(w)->isEnabled(), row.buttonEnabled);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, CenteredCommandButtonStateTest,
                         ::testing::Values(StateRow{true, true, "running...", false},
                                           StateRow{true, false, "running...", false},
                                           StateRow{false, true, "Execute", true},
                                           StateRow{false, false, "Execute", false}),
                         [](const ::testing::TestParamInfo<StateRow>& info) {
                             return std::string(info.param.active ? "active" : "idle") +
                                    (info.param.enabled ? "Enabled" : "Disabled");
                         });

// ----- edge cases -----

TEST(CenteredCommandButtonTest, enablingWhileActiveKeepsTheButtonDisabledUntilTheCommandStops)
{
    CenteredCommandButton w;
    w.setActivationState(true);
    w.setEnableState(true);
    EXPECT_FALSE(button(w)->isEnabled());
    EXPECT_EQ(button(w)->text(), QStringLiteral("running..."));

    w.setActivationState(false);
    EXPECT_TRUE(button(w)->isEnabled());
    EXPECT_EQ(button(w)->text(), QStringLiteral("Execute"));
}

TEST(CenteredCommandButtonTest, stoppingADisabledCommandShowsExecuteButStaysDisabled)
{
    CenteredCommandButton w;
    w.setEnableState(false);
    w.setActivationState(false);
    EXPECT_EQ(button(w)->text(), QStringLiteral("Execute"));
    EXPECT_FALSE(button(w)->isEnabled());
}

TEST(CenteredCommandButtonTest, startingAgainDisablesAnEnabledButton)
{
    CenteredCommandButton w;
    w.setActivationState(false);
    ASSERT_TRUE(button(w)->isEnabled());
    w.setActivationState(true);
    EXPECT_FALSE(button(w)->isEnabled());
    EXPECT_EQ(button(w)->text(), QStringLiteral("running..."));
}

TEST(CenteredCommandButtonTest, enableStateGivenWhileRunningAppliesWhenTheCommandStops)
{
    CenteredCommandButton w;
    w.setActivationState(false);
    w.setActivationState(true);
    w.setEnableState(false);
    w.setEnableState(true);
    w.setEnableState(false);
    w.setActivationState(false);
    EXPECT_FALSE(button(w)->isEnabled());
    w.setActivationState(true);
    w.setEnableState(true);
    w.setActivationState(false);
    EXPECT_TRUE(button(w)->isEnabled());
}

TEST(CenteredCommandButtonTest, buttonKeepsItsSizeAndPlaceWhileTheWidgetWidens)
{
    CenteredCommandButton w;
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    for (int width : {257, 300, 641, 1200, 80}) {
        w.resize(width, 18);
        activateLayouts(w);
        EXPECT_EQ(w.width(), width);
        // Inside the one-pixel top and left margins; the layouts carry no alignment, so the button
        // stays at the left however much room there is.
        EXPECT_EQ(button(w)->geometry(), QRect(1, 1, 64, 16)) << width;
    }
}

TEST(CenteredCommandButtonTest, widgetFollowsTheCellWidthOfAViewWhileTheButtonKeepsItsSize)
{
    // The command cell sits between two others, so no column stretches to fill the view.
    QStandardItemModel model(1, 3);
    QTreeView view;
    view.setModel(&model);
    view.resize(900, 200);
    auto* w = new CenteredCommandButton;
    view.setIndexWidget(model.index(0, 1), w);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    EXPECT_EQ(w->parentWidget(), view.viewport());
    EXPECT_FALSE(w->isWindow());

    for (int cellWidth : {300, 120, 450}) {
        view.setColumnWidth(1, cellWidth);
        EXPECT_TRUE(waitUntil([&] { return w->width() == cellWidth; })) << cellWidth;
        activateLayouts(*w);
        EXPECT_EQ(w->width(), view.visualRect(model.index(0, 1)).width()) << cellWidth;
        EXPECT_EQ(w->width(), cellWidth) << cellWidth;
        EXPECT_EQ(button(*w)->size(), QSize(64, 16)) << cellWidth;
    }
}

// ----- clicks -----

TEST(CenteredCommandButtonTest, clickOnTheEnabledButtonEmitsClicked)
{
    CenteredCommandButton w;
    w.setActivationState(false);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    QSignalSpy clicked(button(w), &QPushButton::clicked);
    QTest::mouseClick(button(w), Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
    // The widget itself does not react: its owner decides what a click means.
    EXPECT_EQ(button(w)->text(), QStringLiteral("Execute"));
    EXPECT_TRUE(button(w)->isEnabled());
}

TEST(CenteredCommandButtonTest, clickWhileRunningOrDisabledEmitsNothing)
{
    CenteredCommandButton w;
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    QSignalSpy clicked(button(w), &QPushButton::clicked);
    QTest::mouseClick(button(w), Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 0);

    w.setActivationState(false);
    w.setEnableState(false);
    QTest::mouseClick(button(w), Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 0);

    w.setEnableState(true);
    QTest::mouseClick(button(w), Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
}

// ----- translation -----

TEST(CenteredCommandButtonTest, retranslateUsesTheFormContextButTheStateTextsStayPlain)
{
    InstalledTranslator german;
    CenteredCommandButton w;
    // The form's own texts are translated; the constructor's state text is not.
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Formular"));
    EXPECT_EQ(button(w)->text(), QStringLiteral("running..."));

    w.setActivationState(false);
    EXPECT_EQ(button(w)->text(), QStringLiteral("Execute"));

    w.ui.retranslateUi(&w);
    EXPECT_EQ(button(w)->text(), QStringLiteral("Ausf\u00fchren"));
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Formular"));
}

// ----- the form -----

TEST(UiCenteredCommandButtonTest, namesAnUnnamedFormAndKeepsAGivenName)
{
    QWidget unnamed;
    Ui_CenteredCommandButton a;
    a.setupUi(&unnamed);
    EXPECT_EQ(unnamed.objectName(), QStringLiteral("CenteredCommandButton"));

    QWidget named;
    named.setObjectName(QStringLiteral("valueCell"));
    Ui_CenteredCommandButton b;
    b.setupUi(&named);
    EXPECT_EQ(named.objectName(), QStringLiteral("valueCell"));
}

TEST(UiCenteredCommandButtonTest, setsTheFormSizeAndSizePolicy)
{
    QWidget form;
    QSizePolicy heightForWidth = form.sizePolicy();
    heightForWidth.setHeightForWidth(true);
    form.setSizePolicy(heightForWidth);
    Ui_CenteredCommandButton ui;
    ui.setupUi(&form);
    EXPECT_EQ(form.size(), QSize(257, 18));
    EXPECT_EQ(form.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    EXPECT_EQ(form.sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    EXPECT_EQ(form.sizePolicy().horizontalStretch(), 0);
    EXPECT_EQ(form.sizePolicy().verticalStretch(), 0);
    // Height-for-width is carried over from the form's earlier policy.
    EXPECT_TRUE(form.sizePolicy().hasHeightForWidth());

    QWidget plain;
    Ui_CenteredCommandButton plainUi;
    plainUi.setupUi(&plain);
    EXPECT_FALSE(plain.sizePolicy().hasHeightForWidth());
}

TEST(UiCenteredCommandButtonTest, buildsTheObjectTreeInOrder)
{
    QWidget form;
    Ui_CenteredCommandButton ui;
    ui.setupUi(&form);

    // The outer layout first, then the button; the inner layout belongs to the outer one.
    const QObjectList children = form.children();
    ASSERT_EQ(children.size(), 2);
    EXPECT_EQ(children.at(0), ui.verticalLayout_2);
    EXPECT_EQ(children.at(1), ui.commandButton);
    EXPECT_EQ(form.layout(), ui.verticalLayout_2);
    EXPECT_EQ(ui.verticalLayout->parent(), ui.verticalLayout_2);
    EXPECT_EQ(ui.commandButton->parentWidget(), &form);

    EXPECT_EQ(ui.verticalLayout_2->objectName(), QStringLiteral("verticalLayout_2"));
    EXPECT_EQ(ui.verticalLayout->objectName(), QStringLiteral("verticalLayout"));
    EXPECT_EQ(ui.commandButton->objectName(), QStringLiteral("commandButton"));
    EXPECT_EQ(form.findChild<QPushButton*>(QStringLiteral("commandButton")), ui.commandButton);
}

TEST(UiCenteredCommandButtonTest, outerLayoutHoldsSpacerInnerLayoutAndSpacer)
{
    QWidget form;
    Ui_CenteredCommandButton ui;
    ui.setupUi(&form);

    QVBoxLayout* outer = ui.verticalLayout_2;
    EXPECT_EQ(outer->spacing(), 0);
    EXPECT_EQ(outer->contentsMargins(), QMargins(1, 1, 0, 0));
    ASSERT_EQ(outer->count(), 3);
    EXPECT_EQ(outer->itemAt(0), ui.horizontalSpacer);
    EXPECT_EQ(outer->itemAt(1), ui.verticalLayout);
    EXPECT_EQ(outer->itemAt(2), ui.verticalSpacer);

    EXPECT_EQ(ui.horizontalSpacer->sizeHint(), QSize(164, 0));
    EXPECT_EQ(ui.horizontalSpacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    EXPECT_EQ(ui.horizontalSpacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    EXPECT_EQ(ui.verticalSpacer->sizeHint(), QSize(0, 0));
    EXPECT_EQ(ui.verticalSpacer->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
    EXPECT_EQ(ui.verticalSpacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);

    QVBoxLayout* inner = ui.verticalLayout;
    EXPECT_EQ(inner->spacing(), 0);
    ASSERT_EQ(inner->count(), 1);
    EXPECT_EQ(inner->itemAt(0)->widget(), ui.commandButton);
}

TEST(UiCenteredCommandButtonTest, configuresTheButton)
{
    QWidget form;
    Ui_CenteredCommandButton ui;
    ui.setupUi(&form);
    QPushButton* b = ui.commandButton;
    EXPECT_EQ(b->minimumSize(), QSize(64, 16));
    EXPECT_EQ(b->maximumSize(), QSize(64, 16));
    EXPECT_EQ(b->font().weight(), 50);
    EXPECT_FALSE(b->font().bold());
    EXPECT_TRUE(b->autoFillBackground());
    EXPECT_FALSE(b->isFlat());
    EXPECT_EQ(b->text(), QStringLiteral("Execute"));
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Form"));
    EXPECT_TRUE(b->isEnabled());
}

// ----- looks -----

TEST(CenteredCommandButtonTest, rendersBothStatesForReview)
{
    // The 64 x 16 button is sized for the 8 point fonts of desktop sessions; the offscreen platform
    // of the tests defaults to 12 points, which would clip the texts.
    const QFont saved = QApplication::font();
    QFont desktop = saved;
    desktop.setPointSize(8);
    QApplication::setFont(desktop);
    struct RestoreFont
    {
        QFont font;
        ~RestoreFont() { QApplication::setFont(font); }
    } restore{saved};

    CenteredCommandButton running;
    CenteredCommandButton idle;
    idle.setActivationState(false);
    CenteredCommandButton idleDisabled;
    idleDisabled.setEnableState(false);
    idleDisabled.setActivationState(false);

    QImage sheet(257, 3 * 18, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    {
        QPainter painter(&sheet);
        int y = 0;
        for (CenteredCommandButton* w : {&running, &idle, &idleDisabled}) {
            w->resize(257, 18);
            activateLayouts(*w);
            const QImage grab = w->grab().toImage();
            EXPECT_EQ(grab.size() / grab.devicePixelRatio(), QSize(257, 18));
            painter.drawImage(QPoint(0, y), grab);
            y += 18;
        }
    }
    // The grabs differ where the button is: the texts and enabled looks are not the same.
    const QRect area = idle.ui.commandButton->geometry();
    EXPECT_NE(sheet.copy(area), sheet.copy(area.translated(0, 18)));
    EXPECT_NE(sheet.copy(area.translated(0, 18)), sheet.copy(area.translated(0, 36)));
    saveForReview(sheet.scaled(sheet.size() * 3), QStringLiteral("centered-command-button"));
}
