"""What the user of a bundle meets: every way to ask, every answer, and what comes of it."""
import os
import signal

from rig import *


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
        Probe(world, USERS[user], "portable").gets(status)


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
    run = Run(world, USERS["yes"], launcher=["QuillmarkLauncher.app/Contents/MacOS/QuillmarkLauncher"])
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
