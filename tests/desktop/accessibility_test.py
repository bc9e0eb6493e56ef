"""The panel as a screen reader gets it: every control has a role, a name and an action that works, every title is one
element with all of its plain text, and the focus is told wherever it goes."""

import sample_documents as samples
from accessibility_tree import PROGRAM_ENVIRONMENT, AccessibilityTree
from session import Session, expect, program_to_test

MARKUP = "A & B_c <b>x</b> &amp;"
LINES = "first\nsecond\u2028third\tend"
DIRECTIONS = "\u202eexe.txt \u2066open \u200f(now)"
LONG = samples.JAPANESE
WAITING = "見積もりを比べる"

# Press is what a button offers, Toggle a check box.
HEADER = [("button", name) for name in (
    "ポモドーロを開始（25分）", "ポモドーロをリセット", "NOWだけ表示", "最前面固定: オン", "AIで優先順に並べ替え（GOALが基準）",
    "パネルを隠す")]
NOW_CARD = [("button", name) for name in ("今日いちばん大切なことに集中する", "サブタスクを追加", "削除（元に戻せます）")]
ACTION_OF_ROLE = {"button": "Press", "check box": "Toggle"}


def hostile_document():
    parent = samples.task(LONG, isExpanded=True)
    return samples.document(parent, samples.task("小さな一歩", parentID=parent["id"]), samples.task(MARKUP),
                            samples.task(LINES), samples.task(DIRECTIONS),
                            samples.deferred(WAITING, "urgentImportant"), active=LONG, isQuadrantBoardVisible=True)


def expect_controls(tree):
    """What is in sight is what the document says, with nothing that works but has no name."""
    elements = tree.in_sight()
    for expected in HEADER + NOW_CARD + [("button", "あとでやるの4象限を閉じる"), ("text", "TODOを追加"),
                                         ("label", "今日完了したタスク数 0"), ("label", "25:00"),
                                         ("label", "25分 — 再生で開始"), ("button", "4象限を閉じる")]:
        found = [element for element in elements if (element.role, element.name) == expected]
        expect(found, f"there is no {expected[0]} named {expected[1]!r} among {elements}")
    for element in elements:
        if action := ACTION_OF_ROLE.get(element.role):
            expect(element.name, f"a {element.role} has no name among {elements}")
            expect(action in element.actions or "enabled" not in element.states, f"{element} does not offer {action}")
        if "focusable" in element.states:
            expect(element.name, f"a {element.role} takes the focus and has no name, {element.states}, among {elements}")


def expect_one_item(tree, text):
    """One item of a list has the whole text as its name, and no other element holds a part of it."""
    elements = tree.in_sight()
    items = [element for element in elements if element.role == "list item" and element.name == text]
    expect(len(items) == 1, f"{len(items)} items are named {text!r} among {elements}")
    part = text[:4]
    parts = [element for element in elements if part in element.name and element.name != text]
    expect(not parts, f"{text!r} comes in pieces: {parts}")


def expect_focus(session, tree, key, role, name):
    """A key brings the focus to an element, which is told when it happens and seen afterwards."""
    tree.take_focus_events()
    announced = []
    session.press(key)

    def is_told():
        announced.extend(tree.take_focus_events())
        return (role, name) in announced
    session.wait_for(is_told, f"the focus to be announced at {role} {name!r} after {key}")
    session.wait_for(lambda: tree.focused() == [(role, name)], f"the focus to be at {role} {name!r} after {key}")


def expect_focus_to_follow(session, tree):
    expect_focus(session, tree, "Tab", "text", "TODOを追加")
    expect_focus(session, tree, "Tab", "list item", "INBOX 1")
    expect_focus(session, tree, "Down", "list item", "候補の文")
    expect_focus(session, tree, "Up", "list item", "INBOX 1")
    expect_focus(session, tree, "Down", "list item", "候補の文")
    expect_focus(session, tree, "Down", "list item", LONG)
    expect_focus(session, tree, "Down", "list item", "小さな一歩")
    expect_focus(session, tree, "Down", "list item", MARKUP)


def expect_row_actions(tree):
    """The row that has the keyboard shows what can be done with it."""
    for name in ("サブタスクを手動追加", "AIでサブタスクに分割", "削除（元に戻せます）", "NOWにピン留め"):
        found = tree.find("button", name, within=MARKUP)
        expect(len(found) == 1 and "Press" in found[0].actions, f"the row {MARKUP!r} offers {found} for {name!r}")


def expect_actions_to_work(session, tree):
    """Pressed by a screen reader, controls do what they do when they are clicked."""
    def task(title):
        return next(each for each in session.document()["tasks"] if each["title"] == title)
    tree.act("check box", "完了", "Toggle", within="小さな一歩")
    session.wait_for(lambda: task("小さな一歩")["isDone"], "the toggled task to be done")
    tree.act("button", "NOWにピン留め", "Press", within=MARKUP)
    session.wait_for(lambda: session.document()["activeTaskID"] == task(MARKUP)["id"], "the task with the pressed pin to be NOW")
    tree.act("button", DIRECTIONS, "Press")
    session.wait_for(lambda: session.document()["activeTaskID"] == task(DIRECTIONS)["id"], "the pressed title to be NOW")
    tree.act("button", "最前面固定: オン", "Press")
    session.wait_for(lambda: not session.document()["isHardPinned"], "the panel to be pinned less")
    tree.act("button", "あとでやるの4象限を閉じる", "Press")
    session.wait_for(lambda: not session.document()["isQuadrantBoardVisible"], "the board to close")
    tree.act("button", "追加してNOWにピン留め", "Press")
    session.wait_for(lambda: "候補の文" in session.titles(), "the candidate to be a task")


def main():
    path = program_to_test()
    with Session("accessibility") as session:
        tree = AccessibilityTree(session)
        session.save_document(hostile_document())
        session.save_candidates([samples.candidate("候補の文", "gmail", "https://mail.example/1")])
        program = session.start(path, **PROGRAM_ENVIRONMENT)
        session.wait_active(session.wait_window("Wren Fold"))
        tree.wait_program("wrenfold")
        expect_controls(tree)
        for text in (LONG, "小さな一歩", MARKUP, LINES, DIRECTIONS, WAITING, "候補の文"):
            expect_one_item(tree, text)
        expect_focus_to_follow(session, tree)
        expect_row_actions(tree)
        expect_actions_to_work(session, tree)
        program.terminate()
        session.wait_end(program)


if __name__ == "__main__":
    main()
