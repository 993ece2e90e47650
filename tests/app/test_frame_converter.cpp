// Each pixel format a camera may send, converted from small frames whose image is known.
#include "FrameConverter.h"

#include <gtest/gtest.h>

#include <QColor>

#include <cstdint>
#include <vector>

using vorn::browser::FrameConverter;

namespace {

using Bytes = std::vector<unsigned char>;

QImage converted(std::uint32_t format, int width, int height, const Bytes& bytes)
{
    QImage image;
    QString error;
    EXPECT_TRUE(FrameConverter::convert(format, width, height, bytes.data(), bytes.size(), &image, &error))
        << error.toStdString();
    return image;
}

// The 16-bit grey levels of an image's first row.
std::vector<int> greys16(const QImage& image)
{
    std::vector<int> values;
    const auto* row = reinterpret_cast<const std::uint16_t*>(image.constScanLine(0));
    for (int x = 0; x < image.width(); ++x)
        values.push_back(row[x]);
    return values;
}

// A Bayer mosaic of a scene of one colour: each site holds its own channel of (r, g, b).
Bytes mosaic8(const char* pattern, int width, int height, int r, int g, int b)
{
    Bytes bytes;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const char site = pattern[(y % 2) * 2 + (x % 2)];
            bytes.push_back(static_cast<unsigned char>(site == 'R' ? r : site == 'G' ? g : b));
        }
    return bytes;
}

std::string rgbAt(const QImage& image, int x, int y)
{
    const QRgb pixel = image.pixel(x, y);
    return std::to_string(qRed(pixel)) + "," + std::to_string(qGreen(pixel)) + "," +
           std::to_string(qBlue(pixel));
}

} // namespace

TEST(FrameConverter, mono8IsCopiedRowByRow)
{
    // Three pixels a row: Qt pads rows to four bytes, the camera does not.
    const QImage image = converted(FrameConverter::Mono8, 3, 2, {0, 1, 2, 250, 251, 255});
    ASSERT_EQ(image.format(), QImage::Format_Grayscale8);
    ASSERT_EQ(image.size(), QSize(3, 2));
    EXPECT_EQ(qGray(image.pixel(0, 0)), 0);
    EXPECT_EQ(qGray(image.pixel(2, 0)), 2);
    EXPECT_EQ(qGray(image.pixel(0, 1)), 250);
    EXPECT_EQ(qGray(image.pixel(2, 1)), 255);
}

TEST(FrameConverter, deepMonochromeKeepsItsBitsAtTheTop)
{
    // Little-endian 16-bit containers; bits above the depth are not the pixel's.
    EXPECT_EQ(greys16(converted(FrameConverter::Mono12, 3, 1, {0xBC, 0x0A, 0xFF, 0xFF, 0x01, 0x00})),
              (std::vector<int>{0xABC0, 0xFFF0, 0x0010}));
    EXPECT_EQ(greys16(converted(FrameConverter::Mono10, 2, 1, {0xFF, 0x03, 0x00, 0x02})),
              (std::vector<int>{0xFFC0, 0x8000}));
    EXPECT_EQ(greys16(converted(FrameConverter::Mono16, 2, 1, {0x34, 0x12, 0xFF, 0xFF})),
              (std::vector<int>{0x1234, 0xFFFF}));
}

TEST(FrameConverter, gigeVisionPackedMonochromeUnpacks)
{
    // Mono12Packed: pixel 0 = 0xABC, pixel 1 = 0x123, pixel 2 = 0xFFF (a last, unpaired pixel).
    EXPECT_EQ(greys16(converted(FrameConverter::Mono12Packed, 3, 1, {0xAB, 0x3C, 0x12, 0xFF, 0x0F})),
              (std::vector<int>{0xABC0, 0x1230, 0xFFF0}));
    // Mono10Packed: pixel 0 = 0x2A9 (high 0xAA, low 01), pixel 1 = 0x3FE (high 0xFF, low 10).
    EXPECT_EQ(greys16(converted(FrameConverter::Mono10Packed, 2, 1, {0xAA, 0x21, 0xFF})),
              (std::vector<int>{0x2A9 << 6, 0x3FE << 6}));
}

TEST(FrameConverter, namingConventionPackedMonochromeUnpacks)
{
    // Mono12p: 0xABC, 0x123 -> bits 0xBC, 0x3A, 0x12.
    EXPECT_EQ(greys16(converted(FrameConverter::Mono12p, 2, 1, {0xBC, 0x3A, 0x12})),
              (std::vector<int>{0xABC0, 0x1230}));
    // Mono10p: 0x3FF, 0x000, 0x155, 0x2AA -> 40 bits, least significant first.
    const std::uint64_t bits = 0x3FFull | 0x000ull << 10 | 0x155ull << 20 | 0x2AAull << 30;
    Bytes bytes;
    for (int i = 0; i < 5; ++i)
        bytes.push_back(static_cast<unsigned char>(bits >> (8 * i)));
    EXPECT_EQ(greys16(converted(FrameConverter::Mono10p, 4, 1, bytes)),
              (std::vector<int>{0x3FF << 6, 0, 0x155 << 6, 0x2AA << 6}));
}

