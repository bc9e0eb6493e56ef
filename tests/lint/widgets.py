"""Only what draws knows Qt Widgets; the state and what the program asks of the desktop build without them."""

import pathlib
import subprocess

from lint import INCLUDE, cpp_files, lines, main

DRAWING_FOLDERS = ("look", "views", "shell")
# Files elsewhere, each with its reason, by their names without the suffix.
EXCEPTIONS = {
    "ai/ai_chat_view": "the chat's view belongs to the chat",
    "ai/chat_composer": "part of the chat's view",
    "ai/chat_transcript": "part of the chat's view",
    "ai/proposal_card": "part of the chat's view",
    "app/wrenfold_main": "makes the application object",
}


def widget_headers():
    """The header names of Qt Widgets as it is installed here."""
    folder = subprocess.run(["qmake6", "-query", "QT_INSTALL_HEADERS"], check=True, capture_output=True, text=True)
    headers = pathlib.Path(folder.stdout.strip())
    names = {path.name for path in (headers / "QtWidgets").iterdir()}
    return names - {path.name for path in (headers / "QtGui").iterdir()}


def findings(root):
    names = widget_headers()
    for path in cpp_files(root / "src", "."):
        if path.parts[0] in DRAWING_FOLDERS or str(path.with_suffix("")) in EXCEPTIONS:
            continue
        for number, line in lines(root / "src", path):
            match = INCLUDE.match(line)
            header = match[2] if match else None
            if header and (header.startswith("QtWidgets") or header in names):
                yield (f"src/{path}:{number}: includes <{header}> of Qt Widgets. Move what draws into "
                       f"{', '.join(DRAWING_FOLDERS)}, and hand this file a value or a function.")


if __name__ == "__main__":
    main(findings)
