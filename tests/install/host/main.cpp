#include <vorn/host/InMemoryParameterTree.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    auto tree = vorn::core::models::InMemoryParameterTree::create();
    tree->integer(tree->root(), "Width").value(640).unit("px");
    auto model = vorn::core::Qt4ParametersModel::create(
        vorn::core::Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any()));
    const QString text = model->index(0, 1).data().toString();
    std::printf("%s\n", qPrintable(text));
    return text == QStringLiteral("640 px") ? 0 : 1;
}
