"""A person's first minutes: type a task, take it back and bring it back, quit, and find everything again."""

import time

from sample_documents import SECONDS_TO_2001, deferred, document, done, task
from session import Session, expect, program_to_test

TITLE = "来週の資料を読む"
WRITTEN_BY_A_START = ("[app] info: Wrenfold starting ", "[app] info: launch ", "[ui] info: status bar ", "[app] info: ready ")
COMPOSER = (172, 187)  # a point in the panel's input field at first start


def wait_for_title(session, is_there):
    what = f"the saved document {'with' if is_there else 'without'} {TITLE}"
    session.wait_for(lambda: (TITLE in session.titles()) == is_there, what)


def painted_picture(session, name, panel):
    """A picture of the panel, which shows more than an empty surface."""
    picture = session.picture(name, panel)
    expect(session.colour_count(picture) > 16, f"the panel is blank, see {picture}")
    return picture


def wait_for_changed_picture(session, name, panel, before):
    def look():
        picture = session.picture(name, panel)
        return picture if session.different_pixels(before, picture) > 200 else None
    return session.wait_for(look, f"a change of the panel since {before}")


def open_panel(session, program):
    panel = session.wait_window("Wren Fold")
    session.wait_active(panel)
    width_and_height = session.geometry(panel)[2:]
    expect(width_and_height == (344, 500), f"the panel is {width_and_height} in size")
    session.wait_for(lambda: session.colour_count(session.picture("opening", panel)) > 16, "the panel to be painted")
    expect(program.poll() is None, "the program has ended")
    return panel


def expect_start_log(session, program, arguments, verbose, ready):
    """The lines that every start writes, in this order, whatever stands between them."""
    expected = [f"[app] info: Wrenfold starting args={arguments}", f"[app] info: launch accessory mode verbose={verbose}",
                "[ui] info: status bar ready", f"[app] info: ready {ready}"]

    def lines_of_a_start():
        lines = [line.partition(" ")[2] for line in session.log_lines(program)]
        return [line for line in lines if line.startswith(WRITTEN_BY_A_START)]
    session.wait_for(lambda: len(lines_of_a_start()) >= len(expected), f"a log with {expected}")
    lines = lines_of_a_start()
    expect(lines == expected, f"the start has written {lines}, not {expected}")


def main():
    path = program_to_test()
    with Session("first_use") as session:
        program = session.start(path)
        panel = open_panel(session, program)
        expect_start_log(session, program, "", "false", "open=2 todayDone=0")
        at_start = painted_picture(session, "1_at_start", panel)

        # No field has the caret yet: these letters go nowhere. The keys below come after them, so what is saved then
        # shows where they went.
        session.type_text("abc")

        session.click(panel, *COMPOSER)
        session.type_text(TITLE)
        session.press("Return")
        titles = session.wait_for(session.titles, "a saved document")
        expect(titles[2:] == [TITLE], f"the first two tasks and {TITLE} are to be saved, not {titles}")
        added = session.document()
        expect("abc" not in str(added), f"letters typed before the click were taken: {added}")
        wait_for_changed_picture(session, "2_added", panel, at_start)

        session.press("ctrl+z")
        wait_for_title(session, False)
        expect(session.titles() == titles[:-1], f"undoing has left {session.titles()}")
        session.press("ctrl+y")
        wait_for_title(session, True)
        expect(session.document() == added, "redoing has brought back another document")

        place = session.geometry(panel)
        session.press("ctrl+q")
        session.wait_end(program)
        expect(session.document() == added, "quitting has changed the document")

        program = session.start(path, "--verbose", "one", "-style", "fusion")
        panel = open_panel(session, program)
        expect_start_log(session, program, "--verbose one -style fusion", "true", "open=3 todayDone=0")
        expect(session.geometry(panel) == place, f"the panel is at {session.geometry(panel)}, it was at {place}")
        again = painted_picture(session, "3_started_again", panel)
        expect(session.different_pixels(at_start, again) > 200, "the second start looks like the first, without the new task")
        expect(session.document() == added, "starting has changed the document")
        program.terminate()
        session.wait_end(program)

        now = time.time() - SECONDS_TO_2001
        session.save_document(document(task("open"), deferred("later", "urgentImportant"),
                                       done("today") | {"completedAt": now}, done("before") | {"completedAt": now - 2 * 86400}))
        program = session.start(path)
        expect_start_log(session, program, "", "false", "open=1 todayDone=1")
        program.terminate()
        session.wait_end(program)


if __name__ == "__main__":
    main()
