"""The timer in real time: a work phase and a break of a minute each, under an open menu, a dragged panel and a real
notification daemon. Takes over two minutes."""

import time

import dunst
from session import Session, expect, program_to_test

PLAY_BUTTON = (33, 37)  # points in the panel: the timer's ring,
GRIP = (172, 7)  # the handle at its top,
CLOSE_BUTTON = (319, 77)  # and its close button
TIME = (64, 14, 100, 26)  # the time: x, y, width and height
TASK = {"id": "0C4D5B1E-6B5A-4B0B-9C8B-2F1D3A4E5F60", "title": "資料を読む", "isDone": False, "createdAt": 0}


class Phase:
    """The moments of a running phase, told from the program's log by the monotonic clock."""

    def __init__(self, session, program):
        self._session = session
        self._program = program
        self._start = None
        self._seen = 0

    def begins(self, text):
        self._start = self._wait(text, 15)

    def expect_line(self, text, seconds, slack=1):
        """Waits for a line of the log, which is to come so many seconds after the start of the phase."""
        passed = self._wait(text, seconds + 15) - self._start
        print(f"{text}: after {passed:.2f} s", flush=True)
        expect(abs(passed - seconds) <= slack, f"{text} came after {passed:.2f} s instead of {seconds}")

    def seconds(self):
        return time.monotonic() - self._start

    def _wait(self, text, seconds):
        def look():
            lines = self._session.log_lines(self._program)
            for number in range(self._seen, len(lines)):
                if text in lines[number]:
                    return number + 1
            return None
        self._seen = self._session.wait_for(look, f"the line {text}", seconds)
        return time.monotonic()


def menus(session, panel):
    return [window for window in session.tool("xdotool", "search", "--onlyvisible", "--class", "wrenfold").split()
            if window != panel]


def expect_ticking_time(session, panel):
    """Waits until the time that is shown has changed three times."""
    for _ in range(3):
        before = session.pixels(panel, *TIME)
        session.wait_for(lambda: session.pixels(panel, *TIME) != before, "a change of the time", 5)


def expect_tick_each_second(session, panel, phase, seconds):
    """Follows the time that is shown until so many seconds of the phase have passed: from its first change to its
    last, it has changed once a second."""
    shown = session.pixels(panel, *TIME)
    changes = []
    while phase.seconds() < seconds:
        now = session.pixels(panel, *TIME)
        if now != shown:
            changes.append(phase.seconds())
        shown = now
    expect(len(changes) > 1, f"the time changed {len(changes)} times")
    ticks, passed = len(changes) - 1, changes[-1] - changes[0]
    print(f"{ticks} ticks in {passed:.2f} s", flush=True)
    expect(abs(ticks - passed) < 0.5, f"the time changed {ticks} times in {passed:.2f} s")


def hold_menu_open(session, panel, phase, seconds):
    session.right_click(panel, *GRIP)
    session.wait_for(lambda: menus(session, panel), "the menu")
    opened = phase.seconds()
    expect_ticking_time(session, panel)
    session.wait_for(lambda: phase.seconds() - opened >= seconds, "the menu's time to pass", seconds + 5)
    expect(menus(session, panel), "the menu has closed by itself")
    session.press("Escape")
    session.wait_for(lambda: not menus(session, panel), "the menu to close")


def drag_panel(session, panel):
    x, y, _, _ = session.geometry(panel)
    session.tool("xdotool", "mousemove", "--window", panel, *map(str, GRIP), "mousedown", "1")
    for step in range(1, 9):
        session.tool("xdotool", "mousemove_relative", "--sync", "10", "5")
    session.wait_for(lambda: session.geometry(panel)[:2] != (x, y), "the panel to move")
    expect_ticking_time(session, panel)
    session.tool("xdotool", "mouseup", "1")


def main():
    path = program_to_test()
    with Session("timer") as session:
        dunst.start(session)
        session.save_document({"tasks": [TASK], "activeTaskID": TASK["id"], "isHardPinned": True,
                               "workDurationMinutes": 1, "breakDurationMinutes": 1})
        program = session.start(path, "--verbose")
        panel = session.wait_window("Wren Fold")
        session.wait_active(panel)
        phase = Phase(session, program)

        session.click(panel, *PLAY_BUTTON)
        phase.begins("start phase=work remaining=60s")
        hold_menu_open(session, panel, phase, 10)
        phase.expect_line("tick phase=work remaining=30s", 30)
        session.click(panel, *CLOSE_BUTTON)
        session.wait_no_window("Wren Fold")
        phase.expect_line("tick phase=work remaining=0s", 60)
        phase.expect_line("work complete", 61)

        phase.begins("start phase=shortBreak remaining=60s")
        session.wait_for(lambda: dunst.count(session) == 1, "the notification of the end of the work phase")
        session.tool("dunstctl", "action", "0")
        panel = session.wait_window("Wren Fold")
        dunst.close_all(session)
        drag_panel(session, panel)
        phase.expect_line("tick phase=shortBreak remaining=30s", 30)
        expect_tick_each_second(session, panel, phase, 59)
        phase.expect_line("tick phase=shortBreak remaining=0s", 60)
        phase.expect_line("break complete", 61)
        session.wait_for(lambda: dunst.count(session) == 1, "the notification of the end of the break")
        program.terminate()
        session.wait_end(program)


if __name__ == "__main__":
    main()
