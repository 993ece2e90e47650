#include <vorn/delegate/Qt4ParametersItemDelegate.h>

#include <vorn/delegate/Qt4Int64SpinBox.h>
#include <vorn/delegate/Qt4UInt64SpinBox.h>
#include <vorn/resources/ParameterLook.h>

#include <vorn/host/MvParametersEnumerationNode.h>
#include <vorn/host/MvParametersFloatNode.h>
#include <vorn/host/MvParametersIntegerNode.h>
#include <vorn/host/MvParametersModel.h>
#include <vorn/host/MvParametersStringNode.h>
#include <vorn/host/MvParametersUInt64Node.h>
#include <vorn/host/ParameterKind.h>
#include <vorn/host/Qt4GenericModelNode.h>

#include <QColor>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QIcon>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>

#include <limits>

namespace vorn {
namespace core {

using models::MvParametersEntryNode;
using models::MvParametersEnumEntryNode;
using models::MvParametersEnumerationNode;
using models::MvParametersFloatNode;
using models::MvParametersIntegerNode;
using models::MvParametersStringNode;
using models::MvParametersUInt64Node;
using models::ParameterKindId;

namespace {

// The row behind an index. Null when the model answers Qt::UserRole with something else: such an
// index gets no editor and is drawn as the base delegate draws it.
Qt4AbstractModelNodePtr rowOf(const QModelIndex& index)
{
    return qvariant_cast<Qt4AbstractModelNodePtr>(index.data(Qt::UserRole));
}

boost::shared_ptr<GenericModelNode> parameterOf(const QModelIndex& index)
{
    const boost::shared_ptr<Qt4GenericModelNode> row =
        boost::dynamic_pointer_cast<Qt4GenericModelNode>(rowOf(index));
    return row ? row->node() : boost::shared_ptr<GenericModelNode>();
}

template <class Node> Node& as(const boost::shared_ptr<GenericModelNode>& node)
{
    // The type id has been compared already.
    return static_cast<Node&>(*node);
}

// The spin boxes keep their line edit to themselves; the delegate selects its whole text so that
// typing replaces the value.
void selectAllText(QAbstractSpinBox* box)
{
    if (auto* edit = box->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly))
        edit->selectAll();
}

template <class Box, class Node> void fillSpinBox(QWidget* editor, const Node& node)
{
    auto* box = qobject_cast<Box*>(editor);
    if (!box)
        return;
    // A step of 0 leaves the box's own step; the commit then refuses every value of a range wider
    // than one value.
    box->setRange(node.getMinValue(), node.getMaxValue());
    box->setSingleStep(node.getStepValue());
    box->setValue(node.getNodeValue());
    selectAllText(box);
}

void fillComboBox(QWidget* editor, const MvParametersEnumerationNode& node)
{
    auto* combo = qobject_cast<QComboBox*>(editor);
    if (!combo)
        return;
    combo->setFont(look::boldFont());
    int current = -1;
    int position = 0;
    auto entries = node.getEnumEntryNodes();
    while (entries && entries->hasNext()) {
        const boost::shared_ptr<MvParametersEnumEntryNode> entry = entries->next();
        if (!entry)
            continue;
        // Entries the device does not offer now cannot be chosen, so they get no line at all.
        const models::ParameterEntryAccessMode mode = entry->getAccessMode();
        if (mode == models::peamNotImplemented || mode == models::peamNotAvailable)
            continue;
        const std::string& name = entry->getDisplayName();
        combo->addItem(QIcon(), QString::fromLatin1(name.data(), static_cast<int>(name.size())),
                       QVariant(qlonglong(entry->getValue())));
        if (entry->getSymbolic() == node.getNodeValue())
            current = position;
        ++position;
    }
    // When the current entry is not offered, the combo box keeps its own choice (the first line).
    if (current >= 0)
        combo->setCurrentIndex(current);
}

void fillLineEdit(QWidget* editor, const MvParametersStringNode& node)
{
    auto* edit = qobject_cast<QLineEdit*>(editor);
    if (!edit)
        return;
    edit->setFont(look::fixedBoldFont());
    // A length beyond what a line edit can hold means "no practical limit".
    const long long maxLength = node.getMaxLength();
    edit->setMaxLength(static_cast<int>(qBound<long long>(0, maxLength, std::numeric_limits<int>::max())));
    edit->setText(QString::fromUtf8(node.getNodeValue().c_str()));
    edit->selectAll();
}

void fillDoubleSpinBox(QWidget* editor, const MvParametersFloatNode& node)
{
    auto* box = qobject_cast<QDoubleSpinBox*>(editor);
    if (!box)
        return;
    box->setFont(look::boldFont());
    // The value goes in while the box still has Qt's default two decimals: it enters rounded to two
    // decimals and is then shown with fifteen (0.001 opens as 0.000000000000000). The order is
    // deliberate; do not move setDecimals up.
    box->setRange(node.getMinValue(), node.getMaxValue());
    box->setValue(node.getNodeValue());
    box->setDecimals(15);
    box->selectAll();
}

// Writes value unless the parameter's kind warns against it; the warning box then says why.
void commitChecked(const boost::shared_ptr<GenericModelNode>& node, const boost::any& value)
{
    const auto& parameter = static_cast<const MvParametersEntryNode&>(*node);
    if (const auto warning = models::ParameterKind::of(parameter).editWarning(parameter, value)) {
        QMessageBox::warning(nullptr, QString::fromStdString(warning->title),
                             QString::fromStdString(warning->text), QMessageBox::Ok, QMessageBox::NoButton);
        return;
    }
    models::writeThroughCallback(boost::static_pointer_cast<MvParametersEntryNode>(node), value);
}

// Hands value to the parameter tree. A tree that is being torn down has dropped its callback; the
// edit is then lost without a word, as there is nobody left to tell.
void commit(const boost::shared_ptr<GenericModelNode>& node, const boost::any& value)
{
    models::writeThroughCallback(boost::static_pointer_cast<MvParametersEntryNode>(node), value);
}

} // namespace

boost::shared_ptr<Qt4ParametersItemDelegate> Qt4ParametersItemDelegate::create()
{
    return boost::shared_ptr<Qt4ParametersItemDelegate>(new Qt4ParametersItemDelegate(nullptr));
}

Qt4ParametersItemDelegate::Qt4ParametersItemDelegate(QObject* parent)
    : QStyledItemDelegate(parent), gridEnabled(false)
{
    // Every way the delegate ends an editor (Enter, Escape, Tab, focus loss) passes through
    // closeEditor, with or without a commit before it.
    connect(this, SIGNAL(closeEditor(QWidget*)), this, SLOT(editorClosed(QWidget*)));
}

Qt4ParametersItemDelegate::~Qt4ParametersItemDelegate() = default;

void Qt4ParametersItemDelegate::enableGrid(bool enable)
{
    gridEnabled = enable;
}

void Qt4ParametersItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const
{
    if (gridEnabled) {
        const Qt4AbstractModelNodePtr row = rowOf(index);
        if (row && row->isGridEnabled(index.column())) {
            // Drawn first: an opaque background or selection of the item covers it.
            painter->save();
            painter->setPen(QColor(192, 192, 192, 255));
            const QRect cell = option.rect;
            painter->drawRects(&cell, 1);
            painter->restore();
        }
    }
    QStyledItemDelegate::paint(painter, option, index);
}

QSize Qt4ParametersItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    // Both cells of a row in edit get the editor's height; an invalid width keeps the column's. The
    // view asks for every row on every layout, mostly with no editor open: then there is nothing to
    // look up.
    if (nodesInEdit.isEmpty())
        return QStyledItemDelegate::sizeHint(option, index);
    const boost::shared_ptr<GenericModelNode> node = parameterOf(index);
    if (node && nodesInEdit.contains(node.get()))
        return QSize(-1, 20);
    return QStyledItemDelegate::sizeHint(option, index);
}

