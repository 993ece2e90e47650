#include "FeatureValueStore.h"

#include "FeatureValueFile.h"
#include "FeatureWriter.h"
#include "ParameterSource.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextCodec>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <filesystem>

namespace vorn {
namespace browser {

namespace {

// Whether a path names something other than a regular file (a folder, a device, a pipe); a missing
// one is a file still to be made.
bool isSpecial(const QString& path)
{
    std::error_code failed;
    const auto status = std::filesystem::status(QFile::encodeName(path).toStdString(), failed);
    if (failed || !std::filesystem::exists(status))
        return false;
    return !std::filesystem::is_regular_file(status);
}

} // namespace

bool FeatureValueStore::save(ParameterSource& source, const QString& path, QString* error)
{
    const QString heading =
        QStringLiteral(
            "Feature values of %1, saved by parameter-browser on %2.\n"
            "One Name=Value per line, set from top to bottom when loaded; lines starting with # are "
            "comments.")
            .arg(source.description(), QDateTime::currentDateTime().toString(Qt::ISODate));
    const std::string text = FeatureValueFile::write(source.model()->root(), heading.toStdString());
    // The tree's texts are Latin-1; files are UTF-8.
    return saveText(path, QString::fromLatin1(text.data(), static_cast<int>(text.size())).toUtf8(), error);
}

bool FeatureValueStore::saveText(const QString& path, const QByteArray& text, QString* error)
{
    if (isSpecial(path)) {
        *error =
            QStringLiteral("%1: is not a regular file; feature values are saved to files only").arg(path);
        return false;
    }
    QSaveFile file(path);
    // Unbuffered: a buffered QFileDevice takes a short write at flush for success, and commit() would
    // then put a truncated file in place of the old one.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        *error = QStringLiteral("%1: cannot be written (%2)").arg(path, file.errorString());
        return false;
    }
    qint64 written = 0;
    while (written < text.size()) {
        errno = 0;
        const qint64 n = file.write(text.constData() + written, text.size() - written);
        if (n <= 0) {
            const QString reason =
                errno != 0 ? QString::fromLocal8Bit(std::strerror(errno)) : file.errorString();
            file.cancelWriting();
            *error =
                QStringLiteral("%1: cannot be written (%2); the file there is unchanged").arg(path, reason);
            return false;
        }
        written += n;
    }
    // commit() flushes, closes and renames; any of them failing leaves the old file in place.
    if (!file.commit()) {
        *error = QStringLiteral("%1: cannot be written (%2); the file there is unchanged")
                     .arg(path, file.errorString());
        return false;
    }
    return true;
}

bool FeatureValueStore::readText(const QString& path, std::string* text, QString* error)
{
    auto fail = [&](const QString& what) {
        *error = QStringLiteral("%1: %2").arg(path, what);
        return false;
    };
    if (QFileInfo(path).isDir())
        return fail(QStringLiteral("is a folder, not a value file"));
    if (isSpecial(path))
        return fail(QStringLiteral("is not a regular file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(file.errorString());
    const QByteArray data = file.read(kMaxFileSize + 1);
    if (data.size() > kMaxFileSize)
        return fail(QStringLiteral("is larger than %1 bytes; value files are text of a few kilobytes")
                        .arg(kMaxFileSize));
    if (file.error() != QFileDevice::NoError)
        return fail(file.errorString());
    const int nul = data.indexOf('\0');
    if (nul >= 0)
        return fail(QStringLiteral("line %1 holds a NUL byte; value files are text")
                        .arg(data.left(nul).count('\n') + 1));
    // A byte-order mark, as editors on Windows write one, is no part of line 1.
    const int start = data.startsWith("\xef\xbb\xbf") ? 3 : 0;
    QTextCodec::ConverterState state;
    const QString decoded =
        QTextCodec::codecForName("UTF-8")->toUnicode(data.constData() + start, data.size() - start, &state);
    if (state.invalidChars > 0 || state.remainingChars > 0) {
        // The first line that does not decode, for the message.
        int line = 1;
        for (const QByteArray& part : data.split('\n')) {
            QTextCodec::ConverterState lineState;
            QTextCodec::codecForName("UTF-8")->toUnicode(part.constData(), part.size(), &lineState);
            if (lineState.invalidChars > 0 || lineState.remainingChars > 0)
                break;
            ++line;
        }
        return fail(QStringLiteral("line %1 is not UTF-8 text; value files are UTF-8").arg(line));
    }
    // Characters beyond Latin-1 cannot be in any feature's text. They become kBeyondLatin1, which the
    // reader refuses with its line, rather than a '?' that would change the value.
    QString text16 = decoded;
    for (QChar& c : text16)
        if (c.unicode() > 0xff)
            c = QChar(FeatureValueFile::kBeyondLatin1);
    const QByteArray latin1 = text16.toLatin1();
    text->assign(latin1.constData(), static_cast<std::size_t>(latin1.size()));
    return true;
}

QStringList FeatureValueStore::reportLines(const std::vector<FeatureFailure>& failures)
{
    QStringList lines;
    for (std::size_t i = 0; i < failures.size() && i < static_cast<std::size_t>(kMaxReported); ++i)
        lines << QString::fromLatin1(failures[i].text().c_str());
    if (failures.size() > static_cast<std::size_t>(kMaxReported))
        lines << QStringLiteral("... and %1 more").arg(failures.size() - kMaxReported);
    return lines;
}

std::vector<FeatureFailure> FeatureValueStore::load(ParameterSource& source, const QString& path,
                                                    QString* error)
{
    std::string text;
    if (!readText(path, &text, error))
        return {};
    const auto reading = FeatureValueFile::read(text);
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
