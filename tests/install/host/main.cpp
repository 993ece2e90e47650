// A host as a user of the installed package writes it: includes <vorn/...>, links Vorn:: targets, and
// shows a parameter model over a small in-memory tree in a QTreeView with the library's delegate. It
// checks that the view has a row for each parameter, with its value, and prints them.
#include <vorn/delegate/Qt4ParametersItemDelegate.h>
#include <vorn/host/InMemoryParameterTree.h>
#include <vorn/lib/VornParametersQt4.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>

#include <QApplication>
#include <QTreeView>

#include <cstdio>

namespace {

int showTree()
{
    auto tree = vorn::core::models::InMemoryParameterTree::create();
    auto format = tree->category(tree->root(), "ImageFormatControl").displayName("Image Format Control");
    tree->integer(format, "Width").value(640).range(16, 4096).step(16).unit("px");
    tree->boolean(format, "ReverseX").displayName("Reverse X").value(true);
    auto model = vorn::core::Qt4ParametersModel::create(
        vorn::core::Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    auto delegate = vorn::core::Qt4ParametersItemDelegate::create();

    QTreeView view;
    view.setItemDelegate(delegate.get());
    view.setModel(model.get());
    view.resize(480, 240);
    view.expandAll();
    view.show();
    QApplication::processEvents();

    int problems = 0;
    const QModelIndex category = model->index(0, 0);
    if (model->rowCount() != 1 || model->rowCount(category) != 2) {
        std::printf("expected one category of two rows, got %d and %d\n", model->rowCount(),
                    model->rowCount(category));
        return 1;
    }
    for (int row = 0; row < model->rowCount(category); ++row) {
        const QModelIndex name = model->index(row, 0, category);
        const QModelIndex value = model->index(row, 1, category);
        // Shown: the view gave the row a place, and finds it there again.
        const QRect place = view.visualRect(name);
        if (place.isEmpty() || view.indexAt(place.center()) != name)
            ++problems;
        std::printf("%s = %s\n", qPrintable(name.data().toString()), qPrintable(value.data().toString()));
    }
    return problems;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    VornParametersQt4Init();
    const int problems = showTree();
    VornParametersQt4Deinit();
    return problems == 0 ? 0 : 1;
}
