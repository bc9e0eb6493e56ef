"""Ten days of a busy user in some minutes, by a fast clock: what the program holds in memory stays as it is, it warns of
nothing, and the document and its daily copies are what the days have left."""

import datetime
import pathlib
import re

import dunst
import process_memory
import status_hosts
from busy_user import PANEL, BusyUser
from chat_service import ChatService
from fast_clock import FastClock
from sample_documents import document
from session import Session, end, expect, program_to_test

DAYS = 10
SETTLED = 2  # the day from which on memory stays
LARGEST_CHANGE = 0.02
DAY = 24 * 60 * 60  # seconds
# While something is waited for the clock must not run so fast that the program gives up: on a notification after 25 seconds.
PHASE_RATE, GUARD_RATE, NIGHT_RATE = 40, 4, 40000
COPIES_KEPT = 14

READ, WRITTEN, MARKUP, RELEASE = "資料を読む", "資料を書く", "A & B_c <b>x</b>", "🎉 リリース祝い 👩‍👩‍👧‍👦"
SUBTASKS = ["下書き", "<i>推敲</i> & 送信"]
ANSWER = "まず一つだけ。\n<b>理由</b> & それだけ。"
TERMINAL = {"id": "debian-xterm", "name": "XTerm", "bundleIdentifier": "debian-xterm",
            "path": "/usr/share/applications/debian-xterm.desktop"}
SETTINGS = {"isFocusGuardEnabled": True, "blockedApps": [TERMINAL], "workDurationMinutes": 6, "breakDurationMinutes": 1,
            "isQuadrantBoardVisible": False, "isTodoListHidden": False, "isHardPinned": True}
LEFT_OF_A_DAY = [(WRITTEN, None, True), (MARKUP, None, True), (SUBTASKS[0], MARKUP, True), (SUBTASKS[1], MARKUP, True)]
HARMLESS_LINE = re.compile(r"dev\.tolvane\.Wrenfold \[[\w.]+\] (debug|info): ")


class MoodyService(ChatService):
    """While `is_garbled` it answers what nobody understands."""

    is_garbled = False

    def content(self, messages):
        return "¯\\_(ツ)_/¯" if self.is_garbled else super().content(messages)


class Desktop:
    """What surrounds the program: a host of status items, a notification daemon, and a window of a blocked application."""

    def __init__(self, session):
        self._session = session
        self._daemon = dunst.start(session)
        self.host = status_hosts.HOSTS["xfce4-panel"](session)
        self.host.start()
        session.start("xterm")
        find = ("xdotool", "search", "--onlyvisible", "--class", "XTerm")
        self.terminal = session.wait_for(lambda: session.tool(*find), "the terminal")

    def restart_notification_daemon(self):
        end(self._daemon)
        self._daemon = dunst.start(self._session)


def spend_morning(user):
    user.add(READ)
    user.add(MARKUP)
    user.drop_what_is_no_candidate()
    user.approve(RELEASE)
    user.dismiss("不要になったメモ")
    user.rename(READ, WRITTEN)
    user.sort()
    user.undo_and_redo(steps=5, times=2)
    user.make_now(MARKUP)
    user.chat()
    user.unfold(MARKUP)
    user.expect_counts(0, 5)


def spend_afternoon(user, desktop):
    user.work_and_rest(PHASE_RATE)
    user.slack_off(desktop.terminal, GUARD_RATE)
    user.visit_settings()
    desktop.host.kill()
    user.move_and_resize_panel()
    user.toggle_panel()
    desktop.host.start()
    user.wait_registered()
    user.be_a_ghost()
    desktop.restart_notification_daemon()
    user.complete(WRITTEN)
    user.defer(RELEASE, "importantNotUrgent")
    user.complete(SUBTASKS[0])
    user.expect_counts(2, 2)


def spend_evening(user):
    user.delete_last(RELEASE)
    user.complete(SUBTASKS[1])
    user.complete(MARKUP)
    user.sweep_inbox()
    user.expect_counts(4, 0)


