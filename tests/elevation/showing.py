"""What the user sees, hears through a screen reader, and does with keys."""
import contextlib
import json
import os
import signal
import socket

from rig import *

GRANTED = "0\nexecuted 0"
READER = """
import gi, json, sys, time
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi
def tell(node):
    relations = {r.get_relation_type().value_nick: r.get_target(0).get_name() for r in node.get_relation_set()}
    return {"role": node.get_role_name(), "name": node.get_name(), "by": relations.get("labelled-by"),
            "shown": node.get_state_set().contains(Atspi.StateType.SHOWING),
            "focused": node.get_state_set().contains(Atspi.StateType.FOCUSED),
            "children": [tell(node.get_child_at_index(i)) for i in range(node.get_child_count())]}
end = time.monotonic() + 20
while time.monotonic() < end:
    desktop = Atspi.get_desktop(0)
    try:
        found = [tell(desktop.get_child_at_index(i)) for i in range(desktop.get_child_count())]
    except Exception:  # something closed meanwhile
        continue
    if any(window["children"] for application in found for window in application["children"]):
        break
    time.sleep(0.1)
print(json.dumps(found))
"""


@contextlib.contextmanager
def screen_reader(world, user, desktop):
    """A session bus of the user with the accessibility service; gives a function that reads what is shown."""
    record = pwd.getpwnam(user)
    folder = os.path.join(world.home, "session")
    os.makedirs(folder, exist_ok=True)
    os.chown(folder, record.pw_uid, record.pw_gid)
    identity = ["setpriv", f"--reuid={record.pw_uid}", f"--regid={record.pw_gid}", "--init-groups", "env", "-i"]
    address = f"unix:path={folder}/bus"
    variables = {"DBUS_SESSION_BUS_ADDRESS": address, "XDG_RUNTIME_DIR": folder, "HOME": folder, "PATH": "/usr/bin:/bin",
                 **desktop.environment}
    words = [f"{name}={value}" for name, value in variables.items()]
    bus = subprocess.Popen([*identity, *words, "dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}"],
                           stderr=subprocess.DEVNULL)
    try:
        wait_for("the session bus", lambda: os.path.exists(folder + "/bus"))
        call(*identity, *words, "dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
             "org.freedesktop.DBus.Properties.Set", "string:org.a11y.Status", "string:IsEnabled", "variant:boolean:true")

        def read():
            found = json.loads(call(*identity, *words, "/usr/bin/python3", "-c", READER, timeout=HANG))
            nodes, flat = list(found), []
            while nodes:
                node = nodes.pop(0)
                flat.append(node)
                nodes = node["children"] + nodes
            return [node for node in flat if node["shown"]]
        yield variables, read
    finally:
        bus.kill()
        bus.wait()


def without_guide(world):
    """A folder whose launcher ends in the alert."""
    folder = world.home + "/guideless"
    if not os.path.exists(folder):
        os.unlink(world.stage("guideless", world.home + "/plain") + GUIDE)
    return "guideless"


def names(nodes, role):
    return [node["name"] for node in nodes if node["role"] == role]


@case
def blocked_display(world, desktop):
    """A display that accepts and never answers: the console lines, and nothing is left."""
    os.makedirs("/tmp/.X11-unix", exist_ok=True)
    with socket.socket(socket.AF_UNIX) as server:
        server.bind("/tmp/.X11-unix/X77")
        os.chmod("/tmp/.X11-unix/X77", 0o777)
        server.listen(20)
        environment = {"DISPLAY": ":77"}
        Run(world, USERS["admin"], environment=environment).ends(1, "", "Copied the authorisation = \n")
        Run(world, USERS["yes"], without_guide(world), environment).ends(1, "Status is invalid -60031\n", "ALERT: Error: Unable")
        assert not running("QuillmarkDialog")
        run = Run(world, USERS["admin"], environment=environment)
        wait_for("the dialog program", lambda: running("QuillmarkDialog"))
        run.process.kill()
        run.process.wait()
        wait_for("the dialog program to leave", lambda: not running("QuillmarkDialog"))
    os.unlink("/tmp/.X11-unix/X77")


@case
def window_destroyed_from_outside(world, desktop):
    run = Probe(world, USERS["admin"], environment=desktop.environment)
    desktop.expect()
    desktop.tool("xdotool", "windowclose", desktop.window)
    run.gets(-60006)
    run = Run(world, USERS["yes"], without_guide(world), desktop.environment)
    desktop.expect()
    desktop.tool("xdotool", "windowclose", desktop.window)
    run.ends(1, "Status is invalid -60031\n")


@case
def keys_alone_will_do(world, desktop):
    for keys, status in ((("alt+c",), -60006), (("Tab", "Tab", "Return"), GRANTED), (("Tab", "space"), -60006),
                         (("alt+a",), GRANTED), (("Tab", "alt+p", "Return"), GRANTED)):
        run = Probe(world, USERS["admin"], "portable", desktop.environment)
        desktop.expect()
        desktop.tool("xdotool", "type", "--delay", "2", PASSWORD)
        for key in keys:
            desktop.key(key)
        run.gets(status)


