"""The demonstration stands beside the running program and leaves no trace: the saved document stays as it is, byte for
byte and by its time stamps, and so does the inbox."""

import os
import pathlib

from session import Session, expect, program_to_test

DEMONSTRATIONS = (("--marketing-demo", {}), ("--marketing-demo-closed", {"WRENFOLD_MARKETING_DEMO": "1"}))
WIDTHS = {"--marketing-demo": 716, "--marketing-demo-closed": 344}


def traces(session):
    """Everything below the configuration and data folders: name, time stamps, bytes."""
    found = {}
    for variable in ("XDG_CONFIG_HOME", "XDG_DATA_HOME"):
        for path in sorted(pathlib.Path(session.environment[variable]).rglob("*")):
            status = os.stat(path)
            found[str(path)] = (status.st_mtime_ns, status.st_ctime_ns, path.read_bytes() if path.is_file() else b"")
    return found


def use(session, path, switch, environment):
    """Adds a task by keyboard, in a demonstration that is alone in sight."""
    program = session.start(path, switch, **environment)
    panel = session.wait_window("Wren Fold")
    session.wait_active(panel)
    width = session.geometry(panel)[2]
    expect(width == WIDTHS[switch], f"the panel of {switch} is {width} wide")
    session.press("Tab")
    session.type_text("one")
    typed = session.picture("typed", panel)
    session.press("Return")
    session.wait_for(lambda: session.different_pixels(typed, session.picture("added", panel)) > 200, "the added task")
    program.terminate()
    session.wait_end(program)


def leave_the_keys(session, path):
    """A program that is started beside a demonstration gets the hot keys."""
    demonstration = session.start(path, "--marketing-demo")
    session.wait_active(session.wait_window("Wren Fold"))
    session.press("ctrl+alt+super+h")  # In its own window the keys work, of the menu.
    session.wait_no_window("Wren Fold")
    running = session.start(path)
    session.wait_active(session.wait_window("Wren Fold"))
    report = session.start(path, "--desktop-report")
    session.wait_end(report)
    expect("hot keys: works" in session.log_lines(report), f"the report is {session.log_lines(report)}")
    session.press("ctrl+alt+super+p")
    session.wait_no_window("Wren Fold")
    session.press("ctrl+alt+super+p")
    session.wait_window("Wren Fold")
    for program in (running, demonstration):
        program.terminate()
        session.wait_end(program)


def main():
    path = program_to_test()
    with Session("marketing_demo") as session:
        for switch, environment in DEMONSTRATIONS:
            use(session, path, switch, environment)
        expect(not traces(session), f"the demonstration has left {list(traces(session))}")

        session.save_document({"tasks": [], "isHardPinned": True})
        session.save_candidates([{"id": "1", "title": "not shown"}])
        before = traces(session)
        for switch, environment in DEMONSTRATIONS:
            use(session, path, switch, environment)
        expect(traces(session) == before, "the demonstration has touched the user's files")

        # Beside the running program, which goes on answering.
        running = session.start(path)
        session.wait_active(session.wait_window("Wren Fold"))
        session.wait_end(session.start(path, "--hide-panel"))
        session.wait_no_window("Wren Fold")
        before = traces(session)
        use(session, path, *DEMONSTRATIONS[0])
        expect(traces(session) == before, "the demonstration has touched the running program's files")
        session.wait_end(session.start(path, "--toggle-panel"))
        session.wait_window("Wren Fold")
        running.terminate()
        session.wait_end(running)
        leave_the_keys(session, path)


if __name__ == "__main__":
    main()
