"""Lets the time of one program pass faster or slower than that of everyone else."""

import time


class FastClock:
    """The clock of a program that is started with `environment`. At first it runs as any clock."""

    LIBRARY = "/usr/lib/x86_64-linux-gnu/faketime/libfaketimeMT.so.1"

    def __init__(self, folder):
        self._file = folder / "clock"
        self._start = self._changed = time.monotonic()
        self._shown = 0.0  # what it showed at its last change, in seconds since its start
        self._rate = 1
        self.run(1)
        self.environment = {"LD_PRELOAD": self.LIBRARY, "FAKETIME_TIMESTAMP_FILE": str(self._file), "FAKETIME_NO_CACHE": "1"}

    def shown(self):
        """How many seconds have passed on it since its start."""
        return self._shown + (time.monotonic() - self._changed) * self._rate

    def run(self, rate):
        """From now on so many seconds pass in one."""
        now = time.monotonic()
        self._shown += (now - self._changed) * self._rate
        self._changed = now
        self._rate = rate
        # The file says how far the clock is off at its start, so that it goes on from what it shows.
        behind = self._shown - (now - self._start) * rate
        written = self._file.with_suffix(".new")
        written.write_text(f"{behind:+.3f} x{rate}\n")
        written.rename(self._file)
