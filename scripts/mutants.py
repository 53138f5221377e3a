#!/usr/bin/env python3
"""Puts one deliberate fault after the other into a copy of the tree and says which ones the tests find.

  scripts/mutants.py                    every fault but the slow ones
  scripts/mutants.py strings threads    the faults of these tables (tests/mutants/<name>.toml)
  scripts/mutants.py --only ID          one fault
  scripts/mutants.py --slow             the slow ones too: faults in headers, which rebuild much
  scripts/mutants.py --list             the faults, without running anything

A table has entries with
  id       a name, unique in all tables
  file     where the fault goes; the suites of its room look for it, or those that `tests` names
  find     text that stands exactly once in the file; `put` replaces it
  why      what a user would meet
  tests    optional: "program" or "program:filter" for GoogleTest, several in a list; "ctest:regex" for what ctest knows
  slow     optional: true for the slow set
  survives optional: why no test can find it; it does not count as missed

The copy is a work tree of its own below build/mutants; the checkout is not touched, but what is tested is HEAD.
Ends with 1 when a fault was missed, or an entry no longer fits the code.
"""
import argparse
import os
import pathlib
import subprocess
import sys
import time
import tomllib

ROOT = pathlib.Path(__file__).resolve().parent.parent
COPY = ROOT / "build" / "mutants" / "tree"
BUILD = COPY / "build" / "mutants"
SECONDS = 240  # for one test program: at least five times what the slowest takes


def run(command, **more):
    return subprocess.run(command, cwd=COPY, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **more)


def must(command):
    result = run(command)
    if result.returncode:
        sys.exit(f"{' '.join(map(str, command))}\n{result.stdout[-3000:]}")
    return result.stdout


def load(names):
    mutants, ids = [], set()
    for path in sorted((ROOT / "tests" / "mutants").glob("*.toml")):
        if names and path.stem not in names:
            continue
        for entry in tomllib.loads(path.read_text(encoding="utf-8"))["mutant"]:
            if entry["id"] in ids:
                sys.exit(f"{path}: {entry['id']} stands twice")
            ids.add(entry["id"])
            mutants.append(entry | {"table": path.stem})
    return mutants


def prepare():
    """A work tree at HEAD, configured. Test programs are built when they are first needed."""
    head = subprocess.run(["git", "rev-parse", "HEAD"], cwd=ROOT, check=True, capture_output=True, text=True).stdout.strip()
    if not COPY.exists():
        subprocess.run(["git", "worktree", "prune"], cwd=ROOT, check=True)
        subprocess.run(["git", "worktree", "add", "-q", "--detach", str(COPY), head], cwd=ROOT, check=True)
    must(["git", "checkout", "-q", "--force", "--detach", head])
    must(["cmake", "--preset", "dev", "-B", str(BUILD), "-DVFOUNDATION_BUILD_EXAMPLES=OFF"])


def program(name):
    """The built test program, or None when it does not compile."""
    if run(["cmake", "--build", str(BUILD), "--target", f"test_{name}"]).returncode:
        return None
    found = [path for path in BUILD.rglob(f"test_{name}") if os.access(path, os.X_OK) and path.is_file()]
    return found[0] if found else None


def suites(mutant):
    """What looks for a fault: the named programs, or the one of the room that the file stands in."""
    if "tests" in mutant:
        return mutant["tests"] if isinstance(mutant["tests"], list) else [mutant["tests"]]
    return [pathlib.Path(mutant["file"]).parts[1]]


def outcome(suite):
    """("passed" | "failed" | "hangs" | "does not compile"), with the name of the first test that failed."""
    kind, _, wanted = suite.partition(":")
    if kind == "ctest":
        built = run(["cmake", "--build", str(BUILD)])
        command = ["ctest", "--test-dir", str(BUILD), "-R", wanted, "--no-tests=error"]
        if built.returncode:
            return "does not compile", ""
    else:
        binary = program(kind)
        if not binary:
            return "does not compile", ""
        command = [str(binary), f"--gtest_filter={wanted or '*'}", "--gtest_brief=1", "--gtest_fail_fast"]
    try:
        result = run(command, timeout=SECONDS)
    except subprocess.TimeoutExpired:
        return "hangs", ""
    if not result.returncode:
        return "passed", ""
    failed = [line for line in result.stdout.splitlines() if "FAILED" in line or "***" in line]
    return "failed", failed[0].strip()[:100] if failed else f"exit {result.returncode}"


def try_one(mutant):
    path = COPY / mutant["file"]
    original = path.read_text(encoding="utf-8")
    if original.count(mutant["find"]) != 1:
        return "does not fit", f"its text stands {original.count(mutant['find'])} times in {mutant['file']}"
    path.write_text(original.replace(mutant["find"], mutant["put"]), encoding="utf-8")
    try:
        for suite in suites(mutant):
            result, detail = outcome(suite)
            if result != "passed":
                return result, detail
        return "missed", ""
    finally:
        path.write_text(original, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("tables", nargs="*")
    parser.add_argument("--only")
    parser.add_argument("--slow", action="store_true")
    parser.add_argument("--list", action="store_true")
    args = parser.parse_args()
    mutants = [m for m in load(args.tables) if (args.only in (None, m["id"])) and (args.slow or args.only or not m.get("slow"))]
    if not mutants:
        sys.exit("no such fault")
    if args.list:
        for mutant in mutants:
            print(f"{mutant['table']:12} {mutant['id']:40} {mutant['why']}")
        return 0
    prepare()
    for suite in sorted({suite for mutant in mutants for suite in suites(mutant)}):
        result, detail = outcome(suite)
        if result != "passed":
            sys.exit(f"{suite} without a fault: {result} {detail}")
    counts = {}
    for mutant in mutants:
        started = time.monotonic()
        result, detail = try_one(mutant)
        if result == "missed" and "survives" in mutant:
            result, detail = "explained", mutant["survives"]
        counts[result] = counts.get(result, 0) + 1
        print(f"{result:16} {mutant['table']:12} {mutant['id']:40} {time.monotonic() - started:4.0f} s  {detail}", flush=True)
    found = counts.get("failed", 0) + counts.get("hangs", 0)
    tried = found + counts.get("missed", 0)
    print(f"{found} of {tried} found ({100 * found // max(tried, 1)} %), " + ", ".join(f"{n} {what}" for what, n in counts.items()))
    return 1 if set(counts) & {"missed", "does not fit", "does not compile"} else 0


if __name__ == "__main__":
    sys.exit(main())
