#!/usr/bin/env python3
"""Puts one deliberate fault after the other into a copy of the tree and says which ones the tests find.

  scripts/mutants.py                    every fault but the slow ones
  scripts/mutants.py strings threads    the faults of these tables (tests/mutants/<name>.toml)
  scripts/mutants.py --only ID          one fault; may be given again
  scripts/mutants.py --open             those that no run in this checkout has found or explained so far
  scripts/mutants.py --slow             the slow ones too: faults in headers, which rebuild much
  scripts/mutants.py --copy NAME        in this copy, so that two can run at once
  scripts/mutants.py --list             the faults, without running anything

A table has entries with
  id       a name, unique in all tables
  file     where the fault goes; the suites of its room look for it, or those that `tests` names
  find     text that stands exactly once in the file; `put` replaces it
  why      what a user would meet
  tests    optional: "program" or "program:filter" for GoogleTest, "ctest:regex" for what ctest knows; in a list, what
           is quick stands first: the others run only when it found nothing
  slow     optional: true for the slow set
  survives optional: why no test can find it; it does not count as missed

The copy is a work tree of its own below build/mutants; the checkout is not touched, but what is tested is HEAD, with
the tables of the checkout. The programs run where only the copy and a /tmp of their own can be written to: a fault may
make one remove or overwrite files. That takes root. A program that takes five times as long as without a fault hangs, which counts as found.
Ends with 1 when a fault was missed, or an entry no longer fits the code.
"""
import argparse
import json
import os
import pathlib
import signal
import subprocess
import sys
import time
import tomllib

ROOT = pathlib.Path(__file__).resolve().parent.parent
COPY = ROOT / "build" / "mutants" / "tree"
BUILD = COPY / "build" / "dev"
RESULTS = ROOT / "build" / "mutants" / "results.json"  # the last one of each fault
LIMIT = 240  # seconds without a fault
taken = {}  # seconds that a suite takes without a fault


# The first argument is the copy. What is mounted, and every process, goes with the program.
CONTAINED = """set -e
mount --bind "$1" "$1"
for place in /tmp /var/tmp /run /dev/shm; do [ ! -d $place ] || mount -t tmpfs tmpfs $place; done
mount -o remount,bind,ro /dev
mount -o remount,bind,ro /
cd "$1"
shift
"$@"
exit $?
"""


def contained(command):
    return ["unshare", "--mount", "--propagation", "private", "--pid", "--fork", "--kill-child", "--mount-proc", "sh", "-c", CONTAINED, "sh", str(COPY), *map(str, command)]


def require_containment():
    """Ends unless a program cannot write outside the copy."""
    victim = ROOT / "build" / "mutants" / "victim"
    victim.write_text("")
    run(contained(["rm", "-f", victim]))
    if not victim.exists() or run(contained(["touch", COPY / ".contained"])).returncode:
        sys.exit("the programs cannot be kept from the files of this machine: this needs root, and a kernel with namespaces")
    victim.unlink()


def run(command, **more):
    return subprocess.run(command, cwd=COPY, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **more)


def bounded(command, seconds):
    """Like run, but ends all that the command has started when the time is over; None then."""
    with subprocess.Popen(command, cwd=COPY, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
                          start_new_session=True) as process:
        try:
            output = process.communicate(timeout=seconds)[0]
        except subprocess.TimeoutExpired:
            output = None
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
    return output, process.returncode


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


def last_results():
    return json.loads(RESULTS.read_text()) if RESULTS.exists() else {}


def prepare():
    """A work tree at HEAD, configured. Test programs are built when they are first needed."""
    head = subprocess.run(["git", "rev-parse", "HEAD"], cwd=ROOT, check=True, capture_output=True, text=True).stdout.strip()
    if not COPY.exists():
        subprocess.run(["git", "worktree", "prune"], cwd=ROOT, check=True)
        subprocess.run(["git", "worktree", "add", "-q", "--detach", str(COPY), head], cwd=ROOT, check=True)
    must(["git", "checkout", "-q", "--force", "--detach", head])
    # The flags are those of the dev build, so that a compiler cache knows the files without a fault.
    must(["cmake", "--preset", "dev", "-DVFOUNDATION_BUILD_EXAMPLES=OFF", "-DVFOUNDATION_BUILD_FUZZERS=OFF",
          "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"])


