"""What an attacker who is the same user, or another one, must not get: each case tries it."""
import array
import contextlib
import ctypes
import json
import os
import re
import resource
import signal
import socket
import struct
import subprocess

from rig import *

WORD, REQUEST = 0x514d5731, 0x514d5231
READY, STARTED, NOT_EXECUTABLE, FAILED = 1, 3, 4, 5
BAD_INPUT, NOT_STARTED, NOT_ROOT, SET_USER_ID = 65, 70, 77, 78
REFUSED = "0\nexecuted -60031"
SYS_PIDFD_OPEN, SYS_PIDFD_GETFD, PTRACE_ATTACH = 434, 438, 16
PR_CAPBSET_DROP, CAP_SYS_RESOURCE = 24, 24
SHADOW = 1 << 30  # bytes; only a sanitizer's own tables are so large
libc = ctypes.CDLL(None, use_errno=True)
TELL_STATE = """#!/usr/bin/python3
import json, os, re, resource, sys
status = dict(line.rstrip().split(":\\t", 1) for line in open("/proc/self/status") if ":\\t" in line)
print("STATE", json.dumps({
    "limits": [resource.getrlimit(i) for i in range(16)], "nice": os.nice(0),
    "policy": os.sched_getscheduler(0), "processors": sorted(os.sched_getaffinity(0)), "groups": os.getgroups(),
    "mask": os.umask(0), "score": open("/proc/self/oom_score_adj").read(), "arguments": sys.argv,
    **{name: status[name] for name in ("SigBlk", "SigCgt")},
    "ignored": int(status["SigIgn"], 16) & ~(1 << 12 | 1 << 24)}))  # Python itself ignores SIGPIPE and SIGXFSZ
print("ZephGuide: done", flush=True)
"""


def state(run, stderr=""):
    run.ends(0, VALID, stderr)
    wait_for("the guide", lambda: "ZephGuide: done\n" in run.text())
    return json.loads(next(line for line in run.text().split("\n") if line.startswith("STATE"))[6:])


def broker_answers(user, command, *texts, foreign=False, stream=None, may_raise_limits=True):
    """Speaks to a broker past the launcher, as `user`: its first word, its answer to the path and its arguments
    (which another process sends if `foreign`), its exit status. `stream` takes the place of standard output and error."""
    request = struct.pack("=III", REQUEST, len(texts) - 1, 0) + b"".join(
        struct.pack("=I", len(text)) + text.encode() for text in texts) if texts else b""
    read, write_end = os.pipe()
    process = os.fork()
    if process == 0:
        if not may_raise_limits:
            resource.setrlimit(resource.RLIMIT_NOFILE, (64, 64))
            libc.prctl(PR_CAPBSET_DROP, CAP_SYS_RESOURCE, 0, 0, 0)
        os.initgroups(user, pwd.getpwnam(user).pw_gid)
        os.setgid(pwd.getpwnam(user).pw_gid)
        os.setuid(pwd.getpwnam(user).pw_uid)
        ours, theirs = socket.socketpair(socket.AF_UNIX, socket.SOCK_SEQPACKET)
        broker = subprocess.Popen(command, stdin=theirs, env={"PATH": "/usr/bin:/bin"}, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL)
        theirs.close()
        ours.settimeout(HANG)

        def word():
            with contextlib.suppress(OSError, struct.error):
                return (list(struct.unpack("=II", ours.recv(100))) + [0])[1]

        answers = [word()]
        if texts and (not foreign or os.fork() == 0):
            rights = array.array("i", [os.open("/dev/null", os.O_WRONLY) if stream is None else stream] * 2)
            ours.sendmsg([request], [(socket.SOL_SOCKET, socket.SCM_RIGHTS, rights)])
            if foreign:
                os._exit(0)
        answers.append(word() if texts else None)
        os.write(write_end, json.dumps([*answers, broker.wait(HANG)]).encode())
        os._exit(0)
    os.close(write_end)
    os.waitpid(process, 0)
    return json.loads(os.read(read, 1000))