def spend_night(session, clock, day):
    clock.run(NIGHT_RATE)
    session.wait_for(lambda: clock.shown() >= day * DAY, "the next day", 60)
    clock.run(1)


def live(session, program, desktop, user, clock):
    """The resident memory at noon after each day. Noon, so that no work is done over midnight."""
    memory = []
    for day in range(1, DAYS + 1):
        if day > 1:
            user.clear_completed()
        spend_morning(user)
        spend_afternoon(user, desktop)
        spend_evening(user)
        expect_left_of_a_day(session)
        spend_night(session, clock, day)
        user.expect_counts(0, 0)
        process_memory.wait_idle(session, program)
        memory.append(process_memory.resident(program))
        print(f"day {day}: {memory[-1]} KiB resident, of these {process_memory.parts(program)}", flush=True)
    return memory


def expect_left_of_a_day(session):
    left = session.document()
    titles = {task["id"]: task["title"] for task in left["tasks"]}
    tasks = [(task["title"], titles.get(task.get("parentID")), task["isDone"]) for task in left["tasks"]]
    expect(sorted(tasks, key=str) == sorted(LEFT_OF_A_DAY, key=str), f"the day has left {tasks}")
    expect(not any(task["isDeferred"] for task in left["tasks"]), f"the day has left {left['tasks']}")
    expect(left.get("activeTaskID") is None, f"{left.get('activeTaskID')} is NOW, though all are done")
    for name, value in SETTINGS.items():
        expect(left[name] == value, f"{name} has become {left[name]}")


def expect_steady(memory):
    settled, last = memory[SETTLED - 1], memory[-1]
    change = (last - settled) / settled
    print(f"from day {SETTLED} to day {DAYS} memory changed by {change:+.2%}", flush=True)
    expect(abs(change) <= LARGEST_CHANGE, f"resident memory went from {settled} to {last} KiB: {memory}")


def copies_folder(session):
    return pathlib.Path(session.environment["XDG_CONFIG_HOME"], "Wrenfold", "backups")


def save_old_copies(session, count):
    """As an earlier life of the program would have left them. Returns their names."""
    folder = copies_folder(session)
    folder.mkdir(mode=0o700)
    names = [f"Wrenfold.State.v1.2001-01-{day:02}" for day in range(1, count + 1)]
    for name in names:
        (folder / name).write_text("{}")
    return names


def main():
    with MoodyService(ANSWER, SUBTASKS) as service, Session("soak", size="1280x900") as session:
        desktop = Desktop(session)
        session.save_document(document(**SETTINGS))
        old_copies = save_old_copies(session, 12)
        now = datetime.datetime.now(datetime.timezone.utc)
        zone = {"TZ": f"Etc/GMT{now.hour - 12:+d}"}
        clock = FastClock(session.folder)
        program = session.start(program_to_test(), "--verbose", **zone, **clock.environment, **service.environment())
        session.wait_active(session.wait_window(PANEL))
        memory = live(session, program, desktop, BusyUser(session, program, clock, service), clock)

        expect(program.poll() is None, "the program has ended by itself")
        before = session.document()
        program.terminate()
        session.wait_end(program)
        expect(session.document() == before, "quitting has changed the document")
        wrong = [line for line in session.log_lines(program) if not HARMLESS_LINE.match(line)]
        expect(not wrong, f"the program has written {wrong}")
        today = (now + datetime.timedelta(hours=12 - now.hour)).date()
        new_copies = [f"Wrenfold.State.v1.{today + datetime.timedelta(day)}" for day in range(DAYS)]
        copies = sorted(path.name for path in copies_folder(session).iterdir())
        expect(copies == (old_copies + new_copies)[-COPIES_KEPT:], f"the daily copies are {copies}")
        expect_steady(memory)


if __name__ == "__main__":
    main()
