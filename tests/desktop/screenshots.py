"""Takes pictures of the program's windows in each of their states, in desktop sessions of its own.

    python3 tests/desktop/screenshots.py PROGRAM FOLDER

A picture's name says the state and the theme, and ends in @2x at twice the size: compact-dark@2x.png. The states of the
timer, the wide panel and the other windows come in both themes and sizes, the rest light and small, and dark and large.
Colours are reduced to 256 a picture.
"""

import concurrent.futures
import pathlib
import subprocess
import sys
import time

import sample_documents as samples
from chat_service import ChatService
from fast_clock import FastClock
from session import Failure, Session, expect

GROUND = "#8b93a3"
MARGIN = 24  # around the windows; as all lengths here at the size of 1x

PLAY_BUTTON = (33, 37)
FOLD_BUTTON = (95, 77)
UNDO_BUTTON = (153, 77)
GRIP = (172, 7)
LINK_BUTTON = (269, 253)
CHAT_BUTTON = (239, 77)

# Points in the list of a working day: the delete button of its first task, and the upper edge of the row with the
# question, where no tool tip comes.
MEMO_TRASH = (293, 309)
QUESTION_ROW = (16, 382)
LIST = (172, 360)

# Colours by which the toolkit knows a dark desktop.
DARK_COLOURS = """
[Colors:Window]
BackgroundNormal=32,33,38
ForegroundNormal=236,238,241
[Colors:View]
BackgroundNormal=27,28,32
ForegroundNormal=236,238,241
[Colors:Button]
BackgroundNormal=40,43,49
ForegroundNormal=236,238,241
[Colors:Selection]
BackgroundNormal=141,155,255
ForegroundNormal=20,22,28
[Colors:Tooltip]
BackgroundNormal=40,43,49
ForegroundNormal=236,238,241
"""
DARK_DESKTOP = {"QT_QPA_PLATFORMTHEME": "kde", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5"}


class Studio:
    """A session in which the program is started in one state after the other, in one theme and at one size."""

    def __init__(self, session, program, folder, theme, scale):
        self._session = session
        self._program = program
        self._folder = folder
        self._name = f"{{}}-{theme}{'@2x' if scale == 2 else ''}.png"
        self._scale = scale
        # A time zone where it is noon: with a fast clock a day might end, and with it the count of what was done in it.
        self._environment = {"QT_SCALE_FACTOR": str(scale), "TZ": f"Etc/GMT{time.gmtime().tm_hour - 12:+d}"}
        if theme == "dark":
            pathlib.Path(session.environment["XDG_CONFIG_HOME"], "kdeglobals").write_text(DARK_COLOURS)
            self._environment |= DARK_DESKTOP
        session.tool("hsetroot", "-solid", GROUND)
        self._process = None
        self._panel = None
        self.clock = None

    # The program

    def open(self, document, candidates=(), **environment):
        """Starts the program on a document with a clock of its own, and waits until the panel has the keyboard and is
        painted."""
        self._session.save_document(document)
        self._session.save_candidates(candidates)
        self._session.tool("xdotool", "mousemove", "1", "1")
        self.clock = FastClock(self._session.folder)
        self._process = self._session.start(self._program, "--verbose", **self._environment, **self.clock.environment,
                                            **environment)
        self._panel = self._session.wait_window("Wren Fold")
        self._session.wait_active(self._panel)
        self._session.wait_for(lambda: len(set(self._look())) > 16, "the panel to be painted")
        self._settle()

    def close(self):
        self._session.tool("xdotool", "mouseup", "1")  # what drag() holds
        self._process.terminate()
        self._session.wait_end(self._process)

    def wait_line(self, text, seconds):
        """Waits for a line of the program's log."""
        self._session.wait_for(lambda: any(text in line for line in self._session.log_lines(self._process)), text, seconds)

    # What a person does; each waits until the panel shows it

    def click(self, point, button=1):
        self._act("mousemove", "--sync", "--window", self._panel, *self._scaled(point), "click", str(button))

    def point(self, point):
        self._act("mousemove", "--sync", "--window", self._panel, *self._scaled(point))

    def drag(self, start, target):
        """Takes hold of a row with the reorder key, pulls it to a point of the panel and holds it there."""
        self._session.tool("xdotool", "mousemove", "--sync", "--window", self._panel, *self._scaled(start), "keydown", "ctrl",
                           "mousedown", "1", "keyup", "ctrl")
        for share in (0.2, 0.6, 1):
            self.point(tuple(round(a + share * (b - a)) for a, b in zip(start, target)))

    def press(self, *keys):
        for key in keys:
            self._act("key", key)

    def type_text(self, text):
        """Types a text; the clock is slowed down so much that the caret does not blink away."""
        self.clock.run(0.01)
        self._act("type", "--delay", "120", text)

    def scroll(self, notches):
        self._act("mousemove", "--sync", "--window", self._panel, *self._scaled(LIST), "click", "--repeat", str(notches), "5")

    def wait_window(self, title):
        """Waits until another window of the program has the keyboard and is painted."""
        self._session.wait_active(self._session.wait_window(title))
        self._settle()

    # Pictures

    def take(self, state, title=None):
        """Saves a picture of what the program shows, the panel and a menu or a question above it; with a title, of the
        window with that one."""
        path = self._folder / self._name.format(state)
        windows = [self._session.wait_window(title)] if title else self._windows()
        frames = [self._session.geometry(window) for window in windows]
        left = min(x for x, _, _, _ in frames) - MARGIN * self._scale
        top = min(y for _, y, _, _ in frames) - MARGIN * self._scale
        right = max(x + width for x, _, width, _ in frames) + MARGIN * self._scale
        bottom = max(y + height for _, y, _, height in frames) + MARGIN * self._scale
        self._session.tool("import", "-silent", "-window", "root", "-crop", f"{right - left}x{bottom - top}+{left}+{top}",
                           "+repage", "+dither", "-colors", "256", "-strip", f"PNG8:{path}")
        expect(path.exists(), f"no picture was taken for {path}")

    def _windows(self):
        return self._session.tool("xdotool", "search", "--onlyvisible", "--class", "wrenfold").split()

    def _scaled(self, point):
        return [str(length * self._scale) for length in point]

    def _act(self, *action):
        before = self._look()
        self._session.tool("xdotool", *action)
        self._session.wait_for(lambda: self._look() != before, f"a change after {' '.join(action)}")
        self._settle()

    def _look(self):
        """The screen as bytes to compare."""
        return subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "rgb:-"], stdin=subprocess.DEVNULL,
                              env=self._session.environment, stdout=subprocess.PIPE, timeout=60, check=True).stdout

    def _settle(self):
        """Waits until two looks see the same."""
        seen = [b"", self._look()]

        def is_calm():
            seen[:] = [seen[1], self._look()]
            return seen[0] == seen[1]
        self._session.wait_for(is_calm, "the screen to come to rest")


