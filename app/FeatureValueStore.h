#pragma once

#include "FeatureFailure.h"

#include <QString>

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
    // False and a one-line reason in *error when the file cannot be written.
    static bool save(ParameterSource& source, const QString& path, QString* error);

    // Sets the file's values in its order and returns, by line, the values that did not take and the
    // lines that are not assignments; *error is set (and nothing is set) when the file cannot be read.
    static std::vector<FeatureFailure> load(ParameterSource& source, const QString& path, QString* error);
};

} // namespace browser
} // namespace vorn
