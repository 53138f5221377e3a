"""What the user sees, hears through a screen reader, and does with keys."""
import collections
import contextlib
import json
import os
import shutil
import socket
import subprocess

from rig import *

GRANTED = "0\nexecuted 0"
READER = """
import gi, json, sys, time
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi
def box_of(node):
    place = node.get_component_iface()
    box = place and place.get_extents(Atspi.CoordType.WINDOW)
    return box and [box.x, box.y, box.width, box.height]
def tell(node):
    relations = {r.get_relation_type().value_nick: r.get_target(0).get_name() for r in node.get_relation_set()}
    return {"role": node.get_role_name(), "name": node.get_name(), "by": relations.get("labelled-by"),
            "shown": node.get_state_set().contains(Atspi.StateType.SHOWING),
            "focused": node.get_state_set().contains(Atspi.StateType.FOCUSED), "box": box_of(node),
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
    folder = os.path.join(world.home, f"session{Run.count}")
    os.makedirs(folder, exist_ok=True)
    shutil.chown(folder, user)
    address = f"unix:path={folder}/bus"
    variables = {"DBUS_SESSION_BUS_ADDRESS": address, "XDG_RUNTIME_DIR": folder, "HOME": folder,
                 "PATH": "/usr/bin:/bin", **desktop.environment}
    words = identity_of(user) + ["env", "-i"] + [f"{name}={value}" for name, value in variables.items()]
    bus = subprocess.Popen([*words, "dbus-daemon", "--session", "--nofork", "--nopidfile", f"--address={address}"],
                           stderr=subprocess.DEVNULL)
    try:
        wait_for("the session bus", lambda: os.path.exists(folder + "/bus"))
        call(*words, "dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties.Set",
             "string:org.a11y.Status", "string:IsEnabled", "variant:boolean:true")

        def read():
            nodes, flat = json.loads(call(*words, "/usr/bin/python3", "-c", READER, timeout=HANG)), []
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
        asking = Run(world, USERS["admin"], environment=environment)  # both at once, as each waits for seconds
        telling = Run(world, USERS["yes"], without_guide(world), environment)
        asking.ends(1, "", "Copied the authorisation = \n")
        telling.ends(1, "Status is invalid -60031\n", "ALERT: Error: Unable")
        assert not running("QuillmarkDialog")
        run = Run(world, USERS["admin"], environment=environment)
        wait_for("the dialog program", lambda: running("QuillmarkDialog"))
        run.dies()
    os.unlink("/tmp/.X11-unix/X77")


@case
def window_destroyed_from_outside(world, desktop):
    run = desktop.run(Probe, USERS["admin"])
    desktop.tool("xdotool", "windowclose", desktop.window)
    run.gets(-60006)
    run = desktop.run(Run, USERS["yes"], folder=without_guide(world))
    desktop.tool("xdotool", "windowclose", desktop.window)
    run.ends(1, "Status is invalid -60031\n")


@case
def keys_alone_will_do(world, desktop):
    for keys, status in ((("alt+c",), -60006), (("Tab", "Tab", "Return"), GRANTED), (("Tab", "space"), -60006),
                         (("alt+a",), GRANTED), (("Tab", "alt+p", "Return"), GRANTED)):
        run = desktop.run(Probe, USERS["admin"], folder="portable")
        desktop.tool("xdotool", "type", "--delay", "2", PASSWORD)
        for key in keys:
            desktop.key(key)
        run.gets(status)


@case
def two_administrators(world, desktop):
    # One's own account is chosen first.
    desktop.run(Run, USERS["second"], SECOND_PASSWORD, picture="two-administrators").succeeds()
    run = desktop.run(Probe, USERS["second"], folder="portable")
    with next_question():
        for key in ("alt+m", "Up"):
            desktop.key(key)
    desktop.password()
    run.gets(GRANTED)


@case
def screen_reader_hears(world, desktop):
    user = USERS["admin"]
    with screen_reader(world, user, desktop) as (variables, read):
        def hears(word, role="label"):
            wait_for(word, lambda: word in " ".join(names(read(), role)))

        run = desktop.run(Probe, user, environment=variables)
        nodes = read()
        for text in ("Administrator rights are needed", world.home + "/plain/QuillmarkLauncher.app",
                     '"QuillmarkLauncher" in the folder "plain" wants to start'):
            assert text in " ".join(names(nodes, "label")), nodes
        assert [(node["by"], node["focused"]) for node in nodes if node["role"] == "password text"] == \
            [(f"Password of {user}:", True)], nodes
        assert names(nodes, "push button") == ["Cancel", "Allow"], nodes
        assert not names(nodes, "notification"), nodes
        desktop.wrong_password()
        nodes = read()
        assert [names(node["children"], "label") for node in nodes if node["role"] == "notification"] == \
            [["That password was not accepted. Please try again."]], nodes
        desktop.key("Caps_Lock")
        hears("Caps Lock is on.")
        desktop.key("Caps_Lock")
        call("chage", "--expiredate", "0", user)
        desktop.expect()
        with next_question():
            desktop.password()
        hears("account has expired")
        call("chage", "--expiredate", "-1", user)
        desktop.key("Escape")
        run.gets(-60006)
        run = desktop.run(Run, user, PASSWORD, without_guide(world), environment=variables)
        hears("ALERT!")
        nodes = read()
        assert names(nodes, "push button") == ["OK"], nodes
        assert names(nodes, "alert"), nodes
        desktop.expect()
        desktop.key("Return")
        run.ends(1, "Status is invalid -60031\n")
        odd = "turned \u202efolder\nwith lines"
        world.stage(odd, world.home + "/plain")
        run = desktop.run(Probe, user, folder=odd, environment=variables)
        assert 'in the folder "turned \ufffdfolder\ufffdwith lines" wants' in " ".join(names(read(), "label"))
        desktop.key("Escape")
        run.gets(-60006)
        for language, allow, begin in (("de", "Erlauben", "„QuillmarkLauncher“ im Ordner „plain“"),
                                       ("fr", "Autoriser", "« QuillmarkLauncher », dans le dossier « plain »")):
            run = desktop.run(Run, user, environment={**variables, "LANG": "C.UTF-8", "LANGUAGE": language})
            nodes = read()
            assert allow in names(nodes, "push button"), nodes
            assert begin in " ".join(names(nodes, "label")), nodes
            desktop.key("Escape")
            run.ends(1, "", "Created authorisation\n")  # the console lines stay as they are


def contrast(colour, other):
    """Of two colours, as accessibility guidelines measure it: 1 for equal ones, 21 for black and white."""
    def luminance(channels):
        red, green, blue = (c / 3294.6 if c <= 10 else ((c / 255 + 0.055) / 1.055) ** 2.4 for c in channels)
        return 0.2126 * red + 0.7152 * green + 0.0722 * blue
    low, high = sorted((luminance(colour), luminance(other)))
    return (high + 0.05) / (low + 0.05)


def faint_texts(desktop, nodes, scale):
    """The shown texts whose colour has a contrast below 4.5 to what is behind them."""
    found, count = [], 0
    for node in nodes:
        if node["role"] in ("label", "push button", "password text", "combo box") and node["box"][2] > 0:
            left, top, width, height = (scale * n for n in node["box"])
            pixels = subprocess.run(
                ["import", "-window", desktop.window, "-crop", f"{width}x{height}+{left}+{top}", "-depth", "8", "rgb:-"],
                env=dict(os.environ, **desktop.environment), capture_output=True, check=True, timeout=HANG).stdout
            colours = collections.Counter(zip(*[iter(pixels)] * 3))
            back = colours.most_common(1)[0][0]
            text = max(colours, key=lambda colour: contrast(colour, back))
            count += 1
            if contrast(text, back) < 4.5:
                found.append((node["role"], node["name"], text, back, contrast(text, back)))
    return found if count else ["no texts"]


@case
def texts_stand_out(world, desktop):
    """In both themes, with all that a dialog can show; at scale 2 a stroke of a letter is wide enough to have its colour."""
    user = USERS["second"]
    with screen_reader(world, user, desktop) as (variables, read):
        for theme in ("Adwaita", "Adwaita:dark"):
            environment = {**variables, "GTK_THEME": theme, "GDK_SCALE": "2"}
            run = desktop.run(Run, user, folder=without_guide(world), environment=environment)
            desktop.wrong_password()
            desktop.key("Caps_Lock")
            desktop.tool("xdotool", "type", "--delay", "2", "x")
            wait_for("Caps Lock", lambda: "Caps Lock is on." in names(read(), "label"))
            faint = faint_texts(desktop, read(), 2)
            desktop.key("Caps_Lock")
            desktop.key("BackSpace")
            desktop.password(SECOND_PASSWORD)
            desktop.gone()
            desktop.expect()
            wait_for("the alert", lambda: "ALERT!" in names(read(), "label"))
            faint += faint_texts(desktop, read(), 2)
            desktop.key("Return")
            run.ends(1, "Status is invalid -60031\n")
            assert not faint, faint


@case
def terminal_instead_of_display(world, desktop):
    """An administrator answers on the terminal; nothing is added to the launcher's streams."""
    for hide in ((), ("/usr/bin/pkexec",)):
        with hidden(*hide):
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
                run.ends(status, VALID if status == 0 else "", "Copied the authorisation = \n")
                assert b"QuillmarkLauncher asks for administrator rights." in seen, seen
                assert "Password" not in run.text() + run.text(1)
                if status == 0:
                    run.succeeds()
                call("sudo", "-u", USERS["admin"], "sudo", "-K")
                os.close(controller), os.close(terminal)


def take_pictures(world, desktop):
    """The dialogs in light and dark, at scale 1 and 2; only with --pictures."""
    world.stage("Quillmark", world.home + "/plain")
    for theme, scale in (("", "1"), ("", "2"), (":dark", "1"), (":dark", "2")):
        environment = {**desktop.environment, "GTK_THEME": "Adwaita" + theme, "GDK_SCALE": scale}
        suffix = (theme.replace(":", "-") or "-light") + "-" + scale
        for user, folder, dialog, key in ((USERS["admin"], "Quillmark", "password-dialog", "Escape"),
                                          (USERS["yes"], without_guide(world), "alert", "Return")):
            desktop.run(Run, user, key, folder, dialog + suffix, environment=environment).process.wait(HANG)
