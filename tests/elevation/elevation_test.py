#!/usr/bin/python3
"""Runs the launcher's bundle for real: as root, through polkit and through sudo, with the real dialogs.

usage: elevation_test.py <folder of the bundles> --probe <program> [--plain] [--pictures <folder>] [case ...]

Needs root. A private system bus with polkitd runs in namespaces of its own, so nothing of the machine changes;
where the machine refuses namespaces (or with --plain) its own bus is used and everything is taken back at the
end. Exit status: 0 all passed, 1 something failed, 77 nothing could be run (the reason is printed).
"""
import argparse
import os
import signal
import subprocess
import sys
import time
import traceback

sys.dont_write_bytecode = True  # root's files have no place in the tree
import guarding  # the last case of the third leaves nothing to ask with
import showing
import cases
from rig import CASES, NAMESPACE, POLKITD, Desktop, Run, World


PRIVATE_ONLY = {**cases.PRIVATE_ONLY, guarding.sudo_that_logs_input: "pkexec can be hidden",
                showing.terminal_instead_of_display: "pkexec can be hidden"}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bundles")
    parser.add_argument("only", metavar="case", nargs="*")
    parser.add_argument("--probe", required=True)
    parser.add_argument("--pictures")
    parser.add_argument("--plain", action="store_true")
    parser.add_argument("--inside", action="store_true")
    options = parser.parse_intermixed_args()
    plain = options.plain
    if os.geteuid() != 0:
        print("elevation: needs root, for users, a private bus and polkitd of its own")
        return 77
    if not options.inside and not plain:
        if subprocess.run(["unshare", *NAMESPACE, "true"], capture_output=True).returncode == 0:
            os.execvp("unshare", ["unshare", *NAMESPACE, sys.executable, os.path.abspath(__file__),
                                  *sys.argv[1:], "--inside"])
        print("elevation: this machine refuses namespaces; using its own bus")
        plain = True
    if not os.path.exists(POLKITD):
        print("elevation: there is no polkitd to ask")
        return 1 if os.environ.get("CI") else 77

    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # so that what was changed is taken back
    world, failures = World(not plain), 0
    try:
        pictures = os.open(options.pictures, os.O_RDONLY) if options.pictures else None
        world.build(os.path.abspath(options.bundles), options.probe)
        desktop = Desktop(world, pictures)
        for function in CASES + ([showing.take_pictures] if options.pictures else []):
            if options.only and function.__name__ not in options.only:
                continue
            if plain and function in PRIVATE_ONLY:
                print(f"not run  {function.__name__}: only in namespaces {PRIVATE_ONLY[function]}")
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
    finally:
        world.clean()
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
