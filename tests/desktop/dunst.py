"""A real notification daemon in a session."""

import json

# Notifications stay until they are clicked.
SETTINGS = """
[global]
    idle_threshold = 0
[urgency_normal]
    timeout = 0
"""


def start(session):
    settings = session.folder / "dunstrc"
    settings.write_text(SETTINGS)
    process = session.start("dunst", "-config", str(settings))
    session.wait_for(lambda: session.tool("dunstctl", "is-paused") == "false", "dunst")
    return process


def count(session):
    """How many notifications are shown."""
    return int(session.tool("dunstctl", "count", "displayed") or 0)


def close_all(session):
    session.tool("dunstctl", "close-all")
    session.wait_for(lambda: count(session) == 0, "dunst to take the notifications away")


def closed(session):
    """Title and text of the notifications that are no longer shown, the latest first."""
    history = json.loads(session.tool("dunstctl", "history"))
    return [(each["summary"]["data"], each["body"]["data"]) for each in history["data"][0]]
