#include "support/Review.h"

#include <vorn/lib/private/ResourceRegistration.h>

#include <QColor>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QLocale>
#include <QPainter>
#include <QResource>

#include <gtest/gtest.h>

#include <ostream>

using namespace vorn::test;

namespace {

struct IconFormat
{
    const char* name;
    int colourType;
    int bitDepth;
};

void PrintTo(const IconFormat& f, std::ostream* os)
{
    *os << f.name;
}

const IconFormat kIcons[] = {
    {"string", 6, 8},  {"float", 3, 4},   {"enumeration", 3, 4},
    {"command", 4, 8}, {"boolean", 6, 8}, {"integer", 6, 8},
};

QString resourcePath(const char* name)
{
    return QStringLiteral(":/parameters/%1.png").arg(QLatin1String(name));
}

QByteArray readAll(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

// Puts the collection back however a test that removed it ends.
struct ReRegisterAtExit
{
    ~ReRegisterAtExit() { vorn::core::registerLibraryResources(); }
};

int luminance(QRgb c)
{
    return qGray(c);
}

// The icon drawn at its own size over a plain background.
QImage composed(const QIcon& icon, QColor background)
{
    QImage image(10, 10, QImage::Format_RGB32);
    image.fill(background);
    QPainter painter(&image);
    icon.paint(&painter, image.rect());
    return image;
}

int contrastingPixels(const QImage& image, QColor background)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAbs(luminance(image.pixel(x, y)) - luminance(background.rgb())) >= 64)
                ++count;
    return count;
}

const QColor kLight(0xF5, 0xF5, 0xF5);
const QColor kDark(0x23, 0x26, 0x29);

} // namespace

class ParameterIconTest : public ::testing::TestWithParam<IconFormat>
{};

TEST_P(ParameterIconTest, loadsAsATenByTenIconAfterLibraryLoad)
{
    const QString path = resourcePath(GetParam().name);
    const QIcon icon(path);
    ASSERT_FALSE(icon.isNull());
    EXPECT_EQ(icon.availableSizes(), QList<QSize>{QSize(10, 10)});
    // A larger request is not scaled up: the icon has only its own size.
    EXPECT_EQ(icon.pixmap(QSize(32, 32)).size(), QSize(10, 10));
    EXPECT_EQ(QImage(path).size(), QSize(10, 10));
}

TEST_P(ParameterIconTest, carriesItsPngColourTypeAndBitDepth)
{
    const QByteArray png = readAll(resourcePath(GetParam().name));
    ASSERT_GE(png.size(), 33);
    EXPECT_EQ(png.left(8), QByteArray("\x89PNG\r\n\x1a\n", 8));
    // The first chunk is IHDR: length 13, type, width, height, bit depth, colour type.
    EXPECT_EQ(png.mid(8, 4), QByteArray("\0\0\0\x0d", 4));
    EXPECT_EQ(png.mid(12, 4), QByteArray("IHDR"));
    EXPECT_EQ(png.mid(16, 4), QByteArray("\0\0\0\x0a", 4));
    EXPECT_EQ(png.mid(20, 4), QByteArray("\0\0\0\x0a", 4));
    EXPECT_EQ(static_cast<unsigned char>(png.at(24)), GetParam().bitDepth);
    EXPECT_EQ(static_cast<unsigned char>(png.at(25)), GetParam().colourType);
}

TEST_P(ParameterIconTest, isStoredUncompressedAndByteForByteAsDrawn)
{
    const QResource resource(resourcePath(GetParam().name));
    ASSERT_TRUE(resource.isValid());
    EXPECT_EQ(resource.compressionAlgorithm(), QResource::NoCompression);
    const QByteArray drawn =
        readAll(QStringLiteral(VORN_ICON_SOURCE_DIR "/%1.png").arg(QLatin1String(GetParam().name)));
    ASSERT_FALSE(drawn.isEmpty());
    ASSERT_EQ(resource.size(), drawn.size());
    EXPECT_EQ(QByteArray(reinterpret_cast<const char*>(resource.data()), int(resource.size())), drawn);
}

TEST_P(ParameterIconTest, carriesNoTimestamp)
{
    // The first resource format keeps no modification times, so the compiled collection is the
    // same whenever it is built.
    const QResource resource(resourcePath(GetParam().name));
    ASSERT_TRUE(resource.isValid());
    EXPECT_FALSE(resource.lastModified().isValid());
}

TEST_P(ParameterIconTest, hasNoLanguageOrCountryVariant)
{
    const QByteArray plain = readAll(resourcePath(GetParam().name));
    const QResource german(resourcePath(GetParam().name), QLocale(QLocale::German, QLocale::Germany));
    const QResource japanese(resourcePath(GetParam().name), QLocale(QLocale::Japanese, QLocale::Japan));
    ASSERT_TRUE(german.isValid());
    ASSERT_TRUE(japanese.isValid());
    EXPECT_EQ(QByteArray(reinterpret_cast<const char*>(german.data()), int(german.size())), plain);
    EXPECT_EQ(QByteArray(reinterpret_cast<const char*>(japanese.data()), int(japanese.size())), plain);
}

