"""The panel comes back, under a window manager (the second argument), with the keyboard: when that one has put it away, by
iconifying it or showing the desktop, and when it was hidden a moment ago."""

import sys

from sample_documents import document, task
from session import Session, expect, program_to_test

PANEL = "Wren Fold"
TOGGLE, NEW_TODO = "ctrl+alt+super+p", "ctrl+alt+super+t"
# By the window manager's own keys; xfwm4 has none for a window that the task bar skips, and leaves it on the desktop that
# it shows.
PUT_AWAY = {
    "openbox": {
        "iconified": lambda session, panel: session.press("alt+space", "n"),
        "desktop_shown": lambda session, panel: session.press("super+d"),
    },
    "xfwm4": {"iconified": lambda session, panel: session.tool("xdotool", "windowminimize", panel)},
}


def type_task(session, title):
    """Types where the keyboard is: in the field only if it was given the focus."""
    session.type_text(title)
    session.press("Return")
    session.wait_for(lambda: title in session.titles(), f"the task {title}")


def comes_back(session, path, put_away):
    program = session.start(path)
    panel = session.wait_window(PANEL)
    session.wait_active(panel)
    place = session.geometry(panel)
    ways = {"the key P": lambda: session.press(TOGGLE),
            "the key T": lambda: session.press(NEW_TODO),
            "another start": lambda: session.wait_end(session.start(path)),
            "--toggle-panel": lambda: session.wait_end(session.start(path, "--toggle-panel")),
            "--new-todo": lambda: session.wait_end(session.start(path, "--new-todo"))}
    for number, (name, way) in enumerate(ways.items()):
        put_away(session, panel)
        session.wait_no_window(PANEL)
        way()
        session.wait_active(session.wait_window(PANEL))
        session.wait_for(lambda: session.geometry(panel) == place, f"the panel at {place} by {name}")
        if "T" in name or "todo" in name:
            type_task(session, f"task{number}")
        # In sight, it is hidden as ever.
        session.press(TOGGLE)
        session.wait_no_window(PANEL)
        session.press(TOGGLE)
        session.wait_active(session.wait_window(PANEL))
    expect(program.poll() is None, "the program has ended")
    program.terminate()
    session.wait_end(program)


def comes_back_at_once(session, path):
    """Before the toolkit has noticed that the hidden panel has lost the keyboard."""
    session.save_document(document(task("first")))
    program = session.start(path)
    session.wait_active(session.wait_window(PANEL))
    windows = ("xdotool", "search", "--onlyvisible", "--class", "wrenfold")
    for _ in range(5):
        session.tool("xdotool", "key", "--delay", "5", TOGGLE, TOGGLE)
        session.wait_active(session.wait_window(PANEL))
        session.press(NEW_TODO, "Tab", "Home", "Menu")
        session.wait_for(lambda: len(session.tool(*windows).split()) == 2, "the menu of the row that has the focus")
        session.press("Escape")
        session.wait_for(lambda: len(session.tool(*windows).split()) == 1, "the menu to go")
    program.terminate()
    session.wait_end(program)


def main():
    path, window_manager = program_to_test(), sys.argv[2]
    for name, put_away in PUT_AWAY[window_manager].items():
        with Session(f"panel_put_away_{window_manager}_{name}", window_manager) as session:
            comes_back(session, path, put_away)
    with Session(f"panel_put_away_{window_manager}_hidden", window_manager) as session:
        comes_back_at_once(session, path)


if __name__ == "__main__":
    main()
