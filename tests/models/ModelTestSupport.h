#pragma once

#include "support/ModelDump.h"

#include <vorn/host/InMemoryParameterTree.h>
#include <vorn/host/Qt4AbstractModel.h>
#include <vorn/models/Qt4ParametersModel.h>
#include <vorn/models/Qt4ParametersModelNode.h>

#include <QAbstractItemModel>
#include <QFont>
#include <QIcon>
#include <QImage>

namespace vorn {
namespace test {

// The plain model over a tree.
inline boost::shared_ptr<core::Qt4ParametersModel>
plainModel(const boost::shared_ptr<core::models::InMemoryParameterTree>& tree)
{
    return core::Qt4ParametersModel::create(
        core::Qt4ParametersModelNode::create(tree->model(), tree->root(), boost::any()));
}

template <class Row> boost::shared_ptr<Row> rowAt(const QModelIndex& index)
{
    return boost::dynamic_pointer_cast<Row>(index.data(Qt::UserRole).value<core::Qt4AbstractModelNodePtr>());
}

// The icon a resource path gives, compared by its pixels.
inline bool sameIcon(const QVariant& decoration, const QString& path)
{
    const QIcon shown = decoration.value<QIcon>();
    const QIcon expected(path);
    // An icon made from a missing file is not null, only its pixmaps are: compare real pixels.
    const QImage expectedImage = expected.pixmap(10, 10).toImage();
    return !expectedImage.isNull() && shown.pixmap(10, 10).toImage() == expectedImage;
}

inline QFont fontOf(const QModelIndex& index)
{
    return index.data(Qt::FontRole).value<QFont>();
}

// What the tree's callback received, as "Name:type=value" texts.
inline QStringList callsOf(const core::models::InMemoryParameterTree& tree)
{
    QStringList out;
    for (const auto& call : tree.calls()) {
        QString value;
        QString type;
        if (const auto* v = boost::any_cast<long long>(&call.value)) {
            type = QStringLiteral("long long");
            value = QString::number(*v);
        } else if (const auto* u = boost::any_cast<unsigned long long>(&call.value)) {
            type = QStringLiteral("unsigned long long");
            value = QString::number(*u);
        } else if (const auto* d = boost::any_cast<double>(&call.value)) {
            type = QStringLiteral("double");
            value = QString::number(*d, 'g', 17);
        } else if (const auto* b = boost::any_cast<bool>(&call.value)) {
            type = QStringLiteral("bool");
            value = *b ? QStringLiteral("true") : QStringLiteral("false");
        } else if (const auto* s = boost::any_cast<std::string>(&call.value)) {
            type = QStringLiteral("std::string");
            value = QString::fromStdString(*s);
        } else if (call.value.empty()) {
            type = QStringLiteral("empty");
        } else {
            type = QString::fromLatin1(call.value.type().name());
        }
        out << QStringLiteral("%1:%2=%3").arg(QString::fromStdString(call.node->getName()), type, value);
    }
    return out;
}

} // namespace test
} // namespace vorn