def run_down(studio, seconds):
    """Lets the running timer come down to so many seconds, a multiple of 30, and go on as any timer. Returns when."""
    studio.clock.run(40)
    studio.wait_line(f"remaining={seconds + 30}s", 60)
    studio.clock.run(2)  # Slow enough to brake in time.
    studio.wait_line(f"remaining={seconds}s", 60)
    studio.clock.run(1)
    return time.monotonic()


def wait_until(moment):
    Session.wait_for(lambda: time.monotonic() >= moment, "the timer", 60)


def timer_states(studio):
    """The panel as its timer runs down, with a task just deleted and a row under the pointer."""
    studio.open(samples.working_day(samples.task(samples.MEMO)), [samples.MAIL])
    studio.click(PLAY_BUTTON)
    for name, seconds, shown in (("compact", 1110, 1104), ("last_five_minutes", 270, 252), ("last_minute", 60, 41)):
        braked = run_down(studio, seconds)
        wait_until(braked + seconds - shown - 3.5)  # What the status line says of a deletion stays for six seconds.
        if name != "compact":
            studio.click(UNDO_BUTTON)
        studio.click(MEMO_TRASH)
        if name == "last_minute":
            studio.click(FOLD_BUTTON)
        studio.point(GRIP if name == "last_minute" else QUESTION_ROW)
        wait_until(braked + seconds - shown + 0.2)
        studio.take(name)
    studio.close()


