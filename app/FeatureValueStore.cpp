#include "FeatureValueStore.h"

#include "FeatureValueFile.h"
#include "FeatureWriter.h"
#include "ParameterSource.h"

#include <vorn/host/MvParametersEntryNode.h>
#include <vorn/host/ParameterKind.h>

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

using namespace core::models;

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

// The values a selector can take, as text: an enumeration's available entries, an integer's range
// (at most kMaxSelectorValues of it).
constexpr long long kMaxSelectorValues = 64;

std::vector<std::string> selectorValues(const MvParametersEntryNode& node)
{
    std::vector<std::string> values;
    const ParameterKind& kind = ParameterKind::of(node);
    const ParameterLimits limits = kind.limits(node);
    if (!limits.choices.empty()) {
        for (const ParameterChoice& choice : limits.choices)
            if (choice.access != peamNotImplemented && choice.access != peamNotAvailable)
                values.push_back(choice.symbolic);
        return values;
    }
    const auto* min = std::get_if<long long>(&limits.minimum);
    const auto* max = std::get_if<long long>(&limits.maximum);
    const auto* step = std::get_if<long long>(&limits.increment);
    if (!min || !max || *max < *min)
        return values;
    const long long by = step && *step > 0 ? *step : 1;
    for (long long v = *min; v <= *max && static_cast<long long>(values.size()) < kMaxSelectorValues;
         v += by) {
        values.push_back(std::to_string(v));
        if (*max - v < by)
            break;
    }
    return values;
}

} // namespace

// For each selector: every value it takes, each followed by the values of the features it selects
// under it, then the selector's own value again; loaded from top to bottom, the lines put each value
// back under its selector and leave the selector as it was. Walking the values writes the selector,
// and it is put back as it was.
std::string FeatureValueStore::selectorSections(ParameterSource& source)
{
    std::string out;
    for (const auto& [name, selected] : source.selectors()) {
        const auto nodes = source.nodesNamed(name);
        if (nodes.empty())
            continue;
        const auto selector = nodes.front();
        const auto original = FeatureValueFile::line(*selector);
        if (!original)
            continue;
        std::string section = "\n# Under each value of " + name + "\n";
        bool any = false;
        for (const std::string& value : selectorValues(*selector)) {
            if (!FeatureWriter(source).apply({FeatureAssignment{name, -1, value, 0}}).empty())
                continue;
            const auto chosen = FeatureValueFile::line(*selector);
            if (!chosen)
                continue;
            section += *chosen + '\n';
            for (const std::string& feature : selected) {
                const auto shown = source.nodesNamed(feature);
                if (shown.empty())
                    continue;
                if (const auto text = FeatureValueFile::line(*shown.front())) {
                    section += *text + '\n';
                    any = true;
                }
            }
        }
        const std::string originalValue = original->substr(original->find('=') + 1);
        FeatureWriter(source).apply(
            {FeatureAssignment{name, -1, FeatureValueFile::unescape(originalValue), 0}});
        if (any)
            out += section + *original + '\n';
    }
    return out;
}

bool FeatureValueStore::save(ParameterSource& source, const QString& path, QString* error)
{
    const QString heading =
        QStringLiteral(
            "Feature values of %1, saved by parameter-browser on %2.\n"
            "One Name=Value per line, set from top to bottom when loaded; lines starting with # are "
            "comments.")
            .arg(source.description(), QDateTime::currentDateTime().toString(Qt::ISODate));
    std::string text = FeatureValueFile::write(source.model()->root(), heading.toStdString());
    text += selectorSections(source);
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
    std::vector<FeatureFailure> refused = FeatureWriter(source).apply(reading.assignments);
    // A device may refuse a value because of another one's current value (an offset beyond what the
    // current width leaves): such values are set again once the rest is in, as long as that helps.
    for (int pass = 0; pass < kMaxPasses && !refused.empty(); ++pass) {
        std::vector<FeatureAssignment> again;
        for (const FeatureFailure& failure : refused)
            for (const FeatureAssignment& a : reading.assignments)
                if (a.line == failure.line && failure.line > 0)
                    again.push_back(a);
        if (again.empty())
            break;
        std::vector<FeatureFailure> still = FeatureWriter(source).apply(again);
        if (still.size() >= refused.size())
            break;
        // Failures without a line (a device that stopped answering) stay reported.
        for (const FeatureFailure& failure : refused)
            if (failure.line == 0)
                still.push_back(failure);
        refused = std::move(still);
    }
    failures.insert(failures.end(), refused.begin(), refused.end());
    // In the order of the file; reports that belong to no line (line 0) last.
    std::stable_sort(failures.begin(), failures.end(), [](const FeatureFailure& a, const FeatureFailure& b) {
        return (a.line == 0 ? INT_MAX : a.line) < (b.line == 0 ? INT_MAX : b.line);
    });
    return failures;
}

} // namespace browser
} // namespace vorn
