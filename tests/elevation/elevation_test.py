#!/usr/bin/python3
"""Runs the launcher's bundle for real: as root, through polkit and through sudo, with the real dialogs.

usage: elevation_test.py <folder of the bundles> --probe <program> [--plain] [--pictures <folder>] [case ...]

Needs root. A private system bus with polkitd runs in namespaces of its own, so nothing of the machine changes;
where the machine refuses namespaces (or with --plain) its own bus is used and everything is taken back at the
end. Exit status: 0 all passed, 1 something failed, 77 nothing could be run (the reason is printed).
"""
import argparse
import os
import pwd
import signal
import subprocess
import sys
import time
import traceback

USERS = {"admin": "vftest-admin", "yes": "vftest-yes", "no": "vftest-no"}
PASSWORD = "right horse 42"
NAMESPACE = "--mount --pid --fork --mount-proc --kill-child=KILL --propagation private".split()
COPIED = ("/etc", "/usr/share/polkit-1", "/var/lib/polkit-1", "/home")
MACOS = "/QuillmarkLauncher.app/Contents/MacOS/"
GUIDE = "/ZephGuide.app/Contents/MacOS/ZephGuide"
POLKITD = "/usr/lib/polkit-1/polkitd"
RULES = "/etc/polkit-1/rules.d/00-vftest.rules"
SUDOERS = "/etc/sudoers.d/vftest"
RULES_TEXT = """
polkit.addAdminRule(function(action, subject) {
    if (subject.user.indexOf("vftest-") == 0) { return ["unix-user:vftest-admin"]; }
});
polkit.addRule(function(action, subject) {
    if (action.id != "org.freedesktop.policykit.exec") { return polkit.Result.NOT_HANDLED; }
    return { "vftest-admin": polkit.Result.AUTH_ADMIN, "vftest-yes": polkit.Result.YES,
             "vftest two words": polkit.Result.YES, "vftest-no": polkit.Result.NO }[subject.user];
});
"""
HANG = 30  # seconds; far beyond what any step takes


def call(*command, check=True, **options):
    return subprocess.run(command, check=check, capture_output=True, text=True, **options).stdout


def write(path, text, mode=0o644):
    with open(path, "w") as file:
        file.write(text)
    os.chmod(path, mode)


def wait_for(what, condition, limit=HANG):
    end = time.monotonic() + limit
    while not condition():
        if time.monotonic() > end:
            raise AssertionError("waited in vain for " + what)
        time.sleep(0.02)


def running(word):
    """Processes whose command line holds the word."""
    found = []
    for entry in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{entry}/cmdline", "rb") as file:
                if word.encode() in file.read() and int(entry) != os.getpid():
                    found.append(int(entry))
        except OSError:
            pass
    return found


