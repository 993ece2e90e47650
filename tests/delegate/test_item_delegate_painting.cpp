// The item delegate's grid and its size hints, in direct calls and in a real view.

#include "ItemDelegateTesting.h"

#include "support/Review.h"

#include <vorn/delegate/Qt4Int64SpinBox.h>

#include <QHeaderView>
#include <QPainter>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <QStyledItemDelegate>
#include <QTreeView>

using namespace vorn::core;
using namespace vorn::core::models;
using namespace vorn::test;

namespace {

const QRgb kGrid = qRgb(192, 192, 192);

QStyleOptionViewItem cellOption(const QRect& rect)
{
    QStyleOptionViewItem option;
    option.rect = rect;
    option.state = QStyle::State_Enabled;
    option.palette = QApplication::palette();
    option.font = QApplication::font();
    option.fontMetrics = QFontMetrics(option.font);
    return option;
}

// Paints one cell at cell into a white image.
QImage paintCell(const Qt4ParametersItemDelegate& delegate, const QModelIndex& index, const QRect& cell)
{
    QImage image(cell.right() + 20, cell.bottom() + 20, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    delegate.paint(&painter, cellOption(cell), index);
    return image;
}

// The pixels of the outline a one-pixel pen draws around rect, and how many of them are grid grey.
struct Outline
{
    int pixels = 0;
    int grey = 0;
};

Outline outlineOf(const QImage& image, const QRect& rect)
{
    Outline out;
    auto look = [&](int x, int y) {
        ++out.pixels;
        if (image.pixel(x, y) == kGrid)
            ++out.grey;
    };
    const int right = rect.x() + rect.width();
    const int bottom = rect.y() + rect.height();
    for (int x = rect.x(); x <= right; ++x) {
        look(x, rect.y());
        look(x, bottom);
    }
    for (int y = rect.y() + 1; y < bottom; ++y) {
        look(rect.x(), y);
        look(right, y);
    }
    return out;
}

// A plain Qt model whose rows carry our probe rows in Qt::UserRole.
struct ProbeModel
{
    boost::shared_ptr<InMemoryParameterTree> tree = InMemoryParameterTree::create();
    QStandardItemModel model{0, 2};
    std::vector<boost::shared_ptr<GridProbeRow>> rows;

    boost::shared_ptr<GridProbeRow> add(const char* name, bool column0, bool column1)
    {
        auto node = tree->integer(nullptr, name).value(1).range(0, 9).node();
        auto row = GridProbeRow::create(tree->model(), node, column0, column1);
        rows.push_back(row);
        QList<QStandardItem*> items{new QStandardItem(QString::fromLatin1(name)),
                                    new QStandardItem(QStringLiteral("1"))};
        for (QStandardItem* item : items)
            item->setData(QVariant::fromValue(Qt4AbstractModelNodePtr(row)), Qt::UserRole);
        model.appendRow(items);
        return row;
    }
};

const QRect kCell(10, 10, 100, 20);

} // namespace

TEST(ItemDelegateGridTest, isOffByDefaultAndThenAsksNoRow)
{
    ProbeModel probes;
    auto row = probes.add("Gain", true, true);
    auto delegate = Qt4ParametersItemDelegate::create();

    for (int column : {0, 1}) {
        const Outline outline = outlineOf(paintCell(*delegate, probes.model.index(0, column), kCell), kCell);
        EXPECT_EQ(outline.grey, 0) << column;
    }
    EXPECT_EQ(row->asked, 0);
}

TEST(ItemDelegateGridTest, drawsAGreyRectangleWhereTheRowAsksForIt)
{
    ProbeModel probes;
    auto row = probes.add("Gain", true, false);
    auto delegate = Qt4ParametersItemDelegate::create();
    delegate->enableGrid(true);

    const Outline name = outlineOf(paintCell(*delegate, probes.model.index(0, 0), kCell), kCell);
    EXPECT_EQ(name.grey, name.pixels);
    const Outline value = outlineOf(paintCell(*delegate, probes.model.index(0, 1), kCell), kCell);
    EXPECT_EQ(value.grey, 0);
    EXPECT_EQ(row->asked, 2);

    // Switched off again, nothing is drawn.
    delegate->enableGrid(false);
    EXPECT_EQ(outlineOf(paintCell(*delegate, probes.model.index(0, 0), kCell), kCell).grey, 0);
}

TEST(ItemDelegateGridTest, theItemIsPaintedOverTheGrid)
{
    ProbeModel probes;
    probes.add("Gain", true, true);
    probes.model.setData(probes.model.index(0, 1), QBrush(Qt::blue), Qt::BackgroundRole);
    auto delegate = Qt4ParametersItemDelegate::create();
    delegate->enableGrid(true);

    const QImage image = paintCell(*delegate, probes.model.index(0, 1), kCell);
    // The opaque background covers the top and left lines inside the cell; the right and bottom
    // lines lie just outside it and stay.
    EXPECT_EQ(image.pixel(kCell.x(), kCell.y() + 5), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(kCell.x() + kCell.width(), kCell.y() + 5), kGrid);
    EXPECT_EQ(image.pixel(kCell.x() + 5, kCell.y() + kCell.height()), kGrid);
}

TEST(ItemDelegateGridTest, aForeignIndexIsPaintedAsTheBaseDelegatePaintsIt)
{
    QStandardItemModel foreign(1, 2);
    foreign.setData(foreign.index(0, 1), QStringLiteral("12"));
    foreign.setData(foreign.index(0, 1), QStringLiteral("not a row"), Qt::UserRole);
    auto delegate = Qt4ParametersItemDelegate::create();
    delegate->enableGrid(true);
    QStyledItemDelegate base;

    for (int column : {0, 1}) {
        const QModelIndex index = foreign.index(0, column);
        const QImage painted = paintCell(*delegate, index, kCell);
        QImage expected(painted.size(), painted.format());
        expected.fill(Qt::white);
        {
            QPainter painter(&expected);
            base.paint(&painter, cellOption(kCell), index);
        }
        EXPECT_EQ(painted, expected) << column;
        EXPECT_EQ(delegate->sizeHint(cellOption(kCell), index), base.sizeHint(cellOption(kCell), index));
    }
}

namespace {

using GridViewTest = DelegateFixture;

// Whether the pixel in the middle of the top edge of rect, in the view's viewport, is grid grey.
bool greyTopEdge(const QImage& viewport, const QRect& rect)
{
    return viewport.pixel(rect.center().x(), rect.top()) == kGrid;
}

bool greyLeftEdge(const QImage& viewport, const QRect& rect)
{
    return viewport.pixel(rect.left(), rect.center().y()) == kGrid;
}

} // namespace

TEST_F(GridViewTest, theStyledModelsValueRowsGetTheGridAndItsCategoriesNone)
{
    auto folder = tree->category(nullptr, "Acquisition").node();
    tree->integer(folder, "Width").value(640).range(16, 4096).step(16);
    tree->integer(folder, "Height").value(480).range(16, 4096).step(16);
    tree->floating(folder, "Exposure").value(10.0).range(0.0, 100.0);
    show(Family::Styled);
    view->setCurrentIndex(QModelIndex());

    const QImage without = view->viewport()->grab().toImage();
    delegate->enableGrid(true);
    view->viewport()->update();
    const QImage with = view->viewport()->grab().toImage();

    for (const char* name : {"Height", "Exposure"}) {
        for (int column : {0, 1}) {
            const QRect rect = view->visualRect(findRow(model.get(), QString::fromLatin1(name), column));
            ASSERT_TRUE(rect.isValid()) << name;
            EXPECT_TRUE(greyTopEdge(with, rect)) << name << " " << column;
            EXPECT_TRUE(greyLeftEdge(with, rect)) << name << " " << column;
            EXPECT_FALSE(greyTopEdge(without, rect)) << name << " " << column;
            EXPECT_FALSE(greyLeftEdge(without, rect)) << name << " " << column;
        }
    }
    const QRect category = view->visualRect(feature("Acquisition"));
    EXPECT_FALSE(greyLeftEdge(with, category));
}

namespace {

using SizeHintTest = DelegateFixture;

} // namespace

TEST_F(SizeHintTest, aRowInEditHasTheEditorsHeightInBothCellsUntilItsEditorCloses)
{
    tree->integer(nullptr, "Gain").value(3).range(0, 100);
    tree->integer(nullptr, "Offset").value(4).range(0, 100);
    show();
    QStyledItemDelegate base;
    const QStyleOptionViewItem option = cellOption(QRect(0, 0, 100, 14));
    const QModelIndex gain = value("Gain");
    const QModelIndex gainName = feature("Gain");
    const QModelIndex offset = value("Offset");

    for (const QModelIndex& index : {gain, gainName, offset})
        EXPECT_EQ(delegate->sizeHint(option, index), base.sizeHint(option, index));
    EXPECT_EQ(delegate->sizeHint(option, gain), QSize(-1, 14));
    const int normalHeight = view->visualRect(gain).height();

    QSignalSpy changed(delegate.get(), &QAbstractItemDelegate::sizeHintChanged);
    QWidget* editor = open("Gain");
    ASSERT_TRUE(editor);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.at(0).at(0).value<QModelIndex>(), gain);

