// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "support/test_case.h"

#include <QTimeZone>

namespace wrenfold {

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

/// Operations on single tasks, clearing, and what is derived from the list.
class FocusStoreTasksTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void completingATaskNotesTheMomentAndReopeningForgetsIt()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a});
        s.store.toggleDone(a);
        QVERIFY(s.task(u("a")).isDone);
        QCOMPARE(s.task(u("a")).completedAt, std::optional(Timestamp::fromDateTime(s.clock.now())));
        QCOMPARE(s.undoName(), u("完了"));
        s.store.toggleDone(a); // The record handed in is out of date; its identifier counts.
        QVERIFY(!s.task(u("a")).isDone);
        QCOMPARE(s.task(u("a")).completedAt, std::nullopt);
        QCOMPARE(s.undoName(), u("未完了に戻す"));
    }

    void completingTheLastOpenTaskLeavesNoNowTask()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({done(madeTask(u("x"))), a, deferred(madeTask(u("y")))}, a.id);
        s.store.toggleDone(a);
        QCOMPARE(s.store.activeTaskID.value(), std::nullopt);
    }

    void completingTheNowTaskAtTheEndOfTheListWrapsAround()
    {
        const TaskItem c = madeTask(u("c"));
        StoreOnFakes s({done(madeTask(u("x"))), madeTask(u("a")), madeTask(u("b")), c}, c.id);
        s.store.toggleDone(c);
        QCOMPARE(s.now(), u("a"));
    }

    void completingTheNowTaskWhenOnlyItsSubtaskIsOpenMakesThatNow()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a, madeSubtask(u("a1"), a)}, a.id);
        s.store.toggleDone(a);
        QCOMPARE(s.now(), u("a1"));
    }

    void completingAnotherTaskLeavesNowAlone()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        StoreOnFakes s({a, b}, a.id);
        s.store.toggleDone(b);
        s.store.toggleDone(b);
        QCOMPARE(s.now(), u("a"));
    }

    void setActiveMakesAnOpenTaskNow()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        StoreOnFakes s({a, b}, a.id);
        s.store.setActive(b);
        QCOMPARE(s.now(), u("b"));
        QCOMPARE(s.undoName(), u("NOWを変更"));
    }

    void setActiveOnADoneTaskRegistersNothingAndChangesNothing()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = done(madeTask(u("b")));
        const TaskItem c = deferred(madeTask(u("c")));
        StoreOnFakes s({a, b, c}, a.id);
        for (const TaskItem &task : {b, c, a, madeTask(u("x"))})
            s.store.setActive(task);
        QCOMPARE(s.now(), u("a"));
        QVERIFY(!s.store.canUndo.value());
        QCOMPARE(s.preferences.writeCount(), 0);
    }

    void onlyATaskWithSubtasksExpandsAndNoUndoEntryIsMade()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem a1 = madeSubtask(u("a1"), a);
        StoreOnFakes s({a, a1, madeTask(u("b"))});
        s.store.toggleExpanded(a);
        QVERIFY(s.task(u("a")).isExpanded);
        s.store.toggleExpanded(a);
        QVERIFY(!s.task(u("a")).isExpanded);
        s.store.toggleExpanded(s.task(u("b")));
        s.store.toggleExpanded(a1);
        s.store.toggleExpanded(madeTask(u("x")));
        QVERIFY(!s.task(u("b")).isExpanded);
        QVERIFY(!s.task(u("a1")).isExpanded);
        QVERIFY(!s.store.canUndo.value());
    }

    void aTitleIsChangedUnlessTheNewOneIsEmpty()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a});
        s.store.updateTaskTitle(a, u("\u3000\n"));
        s.store.updateTaskTitle(madeTask(u("x")), u("y"));
        QVERIFY(!s.store.canUndo.value());
        s.store.updateTaskTitle(a, u(" b "));
        QCOMPARE(s.titles(), u("b"));
        QCOMPARE(s.undoName(), u("名前を変更"));
    }

    void deletingTakesTheSubtasksAlongAndNotesTheStateBefore()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        const TaskList before = {a, madeSubtask(u("a1"), a), b, madeSubtask(u("a2"), a)};
        StoreOnFakes s(before, b.id);
        s.store.deleteTask(a);
        QCOMPARE(s.titles(), u("b"));
        QCOMPARE(s.store.sortStatus.value(), u("削除しました"));
        QCOMPARE(s.store.pendingUndo.value(), std::optional(DeletionSnapshot{before, b.id}));
        QCOMPARE(s.now(), u("b"));
        QCOMPARE(s.undoName(), u("削除"));
    }

    void deletingTheNowTaskMovesNowToTheTaskInTheFreedPlace_data()
    {
        QTest::addColumn<QString>("deleted");
        QTest::addColumn<QString>("now");
        QTest::addColumn<QString>("expected");
        QTest::newRow("the first") << u("a") << u("a") << u("b");
        QTest::newRow("skips others") << u("b") << u("b") << u("d");
        QTest::newRow("the last wraps around") << u("d") << u("d") << u("a");
        QTest::newRow("NOW is a subtask that goes along") << u("a") << u("a1") << u("b");
        QTest::newRow("another task") << u("a") << u("d") << u("d");
        QTest::newRow("one subtask") << u("a1") << u("a1") << u("a2");
    }

    void deletingTheNowTaskMovesNowToTheTaskInTheFreedPlace()
    {
        QFETCH(QString, deleted);
        QFETCH(QString, now);
        const TaskItem a = madeTask(u("a"));
        const TaskList tasks = {a,
                                madeSubtask(u("a1"), a),
                                madeSubtask(u("a2"), a),
                                madeTask(u("b")),
                                done(madeTask(u("c"))),
                                madeTask(u("d"))};
        StoreOnFakes s(tasks);
        s.store.setActive(s.task(now));
        s.store.deleteTask(s.task(deleted));
        QTEST(s.now(), "expected");
    }

    void deletingAParentBehindItsSubtaskStartsTheSearchAtTheFreedPlaceToo()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({madeSubtask(u("a1"), a), madeTask(u("x")), a, madeTask(u("b")), madeTask(u("c"))},
                       a.id);
        s.store.deleteTask(a);
        QCOMPARE(s.now(), u("b"));
    }

    void deferringTakesTheSubtasksAlong()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a, madeSubtask(u("a1"), a), madeTask(u("b"))}, a.id);
        s.store.deferTask(a, TaskQuadrant::urgentImportant);
        for (const auto *title : {"a", "a1"}) {
            QVERIFY(s.task(u(title)).isDeferred);
            QCOMPARE(s.task(u(title)).quadrant, TaskQuadrant::urgentImportant);
        }
        QVERIFY(!s.task(u("b")).isDeferred);
        QCOMPARE(s.now(), u("b"));
        QCOMPARE(s.store.sortStatus.value(), u("あとでやるへ移動しました"));
        QCOMPARE(s.undoName(), u("あとでやるに移動"));
    }

    void deferringTheParentOfTheNowTaskMovesNow()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem a1 = madeSubtask(u("a1"), a);
        StoreOnFakes s({madeTask(u("x")), a, a1, madeTask(u("b"))}, a1.id);
        s.store.deferTask(a, TaskQuadrant::urgentImportant);
        QCOMPARE(s.now(), u("b"));
    }

    void deferringAgainIntoAnotherQuadrantMovesTheTask()
    {
        const TaskItem a = deferred(madeTask(u("a")));
        StoreOnFakes s({a});
        s.store.deferTask(a, TaskQuadrant::notUrgentNotImportant);
        s.store.deferTask(madeTask(u("x")), TaskQuadrant::urgentImportant);
        QVERIFY(!s.store.canUndo.value());
        QCOMPARE(s.store.sortStatus.value(), QString());
        s.store.deferTask(a, TaskQuadrant::urgentNotImportant);
        QCOMPARE(s.task(u("a")).quadrant, TaskQuadrant::urgentNotImportant);
    }

    void restoringTakesTheSubtasksAlongAndKeepsTheQuadrant()
    {
        TaskItem a = deferred(madeTask(u("a")));
        a.quadrant = TaskQuadrant::importantNotUrgent;
        StoreOnFakes s({a, deferred(madeSubtask(u("a1"), a)), deferred(madeTask(u("b")))});
        s.store.restoreDeferredTask(a);
        QVERIFY(!s.task(u("a")).isDeferred);
        QVERIFY(!s.task(u("a1")).isDeferred);
        QVERIFY(s.task(u("b")).isDeferred);
        QCOMPARE(s.task(u("a")).quadrant, TaskQuadrant::importantNotUrgent);
        QCOMPARE(s.store.sortStatus.value(), u("TODOに戻しました"));
        QCOMPARE(s.undoName(), u("TODOに戻す"));
    }

    void restoringWhatIsNotDeferredChangesNothing()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a});
        s.store.restoreDeferredTask(a);
        s.store.restoreDeferredTask(madeTask(u("x")));
        QVERIFY(!s.store.canUndo.value());
        QCOMPARE(s.store.sortStatus.value(), QString());
    }

    void settingAQuadrantTakesTheSubtasksAlongAndShowsItsLabel_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("status");
        QTest::newRow("0") << 0 << u("緊急 × 重要へ移動しました");
        QTest::newRow("1") << 1 << u("重要 × 緊急ではないへ移動しました");
        QTest::newRow("2") << 2 << u("緊急 × 重要ではないへ移動しました");
        QTest::newRow("3") << 3 << u("緊急でも重要でもないへ移動しました");
    }

    void settingAQuadrantTakesTheSubtasksAlongAndShowsItsLabel()
    {
        QFETCH(int, index);
        QFETCH(QString, status);
        const TaskQuadrant quadrant = allQuadrants[std::size_t(index)];
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a, madeSubtask(u("a1"), a), madeTask(u("b"))});
        s.store.setQuadrant(quadrant, a);
        QCOMPARE(s.task(u("a")).quadrant, quadrant);
        QCOMPARE(s.task(u("a1")).quadrant, quadrant);
        QCOMPARE(s.task(u("b")).quadrant, TaskQuadrant::notUrgentNotImportant);
        QVERIFY(!s.task(u("a")).isDeferred);
        QCOMPARE(s.store.sortStatus.value(), status);
        QCOMPARE(s.undoName(), u("4象限を変更"));
    }

    void settingTheQuadrantOfAnUnknownTaskChangesNothing()
    {
        StoreOnFakes s({madeTask(u("a"))});
        s.store.setQuadrant(TaskQuadrant::urgentImportant, madeTask(u("x")));
        QVERIFY(!s.store.canUndo.value());
        QCOMPARE(s.store.sortStatus.value(), QString());
    }

    void clearingRemovesExactlyTheDoneTasksAndLosesNoOpenOne()
    {
        const TaskItem a = done(madeTask(u("a")));
        const TaskItem b = madeTask(u("b"));
        const TaskList before = {a, madeSubtask(u("a1"), a),       done(madeSubtask(u("a2"), a)),
                                 b, done(madeSubtask(u("b1"), b)), deferred(madeTask(u("c")))};
        StoreOnFakes s(before, b.id);
        s.store.clearCompleted();
        QCOMPARE(s.titles(), u("a1 b c"));
        QVERIFY(s.task(u("a1")).isTopLevel());
        QCOMPARE(s.store.sortStatus.value(), u("3件を削除しました"));
        QCOMPARE(s.store.pendingUndo.value(), std::optional(DeletionSnapshot{before, b.id}));
        QCOMPARE(s.now(), u("b"));
        QCOMPARE(s.undoName(), u("完了済みを削除"));
    }

    void clearingWithNothingDoneChangesNothing()
    {
        StoreOnFakes s({madeTask(u("a"))});
        s.store.clearCompleted();
        QVERIFY(!s.store.canUndo.value());
        QCOMPARE(s.store.sortStatus.value(), QString());
        QCOMPARE(s.store.pendingUndo.value(), std::nullopt);
    }

    void a19CharacterNowTitleShowsAs16AndAnEllipsisAnd18CharactersWhole()
    {
        const TaskItem a = madeTask(u("1234567890123456789"));
        StoreOnFakes s({a}, a.id);
        QCOMPARE(s.store.statusBarNowTitle(), u("1234567890123456…"));
        s.store.updateTaskTitle(a, u("123456789012345678"));
        QCOMPARE(s.store.statusBarNowTitle(), u("123456789012345678"));
        s.store.toggleDone(a);
        QCOMPARE(s.store.statusBarNowTitle(), QString());
    }

    void completedTodayCountDoesNotCountATaskCompletedYesterdayAt2359_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::newRow("east") << QByteArray("Asia/Tokyo");
        QTest::newRow("west") << QByteArray("America/Los_Angeles");
        QTest::newRow("half an hour") << QByteArray("Asia/Kolkata");
    }

    void completedTodayCountDoesNotCountATaskCompletedYesterdayAt2359()
    {
        QFETCH(QByteArray, zone);
        const QTimeZone timeZone(zone);
        const QDate today(2026, 3, 2);
        StoreOnFakes s({madeTask(u("a")), madeTask(u("b")), madeTask(u("c"))});
        const auto completeAt = [&](const char *title, const QDateTime &moment) {
            s.clock.setNow(moment);
            s.store.toggleDone(s.task(u(title)));
        };
        completeAt("a", QDateTime(today.addDays(-1), QTime(23, 59, 59, 999), timeZone));
        QCOMPARE(s.store.completedTodayCount(), 1);
        completeAt("b", QDateTime(today, QTime(0, 0), timeZone));
        QCOMPARE(s.store.completedTodayCount(), 1);
        completeAt("c", QDateTime(today, QTime(23, 59, 59), timeZone));
        QCOMPARE(s.store.completedTodayCount(), 2);
        s.clock.setNow(QDateTime(today.addDays(1), QTime(0, 0), timeZone));
        QCOMPARE(s.store.completedTodayCount(), 0);
    }

    void aDayWithoutMidnightBeginsAtItsFirstMoment()
    {
        const QTimeZone timeZone("America/Sao_Paulo"); // On this day the clock went from 0:00 to 1:00.
        StoreOnFakes s({madeTask(u("a")), madeTask(u("b"))});
        s.clock.setNow(QDateTime(QDate(2018, 11, 3), QTime(23, 59), timeZone));
        s.store.toggleDone(s.task(u("a")));
        s.clock.setNow(QDateTime(QDate(2018, 11, 4), QTime(1, 0), timeZone));
        s.store.toggleDone(s.task(u("b")));
        QCOMPARE(s.store.completedTodayCount(), 1);
    }

    void theDerivedListsFollowTheList()
    {
        TaskItem a = madeTask(u("a"));
        a.isExpanded = true;
        StoreOnFakes s({a, madeSubtask(u("a1"), a), done(madeTask(u("b"))), deferred(madeTask(u("c")))},
                       a.id);
        QCOMPARE(words(s.store.topLevelTasks()), u("a b c"));
        QCOMPARE(words(s.store.childTasks(a.id)), u("a1"));
        QCOMPARE(words(s.store.visibleTasks()), u("a a1"));
        QCOMPARE(words(s.store.completedTasks()), u("b"));
        QCOMPARE(words(s.store.deferredTasks()), u("c"));
        QCOMPARE(s.store.openTaskCount(), 2);
    }

    void aRecordOfTheListItselfMayBeHandedToAnyOperation()
    {
        const TaskItem a = done(madeTask(u("a")));
        StoreOnFakes s({a, madeSubtask(u("a1"), a)});
        const auto first = [&s]() -> const TaskItem & { return s.store.tasks.value().first(); };
        s.store.toggleDone(first());
        s.store.setActive(first());
        s.store.toggleDone(first());
        QCOMPARE(s.now(), u("a1"));
        s.store.toggleExpanded(first());
        s.store.updateTaskTitle(first(), first().title + u("!"));
        s.store.beginAddSubtask(first());
        s.store.addSubtask(first().id, first().title);
        s.store.deferTask(first(), TaskQuadrant::urgentImportant);
        s.store.restoreDeferredTask(first());
        s.store.setQuadrant(TaskQuadrant::importantNotUrgent, first());
        s.store.addTask(first().title, false, first().id);
        s.store.addTask(u("z"), false);
        s.store.moveTask(s.store.tasks.value().last().id, first().id, false);
        s.store.deleteTask(first());
        s.store.deleteTask(first());
        QCOMPARE(s.titles(), QString());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreTasksTest)
#include "focus_store_tasks_test.moc"
