// The editor the item delegate opens for each parameter kind, and how it fills it.

#include "ItemDelegateTesting.h"

#include <vorn/delegate/Qt4Int64SpinBox.h>
#include <vorn/delegate/Qt4UInt64SpinBox.h>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <QTreeView>

#include <limits>

using namespace vorn::core;
using namespace vorn::core::models;
using namespace vorn::test;

namespace {

using EditorTest = DelegateFixture;

constexpr quint64 kMaxUInt = std::numeric_limits<quint64>::max();

} // namespace

TEST_F(EditorTest, integerOpensASignedSpinBoxWithRangeStepValueAndAllTextSelected)
{
    tree->integer(nullptr, "Gain").value(-12).range(-40, 100).step(2);
    show();

    auto* box = qobject_cast<Qt4Int64SpinBox*>(open("Gain"));
    ASSERT_TRUE(box);
    EXPECT_EQ(box->minimum(), -40);
    EXPECT_EQ(box->maximum(), 100);
    EXPECT_EQ(box->singleStep(), 2);
    EXPECT_EQ(box->value(), -12);
    QLineEdit* edit = lineEditOf(box);
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->text(), QStringLiteral("-12"));
    EXPECT_EQ(edit->selectedText(), QStringLiteral("-12"));
    // The spin box's own bold font stays.
    EXPECT_EQ(edit->font().weight(), 75);
    EXPECT_TRUE(box->hasFocus() || edit->hasFocus());
}

TEST_F(EditorTest, integerWithoutIncrementKeepsTheSpinBoxStep)
{
    tree->integer(nullptr, "Offset").value(3).range(0, 10).step(0);
    show();

    auto* box = qobject_cast<Qt4Int64SpinBox*>(open("Offset"));
    ASSERT_TRUE(box);
    EXPECT_EQ(box->singleStep(), 1);
    EXPECT_EQ(box->value(), 3);
}

TEST_F(EditorTest, integerShownAsCheckBoxGetsNoEditorEveryOtherRepresentationASpinBox)
{
    const ParameterIntegerRepresentation representations[] = {
        pirLinear, pirLogarithmic, pirPureNumber, pirBoolean, pirHexNumber, pirIPV4Address, pirMACAddress};
    for (ParameterIntegerRepresentation r : representations)
        tree->integer(nullptr, "Int" + std::to_string(int(r))).value(1).range(0, 1).representation(r);
    show();

    for (ParameterIntegerRepresentation r : representations) {
        const std::string name = "Int" + std::to_string(int(r));
        const QModelIndex index = value(name.c_str());
        ASSERT_TRUE(index.isValid());
        std::unique_ptr<QWidget> editor(
            delegate->createEditor(view->viewport(), QStyleOptionViewItem(), index));
        if (r == pirBoolean)
            EXPECT_FALSE(editor) << name;
        else
            EXPECT_TRUE(qobject_cast<Qt4Int64SpinBox*>(editor.get())) << name;
    }
    // Through the view as well: the check box row opens nothing.
    EXPECT_FALSE(open("Int3"));
    EXPECT_TRUE(qobject_cast<Qt4Int64SpinBox*>(open("Int4")));
}

TEST_F(EditorTest, uint64OpensAnUnsignedSpinBoxWhateverItsRepresentation)
{
    tree->uint64(nullptr, "Big").value(kMaxUInt - 1).range(0, kMaxUInt).step(2);
    tree->uint64(nullptr, "Flag").value(1).range(0, 1).representation(pirBoolean);
    show();

    std::unique_ptr<QWidget> flagEditor(
        delegate->createEditor(view->viewport(), QStyleOptionViewItem(), value("Flag")));
    EXPECT_TRUE(qobject_cast<Qt4UInt64SpinBox*>(flagEditor.get()));

    auto* box = qobject_cast<Qt4UInt64SpinBox*>(open("Big"));
    ASSERT_TRUE(box);
    EXPECT_EQ(box->minimum(), 0u);
    EXPECT_EQ(box->maximum(), kMaxUInt);
    EXPECT_EQ(box->singleStep(), 2u);
    EXPECT_EQ(box->value(), kMaxUInt - 1);
    EXPECT_EQ(lineEditOf(box)->text(), QStringLiteral("18446744073709551614"));
    EXPECT_EQ(lineEditOf(box)->selectedText(), QStringLiteral("18446744073709551614"));
}

