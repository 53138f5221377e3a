"""The installed launcher, started as its menu entry says, and taken away again."""
import os
import shlex

from rig import *

ENTRY = "/share/applications/com.quillmark.Launcher.desktop"
POLICY = "/share/polkit-1/actions/com.quillmark.Launcher.policy"


def tree(*folders):
    return sorted(os.path.join(place, name) for folder in folders for place, inner, files in os.walk(folder)
                  for name in inner + files)


def menu_command(prefix):
    with open(prefix + ENTRY) as file:
        return next(shlex.split(line[len("Exec="):]) for line in file if line.startswith("Exec="))


def without_guide(world, desktop, prefix="/usr"):
    Run(world, USERS["yes"], launcher=menu_command(prefix), cwd="/").ends(1, "Status is invalid -60031\n")


def with_guide(world, desktop, prefix="/usr"):
    command, action = menu_command(prefix), "com.quillmark.Launcher.start"
    wait_for("the policy to be read", lambda: action in call("pkaction"))
    assert "implicit active:   auth_admin\n" in call("pkaction", "--verbose", "--action-id", action)
    run = Run(world, USERS["yes"], launcher=command, cwd="/")
    run.folder = prefix + "/libexec/quillmark"
    run.succeeds()
    desktop.run(Run, USERS["admin"], PASSWORD, launcher=command, cwd="/").ends(0, VALID)
    Run(world, USERS["no"], launcher=command, cwd="/").ends(1)


@case
def installed_and_removed(world, desktop):
    prefix = world.home + "/installed"
    if not os.path.exists(prefix + ENTRY):
        return print("not run  nothing is installed: see --installed")
    policy = "/usr" + POLICY
    before, installed = tree("/home", "/etc", "/usr/share", "/var/lib"), tree(prefix)
    call("cp", prefix + POLICY, policy)
    with_guide(world, desktop, prefix)
    assert tree(prefix) == installed
    call("rm", "-r", prefix + "/libexec/quillmark/ZephGuide.app")  # the sample guide is a component of its own
    without_guide(world, desktop, prefix)
    call("rm", "-r", prefix)
    os.unlink(policy)
    assert tree("/home", "/etc", "/usr/share", "/var/lib") == before  # nothing but its own files
