#!/usr/bin/env python3
"""Draws tile_color.png and tile_normal.png: one glazed tile with its joint, without a seam.

Needs nothing but Python; the same bytes every time.
"""
import math
import struct
import zlib
from pathlib import Path

SIZE = 64  # pixels, both ways
JOINT = 0.06  # half the width of the joint around a tile, of the tile's size


def write_png(path, pixel):
    """Writes a colour picture whose pixel(u, v) gives three values in 0..1."""
    rows = b""
    for y in range(SIZE):
        rows += b"\0"  # no filter
        for x in range(SIZE):
            values = pixel((x + 0.5) / SIZE, (y + 0.5) / SIZE)
            rows += bytes(round(255 * min(max(value, 0), 1)) for value in values)

    def chunk(kind, data):
        checksum = zlib.crc32(kind + data)
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", checksum)

    path.write_bytes(
        b"\x89PNG\r\n\x1a\n"
        + chunk(b"IHDR", struct.pack(">IIBBBBB", SIZE, SIZE, 8, 2, 0, 0, 0))
        + chunk(b"IDAT", zlib.compress(rows, 9))
        + chunk(b"IEND", b"")
    )


def edge(position):
    """How far outside of the flat face, 0 to 1, with the sign of the side."""
    distance = abs(position - 0.5) - (0.5 - 2 * JOINT)
    return math.copysign(min(max(distance / JOINT, 0), 1), position - 0.5)


def is_joint(u, v):
    return max(abs(u - 0.5), abs(v - 0.5)) > 0.5 - JOINT


def color(u, v):
    if is_joint(u, v):
        return (0.72, 0.70, 0.66)
    cloud = 0.5 + 0.25 * math.sin(2 * math.pi * u) + 0.25 * math.sin(2 * math.pi * v)
    return (0.05 + 0.10 * cloud, 0.30 + 0.15 * cloud, 0.50 + 0.15 * cloud)


def normal(u, v):
    """The rim slopes down to the joint; v of a lookup runs up, rows of the picture run down."""
    x, y = (0, 0) if is_joint(u, v) else (0.6 * edge(u), -0.6 * edge(v))
    z = math.sqrt(max(1 - x * x - y * y, 0.0))
    return (0.5 + 0.5 * x, 0.5 + 0.5 * y, 0.5 + 0.5 * z)


if __name__ == "__main__":
    folder = Path(__file__).parent
    write_png(folder / "tile_color.png", color)
    write_png(folder / "tile_normal.png", normal)
