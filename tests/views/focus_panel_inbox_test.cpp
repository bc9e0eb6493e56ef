// SPDX-License-Identifier: MIT
#include "inbox/inbox_on_fakes.h"
#include "support/test_case.h"
#include "views/inbox_header_row.h"
#include "views/link_question.h"
#include "views/panel_in_window.h"

#include <QPlainTextEdit>
#include <QPushButton>

namespace wrenfold {

namespace {

using Kind = PanelRow::Kind;

const QString linkHelp = QStringLiteral("元のメッセージを開く");

/// A panel whose store has read the inbox folder.
struct PanelWithInbox : PanelInWindow
{
    explicit PanelWithInbox(const TaskList &tasks = {madeTask(QStringLiteral("t"))})
        : PanelInWindow(tasks)
    {
        store.reloadInbox(false);
        fakes.clock.advance(std::chrono::milliseconds(0));
    }

    [[nodiscard]] PanelRowWidget *candidate(const QString &text) const
    {
        QCoreApplication::processEvents();
        for (PanelRowWidget *widget : shown<PanelRowWidget>(window)) {
            if (widget->row().kind == Kind::InboxCandidate && widget->row().inboxItem.text == text)
                return widget;
        }
        return nullptr;
    }

    /// The question about a link that is open, or null.
    [[nodiscard]] static LinkQuestion *question()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *widget : windows) {
            if (auto *question = qobject_cast<LinkQuestion *>(widget); question && question->isVisible())
                return question;
        }
        return nullptr;
    }

    [[nodiscard]] bool openLink(const QByteArray &link)
    {
        InboxFolder::write(QStringLiteral("a.json"), json("{'text':'a','url':'%'}").replace("%", link));
        store.reloadInbox(false);
        fakes.clock.advance(std::chrono::milliseconds(0));
        return clickIn(candidate(QStringLiteral("a")), linkHelp);
    }
};

QPushButton *buttonOf(const QWidget &dialog, const QString &text)
{
    for (QPushButton *button : shown<QPushButton>(dialog)) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

} // namespace

class FocusPanelInboxTest : public TestCase
{
    Q_OBJECT

