"""The memory of a process, and whether it does anything."""

import pathlib
import re
import time


def resident(process):
    """Its resident memory, in KiB."""
    return _kib(process, "status", "VmRSS")


def parts(process):
    """What the resident memory consists of, in KiB, to tell why it grew."""
    return {name: _kib(process, "smaps_rollup", name) for name in ("Pss", "Private_Dirty", "Anonymous")}


def wait_idle(session, process):
    """Waits until it has used no processor for half a second."""
    since, used = time.monotonic(), -1.0

    def look():
        nonlocal since, used
        if (now := _processor_ticks(process)) != used:
            since, used = time.monotonic(), now
        return time.monotonic() - since > 0.5
    session.wait_for(look, f"{process.args[0]} to be idle")


def _kib(process, file, name):
    text = pathlib.Path(f"/proc/{process.pid}/{file}").read_text()
    return int(re.search(rf"^{name}:\s+(\d+) kB$", text, re.MULTILINE)[1])


def _processor_ticks(process):
    # The name in brackets may hold spaces.
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rpartition(")")[2].split()
    return int(fields[11]) + int(fields[12])
