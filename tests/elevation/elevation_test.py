#!/usr/bin/python3
"""Runs the launcher's bundle for real: as root, through polkit and through sudo, with the real dialogs.

usage: elevation_test.py <folder of the bundles> --probe <program> [--installed <staging>]
           [--sanitized] [--pictures <folder>] [case ...]
       elevation_test.py <folder of the bundles> --packaged with_guide|without_guide
           only the installed package, by its menu entry

Needs root and a machine that grants namespaces: the private system bus, polkitd, users and settings live in some of
their own, so nothing of the machine changes. Exit status: 0 all passed, 1 something failed, 77 nothing could be run
(the reason is printed).
"""
import argparse
import os
import subprocess
import sys
import time
import traceback

sys.dont_write_bytecode = True  # root's files have no place in the tree
import installing
import guarding  # the last case of the third leaves nothing to ask with
import showing
import cases
from rig import CASES, NAMESPACE, POLKITD, Desktop, Run, World


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bundles")
    parser.add_argument("only", metavar="case", nargs="*")
    parser.add_argument("--probe")
    parser.add_argument("--packaged", choices=("with_guide", "without_guide"))
    parser.add_argument("--installed")
    parser.add_argument("--sanitized", action="store_true")
    parser.add_argument("--pictures")
    parser.add_argument("--inside", action="store_true")
    options = parser.parse_intermixed_args()
    reason = "it needs root" if os.geteuid() != 0 else "there is no polkitd" if not os.path.exists(POLKITD) else ""
    if not reason and not options.inside:
        if subprocess.run(["unshare", *NAMESPACE, "true"], capture_output=True).returncode == 0:
            os.execvp("unshare", ["unshare", *NAMESPACE, sys.executable, os.path.abspath(__file__),
                                  *sys.argv[1:], "--inside"])
        reason = "this machine refuses namespaces"
    if reason:
        print("elevation: not run:", reason)
        return 1 if os.environ.get("CI") else 77

    world, failures = World(), 0
    world.sanitized = options.sanitized
    pictures = os.open(options.pictures, os.O_RDONLY) if options.pictures else None
    world.build(os.path.abspath(options.bundles), options.probe, options.installed)
    desktop = Desktop(world, pictures)
    chosen = CASES + ([showing.take_pictures] if options.pictures else [])
    for function in [getattr(installing, options.packaged)] if options.packaged else chosen:
        if options.only and function.__name__ not in options.only:
            continue
        begin = time.monotonic()
        try:
            function(world, desktop)
            verdict = "passed"
        except Exception:
            traceback.print_exc()
            Run.last.kill()  # its dialogs go with it and do not stand in the way of the next case
            verdict, failures = "FAILED", failures + 1
        print(f"{verdict}   {function.__name__} ({time.monotonic() - begin:.1f} s)", flush=True)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
