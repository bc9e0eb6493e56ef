// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "support/quiet_services.h"
#include "support/test_case.h"

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

TaskSnapshot stateOf(const FocusStore &store)
{
    return {store.tasks.value(), store.activeTaskID.value()};
}

/// Undoes everything; how many steps that took.
int undoAll(FocusStore &store)
{
    int count = 0;
    for (; store.canUndo.value(); ++count)
        store.undo();
    return count;
}

/// Redoes everything; how many steps that took.
int redoAll(FocusStore &store)
{
    int count = 0;
    for (; store.canRedo.value(); ++count)
        store.redo();
    return count;
}

} // namespace

class FocusStoreHistoryTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theHistoryStartsEmptyOnEveryLaunch()
    {
        StoreOnFakes s({madeTask(u("a"))});
        s.store.addTask(u("b"), false);
        QVERIFY(s.store.canUndo.value());
        QuietServices quiet;
        FocusStore next(quiet.with(s.preferences, s.clock), {});
        QCOMPARE(next.tasks.value().size(), 2);
        QVERIFY(!next.canUndo.value());
        QVERIFY(!next.canRedo.value());
        next.undo();
        next.redo();
        QCOMPARE(next.tasks.value().size(), 2);
        QCOMPARE(next.sortStatus.value(), QString());
    }

    void after51ChangesFiftyUndosRestoreTheStateAfterTheFirst()
    {
        StoreOnFakes s(TaskList{});
        s.store.addTask(u("1"), false);
        const TaskSnapshot afterFirst = stateOf(s.store);
        for (int i = 2; i <= 51; ++i)
            s.store.addTask(QString::number(i), false);
        for (int i = 0; i < 50; ++i) {
            QVERIFY(s.store.canUndo.value());
            s.store.undo();
        }
        QCOMPARE(stateOf(s.store), afterFirst);
        QVERIFY(!s.store.canUndo.value());
        const int writes = s.preferences.writeCount();
        s.store.undo();
        QCOMPARE(stateOf(s.store), afterFirst);
        QCOMPARE(s.preferences.writeCount(), writes);
    }

    void undoFollowedByANewChangeEmptiesTheRedoStack()
    {
        StoreOnFakes s(TaskList{});
        s.store.addTask(u("a"), false);
        s.store.undo();
        QVERIFY(s.store.canRedo.value());
        s.store.addTask(u("b"), false);
        QVERIFY(!s.store.canRedo.value());
        const QString status = s.store.sortStatus.value();
        s.store.redo();
        QCOMPARE(s.titles(), u("b"));
        QCOMPARE(s.store.sortStatus.value(), status);
    }

    void redoAfterUndoRestoresExactlyTheListAndTheNowTask()
    {
        TaskItem a = madeTask(u("a"));
        a.isExpanded = true;
        StoreOnFakes s({a, madeSubtask(u("a1"), a), madeTask(u("b"))}, a.id);
        const TaskSnapshot before = stateOf(s.store);
        s.clock.advance(1234ms);
        s.store.toggleDone(a);
        const TaskSnapshot after = stateOf(s.store);
        QVERIFY(after.tasks.first().completedAt);
        s.store.undo();
        QCOMPARE(stateOf(s.store), before);
        s.clock.advance(1h);
        s.store.redo();
        QCOMPARE(stateOf(s.store), after);
    }

    void alternatingUndoAndRedoNeverChangesTheCombinedNumberOfEntries()
    {
        StoreOnFakes s(TaskList{});
        for (int i = 0; i < 60; ++i)
            s.store.addTask(QString::number(i), false);
        const TaskSnapshot end = stateOf(s.store);
        QCOMPARE(undoAll(s.store), 50);
        QCOMPARE(redoAll(s.store), 50);
        for (int round = 0; round < 200; ++round) {
            for (int i = 0; i < round % 7; ++i)
                s.store.undo();
            for (int i = 0; i < round % 5; ++i)
                s.store.redo();
        }
        redoAll(s.store);
        QCOMPARE(stateOf(s.store), end);
        QCOMPARE(undoAll(s.store), 50);
        QCOMPARE(redoAll(s.store), 50);
    }

    void undoingADeletionRestoresTheTasksInTheirPlacesAndTheNowTask()
    {
        const TaskItem b = madeTask(u("b"));
        const TaskItem b1 = madeSubtask(u("b1"), b);
        StoreOnFakes s({madeTask(u("a")), b, b1, madeTask(u("c"))}, b1.id);
        const TaskSnapshot before = stateOf(s.store);
        s.store.deleteTask(b);
        QCOMPARE(s.titles(), u("a c"));
        s.store.undo();
        QCOMPARE(stateOf(s.store), before);
        QCOMPARE(s.saved().tasks, before.tasks);
        QCOMPARE(s.saved().activeTaskID, before.activeTaskID);
    }

    void undoAndRedoShowTheActionNameWithTheirSuffix()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a});
        s.store.toggleDone(a);
        s.store.undo();
        QCOMPARE(s.store.sortStatus.value(), u("完了を元に戻しました"));
        s.store.redo();
        QCOMPARE(s.store.sortStatus.value(), u("完了をやり直しました"));
        s.store.undo();
        QCOMPARE(s.store.sortStatus.value(), u("完了を元に戻しました"));
    }

    void onlyTheListAndTheNowTaskAreUndone()
    {
        StoreOnFakes s(TaskList{});
        s.store.addTask(u("a"), false);
        s.store.mediumGoal.set(u("g"));
        s.store.isTodoListHidden.set(true);
        s.store.setWorkDurationMinutes(50);
        s.store.undo();
        QCOMPARE(s.titles(), QString());
        QCOMPARE(s.store.mediumGoal.value(), u("g"));
        QVERIFY(s.store.isTodoListHidden.value());
        QCOMPARE(s.store.workDurationMinutes.value(), 50);
    }

    void aChangeWithoutAnEntryIsUndoneWithTheOneBeforeIt()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a, madeSubtask(u("a1"), a)});
        s.store.updateTaskTitle(a, u("b"));
        s.store.toggleExpanded(a);
        s.store.undo();
        QVERIFY(!s.task(u("a")).isExpanded);
    }

    void aFlashedTextStaysForSixSecondsAfterTheLatestFlash()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a, madeTask(u("b"))});
        s.store.deleteTask(a);
        s.clock.advance(5999ms);
        QCOMPARE(s.store.sortStatus.value(), u("削除しました"));
        s.clock.advance(1ms);
        QCOMPARE(s.store.sortStatus.value(), QString());
        s.store.undo();
        s.clock.advance(4s);
        s.store.redo();
        s.clock.advance(5999ms);
        QCOMPARE(s.store.sortStatus.value(), u("削除をやり直しました"));
        s.clock.advance(1ms);
        QCOMPARE(s.store.sortStatus.value(), QString());
        QCOMPARE(s.clock.pendingCalls(), 0);
    }

    void pendingUndoLivesForSixSecondsAfterADeletion()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a, done(madeTask(u("b")))});
        s.store.deleteTask(a);
        s.clock.advance(5999ms);
        QVERIFY(s.store.pendingUndo.value());
        s.clock.advance(1ms);
        QVERIFY(!s.store.pendingUndo.value());
        s.store.clearCompleted();
        QVERIFY(s.store.pendingUndo.value());
        s.clock.advance(6s);
        QVERIFY(!s.store.pendingUndo.value());
    }

    void pendingUndoIsClearedByTheNextChangeAndByUndoAndRedo()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a, madeTask(u("b"))});
        s.store.deleteTask(a);
        s.store.addTask(u("c"), false);
        QVERIFY(!s.store.pendingUndo.value());
        s.store.deleteTask(s.task(u("c")));
        QVERIFY(s.store.pendingUndo.value());
        s.store.undo();
        QVERIFY(!s.store.pendingUndo.value());
        s.store.redo();
        QVERIFY(!s.store.pendingUndo.value());
    }

    void aSecondDeletionRestartsTheSixSecondsWithItsOwnState()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        StoreOnFakes s({a, b});
        s.store.deleteTask(a);
        s.clock.advance(4s);
        s.store.deleteTask(b);
        s.clock.advance(4s);
        QVERIFY(s.store.pendingUndo.value());
        QCOMPARE(words(s.store.pendingUndo.value()->tasks), u("b"));
        s.clock.advance(2s);
        QVERIFY(!s.store.pendingUndo.value());
    }

    void aDirectlyAssignedStatusIsNotClearedAndPendingUndoKeepsItsOwnSixSeconds()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a});
        s.store.deleteTask(a);
        s.clock.advance(3s);
        s.store.setSortStatus(u("並べ替え中…"));
        s.clock.advance(2999ms);
        QVERIFY(s.store.pendingUndo.value());
        s.clock.advance(1ms);
        QVERIFY(!s.store.pendingUndo.value());
        QCOMPARE(s.store.sortStatus.value(), u("並べ替え中…"));
        s.clock.advance(1h);
        QCOMPARE(s.store.sortStatus.value(), u("並べ替え中…"));
    }

    void theSameTextFlashedAgainStaysForItsFullTime()
    {
        const TaskItem a = madeTask(u("a"));
        const TaskItem b = madeTask(u("b"));
        StoreOnFakes s({a, b});
        s.store.deleteTask(a);
        s.clock.advance(5s);
        s.store.deleteTask(b);
        s.clock.advance(5s);
        QCOMPARE(s.store.sortStatus.value(), u("削除しました"));
    }

    void nothingIsCalledAfterTheStoreHasGone()
    {
        FakePreferences preferences;
        FakeClock clock;
        {
            QuietServices quiet;
            FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
            store.deleteTask(store.tasks.value().first());
            QVERIFY(clock.pendingCalls() > 0);
        }
        QCOMPARE(clock.pendingCalls(), 0);
        clock.advance(10s);
    }

    void aSubscriberMayActOnAnAnnouncementOfTheStore()
    {
        const TaskItem a = madeTask(u("a"));
        StoreOnFakes s({a, madeTask(u("b"))}, a.id);
        const Subscription undoing = s.store.sortStatus.onChange([&s](const QString &text) {
            if (text == u("削除しました"))
                s.store.undo();
        });
        s.store.deleteTask(a);
        QCOMPARE(s.titles(), u("a b"));
        QCOMPARE(s.saved().tasks, s.store.tasks.value());
        s.clock.advance(6s);
        QCOMPARE(s.store.sortStatus.value(), QString());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreHistoryTest)
#include "focus_store_history_test.moc"
