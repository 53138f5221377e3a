#!/usr/bin/env python3
"""Checks that every test and header that docs/oddities.md names exists, and every test of docs/security.md, where each
point of what is protected names one. Run from the root of the tree."""
import pathlib
import re
import sys

UNPROTECTED = "## What is not protected"


def read(path):
    return pathlib.Path(path).read_text(encoding="utf-8")


def names_in(folder, pattern, shape):
    return {name for path in pathlib.Path("tests").joinpath(folder).rglob(pattern) for name in shape(path)}


def check_oddities(tests):
    headers = {path.name for folder in ("foundation", "launcher") for path in pathlib.Path(folder).rglob("*.h")}
    for name in re.findall(r"`([^`]+)`", read("docs/oddities.md")):
        if re.fullmatch(r"(\w+/)?\w+\.[A-Z]\w+", name) and name.split("/")[-1] not in tests or \
                re.fullmatch(r"\w+\.h", name) and name not in headers:
            yield f"docs/oddities.md names {name}, which does not exist"


def check_security(tests):
    tests = tests | names_in("", "CMakeLists.txt", lambda path: re.findall(r"add_test\(NAME (\S+)", read(path))) | \
        names_in("elevation", "*.py", lambda path: re.findall(r"^@case\ndef (\w+)", read(path), re.M))
    text = read("docs/security.md")
    for names in re.findall(r"\[([^\]]+)\]", text):
        for name in re.split(r",\s+", names):
            if name not in tests and not pathlib.Path(name).is_file():
                yield f"docs/security.md names {name}, which does not exist"
    for point in re.findall(r"^- .*\n(?:  .*\n)*", text[:text.index(UNPROTECTED)], re.M):
        if not re.search(r"\[[^\]]+\]\n$", point):
            yield f"docs/security.md has a point that ends without the name of its test: {point.splitlines()[0]}"


def main():
    tests = names_in("", "*.cpp", lambda path: map(".".join, re.findall(r"^TEST\w*\((\w+),\s*(\w+)\)", read(path), re.M)))
    findings = [*check_oddities(tests), *check_security(tests)]
    print("\n".join(findings) or "docs: the named tests exist")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
