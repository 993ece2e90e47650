#!/usr/bin/env python3
"""Draws the six 10x10 parameter type icons and writes them as PNG files.

Each icon is a rounded badge: a dark outline, a saturated fill and a white glyph. The dark outline
keeps the badge visible on light palettes, the fill and the white glyph on dark ones.

The PNG encoder is written out here (zlib + struct) rather than taken from an imaging library, so
that every file gets exactly the colour type and bit depth the resource collection expects:
truecolour with alpha for string, boolean and integer, a 4-bit palette for float and enumeration,
and grey with alpha for command. Run it from any directory; it writes next to itself.
"""

import os
import struct
import sys
import zlib

SIZE = 10

# Pixel maps: '.' transparent, 'o' outline, 'f' fill, 'w' glyph.
GLYPHS = {
    # A capital T: text.
    "string": [
        ".oooooooo.",
        "offffffffo",
        "ofwwwwwwfo",
        "ofwwwwwwfo",
        "offfwwfffo",
        "offfwwfffo",
        "offfwwfffo",
        "offfwwfffo",
        "offffffffo",
        ".oooooooo.",
    ],
    # A decimal point followed by a digit: a fraction.
    "float": [
        ".oooooooo.",
        "offffwwwfo",
        "offfwfffwo",
        "offfwfffwo",
        "offfwfffwo",
        "offfwfffwo",
        "owwfwfffwo",
        "owwffwwwfo",
        "offffffffo",
        ".oooooooo.",
    ],
    # Three list entries with bullets: a choice among named values.
    "enumeration": [
        ".oooooooo.",
        "offffffffo",
        "ofwfwwwwfo",
        "offffffffo",
        "ofwfwwwwfo",
        "offffffffo",
        "ofwfwwwwfo",
        "offffffffo",
        "offffffffo",
        ".oooooooo.",
    ],
    # A play triangle: something to run.
    "command": [
        ".oooooooo.",
        "offffffffo",
        "offwfffffo",
        "offwwffffo",
        "offwwwfffo",
        "offwwwfffo",
        "offwwffffo",
        "offwfffffo",
        "offffffffo",
        ".oooooooo.",
    ],
    # A check mark: on or off.
    "boolean": [
        ".oooooooo.",
        "offffffffo",
        "offffffwfo",
        "offfffwwfo",
        "ofwffwwffo",
        "ofwwwwfffo",
        "offwwffffo",
        "offffffffo",
        "offffffffo",
        ".oooooooo.",
    ],
    # A number sign: a whole number.
    "integer": [
        ".oooooooo.",
        "offffffffo",
        "offwffwffo",
        "ofwwwwwwfo",
        "offwffwffo",
        "offwffwffo",
        "ofwwwwwwfo",
        "offwffwffo",
        "offffffffo",
        ".oooooooo.",
    ],
}

# Outline and fill colours (RGB); the glyph is always white.
COLOURS = {
    "string": ((0x14, 0x52, 0x22), (0x2E, 0x9E, 0x44)),
    "float": ((0x7A, 0x3F, 0x00), (0xE0, 0x7B, 0x00)),
    "enumeration": ((0x45, 0x23, 0x6B), (0x8A, 0x4F, 0xC7)),
    "command": ((0x28, 0x28, 0x28), (0x78, 0x78, 0x78)),
    "boolean": ((0x17, 0x3A, 0x75), (0x2F, 0x6F, 0xD6)),
    "integer": ((0x6E, 0x1A, 0x1A), (0xD1, 0x3B, 0x3B)),
}
WHITE = (0xFF, 0xFF, 0xFF)

# PNG colour type and bit depth of each file.
FORMATS = {
    "string": (6, 8),
    "float": (3, 4),
    "enumeration": (3, 4),
    "command": (4, 8),
    "boolean": (6, 8),
    "integer": (6, 8),
}


def chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)


def encode(rows, colour_type, depth, palette=None, alphas=None):
    """rows: list of byte strings, one scanline each without the filter byte."""
    raw = b"".join(b"\x00" + row for row in rows)
    out = b"\x89PNG\r\n\x1a\n"
    out += chunk(b"IHDR", struct.pack(">IIBBBBB", SIZE, SIZE, depth, colour_type, 0, 0, 0))
    if palette is not None:
        out += chunk(b"PLTE", b"".join(bytes(c) for c in palette))
        out += chunk(b"tRNS", bytes(alphas))
    out += chunk(b"IDAT", zlib.compress(raw, 9))
    out += chunk(b"IEND", b"")
    return out


def draw(name):
    pixels = GLYPHS[name]
    assert len(pixels) == SIZE and all(len(r) == SIZE for r in pixels), name
    outline, fill = COLOURS[name]
    colour_type, depth = FORMATS[name]
    legend = {"o": outline, "f": fill, "w": WHITE}

    if colour_type == 6:
        rows = []
        for line in pixels:
            row = b""
            for p in line:
                row += bytes((0, 0, 0, 0)) if p == "." else bytes(legend[p] + (0xFF,))
            rows.append(row)
        return encode(rows, 6, 8)

    if colour_type == 4:
        # Grey levels: the outline and fill colours are neutral, so their red channel is the grey.
        rows = []
        for line in pixels:
            row = b""
            for p in line:
                row += bytes((0, 0)) if p == "." else bytes((legend[p][0], 0xFF))
            rows.append(row)
        return encode(rows, 4, 8)

    assert colour_type == 3 and depth == 4
    # Index 0 is the transparent background; two pixels share a byte, high nibble first.
    palette = [(0, 0, 0), outline, fill, WHITE]
    alphas = [0, 0xFF, 0xFF, 0xFF]
    index = {".": 0, "o": 1, "f": 2, "w": 3}
    rows = []
    for line in pixels:
        nibbles = [index[p] for p in line]
        rows.append(bytes((nibbles[i] << 4) | nibbles[i + 1] for i in range(0, SIZE, 2)))
    return encode(rows, 3, 4, palette, alphas)


def main():
    target = os.path.dirname(os.path.abspath(__file__))
    for name in GLYPHS:
        with open(os.path.join(target, name + ".png"), "wb") as f:
            f.write(draw(name))
    return 0


if __name__ == "__main__":
    sys.exit(main())
