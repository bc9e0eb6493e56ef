"""The message bus starts the program for whoever asks it for something, and the program does just that: the panel comes
into sight only if it was asked for."""

import pathlib
import re

from session import Session, expect, program_to_test

ID = "dev.tolvane.Wrenfold"
ENTRY = pathlib.Path(__file__).resolve().parents[2] / "packaging" / f"{ID}.desktop"

# What the menus of desktops do. It stays until the program is there: the bus forgets the call of one who has gone.
LAUNCH = f"""
from gi.repository import Gio, GLib
loop = GLib.MainLoop()
Gio.bus_watch_name(Gio.BusType.SESSION, "{ID}", Gio.BusNameWatcherFlags.NONE, lambda *_: loop.quit(), None)
Gio.DesktopAppInfo.new("{ID}.desktop").{{call}}
loop.run()
"""

CALL_AND_GO = f"""
from gi.repository import Gio, GLib
bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)
bus.call("{ID}", "/{ID.replace('.', '/')}", "org.freedesktop.Application", "Activate", GLib.Variant("(a{{sv}})", ({{}},)),
         None, Gio.DBusCallFlags.NONE, -1, None, None)
bus.flush_sync(None)
"""


def ask(session, method, *arguments):
    """Calls the program's object as desktops do; the call has to be answered."""
    answer = session.tool("gdbus", "call", "--session", "--timeout=20", f"--dest={ID}", f"--object-path=/{ID.replace('.', '/')}",
                          f"--method={method}", *arguments)
    expect(answer, f"{method} {arguments} was not answered")
    return answer


def action(session, name):
    return ask(session, "org.freedesktop.Application.ActivateAction", name, "[]", "{}")


def program_process(session):
    """The process that has the program's name on the bus; None while nobody has it."""
    answer = session.tool("gdbus", "call", "--session", "--dest=org.freedesktop.DBus", "--object-path=/org/freedesktop/DBus",
                          "--method=org.freedesktop.DBus.GetConnectionUnixProcessID", ID)
    return int(re.search(r"\(uint32 (\d+),\)", answer)[1]) if answer else None


def stop(session):
    session.tool("kill", str(program_process(session)))
    session.wait_for(lambda: program_process(session) is None, "the program to end")
    session.wait_no_window("Wren Fold")


def install(session, path):
    """Puts the entry and the bus service into place as an installation does, for the program to test."""
    data = pathlib.Path(session.environment["XDG_DATA_HOME"])
    for folder, name, text in (
            ("applications", f"{ID}.desktop", ENTRY.read_text().replace("Exec=wrenfold", f"Exec={path}")),
            ("dbus-1/services", f"{ID}.service", f"[D-BUS Service]\nName={ID}\nExec={path} --dbus-service\n")):
        (data / folder).mkdir(parents=True)
        (data / folder / name).write_text(text)
    session.tool("gdbus", "call", "--session", "--dest=org.freedesktop.DBus", "--object-path=/org/freedesktop/DBus",
                 "--method=org.freedesktop.DBus.ReloadConfig")


def activating_shows_the_panel(session):
    ask(session, "org.freedesktop.Application.Activate", "{}")
    session.wait_active(session.wait_window("Wren Fold"))
    process = program_process(session)
    ask(session, "org.freedesktop.Application.Activate", "{}")
    expect(program_process(session) == process, "another program was started")
    stop(session)


def toggling_shows_the_panel_that_was_not_there(session):
    action(session, "toggle-panel")
    session.wait_window("Wren Fold")
    action(session, "toggle-panel")
    session.wait_no_window("Wren Fold")
    stop(session)


def somebody_who_does_not_wait_gets_the_panel(session):
    """The bus may forget his call before the program is there."""
    session.wait_end(session.start("/usr/bin/python3", "-c", CALL_AND_GO))
    session.wait_active(session.wait_window("Wren Fold"))
    stop(session)


def hiding_shows_nothing(session):
    action(session, "hide-panel")
    expect(program_process(session), "nobody has answered")
    expect(not session.windows("Wren Fold"), "hiding has shown the panel")
    stop(session)


def a_new_task_is_typed_at_once(session):
    action(session, "new-todo")
    session.wait_active(session.wait_window("Wren Fold"))
    session.type_text("one")
    session.press("Return")
    session.wait_for(lambda: "one" in session.titles(), "the task")
    stop(session)


def desktops_launch_the_entry_over_the_bus(session):
    for call in ("launch([], None)", 'launch_action("new-todo", None)'):
        # By the system's own Python: the bindings are installed for no other.
        session.wait_end(session.start("/usr/bin/python3", "-c", LAUNCH.format(call=call)))
        session.wait_active(session.wait_window("Wren Fold"))
        command = pathlib.Path(f"/proc/{program_process(session)}/cmdline").read_bytes()
        expect(command.endswith(b"\0--dbus-service\0"), f"the entry has started {command}")
        stop(session)


def main():
    with Session("bus_start") as session:
        install(session, program_to_test())
        activating_shows_the_panel(session)
        toggling_shows_the_panel_that_was_not_there(session)
        somebody_who_does_not_wait_gets_the_panel(session)
        hiding_shows_nothing(session)
        a_new_task_is_typed_at_once(session)
        desktops_launch_the_entry_over_the_bus(session)


if __name__ == "__main__":
    main()
