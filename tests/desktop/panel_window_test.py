"""The panel's window under a window manager (the second argument): above a full-screen window or hidden by it, its place
and its size."""

import sys

from session import Session, end, expect, program_to_test

# Points in the panel.
GRIP, CORNER, COMPOSER = (172, 7), (337, 493), (172, 187)
BOARD_BUTTON, FOLD_BUTTON, HIDE_BUTTON = (26, 77), (102, 77), (319, 77)
RED = bytes((255, 0, 0))
# A window manager takes over when the pointer has gone a little way, and counts from there.
PULL_STEPS, LEEWAY = 10, 10


def start(session, path, **document):
    session.save_document({"tasks": []} | document)
    program = session.start(path)
    panel = session.wait_window("Wren Fold")
    session.wait_active(panel)
    return program, panel


def pull(session, window, place, way):
    """Pulls with the pointer in steps, as a hand does."""
    session.tool("xdotool", "mousemove", "--window", window, *map(str, place), "mousedown", "1")
    for _ in range(PULL_STEPS):
        session.tool("xdotool", "mousemove_relative", "--sync", "--", *(str(part // PULL_STEPS) for part in way))
    session.tool("xdotool", "mouseup", "1")


def is_red(session, window):
    return session.pixels(window, *GRIP, 1, 1) == RED


def open_full_screen(session):
    """A red full-screen terminal that keeps what is typed in a file. Returns it and its window."""
    terminal = session.start("xterm", "-fullscreen", "-T", "full", "-bg", "red", "-fg", "red", "-e", "sh", "-c", "cat >typed")
    window = session.wait_window("full")
    session.wait_active(window)
    session.wait_for(lambda: session.pixels(window, 10, 700, 1, 1) == RED, "the full-screen window to be painted")
    return terminal, window


def expect_typed_in_terminal(session, text):
    session.press(text, "Return")
    typed = session.folder / "typed"
    session.wait_for(lambda: typed.exists() and typed.read_text().endswith(f"{text}\n"), "the terminal to get what is typed")


def expect_place(session, panel, expected, when, leeway=0):
    def look():
        return all(abs(a - b) <= leeway for a, b in zip(session.geometry(panel), expected))
    session.wait_for(look, f"the panel at {expected} {when}; it was at {session.geometry(panel)}")


def pinned_panel_is_used_above_a_full_screen_window(session, path):
    program, panel = start(session, path, isHardPinned=True)
    x, y, width, height = session.geometry(panel)
    terminal, full = open_full_screen(session)
    session.wait_for(lambda: not is_red(session, panel), "the panel above the full-screen window")
    expect(session.tool("xdotool", "getwindowfocus") == full, "the panel took the keyboard when it came above")
    expect_typed_in_terminal(session, "x")

    session.click(panel, *COMPOSER)
    session.wait_active(panel)
    session.type_text("one")
    pull(session, panel, GRIP, (-100, 50))
    expect_place(session, panel, (x - 100, y + 50, width, height), "after it was pulled", LEEWAY)
    x, y, _, _ = session.geometry(panel)
    pull(session, panel, CORNER, (50, 40))
    expect_place(session, panel, (x, y, width + 50, height + 40), "after its corner was pulled", LEEWAY)
    pulled = session.geometry(panel)
    session.click(panel, *COMPOSER)
    session.type_text(" two")
    session.press("Return")
    session.wait_for(lambda: session.titles() == ["one two"], "the task typed above the full-screen window")

    session.click(full, 20, 700)
    session.wait_active(full)
    expect_typed_in_terminal(session, "y")
    expect(not is_red(session, panel), "the panel went under the full-screen window")
    end(terminal)
    session.wait_no_window("full")
    # A click on its way there, for which it is out of sight, would go to what lies behind.
    session.wait_for(lambda: is_managed(session, panel), "the panel to be in the window manager's hands again")
    session.click(panel, *GRIP)
    session.wait_active(panel)
    expect_place(session, panel, pulled, "when the full-screen window has gone")
    program.terminate()
    session.wait_end(program)


def is_managed(session, panel):
    return f"{int(panel):#x}" in session.tool("xprop", "-root", "_NET_CLIENT_LIST")


def floating_panel_is_hidden_by_a_full_screen_window(session, path):
    program, panel = start(session, path, isHardPinned=False)
    terminal, full = open_full_screen(session)
    session.wait_for(lambda: is_red(session, panel), "the panel under the full-screen window")
    # Asked for, it comes.
    session.wait_end(session.start(path))
    session.wait_active(panel)
    session.wait_for(lambda: not is_red(session, panel), "the panel that was asked for")
    session.tool("xdotool", "windowactivate", full)
    session.wait_active(full)
    session.wait_for(lambda: is_red(session, panel), "the panel under the full-screen window again")
    end(terminal)
    session.wait_for(lambda: not is_red(session, panel), "the panel without the full-screen window")
    program.terminate()
    session.wait_end(program)


def board_opens_and_closes_near_the_right_edge(session, path):
    program, panel = start(session, path)
    _, _, width, height = session.geometry(panel)
    session.tool("xdotool", "windowmove", "--sync", panel, "900", "100")
    expect_place(session, panel, (900, 100, width, height), "after it was moved")
    session.click(panel, *BOARD_BUTTON)
    expect_place(session, panel, (564, 100, 716, height), "with the board")
    session.picture("board", panel)
    # The list has kept its place as far as there is room, so the board lies left of it.
    session.click(panel, 716 - width + BOARD_BUTTON[0], BOARD_BUTTON[1])
    expect_place(session, panel, (900, 100, width, height), "after the board was closed")
    program.terminate()
    session.wait_end(program)


def list_folds_and_unfolds_below_the_same_top(session, path):
    program, panel = start(session, path)
    x, y, width, height = session.geometry(panel)
    session.click(panel, *FOLD_BUTTON)
    expect_place(session, panel, (x, y, width, 268), "folded")
    session.wait_for(lambda: session.document()["isTodoListHidden"], "the fold to be saved")
    session.click(panel, *BOARD_BUTTON)
    expect_place(session, panel, (x, y, 716, height), "with the board, which needs the height")
    session.click(panel, *BOARD_BUTTON)
    expect_place(session, panel, (x, y, width, 268), "folded again")
    session.click(panel, *FOLD_BUTTON)
    expect_place(session, panel, (x, y, width, height), "unfolded")
    program.terminate()
    session.wait_end(program)


def place_and_size_are_kept_while_hidden(session, path):
    program, panel = start(session, path)
    x, y, width, height = session.geometry(panel)
    pull(session, panel, CORNER, (40, 60))
    expect_place(session, panel, (x, y, width + 40, height + 60), "after its corner was pulled", LEEWAY)
    pull(session, panel, GRIP, (-200, -90))
    expect_place(session, panel, (x - 200, y - 90, width + 40, height + 60), "after it was pulled", 2 * LEEWAY)
    kept = session.geometry(panel)
    for _ in range(2):
        session.click(panel, kept[2] - width + HIDE_BUTTON[0], HIDE_BUTTON[1])
        session.wait_no_window("Wren Fold")
        session.wait_end(session.start(path))
        panel = session.wait_window("Wren Fold")
        session.wait_active(panel)
        expect_place(session, panel, kept, "shown again")
    program.terminate()
    session.wait_end(program)


def pulled_corner_stays_under_the_pointer(session, path):
    program, panel = start(session, path)
    x, y, width, height = session.geometry(panel)
    for place, way, pulled in (
            ((width - 7, height - 7), (80, 60), (x, y, width + 80, height + 60)),
            ((width - 3, 250), (80, 10), (x, y, width + 80, height)),
            ((150, height - 3), (10, 60), (x, y, width, height + 60))):
        pull(session, panel, place, way)
        expect_place(session, panel, pulled, f"after it was pulled at {place}")
        # From where the pointer is, as a hand does that has gone too far.
        pull(session, panel, (place[0] + way[0], place[1] + way[1]), (-way[0], -way[1]))
        expect_place(session, panel, (x, y, width, height), f"after it was pulled back at {place}")
    program.terminate()
    session.wait_end(program)


def panel_stays_on_a_screen_that_shrinks(session, path):
    program, panel = start(session, path)
    session.tool("xdotool", "windowmove", "--sync", panel, "930", "280")
    session.wait_for(lambda: session.geometry(panel)[:2] == (930, 280), "the panel in the corner")
    session.tool("xrandr", "--newmode", "small", "38", "800", "832", "912", "1024", "600", "603", "607", "624")
    session.tool("xrandr", "--addmode", "screen", "small")
    session.tool("xrandr", "--output", "screen", "--mode", "small")
    session.wait_for(lambda: session.tool("xdotool", "getdisplaygeometry") == "800 600", "the smaller screen")
    session.wait_for(lambda: session.geometry(panel) == (456, 100, 344, 500), "the panel to be in sight again")
    session.click(panel, *COMPOSER)
    session.wait_active(panel)
    program.terminate()
    session.wait_end(program)


def main():
    path, window_manager = program_to_test(), sys.argv[2]
    for test in (pinned_panel_is_used_above_a_full_screen_window, floating_panel_is_hidden_by_a_full_screen_window,
                 board_opens_and_closes_near_the_right_edge, list_folds_and_unfolds_below_the_same_top,
                 place_and_size_are_kept_while_hidden, pulled_corner_stays_under_the_pointer,
                 panel_stays_on_a_screen_that_shrinks):
        with Session(f"panel_window_{window_manager}_{test.__name__}", window_manager) as session:
            test(session, path)


if __name__ == "__main__":
    main()