def suites(mutant):
    """What looks for a fault: the named programs, or the one of the room that the file stands in."""
    if "tests" in mutant:
        return mutant["tests"] if isinstance(mutant["tests"], list) else [mutant["tests"]]
    return [pathlib.Path(mutant["file"]).parts[1]]


def outcome(suite):
    """("passed" | "failed" | "hangs" | "does not compile"), with the name of the first test that failed."""
    kind, _, wanted = suite.partition(":")
    target = [] if kind == "ctest" else ["--target", f"test_{kind}"]
    built = run(["cmake", "--build", str(BUILD), *target])
    if built.returncode:
        return "does not compile", next((line for line in built.stdout.splitlines() if "error" in line), "")[:200]
    if kind == "ctest":
        command = ["ctest", "--test-dir", str(BUILD), "-R", wanted, "--no-tests=error"]
    else:
        program = next((BUILD / "tests").glob(f"*/test_{kind}"))
        command = [str(program), f"--gtest_filter={wanted or '*'}", "--gtest_fail_fast"]
    started = time.monotonic()
    output, code = bounded(contained(command), 5 * taken[suite] + 10 if suite in taken else LIMIT)
    taken.setdefault(suite, time.monotonic() - started)
    lines = output.splitlines() if output is not None else []
    if output is None:
        return "hangs", ""
    if code == 0:
        return "passed" if kind == "ctest" or "[  PASSED  ] 0 tests." not in lines else "no tests", ""
    failed = [line for line in lines if "FAILED" in line or "***" in line]
    running = [line for line in lines if "[ RUN" in line]
    return "failed", failed[0].strip()[:100] if failed else f"exit {code} in {running[-1][13:] if running else '?'}"


def need(suite):
    """Runs a suite without a fault when it is first needed."""
    if suite not in taken:
        result, detail = outcome(suite)
        print(f"{suite} without a fault: {result} in {taken.get(suite, 0):.1f} s", flush=True)
        if result != "passed":
            sys.exit(f"{suite} without a fault: {result} {detail}")


def try_one(mutant):
    path = COPY / mutant["file"]
    original = path.read_text(encoding="utf-8")
    if original.count(mutant["find"]) != 1:
        return "does not fit", f"its text stands {original.count(mutant['find'])} times in {mutant['file']}"
    for suite in suites(mutant):
        need(suite)
        path.write_text(original.replace(mutant["find"], mutant["put"]), encoding="utf-8")
        try:
            result, detail = outcome(suite)
        finally:
            path.write_text(original, encoding="utf-8")
        if result != "passed":
            return result, detail
    return "missed", ""


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("tables", nargs="*")
    parser.add_argument("--only", action="append")
    parser.add_argument("--open", action="store_true")
    parser.add_argument("--slow", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--copy", default="tree")
    args = parser.parse_args()
    global COPY, BUILD
    COPY = ROOT / "build" / "mutants" / args.copy
    BUILD = COPY / "build" / "dev"
    mutants = [m for m in load(args.tables) if m["id"] in (args.only or [m["id"]]) and (args.slow or args.only or not m.get("slow"))]
    if args.open:
        results = last_results()
        mutants = [m for m in mutants if results.get(m["id"]) not in ("failed", "hangs", "explained")]
    if not mutants:
        sys.exit("no such fault")
    if args.list:
        for mutant in mutants:
            print(f"{mutant['table']:12} {mutant['id']:40} {mutant['why']}")
        return 0
    prepare()
    require_containment()
    counts = {}
    for mutant in mutants:
        started = time.monotonic()
        result, detail = try_one(mutant)
        if result == "missed" and "survives" in mutant:
            result, detail = "explained", mutant["survives"]
        counts[result] = counts.get(result, 0) + 1
        RESULTS.write_text(json.dumps(last_results() | {mutant["id"]: result}, indent=1))
        print(f"{result:16} {mutant['table']:12} {mutant['id']:40} {time.monotonic() - started:4.0f} s  {detail}", flush=True)
    found = counts.get("failed", 0) + counts.get("hangs", 0)
    tried = found + counts.get("missed", 0)
    print(f"{found} of {tried} found ({100 * found // max(tried, 1)} %), " + ", ".join(f"{n} {what}" for what, n in counts.items()))
    return 1 if set(counts) & {"missed", "does not fit", "does not compile"} else 0


if __name__ == "__main__":
    sys.exit(main())
