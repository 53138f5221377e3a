"""A private system bus, users, a display and runs of the launcher in front of them; what the cases share."""
import contextlib
import os
import pwd
import subprocess
import time

USERS = {"admin": "vftest-admin", "yes": "vftest-yes", "no": "vftest-no", "second": "vftest-second"}
PASSWORD, SECOND_PASSWORD = "right horse 42", "other horse 43"
NAMESPACE = "--mount --pid --fork --mount-proc --kill-child=KILL --propagation private".split()
COPIED = ("/etc", "/usr/share/polkit-1", "/var/lib/polkit-1", "/home")
MACOS = "/QuillmarkLauncher.app/Contents/MacOS/"
GUIDE = "/ZephGuide.app/Contents/MacOS/ZephGuide"
POLKITD = "/usr/lib/polkit-1/polkitd"
RULES = "/etc/polkit-1/rules.d/00-vftest.rules"
SUDOERS = "/etc/sudoers.d/vftest"
PAM_FILES = ("/etc/pam.d/common-auth", "/etc/pam.d/system-auth")
RULES_TEXT = """
polkit.addAdminRule(function(action, subject) {
    if (subject.user == "vftest-second") { return ["unix-user:vftest-admin", "unix-user:vftest-second"]; }
    if (subject.user.indexOf("vftest-") == 0) { return ["unix-user:vftest-admin"]; }
});
polkit.addRule(function(action, subject) {
    if (action.id != "org.freedesktop.policykit.exec" && action.id != "com.quillmark.Launcher.start") { return polkit.Result.NOT_HANDLED; }
    return { "vftest-admin": polkit.Result.AUTH_ADMIN, "vftest-yes": polkit.Result.YES, "vftest-second": polkit.Result.AUTH_ADMIN,
             "vftest two words": polkit.Result.YES, "vftest-no": polkit.Result.NO }[subject.user];
});
"""
VALID = "Status is valid 0\n"
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
        with contextlib.suppress(OSError), open(f"/proc/{entry}/cmdline", "rb") as file:
            if word.encode() in file.read() and int(entry) != os.getpid():
                found.append(int(entry))
    return found


@contextlib.contextmanager
def next_question():
    """What is done inside makes polkit, after its delay, ask again."""
    before = running("polkit-agent-helper-1")
    yield
    wait_for("the next question", lambda: set(running("polkit-agent-helper-1")) - set(before))
    time.sleep(0.2)


@contextlib.contextmanager
def hidden(*programs):
    for program in programs:
        call("mount", "--bind", "/dev/null", program)
    try:
        yield
    finally:
        for program in programs:
            call("umount", program)


def identity_of(user):
    record = pwd.getpwnam(user)
    return ["setpriv", f"--reuid={record.pw_uid}", f"--regid={record.pw_gid}", "--init-groups"]


class World:
    """Users, rules, bus and polkitd, in namespaces that vanish with the test."""

    home = "/opt/quillmark"

    def build(self, bundles, probe, installed):
        call("mount", "-t", "tmpfs", "-o", "mode=755", "tmpfs", "/opt")
        if probe:
            self.stage("plain", bundles)
            call("cp", probe, self.home + "/plain" + MACOS + "StatusProbe")
        else:
            os.makedirs(self.home + "/plain")
        if installed:
            call("cp", "-a", installed + self.home + "/installed", self.home)
            call("chown", "-R", "root:root", self.home + "/installed")
        for place, mode in (("/run", 755), ("/tmp", 1777)):
            call("mount", "-t", "tmpfs", "-o", f"mode={mode}", "tmpfs", place)
        for folder in ("dbus", "user", "lock", "sudo", "copies"):
            os.mkdir("/run/" + folder, 0o711 if folder == "sudo" else 0o755)
        for place in filter(os.path.isdir, COPIED):
            copy = "/run/copies" + place.replace("/", "_")
            call("cp", "-a", place, copy)
            call("mount", "--bind", copy, place)
        for user in USERS.values():
            call("useradd", "--create-home", "--shell", "/bin/bash", user)
        with open("/etc/passwd", "a") as file:
            file.write("vftest two words:x:61234:61234::/tmp:/bin/sh\n")
        call("chpasswd", input="".join(f"{user}:{PASSWORD}\n" for user in USERS.values()) +
             f"{USERS['second']}:{SECOND_PASSWORD}\n")
        if probe:
            self.stage("portable", self.home + "/plain", USERS["yes"])
        for file in filter(os.path.exists, PAM_FILES):  # else each wrong password takes some two seconds
            call("sed", "-i", "/^auth.*pam_unix.so/s/$/ nodelay/", file)
        write(RULES, RULES_TEXT)
        write(SUDOERS, "vftest-admin ALL=(ALL) ALL\n", 0o440)
        self.start("dbus-daemon", "--system", "--nofork", "--nopidfile", "--nosyslog")
        wait_for("the system bus", lambda: self.ask_bus("GetId"))
        self.polkitd = self.start(POLKITD, "--no-debug")
        wait_for("polkitd", self.has_polkit)

    @staticmethod
    def start(*command, **options):
        return subprocess.Popen(command, stderr=subprocess.DEVNULL, stdout=subprocess.DEVNULL, **options)

    @staticmethod
    def ask_bus(method, *arguments):
        return call("dbus-send", "--system", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                    "org.freedesktop.DBus." + method, *arguments, check=False)

    def has_polkit(self):
        return "boolean true" in self.ask_bus("NameHasOwner", "string:org.freedesktop.PolicyKit1")

    def stop_polkitd(self):
        call("mount", "-t", "tmpfs", "tmpfs", "/usr/share/dbus-1/system-services")  # else the bus restarts it
        self.polkitd.kill()
        self.polkitd.wait()
        wait_for("the end of polkitd", lambda: not self.has_polkit())

    def stage(self, name, bundles, owner="root"):
        """A copy of the bundles below a folder of the user: root's is a protected one, all others are portable."""
        folder = os.path.join(self.home, name)
        os.makedirs(folder)
        call("cp", "-a", bundles + "/QuillmarkLauncher.app", bundles + "/ZephGuide.app", folder)
        call("chown", "-R", f"{owner}:", folder)
        call("chmod", "-R", "u+w,a+rX", folder)
        return folder