@case
def protected_bundle_runs_nothing_else(world, desktop):
    user, plain = USERS["yes"], world.home + "/plain"
    guide, broker = plain + GUIDE, plain + MACOS + "QuillmarkBroker"
    evil = world.stage("evil", plain, user)
    write(evil + GUIDE, f"#!/bin/sh\nid >{evil}/ran\n", 0o755)
    own = evil + MACOS + "QuillmarkLauncher"
    run = Run(world, user, launcher=["/bin/bash", "-c", f"exec -a {own} {plain + MACOS}QuillmarkLauncher"])
    run.ends(1, "Status is invalid -60031\n")
    os.symlink(plain + "/ZephGuide.app", world.home + "/ZephGuide.app")  # a way around that leads to the right file
    os.symlink(plain + "/QuillmarkLauncher.app", world.home + "/QuillmarkLauncher.app")
    # The guide's own path is its first argument, not the way that led there.
    Run(world, user, launcher=[world.home + MACOS + "QuillmarkLauncher"]).succeeds()
    os.unlink(world.home + "/ZephGuide.app"), os.unlink(world.home + "/QuillmarkLauncher.app")
    for asked in (["/bin/sh", "-c", f"id >{evil}/ran"], ["/bin/true"], [guide], [guide, "-uname"],
                  [guide, "-uname", "root"], [guide, "-uname", user, "more"], [guide, "-c", user],
                  [evil + GUIDE, "-uname", user], [broker, "-uname", user], [plain, "-uname", user]):
        Probe(world, user, asks_for=asked).gets(REFUSED)
    pkexec = ["/usr/bin/pkexec", "--disable-internal-agent", broker]
    assert broker_answers(user, pkexec, guide, "-uname", user) == [READY, STARTED, 0]
    assert broker_answers(user, pkexec, "/bin/sh", "-c", f"id >{evil}/ran") == [READY, NOT_EXECUTABLE, NOT_STARTED]
    assert broker_answers(user, pkexec, guide, "-uname", user, foreign=True) == [READY, FAILED, BAD_INPUT]
    assert not os.path.exists(evil + "/ran")
    # The socket of one user, and a right that another one asked for.
    number = pwd.getpwnam(user).pw_uid
    for asked_by in (f"PKEXEC_UID={number}", f"SUDO_UID={number}", "SUDO_UID=0x0", f"SUDO_UID={number} PKEXEC_UID=0"):
        assert broker_answers("root", ["env", *asked_by.split(), broker]) == [None, None, BAD_INPUT], asked_by
    asked_by = ["PKEXEC_UID=0", f"PKEXEC_UID={number} SUDO_UID=0"]
    assert [broker_answers("root", ["env", *words.split(), broker], "/bin/sh")[0] for words in asked_by] == [READY] * 2


@case
def protected_bundle_is_strict(world, desktop):
    user = USERS["yes"]
    folder = world.stage("strict", world.home + "/plain")
    app, guide = folder + "/ZephGuide.app", folder + GUIDE
    for change, back in (
            (("chown", user, guide), ("chown", "root", guide)), (("chmod", "g+w", guide), ("chmod", "g-w", guide)),
            (("setfacl", "-m", f"u:{user}:rwx", guide), ("setfacl", "-b", guide)),
            (("setfacl", "-m", f"u:{user}:rwx", app), ("setfacl", "-b", app)),
            (("chmod", "1777", app), ("chmod", "755", app)),
            (("sh", "-c", f"mv {app} {app}.real; ln -s {app}.real {app}"),
             ("sh", "-c", f"rm {app}; mv {app}.real {app}"))):
        call(*change)
        Probe(world, user, "strict", asks_for=[guide, "-uname", user]).gets(REFUSED)
        call(*back)
    Probe(world, user, "strict", asks_for=[guide, "-uname", user]).gets("0\nexecuted 0")
    for change, back in ((("chmod", "o+w", folder), ("chmod", "o-w", folder)),
                         (("setfacl", "-m", f"u:{user}:rwx", folder), ("setfacl", "-b", folder)),
                         (("chown", user, folder), ("chown", "root", folder))):
        call(*change)  # no longer protected: portable, as what can be exchanged protects nothing
        Probe(world, user, "strict").gets("0\nexecuted 0")
        call(*back)
        Probe(world, user, "strict").gets(REFUSED)