TEST_F(EditorTest, enumerationOffersTheAvailableEntriesInBoldWithTheirValues)
{
    tree->enumeration(nullptr, "Mode")
        .entry("Off", 0, "Switched off")
        .entry("Broken", 7, "Not implemented", peamNotImplemented)
        .entry("Once", 1, "", peamReadWrite)
        .entry("Gone", 8, "Not available", peamNotAvailable)
        .entry("Continuous", 2, "Always")
        .value("Continuous");
    show();

    auto* combo = qobject_cast<QComboBox*>(open("Mode"));
    ASSERT_TRUE(combo);
    ASSERT_EQ(combo->count(), 3);
    EXPECT_EQ(combo->itemText(0), QStringLiteral("Switched off"));
    EXPECT_EQ(combo->itemText(1), QStringLiteral("Once"));
    EXPECT_EQ(combo->itemText(2), QStringLiteral("Always"));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(combo->itemData(i, Qt::UserRole).userType(), QMetaType::LongLong) << i;
        EXPECT_TRUE(combo->itemIcon(i).isNull()) << i;
    }
    EXPECT_EQ(combo->itemData(0, Qt::UserRole), QVariant(qlonglong(0)));
    EXPECT_EQ(combo->itemData(1, Qt::UserRole), QVariant(qlonglong(1)));
    EXPECT_EQ(combo->itemData(2, Qt::UserRole), QVariant(qlonglong(2)));
    // The current entry's position counts the offered entries only.
    EXPECT_EQ(combo->currentIndex(), 2);
    EXPECT_EQ(combo->font().weight(), 75);
    EXPECT_EQ(combo->font().family(), QApplication::font().family());
}

TEST_F(EditorTest, enumerationWhoseCurrentEntryIsNotOfferedKeepsTheComboBoxChoice)
{
    for (ParameterEntryAccessMode skipped : {peamNotImplemented, peamNotAvailable}) {
        const std::string name = "Mode" + std::to_string(int(skipped));
        tree->enumeration(nullptr, name)
            .entry("Off", 0)
            .entry("Hidden", 5, "", skipped)
            .entry("On", 1)
            .value("Hidden");
    }
    show();

    for (const char* name : {"Mode1", "Mode2"}) {
        auto* combo = qobject_cast<QComboBox*>(open(name));
        ASSERT_TRUE(combo) << name;
        EXPECT_EQ(combo->count(), 2) << name;
        // Qt makes the first item current when it is added.
        EXPECT_EQ(combo->currentIndex(), 0) << name;
        EXPECT_EQ(combo->currentText(), QStringLiteral("Off")) << name;
        pressEscape(combo);
    }
}

TEST_F(EditorTest, enumerationWithTheCurrentNameTwiceSelectsTheLaterEntry)
{
    tree->enumeration(nullptr, "Mode").entry("Same", 1, "First").entry("Other", 2).entry("Same", 3, "Second");
    static_cast<MvParametersEnumerationNode&>(*tree->find("Mode")).setNodeValue("Same");
    show();

    auto* combo = qobject_cast<QComboBox*>(open("Mode"));
    ASSERT_TRUE(combo);
    EXPECT_EQ(combo->currentIndex(), 2);
    EXPECT_EQ(combo->currentText(), QStringLiteral("Second"));
}

TEST_F(EditorTest, stringOpensALineEditWithMaxLengthFixedBoldFontAndUtf8Text)
{
    tree->string(nullptr, "Name")
        .value("Gr\xc3\xbc\xc3\x9f"
               "e")
        .maxLength(12);
    show();

    auto* edit = qobject_cast<QLineEdit*>(open("Name"));
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->maxLength(), 12);
    EXPECT_EQ(edit->text(), QStringLiteral("Gr\u00fc\u00dfe"));
    EXPECT_EQ(edit->selectedText(), edit->text());
    EXPECT_EQ(edit->font().family(), QStringLiteral("Consolas"));
    EXPECT_EQ(edit->font().weight(), 75);
    EXPECT_EQ(edit->font().pointSizeF(), QApplication::font().pointSizeF());
}

TEST_F(EditorTest, floatEntersRoundedToTwoDecimalsAndShowsFifteen)
{
    tree->floating(nullptr, "Exposure").value(0.001).range(0.0, 1.0);
    tree->floating(nullptr, "Ratio").value(2.345678).range(-10.0, 10.0);
    show();

    auto* box = qobject_cast<QDoubleSpinBox*>(open("Exposure"));
    ASSERT_TRUE(box);
    EXPECT_EQ(box->decimals(), 15);
    EXPECT_EQ(box->value(), 0.0);
    EXPECT_EQ(box->minimum(), 0.0);
    EXPECT_EQ(box->maximum(), 1.0);
    EXPECT_EQ(lineEditOf(box)->text(), QStringLiteral("0.000000000000000"));
    EXPECT_EQ(lineEditOf(box)->selectedText(), QStringLiteral("0.000000000000000"));
    EXPECT_EQ(box->font().weight(), 75);
    pressEscape(box);

    auto* ratio = qobject_cast<QDoubleSpinBox*>(open("Ratio"));
    ASSERT_TRUE(ratio);
    EXPECT_EQ(lineEditOf(ratio)->text(), QStringLiteral("2.350000000000000"));
}

