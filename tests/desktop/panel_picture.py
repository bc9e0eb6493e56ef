"""Takes a picture of the panel in a desktop session of its own.

    python3 tests/desktop/panel_picture.py PROGRAM PICTURE [ARGUMENT...]
"""

import pathlib
import shutil
import signal
import sys

from session import Failure, Session, expect


def main():
    program, picture, *arguments = sys.argv[1:]
    print("No display here: running on a virtual one, with empty settings of its own.", flush=True)
    with Session("panel_picture") as session:
        process = session.start(str(pathlib.Path(program).resolve()), *arguments)
        session.wait_for(lambda: session.windows("Wren Fold") or process.poll() is not None, "the panel")
        expect(process.poll() is None, f"the program ended with {process.returncode} before its panel was shown")
        panel = session.wait_window("Wren Fold")
        session.wait_for(lambda: session.colour_count(session.picture("look", panel)) > 16, "the panel to be painted")
        shutil.copyfile(session.picture("look", panel), picture)
        process.send_signal(signal.SIGTERM)
        session.wait_end(process)
    print(f"The panel as it looks: {picture}")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"failed: {failure}")
