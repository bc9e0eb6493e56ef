// SPDX-License-Identifier: MIT
#include "model/task_history.h"

#include "support/test_case.h"

namespace wrenfold {

namespace {

/// A state that is told apart by a number.
TaskSnapshot state(int number)
{
    TaskItem task;
    task.title = QString::number(number);
    return {{task}, std::nullopt};
}

HistoryEntry change(int before)
{
    return {state(before), QStringLiteral("change %1").arg(before)};
}

} // namespace

class TaskHistoryTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyHistoryHasNothingToUndoOrRedo()
    {
        TaskHistory history;
        QVERIFY(!history.undo(state(0)));
        QVERIFY(!history.redo(state(0)));
        QCOMPARE(history.undoCount(), 0U);
        QCOMPARE(history.redoCount(), 0U);
    }

    void undoGivesTheStateBeforeAndRedoTheStateAfterUnderTheSameName()
    {
        TaskHistory history;
        history.registerChange(change(0));
        const std::optional<HistoryEntry> undone = history.undo(state(1));
        QVERIFY(undone);
        QCOMPARE(undone->snapshot, state(0));
        QCOMPARE(undone->actionName, QStringLiteral("change 0"));
        const std::optional<HistoryEntry> redone = history.redo(state(0));
        QVERIFY(redone);
        QCOMPARE(redone->snapshot, state(1));
        QCOMPARE(redone->actionName, QStringLiteral("change 0"));
    }

    void onlyTheNewest50ChangesAreKept()
    {
        TaskHistory history;
        for (int i = 0; i < 51; ++i)
            history.registerChange(change(i));
        QCOMPARE(history.undoCount(), 50U);
        for (int i = 50; i >= 1; --i)
            QCOMPARE(history.undo(state(i + 1))->snapshot, state(i));
        QVERIFY(!history.undo(state(1)));
        QCOMPARE(history.redoCount(), 50U);
    }

    void aNewChangeForgetsWhatCouldBeRedone()
    {
        TaskHistory history;
        history.registerChange(change(0));
        QVERIFY(history.undo(state(1)));
        history.registerChange(change(0));
        QCOMPARE(history.redoCount(), 0U);
        QVERIFY(!history.redo(state(5)));
        QCOMPARE(history.undoCount(), 1U);
    }

    void snapshotsAreEqualByListAndNowTask()
    {
        TaskSnapshot other = state(1);
        QCOMPARE(other, state(1));
        other.activeTaskID = QUuid::createUuid();
        QVERIFY(other != state(1));
        QVERIFY(state(1) != state(2));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TaskHistoryTest)
#include "task_history_test.moc"
