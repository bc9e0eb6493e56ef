// SPDX-License-Identifier: MIT
#include "look/text_field.h"
#include "support/test_case.h"
#include "views/row_in_window.h"
#include "views/subtask_composer_row.h"

namespace wrenfold {

namespace {

struct ComposerInWindow : RowInWindow<SubtaskComposerRow>
{
    ComposerInWindow()
    {
        row = new SubtaskComposerRow(
            {[this](const TaskItem &parent, const QString &title) {
                 calls.append(QStringLiteral("add %1 under %2").arg(title, parent.title));
             },
             [this](const TaskItem &parent) { calls.append(QStringLiteral("close under ") + parent.title); }},
            &window);
    }

    [[nodiscard]] TextField *field() const { return shown<TextField>(window).value(0); }
};

PanelRow composer(const QString &parentTitle)
{
    PanelRow row;
    row.kind = PanelRow::Kind::SubtaskComposer;
    row.task = madeTask(parentTitle);
    return row;
}

PanelRow composer()
{
    return composer(QStringLiteral("p"));
}

} // namespace

class SubtaskComposerRowTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theRowsFocusIsTheFields()
    {
        ComposerInWindow shownRow;
        QVERIFY(shownRow.show(composer()));
        QVERIFY(!shownRow.field()->hasFocus());
        shownRow.row->setFocus(Qt::TabFocusReason);
        QVERIFY(shownRow.field()->hasFocus());
    }

    void aClickBesideTheFieldGoesIntoIt()
    {
        ComposerInWindow shownRow;
        QVERIFY(shownRow.show(composer()));
        QTest::mouseClick(shownRow.row, Qt::LeftButton, {}, QPoint(35, 14));
        QVERIFY(shownRow.field()->hasFocus());
    }

    void returnAddsExactlyWhatWasTyped_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("markup and mnemonics") << awkward();
        QTest::newRow("Japanese and emoji") << QStringLiteral("資料を集める📚");
    }

    void returnAddsExactlyWhatWasTyped()
    {
        QFETCH(QString, title);
        ComposerInWindow shownRow;
        QVERIFY(shownRow.show(composer()));
        type(shownRow.field(), title);
        QTest::keyClick(shownRow.field(), Qt::Key_Return);
        QCOMPARE(shownRow.calls,
                 QStringList({QStringLiteral("add %1 under p").arg(title), QStringLiteral("close under p")}));
        QCOMPARE(shownRow.field()->text(), QString());
    }

    void returnInAnEmptyFieldDoesNothing()
    {
        ComposerInWindow shownRow;
        QVERIFY(shownRow.show(composer()));
        type(shownRow.field(), QStringLiteral(" \u3000"));
        QTest::keyClick(shownRow.field(), Qt::Key_Return);
        QCOMPARE(shownRow.calls, QStringList());
    }

    void escapeForgetsAndCloses()
    {
        ComposerInWindow shownRow;
        QVERIFY(shownRow.show(composer()));
        type(shownRow.field(), QStringLiteral("draft"));
        QTest::keyClick(shownRow.field(), Qt::Key_Escape);
        QCOMPARE(shownRow.calls, QStringList(QStringLiteral("close under p")));
        QCOMPARE(shownRow.field()->text(), QString());
    }

    void leavingTheFieldAddsWhatIsTyped()
    {
        ComposerInWindow shownRow;
        QWidget other(&shownRow.window);
        other.setFocusPolicy(Qt::StrongFocus);
        QVERIFY(shownRow.show(composer()));
        shownRow.row->setFocus(Qt::TabFocusReason);
        type(shownRow.field(), QStringLiteral("draft"));
        // Another window in front is no leaving, nor is a menu.
        for (const Qt::FocusReason reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason}) {
            QFocusEvent away(QEvent::FocusOut, reason);
            QCoreApplication::sendEvent(shownRow.field(), &away);
        }
        QCOMPARE(shownRow.calls, QStringList());
        other.setFocus(Qt::MouseFocusReason);
        QCOMPARE(shownRow.calls, QStringList(QStringLiteral("add draft under p")));
        QCOMPARE(shownRow.field()->text(), QString());
    }

    void aDraftIsKeptWhileItsParentChangesAndAddedBeforeAnotherComes()
    {
        ComposerInWindow shownRow;
        PanelRow row = composer();
        QVERIFY(shownRow.show(row));
        type(shownRow.field(), QStringLiteral("draft"));
        row.task.title = QStringLiteral("renamed");
        shownRow.row->setRow(row);
        QCOMPARE(shownRow.field()->text(), QStringLiteral("draft"));
        shownRow.row->setRow(composer(QStringLiteral("other")));
        QCOMPARE(shownRow.field()->text(), QString());
        QCOMPARE(shownRow.calls, QStringList(QStringLiteral("add draft under renamed")));
    }

    void rowAndFieldAreNamed()
    {
        ComposerInWindow shownRow;
        QVERIFY(shownRow.show(composer()));
        QCOMPARE(accessibleName(*shownRow.row), QStringLiteral("サブタスクを追加"));
        QCOMPARE(accessibleName(*shownRow.field()), QStringLiteral("サブタスクを追加"));
        QVERIFY(shownRow.field()->height() >= 24);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::SubtaskComposerRowTest)
#include "subtask_composer_row_test.moc"
