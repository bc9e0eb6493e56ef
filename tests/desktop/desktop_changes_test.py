"""The desktop changes under the running program: a bar comes up, its window manager gives way to another, a screen is
unplugged, the text resolution changes. The panel stays in sight, whole and in use."""

import status_hosts
from session import Session, expect, program_to_test

COMPOSER = (172, 187)  # a point in the panel's input field
EVERY_DESKTOP = "4294967295"
SCREEN = (1600, 1200)


def start(session, path):
    session.save_document({"tasks": [], "isHardPinned": True})
    program = session.start(path)
    panel = session.wait_window("Wren Fold")
    session.wait_active(panel)
    return program, panel


def expect_use(session, panel, title):
    session.click(panel, *COMPOSER)
    wait_keyboard_stays(session, panel)
    session.type_text(title)
    session.press("Return")
    session.wait_for(lambda: title in session.titles(), f"the task {title}")


def wait_keyboard_stays(session, panel):
    """A window manager that has just taken over gives the keyboard to one window after the other."""
    looks = []

    def stays():
        looks.append(session.tool("xdotool", "getwindowfocus") == panel)
        return len(looks) >= 10 and all(looks[-10:])
    session.wait_for(stays, "the panel to keep the keyboard")


def stop(session, program):
    program.terminate()
    session.wait_end(program)


def a_bar_that_comes_up_with_the_panel_leaves_it_in_the_middle(session, path):
    """As at login. Which of them is first is not the same each time, so it is tried some times."""
    bar = status_hosts.LxqtPanel(session)
    for _ in range(6):
        bar.begin()
        program, panel = start(session, path)
        status_hosts.wait_shown(session, bar.height)
        expect_use(session, panel, "at login")
        x, y, width, height = session.geometry(panel)
        expect(abs(x + width // 2 - SCREEN[0] // 2) <= 1 and abs(y + height // 2 - SCREEN[1] // 2) <= bar.height,
               f"the panel is at {x}, {y}")
        stop(session, program)
        bar.kill()


def is_at_hand(session, panel):
    """Whether the panel is in sight, above other windows and on every desktop."""
    answer = session.tool("xprop", "-id", panel, "_NET_WM_STATE", "_NET_WM_DESKTOP")
    return session.windows("Wren Fold") == [panel] and "_NET_WM_STATE_ABOVE" in answer and EVERY_DESKTOP in answer


def another_window_manager_keeps_the_panel_at_hand(session, path):
    program, panel = start(session, path)
    session.wait_for(lambda: is_at_hand(session, panel), "the panel at hand")
    place = session.geometry(panel)
    for number, window_manager in enumerate(("xfwm4", "openbox", "xfwm4")):
        session.start(window_manager, "--replace")
        session.wait_for(lambda: window_manager in manager_name(session), f"{window_manager} in charge")
        session.wait_for(lambda: is_at_hand(session, panel), f"the panel at hand under {window_manager}")
        expect(session.geometry(panel) == place, f"{window_manager} has moved the panel to {session.geometry(panel)}")
        expect_use(session, panel, f"task {number}")
    stop(session, program)


def manager_name(session):
    window = session.tool("xprop", "-root", "_NET_SUPPORTING_WM_CHECK").rpartition("# ")[2]
    return session.tool("xprop", "-id", window, "_NET_WM_NAME").lower() if window else ""


def the_panel_leaves_a_screen_that_is_unplugged(session, path):
    session.tool("xrandr", "--setmonitor", "left", "800/211x1200/317+0+0", "screen")
    session.tool("xrandr", "--setmonitor", "right", "800/211x1200/317+800+0", "none")
    program, panel = start(session, path)
    _, _, width, height = session.geometry(panel)
    session.tool("xdotool", "windowmove", "--sync", panel, "1100", "100")
    session.wait_for(lambda: session.geometry(panel) == (1100, 100, width, height), "the panel on the right screen")
    session.tool("xrandr", "--delmonitor", "right")
    session.wait_for(lambda: session.geometry(panel) == (800 - width, 100, width, height), "the panel on the left screen")
    expect_use(session, panel, "left")
    stop(session, program)


def set_text_resolution(session, dots_per_inch):
    session.tool("xfconf-query", "-c", "xsettings", "-p", "/Xft/DPI", "-n", "-t", "int", "-s", str(dots_per_inch))


def is_whole(session, panel):
    x, y, width, height = session.geometry(panel)
    screen_width, screen_height = SCREEN
    return x >= 0 and y >= 0 and x + width <= screen_width and y + height <= screen_height


def the_panel_grows_and_shrinks_with_the_text(session, path):
    set_text_resolution(session, 96)
    session.start("xfsettingsd", "--no-daemon", "--disable-wm-check")
    session.wait_for(lambda: "Xft.dpi" in session.tool("xprop", "-root", "RESOURCE_MANAGER"), "the desktop's settings")
    program, panel = start(session, path)
    for dots_per_inch, size in ((144, (516, 750)), (96, (344, 500)), (192, (688, 1000)), (96, (344, 500))):
        set_text_resolution(session, dots_per_inch)
        session.wait_for(lambda: session.geometry(panel)[2:] == size and is_whole(session, panel),
                         f"the whole panel of {size} at {dots_per_inch} dots per inch")
    expect_use(session, panel, "resized")
    stop(session, program)


def main():
    path = program_to_test()
    for window_manager, test in (("openbox", a_bar_that_comes_up_with_the_panel_leaves_it_in_the_middle),
                                 ("openbox", another_window_manager_keeps_the_panel_at_hand),
                                 ("openbox", the_panel_leaves_a_screen_that_is_unplugged),
                                 ("xfwm4", the_panel_grows_and_shrinks_with_the_text)):
        with Session(f"desktop_changes_{test.__name__}", window_manager, size="{}x{}".format(*SCREEN)) as session:
            test(session, path)


if __name__ == "__main__":
    main()
