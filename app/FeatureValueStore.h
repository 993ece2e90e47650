#pragma once

#include "FeatureFailure.h"

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace vorn {
namespace browser {

class ParameterSource;

// Saves a source's feature values to a value file (FeatureValueFile) and sets them from one, for the
// window's File menu and the command line alike.
class FeatureValueStore
{
public:
    // A value file larger than this is refused unread: no camera has settings that come near.
    static constexpr qint64 kMaxFileSize = 16 << 20;
    // A report of failures lists this many and counts the rest.
    static constexpr int kMaxReported = 100;
    // How often a load sets again the values a device refused because of another's value.
    static constexpr int kMaxPasses = 3;

    // Writes the file whole or not at all: into a temporary file beside it, every write checked, then
    // renamed over the old one. False and a one-line reason naming the file in *error otherwise (the
    // old file is then as it was).
    static bool save(ParameterSource& source, const QString& path, QString* error);
    // The same for a text already made (UTF-8).
    static bool saveText(const QString& path, const QByteArray& text, QString* error);

    // A value file's text as the tree's texts hold it (Latin-1), read once: a regular UTF-8 text file of
    // at most kMaxFileSize bytes, a byte-order mark allowed. False and why in *error otherwise.
    static bool readText(const QString& path, std::string* text, QString* error);

    // The failures as lines for a person: at most kMaxReported, then how many more there are.
    static QStringList reportLines(const std::vector<FeatureFailure>& failures);

    // Sets the file's values in its order and returns, by line, the values that did not take and the
    // lines that are not assignments; *error is set (and nothing is set) when the file cannot be read.
    static std::vector<FeatureFailure> load(ParameterSource& source, const QString& path, QString* error);

private:
    static std::string selectorSections(ParameterSource& source);
};

} // namespace browser
} // namespace vorn
