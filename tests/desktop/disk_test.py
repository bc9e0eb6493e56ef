"""A folder for the settings that cannot be made: the program runs and says so once; the first change after it can be made is
saved, with everything before it."""

import pathlib

from session import Session, expect, program_to_test

COMPOSER = (172, 187)  # a point in the panel's input field at first start


def add(session, title):
    session.type_text(title)
    session.press("Return")


def main():
    with Session("disk") as session:
        home = pathlib.Path(session.environment["XDG_CONFIG_HOME"])
        home.rmdir()
        home.write_text("a file where a folder belongs")
        program = session.start(program_to_test())
        panel = session.wait_window("Wren Fold")
        session.wait_active(panel)
        session.click(panel, *COMPOSER)
        add(session, "one")
        add(session, "two")

        def said(text):
            return [line for line in session.log_lines(program) if text in line]
        session.wait_for(lambda: said("saving failed"), "the line that says that saving fails")
        home.unlink()
        add(session, "three")
        session.wait_for(lambda: session.titles()[2:] == ["one", "two", "three"], "all tasks on disk")
        session.wait_for(lambda: said("saving works again"), "the line that says that saving works again")
        expect(len(said("saving failed")) == 1, f"the log repeats itself: {said('saving')}")
        program.terminate()
        session.wait_end(program)


if __name__ == "__main__":
    main()