TEST(FrameConverter, eachBayerPatternDemosaicsToItsColour)
{
    struct Case
    {
        std::uint32_t format;
        const char* pattern; // the first two rows' first two sites
    };
    for (const Case& c : {Case{FrameConverter::BayerRG8, "RGGB"}, Case{FrameConverter::BayerBG8, "BGGR"},
                          Case{FrameConverter::BayerGR8, "GRBG"}, Case{FrameConverter::BayerGB8, "GBRG"}}) {
        SCOPED_TRACE(FrameConverter::nameOf(c.format).toStdString());
        // A scene of pure red, then one of pure blue: a pattern read the wrong way round swaps them
        // or turns them green.
        QImage image = converted(c.format, 8, 8, mosaic8(c.pattern, 8, 8, 200, 0, 0));
        ASSERT_EQ(image.format(), QImage::Format_RGB888);
        EXPECT_EQ(rgbAt(image, 3, 3), "200,0,0");
        EXPECT_EQ(rgbAt(image, 4, 4), "200,0,0");
        image = converted(c.format, 8, 8, mosaic8(c.pattern, 8, 8, 0, 0, 90));
        EXPECT_EQ(rgbAt(image, 3, 4), "0,0,90");
        image = converted(c.format, 8, 8, mosaic8(c.pattern, 8, 8, 10, 120, 30));
        EXPECT_EQ(rgbAt(image, 4, 3), "10,120,30");
    }
}

TEST(FrameConverter, sixteenBitBayerKeepsItsDepth)
{
    Bytes bytes;
    for (unsigned char value : mosaic8("RGGB", 6, 6, 1, 0, 0)) {
        const std::uint16_t deep = value ? 40000 : 0;
        bytes.push_back(static_cast<unsigned char>(deep & 0xFF));
        bytes.push_back(static_cast<unsigned char>(deep >> 8));
    }
    const QImage image = converted(FrameConverter::BayerRG16, 6, 6, bytes);
    ASSERT_EQ(image.format(), QImage::Format_RGBA64);
    const QRgba64 pixel = reinterpret_cast<const QRgba64*>(image.constScanLine(3))[3];
    EXPECT_EQ(pixel.red(), 40000);
    EXPECT_EQ(pixel.green(), 0);
    EXPECT_EQ(pixel.blue(), 0);
    EXPECT_EQ(pixel.alpha(), 65535);
}

TEST(FrameConverter, colourFormatsBecomeRgb)
{
    EXPECT_EQ(rgbAt(converted(FrameConverter::RGB8, 1, 1, {10, 20, 30}), 0, 0), "10,20,30");
    EXPECT_EQ(rgbAt(converted(FrameConverter::BGR8, 1, 1, {10, 20, 30}), 0, 0), "30,20,10");
    // Grey in YUV 4:2:2 (U = V = 128), Y in ITU-R BT.601's video range: 1.164 x (Y - 16).
    const QImage yuyv = converted(FrameConverter::YUV422_8, 2, 1, {100, 128, 200, 128});
    EXPECT_EQ(rgbAt(yuyv, 0, 0), "98,98,98");
    EXPECT_EQ(rgbAt(yuyv, 1, 0), "214,214,214");
    const QImage uyvy = converted(FrameConverter::YUV422_8_UYVY, 2, 1, {128, 100, 128, 200});
    EXPECT_EQ(rgbAt(uyvy, 0, 0), "98,98,98");
    EXPECT_EQ(rgbAt(uyvy, 1, 0), "214,214,214");
}

TEST(FrameConverter, theImageIsUsedAgainWhenItsShapeMatches)
{
    QImage image;
    QString error;
    const Bytes first(16, 7);
    ASSERT_TRUE(
        FrameConverter::convert(FrameConverter::Mono8, 4, 4, first.data(), first.size(), &image, &error));
    const uchar* memory = image.constBits();
    const Bytes second(16, 9);
    ASSERT_TRUE(
        FrameConverter::convert(FrameConverter::Mono8, 4, 4, second.data(), second.size(), &image, &error));
    EXPECT_EQ(image.constBits(), memory);
    EXPECT_EQ(qGray(image.pixel(3, 3)), 9);
}

TEST(FrameConverter, framesItCannotShowAreRefusedWithTheReason)
{
    QImage image;
    QString error;
    const Bytes bytes(10, 0);
    EXPECT_FALSE(FrameConverter::convert(0x12345678, 2, 2, bytes.data(), bytes.size(), &image, &error));
    EXPECT_EQ(error, QStringLiteral("pixel format 0x12345678 is not supported"));
    EXPECT_FALSE(
        FrameConverter::convert(FrameConverter::Mono16, 3, 2, bytes.data(), bytes.size(), &image, &error));
    EXPECT_EQ(error, QStringLiteral("the frame holds 10 bytes; a 3 x 2 Mono16 frame needs 12"));
    EXPECT_FALSE(FrameConverter::convert(FrameConverter::Mono12p, 7, 1, bytes.data(), 10, &image, &error));
    EXPECT_EQ(error, QStringLiteral("the frame holds 10 bytes; a 7 x 1 Mono12p frame needs 11"));
    EXPECT_FALSE(
        FrameConverter::convert(FrameConverter::Mono8, 70000, 1, bytes.data(), bytes.size(), &image, &error));
    EXPECT_EQ(error, QStringLiteral("a Mono8 frame of 70000 x 1 pixels cannot be shown"));
    EXPECT_FALSE(
        FrameConverter::convert(FrameConverter::YUV422_8, 3, 1, bytes.data(), bytes.size(), &image, &error));
    EXPECT_EQ(error, QStringLiteral("a YUV422_8 frame needs an even width, not 3"));
    EXPECT_TRUE(image.isNull()) << "a refused frame leaves the image as it was";
    EXPECT_EQ(FrameConverter::nameOf(FrameConverter::BayerGB16), QStringLiteral("BayerGB16"));
    EXPECT_EQ(FrameConverter::nameOf(0x12345678), QString());
}