@case
def right_cannot_be_taken(world, desktop):
    """Another process of the same user, while the launcher holds the right: it is stopped there."""
    user = USERS["admin"]
    run = desktop.run(Run, user, folder="portable")
    run.process.send_signal(signal.SIGSTOP)
    desktop.password()
    desktop.gone()
    wait_for("the broker", lambda: any(open(f"/proc/{process}/cmdline", "rb").read().split(b"\0")[0].endswith(
        b"/QuillmarkBroker") for process in running("QuillmarkBroker")))
    descriptors = sorted(map(int, os.listdir(f"/proc/{run.process.pid}/fd")))
    read, write_end = os.pipe()
    thief = os.fork()
    if thief == 0:
        os.setgid(pwd.getpwnam(user).pw_gid)
        os.setuid(pwd.getpwnam(user).pw_uid)
        process = libc.syscall(SYS_PIDFD_OPEN, run.process.pid, 0)
        taken = [n for n in descriptors if libc.syscall(SYS_PIDFD_GETFD, process, n, 0) >= 0]
        attached = libc.ptrace(PTRACE_ATTACH, run.process.pid, None, None) == 0
        opened = [name for name in ("mem", "environ", "fd/0") if os.access(f"/proc/{run.process.pid}/{name}", os.R_OK)]
        os.write(write_end, json.dumps([process >= 0, taken, attached, opened]).encode())
        os._exit(0)
    os.waitpid(thief, 0)
    assert len(descriptors) > 3, descriptors
    assert json.loads(os.read(read, 1000)) == [True, [], False, []]
    run.process.send_signal(signal.SIGCONT)
    run.succeeds()


def holds(process, text):
    """Whether the memory that the process can write to holds the text."""
    with open(f"/proc/{process}/maps") as maps, open(f"/proc/{process}/mem", "rb", 0) as memory:
        for line in maps:
            place, rights = line.split()[:2]
            begin, end = (int(n, 16) for n in place.split("-"))
            with contextlib.suppress(OSError):
                if rights.startswith("rw") and end - begin < SHADOW and text in os.pread(memory.fileno(), end - begin, begin):
                    return True
    return False


@case
def password_passes_the_launcher_by(world, desktop):
    typed = "a wrong parrot in a long and golden cage"
    for hide in ((), ("/usr/bin/pkexec",)):
        with hidden(*hide):
            run = desktop.run(Run, USERS["admin"], folder="portable")
            dialog, = running("QuillmarkDialog")
            desktop.tool("xdotool", "type", "--delay", "2", typed)
            wait_for("the typed text", lambda: holds(dialog, typed.encode()))
            if hide:
                desktop.key("Return")
                wait_for("sudo's next question", lambda: set(running("QuillmarkDialog")) and dialog not in running("QuillmarkDialog"))
            else:
                with next_question():
                    desktop.key("Return")
                assert not holds(dialog, typed.encode())
            assert not holds(run.process.pid, typed.encode())
            desktop.expect()
            desktop.password()
            run.succeeds()
            call("sudo", "-u", USERS["admin"], "sudo", "-K")


@case
def set_user_id_gives_nothing(world, desktop):
    user = USERS["yes"]
    folder = world.stage("set-uid", world.home + "/plain")
    for mode in ("u+s", "g+s", "capability"):
        def give(program):
            if mode == "capability":
                os.setxattr(program, "security.capability", struct.pack("<5I", 0x2000001, 1 << 23, 0, 0, 0))  # CAP_SYS_NICE
            else:
                call("chmod", mode, program)

        def take_back(program):
            call("chmod", "ug-s", program)
            if mode == "capability":
                os.removexattr(program, "security.capability")

        give(folder + MACOS + "QuillmarkLauncher")
        run = Run(world, user, "set-uid")
        run.ends(1, "", "img path = ")
        assert run.text(1).endswith("Created authorisation\nALERT: Failed to create the authorisation with status -60008\n")
        take_back(folder + MACOS + "QuillmarkLauncher")
        give(folder + MACOS + "QuillmarkBroker")
        *words, status = broker_answers(user, [folder + MACOS + "QuillmarkBroker"])
        assert words == [None, None], words
        # The leak checker cannot look into such a process and ends it with a status of its own.
        assert status == SET_USER_ID or world.sanitized and status != 0, status
        take_back(folder + MACOS + "QuillmarkBroker")
    assert broker_answers(user, [folder + MACOS + "QuillmarkBroker"]) == [None, None, NOT_ROOT]


