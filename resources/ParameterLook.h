#pragma once

// The look that the rows of the models and the editors of the delegate share: the type icons of the
// collection under ":/parameters/" and the fonts. Bold always means the application font with weight
// 75. The library's own; hosts never include it.

#include <QFont>
#include <QIcon>
#include <QVariant>

namespace vorn {
namespace core {
namespace look {

QFont boldFont();

// The bold fixed-width font of values that read best in columns (hex, addresses, strings). "Courier"
// is asked for first so that systems without "Consolas" still get a fixed-width family.
QFont fixedBoldFont();

// The type icon at a resource path, loaded once. A QIcon made from a file reads the image to learn its
// sizes, which would dominate building a large model; every row of a kind shares one icon instead.
QIcon typeIcon(const char* path);

// The fonts rows answer with, made once as variants that every answer shares. Made per call, a font
// variant is a heap copy, and a bold or fixed-width variant also a new font private each time. They are
// made again after QApplication::setFont.
struct RowFonts
{
    QVariant plain;     // the application font
    QVariant bold;      // boldFont()
    QVariant fixedBold; // fixedBoldFont()
    bool current = false;
};

const RowFonts& rowFonts();

} // namespace look
} // namespace core
} // namespace vorn
