"""The program ends cleanly when it is told to by a signal or by the end of the session: with status 0, and with what was
being typed into a title."""

import pathlib
import signal
import subprocess
import sys

from sample_documents import document, task
from session import Session, expect, program_to_test

LIST_KEYS = ("Tab", "Tab", "Down", "F2")  # to the list, to its first row, and into its title


def begin_rename(session, path, **environment):
    """A program with the title of its one task half renamed."""
    session.save_document(document(task("before")))
    program = session.start(path, **environment)
    session.wait_active(session.wait_window("Wren Fold"))
    session.press(*LIST_KEYS)
    session.type_text("after")
    return program


def expect_clean_end(session, program, what):
    session.wait_end(program)
    expect(session.titles() == ["after"], f"after {what} the saved titles are {session.titles()}")
    expect(not any("error:" in line or "fault:" in line for line in session.log_lines(program)),
           f"{what} has left in the log {session.log_lines(program)}")


def signals_end_it(session, path):
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        program = begin_rename(session, path)
        program.send_signal(number)
        expect_clean_end(session, program, number.name)


def the_session_manager_ends_it(session, path):
    manager = subprocess.Popen([sys.executable, "-B", str(pathlib.Path(__file__).with_name("session_manager.py"))],
                               env=session.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    try:
        address = manager.stdout.readline().strip()
        program = begin_rename(session, path, SESSION_MANAGER=address)
        expect(manager.stdout.readline() == "joined\n", "the program has not joined the session")
        manager.stdin.write("end\n")
        manager.stdin.flush()
        expect_clean_end(session, program, "the end of the session")
    finally:
        manager.communicate()


def main():
    path = program_to_test()
    for test in (signals_end_it, the_session_manager_ends_it):
        with Session(f"end_{test.__name__}") as session:
            test(session, path)


if __name__ == "__main__":
    main()
