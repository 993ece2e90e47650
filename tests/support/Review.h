#pragma once

#include <QDir>
#include <QImage>
#include <QString>

#include <cstdlib>

namespace vorn {
namespace test {

// Saves a rendering for a person to look at when VORN_REVIEW_DIR names a directory; does nothing
// otherwise, so that ordinary test runs leave no files behind. Returns whether a file was written.
inline bool saveForReview(const QImage& image, const QString& name)
{
    const char* dir = std::getenv("VORN_REVIEW_DIR");
    if (!dir || !*dir)
        return false;
    QDir().mkpath(QString::fromLocal8Bit(dir));
    return image.save(QDir(QString::fromLocal8Bit(dir)).filePath(name + QStringLiteral(".png")));
}

} // namespace test
} // namespace vorn
