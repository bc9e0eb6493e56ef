"""The program as it was installed from the package, in a Debian system in a folder that has nothing else: an ordinary
user adds a task, ends the program, and finds the task again at the next start.

    python3 tests/desktop/package_test.py [bus]

Called by script/test_package.sh, which makes the system. The desktop around the program is this computer's. With "bus"
the system has a message bus, which starts the program.
"""

import os
import pathlib
import signal
import sys

from session import Session, expect

ROOT = pathlib.Path(__file__).resolve().parents[2]
# Runs a command line in that system as its user; signals reach the command.
RUN = (str(ROOT / "script" / "test_package.sh"), "--run-as-user")
HOME = ROOT / "build" / "package-system" / "home" / "tester"
COMPOSER = (172, 187)  # a point in the panel's input field at first start
# Has the bus start the program, and goes on until that has ended.
ACTIVATE = """
gdbus call --session --dest=dev.tolvane.Wrenfold --object-path=/dev/tolvane/Wrenfold \\
    --method=org.freedesktop.Application.Activate {} || exit
while gdbus call --session --dest=org.freedesktop.DBus --object-path=/org/freedesktop/DBus \\
    --method=org.freedesktop.DBus.GetNameOwner dev.tolvane.Wrenfold; do sleep 0.1; done
"""


def add_task(session, title):
    panel = session.wait_window("Wren Fold")
    session.wait_active(panel)
    session.click(panel, *COMPOSER)
    session.type_text(title)
    session.press("Return")
    session.wait_for(lambda: title in session.titles(), f"the saved task {title}")


def tasks_outlive_the_program(session):
    expect(not session.titles(), "the user's home is not empty")
    for title, before in (("first", []), ("second", ["first"])):
        program = session.start(*RUN, "wrenfold")
        add_task(session, title)
        expect(all(task in session.titles() for task in before), f"{before} is no longer among {session.titles()}")
        session.picture(title)
        program.terminate()
        session.wait_end(program)


def the_bus_starts_the_program(session):
    bus = session.start(*RUN, "dbus-run-session", "--", "sh", "-c", ACTIVATE)
    panel = session.wait_window("Wren Fold")
    os.kill(int(session.tool("xdotool", "getwindowpid", panel)), signal.SIGTERM)
    session.wait_end(bus)


def main():
    with Session("package", bus=False) as session:
        runtime_folder = session.environment["XDG_RUNTIME_DIR"]
        owner = HOME.stat()
        os.chown(runtime_folder, owner.st_uid, owner.st_gid)
        session.environment["XDG_CONFIG_HOME"] = str(HOME / ".config")  # Where the saved document is looked for.
        if sys.argv[1:] == ["bus"]:
            the_bus_starts_the_program(session)
        else:
            tasks_outlive_the_program(session)


if __name__ == "__main__":
    main()