    EXPECT_EQ(delegate->sizeHint(option, gain), QSize(-1, 20));
    EXPECT_EQ(delegate->sizeHint(option, gainName), QSize(-1, 20));
    EXPECT_EQ(delegate->sizeHint(option, offset), base.sizeHint(option, offset));
    QCoreApplication::processEvents();
    EXPECT_EQ(view->visualRect(gain).height(), 20);
    EXPECT_EQ(view->visualRect(gainName).height(), 20);
    EXPECT_EQ(view->visualRect(offset).height(), normalHeight);

    // Closed without a commit, the row returns to its own height.
    changed.clear();
    pressEscape(editor);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.at(0).at(0).value<QModelIndex>(), gain);
    for (const QModelIndex& index : {gain, gainName, offset})
        EXPECT_EQ(delegate->sizeHint(option, index), base.sizeHint(option, index));
    EXPECT_EQ(view->visualRect(gain).height(), normalHeight);
}

TEST_F(SizeHintTest, aCommitAlsoReturnsTheRowToItsHeight)
{
    tree->integer(nullptr, "Gain").value(3).range(0, 100);
    show();
    const QStyleOptionViewItem option = cellOption(QRect(0, 0, 100, 14));
    const QModelIndex gain = value("Gain");
    QSignalSpy changed(delegate.get(), &QAbstractItemDelegate::sizeHintChanged);

    edit("Gain", QStringLiteral("5"));

    ASSERT_GE(changed.count(), 2);
    EXPECT_EQ(changed.at(1).at(0).value<QModelIndex>(), gain);
    EXPECT_EQ(delegate->sizeHint(option, gain), QSize(-1, 14));
    EXPECT_EQ(delegate->sizeHint(option, feature("Gain")), QSize(-1, 14));
}

