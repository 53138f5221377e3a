"""The installed launcher, started as its menu entry says, and taken away again."""
import os
import shlex

from rig import *

ENTRY = "/share/applications/com.quillmark.Launcher.desktop"
POLICY = "/share/polkit-1/actions/com.quillmark.Launcher.policy"


def tree(*folders):
    return sorted(os.path.join(place, name) for folder in folders for place, inner, files in os.walk(folder)
                  for name in inner + files)


@case
def installed_and_removed(world, desktop):
    prefix = world.home + "/installed"
    if not os.path.exists(prefix + ENTRY):
        return print("not run  nothing is installed: see --installed")
    policy = "/usr" + POLICY
    before, installed = tree("/home", "/etc", "/usr/share", "/var/lib"), tree(prefix)
    call("cp", prefix + POLICY, policy)
    with open(prefix + ENTRY) as file:
        command = next(shlex.split(line[len("Exec="):]) for line in file if line.startswith("Exec="))
    wait_for("the policy to be read", lambda: "com.quillmark.Launcher.start" in call("pkaction"))
    assert "implicit active:   auth_admin\n" in call("pkaction", "--verbose", "--action-id",
                                                    "com.quillmark.Launcher.start")
    run = Run(world, USERS["yes"], launcher=command, cwd="/")
    run.folder = prefix + "/libexec/quillmark"
    run.succeeds()
    desktop.run(Run, USERS["admin"], PASSWORD, launcher=command, cwd="/").ends(0, VALID)
    Run(world, USERS["no"], launcher=command, cwd="/").ends(1)
    assert tree(prefix) == installed
    call("rm", "-r", prefix + "/libexec/quillmark/ZephGuide.app")  # the sample guide is a component of its own
    Run(world, USERS["yes"], launcher=command, cwd="/").ends(1, "Status is invalid -60031\n")
    call("rm", "-r", prefix)
    os.unlink(policy)
    assert tree("/home", "/etc", "/usr/share", "/var/lib") == before  # nothing but its own files
