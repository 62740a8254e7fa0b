#!/usr/bin/env python3
"""Draws Emberfallow's textures and writes them as PNG files into Data/3DTextures/.

The game is low-poly with flat colours and biome tints, so the textures are
small and quiet: a little value noise on a base colour, so that lighting has
something to catch.

    MISSING_TEXTURE.png  64x64  magenta and black checker, shown for any texture
                                that cannot be found or read
    white.png            4x4    plain white, for surfaces coloured by tint alone
    stone_floor.png      128x128 grey flagstones with dark joints
    cave_wall.png        128x128 ochre rock in sloping strata (cave biome)
    moss.png             64x64  moss green tint with lighter speckles (cave biome)
    ice.png              128x128 pale blue with white cracks (ice biome)
    lava.png             128x128 black rock with orange glowing veins (lava biome)
    flat_normal.png      4x4    a normal map pointing straight out (128, 128, 255)

Colour space: the colour pictures (white, stone_floor, cave_wall, moss, ice,
lava) are written with an sRGB chunk, so the engine makes them as sRGB
textures and shaders read linear values. MISSING_TEXTURE.png and
flat_normal.png have no sRGB chunk and are read as linear values: the checker
is pure magenta and black either way, and a normal map holds directions, not
colours.

    tools/make_textures.py                 # writes Data/3DTextures/
    tools/make_textures.py --out some/folder

The noise is seeded, so every run writes the same bytes. Only the Python
standard library is used (zlib and struct for the PNG files).
"""

import argparse
import math
import os
import random
import struct
import zlib


def png_bytes(width, height, rows, channels, srgb):
    """A PNG file of 8-bit RGB (channels 3) or RGBA (channels 4) rows, each a bytes object."""

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

    colour_type = 2 if channels == 3 else 6
    out = b"\x89PNG\r\n\x1a\n"
    out += chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, colour_type, 0, 0, 0))
    if srgb:
        # Rendering intent 0, perceptual.
        out += chunk(b"sRGB", b"\x00")
    raw = b"".join(b"\x00" + row for row in rows)
    out += chunk(b"IDAT", zlib.compress(raw, 9))
    out += chunk(b"IEND", b"")
    return out


class ValueNoise:
    """Smooth value noise on a grid that wraps, so the textures tile."""

    def __init__(self, seed, cells):
        rng = random.Random(seed)
        self.cells = cells
        self.values = [[rng.random() for _ in range(cells)] for _ in range(cells)]

    def at(self, u, v):
        """The noise at (u, v) in [0, 1) texture space, in [0, 1]."""
        x = u * self.cells
        y = v * self.cells
        x0 = int(math.floor(x))
        y0 = int(math.floor(y))
        fx = x - x0
        fy = y - y0
        fx = fx * fx * (3 - 2 * fx)
        fy = fy * fy * (3 - 2 * fy)
        n = self.cells
        a = self.values[y0 % n][x0 % n]
        b = self.values[y0 % n][(x0 + 1) % n]
        c = self.values[(y0 + 1) % n][x0 % n]
        d = self.values[(y0 + 1) % n][(x0 + 1) % n]
        top = a + (b - a) * fx
        bottom = c + (d - c) * fx
        return top + (bottom - top) * fy


def fractal(seed, octaves, cells):
    """Octaves of value noise, each twice as fine and half as strong; in [0, 1]."""
    layers = [ValueNoise(seed + i, cells << i) for i in range(octaves)]
    total = sum(0.5 ** i for i in range(octaves))

    def at(u, v):
        return sum(layer.at(u, v) * 0.5 ** i for i, layer in enumerate(layers)) / total

    return at


def clamp_byte(value):
    return max(0, min(255, int(round(value))))


def mix(a, b, t):
    t = max(0.0, min(1.0, t))
    return tuple(x + (y - x) * t for x, y in zip(a, b))


def draw(size, colour_at):
    """Rows of RGB bytes from colour_at(u, v) -> (r, g, b) floats in 0..255."""
    rows = []
    for y in range(size):
        row = bytearray()
        for x in range(size):
            r, g, b = colour_at((x + 0.5) / size, (y + 0.5) / size)
            row += bytes((clamp_byte(r), clamp_byte(g), clamp_byte(b)))
        rows.append(bytes(row))
    return rows


