#!/usr/bin/env python3
"""Runs the compile commands of a build as a syntax pass of a compiler, with the project's warnings as errors.

Usage: each_command.py [--headers] [--except PATTERN] <build folder> <compiler> [option...]
  --headers         only the sources that CMake writes for the public headers, one include each
  --except PATTERN  without the files whose path below the folder of the project matches this regular expression
"""
import argparse
import concurrent.futures
import json
import os
import re
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


def chosen(build, headers, left_out):
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        entries = json.load(file)
    generated = os.path.abspath(build) + os.sep
    project = os.path.dirname(os.path.dirname(generated.rstrip(os.sep)))
    if headers:
        return [e for e in entries if e["file"].startswith(generated) and "_verify_interface_header_sets" in e["file"]]
    return [e for e in entries if not e["file"].startswith(generated)
            and not (left_out and re.match(left_out, os.path.relpath(e["file"], project)))]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--headers", action="store_true")
    parser.add_argument("--except", dest="left_out")
    parser.add_argument("build")
    parser.add_argument("compiler")
    arguments, options = parser.parse_known_args()
    build, compiler = arguments.build, arguments.compiler
    entries = chosen(build, arguments.headers, arguments.left_out)
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
