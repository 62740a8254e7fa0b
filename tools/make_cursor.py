#!/usr/bin/env python3
"""Draws Emberfallow's mouse cursor and writes it as a Windows cursor file (.cur).

The cursor is an arrow with its tip at the top left, which is also its hotspot:
an ember gradient, bright yellow at the tip to deep orange-red at the tail,
inside a dark outline. At 32 bits per pixel the edges are smoothed through the
alpha channel; at 24 bits and below every pixel is either arrow or transparent
(the transparency mask), and 1, 4 and 8 bits per pixel use a palette.

    tools/make_cursor.py                      # writes Data/Emberfallow_Cursor.cur
    tools/make_cursor.py --bits 8 --size 16 --size 32 out.cur

Only the Python standard library is used.
"""

import argparse
import os
import struct
import sys

# The arrow's outline on a 32-pixel grid, x right and y down, tip first.
ARROW = [(0.0, 0.0), (0.0, 23.0), (5.5, 17.5), (9.0, 27.0), (13.5, 25.0), (10.0, 16.5), (17.0, 16.5)]
OUTLINE_WIDTH = 1.4
OUTLINE = (36, 14, 6)
# The fill from the tip (t = 0) to the tail (t = 1).
GRADIENT = [(0.0, (255, 214, 90)), (0.5, (240, 120, 30)), (1.0, (176, 42, 14))]
SUPERSAMPLES = 4


def fill_colour(t):
    """The ember gradient at t in [0, 1]."""
    t = min(max(t, 0.0), 1.0)
    for (t0, c0), (t1, c1) in zip(GRADIENT, GRADIENT[1:]):
        if t <= t1:
            f = (t - t0) / (t1 - t0)
            return tuple(round(a + (b - a) * f) for a, b in zip(c0, c1))
    return GRADIENT[-1][1]


def inside(polygon, x, y):
    """Even-odd test of a point against the polygon."""
    result = False
    for (x0, y0), (x1, y1) in zip(polygon, polygon[1:] + polygon[:1]):
        if (y0 > y) != (y1 > y) and x < x0 + (y - y0) * (x1 - x0) / (y1 - y0):
            result = not result
    return result


def edge_distance(polygon, x, y):
    """Distance from a point to the nearest edge of the polygon."""
    best = float("inf")
    for (x0, y0), (x1, y1) in zip(polygon, polygon[1:] + polygon[:1]):
        dx, dy = x1 - x0, y1 - y0
        t = ((x - x0) * dx + (y - y0) * dy) / (dx * dx + dy * dy)
        t = min(max(t, 0.0), 1.0)
        best = min(best, ((x - x0 - t * dx) ** 2 + (y - y0 - t * dy) ** 2) ** 0.5)
    return best


def sample(polygon, scale, x, y):
    """The colour at a point, or None outside the arrow."""
    if not inside(polygon, x, y):
        return None
    if edge_distance(polygon, x, y) < OUTLINE_WIDTH * scale:
        return OUTLINE
    tail = max(py for _, py in polygon)
    return fill_colour(y / tail)


def draw(size, smooth, levels=None):
    """Rows of (r, g, b, a) pixels, top row first. Without `smooth` each pixel is
    sampled at its centre; `levels` limits the fill to that many colours."""
    scale = size / 32.0
    polygon = [(x * scale, y * scale) for x, y in ARROW]
    steps = SUPERSAMPLES if smooth else 1
    rows = []
    for py in range(size):
        row = []
        for px in range(size):
            covered = []
            for sy in range(steps):
                for sx in range(steps):
                    colour = sample(polygon, scale, px + (sx + 0.5) / steps, py + (sy + 0.5) / steps)
                    if colour is not None:
                        covered.append(colour)
            if not covered:
                row.append((0, 0, 0, 0))
                continue
            r, g, b = (round(sum(c[i] for c in covered) / len(covered)) for i in range(3))
            if levels is not None and (r, g, b) != OUTLINE:
                t = round((py + 0.5) / size * (levels - 1)) / max(levels - 1, 1) if levels > 1 else 0.5
                r, g, b = fill_colour(t)
            row.append((r, g, b, round(255 * len(covered) / (steps * steps))))
        rows.append(row)
    return rows


def row_bytes(width, bits):
    """Bytes of one bitmap row, padded to whole 32-bit words."""
    return (width * bits + 31) // 32 * 4


def pack_row(values, bits, width):
    """Packs 1, 4 or 8-bit values into one padded bitmap row, first pixel in the high bits."""
    out = bytearray(row_bytes(width, bits))
    for x, value in enumerate(values):
        bit = x * bits
        out[bit // 8] |= value << (8 - bits - bit % 8)
    return bytes(out)


def encode_image(rows, bits):
    """One cursor image: bitmap header, palette, colour rows and mask, bottom row first."""
    size = len(rows)
    palette = []
    if bits <= 8:
        palette = [OUTLINE]
        for row in rows:
            for r, g, b, a in row:
                if a and (r, g, b) not in palette:
                    palette.append((r, g, b))
        if len(palette) > 1 << bits:
            raise ValueError(f"{len(palette)} colours do not fit {bits} bits per pixel")
    colour = bytearray()
    mask = bytearray()
    for row in reversed(rows):
        if bits == 32:
            colour += b"".join(bytes((b, g, r, a)) for r, g, b, a in row)
        elif bits == 24:
            colour += b"".join(bytes((b, g, r) if a else (0, 0, 0)) for r, g, b, a in row)
            colour += bytes(row_bytes(size, 24) - size * 3)
        else:
            colour += pack_row([palette.index((r, g, b)) if a else 0 for r, g, b, a in row], bits, size)
        mask += pack_row([0 if a else 1 for _, _, _, a in row], 1, size)
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, bits, 0, len(colour) + len(mask), 0, 0,
                         len(palette), 0)
    table = b"".join(bytes((b, g, r, 0)) for r, g, b in palette)
    return header + table + bytes(colour) + bytes(mask)


def encode_cursor(sizes, bits):
    """A whole .cur file with one arrow image per size, hotspot at the tip."""
    images = []
    for size in sizes:
        smooth = bits == 32
        levels = None if bits >= 24 else max(1, min(8, (1 << bits) - 1))
        images.append((size, encode_image(draw(size, smooth, levels), bits)))
    out = bytearray(struct.pack("<HHH", 0, 2, len(images)))
    offset = 6 + 16 * len(images)
    for size, image in images:
        out += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 0, 0, len(image), offset)
        offset += len(image)
    for _, image in images:
        out += image
    return bytes(out)


def main():
    root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    parser = argparse.ArgumentParser(description="Writes Emberfallow's arrow cursor as a .cur file.")
    parser.add_argument("output", nargs="?", default=os.path.join(root, "Data", "Emberfallow_Cursor.cur"))
    parser.add_argument("--bits", type=int, default=32, choices=[1, 4, 8, 24, 32], help="bits per pixel")
    parser.add_argument("--size", type=int, action="append", help="width and height, 8 to 256; repeat for more images")
    args = parser.parse_args()
    sizes = args.size or [32]
    if any(size < 8 or size > 256 for size in sizes):
        parser.error("sizes run from 8 to 256")
    data = encode_cursor(sizes, args.bits)
    with open(args.output, "wb") as file:
        file.write(data)
    print(f"{args.output}: {len(data)} bytes, {args.bits} bits per pixel, sizes {sizes}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