class World:
    """Users, rules, bus and polkitd; `private` in namespaces that vanish, else on the machine itself."""

    def __init__(self, private):
        self.private, self.undo, self.polkitd = private, [], None

    def build(self, bundles, probe):
        self.home = "/opt/quillmark"
        if self.private:
            call("mount", "-t", "tmpfs", "-o", "mode=755", "tmpfs", "/opt")
        elif os.path.exists(self.home):
            raise AssertionError(self.home + " exists; it is not touched")
        else:
            self.undo.append(lambda: call("rm", "-rf", self.home))
        os.makedirs(self.home, exist_ok=True)
        call("cp", probe, self.stage("plain", bundles) + MACOS + "StatusProbe")
        if self.private:
            self.hide_machine()
        for user in USERS.values():
            self.undo.append(lambda user=user: call("userdel", "--remove", user, check=False))
            call("useradd", "--create-home", "--shell", "/bin/bash", user)
        call("chpasswd", input="".join(f"{user}:{PASSWORD}\n" for user in USERS.values()))
        for path, text, mode in ((RULES, RULES_TEXT, 0o644), (SUDOERS, "vftest-admin ALL=(ALL) ALL\n", 0o440)):
            self.undo.append(lambda path=path: os.unlink(path))
            write(path, text, mode)
        if not self.ask_bus("GetId"):
            os.makedirs("/run/dbus", exist_ok=True)
            self.start("dbus-daemon", "--system", "--nofork", "--nopidfile", "--nosyslog")
            wait_for("the system bus", lambda: self.ask_bus("GetId"))
        self.start_polkitd()

    def hide_machine(self):
        for place in ("/run", "/tmp"):
            call("mount", "-t", "tmpfs", "-o", "mode=1777" if place == "/tmp" else "mode=755", "tmpfs", place)
        for folder in ("dbus", "user", "lock", "sudo", "copies"):
            os.mkdir("/run/" + folder, 0o711 if folder == "sudo" else 0o755)
        for place in filter(os.path.isdir, COPIED):
            copy = "/run/copies" + place.replace("/", "_")
            call("cp", "-a", place, copy)
            call("mount", "--bind", copy, place)
        with open("/etc/passwd", "a") as file:
            file.write("vftest two words:x:61234:61234::/tmp:/bin/sh\n")

    def start(self, *command, **options):
        process = subprocess.Popen(command, stderr=subprocess.DEVNULL, stdout=subprocess.DEVNULL, **options)
        self.undo.append(lambda: (process.kill(), process.wait()))
        return process

    @staticmethod
    def ask_bus(method, *arguments):
        return call("dbus-send", "--system", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                    "org.freedesktop.DBus." + method, *arguments, check=False)

    def has_polkit(self):
        return "boolean true" in self.ask_bus("NameHasOwner", "string:org.freedesktop.PolicyKit1")

    def start_polkitd(self):
        if not self.has_polkit():
            self.polkitd = self.start(POLKITD, "--no-debug")
            wait_for("polkitd", self.has_polkit)

    def stop_polkitd(self):
        call("mount", "-t", "tmpfs", "tmpfs", "/usr/share/dbus-1/system-services")  # else the bus restarts it
        self.polkitd.kill()
        self.polkitd.wait()
        wait_for("the end of polkitd", lambda: not self.has_polkit())

    def stage(self, name, bundles):
        folder = os.path.join(self.home, name)
        os.makedirs(folder)
        call("cp", "-a", bundles + "/QuillmarkLauncher.app", bundles + "/ZephGuide.app", folder)
        call("chown", "-R", "root:root", folder)
        call("chmod", "-R", "u+w,a+rX", folder)
        return folder

    def clean(self):
        for action in reversed(self.undo):
            try:
                action()
            except Exception:
                traceback.print_exc()


class Desktop:
    """A display without a window manager, and somebody who sits in front of it."""

    def __init__(self, world, pictures):
        read, write_end = os.pipe()
        world.start("Xvfb", "-displayfd", str(write_end), "-screen", "0", "800x600x24", "-noreset", "-nolisten", "tcp", "-ac",
                    pass_fds=[write_end])
        self.pictures = pictures  # a descriptor: the folder may be out of sight by now
        self.environment = {"DISPLAY": ":" + os.read(read, 16).decode().strip()}

    def tool(self, *command):
        return call(*command, env=dict(os.environ, **self.environment), check=False, timeout=HANG)

    def windows(self):
        return self.tool("xdotool", "search", "--onlyvisible", "--name", "^Quillmark$").split()

    def expect(self, picture=None):
        wait_for("a dialog", lambda: self.windows() or Run.last.poll() is not None)
        assert self.windows(), "the launcher ended without a dialog"
        self.window = self.windows()[0]
        self.tool("xdotool", "windowfocus", "--sync", self.window)
        if picture and self.pictures is not None:
            time.sleep(0.3)  # let it draw
            png = subprocess.run(["import", "-window", self.window, "png:-"], check=True, capture_output=True,
                                 env=dict(os.environ, **self.environment)).stdout
            file = os.open(picture + ".png", os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o644, dir_fd=self.pictures)
            os.write(file, png)
            os.close(file)

    def key(self, name):
        self.tool("xdotool", "key", name)

    def gone(self):
        wait_for("the dialog to close", lambda: not self.windows())

    def password(self, text=PASSWORD):
        self.tool("xdotool", "type", "--delay", "2", text)
        self.key("Return")

    def wrong_password(self):
        """Types one and waits until polkit, after its delay, asks again."""
        before = running("polkit-agent-helper-1")
        self.password("wrong")
        wait_for("the next question", lambda: set(running("polkit-agent-helper-1")) - set(before))
        time.sleep(0.2)

    def click_ok(self):
        geometry = dict(line.split("=") for line in
                        self.tool("xdotool", "getwindowgeometry", "--shell", self.window).split())
        self.tool("xdotool", "mousemove", "--window", self.window, str(int(geometry["WIDTH"]) - 50),
                  str(int(geometry["HEIGHT"]) - 30), "click", "1")


