"""Tasks are dragged with the pointer, under a window manager (the second argument): past others, by any place of a row
while Control is held, onto a quadrant, at the right edge of the screen, and given up."""

import sys

from session import Session, expect, program_to_test

TITLES = ["一", "二", "三", "四", "五"]
COMPACT, WIDE = 344, 716  # the panel's widths
HANDLE, TITLE = 20, 150  # where a row is taken hold of
# Cells of the board, counted from its left edge.
DO_NOW, LET_GO = (110, 150), (290, 400)


def row(index):
    """The middle of the row of an open task, from the panel's top; the first has index 0."""
    return 251 + 32 * index


def tasks():
    return [{"id": f"0C4D5B1E-6B5A-4B0B-9C8B-2F1D3A4E5F0{index}", "title": title, "isDone": False, "createdAt": 0}
            for index, title in enumerate(TITLES)]


class Panel:
    def __init__(self, session, window):
        self.session = session
        self.window = window

    def point(self, x, y):
        """Moves the pointer to a point of the panel, as it lies when this begins."""
        self.session.tool("xdotool", "mousemove", "--sync", "--window", self.window, str(x), str(y))

    def press(self, x, y):
        self.point(x, y)
        self.session.tool("xdotool", "mousedown", "1")

    def pull(self, dx, dy, steps=8):
        """Moves the pointer by this way, in steps."""
        done = (0, 0)
        for step in range(1, steps + 1):
            to = (dx * step // steps, dy * step // steps)
            # "--" because a way may begin with a minus. Without --sync: no movement would be waited for in vain.
            self.session.tool("xdotool", "mousemove_relative", "--", str(to[0] - done[0]), str(to[1] - done[1]))
            done = to

    def let_go(self):
        self.session.tool("xdotool", "mouseup", "1")

    def wait_titles(self, titles):
        self.session.wait_for(lambda: self.session.titles() == titles, f"the order {titles}")

    def wait_width(self, width):
        self.session.wait_for(lambda: self.session.geometry(self.window)[2] == width, f"the panel {width} wide")

    def quadrants(self):
        """The deferred tasks' titles with their quadrants."""
        return {task["title"]: task["quadrant"] for task in self.session.document()["tasks"] if task["isDeferred"]}

    def wait_quadrants(self, quadrants):
        self.session.wait_for(lambda: self.quadrants() == quadrants, f"the deferred tasks {quadrants}")

    def undo(self, titles):
        self.session.press("ctrl+z")
        self.wait_titles(titles)


def drag_past_others(panel):
    panel.press(HANDLE, row(0))
    panel.pull(0, 3 * 32 + 8)
    moved = ["二", "三", "四", "一", "五"]
    panel.wait_titles(moved)  # before it is let go
    panel.wait_width(WIDE)
    panel.let_go()
    panel.wait_width(COMPACT)
    panel.undo(TITLES)  # one step for all of it
    panel.session.press("ctrl+y")
    panel.wait_titles(moved)
    panel.undo(TITLES)


def drag_with_key(panel):
    panel.point(TITLE, row(4))
    panel.session.tool("xdotool", "keydown", "ctrl")
    panel.session.tool("xdotool", "mousedown", "1")
    panel.pull(0, -2 * 32 - 8)
    panel.wait_titles(["一", "二", "五", "三", "四"])
    panel.let_go()
    panel.session.tool("xdotool", "keyup", "ctrl")
    panel.wait_width(COMPACT)
    panel.undo(TITLES)


def give_up(panel):
    panel.press(HANDLE, row(1))
    panel.pull(0, 2 * 32 + 8)
    panel.wait_titles(["一", "三", "四", "二", "五"])
    panel.session.press("Escape")
    panel.wait_titles(TITLES)
    panel.wait_width(COMPACT)
    panel.pull(0, 40)  # The rest of the movement moves nothing.
    panel.let_go()
    expect(panel.session.titles() == TITLES, "a drag that was given up went on")


def drop_on_cell(panel):
    panel.press(HANDLE, row(0))
    panel.pull(10, 32)
    panel.wait_width(WIDE)
    panel.point(COMPACT + DO_NOW[0], DO_NOW[1])
    before = panel.session.picture("over_no_other_cell", panel.window)
    panel.point(COMPACT + LET_GO[0], LET_GO[1])
    panel.session.wait_for(
        lambda: panel.session.different_pixels(before, panel.session.picture("over_cell", panel.window)) > 1000,
        "the targeted cell to be lit")
    panel.let_go()
    panel.wait_quadrants({"一": "notUrgentNotImportant"})
    panel.wait_width(COMPACT)
    expect(panel.session.titles() == TITLES, "the deferred task left its place")
    panel.session.press("ctrl+z")
    panel.wait_quadrants({})


def drag_at_screen_edge(panel):
    session = panel.session
    screen_width = 1280
    panel.press(172, 7)

    def near_edge():
        panel.pull(20, 0, steps=2)
        return session.geometry(panel.window)[0] >= screen_width - COMPACT - 60
    session.wait_for(near_edge, "the panel near the right edge of the screen")
    panel.let_go()
    left = session.geometry(panel.window)[0]
    panel.press(HANDLE, row(0))
    panel.pull(0, 2 * 32 + 8)
    # The board opens on the left; the list stays under the pointer.
    panel.wait_width(WIDE)
    panel.wait_titles(["二", "三", "一", "四", "五"])
    session.wait_for(lambda: session.geometry(panel.window)[0] <= screen_width - WIDE, "the wide panel on the screen")
    panel.pull(0, 32)
    panel.wait_titles(["二", "三", "四", "一", "五"])
    expect(not panel.quadrants(), "a task was deferred without leaving the list")
    panel.point(DO_NOW[0], DO_NOW[1])
    panel.let_go()
    panel.wait_quadrants({"一": "urgentImportant"})
    panel.wait_width(COMPACT)
    session.wait_for(lambda: session.geometry(panel.window)[0] == left, "the panel back at its place")
    session.press("ctrl+z")
    panel.wait_quadrants({})
    panel.wait_titles(TITLES)


def main():
    window_manager = sys.argv[2]
    with Session(f"task_drag_{window_manager}", window_manager) as session:
        session.save_document({"tasks": tasks(), "activeTaskID": tasks()[0]["id"], "isHardPinned": False, "mediumGoal": ""})
        program = session.start(program_to_test())
        window = session.wait_window("Wren Fold")
        session.wait_active(window)
        panel = Panel(session, window)
        drag_past_others(panel)
        drag_with_key(panel)
        give_up(panel)
        drop_on_cell(panel)
        drag_at_screen_edge(panel)
        session.press("ctrl+q")
        session.wait_end(program)


if __name__ == "__main__":
    main()
