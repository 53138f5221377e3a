#!/usr/bin/env python3
"""Checks that includes run downwards through the rooms of foundation/, as docs/architecture.md says. Run from the
root of the tree.

- A header includes headers of its own room and of rooms before it in ROOMS.
- A source does too. The code that saves a class may also include the two file interfaces.
- The rooms of KERNEL may include one another.
- A header in <room>/internal is for its own room; SHARED lists those that rooms above use as well. No installed
  header includes one.
- Whatever else is needed stands in EXCEPTIONS with its reason, at most MOST_EXCEPTIONS of them.
"""
import pathlib
import re
import sys

ROOMS = ("core", "threads", "strings", "containers", "host", "log", "persistence", "strings/values", "messaging",
         "image", "graph", "numerics", "core/lifecycle")
KERNEL = ("core", "threads", "strings", "containers", "log")
FILE_INTERFACES = ("persistence/IAIFile.h", "persistence/VXMLFile.h")

# source, included header, reason
EXCEPTIONS = (
    ("persistence/VXMLFileColour.cpp", "strings/values/", "typed attributes: colours"),
    ("persistence/VXMLFileAttributes.cpp", "strings/values/", "typed attributes: points and rectangles"),
    ("persistence/VXMLFileImage.cpp", "image/VImage.h", "typed attributes: pictures"),
    ("strings/VString.cpp", "host/VFileManager.h", "the separator of paths"),
)
MOST_EXCEPTIONS = 4

# internal header, reason
SHARED = {
    "containers/internal/ClassString.h": "the strings of classes, in dictionaries and graphs",
    "core/internal/ClassOwned.h": "a class's own objects: made once, released and cleared, in every room",
    "core/internal/CopyByAssignment.h": "Copy() of every class whose assignment copies the state",
    "containers/internal/ContainerAccess.h": "what is built aside is put in place, in dictionaries and graphs",
    "containers/internal/KeepAlive.h": "holds an object over destructors that may end it, in containers and graphs",
    "containers/internal/Snapshot.h": "walks that run other code, in containers and graphs",
    "containers/internal/TRecyclePool.h": "every recycled class has its pool through it",
    "containers/internal/VObjectCast.h": "checks what a file put into an array",
    "host/internal/HostServices.h": "what the system does for the library: the folder of a file that is replaced",
    "host/internal/LocalTime.h": "one form of a date, in the log file and in VDate",
    "persistence/internal/FileReplacer.h": "a failing save keeps the old file, of XML and of pictures",
    "strings/internal/NumberText.h": "numbers as text whatever the locale, in XML and in the value classes",
    "threads/internal/EventFlag.h": "waiting for another thread, in the log's writer and the message centre",
    "threads/internal/ForkHook.h": "what loses its thread in a child process: servers, the log's writer, a centre's job",
    "threads/internal/Futex.h": "sleep until a word changes, for lines that wait for room in the log's queue",
    "threads/internal/WithoutThrowing.h": "code that may not throw: destructors, handlers and the outermost frames of threads",
    "threads/internal/ThreadPresence.h": "whether a thread of the library is still there, servers and the log's writer",
}


def room_of(path):
    folder = path.rsplit("/", 1)[0].removesuffix("/internal")
    return folder if folder in ROOMS else None


def below(path, include):
    """True when `include` is in the room of `path` or in one before it, or both are in the kernel."""
    own, other = room_of(path), room_of(include)
    if own in KERNEL and other in KERNEL:
        return True
    return ROOMS.index(other) <= ROOMS.index(own)


def finding(path, include, used):
    if room_of(path) is None or room_of(include) is None:
        return "one of them is in no room"
    internal = "/internal/" in include
    if internal and path.endswith(".h") and "/internal/" not in path:
        return "an installed header includes one that is not installed"
    if internal and room_of(path) != room_of(include):
        related = room_of(path).startswith(room_of(include) + "/")
        if not related and include not in SHARED:
            return "internal to another room"
        used.add(include)
    if below(path, include) or (path.endswith(".cpp") and include in FILE_INTERFACES):
        return None
    for row in EXCEPTIONS:
        if path == row[0] and include.startswith(row[1]):
            used.add(row)
            return None
    return f"{room_of(include)} is above {room_of(path)}"


def main():
    root = pathlib.Path("foundation")
    used = set()
    findings = []
    for file in sorted(root.rglob("*")):
        path = file.relative_to(root).as_posix()
        if file.suffix not in (".h", ".cpp") or path == "VFoundation.h":
            continue
        for include in re.findall(r'^#include "foundation/([^"]+)"', file.read_text(encoding="utf-8"), re.M):
            found = finding(path, include, used)
            if found:
                findings.append(f"foundation/{path} includes {include}: {found}")
    findings += [f"no longer needed: {row}" for row in (*EXCEPTIONS, *SHARED) if row not in used]
    if len(EXCEPTIONS) > MOST_EXCEPTIONS:
        findings.append(f"{len(EXCEPTIONS)} exceptions, at most {MOST_EXCEPTIONS}")
    print("\n".join(findings) or f"rooms: includes run downwards, {len(EXCEPTIONS)} exceptions")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