class Run:
    """One start of the launcher by a user."""

    count, last = 0, None

    def __init__(self, world, user, folder="plain", environment=None, launcher=None):
        Run.count += 1
        self.user, self.folder = user, os.path.join(world.home, folder)
        base = os.path.join(world.home, f"run{Run.count}")
        self.files = [base + ".out", base + ".err"]
        streams = [open(path, "a") for path in self.files]
        record = pwd.getpwnam(user)
        identity = ["setpriv", f"--reuid={record.pw_uid}", f"--regid={record.pw_gid}", "--init-groups"]
        variables = {"PATH": "/usr/bin:/bin", "HOME": "/tmp", "LD_LIBRARY_PATH": "/nowhere", "IFS": "x",
                     **(environment or {})}
        spare = os.open("/etc/hostname", os.O_RDONLY)
        self.process = subprocess.Popen(
            identity + ["env", "-i"] + [f"{name}={value}" for name, value in variables.items()] +
            [launcher or self.folder + MACOS + "QuillmarkLauncher"],
            stdin=subprocess.DEVNULL, stdout=streams[0], stderr=streams[1], pass_fds=[spare], cwd=self.folder)
        Run.last = self.process
        os.close(spare)

    def text(self, stream=0):
        with open(self.files[stream], errors="surrogateescape") as file:
            return file.read()

    def ends(self, status, stdout="", stderr=""):
        """The launcher ends with the status, and its streams hold the texts."""
        got = self.process.wait(HANG)
        assert got == status, f"exit status {got}, not {status}: {self.text()!r} {self.text(1)!r}"
        assert stdout in self.text(), f"{stdout!r} not in {self.text()!r}"
        assert stdout or not self.text(), f"unexpected output {self.text()!r}"
        assert stderr in self.text(1), f"{stderr!r} not in {self.text(1)!r}"
        for noise in ("Gtk", "sudo", "polkit", "WARNING"):
            assert noise not in self.text(1), self.text(1)

    def guide_ran(self):
        """The guide ran as root with one argument for the name, and with nothing that was not meant for it."""
        wait_for("the guide", lambda: "ZephGuide: done\n" in self.text())
        text = self.text()
        lines = [line[len("ZephGuide: "):] for line in text.split("\n") if line.startswith("ZephGuide: ")]
        assert "user 0, effective user 0, group 0, effective group 0" in lines, text
        guide = self.folder + GUIDE
        for index, argument in enumerate((guide, "-uname", self.user)):
            assert f"ZephGuide: argument {index} = [{argument}]\n" in text, text
        assert "argument 3" not in text, text
        names = {line.split()[1].split("=")[0] for line in lines if line.startswith("variable")}
        allowed = {"PATH", "HOME", "SHELL", "USER", "LOGNAME", "DISPLAY", "XAUTHORITY", "WAYLAND_DISPLAY", "LANG"}
        assert names and names <= allowed, names
        descriptors = [line for line in lines if line.startswith("descriptor")]
        assert descriptors == ["descriptor 0 = /dev/null"] + \
            [f"descriptor {i + 1} = {path}" for i, path in enumerate(self.files)], descriptors
        process, session = [word.split()[1] for word in lines[1].split(", ")[:2]]
        assert process == session, lines[1]


