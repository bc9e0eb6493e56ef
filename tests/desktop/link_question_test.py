"""A link of an unknown kind is asked about, and who says no goes on in the panel without touching the pointer."""

import sys

from sample_documents import candidate, document, task
from session import Session, program_to_test

PANEL, QUESTION = "Wren Fold", "元のメッセージを開く"
CANDIDATE = candidate("A & B_c <b>x</b>", "Sample", "sample-scheme://message/1")


def asks_for_the_link(session):
    session.press("Menu")
    session.press("Down", "Down", "Down", "Return")  # past what takes it and what takes it for NOW
    question = session.wait_window(QUESTION)
    session.wait_active(question)


def main():
    window_manager = sys.argv[2]
    with Session(f"link_question_{window_manager}", window_manager) as session:
        session.save_document(document(task("t")))
        session.save_candidates([CANDIDATE])
        program = session.start(program_to_test())
        panel = session.wait_window(PANEL)
        session.wait_active(panel)
        session.press("Tab", "Tab", "Down")  # to the list, whose heading has the focus first
        for answer in (["Escape"], ["Return"]):
            asks_for_the_link(session)
            session.press(*answer)
            session.wait_no_window(QUESTION)
            session.wait_active(panel)
        session.press("Return")
        session.wait_for(lambda: session.titles() == ["t", CANDIDATE["text"]], "the candidate to be taken")
        session.press("ctrl+q")
        session.wait_end(program)


if __name__ == "__main__":
    main()