@case
def two_administrators(world, desktop):
    run = Run(world, USERS["second"], environment=desktop.environment)
    desktop.expect("two-administrators")
    desktop.password(SECOND_PASSWORD)  # one's own is chosen first
    run.ends(0, "Status is valid 0\n")
    run.guide_ran()
    run = Probe(world, USERS["second"], "portable", desktop.environment)
    desktop.expect()
    before = running("polkit-agent-helper-1")
    for key in ("alt+m", "Up"):
        desktop.key(key)
    wait_for("the question to the other", lambda: set(running("polkit-agent-helper-1")) - set(before))
    time.sleep(0.2)
    desktop.password()
    run.gets(GRANTED)


@case
def screen_reader_hears(world, desktop):
    user = USERS["admin"]
    with screen_reader(world, user, desktop) as (variables, read):
        run = Probe(world, user, environment=variables)
        desktop.expect()
        nodes = read()
        assert "Administrator rights are needed" in names(nodes, "label"), nodes
        assert '"QuillmarkLauncher" in the folder "plain" wants to start' in " ".join(names(nodes, "label")), nodes
        assert world.home + "/plain/QuillmarkLauncher.app" in names(nodes, "label"), nodes
        assert [(node["by"], node["focused"]) for node in nodes if node["role"] == "password text"] == \
            [(f"Password of {user}:", True)], nodes
        assert names(nodes, "push button") == ["Cancel", "Allow"], nodes
        assert not [node for node in nodes if node["role"] == "notification"], nodes
        desktop.wrong_password()
        nodes = read()
        assert [names(node["children"], "label") for node in nodes if node["role"] == "notification"] == \
            [["That password was not accepted. Please try again."]], nodes
        desktop.key("Caps_Lock")
        wait_for("the word of Caps Lock", lambda: "Caps Lock is on." in names(read(), "label"))
        desktop.key("Caps_Lock")
        call("chage", "--expiredate", "0", user)
        desktop.expect()
        before = running("polkit-agent-helper-1")
        desktop.password()
        wait_for("the next question", lambda: set(running("polkit-agent-helper-1")) - set(before))
        wait_for("the system's own message", lambda: "account has expired" in " ".join(names(read(), "label")))
        call("chage", "--expiredate", "-1", user)
        desktop.key("Escape")
        run.gets(-60006)
        run = Run(world, user, without_guide(world), variables)
        desktop.expect()
        desktop.password()
        wait_for("the alert", lambda: "ALERT!" in names(read(), "label"))
        nodes = read()
        assert names(nodes, "push button") == ["OK"], nodes
        assert [node for node in nodes if node["role"] == "alert"], nodes
        desktop.expect()
        desktop.key("Return")
        run.ends(1, "Status is invalid -60031\n")
        for language, allow, begin in (("de", "Erlauben", "„QuillmarkLauncher“ im Ordner „plain“"),
                                       ("fr", "Autoriser", "« QuillmarkLauncher », dans le dossier « plain »")):
            run = Run(world, user, environment={**variables, "LANG": "C.UTF-8", "LANGUAGE": language})
            desktop.expect()
            nodes = read()
            assert allow in names(nodes, "push button"), nodes
            assert begin in " ".join(names(nodes, "label")), nodes
            desktop.key("Escape")
            run.ends(1, "", "Created authorisation\n")  # the console lines stay as they are


@case
def terminal_instead_of_display(world, desktop):
    """An administrator answers on the terminal; nothing is added to the launcher's streams."""
    for hide in ((), ("/usr/bin/pkexec",)):
        for program in hide:
            call("mount", "--bind", "/dev/null", program)
        for answer, status in ((PASSWORD, 0), ("wrong", 1)):
            controller, terminal = os.openpty()
            run = Run(world, USERS["admin"], start_new_session=True, through=[
                "/usr/bin/python3", "-c", "import fcntl, os, sys, termios\n"
                "fcntl.ioctl(int(sys.argv[1]), termios.TIOCSCTTY, 0); os.execvp(sys.argv[2], sys.argv[2:])",
                str(terminal)], pass_fds=[terminal])
            seen = b""
            for _ in range(1 if status == 0 else 3):
                while not seen.endswith(b"Password of vftest-admin: "):
                    seen += os.read(controller, 1000)
                os.write(controller, answer.encode() + b"\n")
                seen += b"."
            run.ends(status, "Status is valid 0\n" if status == 0 else "", "Copied the authorisation = \n")
            assert b"QuillmarkLauncher asks for administrator rights." in seen, seen
            assert "Password" not in run.text() + run.text(1)
            if status == 0:
                run.guide_ran()
            call("sudo", "-u", USERS["admin"], "sudo", "-K")
            os.close(controller), os.close(terminal)
        for program in hide:
            call("umount", program)


def take_pictures(world, desktop):
    """The dialogs in light and dark, at scale 1 and 2; only with --pictures."""
    world.stage("Quillmark", world.home + "/plain")
    for theme in ("", ":dark"):
        for scale in ("1", "2"):
            environment = {**desktop.environment, "GTK_THEME": "Adwaita" + theme, "GDK_SCALE": scale}
            suffix = (theme.replace(":", "-") or "-light") + "-" + scale
            run = Run(world, USERS["admin"], "Quillmark", environment)
            desktop.expect("password-dialog" + suffix)
            desktop.key("Escape")
            run.ends(1)
            run = Run(world, USERS["yes"], without_guide(world), environment)
            desktop.expect("alert" + suffix)
            desktop.key("Return")
            run.ends(1, "Status is invalid -60031\n")
