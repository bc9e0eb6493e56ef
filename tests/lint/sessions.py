"""Which system and which kind of session this is, is asked in src/platform and nowhere else."""

import re

from lint import code_lines, cpp_files, main

QUESTION = re.compile(
    r"\b(Q_OS_\w+|__linux__|__unix__|__APPLE__|_WIN32|XDG_SESSION_TYPE|XDG_CURRENT_DESKTOP|WAYLAND_DISPLAY"
    r"|QT_QPA_PLATFORM|platformName|QNativeInterface)\b|\"(DISPLAY)\"")


def findings(root):
    for path in cpp_files(root, "src"):
        if path.parts[1] == "platform":
            continue
        for number, line in code_lines(root, path):
            match = QUESTION.search(line)
            if match:
                yield (f"{path}:{number}: asks for the system or the session ({match[1] or match[2]}). Give the ability an "
                       "interface in src/platform, let the platform chosen at start answer, and ask that.")


if __name__ == "__main__":
    main(findings)
