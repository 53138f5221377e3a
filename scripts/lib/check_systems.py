#!/usr/bin/env python3
"""Checks that only the files of one system use what only that system has. Run from the root of the tree.

What Linux or the GNU C library has and POSIX.1-2008 does not belongs to *_linux.cpp, *_linux.h and launcher/linux/
(docs/porting.md). Comments are not looked at, texts are: a path below /proc is a call too. Tests, benchmarks and fuzz
targets may use it. Public headers include no header of any system, POSIX or not. docs/porting.md lists the files of one
system, no more and no fewer.
"""
import pathlib
import re
import sys

FOLDERS = ("foundation", "launcher", "tools", "examples")

HEADERS = r"linux/\S+|gnu/\S+|cxxabi\.h|execinfo\.h|features\.h|libmount\S*|link\.h|malloc\.h|stdio_ext\.h|" \
    r"sys/(auxv|epoll|eventfd|fanotify|inotify|mount|personality|prctl|ptrace|random|sendfile|signalfd|single_threaded|" \
    r"syscall|sysinfo|timerfd|vfs|xattr)\.h"

NAMES = {
    "a call of Linux":
        r"accept4|close_range|copy_file_range|dup3|epoll_\w+|eventfd|execveat|fallocate|fanotify_\w+|futex|getauxval|"
        r"getrandom|gettid|inotify_\w+|memfd_create|mremap|pipe2|prctl|renameat2|sched_\w*affinity|sched_getcpu|"
        r"sendfile|setns|set?res[ug]id|signalfd|splice|statx|sync_file_range|syncfs|syscall|tgkill|timerfd_\w+|unshare",
    "a flag of Linux":
        r"AT_EMPTY_PATH|MADV_\w+|MAP_(NORESERVE|POPULATE)|MSG_CMSG_CLOEXEC|O_(DIRECT|NOATIME|PATH|TMPFILE)|PR_[SG]ET_\w+|"
        r"RENAME_\w+|SOCK_(CLOEXEC|NONBLOCK)|SO_PEERCRED|SYS_\w+",
    "a call of the GNU C library":
        r"__f(bufsize|pending|purge)|__libc_\w+|asprintf|backtrace(_symbols\w*)?|canonicalize_file_name|closefrom|"
        r"dl_iterate_phdr|dladdr|eaccess|euidaccess|execvpe|get_current_dir_name|get_nprocs(_conf)?|mallinfo2?|"
        r"malloc_(trim|usable_size)|memmem|mempcpy|memrchr|mkostemps?|program_invocation_(short_)?name|"
        r"pthread_(cond_clockwait|mutex_clocklock|\w+_np)|posix_spawn_\w+_np|ppoll|qsort_r|rawmemchr|"
        r"sem_clockwait|secure_getenv|str(casestr|chrnul|error_r|verscmp)|strto\w+_l|timegm|tm_gmtoff|vasprintf|versionsort",
    "an end of the thread that unwinds the stack on some systems only": r"pthread_(exit|cancel)",
    "the inside of a C++ run-time library": r"abi::\w+|__cxa_\w+|__forced_unwind",
    "a system asked for by name": r"__linux__|__gnu_linux__|__GLIBC\w*|_GNU_SOURCE|__APPLE__|__FreeBSD__|_WIN32",
}
SYSTEM_HEADERS = r"(?:[a-z]+/)?\w+\.h" # what the standard library has is without the .h
PATHS = r'"/(proc|sys)/[^"]*"'

# file, what it may use, reason
EXCEPTIONS = (
    ("foundation/core/VAtomicOp.h", ("sys/single_threaded.h", "__libc_single_threaded"),
     "inline and public; chosen by __has_include, and counts without it are only slower"),
    ("foundation/threads/VThread.h", ("pthread.h",), "the ids of threads are the system's; POSIX"),
)
PORTING = "docs/porting.md"


def without_comments(text):
    def blank(match):
        found = match.group(0)
        return found if found.startswith(('"', "'")) else re.sub(r"[^\n]", " ", found)
    return re.sub(r'"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|//[^\n]*|/\*.*?\*/', blank, text, flags=re.S)


def findings_in(path, text, used):
    allowed = {}
    for row in EXCEPTIONS:
        if row[0] == path:
            allowed.update({name: row for name in row[1]})
    text = without_comments(text)
    searches = [("a header of one system", rf"#\s*include\s*<({HEADERS})>"), ("a path of Linux", f"({PATHS})")]
    if path.startswith("foundation/") and path.endswith(".h") and "/internal/" not in path:
        searches += [("a header of the system in a public header", rf"#\s*include\s*<({SYSTEM_HEADERS})>")]
    searches += [(what, rf"(?<!\w)({names})(?!\w)") for what, names in NAMES.items()]
    for what, pattern in searches:
        for match in re.finditer(pattern, text):
            if match.group(1) in allowed:
                used.add(allowed[match.group(1)])
                continue
            yield f"{path}:{text.count(chr(10), 0, match.start()) + 1}: {match.group(1)} is {what}"


def files_of_one_system():
    """Those that the page does not name, and those that it names and that are not there."""
    there = {file.as_posix().removeprefix("foundation/") for folder in FOLDERS for system in ("linux", "posix")
             for file in pathlib.Path(folder).rglob(f"*_{system}.cpp")}
    named = set(re.findall(r"`([\w/]+_(?:linux|posix)\.cpp)`", pathlib.Path(PORTING).read_text(encoding="utf-8")))
    yield from (f"{PORTING}: {path} is not named" for path in sorted(there - named) if "_linux" in path)
    yield from (f"{PORTING}: {path} does not exist" for path in sorted(named - there))


def main():
    findings = []
    used = set()
    for folder in FOLDERS:
        for file in sorted(pathlib.Path(folder).rglob("*")):
            path = file.as_posix()
            if file.suffix in (".h", ".cpp") and not file.stem.endswith("_linux") and "launcher/linux/" not in path:
                findings += findings_in(path, file.read_text(encoding="utf-8"), used)
    findings += files_of_one_system()
    findings += [f"no longer needed: {row}" for row in EXCEPTIONS if row not in used]
    print("\n".join(findings) or "systems: what only Linux has is in its own files")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
