#!/usr/bin/env python3
"""Checks that every memory order weaker than sequentially consistent has its reason beside it. Run from the root of the
tree.

The reason is a comment that names the order: at the operation, up to three lines above it, or where the atomic is
declared, there for a run of declarations too.
"""
import pathlib
import re
import sys

FOLDERS = ("foundation", "launcher", "tools", "examples")
ORDER = re.compile(r"memory_order(?:_|::)(relaxed|consume|acquire|release|acq_rel)")
OPERATION = re.compile(r"(\w+)(?:\[[^\]]*\]|\([^()]*\))?\.(?:load|store|exchange|fetch_\w+|compare_exchange_\w+|wait|clear|"
                       r"test_and_set)\(")
LINES_ABOVE = 3


def comment_of(line):
    return line[line.index("//"):].lower() if "//" in line else ""


def declared_reasons(files):
    """For each atomic's name in each folder, the comments of its declarations."""
    reasons = {}
    for path, lines in files.items():
        for i, line in enumerate(lines):
            found = re.search(r"\batomic(?:_flag|<.*>) (?:\w+::)?(\w+)(?:\[\w+\])?(?:\{.*\}| = .*)?;|using (\w+) = std::atomic", line)
            if not found:
                continue
            text = comment_of(line)
            above = i - 1
            while above >= 0 and (lines[above].strip().startswith("//") or "std::atomic" in lines[above]):
                text += comment_of(lines[above])
                above -= 1
            name = found.group(1) or found.group(2)
            reasons[path.parent, name] = reasons.get((path.parent, name), "") + text
    return reasons


def main():
    files = {file: file.read_text(encoding="utf-8").split("\n")
             for folder in FOLDERS for file in sorted(pathlib.Path(folder).rglob("*")) if file.suffix in (".h", ".cpp")}
    declared = declared_reasons(files)
    findings = []
    uses = 0
    for path, lines in files.items():
        for i, line in enumerate(lines):
            for found in ORDER.finditer(line):
                uses += 1
                near = "".join(comment_of(text) for text in lines[max(0, i - LINES_ABOVE):i + 1])
                names = OPERATION.findall(line) or OPERATION.findall(lines[i - 1])
                folders = {path.parent, path.parent.parent, path.parent / "internal"}
                known = "".join(declared.get((folder, name), "") for folder in folders for name in names)
                if not all(word in near + known for word in found.group(1).replace("acq_rel", "acquire release").split()):
                    findings.append(f"{path}:{i + 1}: {found.group(0)} without its reason")
    print("\n".join(findings) or f"memory orders: {uses} weaker ones, each with its reason")
    return 1 if findings or not uses else 0


if __name__ == "__main__":
    sys.exit(main())
