"""The panel is moved by its header wherever nothing is to be pressed, and stays where it is let go."""

from session import Session, expect, program_to_test

# Points in the panel.
HANDLES = {"the grip": (172, 7), "the time": (80, 32), "the subtitle": (100, 53), "the timer's empty place": (260, 37),
           "the strip's empty place": (260, 77)}
BUTTONS = {"the timer's ring": (33, 37), "the reset button": (319, 37), "the close button": (319, 77)}
STEP = (10, 5)
STEPS = 8


def way_from(start, session, panel):
    x, y, _, _ = session.geometry(panel)
    return (x - start[0], y - start[1])


def pull(session, steps):
    for _ in range(steps):
        session.tool("xdotool", "mousemove_relative", "--sync", *map(str, STEP))


def expect_menu(session, panel, name, place):
    """A menu that opens also says that nothing earlier is under way: no program gets a click during a move."""
    def menus():
        found = session.tool("xdotool", "search", "--onlyvisible", "--class", "wrenfold").split()
        return [window for window in found if window != panel]
    session.right_click(panel, *place)
    session.wait_for(menus, f"the menu after pulling at {name}")
    session.press("Escape")
    session.wait_for(lambda: not menus(), f"the menu after pulling at {name} to close")


def press(session, panel, place):
    session.tool("xdotool", "mousemove", "--window", panel, *map(str, place), "mousedown", "1")


def let_go(session):
    """Lets go and moves the pointer on."""
    session.tool("xdotool", "mouseup", "1")
    pull(session, 4)


def expect_drag(session, panel, name, place):
    start = session.geometry(panel)
    press(session, panel, place)
    pull(session, STEPS)
    session.wait_for(lambda: way_from(start, session, panel)[0] >= STEP[0] * STEPS // 2, f"the panel to be moved by {name}")
    let_go(session)
    expect_menu(session, panel, name, place)
    way = way_from(start, session, panel)
    expect(way[0] <= STEP[0] * STEPS, f"let go of {name}, the panel went on with the pointer, to {way}")


def expect_no_drag(session, panel, name, place):
    start = session.geometry(panel)
    press(session, panel, place)
    pull(session, STEPS)
    let_go(session)
    expect_menu(session, panel, name, HANDLES["the grip"])  # On a button a tool tip could be taken for the menu.
    way = way_from(start, session, panel)
    expect(way == (0, 0), f"pulled at {name} the panel moved by {way}")


def main():
    path = program_to_test()
    with Session("panel_drag") as session:
        program = session.start(path)
        panel = session.wait_window("Wren Fold")
        session.wait_active(panel)
        for name, place in HANDLES.items():
            expect_drag(session, panel, name, place)
        # Left before the release, the buttons have done nothing either: the panel is there for the menu.
        for name, place in BUTTONS.items():
            expect_no_drag(session, panel, name, place)
        session.click(panel, *BUTTONS["the close button"])
        session.wait_no_window("Wren Fold")
        program.terminate()
        session.wait_end(program)


if __name__ == "__main__":
    main()
