#!/usr/bin/env python3
"""Writes the chunked files that the tests compare with, byte by byte from docs/formats/chunked-file.md and archive.md.
Run it in its own folder when the format grows; the files are kept, so that the tests need no Python."""

import struct


def write_files(form, order, padded):
    def numbers(codes, *values):
        return struct.pack(order + codes, *values)

    def string(text):
        return numbers("H", len(text) + 1) + text + b"\0"

    def chunk(name, body):
        return name + numbers("I", len(body)) + body + (b"\0" if padded and len(body) % 2 else b"")

    def array(*elements):
        return chunk(b"ARAY", numbers("i", len(elements)) + b"".join(chunk(b"elem", e) for e in elements))

    # bool, char, unsigned char, short, unsigned short, long, unsigned long, long long, unsigned long long, float, double
    plain = numbers("?cBhHiIqQfd", True, b"A", 200, -2, 65534, -3, 2**32 - 3, -(2**63), 2**64 - 2, 1.5, -0.1)
    objects = (
        numbers("ii", 10, -20)           # point
        + numbers("hd", 5, 0.25)         # tagged value of type 5, a double
        + numbers("q", 1234567890123)    # date
        + numbers("i", 11) + b"\x41\x04"  # bits 10000010001: the first bit is the lowest of the first byte
        + string(b"Gold")                # string object
    )
    body = plain + string(b"abc") + string(b"") + chunk(b"Kid1", b"\1\2\3") + chunk(b"Objs", objects)
    infos = array(string(b"a/b") + b"\1", string(b"") + b"\0")
    contents = array(numbers("q", 3) + b"a/b", numbers("q", 0))
    files = {"values": chunk(b"TEST", body) + chunk(b"END!", b""),
             "archive": chunk(b"VArc", chunk(b"Info", infos) + chunk(b"Data", contents))}
    for kind, written in files.items():
        with open(f"{kind}-{form}.bin", "wb") as file:
            file.write(written)


for order_name, order_code in (("be", ">"), ("le", "<")):
    write_files(order_name, order_code, False)
    write_files(order_name + "-padded", order_code, True)
