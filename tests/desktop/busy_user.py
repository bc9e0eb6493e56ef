"""A person who uses everything that the program has in a day. Each step waits until the document, the log or the screen
shows what it does."""

import json
import os
import pathlib

import dunst
import status_hosts
from chat_window import CHAT, ChatWindow
from sample_documents import candidate
from session import expect
from status_menu import StatusMenu

PANEL, SETTINGS = "Wren Fold", "Wrenfold Settings"
# Points in the panel.
BOARD_BUTTON, FOLD_BUTTON, SORT_BUTTON, CHAT_BUTTON, CLOSE_BUTTON = (26, 77), (95, 77), (211, 77), (239, 77), (319, 77)
GRIP, CORNER = (172, 7), 7  # the latter from the right and the bottom
PULL_STEPS = 10
WORK_MINUTES = (50, 211)  # a point in the settings
TOGGLE, NEW_TODO = "ctrl+alt+super+p", "ctrl+alt+super+t"
QUADRANTS = ["urgentImportant", "importantNotUrgent", "urgentNotImportant", "notUrgentNotImportant"]


class BusyUser:
    def __init__(self, session, program, clock, service):
        self._session = session
        self._program = program
        self._clock = clock
        self._service = service
        self._menu = StatusMenu(session, program)
        self._inbox = pathlib.Path(session.environment["XDG_DATA_HOME"], "Wrenfold", "inbox")

    # The list

    def add(self, title):
        before = self._session.titles()
        self._session.press(NEW_TODO)
        self._session.wait_active(self._session.wait_window(PANEL))
        self._session.type_text(title)
        self._session.press("Return")
        self._wait_titles([*before, title])

    def rename(self, title, new_title):
        expected = [new_title if each == title else each for each in self._session.titles()]
        self._press_on_row(title, "F2", "ctrl+a")
        self._session.type_text(new_title)
        self._session.press("Return")
        self._wait_titles(expected)

    def complete(self, title):
        self._press_on_row(title, "space")
        self._wait_task(title, "isDone", True)

    def unfold(self, title):
        self._press_on_row(title, "Right")
        self._wait_task(title, "isExpanded", True)

    def make_now(self, title):
        self._press_on_row(title, "p")
        self._wait_document(lambda document: document["activeTaskID"] == self._task(title)["id"], f"{title} to be NOW")

    def defer(self, title, quadrant):
        """By the menu of its row, where the quadrants are the last but one entry."""
        self._press_on_row(title, "Menu")
        self._wait_menu()
        self._session.press("Up", "Up", "Right", *["Down"] * QUADRANTS.index(quadrant), "Return")
        self._wait_task(title, "quadrant", quadrant)
        self._wait_task(title, "isDeferred", True)

    def delete_last(self, title):
        """Of the rows above those that are done."""
        expected = [each for each in self._session.titles() if each != title]
        self._session.press(NEW_TODO, "Tab", "End", "Up", "Delete")
        self._wait_titles(expected)

    def clear_completed(self):
        expected = [task["title"] for task in self._session.document()["tasks"] if not task["isDone"]]
        self._session.press(NEW_TODO, "Tab", "End", "Delete")
        self._wait_titles(expected)

    def undo_and_redo(self, steps, times):
        """Takes the last steps back, which were all that the list holds, and brings them again."""
        before = self._session.document()
        for _ in range(times):
            self._session.press(*["ctrl+z"] * steps)
            self._wait_titles([])
            self._session.press(*["ctrl+y"] * steps)
            self._wait_document(lambda document: document == before, "the document of before")

    # Candidates

    def approve(self, text):
        before = self._session.titles()
        self._drop("mail.json", json.dumps(candidate(text, "gmail", "https://mail.example/1")).encode())
        self._wait_inbox(1)
        self._session.press(NEW_TODO, "Tab", "Home", "Down", "Return")
        self._wait_titles([*before, text])
        self._wait_inbox(0)

    def dismiss(self, text):
        self._drop("memo.json", json.dumps(candidate(text, "slack")).encode())
        self._wait_inbox(1)
        self._session.press(NEW_TODO, "Tab", "Home", "Down", "Delete")
        self._session.wait_for(lambda: not (self._inbox / "memo.json").exists(), "the file to go")
        self._wait_inbox(0)

    def drop_what_is_no_candidate(self):
        """Left there for the day, until it is swept."""
        self._drop("broken.json", b'{"text": "half')
        self._drop("huge.json", json.dumps(candidate("x" * (2 << 20), "gmail")).encode())
        os.mkfifo(self._inbox / "pipe.json")

    def sweep_inbox(self):
        for path in self._inbox.iterdir():
            path.unlink()

    # The AI

    def sort(self):
        expected = self._session.titles()[::-1]
        self._session.click(self._panel(), *SORT_BUTTON)
        self._wait_titles(expected)

    def chat(self):
        """A question that is answered and one that fails, an order that is not understood, and a split that is wanted."""
        self._session.click(self._panel(), *CHAT_BUTTON)
        window = ChatWindow(self._session)
        self._ask(window, "what next")
        self._service.status = 500
        self._ask(window, "and then")
        self._service.status, self._service.is_garbled = 200, True
        self._ask(window, "sort")
        self._service.is_garbled = False
        self._ask(window, "split")
        before = self._session.titles()
        window.confirm()
        self._wait_document(lambda document: len(document["tasks"]) == len(before) + len(self._service.subtasks), "the split")
        self._session.press("Escape")
        self._session.wait_no_window(CHAT)

    # Windows

    def visit_settings(self):
        self._session.click(self._panel(), *GRIP)
        self._session.press("ctrl+comma")
        window = self._session.wait_window(SETTINGS)
        self._session.wait_active(window)
        self._session.wait_for(
            lambda: self._session.colour_count(self._session.picture("settings", window)) > 16, "the settings to be painted")
        minutes = self._session.document()["workDurationMinutes"]
        self._session.click(window, *WORK_MINUTES)
        for key, expected in (("Down", minutes - 1), ("Up", minutes)):
            self._session.press(key)
            self._wait_document(lambda document, m=expected: document["workDurationMinutes"] == m, f"{expected} minutes")
        self._session.press(*["ctrl+Next"] * 4)  # once around
        self._session.press("Escape")
        self._session.wait_no_window(SETTINGS)

    def move_and_resize_panel(self):
        """There with the pointer; back exactly, as another program does it."""
        panel = self._panel()
        x, y, width, height = self._session.geometry(panel)
        self._pull(GRIP, (-100, 50), (x - 100, y + 50, width, height))
        left, top, _, _ = self._session.geometry(panel)
        self._pull((width - CORNER, height - CORNER), (40, 40), (left, top, width + 40, height + 40))
        self._session.tool("xdotool", "windowsize", panel, str(width), str(height), "windowmove", panel, str(x), str(y))
        self._session.wait_for(lambda: self._session.geometry(panel) == (x, y, width, height), "the panel to be as before")

    def toggle_panel(self):
        self._session.click(self._panel(), *CLOSE_BUTTON)
        self._session.wait_no_window(PANEL)
        for _ in range(3):
            self._session.press(TOGGLE)
            self._session.wait_active(self._session.wait_window(PANEL))
            self._session.press(TOGGLE)
            self._session.wait_no_window(PANEL)
        self._session.press(TOGGLE)
        for value in (True, False):
            for setting, button in (("isQuadrantBoardVisible", BOARD_BUTTON), ("isTodoListHidden", FOLD_BUTTON)):
                self._session.click(self._panel(), *button)
                self._wait_document(lambda document, s=setting, v=value: document[s] is v, f"{setting} to be {value}")

    def be_a_ghost(self):
        self._menu.press("ゴーストモード")
        self._session.wait_no_window(PANEL)
        self._menu.press("ゴースト解除（パネル表示）")
        self._session.wait_window(PANEL)

    # The timer and the guard

    def work_and_rest(self, rate):
        """A whole phase of each, in fast time."""
        start = len(self._lines())
        self._menu.press("ポモドーロをリセット")
        self._wait_line("reset to work", start)
        self._menu.press("ポモドーロを開始")
        self._clock.run(rate)
        for text in ("sprint nudge at 300s", "sprint nudge at 60s", "work complete", "break complete"):
            self._wait_line(text, start, 60)
        self._clock.run(1)
        self._session.wait_for(lambda: dunst.count(self._session) > 0, "a notification")
        dunst.close_all(self._session)

    def slack_off(self, terminal, rate):
        """A blocked application comes to the front until it is hidden."""
        start = len(self._lines())
        self._session.tool("xdotool", "windowactivate", terminal)
        self._wait_line("stage1 warn", start)
        self._clock.run(rate)
        self._wait_line("stage2 hide", start)
        self._clock.run(1)
        self._session.wait_active(self._panel())
        self._wait_line("left blocked app", start)

    def wait_registered(self):
        status_hosts.expect_registered(self._session, self._program)

    def expect_counts(self, done, still_open):
        text = f"今日 {done} 完了 · 未完了 {still_open}"
        self._session.wait_for(lambda: text in self._menu.titles(), f"the menu to say {text}")

    # Looking and waiting

    def _panel(self):
        return self._session.wait_window(PANEL)

    def _press_on_row(self, title, *keys):
        """Goes down to the row of an open task by keys, while the inbox is empty."""
        rows = []
        tasks = self._session.document()["tasks"]
        for task in tasks:
            if "parentID" not in task and not task["isDone"] and not task["isDeferred"]:
                children = [each["title"] for each in tasks if each.get("parentID") == task["id"]]
                rows += [task["title"], *(children if task["isExpanded"] else [])]
        expect(title in rows, f"{title} is not among {rows}")
        self._session.press(NEW_TODO, "Tab", "Home", *["Down"] * rows.index(title), *keys)

    def _ask(self, window, text):
        asked = len(self._service.requests)
        before = window.picture("before")
        window.say(text)
        self._session.wait_for(lambda: len(self._service.requests) > asked, "the question at the service")
        self._session.wait_for(
            lambda: self._session.different_pixels(before, window.wait_settled("asked")) > 1000, "the answer")

    def _pull(self, point, way, expected):
        """Pulls with the pointer in steps, as a hand does, until the panel stays about where it is expected: a window manager
        counts from where the pointer is when it takes over, which is the later the busier the computer is."""
        leeway = max(map(abs, way)) // 2
        panel = self._panel()
        self._session.tool("xdotool", "mousemove", "--window", panel, *map(str, point), "mousedown", "1")
        for _ in range(PULL_STEPS):
            self._session.tool("xdotool", "mousemove_relative", "--sync", "--", *(str(part // PULL_STEPS) for part in way))
        self._session.tool("xdotool", "mouseup", "1")
        looks = []

        def stays():
            looks.append(self._session.geometry(panel))
            is_near = all(abs(a - b) <= leeway for a, b in zip(looks[-1], expected))
            return is_near and looks[-3:] == looks[-1:] * 3
        self._session.wait_for(stays, f"the panel to stay at {expected}")

    def _drop(self, name, content):
        part = self._inbox / f".{name}.part"
        part.write_bytes(content)
        part.rename(self._inbox / name)

    def _wait_menu(self):
        def is_open():
            windows = self._session.tool("xdotool", "search", "--onlyvisible", "--class", "wrenfold").split()
            return len(windows) > len(self._session.windows(PANEL))
        self._session.wait_for(is_open, "the menu")

    def _lines(self):
        return self._session.log_lines(self._program)

    def _wait_line(self, text, start, seconds=15):
        self._session.wait_for(lambda: any(text in line for line in self._lines()[start:]), f"the line {text}", seconds)

    def _wait_inbox(self, count):
        def said():
            lines = [line for line in self._lines() if "inbox reloaded items=" in line]
            return f"items={count} " in lines[-1]
        self._session.wait_for(said, f"{count} candidates")

    def _wait_document(self, condition, what):
        self._session.wait_for(lambda: condition(self._session.document()), what)

    def _wait_titles(self, titles):
        self._session.wait_for(lambda: self._session.titles() == titles, f"the tasks {titles}")

    def _task(self, title):
        return next(task for task in self._session.document()["tasks"] if task["title"] == title)

    def _wait_task(self, title, name, value):
        self._session.wait_for(lambda: self._task(title)[name] == value, f"{title} to have {name} {value}")
