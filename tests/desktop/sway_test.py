"""The program in sway: by itself through Xwayland, natively where the user asks for it or there is no Xwayland; the panel
is seen, and bindings of the compositor reach it. Runs in the session that tests/support/with_sway.sh makes."""

import json
import os
import signal

import status_hosts
from session import expect, program_to_test
from sway_session import SwaySession, our_window, run_as_sways_user

XWAYLAND, NATIVE = "xwayland", "xdg_shell"
BAR_HEIGHT = 30
BAR = {"layer": "top", "position": "bottom", "height": BAR_HEIGHT, "modules-right": ["tray"], "tray": {"icon-size": 20}}
BAR_STYLE = "* { border: none; box-shadow: none; } window#waybar { background: #000000; }"

# How the program is started, and what its window is then.
STARTS = (
    ([], {}, XWAYLAND),
    ([], {"QT_QPA_PLATFORM": "wayland"}, NATIVE),
    (["-platform", "wayland"], {}, NATIVE),
    ([], {"DISPLAY": ""}, NATIVE),
)


def wait_panel(session):
    return session.wait_for(lambda: our_window(session), "the panel")


def wait_no_panel(session):
    session.wait_for(lambda: not our_window(session), "the panel to go")


def stop(session, program, status=0):
    program.terminate()
    session.wait_end(program, status)


def screen(session, name):
    """A picture of what is on the screen."""
    path = session.folder / f"{name}.ppm"
    session.tool("grim", "-t", "ppm", str(path))
    return path


def colours(session, picture, area):
    return int(session.tool("convert", str(picture), "-crop", area, "-format", "%k", "info:"))


def area_of(node):
    """Where a window is, as the picture tools write it."""
    rect = node["rect"]
    return f"{rect['width']}x{rect['height']}+{rect['x']}+{rect['y']}"


def the_window_system_is_the_one_that_fits(session, path):
    for arguments, environment, shell in STARTS:
        program = session.start(path, *arguments, **environment)
        node = wait_panel(session)
        expect(node["shell"] == shell, f"{arguments} {environment}: the panel is {node['shell']}")
        stop(session, program)
        wait_no_panel(session)


def the_report_tells_what_is_missing_natively(session, path):
    for environment, beginning in (({}, "on top: limited."), ({"DISPLAY": ""}, "on top: not available.")):
        report = session.start(path, "--desktop-report", **environment)
        session.wait_end(report)
        lines = session.log_lines(report)
        for wanted in (beginning, "hot keys: not available."):
            expect(any(line.startswith(wanted) for line in lines), f"{environment}: the report is {lines}")


def the_panel_is_seen(session, path):
    empty = screen(session, "empty")
    program = session.start(path)
    area = area_of(wait_panel(session))
    expect(colours(session, empty, area) <= 2, "the screen is not empty where the panel comes")
    session.wait_for(lambda: colours(session, screen(session, "panel"), area) > 16, "the panel to be painted")
    stop(session, program)
    wait_no_panel(session)


def pid_file(session):
    """Who was started first by a binding is written there."""
    return session.folder / "first.pid"


def bind(session, path, key, option):
    """Lets a key of the compositor start the program with an option. sway's own environment is another than the test's."""
    script = session.folder / f"{key}.sh"
    settings = "".join(f"export {name}='{value}'\n" for name, value in session.environment.items())
    script.write_text(f"#!/bin/sh\n{settings}[ -e '{pid_file(session)}' ] || echo $$ >'{pid_file(session)}'\n"
                      f"exec '{path}' {option}\n")
    script.chmod(0o755)
    session.tool("swaymsg", f"bindsym {key} exec {script}")


def press(session, key):
    # Before the pause the compositor does not know the tool's keyboard yet.
    session.tool("wtype", "-s", "300", "-k", key, "-s", "100")


def type_task(session, title):
    session.tool("wtype", "-s", "300", "-d", "30", title, "-k", "Return", "-s", "100")
    session.wait_for(lambda: title in session.titles(), f"the task {title}")


def bindings_reach_the_program(session, path):
    for key, option in (("F1", "--toggle-panel"), ("F2", "--hide-panel"), ("F3", "--new-todo")):
        bind(session, path, key, option)
    press(session, "F1")
    wait_panel(session)
    press(session, "F1")
    wait_no_panel(session)
    press(session, "F1")
    wait_panel(session)
    press(session, "F2")
    wait_no_panel(session)
    press(session, "F3")
    wait_panel(session)
    type_task(session, "one")
    os.kill(int(pid_file(session).read_text()), signal.SIGTERM)
    wait_no_panel(session)


def start_bar(session):
    config, style = session.folder / "bar.json", session.folder / "bar.css"
    config.write_text(json.dumps(BAR))
    style.write_text(BAR_STYLE)
    bar = session.start("waybar", "-c", str(config), "-s", str(style))
    status_hosts.wait_watcher(session)
    session.wait_for(lambda: set(bar_picture(session)) == {0}, "the black bar")
    return bar


def bar_picture(session):
    """The colours of the bar's right half, where nothing else is drawn, as bytes."""
    path = session.folder / "bar.rgb"
    session.tool("convert", str(screen(session, "bar")), "-gravity", "SouthEast",
                 "-crop", f"640x{BAR_HEIGHT}+0+0", "-depth", "8", f"rgb:{path}")
    return path.read_bytes()


def wait_item(session):
    session.wait_for(lambda: "StatusNotifierItem" in status_hosts.registered(session), "the item to be known to the bar")
    session.wait_for(lambda: set(bar_picture(session)) != {0}, "the item to be painted in the bar")


def the_item_is_in_the_bar(session, path):
    bar = start_bar(session)
    program = session.start(path)
    wait_panel(session)
    wait_item(session)
    report = session.start(path, "--desktop-report")
    session.wait_end(report)
    expect("status item: works" in session.log_lines(report), f"the report is {session.log_lines(report)}")
    # A bar that starts anew shows it again.
    stop(session, bar, -signal.SIGTERM)
    bar = session.start(*bar.args)
    wait_item(session)
    stop(session, program)
    session.wait_for(lambda: set(bar_picture(session)) == {0}, "the item to go")
    stop(session, bar, -signal.SIGTERM)


def in_sway(path):
    with SwaySession("sway", window_manager=None) as session:
        the_window_system_is_the_one_that_fits(session, path)
        the_report_tells_what_is_missing_natively(session, path)
        the_panel_is_seen(session, path)
        bindings_reach_the_program(session, path)
        the_item_is_in_the_bar(session, path)


if __name__ == "__main__":
    run_as_sways_user(program_to_test(), in_sway)