def chat(studio):
    """The chat with a proposal."""
    with ChatService() as service:
        studio.open(samples.working_day(), **service.environment())
        studio.click(CHAT_BUTTON)
        studio.wait_window("Wrenfold AI")
        studio.type_text("優先順に並べて")
        studio.press("Return")
        studio.take("chat", "Wrenfold AI")
        studio.close()


def settings(studio):
    """Each tab of the settings."""
    studio.open(samples.working_day())
    studio.press("ctrl+comma")
    studio.wait_window("Wrenfold Settings")
    for tab in ("general", "integrations", "automation", "guard"):
        studio.take(f"settings_{tab}", "Wrenfold Settings")
        studio.press("ctrl+Next")
    studio.close()


# Each brings the program into the state that it is named after.

def wide(studio):
    studio.open(samples.working_day(isQuadrantBoardVisible=True), [samples.MAIL])


def drag(studio):
    studio.open(samples.working_day(isQuadrantBoardVisible=True), [samples.MAIL])
    studio.drag((150, QUESTION_ROW[1]), (600, 380))


def empty(studio):
    studio.open(samples.document())


def one_task(studio):
    studio.open(samples.document(samples.task("はじめの一歩"), active="はじめの一歩"))


def many_tasks(studio):
    studio.open(samples.many_tasks())
    studio.scroll(20)


def long_titles(studio):
    studio.open(samples.long_titles(), [samples.candidate(samples.JAPANESE, "a source with a long name", "https://a.example/1")])


def inbox(studio):
    sources = ("gmail", "mail", "discord", "line", "voice", "claude", "mcp")
    studio.open(samples.working_day(), [samples.candidate(f"{source} から届いた用件", source) for source in sources])


def sections(studio):
    studio.open(samples.document(samples.task(samples.QUESTION), *samples.LATER, *samples.COMPLETED,
                                 isCompletedSectionExpanded=True))


def subtask_composer(studio):
    studio.open(samples.working_day(), [samples.MAIL])
    studio.press("Tab", "Tab", "Down", "Down", "Insert")
    studio.type_text("draft")


def row_focus(studio):
    studio.open(samples.working_day(), [samples.MAIL])
    studio.press("Tab", "Tab", "Down", "Down")


def inline_edit(studio):
    studio.open(samples.working_day(), [samples.MAIL])
    studio.press("Tab", "Tab", "Down", "Down", "F2", "End")
    studio.type_text(" 2.0")


def row_menu(studio):
    studio.open(samples.working_day(), [samples.MAIL])
    studio.click(QUESTION_ROW, button=3)


def link_question(studio):
    studio.open(samples.working_day(), [samples.candidate("チャットの返事", "discord", "slack://channel?team=T1&id=C2")])
    studio.click(LINK_BUTTON)


STATES = (wide, drag, empty, one_task, many_tasks, long_titles, inbox, sections, subtask_composer, row_focus, inline_edit, row_menu,
          link_question)


def take_all(program, folder, theme, scale):
    with Session(f"screenshots-{theme}-{scale}", "xfwm4", size=f"{1200 * scale}x{700 * scale}") as session:
        studio = Studio(session, program, folder, theme, scale)
        for take_states in (timer_states, chat, settings):
            take_states(studio)
        for prepare in STATES:
            if prepare is wide or (theme, scale) in (("light", 1), ("dark", 2)):
                prepare(studio)
                studio.take(prepare.__name__)
                studio.close()


def compose_overview(folder):
    """One picture of the panel, the board and the chat in a row, for the README."""
    parts = [str(folder / f"{state}-light@2x.png") for state in ("compact", "wide", "chat")]
    subprocess.run(["convert", *parts, "-background", GROUND, "-gravity", "center", "+append", "-resize", "50%",
                    "+dither", "-colors", "256", "-strip", f"PNG8:{folder / 'overview.png'}"], check=True)


def main():
    program, folder = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    folder.mkdir(parents=True, exist_ok=True)
    with concurrent.futures.ThreadPoolExecutor(max_workers=2) as pool:
        sessions = [pool.submit(take_all, program, folder, theme, scale) for theme in ("light", "dark") for scale in (1, 2)]
        for session in sessions:
            session.result()
    compose_overview(folder)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"failed: {failure}")
