"""What the user of a bundle meets: every way to ask, every answer, and what comes of it."""
import os
import signal

from rig import *
from showing import names, screen_reader


@case
def polkit_rule_decides(world, desktop):
    for user in ("root", USERS["yes"]):
        Run(world, user).succeeds("Copied the authorisation = \n")
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
    user = USERS["admin"]
    desktop.run(Run, user, PASSWORD, picture="password-dialog").succeeds("Copied the authorisation = \n")
    desktop.run(Run, user, "Escape").ends(1, "", "Copied the authorisation = \n")
    desktop.run(Probe, user, "Escape").gets(-60006)
    run = desktop.run(Run, user)
    desktop.wrong_password()
    desktop.expect("password-dialog-again")
    desktop.password()
    run.succeeds()
    run = desktop.run(Probe, user)
    for _ in range(2):
        desktop.wrong_password()
    desktop.password("wrong")
    run.gets(-60005)


@case
def dialog_or_launcher_dies(world, desktop):
    run = desktop.run(Probe, USERS["admin"])
    for process in running("QuillmarkDialog"):
        os.kill(process, signal.SIGKILL)
    run.gets(-60005)
    desktop.run(Run, USERS["admin"]).dies()


@case
def targets_that_cannot_run(world, desktop):
    """The guide is what stands in its place; a missing guide leads to the missing uninstaller."""
    target = world.stage("targets", world.home + "/plain") + GUIDE
    for user in ("root", USERS["yes"]):
        for make in (lambda: None, lambda: write(target, "#!/bin/sh\n", 0o644), lambda: os.mkdir(target),
                     lambda: write(target, "\x7fELF but not really", 0o755),
                     lambda: write(target, "#!/nowhere/sh\n", 0o755)):
            call("rm", "-rf", target)
            make()
            Run(world, user, "targets").ends(
                1, "Called auth exe priv\nStatus is invalid -60031\n", "ALERT: Error: Unable to find installer "
                "application to run. Please contact Quillmark technical support")


@case
def alert_is_shown(world, desktop):
    os.unlink(world.stage("no guide", world.home + "/plain") + GUIDE)
    for key in ("Return", "Escape", None):
        run = desktop.run(Run, USERS["yes"], folder="no guide", picture="alert")
        assert run.process.poll() is None, "the alert is not modal"
        desktop.key(key) if key else desktop.click_ok()
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
    Run(world, USERS["yes"], "lost").succeeds()
    os.unlink(folder + "/seen")
    with screen_reader(world, USERS["admin"], desktop) as (variables, read):
        run = desktop.run(Run, USERS["admin"], PASSWORD, "lost", environment=variables)
        wait_for("the first right", lambda: os.path.exists(folder + "/seen"))
        desktop.gone()
        desktop.expect()
        text = " ".join(names(read(), "label"))
        assert 'wants to start "ZephGuide", which' in text and folder + GUIDE in text, text  # chosen by now
        desktop.key("Escape")
        run.ends(0, "Called auth exe priv\nStatus is cancelled -60006\n")


@case
def odd_names(world, desktop):
    """Blanks, quotes and line feeds in the path, a leading '-' and blanks in the user's name."""
    folder = "odd 'quoted\" $(name)\n; end"
    world.stage(folder, world.home + "/plain")
    Run(world, USERS["yes"], folder).succeeds()
    Run(world, "vftest two words").succeeds("Uname = vftest two words\n")
    run = Run(world, USERS["yes"], launcher=["QuillmarkLauncher.app/Contents/MacOS/QuillmarkLauncher"])
    run.ends(1, "invalid -60031\n")  # four removals leave the launcher's own name of a short path


@case
def sudo_dialog(world, desktop):
    user = USERS["admin"]
    with hidden("/usr/bin/pkexec"):
        desktop.run(Run, user, PASSWORD, picture="sudo-dialog").succeeds()
        call("sudo", "-u", user, "sudo", "-K")
        desktop.run(Probe, user, "Escape").gets(-60006)
        Probe(world, user).gets(-60005)
        desktop.run(Probe, USERS["no"], PASSWORD).gets(-60005)
        desktop.run(Run, user).dies()


@case
def nothing_to_ask_with(world, desktop):
    world.stop_polkitd()
    Probe(world, USERS["yes"]).gets(-60005)
    with hidden("/usr/bin/pkexec", "/usr/bin/sudo"):
        Run(world, USERS["yes"]).ends(1, "", "ALERT: Failed to create the authorisation with status -60008")
