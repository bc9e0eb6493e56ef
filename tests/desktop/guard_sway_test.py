"""The focus guard in sway against a native window: it is warned about and put into the scratchpad, and left alone when
it is left in time. Runs in the session that tests/support/with_sway.sh makes."""

import pathlib
import sys

from guard_log import LEFT, GuardLog, hiding, warning
from session import expect, program_to_test
from sway_session import OURS, SwaySession, run_as_sways_user, windows

BLOCKED = "org.example.Player"  # what the windows call themselves
HARMLESS = "org.example.Reader"
WARNING = warning("Player", BLOCKED)
HIDING = hiding("Player", BLOCKED)

# A session offers both. By itself the program takes Xwayland.
PLATFORMS = {"default": {}, "wayland": {"QT_QPA_PLATFORM": "wayland"}}

SCRATCHPAD = "__i3_scratch"


def install_player(session):
    folder = pathlib.Path(session.environment["XDG_DATA_HOME"], "applications")
    folder.mkdir()
    (folder / f"{BLOCKED}.desktop").write_text("[Desktop Entry]\nType=Application\nName=Player\nExec=player\n")


def open_window(session, name):
    session.start("foot", f"--app-id={name}", "cat", LC_ALL="C.UTF-8")


def places(session):
    """The workspace of each window, by what the window calls itself, and who has the keyboard."""
    found = windows(session)
    focused = [name for name, (node, _) in found.items() if node["focused"]]
    return {name: workspace for name, (_, workspace) in found.items()}, (focused or [None])[0]


def expect_hiding(session, log, warned):
    session.wait_for(lambda: places(session)[1] == BLOCKED, "the player to have the keyboard after the warning", 2)
    log.expect_hiding(HIDING, warned)
    session.wait_for(lambda: places(session)[0][BLOCKED] == SCRATCHPAD, "the player to be in the scratchpad")
    log.expect_next(LEFT)


def bring_back(session, log):
    """Returns when the window was warned about."""
    session.tool("swaymsg", f"[app_id={BLOCKED}] scratchpad show")
    return log.expect_next(WARNING)


def put_panel_away(session):
    session.tool("swaymsg", "[app_id=dev.tolvane.Wrenfold] kill; [class=wrenfold] kill")
    session.wait_for(lambda: not set(OURS) & set(places(session)[0]), "the panel to go")


def leave_in_time(session, log):
    warned = bring_back(session, log)
    open_window(session, HARMLESS)
    log.expect_next(LEFT)
    # Longer than it would take to hide the player.
    log.expect_silence(warned, 5)
    found, focused = places(session)
    expect(found[BLOCKED] != SCRATCHPAD, "the player was hidden though it was left")
    expect(focused == HARMLESS, f"after leaving the player {focused} has the keyboard")


def guard_in_sway(path, platform):
    with SwaySession(f"guard_sway_{platform}", window_manager=None) as session:
        install_player(session)
        session.save_document({"tasks": [], "isHardPinned": True, "isFocusGuardEnabled": True,
                               "blockedApps": [{"id": BLOCKED, "name": "Player", "bundleIdentifier": BLOCKED}]})
        program = session.start(path, "--verbose", **PLATFORMS[platform])
        log = GuardLog(session, program)
        log.expect_next("guard started")
        session.wait_for(lambda: places(session)[1] in OURS, "the panel")

        open_window(session, BLOCKED)
        expect_hiding(session, log, log.expect_next(WARNING))
        expect_hiding(session, log, bring_back(session, log))
        leave_in_time(session, log)
        put_panel_away(session)
        # sway gives the keyboard to every new window, also to the panel that comes to warn.
        session.tool("swaymsg", f"[app_id={BLOCKED}] focus")
        expect_hiding(session, log, log.expect_next(WARNING))
        program.terminate()
        session.wait_end(program)
        log.expect_no_more()


if __name__ == "__main__":
    run_as_sways_user(program_to_test(), lambda path: guard_in_sway(path, sys.argv[2]))
