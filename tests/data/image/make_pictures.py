#!/usr/bin/env python3
"""Writes the PNG files beside it and the pixels of all PNG and JPEG files (see README.md). Run it here."""
import pathlib
import struct
import subprocess
import zlib

GREY, RGB, PALETTE, GREY_ALPHA, RGBA = 0, 2, 3, 4, 6
CHANNELS = {GREY: 1, RGB: 3, PALETTE: 1, GREY_ALPHA: 2, RGBA: 4}
PASSES = ((0, 0, 8, 8), (4, 0, 8, 8), (0, 4, 4, 8), (2, 0, 4, 4), (0, 2, 2, 4), (1, 0, 2, 2), (0, 1, 1, 2))


def chunk(name, body):
    return struct.pack(">I", len(body)) + name + body + struct.pack(">I", zlib.crc32(name + body))


def sample(x, y, channel, depth):
    """Some value of every channel, small steps and large ones."""
    return (x * (7 + channel) * 997 + y * (13 - channel) * 1999 + x * y * 31) % 65536 >> (16 - depth)


def filtered(kind, row, above, step):
    out = bytearray([kind])
    for i, value in enumerate(row):
        a = row[i - step] if i >= step else 0
        b = above[i]
        c = above[i - step] if i >= step else 0
        paeth = min((a, b, c), key=lambda p: abs(a + b - c - p))
        out.append((value - (0, a, b, (a + b) // 2, paeth)[kind]) % 256)
    return bytes(out)


def scan_lines(width, height, kind, depth, interlaced):
    """Every row of every pass, each with another filter."""
    out = b""
    for x0, y0, dx, dy in PASSES if interlaced else ((0, 0, 1, 1),):
        columns = range(x0, width, dx)
        bits = len(columns) * CHANNELS[kind] * depth
        above = bytes((bits + 7) // 8)
        for n, y in enumerate(range(y0, height, dy)):
            if not columns:
                break
            number = 0
            for x in columns:
                for channel in range(CHANNELS[kind]):
                    number = number << depth | sample(x, y, channel, depth)
            row = (number << -bits % 8).to_bytes((bits + 7) // 8, "big")
            out += filtered(n % 5, row, above, max(1, CHANNELS[kind] * depth // 8))
            above = row
    return out


def write_pixels(name, pixels):
    def eight(value, depth):
        most = (1 << depth) - 1
        return (value * 255 * 2 + most) // (2 * most)

    def word(red, green, blue, alpha, depth):
        a = eight(alpha, depth)
        return bytes([*((eight(c, depth) * a * 2 + 255) // 510 for c in (blue, green, red)), a])

    pathlib.Path(f"{name}.bgra").write_bytes(b"".join(word(*pixel) for pixel in pixels))


def png(name, width, height, kind, depth, interlaced=False, transparent=None, parts=1, before=b"", after=b""):
    """`transparent`: a grey, a colour, or how many entries of the palette get an alpha of their own."""
    data = zlib.compress(scan_lines(width, height, kind, depth, interlaced), 9)
    size = -(-len(data) // parts)
    palette = [(i * 37 % 256, i * 91 % 256, 255 - i % 256) for i in range(1 << min(depth, 8))]
    file = b"\x89PNG\r\n\x1a\n"
    file += chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, depth, kind, 0, 0, interlaced))
    if kind == PALETTE:
        file += chunk(b"PLTE", b"".join(map(bytes, palette)))
    if kind == PALETTE and transparent:
        file += chunk(b"tRNS", bytes(i * 60 % 256 for i in range(transparent)))
    elif transparent:
        file += chunk(b"tRNS", struct.pack(f">{len(transparent)}H", *transparent))
    file += before
    file += b"".join(chunk(b"IDAT", data[i : i + size]) for i in range(0, len(data), size))
    file += after + chunk(b"IEND", b"")
    pathlib.Path(f"{name}.png").write_bytes(file)

    def pixel(x, y):
        values = tuple(sample(x, y, channel, depth) for channel in range(CHANNELS[kind]))
        if kind == PALETTE:
            index = values[0]
            return (*palette[index], index * 60 % 256 if index < (transparent or 0) else 255, 8)
        alpha = values[-1] if kind in (GREY_ALPHA, RGBA) else 0 if values == transparent else (1 << depth) - 1
        colour = values[:1] * 3 if kind in (GREY, GREY_ALPHA) else values[:3]
        return (*colour, alpha, depth)

    write_pixels(name, (pixel(x, y) for y in range(height) for x in range(width)))


W, H = 19, 13
# An animation: its first frame is the picture, the second is skipped.
CONTROL = struct.pack(">IIIIIHHBB", 0, W, H, 0, 0, 1, 10, 0, 0)
SECOND = struct.pack(">I", 2) + zlib.compress(bytes((W * 4 + 1) * H))
for name, kind, depth, options in (
        ("grey-1", GREY, 1, {}), ("grey-2", GREY, 2, {"transparent": (2,)}),
        ("grey-4", GREY, 4, {"interlaced": True}),
        ("grey-8", GREY, 8, {"transparent": (sample(3, 2, 0, 8),)}),
        ("grey-16", GREY, 16, {"interlaced": True, "transparent": (sample(5, 4, 0, 16),)}),
        ("palette-1", PALETTE, 1, {"interlaced": True}), ("palette-2", PALETTE, 2, {"transparent": 3}),
        ("palette-4", PALETTE, 4, {}), ("palette-8", PALETTE, 8, {"interlaced": True, "transparent": 200}),
        ("rgb-8", RGB, 8, {"parts": 9}),
        ("rgb-16", RGB, 16, {"transparent": tuple(sample(7, 6, c, 16) for c in range(3))}),
        ("grey-alpha-8", GREY_ALPHA, 8, {"interlaced": True}), ("grey-alpha-16", GREY_ALPHA, 16, {}),
        ("rgba-8", RGBA, 8, {}), ("rgba-8-interlaced", RGBA, 8, {"interlaced": True}),
        ("rgba-16", RGBA, 16, {"interlaced": True}),
    ("animation", RGBA, 8, {"before": chunk(b"acTL", struct.pack(">II", 2, 0)) + chunk(b"fcTL", CONTROL),
                            "after": chunk(b"fcTL", b"\0\0\0\1" + CONTROL[4:]) + chunk(b"fdAT", SECOND)})):
    png(name, W, H, kind, depth, **options)
png("one-pixel", 1, 1, RGBA, 8, interlaced=True)
png("tall", 1, 300, GREY, 8)
for path in sorted(pathlib.Path().glob("*.jpg")):
    raw = subprocess.run(["convert-im6.q16", path, "-depth", "16", "-endian", "MSB", "rgba:-"], check=True,
                         stdout=subprocess.PIPE).stdout
    write_pixels(path.stem, (struct.unpack(">4H", raw[i : i + 8]) + (16,) for i in range(0, len(raw), 8)))
