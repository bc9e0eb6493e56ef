"""The panel comes back when a window manager (the second argument) has put it away: iconified it, or shown the desktop."""

import sys

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


def main():
    path, window_manager = program_to_test(), sys.argv[2]
    for name, put_away in PUT_AWAY[window_manager].items():
        with Session(f"panel_put_away_{window_manager}_{name}", window_manager) as session:
            comes_back(session, path, put_away)


if __name__ == "__main__":
    main()
