#pragma once

#include <QImage>
#include <QString>

#include <cstddef>
#include <cstdint>

namespace vorn {
namespace browser {

// Turns a camera frame, in the pixel format the camera sends (GenICam's pixel format naming
// convention, the codes Aravis reports), into an image Qt can show and save: 8-bit monochrome as
// Grayscale8, deeper monochrome as Grayscale16 (the camera's bits at the top), Bayer patterns
// demosaiced and colour formats converted to RGB888 (8 bits) or RGBA64 (16 bits). Demosaicing and
// colour conversion are OpenCV's (imgproc); unpacking GenICam's packed layouts is ours, as no
// imaging library reads them.
class FrameConverter
{
public:
    // The pixel formats converted (a subset of the naming convention's codes).
    enum PixelFormat : std::uint32_t {
        Mono8 = 0x01080001,
        Mono10 = 0x01100003,
        Mono10Packed = 0x010C0004, // GigE Vision's: two pixels in three bytes
        Mono12 = 0x01100005,
        Mono12Packed = 0x010C0006, // GigE Vision's: two pixels in three bytes
        Mono16 = 0x01100007,
        Mono10p = 0x010A0046, // the naming convention's: a stream of bits, least significant first
        Mono12p = 0x010C0047,
        BayerGR8 = 0x01080008,
        BayerRG8 = 0x01080009,
        BayerGB8 = 0x0108000A,
        BayerBG8 = 0x0108000B,
        BayerGR16 = 0x0110002E,
        BayerRG16 = 0x0110002F,
        BayerGB16 = 0x01100030,
        BayerBG16 = 0x01100031,
        RGB8 = 0x02180014,
        BGR8 = 0x02180015,
        YUV422_8_UYVY = 0x0210001F,
        YUV422_8 = 0x02100032, // YUYV
    };
    // The largest frame converted, in pixels a side: larger sizes come from a broken header.
    static constexpr int kMaxSide = 65535;

    // The format's name ("Mono8", "BayerRG16"...), or empty for a format not converted.
    static QString nameOf(std::uint32_t pixelFormat);
    static bool supports(std::uint32_t pixelFormat) { return !nameOf(pixelFormat).isEmpty(); }

    // Converts a frame of width x height pixels held in size bytes at data. The image's memory is
    // used again when its size and format already match (no allocation per frame while no one else
    // holds the image). False, with *error saying why, for a format not converted or a frame
    // shorter than its size needs; *image is then left as it was.
    static bool convert(std::uint32_t pixelFormat, int width, int height, const void* data, std::size_t size,
                        QImage* image, QString* error);
};

} // namespace browser
} // namespace vorn