TEST_F(EditorTest, otherKindsGetNoEditor)
{
    auto folder = tree->category(nullptr, "Folder").node();
    tree->boolean(folder, "Flag").value(true);
    tree->command(folder, "Start");
    tree->entry(folder, "Plain");
    show();

    for (const char* name : {"Folder", "Flag", "Start", "Plain"}) {
        for (int column : {0, 1}) {
            const QModelIndex index = findRow(model.get(), QString::fromLatin1(name), column);
            ASSERT_TRUE(index.isValid()) << name;
            EXPECT_FALSE(delegate->createEditor(view->viewport(), QStyleOptionViewItem(), index))
                << name << " " << column;
        }
    }
}

TEST_F(EditorTest, fillingTwiceKeepsWhatTheUserTyped)
{
    tree->integer(nullptr, "Gain").value(3).range(0, 100);
    show();
    const QModelIndex index = value("Gain");

    QWidget* editor = open("Gain");
    ASSERT_TRUE(editor);
    type(editor, QStringLiteral("42"));
    delegate->setEditorData(editor, index);
    EXPECT_EQ(lineEditOf(editor)->text(), QStringLiteral("42"));
    EXPECT_EQ(static_cast<Qt4Int64SpinBox*>(editor)->value(), 42);
}

TEST_F(EditorTest, aRefreshWhileTheEditorIsOpenKeepsTheTypedText)
{
    auto gain = tree->integer(nullptr, "Gain").value(3).range(0, 100).node();
    show();
    const QModelIndex index = value("Gain");

    QWidget* editor = open("Gain");
    ASSERT_TRUE(editor);
    type(editor, QStringLiteral("7"));

    // The whole tree reported changed, as after a device reconnect.
    tree->notifyAllChanged();
    QCoreApplication::processEvents();
    // The value cell alone reported changed: the view fills its open editor again.
    emit model->dataChanged(index, index);
    QCoreApplication::processEvents();
    // The value really changed behind the editor's back.
    ASSERT_TRUE(writeThroughCallback(gain, boost::any(9LL)));
    QCoreApplication::processEvents();
    ASSERT_EQ(shown("Gain"), QStringLiteral("9"));

    EXPECT_EQ(view->indexWidget(index), editor);
    EXPECT_EQ(lineEditOf(editor)->text(), QStringLiteral("7"));

    tree->clearCalls();
    pressEnter(editor);
    EXPECT_EQ(calls(), QStringList{QStringLiteral("Gain:long long=7")});
    EXPECT_EQ(shown("Gain"), QStringLiteral("7"));
}

TEST_F(EditorTest, anEditorReopenedAfterTheViewDroppedItIsFilledAgain)
{
    tree->integer(nullptr, "Gain").value(5).range(0, 100);
    show();

    // A reset drops the open editor without closing it through the delegate.
    ASSERT_TRUE(open("Gain"));
    view->reset();
    settle();
    ASSERT_FALSE(view->indexWidget(value("Gain")));

    for (int i = 0; i < 5; ++i) {
        auto* box = qobject_cast<Qt4Int64SpinBox*>(open("Gain"));
        ASSERT_TRUE(box);
        EXPECT_EQ(box->value(), 5);
        EXPECT_EQ(box->maximum(), 100);
        view->reset();
        settle();
    }
}

namespace {

// A foreign model whose rows answer Qt::UserRole with plain text.
struct ForeignModel
{
    QStandardItemModel model{1, 2};
    ForeignModel()
    {
        model.setItem(0, 0, new QStandardItem(QStringLiteral("Foreign")));
        model.setItem(0, 1, new QStandardItem(QStringLiteral("12")));
        model.setData(model.index(0, 1), QStringLiteral("not a row"), Qt::UserRole);
    }
};

} // namespace

TEST(ItemDelegateForeignIndexTest, anIndexWithoutARowGetsNoEditorAndNoCommit)
{
    ForeignModel foreign;
    auto delegate = Qt4ParametersItemDelegate::create();
    QTreeView view;
    view.setItemDelegate(delegate.get());
    view.setModel(&foreign.model);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));

    for (int column : {0, 1}) {
        const QModelIndex index = foreign.model.index(0, column);
        EXPECT_FALSE(delegate->createEditor(view.viewport(), QStyleOptionViewItem(), index));
        view.edit(index);
        EXPECT_FALSE(view.indexWidget(index));

        QLineEdit stray;
        stray.setText(QStringLiteral("99"));
        delegate->setEditorData(&stray, index);
        EXPECT_EQ(stray.text(), QStringLiteral("99"));
        delegate->setModelData(&stray, &foreign.model, index);
        EXPECT_EQ(foreign.model.data(foreign.model.index(0, 1)).toString(), QStringLiteral("12"));
    }
}
