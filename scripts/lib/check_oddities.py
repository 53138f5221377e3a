#!/usr/bin/env python3
"""Checks that every test and header that docs/oddities.md names exists. Run from the root of the tree."""
import pathlib
import re
import sys


def main():
    text = pathlib.Path("docs/oddities.md").read_text(encoding="utf-8")
    tests = set()
    for source in pathlib.Path("tests").rglob("*.cpp"):
        for suite, name in re.findall(r"^TEST\w*\((\w+),\s*(\w+)\)", source.read_text(encoding="utf-8"), re.M):
            tests.add(f"{suite}.{name}")
    headers = {path.name for folder in ("foundation", "launcher") for path in pathlib.Path(folder).rglob("*.h")}
    missing = []
    for name in re.findall(r"`([^`]+)`", text):
        if re.fullmatch(r"(\w+/)?\w+\.[A-Z]\w+", name) and name.split("/")[-1] not in tests:
            missing.append(name)
        elif re.fullmatch(r"\w+\.h", name) and name not in headers:
            missing.append(name)
    for name in missing:
        print(f"docs/oddities.md names {name}, which does not exist")
    return 1 if missing else 0


if __name__ == "__main__":
    sys.exit(main())
