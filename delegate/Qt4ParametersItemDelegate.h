#pragma once

#include <vorn/base/VornExport.h>

#include <QMap>
#include <QModelIndex>
#include <QSet>
#include <QStyledItemDelegate>

#include <boost/shared_ptr.hpp>

namespace vorn {
namespace core {

class GenericModelNode;

// The item delegate of the parameter views. It makes the in-place editor for a parameter's value
// (64-bit spin boxes for integers, a combo box for enumerations, a line edit for strings, a double
// spin box for floats; nothing for check boxes, commands and categories), fills it once from the
// parameter, and on commit checks the edited value against the parameter's range and increment.
// A value that passes goes to the parameter tree through its callback, never through setData(); a
// value that fails is refused with a warning box and the parameter keeps its old value.
//
// Every index it serves answers Qt::UserRole with its row as a Qt4AbstractModelNodePtr. An index
// that does not (a foreign model) gets no editor and is painted and sized as the base delegate does.
//
// While a row has an open editor it asks for a height of 20 pixels, so that the editor fits; with
// enableGrid(true) it draws a light grey grid around the cells whose rows ask for one.
class VORN_PARAMETERSQT4_API Qt4ParametersItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // A delegate without a parent object; the host keeps it alive for as long as a view uses it.
    static boost::shared_ptr<Qt4ParametersItemDelegate> create();

    explicit Qt4ParametersItemDelegate(QObject* parent = nullptr);
    ~Qt4ParametersItemDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

    // Whether paint() draws the grid for rows that ask for it. Repaints nothing by itself.
    void enableGrid(bool enable);

public Q_SLOTS:
    // Forgets an editor that is closing, with or without a commit, and lets its row shrink back.
    void editorClosed(QWidget* editor);

private:
    void forgetDestroyedEditor(QWidget* editor);

    // Qt asks to fill an editor again whenever the row's data change; only the first fill counts,
    // so that a refresh never overwrites what the user is typing.
    mutable QSet<QWidget*> initialisedEditors;
    // The parameter node and the index of each open editor (not owning).
    mutable QMap<QWidget*, GenericModelNode*> editorNodes;
    mutable QMap<QWidget*, QModelIndex> editorIndexes;
    // The parameter nodes with an open editor; their rows get the editing height.
    mutable QSet<GenericModelNode*> nodesInEdit;
    bool gridEnabled;
};

} // namespace core
} // namespace vorn