def missing_texture():
    size, square = 64, 8
    rows = []
    for y in range(size):
        row = bytearray()
        for x in range(size):
            magenta = (x // square + y // square) % 2 == 0
            row += bytes((255, 0, 255, 255) if magenta else (0, 0, 0, 255))
        rows.append(bytes(row))
    return png_bytes(size, size, rows, 4, srgb=False)


def white():
    return png_bytes(4, 4, [b"\xff" * 12] * 4, 3, srgb=True)


def flat_normal():
    return png_bytes(4, 4, [bytes((128, 128, 255)) * 4] * 4, 3, srgb=False)


def stone_floor():
    noise = fractal(11, 3, 8)
    tiles = 4
    rng = random.Random(12)
    shades = [[rng.uniform(-14, 14) for _ in range(tiles)] for _ in range(tiles)]

    def colour(u, v):
        tx, ty = u * tiles, v * tiles
        # Each other row of flagstones is offset by half a stone.
        if int(ty) % 2 == 1:
            tx += 0.5
        fx, fy = tx % 1.0, ty % 1.0
        edge = min(fx, 1 - fx, fy, 1 - fy)
        base = 118 + shades[int(ty) % tiles][int(tx) % tiles] + (noise(u, v) - 0.5) * 40
        if edge < 0.035:
            base = 52 + (noise(u, v) - 0.5) * 16
        return (base, base * 0.98, base * 0.95)

    return png_bytes(128, 128, draw(128, colour), 3, srgb=True)


def cave_wall():
    noise = fractal(21, 4, 4)
    dark, light = (92, 64, 30), (176, 128, 62)

    def colour(u, v):
        n = noise(u, v)
        # Strata sloping across the texture, wrapped so that it tiles.
        band = 0.5 + 0.5 * math.sin(2 * math.pi * (3 * v + u) + 4 * n)
        return mix(dark, light, 0.25 + 0.5 * band * 0.6 + (n - 0.5) * 0.5)

    return png_bytes(128, 128, draw(128, colour), 3, srgb=True)


def moss():
    noise = fractal(31, 3, 8)
    rng = random.Random(32)
    speckles = {(rng.randrange(64), rng.randrange(64)) for _ in range(90)}
    deep, fresh = (48, 82, 34), (104, 142, 58)

    def colour(u, v):
        c = mix(deep, fresh, noise(u, v) * 1.3 - 0.15)
        if (int(u * 64), int(v * 64)) in speckles:
            c = mix(c, (160, 186, 96), 0.6)
        return c

    return png_bytes(64, 64, draw(64, colour), 3, srgb=True)


def ice():
    noise = fractal(41, 3, 4)
    cracks = fractal(42, 2, 6)
    pale, deep = (206, 232, 246), (150, 196, 226)

    def colour(u, v):
        c = mix(deep, pale, noise(u, v) * 1.2 - 0.1)
        # Cracks where a second noise crosses one half: thin bright lines.
        line = abs(cracks(u, v) - 0.5)
        if line < 0.012:
            c = mix(c, (250, 253, 255), 0.85)
        return c

    return png_bytes(128, 128, draw(128, colour), 3, srgb=True)


def lava():
    rock = fractal(51, 3, 8)
    veins = fractal(52, 3, 4)
    black, ember, glow = (22, 18, 18), (214, 64, 10), (255, 178, 40)

    def colour(u, v):
        c = mix(black, (46, 38, 36), rock(u, v))
        heat = 1.0 - abs(veins(u, v) - 0.5) * 14
        if heat > 0:
            c = mix(c, mix(ember, glow, heat), min(1.0, heat * 1.6))
        return c

    return png_bytes(128, 128, draw(128, colour), 3, srgb=True)


TEXTURES = {
    "MISSING_TEXTURE.png": missing_texture,
    "white.png": white,
    "flat_normal.png": flat_normal,
    "stone_floor.png": stone_floor,
    "cave_wall.png": cave_wall,
    "moss.png": moss,
    "ice.png": ice,
    "lava.png": lava,
}


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out", default=os.path.join(here, "..", "Data", "3DTextures"),
                        help="the folder to write into (default Data/3DTextures/)")
    args = parser.parse_args()
    os.makedirs(args.out, exist_ok=True)
    for name, make in TEXTURES.items():
        data = make()
        with open(os.path.join(args.out, name), "wb") as file:
            file.write(data)
        print(f"{name}: {len(data)} bytes")


if __name__ == "__main__":
    main()
