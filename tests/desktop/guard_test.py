"""The focus guard against a terminal, under a window manager (the second argument): it is warned about and minimised,
and left alone when it is left in time."""

import sys

import dunst
from guard_log import LEFT, GuardLog, hiding, warning
from session import Session, expect, program_to_test

TERMINAL = {"id": "debian-xterm", "name": "XTerm", "bundleIdentifier": "debian-xterm",
            "path": "/usr/share/applications/debian-xterm.desktop"}
# Part of our own name, which must not make the guard hide the program from itself.
PART_OF_OURS = {"id": "wren", "name": "wren"}
WARNING = warning("XTerm", "debian-xterm")
HIDING = hiding("XTerm", "debian-xterm")

CLOSE_BUTTON = (319, 77)  # a point in the panel,
STATUS_LINE = (8, 476, 328, 22)  # and its lowest line: x, y, width and height


def open_terminal(session, log):
    """A terminal that keeps what is typed in a file. Returns its window, and when it was warned about."""
    session.start("xterm", "-fa", "Monospace", "-e", "sh", "-c", "cat >typed")
    warned = log.expect_next(WARNING)
    return session.tool("xdotool", "search", "--onlyvisible", "--class", "XTerm"), warned


def expect_keyboard_at_terminal(session, terminal):
    """The typed text also says that it stays there: window managers give the focus a moment after they show a window."""
    session.press("x", "Return")
    typed = session.folder / "typed"
    session.wait_for(lambda: typed.exists() and typed.read_text() == "x\n", "the terminal to get what is typed")
    expect(session.tool("xdotool", "getactivewindow") == terminal, "the terminal is no longer the active window")


def state(session, window):
    """How the window manager has the window: Normal or Iconic."""
    words = session.tool("xprop", "-id", window, "WM_STATE").split()
    return words[words.index("state:") + 1] if "state:" in words else ""


def wait_status(session, panel, other_than):
    """Waits until the panel's lowest line looks unlike that, and returns its pixels."""
    def look():
        pixels = session.pixels(panel, *STATUS_LINE)
        return pixels if pixels != other_than else None
    return session.wait_for(look, "another text in the status line")


def expect_terminal_hidden(session, log, terminal, panel, warned):
    log.expect_hiding(HIDING, warned)
    session.wait_for(lambda: state(session, terminal) == "Iconic", "the terminal to be minimised")
    session.wait_active(panel)
    # With our own panel in front what was blocked has been left, even though the guard did it.
    log.expect_next(LEFT)


def activate(session, window):
    """As a task bar does it."""
    session.tool("xdotool", "windowactivate", window)


def warn_and_hide(session, log):
    """Returns the windows of the terminal and the panel."""
    panel = session.wait_window("Wren Fold")
    session.wait_active(panel)
    empty = session.pixels(panel, *STATUS_LINE)
    session.click(panel, *CLOSE_BUTTON)
    session.wait_no_window("Wren Fold")

    terminal, warned = open_terminal(session, log)
    panel = session.wait_window("Wren Fold")
    expect_keyboard_at_terminal(session, terminal)
    warning_text = wait_status(session, panel, empty)
    session.picture("warning", panel)
    expect_terminal_hidden(session, log, terminal, panel, warned)
    wait_status(session, panel, warning_text)
    session.picture("hidden", panel)

    session.wait_for(lambda: dunst.count(session) == 1, "the notification")
    dunst.close_all(session)
    expect(dunst.closed(session) == [("Focus Guard", "XTerm をブロックしました — NOW に戻りましょう")],
           f"the notifications were {dunst.closed(session)}")
    return terminal, panel


def leave_in_time(session, log, terminal, panel):
    activate(session, terminal)
    warned = log.expect_next(WARNING)
    activate(session, panel)
    log.expect_next(LEFT)
    # As long as it would take to warn about our own panel and to hide it.
    log.expect_silence(warned, 5)
    expect(state(session, terminal) == "Normal", "the terminal was hidden though it was left")
    session.wait_active(panel)


def main():
    path, window_manager = program_to_test(), sys.argv[2]
    with Session(f"guard_{window_manager}", window_manager) as session:
        dunst.start(session)
        session.save_document({"tasks": [], "isHardPinned": True, "isFocusGuardEnabled": True,
                               "blockedApps": [PART_OF_OURS, TERMINAL]})
        program = session.start(path, "--verbose")
        log = GuardLog(session, program)
        log.expect_next("guard started")
        terminal, panel = warn_and_hide(session, log)

        activate(session, terminal)
        expect_terminal_hidden(session, log, terminal, panel, log.expect_next(WARNING))

        leave_in_time(session, log, terminal, panel)
        program.terminate()
        session.wait_end(program)
        log.expect_no_more()


if __name__ == "__main__":
    main()