TEST_F(SizeHintTest, closingAnEditorTheDelegateNeverSawChangesNoRow)
{
    tree->integer(nullptr, "Gain").value(3).range(0, 100);
    show();
    QWidget* editor = open("Gain");
    ASSERT_TRUE(editor);
    QSignalSpy changed(delegate.get(), &QAbstractItemDelegate::sizeHintChanged);

    QLineEdit stranger;
    delegate->editorClosed(&stranger);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_FALSE(changed.at(0).at(0).value<QModelIndex>().isValid());
    EXPECT_EQ(delegate->sizeHint(cellOption(QRect(0, 0, 100, 14)), value("Gain")), QSize(-1, 20));
    pressEscape(editor);
}

TEST_F(SizeHintTest, reviewGrabOfAnOpenIntegerEditorWithTheGrid)
{
    const QFont saved = QApplication::font();
    struct RestoreFont
    {
        QFont font;
        ~RestoreFont() { QApplication::setFont(font); }
    } restore{saved};
    QFont small = saved;
    small.setPointSize(9);
    QApplication::setFont(small);

    auto acquisition = tree->category(nullptr, "Acquisition").node();
    tree->integer(acquisition, "Width").value(640).range(16, 4096).step(16).unit("px");
    tree->integer(acquisition, "Height").value(480).range(16, 4096).step(16).unit("px");
    tree->floating(acquisition, "ExposureTime").value(10000.0).range(10.0, 1e6).unit("us");
    tree->enumeration(acquisition, "AcquisitionMode")
        .entry("SingleFrame", 0, "", peamReadWrite)
        .entry("Continuous", 2, "", peamReadWrite)
        .value("Continuous");
    auto device = tree->category(nullptr, "Device").node();
    tree->string(device, "DeviceUserID").value("left camera").maxLength(16);
    tree->boolean(device, "ReverseX").value(false);
    delegate->enableGrid(true);
    show(Family::Styled);
    view->resize(420, 220);
    view->header()->resizeSection(0, 200);
    view->setCurrentIndex(QModelIndex());

    const QModelIndex width = value("Width");
    QWidget* editor = open("Width");
    ASSERT_TRUE(qobject_cast<Qt4Int64SpinBox*>(editor));
    type(editor, QStringLiteral("1024"));
    QCoreApplication::processEvents();

    EXPECT_EQ(view->visualRect(width).height(), 20);
    EXPECT_EQ(editor->geometry(), view->visualRect(width));
    EXPECT_EQ(lineEditOf(editor)->text(), QStringLiteral("1024"));

    const QImage shot = view->grab().toImage();
    const QImage viewport = view->viewport()->grab().toImage();
    EXPECT_TRUE(greyLeftEdge(viewport, view->visualRect(value("ExposureTime"))));
    EXPECT_TRUE(greyTopEdge(viewport, view->visualRect(feature("AcquisitionMode"))));
    saveForReview(shot.scaled(shot.size() * 2), QStringLiteral("item-delegate-integer-editor"));
    pressEscape(editor);
}