@case
def program_starts_clean(world, desktop):
    """Limits, signals, streams and all else that the user can set for the launcher."""
    user = USERS["yes"]
    folder = world.stage("clean", world.home + "/plain")
    write(folder + GUIDE, TELL_STATE, 0o755)
    expected = {"limits": [list(resource.prlimit(1, i)) for i in range(16)], "nice": 0, "policy": 0,
                "processors": sorted(os.sched_getaffinity(1)), "groups": os.getgrouplist("root", 0), "mask": 0o022,
                "score": open("/proc/1/oom_score_adj").read(), "arguments": [folder + GUIDE, "-uname", user],
                "SigBlk": "0" * 16, "SigCgt": "0000000000000002", "ignored": 0}
    code = """import os, resource, signal, sys
for name, limit in (("CPU", 77), ("FSIZE", 5000000), ("NOFILE", 64), ("CORE", 0), *(() if sys.argv[2] == "sanitized" else (("AS", 1 << 33),))):
    number = getattr(resource, "RLIMIT_" + name)
    resource.setrlimit(number, (limit, limit if sys.argv[1] == "hard" else resource.getrlimit(number)[1]))
os.sched_setaffinity(0, {sorted(os.sched_getaffinity(0))[-1]}); os.sched_setscheduler(0, os.SCHED_BATCH, os.sched_param(0))
os.nice(7); os.umask(0o777); open("/proc/self/oom_score_adj", "w").write("1000")
for number in range(1, 65):
    if number not in (9, 19, 32, 33): signal.signal(number, signal.SIG_IGN)
signal.pthread_sigmask(signal.SIG_BLOCK, range(1, 65))
os.execv(sys.argv[3], sys.argv[3:])"""
    build = "sanitized" if world.sanitized else "plain"
    may_raise = int(re.search(r"CapBnd:\t(\w+)", open("/proc/self/status").read())[1], 16) >> 24 & 1
    for kind in ["soft"] + ["hard"] * may_raise:
        run = Run(world, user, "clean", through=["/usr/bin/python3", "-c", code, kind, build])
        got = state(run)
        for name, value in expected.items():
            assert got[name] == value, f"{name}: {got[name]}, not {value}"
        assert "Could not reset" not in run.text(1), run.text(1)
    run = Run(world, user, "clean", through=["/usr/bin/python3", "-c", code, "hard", build], bounding="-sys_resource")
    got = state(run, "Could not reset the limits: Operation not permitted\n")  # told, not fatal
    assert (got["limits"][resource.RLIMIT_NOFILE], got["nice"]) == ([64, 64], 0), got
    got = state(Run(world, "root", "clean", through=["/usr/bin/prlimit", "--nofile=64:64", "nice", "-n", "7"]))
    assert (got["limits"][resource.RLIMIT_NOFILE], got["nice"]) == ([64, 64], os.nice(0) + 7), got  # root's are left


