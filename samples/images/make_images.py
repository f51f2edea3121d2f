#!/usr/bin/env python3
"""Draws wood_color.png and wood_roughness.png: four planks whose pattern repeats without a seam.

Needs nothing but Python; the same bytes every time.
"""
import math
import struct
import zlib
from pathlib import Path

SIZE = 128  # pixels, both ways
PLANKS = 4


def write_png(path, channels, pixel):
    """Writes a picture whose pixel(u, v) gives `channels` values in 0..1."""
    rows = b""
    for y in range(SIZE):
        row = b"\0"  # no filter
        for x in range(SIZE):
            values = pixel(x / SIZE, y / SIZE)
            row += bytes(round(255 * min(max(value, 0), 1)) for value in values)
        rows += row

    def chunk(kind, data):
        checksum = zlib.crc32(kind + data)
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", checksum)

    kind_of_color = {1: 0, 3: 2}[channels]
    header = struct.pack(">IIBBBBB", SIZE, SIZE, 8, kind_of_color, 0, 0, 0)
    path.write_bytes(
        b"\x89PNG\r\n\x1a\n"
        + chunk(b"IHDR", header)
        + chunk(b"IDAT", zlib.compress(rows, 9))
        + chunk(b"IEND", b"")
    )


def grain(u, v):
    """0 to 1: rings along the planks, each plank shifted."""
    plank = int(v * PLANKS)
    bend = 0.08 * math.sin(2 * math.pi * (u + 0.37 * plank))
    rings = math.sin(2 * math.pi * (9 * (v + bend) + 0.21 * plank))
    fibre = 0.3 * math.sin(2 * math.pi * (40 * v + 3 * math.sin(2 * math.pi * u)))
    return 0.5 + 0.35 * rings + 0.15 * fibre


def is_gap(v):
    return (v * PLANKS) % 1 < 0.04


def color(u, v):
    if is_gap(v):
        return (0.12, 0.07, 0.04)
    g = grain(u, v)
    shade = 0.9 + 0.1 * math.sin(5.0 * int(v * PLANKS))
    return tuple(shade * (dark + g * (light - dark)) for dark, light in
                 ((0.36, 0.68), (0.20, 0.45), (0.09, 0.25)))


def roughness(u, v):
    return (0.9 if is_gap(v) else 0.55 - 0.2 * grain(u, v),)


if __name__ == "__main__":
    folder = Path(__file__).parent
    write_png(folder / "wood_color.png", 3, color)
    write_png(folder / "wood_roughness.png", 1, roughness)
