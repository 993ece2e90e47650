#include "FeatureValueStore.h"

#include "FeatureValueFile.h"
#include "FeatureWriter.h"
#include "ParameterSource.h"

#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <climits>

namespace vorn {
namespace browser {

bool FeatureValueStore::save(ParameterSource& source, const QString& path, QString* error)
{
    const QString heading =
        QStringLiteral(
            "Feature values of %1, saved by parameter-browser on %2.\n"
            "One Name=Value per line, set from top to bottom when loaded; lines starting with # are "
            "comments.")
            .arg(source.description(), QDateTime::currentDateTime().toString(Qt::ISODate));
    const std::string text = FeatureValueFile::write(source.model()->root(), heading.toStdString());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(text.data(), static_cast<qint64>(text.size())) != static_cast<qint64>(text.size())) {
        *error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}

std::vector<FeatureFailure> FeatureValueStore::load(ParameterSource& source, const QString& path,
                                                    QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return {};
    }
    const auto reading = FeatureValueFile::read(file.readAll().toStdString());
    std::vector<FeatureFailure> failures = reading.problems;
    const auto refused = FeatureWriter(source).apply(reading.assignments);
    failures.insert(failures.end(), refused.begin(), refused.end());
    // In the order of the file; reports that belong to no line (line 0) last.
    std::stable_sort(failures.begin(), failures.end(), [](const FeatureFailure& a, const FeatureFailure& b) {
        return (a.line == 0 ? INT_MAX : a.line) < (b.line == 0 ? INT_MAX : b.line);
    });
    return failures;
}

} // namespace browser
} // namespace vorn
