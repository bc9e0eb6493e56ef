"""The three hot keys while a terminal has the keyboard, under a window manager (the second argument): with locks on,
held down, and with one of them in the hands of another program."""

import pathlib
import sys
import time

from session import Session, expect, program_to_test

PANEL = "Wren Fold"
TOGGLE, HIDE, NEW_TODO = (f"ctrl+alt+super+{letter}" for letter in "pht")
KEY_HOLDER = pathlib.Path(__file__).with_name("key_holder.py")


def open_terminal(session):
    """A terminal that keeps what is typed in a file."""
    session.start("xterm", "-fa", "Monospace", "-e", "sh", "-c", "cat >typed")
    find = ("xdotool", "search", "--onlyvisible", "--class", "XTerm")
    return session.wait_for(lambda: session.tool(*find), "the terminal")


def activate(session, window):
    session.tool("xdotool", "windowactivate", window)
    session.wait_for(lambda: session.tool("xdotool", "getactivewindow") == window, f"window {window} to be active")


def start(session, path):
    """Starts the program, and then gives the keyboard to the terminal."""
    terminal = open_terminal(session)
    program = session.start(path)
    session.wait_active(session.wait_window(PANEL))
    activate(session, terminal)
    return program, terminal


def expect_shown(session):
    """The panel is in sight and has the keyboard."""
    session.wait_active(session.wait_window(PANEL))


def toggle(session, terminal):
    """From another window that has the keyboard, with the panel in sight at first."""
    session.press(TOGGLE)
    session.wait_no_window(PANEL)
    activate(session, terminal)
    session.press(TOGGLE)
    expect_shown(session)
    # The panel's own menu bears the same key: it must not be taken twice.
    session.press(TOGGLE)
    session.wait_no_window(PANEL)
    session.press(TOGGLE)
    expect_shown(session)
    activate(session, terminal)


def hide(session, terminal):
    session.press(HIDE)
    session.wait_no_window(PANEL)
    # Pressed again it changes nothing, or the next key would hide what it is to show.
    session.press(HIDE, TOGGLE)
    expect_shown(session)
    activate(session, terminal)


def add_todo(session, terminal, title):
    """Types a title into the field that the key opens."""
    session.press(NEW_TODO)
    expect_shown(session)
    session.type_text(title)
    session.press("Return")
    session.wait_for(lambda: title in session.titles(), f"the task {title}")
    activate(session, terminal)


def hold(session, terminal):
    """A key that is held down, and repeats, is one press."""
    session.tool("xset", "r", "rate", "150", "30")
    session.tool("xdotool", "keydown", TOGGLE)
    session.wait_no_window(PANEL)
    end_time = time.monotonic() + 1.5
    while time.monotonic() < end_time:
        expect(not session.windows(PANEL), "the key that is held was taken for another press")
    session.tool("xdotool", "keyup", TOGGLE)
    activate(session, terminal)
    session.press(TOGGLE)
    expect_shown(session)
    activate(session, terminal)


def with_all_keys(session, path):
    program, terminal = start(session, path)
    toggle(session, terminal)
    hide(session, terminal)
    add_todo(session, terminal, "seen")
    session.press(HIDE)
    session.wait_no_window(PANEL)
    add_todo(session, terminal, "hidden")
    for locks in (["Num_Lock"], ["Caps_Lock"], ["Num_Lock", "Caps_Lock"]):
        session.press(*locks)
        toggle(session, terminal)
        hide(session, terminal)
        session.press(NEW_TODO)
        expect_shown(session)
        session.press(*locks)
        activate(session, terminal)
    hold(session, terminal)
    expect((session.folder / "typed").read_text() == "", "keys have reached the terminal")
    program.terminate()
    session.wait_end(program)


def with_a_held_key(session, path):
    holder = session.start(sys.executable, str(KEY_HOLDER), "h")
    session.wait_for(lambda: session.log_lines(holder) == ["held"], "the program that holds a key")
    program, terminal = start(session, path)
    session.press(HIDE)
    toggle(session, terminal)
    add_todo(session, terminal, "held")
    program.terminate()
    session.wait_end(program)


def main():
    path, window_manager = program_to_test(), sys.argv[2]
    with Session(f"hot_keys_{window_manager}", window_manager) as session:
        with_all_keys(session, path)
    with Session(f"held_hot_key_{window_manager}", window_manager) as session:
        with_a_held_key(session, path)


if __name__ == "__main__":
    main()
