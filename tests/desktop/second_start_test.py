"""However often it is started, one Wren Fold runs: a later start brings the running one's panel back and ends."""

import json

from session import NO_BUS, Session, expect, program_to_test

CLOSE_BUTTON = (319, 77)  # a point in the panel's close button
COMPOSER = (172, 187)  # a point in its input field at first start


def running(programs):
    return [program for program in programs if program.poll() is None]


def second_start_shows_the_hidden_panel(session, path):
    first = session.start(path)
    panel = session.wait_window("Wren Fold")
    session.wait_active(panel)
    session.click(panel, *CLOSE_BUTTON)
    session.wait_no_window("Wren Fold")

    session.wait_end(session.start(path))
    session.wait_window("Wren Fold")
    expect(first.poll() is None, "the first program has ended")

    # With the panel in sight another start changes nothing; nor does one that sees no bus.
    session.wait_end(session.start(path))
    session.wait_window("Wren Fold")
    session.wait_end(session.start(path, DBUS_SESSION_BUS_ADDRESS=NO_BUS))
    session.wait_window("Wren Fold")
    expect(first.poll() is None, "the first program has ended")
    first.terminate()
    session.wait_end(first)


def two_starts_at_once_leave_one_program(session, path):
    programs = [session.start(path), session.start(path)]
    session.wait_for(lambda: len(running(programs)) == 1, "one of two starts to end")
    ended = next(program for program in programs if program.poll() is not None)
    expect(ended.returncode == 0, f"the start that came too late ended with {ended.returncode}")
    panel = session.wait_window("Wren Fold")
    session.wait_active(panel)

    # The one that is left is the document's one writer, and it writes.
    session.click(panel, *COMPOSER)
    session.type_text("one")
    session.press("Return")
    session.wait_for(lambda: "one" in session.titles(), "the saved document with the task")
    expect(session.titles().count("one") == 1, f"saved twice: {json.dumps(session.titles())}")
    survivor = running(programs)
    expect(len(survivor) == 1, f"{len(survivor)} programs run")
    survivor[0].terminate()
    session.wait_end(survivor[0])


def main():
    path = program_to_test()
    for name, has_bus in (("second_start", True), ("second_start_without_bus", False)):
        with Session(name, bus=has_bus) as session:
            second_start_shows_the_hidden_panel(session, path)
        for _ in range(5):
            with Session(name, bus=has_bus) as session:
                two_starts_at_once_leave_one_program(session, path)


if __name__ == "__main__":
    main()
