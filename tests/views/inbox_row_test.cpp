// SPDX-License-Identifier: MIT
#include "look/icon_button.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "support/tool_tip.h"
#include "views/inbox_row.h"
#include "views/inbox_source.h"
#include "views/row_in_window.h"

namespace wrenfold {

namespace {

const QString approveHelp = QStringLiteral("TODOに追加");
const QString pinHelp = QStringLiteral("追加してNOWにピン留め");
const QString dismissHelp = QStringLiteral("候補から削除");
const QString linkHelp = QStringLiteral("元のメッセージを開く");
const QUrl link(QStringLiteral("https://example.org/1"));

struct InboxRowInWindow : RowInWindow<InboxRow>
{
    InboxRowInWindow()
    {
        const auto note = [this](const char *what) {
            return [this, what](const InboxItem &item) {
                calls.append(QLatin1String(what) + QLatin1Char(' ') + item.text);
            };
        };
        row = new InboxRow(
            {note("approve"), note("pin"), note("dismiss"),
             [this](const QUrl &url) { calls.append(QStringLiteral("open ") + url.toString()); }},
            &window);
    }
};

PanelRow candidate(const QString &text, const QString &source = {}, const std::optional<QUrl> &url = link)
{
    PanelRow row;
    row.kind = PanelRow::Kind::InboxCandidate;
    row.inboxItem.id = QStringLiteral("a.json");
    row.inboxItem.text = text;
    row.inboxItem.source = source;
    row.inboxItem.url = url;
    return row;
}

PanelRow plain()
{
    return candidate(QStringLiteral("a"));
}

} // namespace

class InboxRowTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsReachedByMouse()
    {
        InboxRowInWindow shownRow;
        QVERIFY(shownRow.show(plain()));
        enter(*shownRow.row);
        for (const QString &help : {approveHelp, pinHelp, linkHelp, dismissHelp})
            QVERIFY2(click(*shownRow.row, help), qPrintable(help));
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')),
                 QStringLiteral("approve a,pin a,open https://example.org/1,dismiss a"));
    }

    void theCircleAndTheSignOfPlusDoTheSame()
    {
        InboxRowInWindow shownRow;
        QVERIFY(shownRow.show(plain()));
        int clicked = 0;
        for (PaintedButton *button : shown<PaintedButton>(*shownRow.row)) {
            if (accessibleName(*button) != approveHelp)
                continue;
            QTest::mouseClick(button, Qt::LeftButton);
            ++clicked;
        }
        QCOMPARE(clicked, 2);
        QCOMPARE(shownRow.calls, QStringList(2, QStringLiteral("approve a")));
    }

    void returnTakesItPMakesItNowAndDeleteDismissesIt()
    {
        InboxRowInWindow shownRow;
        QVERIFY(shownRow.show(plain()));
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_P, Qt::Key_Delete})
            QTest::keyClick(shownRow.row, key);
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')),
                 QStringLiteral("approve a,approve a,pin a,dismiss a"));
    }

    void theMenuHoldsEverythingAndDoesIt()
    {
        InboxRowInWindow shownRow;
        QVERIFY(shownRow.show(plain()));
        QMenu *menu = openMenu(*shownRow.row, QContextMenuEvent::Keyboard);
        QVERIFY(menu);
        QCOMPARE(menuTexts(*menu),
                 (QStringList{approveHelp, pinHelp, linkHelp, QStringLiteral("-"), dismissHelp}));
        menu->close();
        for (const QString &entry : {approveHelp, pinHelp, linkHelp, dismissHelp})
            QVERIFY(chooseFromMenu(*shownRow.row, entry));
        QCOMPARE(shownRow.calls.join(QLatin1Char(',')),
                 QStringLiteral("approve a,pin a,open https://example.org/1,dismiss a"));
    }

    void withoutALinkThereIsNoButtonForIt()
    {
        InboxRowInWindow shownRow;
        QVERIFY(shownRow.show(candidate(QStringLiteral("a"), {}, std::nullopt)));
        enter(*shownRow.row);
        QVERIFY(!buttonNamed(*shownRow.row, linkHelp));
        QMenu *menu = openMenu(*shownRow.row);
        QVERIFY(!menuEntry(*menu, linkHelp));
        menu->close();
        shownRow.row->setRow(plain());
        QVERIFY(buttonNamed(*shownRow.row, linkHelp));
    }

    void dismissingShowsWhenNeededWithoutMovingTheText()
    {
        InboxRowInWindow shownRow;
        QVERIFY(shownRow.show(plain()));
        TextLabel *text = labelSaying(*shownRow.row, QStringLiteral("a"));
        const QPoint place = text->pos();
        QVERIFY(!buttonNamed(*shownRow.row, dismissHelp));
        enter(*shownRow.row);
        QVERIFY(buttonNamed(*shownRow.row, dismissHelp));
        QCOMPARE(text->pos(), place);
        leave(*shownRow.row);
        QVERIFY(!buttonNamed(*shownRow.row, dismissHelp));
        shownRow.row->setFocus(Qt::TabFocusReason);
        QVERIFY(buttonNamed(*shownRow.row, dismissHelp));
    }

    void everyButtonIsLargeEnoughAndReadOut()
    {
        InboxRowInWindow shownRow;
        QVERIFY(shownRow.show(candidate(QString(80, QChar(u'長')), QString(80, QChar(u'源')))));
        enter(*shownRow.row);
        QCOMPARE(faultsOfButtons(*shownRow.row), QStringList());
    }

    void theWholeTextIsReadOutAndItsSourceDescribesIt()
    {
        const QString text = QStringLiteral("見積書の差し替えをお願いします 🍅 ").repeated(6).trimmed();
        InboxRowInWindow shownRow;
        QVERIFY(shownRow.show(candidate(text, QStringLiteral("gmail"))));
        QCOMPARE(accessibleName(*shownRow.row), text);
        QCOMPARE(shownRow.row->accessibleDescription(), QStringLiteral("gmail"));
        TextLabel *label = labelSaying(*shownRow.row, text);
        QVERIFY(label && label->isElided());
        QCOMPARE(roleOf(*shownRow.row), QAccessible::ListItem);
    }

    void markupIsShownAsText()
    {
        InboxRowInWindow shownRow;
        QVERIFY(shownRow.show(candidate(awkward(), awkward())));
        QCOMPARE(accessibleName(*shownRow.row), awkward());
        TextLabel *label = labelSaying(*shownRow.row, awkward());
        QVERIFY(label);
        QVERIFY(paintedText(*label).contains(awkward()));
        QCOMPARE(paintedText(*shownRow.row).count(QStringLiteral("A & B")), 2);
    }

    void theTintFollowsTheSource_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QColor>("tint");
        const Theme &theme = Theme::light();
        for (const char *mail : {"gmail", "mail", "email", "mailme", "my mail box"})
            QTest::newRow(mail) << QString::fromLatin1(mail) << theme.urgentAndImportant;
        QTest::newRow("discord") << QStringLiteral("discord") << theme.important;
        QTest::newRow("line") << QStringLiteral("line") << theme.green;
        QTest::newRow("voice") << QStringLiteral("voice memo") << theme.urgent;
        QTest::newRow("claude") << QStringLiteral("claude code") << theme.pink;
        QTest::newRow("mcp") << QStringLiteral("mcp") << theme.pink;
        QTest::newRow("other") << QStringLiteral("slack") << theme.neither;
        QTest::newRow("none") << QString() << theme.neither;
    }
    void theTintFollowsTheSource()
    {
        QFETCH(QString, source);
        QFETCH(QColor, tint);
        QCOMPARE(Theme::light().*sourceTint(source), tint);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::InboxRowTest)
#include "inbox_row_test.moc"
