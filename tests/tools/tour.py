#!/usr/bin/env python3
"""The programs in the chapters of a tour.
    tour.py extract CHAPTER PROGRAM.cpp    writes the program of a chapter
    tour.py run CHAPTER PROGRAM            runs it and compares what it prints with what the chapter says"""

import re
import subprocess
import sys


def blocks(chapter, language):
    with open(chapter, encoding="utf-8") as file:
        return re.findall(rf"^```{language}\n(.*?)^```$", file.read(), re.DOTALL | re.MULTILINE)


def main():
    action, chapter, program = sys.argv[1:]
    (code,), (expected,) = blocks(chapter, "cpp"), blocks(chapter, "text")
    if action == "extract":
        with open(program, "w", encoding="utf-8") as file:
            file.write(code)
        return
    result = subprocess.run([program], stdout=subprocess.PIPE, text=True, timeout=60)
    if result.returncode != 0 or result.stdout != expected:
        sys.exit(f"{chapter}: the program ended with {result.returncode} and printed\n{result.stdout}")


main()
