"""A desktop session of its own for one test: an X server without a screen, a message bus, a window manager, and empty
home, configuration, data and runtime folders. It ends only what it started.

    with Session("first_use") as session:
        program = session.start(PROGRAM)
        panel = session.wait_window("Wren Fold")
        session.press("ctrl+q")
        session.wait_end(program)
"""

import json
import os
import pathlib
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time

PICTURES = pathlib.Path(__file__).resolve().parents[2] / "build" / "desktop"
NO_BUS = "disabled:"

# Each with what it writes on the root window when it is ready. Windows shown earlier get lost: openbox says that it is
# there before it reads its fonts, and forgets what asks to be shown meanwhile.
WINDOW_MANAGERS = {"openbox": "_NET_CLIENT_LIST", "xfwm4": "_NET_ACTIVE_WINDOW"}


class Session:
    """`window_manager` is one of WINDOW_MANAGERS or None; `bus` False leaves the session without a message bus."""

    def __init__(self, name, window_manager="openbox", bus=True, size="1280x800"):
        self._name = name
        self._window_manager = window_manager
        self._has_bus = bus
        self._size = size
        self._started = []  # what to end, in the order of starting
        self.daemons = []  # the session's own parts among these
        self._logs = {}
        self.folder = None
        self.environment = {}

    def __enter__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="wrenfold-"))
        try:
            self._make_environment()
            self._start_display()
            self._start_bus()
            self._start_window_manager()
            self.daemons = list(self._started)
        except BaseException:
            self.__exit__(*sys.exc_info())
            raise
        return self

    def __exit__(self, kind, error, trace):
        if kind:
            self._report_failure()
        for process in reversed(self._started):
            end(process)
        shutil.rmtree(self.folder, ignore_errors=True)

    # Programs

    def start(self, program, *arguments, **environment):
        """Starts a program in the session, with changes to its environment. Its output is shown if the test fails."""
        path = self.folder / f"{len(self._started)}-{pathlib.Path(program).name}.log"
        with path.open("wb") as log:
            process = subprocess.Popen([program, *arguments], env=self.environment | environment, stdin=subprocess.DEVNULL,
                                       stdout=log, stderr=subprocess.STDOUT, cwd=self.folder)
        self._started.append(process)
        self._logs[process] = path
        return process

    def log_lines(self, process):
        """What a started program has written until now."""
        return self._logs[process].read_text(errors="replace").splitlines()

    def wait_end(self, process, status=0, seconds=15):
        """Waits until the program has ended by itself, with this exit status."""
        self.wait_for(lambda: process.poll() is not None, f"the end of {process.args}", seconds)
        expect(process.returncode == status, f"{process.args} ended with {process.returncode}, not {status}")

    def tool(self, *command):
        """What a tool printed, run in the session; empty when it failed."""
        result = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL, text=True, timeout=60, check=False)
        return result.stdout.strip() if result.returncode == 0 else ""

    # Waiting

    @staticmethod
    def wait_for(condition, what, seconds=15):
        """The first true answer of the condition; without one in this time the test fails and names what it missed."""
        end_time = time.monotonic() + seconds
        while not (answer := condition()):
            expect(time.monotonic() < end_time, f"waited {seconds} s in vain for {what}")
            time.sleep(0.02)  # UNAVOIDABLE: the pause between two looks
        return answer

    # Windows and pictures

    def windows(self, title):
        """The visible windows with this title."""
        return self.tool("xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$").split()

    def wait_window(self, title):
        """The one visible window with this title."""
        found = self.wait_for(lambda: self.windows(title), f"a window titled {title}")
        expect(len(found) == 1, f"{len(found)} windows are titled {title}")
        return found[0]

    def wait_no_window(self, title):
        self.wait_for(lambda: not self.windows(title), f"the window titled {title} to go")

    def wait_active(self, window):
        """Waits until the window has the keyboard."""
        self.wait_for(lambda: self.tool("xdotool", "getwindowfocus") == window, f"window {window} to get the keyboard")

    def geometry(self, window):
        """x, y, width and height of a window on the screen."""
        # Not by xdotool, which counts a window manager's frame twice.
        answer = self.tool("xwininfo", "-id", window)
        return tuple(int(re.search(rf"{name}: +(-?\d+)", answer)[1])
                     for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def picture(self, name, window=None):
        """Saves a picture of the window (or of the screen) as it is seen, and returns its path."""
        PICTURES.mkdir(parents=True, exist_ok=True)
        path = PICTURES / f"{self._name}_{name}.png"
        area = []
        if window:
            x, y, width, height = self.geometry(window)
            area = ["-crop", f"{width}x{height}+{x}+{y}", "+repage"]
        self.tool("import", "-silent", "-window", "root", *area, f"PNG24:{path}")
        expect(path.exists(), f"no picture was taken for {path}")
        return path

    def pixels(self, window, x, y, width, height):
        """The colours of a part of the window as it is seen, as bytes to compare."""
        left, top, _, _ = self.geometry(window)
        path = self.folder / "pixels.rgb"
        self.tool("import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{left + x}+{top + y}", "-depth", "8",
                  f"rgb:{path}")
        return path.read_bytes()

    def colour_count(self, picture):
        return int(self.tool("identify", "-format", "%k", str(picture)))

    def different_pixels(self, picture, other):
        """How many pixels two pictures of the same size differ in."""
        return int(float(self._compare("AE", picture, other).split()[0]))

    def difference(self, picture, other):
        """How much two pictures of the same size differ: 0 not at all, 1 as black from white."""
        return float(self._compare("RMSE", picture, other).split("(")[1].rstrip(")"))

    @staticmethod
    def _compare(metric, picture, other):
        result = subprocess.run(["compare", "-metric", metric, str(picture), str(other), "null:"], stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, timeout=60, check=False)
        expect(result.returncode in (0, 1), f"{picture} and {other} cannot be compared: {result.stderr}")
        return result.stderr

    # Keyboard and pointer

    def press(self, *keys):
        """Presses keys one after the other, in xdotool's names: Return, ctrl+z."""
        self.tool("xdotool", "key", "--delay", "50", *keys)

    def type_text(self, text):
        """Types a text. Characters that the keyboard lacks get keys of their own first: xdotool would give all of them the
        same key in turn, and a program that is slow to look reads the next one, or none."""
        self._add_keys(character for character in text if not character.isascii())
        self.tool("xdotool", "type", "--delay", "20", text)

    def _add_keys(self, characters):
        """Puts those that the keyboard lacks on keys that have none, where they stay."""
        keys = [line.split("=") for line in self.tool("xmodmap", "-pke").splitlines()]
        taken = {symbol for _, symbols in keys for symbol in symbols.split()}
        spare = [key for key, symbols in keys if not symbols.strip()]
        names = [f"U{ord(character):04X}" for character in dict.fromkeys(characters)]
        missing = [name for name in names if name not in taken]
        expect(len(missing) <= len(spare), f"the keyboard has {len(spare)} keys left for {missing}")
        if missing:
            self.tool("xmodmap", *(part for key, name in zip(spare, missing) for part in ("-e", f"{key}= {name}")))

    def click(self, window, x, y):
        self.tool("xdotool", "mousemove", "--window", window, str(x), str(y), "click", "1")

    def right_click(self, window, x, y):
        self.tool("xdotool", "mousemove", "--window", window, str(x), str(y), "click", "3")

    # The program's document

    def save_document(self, document):
        """Puts a document into place as an earlier run of the program would have left it."""
        path = self._document_path()
        path.parent.mkdir(mode=0o700, exist_ok=True)
        path.write_text(json.dumps(document))

    def save_candidates(self, candidates):
        """Leaves these candidates, and no others, in the inbox of a program that does not run."""
        inbox = pathlib.Path(self.environment["XDG_DATA_HOME"], "Wrenfold", "inbox")
        shutil.rmtree(inbox, ignore_errors=True)
        inbox.mkdir(mode=0o700, parents=True)
        for number, candidate in enumerate(candidates):
            (inbox / f"{number}.json").write_text(json.dumps(candidate))

    def document(self):
        """The saved document; None while there is none."""
        path = self._document_path()
        return json.loads(path.read_bytes()) if path.exists() else None

    def titles(self):
        """The saved tasks' titles in order; none while there is no document."""
        return [task["title"] for task in (self.document() or {"tasks": []})["tasks"]]

    # The session's own parts

    def _document_path(self):
        return pathlib.Path(self.environment["XDG_CONFIG_HOME"], "Wrenfold", "Wrenfold.State.v1")

    def _make_environment(self):
        kept = ("PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS")
        self.environment = {name: os.environ[name] for name in kept if name in os.environ}
        self.environment |= {"LANG": "C.UTF-8", "TZ": "Asia/Tokyo", "NO_AT_BRIDGE": "1",
                             "DBUS_SESSION_BUS_ADDRESS": NO_BUS}
        for variable in ("HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"):
            folder = self.folder / variable.lower()
            folder.mkdir(mode=0o700)
            self.environment[variable] = str(folder)

    def _start_display(self):
        reading, writing = os.pipe()
        log = (self.folder / "Xvfb.log").open("wb")
        with log:
            self._started.append(subprocess.Popen(
                ["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{self._size}x24", "-nolisten", "tcp", "-noreset"],
                env=self.environment, stdin=subprocess.DEVNULL, stdout=log, stderr=log, pass_fds=[writing]))
        os.close(writing)
        self.environment["DISPLAY"] = ":" + read_line(reading, "the X server")

    def _start_bus(self):
        if not self._has_bus:
            return
        reading, writing = os.pipe()
        log = (self.folder / "dbus-daemon.log").open("wb")
        with log:
            self._started.append(subprocess.Popen(
                ["dbus-daemon", "--session", "--nofork", f"--print-address={writing}"],
                env=self.environment, stdin=subprocess.DEVNULL, stdout=log, stderr=log, pass_fds=[writing]))
        os.close(writing)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = read_line(reading, "the message bus")

    def _start_window_manager(self):
        if not self._window_manager:
            return
        self.start(self._window_manager)
        ready = WINDOW_MANAGERS[self._window_manager]
        self.wait_for(lambda: self.tool("xprop", "-root", ready).startswith(f"{ready}("), self._window_manager)

    def _report_failure(self):
        if "DISPLAY" in self.environment:
            try:
                print("The screen at the failure:", self.picture("failed"))
            except (Failure, OSError, subprocess.SubprocessError):
                print("The screen at the failure could not be had.")
        for log in sorted(self.folder.glob("*.log")):
            if text := log.read_text(errors="replace").strip():
                print(f"--- {log.name}\n{text}")


class Failure(AssertionError):
    """What a test expected and did not get."""


def expect(condition, message):
    if not condition:
        raise Failure(message)


def end(process):
    """Asks a program to end, and ends it after five seconds. No matter when it has ended already."""
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(5)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


def read_line(descriptor, who, seconds=20):
    """The line that a starting program writes when it is ready."""
    with os.fdopen(descriptor) as stream:
        expect(select.select([stream], [], [], seconds)[0], f"{who} did not start in {seconds} s")
        line = stream.readline().strip()
    expect(line, f"{who} ended at its start")
    return line


def program_to_test():
    """The program given on the command line; the environment variable goes first, so that the tests of one build can
    test the program of another."""
    return os.environ.get("WRENFOLD_TESTED_PROGRAM") or str(pathlib.Path(sys.argv[1]).resolve())
