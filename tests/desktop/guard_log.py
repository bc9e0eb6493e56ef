"""What the focus guard writes to the program's log, and when."""

import re
import threading
import time

from session import expect

LEFT = "left blocked app — clear warning"

# Seconds from the warning to the hiding: the first look that is 2.5 s after the warning, looking every 0.8 s, and what
# a test may see too early or too late of that.
HIDING = (2.4, 3.5)


def warning(name, app_id):
    return f"stage1 warn app={name} id={app_id}"


def hiding(name, app_id):
    return f"stage2 hide app={name} id={app_id}"


class GuardLog:
    """Takes the guard's lines one after the other, so that none comes unexpected. When each came is noted in the
    background, whatever the test is busy with."""

    def __init__(self, session, program):
        self._session = session
        self._program = program
        self._lines = []  # text and time of each
        self._taken = 0
        self._following = threading.Thread(target=self._follow, daemon=True)
        self._following.start()

    def expect_next(self, text, seconds=15):
        """Waits for the guard's next line, which is to be this one, and returns when it came."""
        lines = self._session.wait_for(self._new_lines, f"the guard's line {text}", seconds)
        written, came = lines[0]
        expect(written == text, f"the guard wrote {written!r} instead of {text!r}")
        self._taken += 1
        return came

    def expect_hiding(self, text, warned):
        passed = self.expect_next(text) - warned
        print(f"hidden {passed:.2f} s after the warning", flush=True)
        expect(HIDING[0] <= passed <= HIDING[1], f"the hiding came {passed:.2f} s after the warning, not in {HIDING}")

    def expect_silence(self, since, seconds):
        """Waits until so many seconds have passed since that moment: the guard is to write nothing."""
        self._session.wait_for(lambda: self._new_lines() or time.monotonic() - since >= seconds, "time to pass", seconds + 5)
        self.expect_no_more()

    def expect_no_more(self):
        if self._program.poll() is not None:
            self._following.join()
        expect(not self._new_lines(), f"the guard wrote {self._new_lines()}")

    def _new_lines(self):
        return self._lines[self._taken:]

    def _follow(self):
        has_ended = False
        while not has_ended:
            has_ended = self._program.poll() is not None  # Asked before, so that the last lines are read too.
            matches = [re.search(r" \[guard\] \w+: (.*)", line) for line in self._session.log_lines(self._program)]
            written = [match[1] for match in matches if match]
            self._lines += [(text, time.monotonic()) for text in written[len(self._lines):]]
            time.sleep(0.02)  # UNAVOIDABLE: the pause between two looks
