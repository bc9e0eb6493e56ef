"""Keys of the desktop may call the program with a verb: it reaches the running one, with a bus and without; with nothing
running two of them start it. The report is printed without a window."""

import pathlib
import sys

from session import Session, end, expect, program_to_test

KEY_HOLDER = pathlib.Path(__file__).with_name("key_holder.py")

ABILITIES = ["status item", "label", "hot keys", "on top", "all workspaces", "guard", "reorder key", "notifications"]
NO_DISPLAY = ":987"  # Nobody's.
LEVELS = ("works", "limited.", "not available.")


def verb(session, path, name, **environment):
    session.wait_end(session.start(path, f"--{name}", **environment))


def start_by(session, path, name):
    program = session.start(path, f"--{name}")
    session.wait_active(session.wait_window("Wren Fold"))
    return program


def stop(session, program):
    program.terminate()
    session.wait_end(program)


def type_task(session, title):
    """Types where the keyboard is: in the field only if it was given the focus."""
    session.type_text(title)
    session.press("Return")
    session.wait_for(lambda: title in session.titles(), f"the task {title}")


def verbs_reach_the_running_program(session, path):
    program = start_by(session, path, "toggle-panel")
    verb(session, path, "toggle-panel")
    session.wait_no_window("Wren Fold")
    verb(session, path, "toggle-panel")
    session.wait_active(session.wait_window("Wren Fold"))
    verb(session, path, "hide-panel")
    session.wait_no_window("Wren Fold")
    verb(session, path, "hide-panel")
    verb(session, path, "new-todo")
    session.wait_active(session.wait_window("Wren Fold"))
    type_task(session, "one")
    verb(session, path, "new-todo")  # In sight already.
    type_task(session, "two")
    expect_report(session, path)
    expect(program.poll() is None, "the program has ended")
    stop(session, program)


def with_nothing_running_two_verbs_start_it(session, path):
    verb(session, path, "hide-panel")
    expect(not session.windows("Wren Fold"), "hiding has started the program")
    program = start_by(session, path, "new-todo")
    type_task(session, "three")
    stop(session, program)


def verbs_without_a_display_reach_the_running_program(session, path):
    program = start_by(session, path, "toggle-panel")
    verb(session, path, "toggle-panel", DISPLAY="")
    session.wait_no_window("Wren Fold")
    verb(session, path, "toggle-panel", DISPLAY=NO_DISPLAY)
    session.wait_window("Wren Fold")
    lines = expect_report(session, path, DISPLAY="")
    expect("hot keys: works" in lines, f"the report of the program that has a display is {lines}")
    stop(session, program)


def a_mistyped_option_does_nothing(session, path):
    program = start_by(session, path, "toggle-panel")
    for option in ("--hide-panle", "--toggle_panel", "--show"):
        for arguments in ([option], ["--hide-panel", option], ["--marketing-demo", option]):
            mistyped = session.start(path, *arguments)
            session.wait_end(mistyped, status=2)
            lines = session.log_lines(mistyped)
            expect(lines == [f"wrenfold: unknown option {option}"], f"{arguments} says {lines}")
    session.wait_window("Wren Fold")
    # The toolkit's own are none of these, whatever the number of hyphens.
    for options in (["--platform", "xcb"], ["-platform", "xcb"], ["--style", "fusion"], ["--style=fusion"], ["-style", "fusion"],
                    ["--display", session.environment["DISPLAY"]], ["--qwindowgeometry", "300x300"], ["--reverse"]):
        session.wait_end(session.start(path, "--hide-panel", *options))
    session.wait_no_window("Wren Fold")
    stop(session, program)


def without_display_and_running_program_it_says_so(session, path):
    verb(session, path, "hide-panel", DISPLAY="")
    for environment in ({"DISPLAY": ""}, {"DISPLAY": NO_DISPLAY}, {"DISPLAY": "", "WAYLAND_DISPLAY": "wayland-none"}):
        for options in ([], ["--toggle-panel"], ["--new-todo"], ["--desktop-report"], ["--marketing-demo"]):
            program = session.start(path, *options, **environment)
            session.wait_end(program, status=1)
            lines = session.log_lines(program)
            expect(len(lines) == 1 and lines[0].startswith("wrenfold: there is no display"),
                   f"with {environment} {options} says {lines}")


def expect_report(session, path, **environment):
    report = session.start(path, "--desktop-report", **environment)
    session.wait_end(report)
    lines = [line for line in session.log_lines(report) if line.partition(":")[0] in ABILITIES]
    expect([line.partition(":")[0] for line in lines] == ABILITIES, f"the report is {session.log_lines(report)}")
    for line in lines:
        expect(line.partition(": ")[2].startswith(LEVELS), f"the report says {line}")
    return lines


def the_report_needs_no_running_program(session, path, has_bus):
    lines = expect_report(session, path)
    expect("hot keys: works" in lines and "on top: works" in lines and "all workspaces: works" in lines, f"the report is {lines}")
    # The bus starts a daemon for whoever asks.
    notifications = "notifications: works" if has_bus else "notifications: not available."
    expect(lines[-1].startswith(notifications), f"the report says {lines[-1]}")
    expect(not session.windows("Wren Fold"), "the report has shown a window")
    expect(session.document() is None, "the report has saved a document")


def the_report_tells_of_keys_that_others_hold(session, path):
    holders = []
    for letter, level in (("h", "limited."), ("p", "limited."), ("t", "not available.")):
        holder = session.start(sys.executable, str(KEY_HOLDER), letter)
        session.wait_for(lambda: session.log_lines(holder) == ["held"], f"the program that holds {letter}")
        holders.append(holder)
        line = expect_report(session, path)[ABILITIES.index("hot keys")]
        expect(line.startswith(f"hot keys: {level}") and f"Ctrl+Alt+Super+{letter.upper()}" in line, f"the report says {line}")
    for holder in holders:
        end(holder)
    expect("hot keys: works" in expect_report(session, path), "the report has kept the keys")


def main():
    path = program_to_test()
    for name, has_bus in (("verbs", True), ("verbs_without_bus", False)):
        with Session(name, bus=has_bus) as session:
            the_report_needs_no_running_program(session, path, has_bus)
            the_report_tells_of_keys_that_others_hold(session, path)
            verbs_reach_the_running_program(session, path)
            with_nothing_running_two_verbs_start_it(session, path)
            a_mistyped_option_does_nothing(session, path)
            verbs_without_a_display_reach_the_running_program(session, path)
            without_display_and_running_program_it_says_so(session, path)


if __name__ == "__main__":
    main()
