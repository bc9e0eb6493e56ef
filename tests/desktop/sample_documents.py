"""Documents as an earlier run of the program would have left them, for pictures of the panel and for looks at it."""

import time
import uuid

SECONDS_TO_2001 = 978307200
NAMESPACE = uuid.UUID("6f1de7c0-0000-4000-8000-000000000000")

JAPANESE = "来年度の予算案について経理部と相談し、修正点を三つにまとめてから部長に送って承認をもらう"
WORD = "Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunte"  # 60 letters without a place to break
EMOJI = "🎉 リリース祝い 👩‍👩‍👧‍👦 みんなで 🍣🍺 お店を予約する 🇯🇵"
RIGHT_TO_LEFT = "לקרוא את ההצעה החדשה ולשלוח תשובה עד יום חמישי בבוקר, אם אפשר"
MIXED = "Call Ahmed (محمد أحمد) about the invoice 2025-118"


def task(title, **fields):
    """One task of a document. Its identifier follows from the title."""
    now = time.time() - SECONDS_TO_2001
    return {"id": str(uuid.uuid5(NAMESPACE, title)).upper(), "title": title, "isDone": False, "createdAt": now - 3600} | fields


def done(title, **fields):
    return task(title, isDone=True, completedAt=time.time() - SECONDS_TO_2001 - 60, **fields)


def deferred(title, quadrant, **fields):
    return task(title, isDeferred=True, quadrant=quadrant, **fields)


def document(*tasks, active=None, **settings):
    """A document with these tasks; `active` is the title of the one that is NOW."""
    chosen = {"activeTaskID": next(each["id"] for each in tasks if each["title"] == active)} if active else {}
    return {"tasks": list(tasks), "isHardPinned": True, "mediumGoal": "今日いちばん大切なことに集中する"} | chosen | settings


def candidate(text, source, url=None):
    return {"text": text, "source": source, "url": url, "receivedAt": "2025-06-02T10:00:00Z"}


RELEASE = "リリースノートを公開する"
QUESTION = "API仕様の質問に返信する"
MEMO = "不要になったメモ"
LATER = (deferred("請求書を今日中に確認", "urgentImportant"), deferred("今週の計画を見直す", "importantNotUrgent"),
         deferred("短い返信をまとめて返す", "urgentNotImportant"), deferred("通知設定を整理する", "notUrgentNotImportant"))
COMPLETED = (done("朝のメールを確認"), done("議事録を共有"), done("名刺を整理"))
MAIL = candidate("見積書の差し替えをお願いします", "gmail", "https://mail.example/1")


def working_day(*more, **settings):
    """A day's list: NOW with two subtasks, two more open tasks, four deferred and three completed ones."""
    release = task(RELEASE, isExpanded=True)
    yesterday = time.time() - SECONDS_TO_2001 - 86400
    return document(*more, release, task("新機能のスクリーンショットを用意", parentID=release["id"]),
                    done("更新内容を3行でまとめる", parentID=release["id"]) | {"completedAt": yesterday},
                    task(QUESTION), task("来週の打ち合わせの資料を読む"), *LATER, *COMPLETED, active=RELEASE,
                    **{"isDeferredSectionExpanded": False} | settings)


def long_titles():
    return document(task(JAPANESE), task(WORD), task(EMOJI), task(RIGHT_TO_LEFT), task(MIXED),
                    task("A & B_c <b>x</b> &amp; 'quoted' \"twice\""), active=JAPANESE)


def many_tasks(count=200):
    return document(*(task(f"{number} 番目の用事を片付ける") for number in range(1, count + 1)), active="1 番目の用事を片付ける")
