// SPDX-License-Identifier: MIT
#include "ai/chat_transcript.h"
#include "ai/message_bubble.h"
#include "ai/proposal_card.h"
#include "look/text_button.h"
#include "support/offscreen_silence.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "views/view_probes.h"

#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QSignalSpy>

namespace wrenfold {

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

AIChatMessage message(const QString &text, AIChatMessage::Role role = AIChatMessage::Role::assistant)
{
    return {QUuid::createUuid(), role, text};
}

AIActionProposal proposal()
{
    return {QUuid::createUuid(),   u("Title"), u("Detail"),
            {u("one"), awkward()}, u("Yes"),   AIActionProposal::Sort{}};
}

/// A window with a transcript between two buttons.
struct Window : QWidget
{
    OffscreenSilence silence;
    TextButton before{u("before"), TextButton::Kind::Plain, this};
    ChatTranscript transcript{this};
    TextButton after{u("after"), TextButton::Kind::Plain, this};
    QList<AIChatMessage> messages;

    Window()
    {
        resize(416, 400);
        before.setGeometry(0, 0, 60, 28);
        transcript.setGeometry(0, 30, 416, 300);
        after.setGeometry(0, 340, 60, 28);
        show();
        activateWindow();
        (void)QTest::qWaitForWindowActive(this);
    }

    void add(const QString &text, AIChatMessage::Role role = AIChatMessage::Role::assistant)
    {
        messages.append(message(text, role));
        transcript.setMessages(messages);
    }
    void addMany(int count)
    {
        for (int i = 0; i < count; ++i)
            messages.append(message(QStringLiteral("message %1").arg(i)));
        transcript.setMessages(messages);
    }
    [[nodiscard]] QScrollBar *bar() { return transcript.verticalScrollBar(); }
    [[nodiscard]] MessageBubble *bubble(const QString &text)
    {
        for (MessageBubble *bubble : shown<MessageBubble>(transcript)) {
            if (bubble->text() == text)
                return bubble;
        }
        return nullptr;
    }
    /// Whether the whole of the message can be seen.
    [[nodiscard]] bool isInSight(const QString &text)
    {
        const MessageBubble *found = bubble(text);
        return found && transcript.viewport()->rect().contains(found->geometry());
    }
};

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
        Window window;
        window.add(u("hello"));
        window.add(u("hi"), AIChatMessage::Role::user);
        QCOMPARE(window.bubble(u("hello"))->x(), 0);
        QCOMPARE(window.bubble(u("hi"))->geometry().right(), window.transcript.viewport()->width() - 1);
        QVERIFY(window.bubble(u("hello"))->geometry().bottom() < window.bubble(u("hi"))->y());
    }

    void aMessageIsAtMostAsWideAsItsShareAndNothingIsCutOff()
    {
        Window window;
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
        Window window;
        window.add(awkward() + u("\n[x](https://example.org) **y**"));
        MessageBubble *bubble = window.bubble(window.messages[0].text);
        QCOMPARE(paintedText(*bubble), awkward() + u("[x](https://example.org) **y**"));
        QCOMPARE(accessibleName(*bubble), window.messages[0].text);
        QVERIFY(bubble->anchorAt(bubble->rect().center()).isEmpty());
    }

    void itFollowsTheNewest()
    {
        Window window;
        window.addMany(50);
        QVERIFY(window.isInSight(u("message 49")));
        window.add(u("newest"));
        QVERIFY(window.isInSight(u("newest")));
    }

    void itStaysWhereTheUserHasScrolledTo()
    {
        Window window;
        window.addMany(50);
        window.bar()->setValue(100);
        window.add(u("newest"));
        QCOMPARE(window.bar()->value(), 100);
        QVERIFY(!window.bubble(u("newest")));
        window.transcript.setProposal(proposal());
        QCOMPARE(window.bar()->value(), 100);
        window.transcript.scrollToEnd();
        window.add(u("newer"));
        QVERIFY(window.bar()->value() == window.bar()->maximum());
    }

    void itStaysAtTheEndWhenTheWindowChanges()
    {
        Window window;
        window.addMany(50);
        for (const QSize &size : {QSize(300, 300), QSize(500, 150), QSize(400, 380)}) {
            window.transcript.resize(size);
            QCOMPARE(window.bar()->value(), window.bar()->maximum());
            QVERIFY(window.isInSight(u("message 49")));
        }
    }

    void aNarrowerWindowBreaksTheLinesAnew()
    {
        Window window;
        window.add(u("word ").repeated(30));
        const int before = window.bubble(window.messages[0].text)->height();
        window.transcript.resize(200, 300);
        QVERIFY(window.bubble(window.messages[0].text)->height() > before);
        window.transcript.resize(416, 300);
        QCOMPARE(window.bubble(window.messages[0].text)->height(), before);
    }

    void thereAreWidgetsForMessagesInSightOnly()
    {
        Window window;
        window.addMany(1000);
        for (const int value : {0, 5000, 20000})
            window.bar()->setValue(value);
        QVERIFY(window.transcript.findChildren<MessageBubble *>().size() < 30);
        window.bar()->setValue(0);
        QVERIFY(window.isInSight(u("message 0")));
    }

    void theWheelScrolls()
    {
        Window window;
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
        Window window;
        window.addMany(100);
        window.bubble(u("message 99"))->selectAll();
        window.bar()->setValue(0);
        window.transcript.scrollToEnd();
        QCOMPARE(window.bubble(u("message 99"))->textCursor().selectedText(), u("message 99"));
    }

    void aMessageIsCopiedFromItsMenu()
    {
        Window window;
        window.add(u("one\ntwo"));
        MessageBubble *bubble = window.bubble(u("one\ntwo"));
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, bubble->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(bubble->viewport(), &event);
        QVERIFY(choose(u("コピー")));
        QCOMPARE(QApplication::clipboard()->text(), u("one\ntwo"));
    }

    void theKeyboardGoesFromMessageToMessage()
    {
        Window window;
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
        Window window;
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

    void theProposalIsReachedByKeyboard()
    {
        Window window;
        window.add(u("hello"));
        window.transcript.setProposal(proposal());
        QSignalSpy confirmed(&window.transcript, &ChatTranscript::proposalConfirmed);
        QSignalSpy cancelled(&window.transcript, &ChatTranscript::proposalCancelled);
        window.before.setFocus();
        QTest::keyClick(&window.before, Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(accessibleName(*QApplication::focusWidget()), u("Yes"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(confirmed.size(), 1);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(cancelled.size(), 1);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
        QVERIFY(window.bubble(u("hello"))->hasFocus());
    }

    void theProposalLiesBelowTheMessages()
    {
        Window window;
        window.addMany(30);
        window.transcript.setProposal(proposal());
        ProposalCard *card = shown<ProposalCard>(window.transcript).value(0);
        QVERIFY(card);
        QVERIFY(window.transcript.viewport()->rect().contains(card->geometry()));
        QVERIFY(card->y() > window.bubble(u("message 29"))->geometry().bottom());
        for (const QString &text : {u("Title"), u("Detail"), u("1. one"), u("2. ") + awkward()}) {
            QVERIFY(labelSaying(*card, text));
            QVERIFY(paintedText(*card).contains(text));
        }
        window.transcript.setProposal(std::nullopt);
        QVERIFY(shown<ProposalCard>(window.transcript).isEmpty());
        QVERIFY(window.isInSight(u("message 29")));
    }

    void anAnswerOfTwoHundredKilobytesIsShownWhole()
    {
        Window window;
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