QWidget* Qt4ParametersItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                                 const QModelIndex& index) const
{
    const boost::shared_ptr<GenericModelNode> node = parameterOf(index);
    if (!node)
        return nullptr;
    switch (models::ParameterKind::of(*node).id()) {
    case ParameterKindId::Integer:
        // An integer shown as a check box is edited through its check state.
        if (as<MvParametersIntegerNode>(node).getRepresentation() == models::pirBoolean)
            return nullptr;
        return new Qt4Int64SpinBox(parent);
    case ParameterKindId::UInt64:
        return new Qt4UInt64SpinBox(parent);
    case ParameterKindId::Enumeration:
        return new QComboBox(parent);
    case ParameterKindId::String:
        return new QLineEdit(parent);
    case ParameterKindId::Float:
        return new QDoubleSpinBox(parent);
    default:
        // Booleans and integers shown as check boxes are edited through their check state,
        // commands through their button; categories and plain entries have nothing to edit.
        break;
    }
    return nullptr;
}

void Qt4ParametersItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (initialisedEditors.contains(editor))
        return;
    const boost::shared_ptr<GenericModelNode> node = parameterOf(index);
    if (!node)
        return;
    switch (models::ParameterKind::of(*node).id()) {
    case ParameterKindId::Integer:
        fillSpinBox<Qt4Int64SpinBox>(editor, as<MvParametersIntegerNode>(node));
        break;
    case ParameterKindId::UInt64:
        fillSpinBox<Qt4UInt64SpinBox>(editor, as<MvParametersUInt64Node>(node));
        break;
    case ParameterKindId::Enumeration:
        fillComboBox(editor, as<MvParametersEnumerationNode>(node));
        break;
    case ParameterKindId::String:
        fillLineEdit(editor, as<MvParametersStringNode>(node));
        break;
    case ParameterKindId::Float:
        fillDoubleSpinBox(editor, as<MvParametersFloatNode>(node));
        break;
    default:
        break;
    }

    initialisedEditors.insert(editor);
    editorNodes.insert(editor, node.get());
    editorIndexes.insert(editor, index);
    nodesInEdit.insert(node.get());

    auto* self = const_cast<Qt4ParametersItemDelegate*>(this);
    // A view that drops its editors without closing them (a model reset, removed rows, another
    // current index) would leave them here; a later editor at the same address would then never be
    // filled. Forget an editor when it goes away at the latest.
    connect(editor, &QObject::destroyed, self, [self, editor] { self->forgetDestroyedEditor(editor); });
    emit self->sizeHintChanged(index);
}

