"""Two hundred starts and stops leave nothing behind: no process, no bus name, no file in the runtime, configuration and
data folders, and nothing open at the session's bus and its X server."""

import pathlib

import dunst
from session import Session, expect, program_to_test

STARTS = 200
READY = "[app] info: ready open="
# Every so often one of these reaches the running program before it is stopped.
VERBS = ("--toggle-panel", "--new-todo", "--hide-panel")


def files(session, variable):
    """What is below the folder, with the bytes of the regular files."""
    found = {}
    for path in sorted(pathlib.Path(session.environment[variable]).rglob("*")):
        found[str(path)] = path.read_bytes() if path.is_file() else None
    return found


def bus_names(session):
    """The well-known names; each connection's own is another one every time."""
    names = session.tool("busctl", "--user", "--acquired", "--no-legend", "list")
    return sorted(line.split()[0] for line in names.splitlines())


def program_processes(path):
    """Everything that runs the program."""
    found = []
    for folder in pathlib.Path("/proc").iterdir():
        try:
            if folder.name.isdigit() and (folder / "exe").resolve() == pathlib.Path(path):
                found.append(folder.name)
        except OSError:
            pass  # It has ended.
    return found


def open_files(process):
    return len(list(pathlib.Path(f"/proc/{process.pid}/fd").iterdir()))


def is_ready(session, program):
    return any(READY in line for line in session.log_lines(program))


def start_and_stop(session, path, number):
    program = session.start(path)
    session.wait_for(lambda: is_ready(session, program), f"start {number} to be ready")
    if number % 10 == 0:
        session.wait_end(session.start(path, VERBS[number // 10 % len(VERBS)]))
    program.terminate()
    session.wait_end(program)


def state(session, path):
    return {
        "configuration": files(session, "XDG_CONFIG_HOME"),
        "data": files(session, "XDG_DATA_HOME"),
        "runtime folder": files(session, "XDG_RUNTIME_DIR"),
        "bus names": bus_names(session),
        "processes": program_processes(path),
        "open files": [open_files(process) for process in session.daemons],
    }


def main():
    path = program_to_test()
    with Session("many_starts") as session:
        dunst.start(session)  # Else the bus would start it some time during the first runs.
        session.save_document({"tasks": [], "isHardPinned": True})
        start_and_stop(session, path, 0)  # Makes what is made once, such as the inbox.
        before = state(session, path)
        expect(not before["processes"], "the program runs after its end")
        for number in range(1, STARTS + 1):
            start_and_stop(session, path, number)
        # Daemons close what a program has left open a moment after its end.
        for what, value in before.items():
            session.wait_for(lambda w=what, v=value: state(session, path)[w] == v, f"the {what} to be as before", 10)


if __name__ == "__main__":
    main()
