// SPDX-License-Identifier: MIT
#include "ai/proposal_card.h"
#include "ai/transcript_in_window.h"
#include "support/painted_text.h"
#include "support/test_case.h"

#include <QSignalSpy>

namespace wrenfold {

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

AIActionProposal proposal()
{
    return {QUuid::createUuid(),   u("Title"), u("Detail"),
            {u("one"), awkward()}, u("Yes"),   AIActionProposal::Sort{}};
}

} // namespace

/// A proposal below the conversation.
class ChatTranscriptProposalTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theProposalIsReachedByKeyboard()
    {
        TranscriptInWindow window;
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

    void aProposalOutOfSightComesIntoSightWithTheFocus()
    {
        TranscriptInWindow window;
        window.addMany(50);
        window.transcript.setProposal(proposal());
        const ProposalCard *card = window.transcript.findChild<ProposalCard *>();
        window.bar()->setValue(0);
        window.after.setFocus();
        for (const QString &name : {u("キャンセル"), u("Yes")}) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
            QCOMPARE(accessibleName(*QApplication::focusWidget()), name);
            QVERIFY(window.transcript.viewport()->rect().contains(card->geometry()));
        }
        window.bar()->setValue(0);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(window.transcript.viewport()->rect().contains(card->geometry()));
    }

    void theButtonsOfAProposalThatIsTooLongComeIntoSightWithTheFocus()
    {
        TranscriptInWindow window;
        AIActionProposal longProposal = proposal();
        longProposal.items = QStringList(100, u("item"));
        window.add(u("hello"));
        window.transcript.setProposal(longProposal);
        window.bar()->setValue(0);
        window.after.setFocus();
        QTest::keyClick(&window.after, Qt::Key_Backtab);
        const QWidget *button = QApplication::focusWidget();
        const QRect place(button->mapTo(window.transcript.viewport(), QPoint()), button->size());
        QVERIFY(window.transcript.viewport()->rect().contains(place));
    }

    void aSentenceAboutATaskKeepsItsDirection()
    {
        TranscriptInWindow window;
        window.add(u("hello"));
        AIActionProposal hebrew = proposal();
        hebrew.items = QStringList{u("שלום")};
        window.transcript.setProposal(hebrew);
        TextLabel *item = labelSaying(window.transcript, u("1. שלום"));
        const QImage leftToRight = item->grab().toImage();
        item->setTextDirection(Qt::LayoutDirectionAuto);
        QVERIFY(item->grab().toImage() != leftToRight);
        item->setTextDirection(Qt::LeftToRight);
        QCOMPARE(item->grab().toImage(), leftToRight);
    }

    void theProposalLiesBelowTheMessages()
    {
        TranscriptInWindow window;
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
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::ChatTranscriptProposalTest)
#include "chat_transcript_proposal_test.moc"