void Qt4ParametersItemDelegate::setModelData(QWidget* editor, QAbstractItemModel*,
                                             const QModelIndex& index) const
{
    const boost::shared_ptr<GenericModelNode> node = parameterOf(index);
    if (!node)
        return;
    switch (models::ParameterKind::of(*node).id()) {
    case ParameterKindId::Integer:
        if (const auto* box = qobject_cast<Qt4Int64SpinBox*>(editor))
            commitChecked(node, boost::any(static_cast<long long>(box->value())));
        return;
    case ParameterKindId::UInt64:
        if (const auto* box = qobject_cast<Qt4UInt64SpinBox*>(editor))
            commitChecked(node, boost::any(static_cast<unsigned long long>(box->value())));
        return;
    case ParameterKindId::Float:
        // The box rounds its bounds to its decimals, and the range may have changed while it was
        // open: the parameter's own range decides.
        if (const auto* box = qobject_cast<QDoubleSpinBox*>(editor))
            commitChecked(node, boost::any(box->value()));
        return;
    case ParameterKindId::Enumeration: {
        const auto* combo = qobject_cast<QComboBox*>(editor);
        if (!combo)
            return;
        // An empty combo box (no entry offered) writes 0; the tree decides what that means.
        const long long value = combo->itemData(combo->currentIndex(), Qt::UserRole).toLongLong();
        commit(node, boost::any(value));
        return;
    }
    case ParameterKindId::String: {
        const auto* edit = qobject_cast<QLineEdit*>(editor);
        if (!edit)
            return;
        // The line edit's maximum length has bounded the text already.
        commit(node, boost::any(edit->text().toStdString()));
        return;
    }
    default:
        return;
    }
}

void Qt4ParametersItemDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                                     const QModelIndex&) const
{
    editor->setGeometry(option.rect);
}

void Qt4ParametersItemDelegate::editorClosed(QWidget* editor)
{
    initialisedEditors.remove(editor);
    GenericModelNode* node = editorNodes.value(editor, nullptr);
    const QModelIndex index = editorIndexes.value(editor);
    nodesInEdit.remove(node);
    editorNodes.remove(editor);
    editorIndexes.remove(editor);
    Q_ASSERT(editorNodes.size() == editorIndexes.size());
    emit sizeHintChanged(index);
}

void Qt4ParametersItemDelegate::forgetDestroyedEditor(QWidget* editor)
{
    if (!initialisedEditors.contains(editor) && !editorNodes.contains(editor))
        return;
    initialisedEditors.remove(editor);
    nodesInEdit.remove(editorNodes.value(editor, nullptr));
    editorNodes.remove(editor);
    editorIndexes.remove(editor);
    // The recorded index may belong to rows that are gone; an invalid one still makes views lay out.
    emit sizeHintChanged(QModelIndex());
}

} // namespace core
} // namespace vorn
