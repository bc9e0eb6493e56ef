// SPDX-License-Identifier: MIT
#include "ai/transcript_in_window.h"
#include "support/painted_text.h"
#include "support/test_case.h"

#include <QApplication>
#include <QClipboard>

namespace wrenfold {

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

/// What the entry of a menu in sight is called, and whether it was chosen.
bool choose(const QString &entry)
{
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    if (!menu)
        return false;
    for (QAction *action : menu->actions()) {
        if (action->text() == entry) {
            action->trigger();
            menu->close();
            return true;
        }
    }
    return false;
}

} // namespace

/// The conversation on screen: places, scrolling, selection, keyboard.
class ChatTranscriptTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theUserIsOnTheRightAndTheAssistantOnTheLeft()
    {
        TranscriptInWindow window;
        window.add(u("hello"));
        window.add(u("hi"), AIChatMessage::Role::user);
        QCOMPARE(window.bubble(u("hello"))->x(), 0);
        QCOMPARE(window.bubble(u("hi"))->geometry().right(), window.transcript.viewport()->width() - 1);
        QVERIFY(window.bubble(u("hello"))->geometry().bottom() < window.bubble(u("hi"))->y());
    }

    void aMessageIsAtMostAsWideAsItsShareAndNothingIsCutOff()
    {
        TranscriptInWindow window;
        const QString link = u("https://example.org/") + QString(400, QLatin1Char('x'));
        for (const QString &text : {link, QString(300, QChar(0x3042)), u("a b ").repeated(100)}) {
            window.add(text);
            MessageBubble *bubble = window.bubble(text);
            QVERIFY(bubble->width() <= 416 * 0.78);
            QVERIFY(bubble->height() > 3 * bubble->fontMetrics().height());
            QVERIFY(bubble->document()->idealWidth() <= bubble->width());
            QVERIFY(bubble->document()->size().height() <= bubble->height());
        }
    }

    void textIsShownExactly()
    {
        TranscriptInWindow window;
        window.add(awkward() + u("\n[x](https://example.org) **y**"));
        MessageBubble *bubble = window.bubble(window.messages[0].text);
        QCOMPARE(paintedText(*bubble), awkward() + u("[x](https://example.org) **y**"));
        QCOMPARE(accessibleName(*bubble), window.messages[0].text);
        QVERIFY(bubble->anchorAt(bubble->rect().center()).isEmpty());
    }

    void itFollowsTheNewest()
    {
        TranscriptInWindow window;
        window.addMany(50);
        QVERIFY(window.isInSight(u("message 49")));
        window.add(u("newest"));
        QVERIFY(window.isInSight(u("newest")));
    }

    void itStaysWhereTheUserHasScrolledTo()
    {
        TranscriptInWindow window;
        window.addMany(50);
        window.bar()->setValue(100);
        window.add(u("newest"));
        QCOMPARE(window.bar()->value(), 100);
        QVERIFY(!window.bubble(u("newest")));
        window.transcript.setProposal(
            AIActionProposal{QUuid::createUuid(), u("Title"), {}, {}, u("Yes"), {}});
        QCOMPARE(window.bar()->value(), 100);
        window.transcript.scrollToEnd();
        window.add(u("newer"));
        QVERIFY(window.bar()->value() == window.bar()->maximum());
    }

    void itStaysAtTheEndWhenTheWindowChanges()
    {
        TranscriptInWindow window;
        window.addMany(50);
        for (const QSize &size : {QSize(300, 300), QSize(500, 150), QSize(400, 380)}) {
            window.transcript.resize(size);
            QCOMPARE(window.bar()->value(), window.bar()->maximum());
            QVERIFY(window.isInSight(u("message 49")));
        }
    }

    void aNarrowerWindowBreaksTheLinesAnew()
    {
        TranscriptInWindow window;
        window.add(u("word ").repeated(30));
        const int before = window.bubble(window.messages[0].text)->height();
        window.transcript.resize(200, 300);
        QVERIFY(window.bubble(window.messages[0].text)->height() > before);
        window.transcript.resize(416, 300);
        QCOMPARE(window.bubble(window.messages[0].text)->height(), before);
    }

    void thereAreWidgetsForMessagesInSightOnly()
    {
        TranscriptInWindow window;
        window.addMany(1000);
        for (const int value : {0, 5000, 20000})
            window.bar()->setValue(value);
        QVERIFY(window.transcript.findChildren<MessageBubble *>().size() < 30);
        window.bar()->setValue(0);
        QVERIFY(window.isInSight(u("message 0")));
    }

    void theWheelScrolls()
    {
        TranscriptInWindow window;
        window.addMany(50);
        MessageBubble *bubble = window.bubble(u("message 49"));
        const int before = window.bar()->value();
        const QPointF middle = QRectF(bubble->rect()).center();
        for (const Qt::KeyboardModifiers modifiers :
             {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier)}) {
            QWheelEvent wheel(middle, bubble->mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, modifiers,
                              Qt::NoScrollPhase, false);
            QSpontaneKeyEvent::setSpontaneous(&wheel); // Others are not handed on to what lies around.
            qApp->notify(bubble->viewport(), &wheel);
        }
        QVERIFY(window.bar()->value() < before);
        QCOMPARE(bubble->font().pixelSize(), Fonts::body().pixelSize());
    }

    void aSelectionSurvivesScrolling()
    {
        TranscriptInWindow window;
        window.addMany(100);
        window.bubble(u("message 99"))->selectAll();
        window.bar()->setValue(0);
        window.transcript.scrollToEnd();
        QCOMPARE(window.bubble(u("message 99"))->textCursor().selectedText(), u("message 99"));
    }

    void aMessageIsCopiedFromItsMenu()
    {
        TranscriptInWindow window;
        window.add(u("one\ntwo"));
        MessageBubble *bubble = window.bubble(u("one\ntwo"));
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, bubble->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(bubble->viewport(), &event);
        QVERIFY(choose(u("コピー")));
        QCOMPARE(QApplication::clipboard()->text(), u("one\ntwo"));
    }

    void theKeyboardGoesFromMessageToMessage()
    {
        TranscriptInWindow window;
        window.addMany(50);
        window.before.setFocus();
        QTest::keyClick(&window.before, Qt::Key_Tab);
        QVERIFY(window.bubble(u("message 49"))->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
        QVERIFY(window.bubble(u("message 48"))->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u("message 48"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
        QVERIFY(window.bubble(u("message 0"))->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
        QVERIFY(window.bar()->value() > 0);
        QVERIFY(window.transcript.viewport()->rect().intersects(QApplication::focusWidget()->geometry()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
        QVERIFY(window.bubble(u("message 49"))->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(window.after.hasFocus());
        QTest::keyClick(&window.after, Qt::Key_Backtab);
        QVERIFY(window.bubble(u("message 49"))->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QVERIFY(window.before.hasFocus());
    }

    void aLongMessageIsReadLineByLineByKeyboard()
    {
        TranscriptInWindow window;
        window.add(u("first"));
        window.add(u("line\n").repeated(100));
        window.add(u("last"));
        window.bar()->setValue(0);
        window.before.setFocus();
        QTest::keyClick(&window.before, Qt::Key_Tab);
        const int before = window.bar()->value();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QVERIFY(window.bar()->value() > before);
        QVERIFY(!window.bubble(u("last")));
        while (!window.isInSight(u("last")))
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    }

    void aNewSelectionTakesTheOldOneAway()
    {
        TranscriptInWindow window;
        window.add(u("one"));
        window.add(u("two"));
        window.bubble(u("one"))->selectAll();
        window.bubble(u("two"))->selectAll();
        QVERIFY(!window.bubble(u("one"))->textCursor().hasSelection());
        QVERIFY(window.bubble(u("two"))->textCursor().hasSelection());
    }

    void whoHasScrolledUpGoesOnReadingInAnotherWidth()
    {
        TranscriptInWindow window;
        for (int i = 0; i < 60; ++i)
            window.messages.append(message(QStringLiteral("%1 ").arg(i) + u("word ").repeated(40)));
        window.transcript.setMessages(window.messages);
        window.bar()->setValue(window.bar()->maximum() / 2);
        const auto first = [&] {
            QString text;
            int top = INT_MAX;
            for (const MessageBubble *bubble : shown<MessageBubble>(window.transcript)) {
                if (bubble->geometry().bottom() >= 0 && bubble->y() < top) {
                    top = bubble->y();
                    text = bubble->text();
                }
            }
            return text;
        };
        const QString before = first();
        for (const int width : {250, 500, 416}) {
            window.transcript.resize(width, 300);
            QCOMPARE(first(), before);
        }
    }

    void anAnswerOfTwoHundredKilobytesIsShownWhole()
    {
        TranscriptInWindow window;
        const QString answer = u("とても長い答え ").repeated(8700);
        QVERIFY(answer.toUtf8().size() > 180'000);
        window.add(answer);
        MessageBubble *bubble = window.bubble(answer);
        QVERIFY(bubble);
        QCOMPARE(window.bar()->value(), window.bar()->maximum());
        QVERIFY(bubble->document()->size().height() <= bubble->height());
        QCOMPARE(accessibleName(*bubble), answer);
        window.bar()->setValue(0);
        QCOMPARE(bubble->y(), 0);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::ChatTranscriptTest)
#include "chat_transcript_test.moc"
