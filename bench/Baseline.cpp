#include "Baseline.h"

#include <vorn/host/MvParametersBooleanNode.h>
#include <vorn/host/MvParametersCategoryNode.h>
#include <vorn/host/MvParametersCommandNode.h>
#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/MvParametersStringNode.h>
#include <vorn/host/MvParametersUInt64Node.h>
#include <vorn/host/ParameterText.h>

#include <QApplication>
#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QSet>
#include <QSize>
#include <QTimer>

namespace vorn {
namespace bench {

using namespace core;
using namespace core::models;
namespace texts = core::models::texts;

namespace {

QFont withWeight(QFont font, int weight)
{
    font.setWeight(weight);
    return font;
}

QFont fixedFamily(QFont font)
{
    font.setFamily(QStringLiteral("Courier"));
    font.setFamily(QStringLiteral("Consolas"));
    return font;
}

// What every host keeps once rather than per row: fonts, icons, colours.
struct Looks
{
    QFont plain = QApplication::font();
    QFont bold = withWeight(QApplication::font(), 75);
    QFont fixedBold = withWeight(fixedFamily(QApplication::font()), 75);
    QIcon integer{QStringLiteral(":/parameters/integer.png")};
    QIcon floating{QStringLiteral(":/parameters/float.png")};
    QIcon boolean{QStringLiteral(":/parameters/boolean.png")};
    QIcon string{QStringLiteral(":/parameters/string.png")};
    QIcon enumeration{QStringLiteral(":/parameters/enumeration.png")};
    QIcon command{QStringLiteral(":/parameters/command.png")};
    QColor red{Qt::red};
    QSize rowSize{-1, 14};
    QSize commandRowSize{-1, 17};
};

// Parameter texts are 8-bit strings whose bytes are Latin-1 characters.
QString text(const std::string& s)
{
    return QString::fromLatin1(s.data(), static_cast<int>(s.size()));
}

QString floatText(const MvParametersFloatNode& f)
{
    if (!f.getDataValid())
        return QString();
    return text(texts::floatText(f.getNodeValue()) + (f.getUnit().empty() ? "" : " " + f.getUnit()));
}

QString enumerationText(const MvParametersEnumerationNode& e)
{
    if (!e.getDataValid())
        return QString();
    if (auto entry = e.getEnumEntryNodesEntry(e.getNodeValue()))
        return text(entry->getDisplayName());
    return QStringLiteral("illegal enum value (%1)").arg(e.getNodeIntValue());
}

template <class Node>
void fillInteger(const Looks& looks, const boost::shared_ptr<GenericModelNode>& node, QStandardItem* value,
                 bool& checkable)
{
    auto n = boost::static_pointer_cast<Node>(node);
    const int representation = n->getRepresentation();
    if (!n->getDataValid())
        value->setText(QString());
    else if (representation == pirBoolean)
        value->setCheckState(n->getNodeValue() != 0 ? Qt::Checked : Qt::Unchecked);
    else
        value->setText(text(texts::integerText(n->getNodeValue(), n->getRepresentation(), n->getUnit())));
    const bool fixed =
        representation == pirHexNumber || representation == pirIPV4Address || representation == pirMACAddress;
    value->setFont(fixed ? looks.fixedBold : looks.bold);
    checkable = n->getDataValid() && representation == pirBoolean;
}

void fillRow(const Looks& looks, const boost::shared_ptr<GenericModelNode>& node, QStandardItem* name,
             QStandardItem* value)
{
    const auto& entry = static_cast<const MvParametersEntryNode&>(*node);
    const QString toolTip = text(entry.getToolTip());
    name->setText(text(entry.getDisplayName()));
    name->setToolTip(toolTip);
    value->setToolTip(toolTip);

    bool checkable = false;
    QSize size = looks.rowSize;
    switch (node->typeId()) {
    case pntCategory:
        name->setFont(looks.bold);
        break;
    case pntString:
        name->setIcon(looks.string);
        name->setFont(looks.plain);
        value->setText(text(boost::static_pointer_cast<MvParametersStringNode>(node)->getNodeValue()));
        value->setFont(looks.fixedBold);
        break;
    case pntInteger:
        name->setIcon(looks.integer);
        name->setFont(looks.plain);
        fillInteger<MvParametersIntegerNode>(looks, node, value, checkable);
        break;
    case pntUInt64:
        name->setIcon(looks.integer);
        name->setFont(looks.plain);
        fillInteger<MvParametersUInt64Node>(looks, node, value, checkable);
        break;
    case pntFloat:
        name->setIcon(looks.floating);
        name->setFont(looks.plain);
        value->setText(floatText(static_cast<const MvParametersFloatNode&>(*node)));
        value->setFont(looks.bold);
        break;
    case pntBoolean: {
        auto b = boost::static_pointer_cast<MvParametersBooleanNode>(node);
        name->setIcon(looks.boolean);
        name->setFont(looks.plain);
        if (b->getDataValid())
            value->setCheckState(b->getValueSet() ? Qt::Checked : Qt::Unchecked);
        else
            value->setText(QString());
        value->setFont(looks.bold);
        checkable = b->getDataValid();
        break;
    }
    case pntEnumeration:
        name->setIcon(looks.enumeration);
        name->setFont(looks.plain);
        value->setText(enumerationText(static_cast<const MvParametersEnumerationNode&>(*node)));
        value->setFont(looks.bold);
        break;
    case pntCommand:
        name->setIcon(looks.command);
        name->setFont(looks.plain);
        name->setData(true, CommandRole);
        size = looks.commandRowSize;
        break;
    case pntEntry:
        name->setData(looks.red, Qt::ForegroundRole);
        name->setFont(looks.plain);
        value->setFont(looks.bold);
        break;
    default:
        name->setFont(looks.plain);
        value->setFont(looks.bold);
        break;
    }
    name->setSizeHint(size);
    value->setSizeHint(size);

    name->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    Qt::ItemFlags valueFlags = Qt::ItemIsSelectable;
    if (entry.isWritable())
        valueFlags |= Qt::ItemIsEnabled | Qt::ItemIsEditable;
    if (checkable)
        valueFlags |= Qt::ItemIsUserCheckable;
    value->setFlags(valueFlags);

    name->setData((static_cast<int>(entry.getType()) << 16) | (static_cast<int>(entry.getAccessMode()) << 8) |
                      static_cast<int>(entry.getVisibility()),
                  FilterKeyRole);
}

// Builds each subtree before it is attached, so that no signal is sent for rows below the top level.
void appendChildren(const Looks& looks, QStandardItem* parent, const MvParametersEntryNode& node)
{
    const auto children = node.getChildNodesEntryNode();
    if (!children)
        return;
    for (const auto& child : children->children()) {
        auto* name = new QStandardItem();
        auto* value = new QStandardItem();
        fillRow(looks, child, name, value);
        appendChildren(looks, name, static_cast<const MvParametersEntryNode&>(*child));
        parent->appendRow(QList<QStandardItem*>{name, value});
    }
}

} // namespace

std::unique_ptr<QStandardItemModel> buildBaselineModel(const MvParametersEntryNode& root)
{
    static const Looks looks;
    auto model = std::make_unique<QStandardItemModel>(0, 2);
    model->setHorizontalHeaderLabels({QStringLiteral("Feature"), QStringLiteral("Value")});
    appendChildren(looks, model->invisibleRootItem(), root);
    return model;
}

bool BaselineFilterModel::filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const
{
    const int key = sourceModel()->index(sourceRow, 0, sourceParent).data(FilterKeyRole).toInt();
    const int type = key >> 16;
    const int access = (key >> 8) & 0xff;
    const int visibility = key & 0xff;
    return type != petInternal && access != peamNotImplemented && visibility <= m_level;
}

BaselineTreeView::BaselineTreeView() = default;

void BaselineTreeView::updateGeometries()
{
    QTreeView::updateGeometries();
    schedule();
}

void BaselineTreeView::scrollContentsBy(int dx, int dy)
{
    QTreeView::scrollContentsBy(dx, dy);
    if (dy != 0)
        schedule();
}

void BaselineTreeView::schedule()
{
    if (m_scheduled)
        return;
    m_scheduled = true;
    QTimer::singleShot(0, this, [this] {
        m_scheduled = false;
        syncButtons();
    });
}

void BaselineTreeView::syncButtons()
{
    if (!model())
        return;
    QSet<QModelIndex> wanted;
    const int bottom = viewport()->height();
    for (QModelIndex row = indexAt(QPoint(0, 0)); row.isValid(); row = indexBelow(row)) {
        if (visualRect(row).top() > bottom)
            break;
        if (row.data(CommandRole).toBool())
            wanted.insert(row.sibling(row.row(), 1));
    }
    QVector<QPersistentModelIndex> kept;
    for (const QPersistentModelIndex& cell : qAsConst(m_cells)) {
        if (cell.isValid() && wanted.remove(cell))
            kept.append(cell);
        else if (cell.isValid())
            setIndexWidget(cell, nullptr);
    }
    for (const QModelIndex& cell : qAsConst(wanted)) {
        auto* button = new QPushButton(QStringLiteral("Execute"));
        button->setFixedSize(64, 16);
        setIndexWidget(cell, button);
        kept.append(cell);
    }
    m_cells = kept;
}

void BaselineGridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const
{
    painter->save();
    painter->setPen(QColor(192, 192, 192));
    painter->drawRect(option.rect);
    painter->restore();
    QStyledItemDelegate::paint(painter, option, index);
}

} // namespace bench
} // namespace vorn
