#include "FrameConverter.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <cstring>

namespace vorn {
namespace browser {

namespace {

// How a format is laid out and what it becomes.
struct Layout
{
    const char* name = nullptr;
    int bitsPerPixel = 0; // as sent, packed formats included
    int depth = 0;        // significant bits of a monochrome pixel
    QImage::Format format = QImage::Format_Invalid;
    int bayer = -1;  // OpenCV's demosaicing code, or -1
    int colour = -1; // OpenCV's colour conversion code, or -1
};

Layout layoutOf(std::uint32_t pixelFormat)
{
    using F = FrameConverter;
    // OpenCV names a Bayer pattern by the second row's second and third pixels, GenICam by the first
    // row's first two: GenICam's RG is OpenCV's BG, and so on.
    switch (pixelFormat) {
    case F::Mono8:
        return {"Mono8", 8, 8, QImage::Format_Grayscale8};
    case F::Mono10:
        return {"Mono10", 16, 10, QImage::Format_Grayscale16};
    case F::Mono10Packed:
        return {"Mono10Packed", 12, 10, QImage::Format_Grayscale16};
    case F::Mono10p:
        return {"Mono10p", 10, 10, QImage::Format_Grayscale16};
    case F::Mono12:
        return {"Mono12", 16, 12, QImage::Format_Grayscale16};
    case F::Mono12Packed:
        return {"Mono12Packed", 12, 12, QImage::Format_Grayscale16};
    case F::Mono12p:
        return {"Mono12p", 12, 12, QImage::Format_Grayscale16};
    case F::Mono16:
        return {"Mono16", 16, 16, QImage::Format_Grayscale16};
    case F::BayerGR8:
        return {"BayerGR8", 8, 8, QImage::Format_RGB888, cv::COLOR_BayerGB2RGB};
    case F::BayerRG8:
        return {"BayerRG8", 8, 8, QImage::Format_RGB888, cv::COLOR_BayerBG2RGB};
    case F::BayerGB8:
        return {"BayerGB8", 8, 8, QImage::Format_RGB888, cv::COLOR_BayerGR2RGB};
    case F::BayerBG8:
        return {"BayerBG8", 8, 8, QImage::Format_RGB888, cv::COLOR_BayerRG2RGB};
    case F::BayerGR16:
        return {"BayerGR16", 16, 16, QImage::Format_RGBA64, cv::COLOR_BayerGB2RGB};
    case F::BayerRG16:
        return {"BayerRG16", 16, 16, QImage::Format_RGBA64, cv::COLOR_BayerBG2RGB};
    case F::BayerGB16:
        return {"BayerGB16", 16, 16, QImage::Format_RGBA64, cv::COLOR_BayerGR2RGB};
    case F::BayerBG16:
        return {"BayerBG16", 16, 16, QImage::Format_RGBA64, cv::COLOR_BayerRG2RGB};
    case F::RGB8:
        return {"RGB8", 24, 8, QImage::Format_RGB888};
    case F::BGR8:
        return {"BGR8", 24, 8, QImage::Format_RGB888, -1, cv::COLOR_BGR2RGB};
    case F::YUV422_8_UYVY:
        return {"YUV422_8_UYVY", 16, 8, QImage::Format_RGB888, -1, cv::COLOR_YUV2RGB_UYVY};
    case F::YUV422_8:
        return {"YUV422_8", 16, 8, QImage::Format_RGB888, -1, cv::COLOR_YUV2RGB_YUYV};
    default:
        return {};
    }
}

// The image's rows as OpenCV sees them: no copy.
cv::Mat matOf(QImage& image, int type)
{
    return cv::Mat(image.height(), image.width(), type, image.bits(),
                   static_cast<std::size_t>(image.bytesPerLine()));
}

// GigE Vision's packed monochrome: two pixels in three bytes, the high bits of each pixel in a byte of
// its own and the low bits of both in the middle byte (pixel 0 in its low nibble).
std::uint16_t gigePacked(const unsigned char* bytes, std::uint64_t pixel, int depth)
{
    const unsigned char* pair = bytes + pixel / 2 * 3;
    const int lowBits = depth - 8;
    const int mask = (1 << lowBits) - 1;
    if (pixel % 2 == 0)
        return static_cast<std::uint16_t>(pair[0] << lowBits | (pair[1] & mask));
    return static_cast<std::uint16_t>(pair[2] << lowBits | ((pair[1] >> 4) & mask));
}

// The naming convention's packed monochrome: one stream of bits, each pixel least significant bit
// first, with no gaps between pixels or rows.
std::uint16_t bitStream(const unsigned char* bytes, std::uint64_t pixel, int depth)
{
    const std::uint64_t first = pixel * static_cast<std::uint64_t>(depth);
    const std::uint64_t byte = first / 8;
    const unsigned shift = static_cast<unsigned>(first % 8);
    // At most 12 + 7 bits: the third byte is read only when the pixel reaches into it, so never past
    // the frame's end.
    std::uint32_t window = bytes[byte] | static_cast<std::uint32_t>(bytes[byte + 1]) << 8;
    if (shift + static_cast<unsigned>(depth) > 16)
        window |= static_cast<std::uint32_t>(bytes[byte + 2]) << 16;
    return static_cast<std::uint16_t>((window >> shift) & ((1u << depth) - 1));
}

} // namespace

QString FrameConverter::nameOf(std::uint32_t pixelFormat)
{
    const Layout layout = layoutOf(pixelFormat);
    return layout.name ? QString::fromLatin1(layout.name) : QString();
}

bool FrameConverter::convert(std::uint32_t pixelFormat, int width, int height, const void* data,
                             std::size_t size, QImage* image, QString* error)
{
    Q_ASSERT(image && error);
    const Layout layout = layoutOf(pixelFormat);
    if (!layout.name) {
        *error =
            QStringLiteral("pixel format 0x%1 is not supported").arg(pixelFormat, 8, 16, QLatin1Char('0'));
        return false;
    }
    if (width <= 0 || height <= 0 || width > kMaxSide || height > kMaxSide) {
        *error = QStringLiteral("a %1 frame of %2 x %3 pixels cannot be shown")
                     .arg(QLatin1String(layout.name))
                     .arg(width)
                     .arg(height);
        return false;
    }
    if (layout.colour == cv::COLOR_YUV2RGB_YUYV || layout.colour == cv::COLOR_YUV2RGB_UYVY) {
        if (width % 2 != 0) {
            *error = QStringLiteral("a %1 frame needs an even width, not %2")
                         .arg(QLatin1String(layout.name))
                         .arg(width);
            return false;
        }
    }
    const std::uint64_t pixels = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
    // A packed frame's last byte may be only partly used.
    std::uint64_t needed = (pixels * static_cast<std::uint64_t>(layout.bitsPerPixel) + 7) / 8;
    if (size < needed || !data) {
        *error = QStringLiteral("the frame holds %1 bytes; a %2 x %3 %4 frame needs %5")
                     .arg(size)
                     .arg(width)
                     .arg(height)
                     .arg(QLatin1String(layout.name))
                     .arg(needed);
        return false;
    }
    if (image->width() != width || image->height() != height || image->format() != layout.format)
        *image = QImage(width, height, layout.format);
    if (image->isNull()) {
        *error = QStringLiteral("no memory for a %1 x %2 image").arg(width).arg(height);
        return false;
    }

    const auto* bytes = static_cast<const unsigned char*>(data);
    const int rowBytes = static_cast<int>(static_cast<std::uint64_t>(width) * layout.bitsPerPixel / 8);
    if (layout.bayer >= 0 && layout.depth == 8) {
        const cv::Mat raw(height, width, CV_8UC1, const_cast<unsigned char*>(bytes));
        cv::Mat rgb = matOf(*image, CV_8UC3);
        cv::cvtColor(raw, rgb, layout.bayer);
    } else if (layout.bayer >= 0) {
        const cv::Mat raw(height, width, CV_16UC1, const_cast<unsigned char*>(bytes));
        cv::Mat rgb;
        cv::cvtColor(raw, rgb, layout.bayer);
        cv::Mat rgba = matOf(*image, CV_16UC4);
        cv::cvtColor(rgb, rgba, cv::COLOR_RGB2RGBA); // opaque: alpha at the depth's maximum
    } else if (layout.colour >= 0) {
        const int channels = layout.bitsPerPixel / 8;
        const cv::Mat raw(height, width, CV_8UC(channels), const_cast<unsigned char*>(bytes));
        cv::Mat rgb = matOf(*image, CV_8UC3);
        cv::cvtColor(raw, rgb, layout.colour);
    } else if (layout.bitsPerPixel == 8 || layout.bitsPerPixel == 24) {
        for (int y = 0; y < height; ++y)
            std::memcpy(image->scanLine(y),
                        bytes + static_cast<std::size_t>(y) * static_cast<std::size_t>(rowBytes),
                        static_cast<std::size_t>(rowBytes));
    } else {
        // Deep monochrome: the camera's bits moved to the top of 16, so that 12-bit white is white.
        const int up = 16 - layout.depth;
        const auto mask = static_cast<std::uint16_t>((1u << layout.depth) - 1);
        for (int y = 0; y < height; ++y) {
            auto* row = reinterpret_cast<std::uint16_t*>(image->scanLine(y));
            const std::uint64_t first = static_cast<std::uint64_t>(y) * static_cast<std::uint64_t>(width);
            for (int x = 0; x < width; ++x) {
                const std::uint64_t pixel = first + static_cast<std::uint64_t>(x);
                std::uint16_t value;
                if (layout.bitsPerPixel == 16) {
                    const unsigned char* p = bytes + pixel * 2; // little-endian, as the convention sends
                    value = static_cast<std::uint16_t>(p[0] | p[1] << 8) & mask;
                } else if (pixelFormat == Mono10Packed || pixelFormat == Mono12Packed) {
                    value = gigePacked(bytes, pixel, layout.depth);
                } else {
                    value = bitStream(bytes, pixel, layout.depth);
                }
                row[x] = static_cast<std::uint16_t>(value << up);
            }
        }
    }
    return true;
}

} // namespace browser
} // namespace vorn
