#!/usr/bin/env python3
"""Writes the Targa files beside it.

saved.tga, saved_flipped.tga: what the saver must write for the picture of 3 x 2 pixels below, put together byte by
byte from the format. pillow_*.tga: pictures that another program (Pillow) saved; its tests' expectations come from
the same formula, not from the files.
"""
import struct

FOOTER = struct.pack("<II", 0, 0) + b"TRUEVISION-XFILE.\0"

# Alpha, red, green, blue, from the top row to the bottom row.
ROWS = [
    [(0xFF, 0x10, 0x20, 0x30), (0x80, 0x40, 0x00, 0x7F), (0x00, 0x00, 0x00, 0x00)],
    [(0xFF, 0xFF, 0xFF, 0xFF), (0xFE, 0x01, 0x02, 0x03), (0x01, 0x01, 0x00, 0x01)],
]


def saved(rows):
    header = struct.pack("<BBB5xHHHHBB", 0, 0, 2, 0, 0, 3, 2, 32, 8)
    pixels = b"".join(bytes((b, g, r, a)) for row in rows for a, r, g, b in row)
    return header + pixels + FOOTER


def formula(x, y):
    """Red, green, blue and alpha of a test picture's pixel."""
    return x * 20 % 256, y * 35 % 256, (x * 7 + y * 11) % 256, (x * 40 + y * 3) % 256


def with_pillow():
    from PIL import Image

    for mode, name in (("L", "grey"), ("RGB", "colour"), ("RGBA", "alpha")):
        image = Image.new(mode, (13, 7))
        for y in range(7):
            for x in range(13):
                pixel = formula(x, y)
                image.putpixel((x, y), pixel[0] if mode == "L" else pixel[: len(mode)])
        image.save(f"pillow_{name}.tga")


with open("saved.tga", "wb") as file:
    file.write(saved(ROWS))
with open("saved_flipped.tga", "wb") as file:
    file.write(saved(ROWS[::-1]))
with_pillow()
