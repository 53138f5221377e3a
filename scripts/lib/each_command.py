#!/usr/bin/env python3
"""Runs every compile command of a build as a syntax pass of another compiler, with the project's warnings as errors.

Usage: each_command.py <build folder> <compiler> [option...]
"""
import concurrent.futures
import json
import os
import shlex
import subprocess
import sys

KEEP = ("-I", "-D", "-isystem", "-std=", "-W")


def syntax_command(entry, compiler, options):
    words = shlex.split(entry["command"])
    kept = []
    i = 0
    while i < len(words):
        if words[i] == "-isystem":
            kept += words[i:i + 2]
            i += 1
        elif words[i].startswith(KEEP):
            kept.append(words[i])
        i += 1
    # What only the other compiler knows is no finding.
    return [compiler, *kept, "-Wno-unknown-warning-option", *options, "-Werror", "-fsyntax-only", entry["file"]]


def run(entry, compiler, options):
    return subprocess.run(syntax_command(entry, compiler, options), cwd=entry["directory"], capture_output=True, text=True)


def main():
    build, compiler, *options = sys.argv[1:]
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        entries = [e for e in json.load(file) if not e["file"].startswith(os.path.abspath(build))]
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for result in pool.map(lambda e: run(e, compiler, options), entries):
            if result.returncode:
                failed += 1
                sys.stderr.write(result.stderr)
    print(f"{compiler}: {len(entries)} files, {failed} with findings")
    return 1 if failed or not entries else 0


if __name__ == "__main__":
    sys.exit(main())
