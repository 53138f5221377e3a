#!/usr/bin/env python3
"""Runs vfinspect as its users do: exit statuses, the formats it writes, extraction, hostile files, its documents.
Usage: vfinspect_test.py PROGRAM SOURCE-FOLDER plain|sanitized [PHOTO-CATALOGUE]"""

import json
import os
import re
import resource
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

PROGRAM, SOURCE, BUILD = sys.argv[1:4]
CATALOGUE = sys.argv[4] if len(sys.argv) > 4 else None  # the example program, where it is built
DATA = os.path.join(SOURCE, "tests/data")
ARCHIVE = os.path.join(DATA, "persistence/archive-le-padded.bin")
ROADS = os.path.join(DATA, "tools/roads.xml")


def run(*arguments, memory=None):
    def limit():
        if memory and BUILD == "plain":
            resource.setrlimit(resource.RLIMIT_AS, (memory, memory))

    return subprocess.run([PROGRAM, *arguments], capture_output=True, timeout=120, preexec_fn=limit)


class VfinspectTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)

    def file(self, content, name="file"):
        path = os.path.join(self.folder, name)
        with open(path, "wb") as file:
            file.write(content)
        return path

    def test_exit_statuses(self):
        fifo = os.path.join(self.folder, "fifo")
        os.mkfifo(fifo)
        with open(ARCHIVE, "rb") as archive:
            cut = self.file(archive.read()[:-1])
        for status, arguments in (
            (0, ["--check", ARCHIVE, ROADS]), (0, ["--help"]), (0, ["--version"]), (0, [cut]),
            (1, ["--check", ARCHIVE, cut]), (1, [os.path.join(self.folder, "none")]), (1, [self.folder]), (1, [fifo]),
            (1, ["--svg", ARCHIVE]), (1, ["--extract", self.folder, ROADS]), (1, [self.file(b"", "empty")]),
            (2, []), (2, ["--check"]), (2, ["--check", "--json", ARCHIVE]), (2, ["--what", ARCHIVE]),
            (2, ["--as", "gif", ARCHIVE]), (2, ["--order=middle", ARCHIVE]), (2, ["--json=1", ARCHIVE]),
            (2, [ARCHIVE, "--extract"]),
        ):
            result = run(*arguments)
            self.assertEqual(result.returncode, status, (arguments, result))
            self.assertEqual(bool(result.stderr), status != 0 and "--check" not in arguments[:1] or status == 2, arguments)
        with open("/dev/full", "w") as full:
            result = subprocess.run([PROGRAM, ARCHIVE], stdout=full, stderr=subprocess.PIPE, timeout=60)
            self.assertEqual(result.returncode, 1)

    def test_json_holds_what_the_tree_shows(self):
        files = [os.path.join(folder, name) for folder, _, names in os.walk(DATA) for name in names
                 if name.endswith((".bin", ".xml", ".tga", ".png", ".jpg"))]
        lines = run("--json", *files).stdout.decode().splitlines()
        self.assertEqual(len(lines), len(files))
        for path, line in zip(files, lines):
            report = json.loads(line)
            self.assertEqual(report["file"], path)
            self.assertEqual(report["size"], os.path.getsize(path))
            tree = run(path).stdout.decode().splitlines()
            self.assertEqual(len(report["entries"]), len(tree) - 1 - report["problemCount"], path)
            for entry, shown in zip(report["entries"], tree[1:]):
                self.assertIn(entry["label"], shown)
                self.assertIn(entry.get("value", ""), shown)

    def test_drawings(self):
        root = xml.etree.ElementTree.fromstring(run("--svg", ROADS).stdout)
        texts = [text.text for text in root.iter("{http://www.w3.org/2000/svg}text")]
        self.assertEqual(texts, ["Aston <1>", "Barley-on-the-Hill", "2"])
        self.assertEqual(len(list(root.iter("{http://www.w3.org/2000/svg}path"))), 1 + 3)
        dot = run("--dot", ROADS).stdout
        self.assertIn(b"1 -> 2;", dot)
        if shutil.which("dot"):
            plain = subprocess.run(["dot", "-Tplain"], input=dot, capture_output=True, check=True).stdout.decode()
            self.assertEqual(sum(line.startswith("edge") for line in plain.splitlines()), 3)

    def test_extraction_stays_in_its_folder(self):
        target = os.path.join(self.folder, "out")

        def chunk(name, body):
            return name + len(body).to_bytes(4, "big") + body

        names = [b"../../up", b"/etc/\x1b[2Jx", b"..", b"a/b", b"a/b"]
        infos = b"".join(chunk(b"elem", (len(n) + 1).to_bytes(2, "big") + n + b"\0\1") for n in names)
        contents = b"".join(chunk(b"elem", (len(n)).to_bytes(8, "big") + n) for n in names)
        count = len(names).to_bytes(4, "big")
        archive = self.file(chunk(b"VArc", chunk(b"Info", chunk(b"ARAY", count + infos)) +
                                  chunk(b"Data", chunk(b"ARAY", count + contents))))
        self.assertEqual(run("--check", archive).stdout, b"")
        result = run("--extract", target, archive)
        self.assertEqual(result.returncode, 0, result)
        self.assertEqual(sorted(os.listdir(target)), ["1-up", "2-__2Jx", "3-..", "4-b", "5-b"])
        self.assertEqual(sorted(os.listdir(self.folder)), ["file", "out"])
        for name in os.listdir(target):
            with open(os.path.join(target, name), "rb") as file:
                self.assertEqual(file.read(), names[int(name[0]) - 1])
        again = run("--extract", target, archive)
        self.assertEqual(again.returncode, 1)
        self.assertIn(b"File exists", again.stderr)

    @unittest.skipUnless(CATALOGUE, "the examples are not built")
    def test_files_of_the_photo_catalogue(self):
        made = subprocess.run([CATALOGUE, "make", os.path.join(DATA, "image"), self.folder], capture_output=True, timeout=120)
        self.assertEqual(made.returncode, 0, made)
        for name, kind, damage in (
            ("photos.xml", "object XML", lambda whole: whole.rindex(b"</")),
            ("similar.xml", "graph in object XML", lambda whole: whole.index(b"srcNode_ID=\"") + 11),
            ("fingerprints.chunks", "chunked file", lambda whole: 7),
            ("thumbnails.archive", "archive", lambda whole: whole.index(b"elem") + 7),
        ):
            path = os.path.join(self.folder, name)
            self.assertEqual(run("--check", path).stdout, b"", name)
            self.assertIn(kind, run(path).stdout.decode().partition("\n")[0])
            with open(path, "rb") as file:
                whole = file.read()
            at = damage(whole)
            result = run("--check", self.file(whole[:at] + bytes([whole[at] ^ 1]) + whole[at + 1:], name))
            self.assertEqual(result.returncode, 1, name)
            self.assertRegex(result.stdout.decode().splitlines()[0], rf"{name}: damaged at \d+: \w+")
            if not name.endswith(".xml"):  # has a checksum: no byte is changed unseen, and the order stays clear
                for place in range(0, len(whole), 1 + len(whole) // 100):
                    self.file(whole[:place] + bytes([whole[place] ^ 4]) + whole[place + 1:], name)
                    result = run("--check", path)
                    self.assertEqual(result.returncode, 1, (name, place))
                    first = result.stdout.decode().splitlines()[0]
                    if place < len(whole) - 12:
                        self.assertGreaterEqual(int(re.search(r"damaged at (\d+): ", first).group(1)), place - 40, first)
                self.file(whole, name)
                shutil.rmtree(os.path.join(self.folder, "out"), ignore_errors=True)
                self.assertEqual(run("--extract", os.path.join(self.folder, "out"), path).returncode, 0)
                self.assertFalse([part for part in os.listdir(os.path.join(self.folder, "out")) if "CSUM" in part])

    def test_memory_does_not_follow_the_file(self):
        path = self.file(b"")
        for size, kind in ((3 << 30, "chunks"), (3 << 30, "png"), (1 << 28, "jpeg"), (5 << 30, "targa")):
            os.truncate(path, size)
            result = run("--check", "--as", kind, path, memory=200 << 20)
            self.assertEqual((result.returncode, result.stderr), (1, b""), kind)
            self.assertLess(len(result.stdout), 20000)

    def test_documents(self):
        help_text = run("--help").stdout.decode()
        page = os.path.join(os.path.dirname(PROGRAM), "vfinspect.1")  # generated
        completion = os.path.join(SOURCE, "tools/vfinspect/vfinspect.bash")
        offered = subprocess.run(
            ["bash", "-c", f". '{completion}'; COMP_WORDS=(vfinspect --); COMP_CWORD=1; _vfinspect; "
                           "echo ${COMPREPLY[@]}; COMP_WORDS=(vfinspect --as ar); COMP_CWORD=2; _vfinspect; "
                           "echo ${COMPREPLY[@]}"], capture_output=True, text=True, check=True).stdout.splitlines()
        options = {word.strip(",)") for word in help_text.split() if word.startswith("--")}
        self.assertEqual(set(offered[0].split()), options)
        self.assertEqual(offered[1], "archive")
        with open(page) as file:
            text = file.read().replace("\\-", "-")
        version = run("--version").stdout.decode().split()[-1]
        self.assertRegex(text.splitlines()[0], rf'"[0-9]{{4}}-[0-9]{{2}}-[0-9]{{2}}" "VFoundation {version}"')
        for option in options:
            self.assertIn(option, text)
        if shutil.which("groff"):
            result = subprocess.run(["groff", "-man", "-ww", "-z", page], capture_output=True, text=True)
            self.assertEqual(result.stderr, "")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
