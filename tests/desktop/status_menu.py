"""The status item's menu as its hosts have it: read and pressed over the bus."""

import json

MENU = ("/StatusNotifierItem/Menu", "com.canonical.dbusmenu")


class StatusMenu:
    def __init__(self, session, program):
        self._session = session
        self._name = f"org.kde.StatusNotifierItem-{program.pid}-1"

    def titles(self):
        """The rows' titles with their numbers."""
        answer = json.loads(self._call("--json=short", "GetLayout", "iias", "0", "1", "0"))
        rows = [row["data"] for row in answer["data"][1][2]]
        return {properties["label"]["data"]: number for number, properties, _ in rows if "label" in properties}

    def press(self, title):
        self._call("Event", "isvu", str(self.titles()[title]), "clicked", "s", "", "0")

    def _call(self, *arguments):
        options = [argument for argument in arguments if argument.startswith("--")]
        return self._session.tool("busctl", "--user", *options, "call", self._name, *MENU, *arguments[len(options):])
