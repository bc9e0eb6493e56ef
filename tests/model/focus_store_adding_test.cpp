// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "model/store_on_fakes.h"
#include "model/uuid_text.h"
#include "support/log_capture.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

/// Adding tasks and subtasks, and the subtask composer.
class FocusStoreAddingTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { DebugLog::setArguments({}); }

    void aTaskIsAppendedWithTheDefaults()
    {
        StoreOnFakes s({madeTask(u("a"))});
        s.store.addTask(u("b"), false);
        QCOMPARE(s.titles(), u("a b"));
        TaskItem expected = TaskItem::make(u("b"), Timestamp::fromDateTime(s.clock.now()));
        expected.id = s.task(u("b")).id;
        QCOMPARE(s.task(u("b")), expected);
        QCOMPARE(s.undoName(), u("TODOを追加"));
    }

    void anAddedTaskBecomesNowWhenAskedOrWhenThereIsNone()
    {
        StoreOnFakes s(TaskList{});
        s.store.addTask(u("a"), false);
        QCOMPARE(s.now(), u("a"));
        s.store.addTask(u("b"), false);
        QCOMPARE(s.now(), u("a"));
        s.store.addTask(u("c"), true);
        QCOMPARE(s.now(), u("c"));
    }

    void noNowTaskMeansThatActiveTaskIsNone()
    {
        // The stored NOW task is missing and nothing is open, so loading leaves none.
        const TaskItem a = done(madeTask(u("a")));
        StoreOnFakes s({a}, QUuid::createUuid());
        QVERIFY(!s.store.activeTask());
        s.store.addTask(u("b"), false);
        QCOMPARE(s.now(), u("b"));
    }

    void addTaskWithBlanksAndLineBreaksOnlyAddsNothingAndRegistersNoUndoEntry_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("empty") << QString();
        QTest::newRow("blanks and line breaks") << u(" \t\r\n \v\f");
        QTest::newRow("ideographic space") << u("\u3000");
        QTest::newRow("next line") << u("\u0085");
        QTest::newRow("separators") << u("\u2028\u2029\u00A0\u2003\u202F\u205F\u1680");
    }

    void addTaskWithBlanksAndLineBreaksOnlyAddsNothingAndRegistersNoUndoEntry()
    {
        QFETCH(QString, title);
        StoreOnFakes s({madeTask(u("a"))});
        s.store.addTask(title, true);
        s.store.addTask(title, true, s.task(u("a")).id);
        s.store.addSubtask(s.task(u("a")).id, title);
        QCOMPARE(s.titles(), u("a"));
        QVERIFY(!s.store.canUndo.value());
        QCOMPARE(s.store.sortStatus.value(), QString());
        QCOMPARE(s.preferences.writeCount(), 0);
    }

    void trimmingTakesTheUnicodeWhiteSpaceAndLineBreaksOfBothEnds()
    {
        const QString blanks = u("\u3000 \u0085\n\u00A0\u2028\u2003\t");
        StoreOnFakes s(TaskList{});
        s.store.addTask(blanks + u("a\u3000b") + blanks, false);
        QCOMPARE(s.store.tasks.value().first().title, u("a\u3000b"));
        s.store.addSubtask(s.store.tasks.value().first().id, blanks + u("c") + blanks);
        QCOMPARE(s.store.tasks.value().last().title, u("c"));
        s.store.updateTaskTitle(s.task(u("c")), blanks + u("d") + blanks);
        QCOMPARE(s.store.tasks.value().last().title, u("d"));
    }

    void whatIsNoWhiteSpaceIsKept()
    {
        StoreOnFakes s(TaskList{});
        const QString title = u("\u200Ba\uFEFF"); // zero-width space, byte order mark
        s.store.addTask(title, false);
        QCOMPARE(s.store.tasks.value().first().title, title);
    }

    void aSubtaskTakesItsParentsStateAndStandsBehindTheLastSubtask()
    {
        TaskItem a = deferred(madeTask(u("a")));
        a.quadrant = TaskQuadrant::importantNotUrgent;
        const TaskItem a1 = madeSubtask(u("a1"), a);
        StoreOnFakes s({a, a1, madeTask(u("b"))});
        s.store.addSubtask(a.id, u("new"));
        QCOMPARE(s.titles(), u("a a1 new b"));
        TaskItem expected = TaskItem::make(u("new"), Timestamp::fromDateTime(s.clock.now()));
        expected.id = s.task(u("new")).id;
        expected.parentID = a.id;
        expected.isDeferred = true;
        expected.quadrant = TaskQuadrant::importantNotUrgent;
        QCOMPARE(s.task(u("new")), expected);
        QVERIFY(s.task(u("a")).isExpanded);
        QCOMPARE(s.undoName(), u("サブタスクを追加"));
    }

    void aFirstSubtaskStandsDirectlyBehindItsParent()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a, madeTask(u("b"))});
        s.store.addSubtask(a.id, u("a1"));
        QCOMPARE(s.titles(), u("a a1 b"));
    }

    void aSubtaskStandsBehindItsParentsLastSubtaskAlsoAfterAMoveBetweenThem()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        StoreOnFakes s({a, madeSubtask(u("a1"), a), b});
        s.store.moveTask(b.id, a.id, true);
        QCOMPARE(s.titles(), u("a b a1"));
        s.store.addSubtask(a.id, u("a2"));
        QCOMPARE(s.titles(), u("a b a1 a2"));
    }

    void theStoreNeverHoldsASecondLevel()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem a1 = madeSubtask(u("a1"), a);
        StoreOnFakes s({a, a1, madeTask(u("b"))});
        s.store.addSubtask(a1.id, u("a2"));
        s.store.addTask(u("a3"), false, a1.id);
        s.store.beginAddSubtask(a1);
        QCOMPARE(s.store.subtaskComposerParentID.value(), std::optional(a.id));
        s.store.addTask(u("a4"), false);
        QCOMPARE(s.titles(), u("a a1 a2 a3 a4 b"));
        for (const auto *title : {"a1", "a2", "a3", "a4"})
            QCOMPARE(s.task(u(title)).parentID, std::optional(a.id));
    }

    void aSubtaskUnderAnUnknownParentChangesNothing()
    {
        StoreOnFakes s({madeTask(u("a"))});
        s.store.addSubtask(QUuid::createUuid(), u("x"));
        s.store.addTask(u("x"), true, QUuid::createUuid());
        QCOMPARE(s.titles(), u("a"));
        QVERIFY(!s.store.canUndo.value());
        QCOMPARE(s.preferences.writeCount(), 0);
    }

    void addTaskWithAParentAddsASubtaskAndNeverMakesItNow()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a}, a.id);
        s.store.addTask(u("a1"), true, a.id);
        QCOMPARE(s.task(u("a1")).parentID, std::optional(a.id));
        QCOMPARE(s.now(), u("a"));
        QCOMPARE(s.undoName(), u("サブタスクを追加"));
        s.store.undo();
        QVERIFY(!s.store.canUndo.value());
    }

    void addTaskWithoutAParentGoesToTheOpenComposersParentAndClosesTheComposer()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a, madeTask(u("b"))});
        s.store.beginAddSubtask(a);
        s.store.addTask(u("a1"), false);
        QCOMPARE(s.titles(), u("a a1 b"));
        QCOMPARE(s.task(u("a1")).parentID, std::optional(a.id));
        QCOMPARE(s.store.subtaskComposerParentID.value(), std::nullopt);
        s.store.addTask(u("c"), false);
        QVERIFY(s.task(u("c")).isTopLevel());
    }

    void aGivenParentGoesBeforeTheComposers()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        StoreOnFakes s({a, b});
        s.store.beginAddSubtask(a);
        s.store.addTask(u("b1"), false, b.id);
        QCOMPARE(s.task(u("b1")).parentID, std::optional(b.id));
        QCOMPARE(s.store.subtaskComposerParentID.value(), std::nullopt);
    }

    void blanksLeaveTheComposerOpen()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a});
        s.store.beginAddSubtask(a);
        s.store.addTask(u(" "), false);
        QCOMPARE(s.store.subtaskComposerParentID.value(), std::optional(a.id));
        s.store.endAddSubtask();
        QCOMPARE(s.store.subtaskComposerParentID.value(), std::nullopt);
    }

    void theComposerDoesNotOpenForAnUnknownTask()
    {
        StoreOnFakes s({madeTask(u("a"))});
        s.store.beginAddSubtask(madeTask(u("x")));
        QCOMPARE(s.store.subtaskComposerParentID.value(), std::nullopt);
    }

    void theComposerClosesWhenItsParentLeavesTheList_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("delete") << 0;
        QTest::newRow("clear completed") << 1;
        QTest::newRow("undo") << 2;
        QTest::newRow("redo") << 3;
    }

    void theComposerClosesWhenItsParentLeavesTheList()
    {
        QFETCH(int, way);
        const TaskItem a = done(madeTask(u("a")));
        StoreOnFakes s({a});
        if (way == 2)
            s.store.addTask(u("new"), false);
        if (way == 3) {
            s.store.deleteTask(a);
            s.store.undo();
        }
        s.store.beginAddSubtask(s.store.tasks.value().last());
        QVERIFY(s.store.subtaskComposerParentID.value());
        if (way == 0)
            s.store.deleteTask(a);
        else if (way == 1)
            s.store.clearCompleted();
        else if (way == 2)
            s.store.undo();
        else
            s.store.redo();
        QCOMPARE(s.store.subtaskComposerParentID.value(), std::nullopt);
        s.store.addTask(u("typed"), false);
        QVERIFY(s.task(u("typed")).isTopLevel());
    }

    void theComposerStaysOpenWhenAnotherTaskLeaves()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        StoreOnFakes s({a, b});
        s.store.beginAddSubtask(a);
        s.store.deleteTask(b);
        QCOMPARE(s.store.subtaskComposerParentID.value(), std::optional(a.id));
    }

    void everyRequestForTheInputCountsOneUp()
    {
        StoreOnFakes s(TaskList{});
        s.store.requestTodoInput();
        s.store.requestTodoInput();
        QCOMPARE(s.store.composerFocusToken.value(), 2);
        QVERIFY(!s.store.canUndo.value());
    }

    void addingIsLoggedWhenVerbose()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a});
        const LogCapture log;
        s.store.addTask(u("quiet"), false);
        QCOMPARE(log.take(), QStringList());
        DebugLog::setArguments({u("wrenfold"), u("--verbose")});
        s.store.addTask(u(" b %1 "), true);
        s.store.addTask(u("c"), false);
        s.store.addTask(u("d"), true, a.id);
        const QStringList expected = {u("debug store: added task: b %1 makeActive=true"),
                                      u("debug store: added task: c makeActive=false"),
                                      u("debug store: added subtask under ") + uuidText(a.id) + u(": d")};
        QCOMPARE(log.take(), expected);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreAddingTest)
#include "focus_store_adding_test.moc"