class Probe(Run):
    """The same for the program that prints what the service answered."""

    def __init__(self, world, user, folder="plain", environment=None):
        super().__init__(world, user, folder, environment, os.path.join(world.home, folder) + MACOS + "StatusProbe")

    def gets(self, acquired):
        self.ends(0, f"acquired {acquired}\n")


CASES = []


def case(function):
    CASES.append(function)
    return function


@case
def root_needs_nothing(world, desktop):
    run = Run(world, "root")
    run.ends(0, "Called auth exe priv\nStatus is valid 0\n", "Copied the authorisation = \n")
    run.guide_ran()


@case
def polkit_rule_decides(world, desktop):
    run = Run(world, USERS["yes"])
    run.ends(0, "Status is valid 0\n")
    run.guide_ran()
    Run(world, USERS["no"]).ends(1)
    for user, status in (("yes", "0\nexecuted 0"), ("no", -60005), ("admin", -60005)):  # no display to ask on
        Probe(world, USERS[user]).gets(status)


@case
def broker_does_not_work(world, desktop):
    folder = world.stage("broken", world.home + "/plain")
    for text in ("#!/bin/sh\nexit 3\n", "#!/bin/sh\nkill -9 $$\n"):
        write(folder + MACOS + "QuillmarkBroker", text, 0o755)
        Probe(world, USERS["yes"], "broken").gets(-60008)


@case
def password_dialog(world, desktop):
    for answer, status in ((lambda: desktop.password(), 0), (lambda: desktop.key("Escape"), 1)):
        run = Run(world, USERS["admin"], environment=desktop.environment)
        desktop.expect("password-dialog")
        answer()
        run.ends(status, "Status is valid 0\n" if status == 0 else "", "Copied the authorisation = \n")
    run = Probe(world, USERS["admin"], environment=desktop.environment)
    desktop.expect()
    desktop.key("Escape")
    run.gets(-60006)
    run = Run(world, USERS["admin"], environment=desktop.environment)
    desktop.expect()
    desktop.wrong_password()
    desktop.expect("password-dialog-again")
    desktop.password()
    run.ends(0, "Status is valid 0\n")
    run.guide_ran()


@case
def wrong_password(world, desktop):
    run = Probe(world, USERS["admin"], environment=desktop.environment)
    desktop.expect()
    desktop.wrong_password()
    desktop.wrong_password()
    desktop.password("wrong")
    run.gets(-60005)


@case
def dialog_dies(world, desktop):
    run = Probe(world, USERS["admin"], environment=desktop.environment)
    desktop.expect()
    for process in running("QuillmarkDialog"):
        os.kill(process, signal.SIGKILL)
    run.gets(-60005)


@case
def launcher_dies_while_asking(world, desktop):
    run = Run(world, USERS["admin"], environment=desktop.environment)
    desktop.expect()
    run.process.kill()
    run.process.wait()
    wait_for("the helpers to leave", lambda: not running("QuillmarkDialog") and not running("QuillmarkBroker"))


@case
def targets_that_cannot_run(world, desktop):
    """The guide is what stands in its place; a missing guide leads to the missing uninstaller."""
    target = world.stage("targets", world.home + "/plain") + GUIDE
    kinds = {
        "missing": lambda: None,
        "not permitted": lambda: write(target, "#!/bin/sh\n", 0o644),
        "ill-formed": lambda: write(target, "\x7fELF but not really", 0o755),
        "no interpreter": lambda: write(target, "#!/nowhere/sh\n", 0o755),
        "directory": lambda: os.mkdir(target),
    }
    for user in ("root", USERS["yes"]):
        for kind, make in kinds.items():
            call("rm", "-rf", target)
            make()
            Run(world, user, "targets").ends(
                1, "Called auth exe priv\nStatus is invalid -60031\n", "ALERT: Error: Unable to find installer "
                "application to run. Please contact Quillmark technical support")


