"""A person opens the settings, changes a little of everything by keyboard and pointer, and sees the panel follow."""

import pathlib
import sys

from sample_documents import document, task
from session import Session, expect, program_to_test

PANEL, SETTINGS, CHOOSER = "Wren Fold", "Wrenfold Settings", "ブロックするアプリを選択"
TIME = (70, 14, 120, 46)  # x, y, width and height of the panel's timer
# Points in the window.
WORK_MINUTES = (50, 211)
API_KEY = (300, 112)
NAME = "A & B_c <b>x</b>"
ENTRY = f"[Desktop Entry]\nType=Application\nName={NAME}\nExec=sample\n"


def open_settings(session):
    """The window as Ctrl+comma opens it."""
    session.press("ctrl+comma")
    window = session.wait_window(SETTINGS)
    session.wait_active(window)
    session.wait_for(lambda: session.colour_count(session.picture("opening", window)) > 16, "the settings to be painted")
    return window


def wait_setting(session, name, value):
    session.wait_for(lambda: (session.document() or {}).get(name) == value, f"{name} to be {value} in the document")


def changes_the_work_length(session, settings, panel):
    before = session.pixels(panel, *TIME)
    session.click(settings, *WORK_MINUTES)
    session.press("Down", "Down", "Down")
    wait_setting(session, "workDurationMinutes", 22)
    session.wait_for(lambda: session.pixels(panel, *TIME) != before, "another time in the panel")
    session.press("ctrl+a")
    session.type_text("90")
    expect(session.document()["workDurationMinutes"] == 22, "half a number was taken")
    session.press("Return")
    wait_setting(session, "workDurationMinutes", 90)
    session.press("Up", "Next", "Prior", "Prior")  # Page keys step by ten.
    wait_setting(session, "workDurationMinutes", 90)
    session.tool("xdotool", "click", "--repeat", "3", "5")  # the wheel
    wait_setting(session, "workDurationMinutes", 87)


def types_a_key(session, settings):
    session.press("ctrl+Next")
    session.click(settings, *API_KEY)
    session.type_text("secret")
    wait_setting(session, "apiKeyOverride", "secret")


def blocks_an_application(session, settings):
    before = len(session.document()["blockedApps"])
    session.press("ctrl+Next", "ctrl+Next")
    session.press("Tab", "Tab", "Return")  # from the switch past LINE to アプリを追加
    chooser = session.wait_window(CHOOSER)
    session.wait_active(chooser)
    session.type_text("b_c")
    session.press("Down", "Return")
    session.wait_no_window(CHOOSER)
    session.wait_for(lambda: [app["name"] for app in session.document()["blockedApps"]][before:] == [NAME],
                     f"{NAME} to be blocked")
    session.wait_active(settings)
    session.picture("guard", settings)


def opens_it_again_in_its_place(session, settings):
    place = session.geometry(settings)
    session.press("Escape")
    session.wait_no_window(SETTINGS)
    session.wait_active(session.wait_window(PANEL))
    again = open_settings(session)
    expect(again == settings, "the settings came as another window")
    session.wait_for(lambda: session.geometry(again) == place, f"the settings at {place}")


def main():
    window_manager = sys.argv[2]
    with Session(f"settings_{window_manager}", window_manager, size="1600x900") as session:
        session.save_document(document(task("a")))
        applications = pathlib.Path(session.environment["XDG_DATA_HOME"], "applications")
        applications.mkdir()
        (applications / "sample.desktop").write_text(ENTRY)
        program = session.start(program_to_test())
        panel = session.wait_window(PANEL)
        session.wait_active(panel)
        settings = open_settings(session)
        size = session.geometry(settings)[2:]
        expect(size == (520, 430), f"the settings are {size} in size")
        changes_the_work_length(session, settings, panel)
        types_a_key(session, settings)
        blocks_an_application(session, settings)
        opens_it_again_in_its_place(session, settings)
        session.press("ctrl+q")
        session.wait_end(program)


if __name__ == "__main__":
    main()
