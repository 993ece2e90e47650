#pragma once

// Helpers of the item delegate tests: a real tree view over one of our models with the delegate
// attached, editing it the way a user does, and catching the warning boxes the delegate shows.

#include "models/ModelTestSupport.h"

#include <vorn/delegate/Qt4ParametersItemDelegate.h>
#include <vorn/host/InMemoryParameterTree.h>
#include <vorn/host/Qt4GenericModelNode.h>
#include <vorn/host/Qt4GenericTreeView.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>
#include <vorn/models/Qt4StyledParametersModel.h>
#include <vorn/models/Qt4StyledParametersModelNode.h>

#include <QAbstractSpinBox>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

namespace vorn {
namespace test {

// A warning box as the user saw it.
struct Warning
{
    QString title;
    QString text;
    bool hasParent = false;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
};

// While it lives, answers every modal message box with Ok and notes what it showed. The delegate
// shows its warnings from inside the commit, in a nested event loop; a polling timer runs there.
class WarningCatcher
{
public:
    WarningCatcher()
    {
        m_timer.setInterval(5);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
        m_timer.start();
    }

    const QVector<Warning>& warnings() const { return m_warnings; }

private:
    void poll()
    {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        Warning seen;
        seen.title = box->windowTitle();
        seen.text = box->text();
        seen.hasParent = box->parentWidget() != nullptr;
        seen.icon = box->icon();
        seen.buttons = box->standardButtons();
        m_warnings.push_back(seen);
        if (QAbstractButton* ok = box->button(QMessageBox::Ok))
            ok->click();
        else
            box->reject();
    }

    QTimer m_timer;
    QVector<Warning> m_warnings;
};

// Runs the events a commit or a close leaves behind: the delegate commits from a queued call, and
// the view deletes closed editors later.
inline void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

// The line edit inside a spin box (Qt keeps it protected).
inline QLineEdit* lineEditOf(QWidget* spinBox)
{
    return spinBox ? spinBox->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

// A tree view over an in-memory tree, one of our two-column models, and the delegate under test.
// Members are destroyed view first, so that no editor outlives the delegate or the model.
class DelegateFixture : public ::testing::Test
{
protected:
    boost::shared_ptr<core::models::InMemoryParameterTree> tree =
        core::models::InMemoryParameterTree::create();
    boost::shared_ptr<core::Qt4GenericModel> model;
    boost::shared_ptr<core::Qt4ParametersItemDelegate> delegate = core::Qt4ParametersItemDelegate::create();
    std::unique_ptr<core::Qt4GenericTreeView> view;

    enum class Family { Plain, Styled };

    // Builds the model over the tree described so far and shows it in an active window.
    void show(Family family = Family::Plain)
    {
        if (family == Family::Styled) {
            model = core::Qt4StyledParametersModel::create(
                core::Qt4StyledParametersModelNode::create(tree->model(), tree->root(), boost::any()));
        } else {
            model = core::Qt4ParametersModel::create(
                core::Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any()));
        }
        view.reset(new core::Qt4GenericTreeView);
        view->setItemDelegate(delegate.get());
        view->setModel(model.get());
        view->expandAll();
        view->resize(480, 320);
        view->show();
        view->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    }

    QModelIndex value(const char* name) const { return findRow(model.get(), QString::fromLatin1(name), 1); }
    QModelIndex feature(const char* name) const { return findRow(model.get(), QString::fromLatin1(name), 0); }
    QString shown(const char* name) const { return value(name).data().toString(); }

    // Opens the value's editor as the view does on a double click; null when there is none.
    QWidget* open(const char* name)
    {
        const QModelIndex index = value(name);
        EXPECT_TRUE(index.isValid()) << name;
        view->edit(index);
        return view->indexWidget(index);
    }

    // Replaces the editor's text by typing, as a user does after the editor opened with its text
    // selected. Our integer spin boxes take only texts that convert as they stand, so a lone minus
    // is refused: a negative number is typed as its digits, then Home and the sign.
    static void type(QWidget* editor, const QString& text)
    {
        ASSERT_TRUE(editor);
        if (text.startsWith(QLatin1Char('-')) && qobject_cast<QAbstractSpinBox*>(editor)) {
            QTest::keyClicks(editor, text.mid(1));
            QTest::keyClick(editor, Qt::Key_Home);
            QTest::keyClicks(editor, QStringLiteral("-"));
            return;
        }
        QTest::keyClicks(editor, text);
    }

    static void pressEnter(QWidget* editor)
    {
        ASSERT_TRUE(editor);
        QTest::keyClick(editor, Qt::Key_Enter);
        settle();
    }

    static void pressEscape(QWidget* editor)
    {
        ASSERT_TRUE(editor);
        QTest::keyClick(editor, Qt::Key_Escape);
        settle();
    }

    // Opens the editor of name, types text and commits it with Enter.
    void edit(const char* name, const QString& text)
    {
        QWidget* editor = open(name);
        ASSERT_TRUE(editor) << name;
        type(editor, text);
        pressEnter(editor);
        EXPECT_FALSE(view->indexWidget(value(name))) << "the editor of " << name << " stays open";
    }

    QStringList calls() const { return callsOf(*tree); }
};

// A row of our own that answers isGridEnabled per column and counts how often it is asked, shown
// by a plain Qt model that carries it in Qt::UserRole as our models do.
class GridProbeRow : public core::Qt4GenericModelNode
{
public:
    static boost::shared_ptr<GridProbeRow> create(boost::shared_ptr<core::GenericModel> model,
                                                  boost::shared_ptr<core::GenericModelNode> node,
                                                  bool column0, bool column1)
    {
        boost::shared_ptr<GridProbeRow> row(new GridProbeRow(model, node, column0, column1));
        row->postConstruct();
        return row;
    }

    void postInsert() override {}
    bool isGridEnabled(int column) override
    {
        ++asked;
        return column == 0 ? m_column0 : m_column1;
    }

    int asked = 0;

protected:
    void setupChildren() override {}
    boost::shared_ptr<core::Qt4GenericModelNode> do_create(boost::shared_ptr<core::GenericModelNode>,
                                                           boost::shared_ptr<core::GenericModelNode>,
                                                           const boost::any&) override
    {
        return boost::shared_ptr<core::Qt4GenericModelNode>();
    }
    boost::shared_ptr<core::Qt4GenericModelNode> do_create(boost::shared_ptr<core::GenericModelNode>,
                                                           const boost::any&) override
    {
        return boost::shared_ptr<core::Qt4GenericModelNode>();
    }

private:
    GridProbeRow(boost::shared_ptr<core::GenericModel> model, boost::shared_ptr<core::GenericModelNode> node,
                 bool column0, bool column1)
        : Qt4GenericModelNode(model, node, boost::any()), m_column0(column0), m_column1(column1)
    {}

    bool m_column0;
    bool m_column1;
};

} // namespace test
} // namespace vorn
