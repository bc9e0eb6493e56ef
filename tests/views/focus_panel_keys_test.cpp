// SPDX-License-Identifier: MIT
#include "support/test_case.h"
#include "views/panel_in_window.h"
#include "views/row_list_view.h"

#include <QScrollBar>

namespace wrenfold {

namespace {

using Kind = PanelRow::Kind;

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");
const QString composerName = QStringLiteral("TODOを追加");

TaskList manyTasks()
{
    TaskList tasks;
    for (int i = 1; i <= 100; ++i)
        tasks.append(madeTask(QString::number(i)));
    return tasks;
}

/// Gives the row the focus by key.
void focusRow(PanelInWindow &panel, const QString &title, Kind kind = Kind::Task)
{
    panel.row(title, kind)->setFocus(Qt::TabFocusReason);
}

} // namespace

/// Each control calls its operation by key, and the focus is where it is looked for.
class FocusPanelKeysTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void noFieldHasTheCaretAtStart()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        QCOMPARE(panel.focused(), QStringLiteral("-"));
        QVERIFY(!panel.composer()->hasFocus());
    }

    void theTabKeyGoesFromTheComposerOverTheListToTheCardAndTheHeader()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        panel.store.setActive(panel.fakes.task(a));
        panel.store.deleteTask(panel.fakes.task(b));
        QVERIFY(panel.show());
        QStringList stops;
        for (int i = 0; i < 18; ++i) {
            panel.press(Qt::Key_Tab);
            stops.append(panel.focused());
        }
        const QStringList expected = {composerName,
                                      a,
                                      QStringLiteral("元に戻す"),
                                      QStringLiteral("GOAL"),
                                      QStringLiteral("サブタスクを追加"),
                                      QStringLiteral("削除（元に戻せます）"),
                                      QStringLiteral("完了"),
                                      QStringLiteral("ポモドーロを開始（25分）"),
                                      QStringLiteral("ポモドーロをリセット"),
                                      QStringLiteral("あとでやるの4象限を表示（0）"),
                                      QStringLiteral("NOWだけ表示"),
                                      QStringLiteral("最前面固定: オン"),
                                      QStringLiteral("元に戻す（⌘Z）"),
                                      QStringLiteral("AIで優先順に並べ替え（GOALが基準）"),
                                      QStringLiteral("AIチャットを開く"),
                                      QStringLiteral("設定..."),
                                      QStringLiteral("パネルを隠す"),
                                      composerName};
        QCOMPARE(stops, expected);
        for (qsizetype i = expected.size() - 2; i >= 0; --i) {
            panel.press(Qt::Key_Backtab);
            QCOMPARE(panel.focused(), expected.at(i));
        }
    }

    void altWithAnArrowMovesTheTaskAsOneStep()
    {
        PanelInWindow panel({madeTask(a), madeTask(QStringLiteral("b")), madeTask(QStringLiteral("c"))});
        QVERIFY(panel.show());
        panel.row(a)->setFocus(Qt::TabFocusReason);
        panel.press(Qt::Key_Up, Qt::AltModifier);
        QCOMPARE(words(panel.store.tasks.value()), QStringLiteral("a b c"));
        QVERIFY(!panel.store.canUndo.value());
        panel.press(Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(words(panel.store.tasks.value()), QStringLiteral("b a c"));
        QCOMPARE(panel.focused(), a);
        panel.press(Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(words(panel.store.tasks.value()), QStringLiteral("b c a"));
        panel.store.undo();
        QCOMPARE(words(panel.store.tasks.value()), QStringLiteral("b a c"));
        panel.store.undo();
        QCOMPARE(words(panel.store.tasks.value()), QStringLiteral("a b c"));
    }

    void typingAndReturnAddsATask()
    {
        PanelInWindow panel({madeTask(a)});
        panel.store.setActive(panel.fakes.task(a));
        QVERIFY(panel.show());
        panel.press(Qt::Key_Tab);
        type(panel.composer(), QStringLiteral("買い物🛒"));
        panel.press(Qt::Key_Return);
        QVERIFY(panel.row(QStringLiteral("買い物🛒")));
        QCOMPARE(panel.fakes.now(), a);
        QCOMPARE(panel.composer()->text(), QString());
        QVERIFY(panel.composer()->hasFocus());
    }

    void controlReturnAddsATaskAsNow()
    {
        PanelInWindow panel({madeTask(a)});
        panel.store.setActive(panel.fakes.task(a));
        QVERIFY(panel.show());
        panel.press(Qt::Key_Tab);
        type(panel.composer(), awkward());
        panel.press(Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(panel.fakes.now(), awkward());
    }

    void theRowsKeysCallTheirOperations()
    {
        PanelInWindow panel({madeTask(a), madeTask(b), madeTask(c)});
        QVERIFY(panel.show());
        focusRow(panel, b);
        panel.press(Qt::Key_P);
        QCOMPARE(panel.fakes.now(), b);
        panel.press(Qt::Key_Delete);
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a c"));
        QCOMPARE(panel.focused(), c);
        panel.press(Qt::Key_Space);
        QVERIFY(panel.fakes.task(c).isDone);
        QCOMPARE(panel.focused(), QString()); // The header of the completed.
        panel.press(Qt::Key_Right);
        QVERIFY(panel.store.isCompletedSectionExpanded.value());
        panel.press(Qt::Key_Down);
        panel.press(Qt::Key_Return);
        QVERIFY(!panel.fakes.task(c).isDone);
    }

    void aRowMovedByKeyStaysInSight()
    {
        TaskList tasks;
        for (int i = 1; i <= 40; ++i)
            tasks.append(madeTask(QString::number(i)));
        PanelInWindow panel(tasks);
        QVERIFY(panel.show());
        focusRow(panel, QStringLiteral("1"));
        for (int i = 0; i < 20; ++i)
            panel.press(Qt::Key_Down, Qt::AltModifier);
        QCOMPARE(panel.store.tasks.value().at(20).title, QStringLiteral("1"));
        const PanelRowWidget *row = panel.row(QStringLiteral("1"));
        QVERIFY(row && row->hasFocus());
        QVERIFY(row->parentWidget()->rect().contains(row->geometry()));
    }

    void anEmptyListIsNoStopOfTheTabKey()
    {
        PanelInWindow panel({});
        QVERIFY(panel.show());
        panel.press(Qt::Key_Tab);
        QVERIFY(panel.composer()->hasFocus());
        panel.press(Qt::Key_Tab);
        QVERIFY(!QApplication::focusWidget()->inherits("wrenfold::RowListView"));
        QVERIFY(!panel.composer()->hasFocus());
    }

    void aListWithoutRoomForARowIsNoStopEither()
    {
        PanelInWindow panel({madeTask(a)}, std::nullopt);
        panel.view->resize(344, 250);
        QVERIFY(panel.show());
        QVERIFY(!panel.row(a));
        panel.view->resize(344, 500);
        QVERIFY(panel.row(a));
    }

    void theDeferredRowsKeysCallTheirOperations()
    {
        PanelInWindow panel({deferred(madeTask(a)), deferred(madeTask(b)), deferred(madeTask(c))});
        QVERIFY(panel.show());
        focusRow(panel, a, Kind::DeferredTask);
        panel.press(Qt::Key_Return);
        QVERIFY(!panel.fakes.task(a).isDeferred);
        focusRow(panel, b, Kind::DeferredTask);
        panel.press(Qt::Key_Space);
        QVERIFY(panel.fakes.task(b).isDone);
        panel.press(Qt::Key_Delete);
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a b"));
    }

    void theListsUndoAndRedoWorkWhereverTheFocusIs()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        for (QWidget *widget : {static_cast<QWidget *>(panel.view), static_cast<QWidget *>(panel.composer()),
                                static_cast<QWidget *>(panel.row(a))}) {
            panel.store.addTask(b, false);
            widget->setFocus();
            panel.press(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(panel.fakes.titles(), a);
            panel.press(Qt::Key_Y, Qt::ControlModifier);
            QCOMPARE(panel.fakes.titles(), QStringLiteral("a b"));
            panel.store.undo();
        }
    }

    void inAFieldTheyActOnTypingNotYetCommitted()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        panel.store.addTask(b, false);
        panel.composer()->setFocus();
        type(panel.composer(), c);
        panel.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(panel.composer()->text(), QString());
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a b"));
        panel.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(panel.fakes.titles(), a);
    }

    void inARenameTheyActOnTypingNotYetCommitted()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        panel.store.addTask(b, false);
        focusRow(panel, a);
        panel.press(Qt::Key_F2);
        type(panel.editField(), c);
        panel.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(panel.editField()->text(), a);
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a b"));
        panel.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(panel.fakes.titles(), a);
        QVERIFY(panel.editField());
    }

    void aRenameIsKeptByReturnAndForgottenByEscape()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        focusRow(panel, a);
        panel.press(Qt::Key_F2);
        type(panel.editField(), awkward());
        panel.press(Qt::Key_Return);
        QCOMPARE(panel.fakes.titles(), awkward());
        QCOMPARE(panel.focused(), awkward());
        QVERIFY(!panel.editField());
        panel.press(Qt::Key_F2);
        QCOMPARE(panel.editField()->text(), awkward());
        type(panel.editField(), b);
        panel.press(Qt::Key_Escape);
        QCOMPARE(panel.fakes.titles(), awkward());
        QCOMPARE(panel.focused(), awkward());
    }

    void theTabKeyKeepsARenameAndGoesOnBehindTheList()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        focusRow(panel, a);
        panel.press(Qt::Key_F2);
        type(panel.editField(), c);
        panel.press(Qt::Key_Tab);
        QCOMPARE(panel.fakes.titles(), QStringLiteral("c b"));
        QCOMPARE(panel.focused(), QStringLiteral("GOAL"));
        panel.press(Qt::Key_Backtab);
        QCOMPARE(panel.focused(), c);
    }

    void returnInARenameDoesNotMakeTheTaskNow()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        panel.store.setActive(panel.fakes.task(a));
        QVERIFY(panel.show());
        focusRow(panel, b);
        panel.press(Qt::Key_F2);
        type(panel.editField(), c);
        panel.press(Qt::Key_Return);
        QCOMPARE(panel.fakes.now(), a);
    }

    void theNowRowIsRenamedByReturnAndByAClickOnItsTitle()
    {
        const TaskItem task = madeTask(a);
        PanelInWindow panel({task}, task.id);
        QVERIFY(panel.show());
        focusRow(panel, a);
        panel.press(Qt::Key_Return);
        QVERIFY(panel.editField());
        panel.press(Qt::Key_Escape);
        QTest::mouseClick(labelSaying(*panel.row(a), a), Qt::LeftButton);
        QVERIFY(panel.editField());
    }

    void aRenameThatChangesNothingIsNoUndoStep()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        for (const char *typed : {"a", " a ", "", " "}) {
            focusRow(panel, a);
            panel.press(Qt::Key_F2);
            panel.editField()->clear();
            type(panel.editField(), QString::fromUtf8(typed));
            panel.press(Qt::Key_Return);
            QCOMPARE(panel.fakes.titles(), a);
            QVERIFY(!panel.store.canUndo.value());
        }
    }

    void aHalfTypedRenameNeverGoesToAnotherTask()
    {
        PanelInWindow panel(manyTasks());
        QVERIFY(panel.show());
        focusRow(panel, QStringLiteral("3"));
        panel.press(Qt::Key_F2);
        type(panel.editField(), QStringLiteral("renamed"));
        const TextField *field = panel.editField();
        auto *list = panel.window.findChild<RowListView *>();
        QWidget other;
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum());
        list->verticalScrollBar()->setValue(0);
        panel.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&panel.window));
        QVERIFY(field->hasFocus());
        panel.press(Qt::Key_Return);
        QCOMPARE(panel.store.tasks.value().at(2).title, QStringLiteral("renamed"));
        QCOMPARE(panel.fakes.titles().count(QStringLiteral("renamed")), 1);
    }

    void aTaskDeletedWhileItIsRenamedTakesTheTypingWithIt()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        focusRow(panel, a);
        panel.press(Qt::Key_F2);
        type(panel.editField(), c);
        panel.store.deleteTask(panel.fakes.task(a));
        QVERIFY(panel.row(b));
        QVERIFY(!panel.editField());
        QCOMPARE(panel.fakes.titles(), b);
        QCOMPARE(panel.focused(), b);
    }

    void theGoalIsKeptByReturnAndForgottenByEscape()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        QTest::mouseClick(panel.goal(), Qt::LeftButton);
        type(panel.editField(), QStringLiteral(" ") + awkward());
        panel.press(Qt::Key_Return);
        QCOMPARE(panel.store.mediumGoal.value(), awkward());
        QCOMPARE(panel.fakes.saved().mediumGoal, awkward());
        QCOMPARE(panel.focused(), awkward());
        panel.press(Qt::Key_Return);
        QVERIFY(panel.editField());
        type(panel.editField(), b);
        panel.press(Qt::Key_Escape);
        QCOMPARE(panel.store.mediumGoal.value(), awkward());
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::FocusPanelKeysTest)
#include "focus_panel_keys_test.moc"
