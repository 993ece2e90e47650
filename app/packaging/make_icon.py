#!/usr/bin/env python3
"""Draws the parameter browser's icon as SVG and as PNG files of the sizes desktops ask for.

The icon is a few plain shapes (a badge, a tree of three rows, a lens), kept in one list so that the
SVG and the PNG files cannot drift apart. The PNG files are rasterised here with 4x4 supersampling
and written with zlib, so that regenerating them needs nothing beyond Python. Run it from any
directory; it writes next to itself: vorn-parameter-browser.svg and vorn-parameter-browser-<N>.png.
"""

import os
import struct
import zlib

NAME = "vorn-parameter-browser"
SIZES = (48, 128)

# The shapes on a 128 x 128 canvas, painted in order: (kind, geometry..., colour).
BADGE = "#1f4e79"
WHITE = "#ffffff"
AMBER = "#f2a531"
SHAPES = [
    ("rounded", 4, 4, 120, 120, 24, BADGE),
    # The tree: a category row, then two feature rows hanging off its connector.
    ("rect", 22, 28, 12, 12, WHITE),
    ("rect", 40, 31, 40, 6, WHITE),
    ("rect", 27, 40, 3, 44, WHITE),
    ("rect", 27, 59, 13, 3, WHITE),
    ("rect", 27, 81, 13, 3, WHITE),
    ("rect", 42, 56, 9, 9, WHITE),
    ("rect", 42, 78, 9, 9, WHITE),
    # The lens.
    ("circle", 88, 86, 24, WHITE),
    ("circle", 88, 86, 17, BADGE),
    ("circle", 88, 86, 10, AMBER),
]


def rgb(colour):
    return tuple(int(colour[i : i + 2], 16) for i in (1, 3, 5))


def inside(shape, x, y):
    kind = shape[0]
    if kind == "rect":
        _, left, top, width, height, _ = shape
        return left <= x < left + width and top <= y < top + height
    if kind == "circle":
        _, cx, cy, radius, _ = shape
        return (x - cx) ** 2 + (y - cy) ** 2 <= radius * radius
    _, left, top, width, height, radius, _ = shape
    if not (left <= x < left + width and top <= y < top + height):
        return False
    # Distance to the nearest corner's centre, for points in a corner square.
    cx = min(max(x, left + radius), left + width - radius)
    cy = min(max(y, top + radius), top + height - radius)
    return (x - cx) ** 2 + (y - cy) ** 2 <= radius * radius


def svg():
    parts = ['<svg xmlns="http://www.w3.org/2000/svg" width="128" height="128" viewBox="0 0 128 128">']
    for shape in SHAPES:
        kind, colour = shape[0], shape[-1]
        if kind == "rect":
            parts.append('  <rect x="%d" y="%d" width="%d" height="%d" fill="%s"/>' % (shape[1:5] + (colour,)))
        elif kind == "circle":
            parts.append('  <circle cx="%d" cy="%d" r="%d" fill="%s"/>' % (shape[1:4] + (colour,)))
        else:
            parts.append(
                '  <rect x="%d" y="%d" width="%d" height="%d" rx="%d" fill="%s"/>' % (shape[1:6] + (colour,))
            )
    parts.append("</svg>")
    return "\n".join(parts) + "\n"


def pixels(size):
    scale = 128.0 / size
    steps = 4
    rows = []
    for py in range(size):
        row = bytearray()
        for px in range(size):
            red = green = blue = alpha = 0.0
            for sy in range(steps):
                for sx in range(steps):
                    x = (px + (sx + 0.5) / steps) * scale
                    y = (py + (sy + 0.5) / steps) * scale
                    colour = None
                    for shape in SHAPES:
                        if inside(shape, x, y):
                            colour = shape[-1]
                    if colour is None:
                        continue
                    r, g, b = rgb(colour)
                    red, green, blue, alpha = red + r, green + g, blue + b, alpha + 1
            samples = steps * steps
            if alpha:
                row += bytes((round(red / alpha), round(green / alpha), round(blue / alpha)))
            else:
                row += bytes((0, 0, 0))
            row.append(round(255 * alpha / samples))
        rows.append(bytes(row))
    return rows


def png(size):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    raw = b"".join(b"\x00" + row for row in pixels(size))
    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b"")


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(here, NAME + ".svg"), "w") as out:
        out.write(svg())
    for size in SIZES:
        with open(os.path.join(here, "%s-%d.png" % (NAME, size)), "wb") as out:
            out.write(png(size))


if __name__ == "__main__":
    main()
