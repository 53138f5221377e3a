#!/usr/bin/env python3
"""Writes the chunked files that the tests compare with, byte by byte from the description of the format
(docs/formats/chunked-file.md and archive.md). Run it in its own folder when the format grows; the files are
kept, so that the tests need no Python."""

import struct


class Maker:
    """One file: its byte order ('>' or '<') and whether odd bodies are padded."""

    def __init__(self, order, padded):
        self.order = order
        self.padded = padded

    def number(self, code, value):
        return struct.pack(self.order + code, value)

    def string(self, text):
        body = text + b"\0"
        return self.number("H", len(body)) + body

    def chunk(self, name, body):
        pad = b"\0" if self.padded and len(body) % 2 else b""
        return name + self.number("I", len(body)) + body + pad

    def values(self):
        """One value of each kind, a child of odd length, a child of objects; then an empty chunk."""
        n = self.number
        plain = (
            b"\x01"                       # bool
            + b"A"                        # char
            + b"\xc8"                     # unsigned char 200
            + n("h", -2)                  # short
            + n("H", 65534)               # unsigned short
            + n("i", -3)                  # long
            + n("I", 4294967293)          # unsigned long
            + n("q", -(2**63))            # long long
            + n("Q", 2**64 - 2)           # unsigned long long
            + n("f", 1.5)                 # float
            + n("d", -0.1)                # double
            + self.string(b"abc")
            + self.string(b"")            # a null string
        )
        objects = (
            n("i", 10) + n("i", -20)      # point
            + n("h", 5) + n("d", 0.25)    # tagged value of type 5, a double
            + n("q", 1234567890123)       # date
            + n("i", 11) + b"\x41\x04"    # bits 10000010001: the first bit is the lowest of the first byte
            + self.string(b"Gold")        # string object
        )
        body = plain + self.chunk(b"Kid1", b"\x01\x02\x03") + self.chunk(b"Objs", objects)
        return self.chunk(b"TEST", body) + self.chunk(b"END!", b"")

    def archive(self):
        """Two descriptions and two contents."""
        n = self.number

        def array(elements):
            body = n("i", len(elements)) + b"".join(self.chunk(b"elem", e) for e in elements)
            return self.chunk(b"ARAY", body)

        infos = [self.string(b"a/b") + b"\x01", self.string(b"") + b"\x00"]
        contents = [n("q", 3) + b"a/b", n("q", 0)]
        return self.chunk(b"VArc", self.chunk(b"Info", array(infos)) + self.chunk(b"Data", array(contents)))


for order_name, order in (("be", ">"), ("le", "<")):
    for pad_name, padded in (("", False), ("-padded", True)):
        maker = Maker(order, padded)
        for kind in ("values", "archive"):
            with open(f"{kind}-{order_name}{pad_name}.bin", "wb") as file:
                file.write(getattr(maker, kind)())
