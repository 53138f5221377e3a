#!/usr/bin/env python3
"""Runs the photo catalogue as its users do: made, loaded again, damaged, interrupted.
Usage: catalogue_test.py PROGRAM FOLDER-WITH-PICTURES"""

import os
import re
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

PROGRAM, DATA = sys.argv[1:3]
FILES = ("photos.xml", "similar.xml", "fingerprints.chunks", "thumbnails.archive")


def run(*arguments):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=300)


def content(path):
    with open(path, "rb") as file:
        return file.read()


def png(side):
    def chunk(name, body):
        return struct.pack(">I", len(body)) + name + body + struct.pack(">I", zlib.crc32(name + body))

    rows = (b"\0" + bytes(side)) * side
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", side, side, 8, 0, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows, 1)) + chunk(b"IEND", b""))


class CatalogueTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        self.pictures = os.path.join(self.folder, "pictures")
        self.catalogue = os.path.join(self.folder, "catalogue")

    def make(self):
        return run("make", self.pictures, self.catalogue)

    def show(self):
        return run("show", self.catalogue)

    def make_of_samples(self):
        shutil.copytree(DATA, os.path.join(self.pictures, "samples"), ignore=lambda _, names: [
            name for name in names if not name.endswith((".jpg", ".png", ".tga"))])
        made = self.make()
        self.assertEqual(made.returncode, 0, made)
        return made

    def test_is_made_and_loaded_again(self):
        made = self.make_of_samples()
        count = len(os.listdir(os.path.join(self.pictures, "samples")))
        self.assertIn(f"{count} pictures, {count} in the catalogue\n", made.stdout)
        self.assertIn(f"] {count} of {count}: ", made.stdout)
        shown = self.show()
        self.assertEqual((shown.returncode, shown.stderr), (0, ""))
        self.assertEqual(len(re.findall(r"\d+ x \d+, made\n", shown.stdout)), count)
        self.assertIn("samples/colour-progressive.jpg: 21 x 18, made\n", shown.stdout)
        self.assertIn("samples/orientation.jpg: 18 x 21, made\n", shown.stdout, "upright")
        self.assertRegex(shown.stdout, rf"\n{count} photos, [1-9]\d* pairs look alike\n")

        before = [content(os.path.join(self.catalogue, name)) for name in FILES]
        self.assertNotIn(" of ", self.make().stdout, "nothing was decoded again")
        none = run("make", self.pictures + "-elsewhere", self.catalogue)
        self.assertEqual(none.returncode, 3)
        self.assertIn("-elsewhere: No such file or directory\n", none.stderr)
        self.assertEqual([content(os.path.join(self.catalogue, name)) for name in FILES], before)
        missing = run("show", self.catalogue + "-elsewhere")
        self.assertEqual((missing.returncode, missing.stdout), (1, "0 photos, 0 pairs look alike\n"))
        self.assertIn("-elsewhere/photos.xml: No such file or directory\n", missing.stderr)
        changed = os.path.join(self.pictures, "samples", "colour.jpg")
        os.utime(changed, (1, 1))
        with open(os.path.join(self.pictures, "broken.png"), "wb") as broken:
            broken.write(png(8)[:-30])
        made = self.make()
        self.assertIn("] 2 of 2: ", made.stdout)
        self.assertIn("WARNING: cannot read " + broken.name, made.stderr)
        self.assertIn(b"WARNING: cannot read ", content(os.path.join(self.catalogue, "catalogue.log")))
        self.assertIn(f"{count + 1} pictures, {count} in the catalogue\n", made.stdout)

    def test_damage_is_told_of_and_mended(self):
        self.make_of_samples()
        whole = self.show().stdout
        for name in FILES:
            path = os.path.join(self.catalogue, name)
            saved = content(path)
            for place in range(20):
                at = len(saved.rstrip()) * place // 20
                with open(path, "wb") as file:
                    file.write(saved[:at] + (b"" if place % 2 else b"<<<<" + saved[at + 4:]))
                shown = self.show()
                where = r" at line \d+, column \d+: \w+" if name.endswith(".xml") else r"(: | at offset \d+: )\w+"
                self.assertEqual(shown.returncode, 1, (name, at, shown))
                self.assertRegex(shown.stderr, "WARNING: .*" + re.escape(path) + where, (name, at))
            if name == "photos.xml":
                with open(path, "wb") as file:
                    file.write(saved.replace(b' id="1"', b' id="2147483647"')) # after it there is none
                self.assertIn("not read (Photo)", self.show().stderr)
            made = self.make()
            self.assertEqual(made.returncode, 0, made)
            self.assertIn(path, made.stderr)
            shown = self.show()
            self.assertEqual((shown.returncode, shown.stdout), (0, whole), name)

    def test_an_interrupted_one_is_whole(self):
        os.mkdir(self.pictures)
        first = os.path.join(self.pictures, "0.png")
        with open(first, "wb") as file:
            file.write(png(4000))
        for number in range(1, 60):
            os.link(first, os.path.join(self.pictures, f"{number}.png"))
        with subprocess.Popen([PROGRAM, "make", self.pictures, self.catalogue, "1"], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as program:
            output = b""
            while b" of 60: " not in output:
                output += os.read(program.stdout.fileno(), 100)
            program.send_signal(signal.SIGINT)
            output += program.communicate(timeout=300)[0]
        self.assertEqual(program.returncode, 130, output)
        count = int(re.search(rb"60 pictures, (\d+) in the catalogue; interrupted", output).group(1))
        self.assertTrue(0 < count < 60, count)
        shown = self.show()
        self.assertEqual((shown.returncode, shown.stderr), (0, ""))
        self.assertEqual(shown.stdout.count(": 4000 x 4000, made\n"), count)
        self.assertIn(f"{count} photos, {count * (count - 1) // 2} pairs look alike\n", shown.stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
