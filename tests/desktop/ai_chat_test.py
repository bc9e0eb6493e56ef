"""A person talks with the AI: asks, is answered, has the list put in order, and takes that back in the panel."""

from chat_service import ChatService
from chat_window import CHAT, ChatWindow
from sample_documents import document, task
from session import Session, expect, program_to_test

PANEL = "Wren Fold"
BRAIN = (239, 77)  # the panel's button that opens the chat
TITLES = ["一つ目の仕事", "二つ目の仕事", "三つ目の仕事"]
ANSWER = "まず「一つ目の仕事」を5分だけ進めましょう。\n<b>理由</b>: 終わりが見えているからです。 & それだけ。"


def asks_and_is_answered(session, service, chat):
    before = chat.wait_settled("1_opened")
    service.hold.clear()
    chat.say("what next")
    session.wait_for(lambda: service.requests, "the question at the service")
    expect(service.requests[0].startswith("User request:\nwhat next\n"), f"the service was asked {service.requests}")
    # Closed meanwhile, it has the answer on return.
    session.press("Escape")
    session.wait_no_window(CHAT)
    service.hold.set()
    panel = session.wait_window(PANEL)
    session.click(panel, *BRAIN)
    session.wait_active(session.wait_window(CHAT))
    session.wait_for(lambda: session.different_pixels(before, chat.wait_settled("2_answered")) > 3000, "the answer")


def has_the_list_sorted(session, chat):
    chat.say("sort")
    chat.wait_settled("3_proposed")
    expect(session.titles() == TITLES, f"the list was changed without a confirmation: {session.titles()}")
    chat.confirm()
    session.wait_for(lambda: session.titles() == TITLES[::-1], "the list in the proposed order")
    chat.wait_settled("4_confirmed")


def takes_it_back_in_the_panel(session):
    panel = session.wait_window(PANEL)
    session.click(panel, 172, 480)  # where nothing is
    session.wait_active(panel)
    session.press("ctrl+z")
    session.wait_for(lambda: session.titles() == TITLES, "the list in its old order")


def main():
    with ChatService(ANSWER) as service, Session("ai_chat") as session:
        session.save_document(document(*(task(title) for title in TITLES), active=TITLES[0]))
        program = session.start(program_to_test(), **service.environment())
        panel = session.wait_window(PANEL)
        session.wait_active(panel)
        session.click(panel, *BRAIN)
        chat = ChatWindow(session)
        asks_and_is_answered(session, service, chat)
        has_the_list_sorted(session, chat)
        session.picture("5_screen")
        takes_it_back_in_the_panel(session)
        session.press("ctrl+q")
        session.wait_end(program)


if __name__ == "__main__":
    main()
