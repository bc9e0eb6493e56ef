"""The status item in a tray of the old kind: it appears and comes back with its tray, a click shows the panel, and its menu
does what its rows say."""

from session import Session, program_to_test

PANEL = "Wren Fold"
HEIGHT = 28
IN_ICON = (14, 14)  # a point on the screen
LEFT, RIGHT = 1, 3  # the pointer's buttons


def start_tray(session):
    return session.start("trayer", "--edge", "top", "--align", "left", "--widthtype", "pixel", "--width", "120", "--heighttype",
                         "pixel", "--height", str(HEIGHT), "--expand", "false", "--distance", "0")


def wait_icon(session):
    """The tray alone has a colour or two, the soft edges of the icon have many."""
    def colours():
        path = session.folder / "tray.rgb"
        session.tool("import", "-silent", "-window", "root", "-crop", f"{HEIGHT}x{HEIGHT}+0+0", "-depth", "8", f"rgb:{path}")
        pixels = path.read_bytes()
        return {pixels[i:i + 3] for i in range(0, len(pixels), 3)}
    session.wait_for(lambda: len(colours()) > 8, "the icon")


def click(session, button):
    session.tool("xdotool", "mousemove", *map(str, IN_ICON), "click", str(button))


def menus(session):
    """The menus in sight: windows that no window manager cares for, taller than the tray."""
    return [line for line in session.tool("xwininfo", "-root", "-tree").splitlines()
            if '("wrenfold" "wrenfold")' in line and "IsViewable" in session.tool("xwininfo", "-id", line.split()[0])
            and "Override Redirect State: yes" in session.tool("xwininfo", "-id", line.split()[0])
            and int(line.split("  ")[-2].split("x")[1].split("+")[0]) > 200]


def press_row(session, *keys):
    click(session, RIGHT)
    session.wait_for(lambda: menus(session), "the menu")
    session.press(*keys)
    session.wait_for(lambda: not menus(session), "the menu to go")


def main():
    with Session("tray_icon") as session:
        tray = start_tray(session)
        program = session.start(program_to_test(), "--verbose")
        session.wait_window(PANEL)
        wait_icon(session)
        session.picture("shown")
        press_row(session, "Down", "Down", "Down", "Down", "Down", "Return")  # What only informs is left out.
        session.wait_no_window(PANEL)
        click(session, LEFT)
        session.wait_window(PANEL)
        tray.kill()
        tray.wait()
        start_tray(session)
        wait_icon(session)
        press_row(session, "Up", "Return")
        session.wait_end(program)


if __name__ == "__main__":
    main()
