"""The sway session that tests/support/with_sway.sh makes, as a session for a test."""

import json
import os
import shutil
import tempfile

from session import Session

OURS = ("dev.tolvane.Wrenfold", "wrenfold")  # what the panel calls itself on Wayland and on Xwayland

SWAYS_USER = 65534  # where root runs the tests


class SwaySession(Session):
    """The running sway with folders of the test's own."""

    def _start_display(self):
        inherited = ("DISPLAY", "SWAYSOCK", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR")
        self.environment |= {name: os.environ[name] for name in inherited}


def run_as_sways_user(program, test):
    """Calls the test with a copy of the program, as sway's user may not be let into the folders where it was built.
    Xwayland lets no other user in."""
    with tempfile.TemporaryDirectory() as folder:
        path = shutil.copy(program, folder)
        if os.geteuid() == 0:
            os.chown(folder, SWAYS_USER, SWAYS_USER)
            os.setgroups([])
            os.setgid(SWAYS_USER)
            os.setuid(SWAYS_USER)
        test(path)


def windows(session):
    """Each window's node in sway's tree with the workspace that it is on, by what the window calls itself."""
    found = {}

    def collect(node, workspace):
        if node["type"] == "workspace":
            workspace = node["name"]
        name = node.get("app_id") or node.get("window_properties", {}).get("class")
        if name:
            found[name] = (node, workspace)
        for child in node["nodes"] + node["floating_nodes"]:
            collect(child, workspace)

    collect(json.loads(session.tool("swaymsg", "-r", "-t", "get_tree")), None)
    return found


def our_window(session):
    """The panel's node; None while it is not shown."""
    return next((node for name, (node, _) in windows(session).items() if name in OURS), None)
