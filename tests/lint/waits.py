"""Nothing waits for time to pass in the hope that something has happened by then, and the program never runs an event
loop inside a function."""

import re

from lint import cpp_files, files, lines, main

EXCEPTION = re.compile(r"(//|#) UNAVOIDABLE: \S")
WAIT = re.compile(r"\b(qWait|qSleep|[mun]?sleep|nanosleep|sleep_for|sleep_until)\s*\(")
SHELL_WAIT = re.compile(r"(^|[;&|(]|\b(do|then|else)\b)\s*sleep\s")
NESTED_LOOP = re.compile(r"\bprocessEvents\s*\(")


def findings(root):
    scripts = files(root, ["tests", "script"], [".sh"])
    programs = cpp_files(root, "src", "tests", "bench") + files(root, ["tests", "script"], [".py"])
    for paths, pattern in ((programs, WAIT), (scripts, SHELL_WAIT)):
        for path in paths:
            if path.parts[:2] == ("tests", "lint"):  # the lints' own samples
                continue
            for number, line in lines(root, path):
                if pattern.search(line) and not EXCEPTION.search(line):
                    yield (f"{path}:{number}: waits without a condition. Wait for what has to happen (QTRY_COMPARE, "
                           "QTRY_VERIFY, QSignalSpy::wait, wait_for), or move a test's own clock; if there is nothing to "
                           "ask for, say why on the line: UNAVOIDABLE: reason.")
    for path in cpp_files(root, "src"):
        for number, line in lines(root, path):
            if NESTED_LOOP.search(line):
                yield (f"{path}:{number}: runs events inside a function, whose object may be gone afterwards. Return, "
                       "and go on from a signal or a posted call.")


if __name__ == "__main__":
    main(findings)