@case
def alert_is_shown(world, desktop):
    os.unlink(world.stage("no guide", world.home + "/plain") + GUIDE)
    for close in (lambda: desktop.key("Return"), lambda: desktop.key("Escape"), desktop.click_ok):
        run = Run(world, USERS["yes"], "no guide", desktop.environment)
        desktop.expect("alert")
        assert run.process.poll() is None, "the alert is not modal"
        close()
        run.ends(1, "Status is invalid -60031\n")


@case
def right_is_lost_and_asked_again(world, desktop):
    folder = world.stage("lost", world.home + "/plain")
    broker = folder + MACOS + "QuillmarkBroker"
    call("mv", broker, broker + ".real")
    write(broker, "#!/usr/bin/python3\n"
          "import os, socket, struct\n"
          f"if not os.path.exists('{folder}/seen'):\n"
          f"    open('{folder}/seen', 'w')\n"
          "    socket.socket(fileno=0).send(struct.pack('=II', 0x514d5731, 1))\n"
          "else:\n"
          f"    os.execv('{broker}.real', ['{broker}.real'])\n", 0o755)
    run = Run(world, USERS["yes"], "lost")
    run.ends(0, "Status is valid 0\n")
    run.guide_ran()
    os.unlink(folder + "/seen")
    run = Run(world, USERS["admin"], "lost", desktop.environment)
    desktop.expect()
    desktop.password()
    wait_for("the first right", lambda: os.path.exists(folder + "/seen"))
    desktop.gone()
    desktop.expect()
    desktop.key("Escape")
    run.ends(0, "Called auth exe priv\nStatus is cancelled -60006\n")


@case
def odd_names(world, desktop):
    """Blanks, quotes and line feeds in the path, a leading '-' and blanks in the user's name."""
    folder = "odd 'quoted\" $(name)\n; end"
    world.stage(folder, world.home + "/plain")
    run = Run(world, USERS["yes"], folder)
    run.ends(0, "Status is valid 0\n")
    run.guide_ran()
    if world.private:
        run = Run(world, "vftest two words")
        run.ends(0, "Status is valid 0\n", "Uname = vftest two words\n")
        run.guide_ran()
    run = Run(world, USERS["yes"], launcher="QuillmarkLauncher.app/Contents/MacOS/QuillmarkLauncher")
    run.ends(1, "invalid -60031\n")  # four removals leave the launcher's own name of a short path


@case
def sudo_dialog(world, desktop):
    call("mount", "--bind", "/dev/null", "/usr/bin/pkexec")
    run = Run(world, USERS["admin"], environment=desktop.environment)
    desktop.expect("sudo-dialog")
    desktop.password()
    run.ends(0, "Status is valid 0\n")
    run.guide_ran()
    call("sudo", "-u", USERS["admin"], "sudo", "-K")
    run = Probe(world, USERS["admin"], environment=desktop.environment)
    desktop.expect()
    desktop.key("Escape")
    run.gets(-60006)
    Probe(world, USERS["admin"]).gets(-60005)
    run = Probe(world, USERS["no"], environment=desktop.environment)
    desktop.expect()
    desktop.password()
    run.gets(-60005)
    run = Run(world, USERS["admin"], environment=desktop.environment)
    desktop.expect()
    run.process.kill()
    run.process.wait()
    wait_for("the helpers to leave", lambda: not running("QuillmarkDialog") and not running("QuillmarkBroker"))
    call("umount", "/usr/bin/pkexec")


@case
def nothing_to_ask_with(world, desktop):
    world.stop_polkitd()
    Probe(world, USERS["yes"]).gets(-60005)
    for program in ("pkexec", "sudo"):
        call("mount", "--bind", "/dev/null", "/usr/bin/" + program)
    Run(world, USERS["yes"]).ends(1, "", "ALERT: Failed to create the authorisation with status -60008")


PRIVATE_ONLY = {sudo_dialog: "pkexec can be hidden", nothing_to_ask_with: "polkitd, pkexec and sudo can be hidden"}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bundles")
    parser.add_argument("cases", nargs="*")
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
        for function in CASES:
            if options.cases and function.__name__ not in options.cases:
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