@case
def closed_streams(world, desktop):
    for user in ("root", USERS["yes"]):
        Run(world, user, through=["/bin/sh", "-c", 'exec "$@" <&- >&- 2>&-', "sh"]).ends(0)
        run = Run(world, user, through=["/bin/sh", "-c", 'exec "$@" <&- 3>&1 >&2 2>&3 3>&-', "sh"])  # crossed
        run.files.reverse()
        run.ends(0, VALID)
        run.files.reverse()
        wait_for("the guide", lambda: "ZephGuide: done\n" in run.text(1))
    read, write_end = os.pipe()
    os.close(read)
    run = Run(world, USERS["yes"], stdout=write_end, stderr=write_end)  # without a reader the launcher dies as any program
    os.close(write_end)
    assert run.process.wait(HANG) in (-signal.SIGPIPE, 0)
    # A broker that has something to say starts the program also when no one reads it.
    # Not through pkexec, which hands down that SIGPIPE is ignored.
    for is_read in (True, False):
        read, write_end = os.pipe()
        if not is_read:
            os.close(read)
        assert broker_answers("root", [world.home + "/portable" + MACOS + "QuillmarkBroker"], "/bin/true", stream=write_end,
                              may_raise_limits=False) == [READY, STARTED, 0]
        os.close(write_end)
        assert not is_read or b"Could not reset the limits" in os.read(read, 1000)


@case
def false_words_from_a_broker(world, desktop):
    folder = world.stage("false", world.home + "/plain", USERS["yes"])
    write(folder + MACOS + "QuillmarkBroker", "#!/usr/bin/python3\n"
          "import socket\n"
          "line = socket.socket(fileno=0)\n"
          f"for step in open('{folder}/script').read().split():\n"
          "    if step == 'wait': line.recv(70000)\n"
          "    else: line.send(bytes.fromhex(step))\n", 0o755)
    word = {n: struct.pack("=II", WORD, n).hex() for n in range(9)}
    for steps, status in (
            ([word[READY], "wait", word[STARTED]], "0\nexecuted 0"), ([word[READY], "wait", word[READY]], "0\nexecuted -60008"),
            ([word[READY], "wait", word[7]], "0\nexecuted -60008"), ([word[READY], "wait", "00"], "0\nexecuted -60008"),
            ([word[READY], "wait"], "0\nexecuted -60008"), ([word[STARTED]], -60008), ([word[0]], -60008), (["00"], -60008),
            ([word[READY] + "00"], -60008), (["00" * 60000], -60008)):
        write(folder + "/script", " ".join(steps))
        Probe(world, USERS["yes"], "false").gets(status)


@case
def sudo_that_logs_input(world, desktop):
    """log_input alone, through sudo's own plug-in, puts a pipe in the place of the broker's socket; all settings work."""
    os.makedirs("/var/log/sudo-io", exist_ok=True)
    call("mount", "-t", "tmpfs", "tmpfs", "/var/log/sudo-io")
    with hidden("/usr/bin/pkexec"):
        for settings, kind in (("use_pty", "socket"), ("!use_pty", "socket"), ("log_output", "socket"),
                               ("log_output,!use_pty", "socket"), ("log_input,!use_pty", "pipe"), ("log_input", "pipe"),
                               ("log_input without the plug-in", "socket")):
            setting, _, without = settings.partition(" ")
            write(SUDOERS, f"Defaults {setting},timestamp_timeout=0\nvftest-admin ALL=(ALL) ALL\n"
                  "vftest-admin ALL=(ALL) NOPASSWD: /usr/bin/readlink\n", 0o440)
            write("/etc/sudo.conf", "Plugin sudoers_policy sudoers.so\n" if without else "")
            side, other = socket.socketpair()
            got = call(*identity_of(USERS["admin"]), "sudo", "-n", "readlink", "/proc/self/fd/0", stdin=side)
            assert got.startswith(kind + ":["), f"{settings}: {got}"
            side.close(), other.close()
            desktop.run(Run, USERS["admin"], PASSWORD).succeeds()
            wait_for("sudo to leave", lambda: not running("QuillmarkBroker"))
    logs = [os.path.join(place, name) for place, _, names in os.walk("/var/log/sudo-io") for name in names]
    kept = call("zcat", "--force", *logs, encoding="latin1")
    assert "QuillmarkBroker" in kept, logs
    assert PASSWORD not in kept and "-uname" not in kept, kept
    write(SUDOERS, "vftest-admin ALL=(ALL) ALL\n", 0o440)
    write("/etc/sudo.conf", "")
    call("umount", "/var/log/sudo-io")