TEST_P(ParameterIconTest, standsOutOnLightAndDarkBackgrounds)
{
    const QIcon icon(resourcePath(GetParam().name));
    // The dark outline carries the badge on light palettes, the fill and glyph on dark ones; on
    // either, most of the badge differs clearly from the background.
    EXPECT_GE(contrastingPixels(composed(icon, kLight), kLight), 40);
    EXPECT_GE(contrastingPixels(composed(icon, kDark), kDark), 40);
}

TEST_P(ParameterIconTest, glyphDiffersClearlyFromItsFill)
{
    // The centre of the badge holds both the white glyph and the fill; both must be present there
    // and far apart in brightness, or the type would not be recognisable.
    const QImage image = QImage(resourcePath(GetParam().name)).convertToFormat(QImage::Format_ARGB32);
    int brightest = 0;
    int darkest = 255;
    for (int y = 2; y < 8; ++y) {
        for (int x = 2; x < 8; ++x) {
            brightest = qMax(brightest, luminance(image.pixel(x, y)));
            darkest = qMin(darkest, luminance(image.pixel(x, y)));
        }
    }
    EXPECT_GE(brightest - darkest, 100);
}

INSTANTIATE_TEST_SUITE_P(AllSix, ParameterIconTest, ::testing::ValuesIn(kIcons),
                         [](const ::testing::TestParamInfo<IconFormat>& info) {
                             return std::string(info.param.name);
                         });

TEST(ParameterIconsTest, directoryHoldsExactlyTheSixIcons)
{
    QStringList entries = QDir(QStringLiteral(":/parameters")).entryList();
    entries.sort();
    EXPECT_EQ(entries, (QStringList{"boolean.png", "command.png", "enumeration.png", "float.png",
                                    "integer.png", "string.png"}));
}

TEST(ParameterIconsTest, initAndCleanupReturnOne)
{
    ReRegisterAtExit restore;
    EXPECT_EQ(vorn::core::registerLibraryResources(), 1);
    EXPECT_EQ(vorn::core::unregisterLibraryResources(), 1);
    EXPECT_EQ(vorn::core::registerLibraryResources(), 1);
}

TEST(ParameterIconsTest, cleanupRemovesTheIconsAndInitBringsThemBack)
{
    ReRegisterAtExit restore;
    ASSERT_TRUE(QFile::exists(QStringLiteral(":/parameters/integer.png")));

    vorn::core::unregisterLibraryResources();
    for (const IconFormat& f : kIcons) {
        EXPECT_FALSE(QFile::exists(resourcePath(f.name))) << f.name;
        EXPECT_TRUE(QImage(resourcePath(f.name)).isNull()) << f.name;
        EXPECT_TRUE(QIcon(resourcePath(f.name)).pixmap(QSize(10, 10)).isNull()) << f.name;
    }

    vorn::core::registerLibraryResources();
    for (const IconFormat& f : kIcons) {
        EXPECT_TRUE(QFile::exists(resourcePath(f.name))) << f.name;
        EXPECT_EQ(QImage(resourcePath(f.name)).size(), QSize(10, 10)) << f.name;
        EXPECT_EQ(QIcon(resourcePath(f.name)).pixmap(QSize(10, 10)).size(), QSize(10, 10)) << f.name;
    }
}

TEST(ParameterIconsTest, aSecondRegistrationIsUndoneByTheFirstCleanup)
{
    ReRegisterAtExit restore;
    // Registered at load already; registering again adds nothing, so one clean-up removes it.
    vorn::core::registerLibraryResources();
    vorn::core::registerLibraryResources();
    vorn::core::unregisterLibraryResources();
    EXPECT_FALSE(QFile::exists(QStringLiteral(":/parameters/string.png")));
    vorn::core::registerLibraryResources();
    EXPECT_TRUE(QFile::exists(QStringLiteral(":/parameters/string.png")));
}

TEST(ParameterIconsTest, rendersEnlargedForReview)
{
    // All six, eight times enlarged without smoothing, on a light and on a dark strip.
    const int scale = 8;
    const int cell = 10 * scale + 16;
    QImage sheet(cell * 6, cell * 2, QImage::Format_RGB32);
    QPainter painter(&sheet);
    painter.fillRect(0, 0, sheet.width(), cell, kLight);
    painter.fillRect(0, cell, sheet.width(), cell, kDark);
    for (int row = 0; row < 2; ++row) {
        for (int i = 0; i < 6; ++i) {
            const QImage icon = QImage(resourcePath(kIcons[i].name));
            ASSERT_FALSE(icon.isNull()) << kIcons[i].name;
            painter.drawImage(QRect(i * cell + 8, row * cell + 8, 10 * scale, 10 * scale), icon);
        }
    }
    // The same icons at their real size in the corners, as a view shows them.
    for (int row = 0; row < 2; ++row)
        for (int i = 0; i < 6; ++i)
            painter.drawImage(QPoint(i * cell + 2, row * cell + cell - 12),
                              QImage(resourcePath(kIcons[i].name)));
    painter.end();

    EXPECT_EQ(sheet.pixel(8 + 4 * scale, 8 + 4 * scale),
              QImage(resourcePath("string")).convertToFormat(QImage::Format_RGB32).pixel(4, 4));
    saveForReview(sheet, QStringLiteral("parameter-icons"));
}