    std::optional<InboxFolder> m_folder;

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_folder.emplace();
    }
    void cleanup() { m_folder.reset(); }

    void theSectionIsThereWhenThereAreCandidates()
    {
        PanelWithInbox empty;
        QVERIFY(empty.show());
        QVERIFY(!empty.header(Kind::InboxHeader));
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        InboxFolder::drop(QStringLiteral("b.json"), QStringLiteral("b"));
        empty.store.reloadInbox(true);
        empty.fakes.clock.advance(std::chrono::milliseconds(0));
        QVERIFY(empty.header(Kind::InboxHeader));
        QCOMPARE(accessibleName(*empty.header(Kind::InboxHeader)), QStringLiteral("INBOX 2"));
        QVERIFY(empty.candidate(QStringLiteral("b")));
    }

    void eachControlDoesItsOperation()
    {
        for (const char *name : {"a", "b", "c"})
            InboxFolder::drop(QString::fromLatin1(name) + QStringLiteral(".json"), QString::fromLatin1(name));
        PanelWithInbox panel;
        QVERIFY(panel.show());
        QVERIFY(panel.clickIn(panel.candidate(QStringLiteral("a")), QStringLiteral("TODOに追加")));
        QVERIFY(panel.clickIn(panel.candidate(QStringLiteral("b")), QStringLiteral("追加してNOWにピン留め")));
        QVERIFY(panel.clickIn(panel.candidate(QStringLiteral("c")), QStringLiteral("候補から削除")));
        QCOMPARE(words(panel.store.tasks.value()), QStringLiteral("t a b"));
        QCOMPARE(panel.store.activeTask()->title, QStringLiteral("b"));
        QVERIFY(InboxFolder::names().isEmpty());
        QVERIFY(!panel.header(Kind::InboxHeader));
    }

    void theHeaderTakesOrDismissesAll()
    {
        for (const QString &help :
             {QStringLiteral("候補をすべてTODOに追加"), QStringLiteral("候補をすべて削除")}) {
            InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
            InboxFolder::drop(QStringLiteral("b.json"), QStringLiteral("b"));
            PanelWithInbox panel;
            QVERIFY(panel.show());
            QVERIFY(panel.clickIn(panel.header(Kind::InboxHeader), help));
            QVERIFY(InboxFolder::names().isEmpty());
            QCOMPARE(panel.store.tasks.value().size(), help.contains(QStringLiteral("削除")) ? 1 : 3);
        }
    }

    void theHeadersKeysOpenAMenuAndDoNothingByThemselves()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        PanelWithInbox panel;
        QVERIFY(panel.show());
        PanelRowWidget *header = panel.header(Kind::InboxHeader);
        const OffscreenSilence silence;
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
            QTest::keyClick(header, key);
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(menu);
            QCOMPARE(menuTexts(*menu), (QStringList{QStringLiteral("候補をすべてTODOに追加"),
                                                    QStringLiteral("候補をすべて削除")}));
            menu->close();
        }
        QTest::keyClick(header, Qt::Key_Delete);
        QCOMPARE(InboxFolder::names().size(), 1);
        QVERIFY(chooseFromMenu(*header, QStringLiteral("候補をすべて削除")));
        QVERIFY(InboxFolder::names().isEmpty());
    }

    void afterACandidateIsTakenByKeyTheNextOneHasTheFocus()
    {
        InboxFolder::drop(QStringLiteral("a.json"), QStringLiteral("a"));
        InboxFolder::drop(QStringLiteral("b.json"), QStringLiteral("b"));
        PanelWithInbox panel;
        QVERIFY(panel.show());
        panel.candidate(QStringLiteral("a"))->setFocus(Qt::TabFocusReason);
        panel.press(Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), panel.candidate(QStringLiteral("b")));
        panel.press(Qt::Key_Delete);
        QCOMPARE(words(panel.store.tasks.value()), QStringLiteral("t a"));
    }

    void webPagesAndMailOpenAtOnce()
    {
        PanelWithInbox panel;
        QVERIFY(panel.show());
        for (const char *link :
             {"https://example.org/a?b=1", "http://example.org/", "mailto:a@example.org"}) {
            QVERIFY(panel.openLink(link));
            QCOMPARE(panel.opened.takeLast(), QUrl(QString::fromLatin1(link)));
            QVERIFY(!panel.question());
        }
    }

    void anyOtherSchemeShowsTheWholeLinkAndAsks()
    {
        const OffscreenSilence silence;
        PanelWithInbox panel;
        QVERIFY(panel.show());
        const QByteArray link = "obsidian://open/" + QByteArray(300, '1') + "?q=%3Cb%3Ex&r=1";
        QVERIFY(panel.openLink(link));
        QVERIFY(panel.opened.isEmpty());
        QTRY_VERIFY(panel.question());
        const QString text = panel.question()->findChild<QPlainTextEdit *>()->toPlainText();
        QCOMPARE(text, QUrl(QString::fromLatin1(link)).toString(QUrl::FullyEncoded));
        QVERIFY(buttonOf(*panel.question(), QStringLiteral("キャンセル"))->isDefault());
        QTest::mouseClick(buttonOf(*panel.question(), QStringLiteral("開く")), Qt::LeftButton);
        QCOMPARE(panel.opened, QList<QUrl>{QUrl(QString::fromLatin1(link))});
        QTRY_VERIFY(!panel.question());
    }

    void theWholeLinkIsReachedByKeyAndShowsThatItIs()
    {
        const OffscreenSilence silence;
        PanelWithInbox panel;
        QVERIFY(panel.show());
        QVERIFY(panel.openLink("line://msg/1"));
        QTRY_VERIFY(panel.question());
        panel.question()->activateWindow();
        QTRY_VERIFY(buttonOf(*panel.question(), QStringLiteral("キャンセル"))->hasFocus());
        auto *link = panel.question()->findChild<QPlainTextEdit *>();
        QTest::keyClick(panel.question()->windowHandle(), Qt::Key_Tab);
        QVERIFY(link->hasFocus());
        QVERIFY(link->textInteractionFlags() & Qt::TextSelectableByKeyboard); // With a caret to be seen.
    }

    void noIsNo()
    {
        const OffscreenSilence silence;
        PanelWithInbox panel;
        QVERIFY(panel.show());
        QVERIFY(panel.openLink("line://msg/1"));
        QTRY_VERIFY(panel.question());
        QTest::keyClick(panel.question(), Qt::Key_Escape);
        QTRY_VERIFY(!panel.question());
        QVERIFY(panel.openLink("line://msg/1"));
        QTRY_VERIFY(panel.question());
        QTest::keyClick(panel.question(), Qt::Key_Return);
        QTRY_VERIFY(!panel.question());
        QVERIFY(panel.opened.isEmpty());
    }

    void filesNeverOpen()
    {
        const OffscreenSilence silence;
        PanelWithInbox panel;
        QVERIFY(panel.show());
        for (const char *link : {"file:///usr/bin/xterm", "/usr/bin/xterm"}) {
            QVERIFY(panel.openLink(link));
            QTRY_VERIFY(panel.question());
            QVERIFY(!buttonOf(*panel.question(), QStringLiteral("開く")));
            QCOMPARE(panel.question()->findChild<QPlainTextEdit *>()->toPlainText(),
                     QString::fromLatin1(link));
            QTest::keyClick(panel.question(), Qt::Key_Return);
            QTRY_VERIFY(!panel.question());
        }
        QVERIFY(panel.opened.isEmpty());
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::FocusPanelInboxTest)
#include "focus_panel_inbox_test.moc"
