#!/usr/bin/env python3
"""Prints a page or a header as Doxygen needs it: code in backticks that Doxygen would take for commands, links or tags
is written with its own escapes. Blocks of code are left alone. Usage: doxygen_filter.py FILE"""

import re
import sys

ESCAPES = {"&": "&amp;", "<": "&lt;", ">": "&gt;", '"': "&quot;", "#": "\\#", "\\": "\\\\", "@": "\\@", "%": "\\%"}


def code(match):
    text = match.group(1)
    if not re.search(r"[&<>\"'#\\@%]|::", text):
        return match.group(0)
    escaped = "".join(ESCAPES.get(c, c) for c in text).replace("::", "\\::")
    return f"<code>{escaped}</code>"


def main():
    in_block = False
    is_page = sys.argv[1].endswith(".md")
    with open(sys.argv[1], encoding="utf-8") as file:
        for line in file:
            in_block ^= is_page and line.lstrip().startswith("```")
            line = line.replace("](../images/", "](images/")  # Doxygen finds pictures by the end of their path
            is_prose = is_page and not in_block and not line.startswith("    ")
            if is_prose or (not is_page and line.lstrip().startswith("///")):
                line = re.sub(r"(?<!`)`([^`\n]+)`(?!`)", code, line)
            sys.stdout.write(line)


main()