class Desktop:
    """A display without a window manager, and somebody who sits in front of it."""

    def __init__(self, world, pictures):
        read, write_end = os.pipe()
        world.start("Xvfb", "-displayfd", str(write_end), "-screen", "0", "1600x1200x24", "-noreset", "-nolisten",
                    "tcp", "-ac", pass_fds=[write_end])
        self.world, self.pictures = world, pictures  # a descriptor: the folder may be out of sight by now
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
            self.tool("import", "-window", self.window, f"/proc/{os.getpid()}/fd/{self.pictures}/{picture}.png")

    def run(self, kind, user, answer=None, folder="plain", picture=None, **options):
        """A `kind` of run that opens a dialog, which gets a key or else a password as its answer."""
        self.gone()  # the last run's dialog may outlive its launcher for a moment and take the answer
        run = kind(self.world, user, folder, **{"environment": self.environment, **options})
        self.expect(picture)
        if answer in ("Escape", "Return"):
            self.key(answer)
        elif answer:
            self.password(answer)
        return run

    def key(self, name):
        self.tool("xdotool", "key", name)

    def gone(self):
        wait_for("the dialog to close", lambda: not self.windows())

    def password(self, text=PASSWORD):
        self.tool("xdotool", "type", "--delay", "2", text)
        self.key("Return")

    def wrong_password(self):
        with next_question():
            self.password("wrong")

    def click_ok(self):
        geometry = dict(line.split("=") for line in
                        self.tool("xdotool", "getwindowgeometry", "--shell", self.window).split())
        self.tool("xdotool", "mousemove", "--window", self.window, str(int(geometry["WIDTH"]) - 60),
                  str(int(geometry["HEIGHT"]) - 36), "click", "1")


class Run:
    """One start of the launcher by a user."""

    count, last = 0, None

    def __init__(self, world, user, folder="plain", environment=None, launcher=None, through=(),
                 bounding=None, **options):
        """`launcher` with its arguments; `through` are words before it, such as a program that changes limits."""
        Run.count += 1
        self.user, self.folder = user, os.path.join(world.home, folder)
        base = os.path.join(world.home, f"run{Run.count}")
        self.files = [base + ".out", base + ".err"]
        streams = [open(path, "a") for path in self.files]
        identity = identity_of(user) + ([f"--bounding-set={bounding}"] if bounding else [])
        variables = {"PATH": "/usr/bin:/bin", "HOME": "/tmp", "LD_LIBRARY_PATH": "/nowhere", "IFS": "x",
                     **(environment or {})}
        spare = os.open("/etc/hostname", os.O_RDONLY)
        self.process = subprocess.Popen(
            identity + ["env", "-i"] + [f"{name}={value}" for name, value in variables.items()] +
            [*through, *(launcher or [self.folder + MACOS + "QuillmarkLauncher"])],
            **{"pass_fds": [spare], "stdin": subprocess.DEVNULL, "stdout": streams[0], "stderr": streams[1],
               "cwd": self.folder, **options})
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

    def succeeds(self, stderr=""):
        """The launcher ends well, and the guide ran as root with nothing that was not meant for it."""
        self.ends(0, VALID, stderr)
        wait_for("the guide", lambda: "ZephGuide: done\n" in self.text())
        text = self.text()
        lines = [line[11:] for line in text.split("\n") if line.startswith("ZephGuide: ")]
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
        for variable in ("PATH=/usr/sbin:/usr/bin:/sbin:/bin", "HOME=/root", "SHELL=/bin/sh", "USER=root", "LOGNAME=root"):
            assert "variable " + variable in lines, f"{variable} not in {lines}"
        process, session, folder = [word.split()[1] for word in lines[1].split(", ")]
        assert process == session and folder == "/", lines[1]


    def dies(self):
        self.process.kill()
        self.process.wait()
        wait_for("the helpers to leave", lambda: not running("QuillmarkDialog") and not running("QuillmarkBroker"))


class Probe(Run):
    """The same for the program that prints what the service answered."""

    def __init__(self, world, user, folder="plain", environment=None, asks_for=(), **options):
        super().__init__(world, user, folder, environment,
                         [os.path.join(world.home, folder) + MACOS + "StatusProbe", *asks_for], **options)

    def gets(self, acquired):
        self.ends(0, f"acquired {acquired}\n")


CASES = []


def case(function):
    CASES.append(function)
    return function
