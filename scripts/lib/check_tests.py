#!/usr/bin/env python3
"""Finds checks of tests that join conditions, `EXPECT_TRUE(a && b)`: a failure would not say which one did not hold.
Run from the root of the tree."""
import pathlib
import re
import sys

CHECK = re.compile(r"\b(?:EXPECT|ASSERT)_(TRUE|FALSE)\(")


def joined(text):
    """The offsets of checks whose argument joins conditions outside brackets."""
    for match in CHECK.finditer(text):
        operator = "&&" if match.group(1) == "TRUE" else "||"
        depth = 1
        for at in range(match.end(), len(text)):
            if text[at] in "([{":
                depth += 1
            elif text[at] in ")]}":
                depth -= 1
                if depth == 0:
                    break
            elif depth == 1 and text.startswith(operator, at):
                yield match.start()
                break


def main():
    found = 0
    for path in sorted(pathlib.Path("tests").rglob("*.cpp")):
        text = path.read_text(encoding="utf-8")
        for offset in joined(text):
            found += 1
            print(f"{path}:{text.count(chr(10), 0, offset) + 1}: one condition for each check")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
