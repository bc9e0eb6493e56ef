// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

/// a (a1, a2), b deferred, c, d done
struct Sample
{
    TaskItem a = madeTask(u("a"), 4);
    TaskItem a1 = madeSubtask(u("a1"), a);
    TaskItem a2 = madeSubtask(u("a2"), a);
    TaskItem b = deferred(madeTask(u("b"), 3));
    TaskItem c = madeTask(u("c"), 2);
    TaskItem d = done(madeTask(u("d"), 1));
    StoreOnFakes s{TaskList{a, a1, a2, b, c, d}, a.id};
};

} // namespace

/// The priority order, the move and the drag as the store does them.
class FocusStoreOrderTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void thePriorityOrderIsOneUndoStepAndLeavesNowAlone()
    {
        Sample sample;
        StoreOnFakes &s = sample.s;
        s.store.applyPriorityOrder({sample.c.id});
        QCOMPARE(s.titles(), u("c a a1 a2 b d"));
        QCOMPARE(s.now(), u("a"));
        QCOMPARE(s.undoName(), u("優先順に並べ替え"));
        QCOMPARE(s.saved().tasks, s.store.tasks.value());
        s.store.undo();
        QCOMPARE(s.titles(), u("a a1 a2 b c d"));
        QVERIFY(!s.store.canUndo.value());
    }

    void aPriorityOrderThatChangesNothingRegistersAndSavesNothing()
    {
        Sample sample;
        sample.s.store.applyPriorityOrder({sample.a.id});
        QVERIFY(!sample.s.store.canUndo.value());
        QCOMPARE(sample.s.preferences.writeCount(), 0);
    }

    void repeatedIdentifiersCountByTheirFirstPlace()
    {
        Sample sample;
        sample.s.store.applyPriorityOrder({sample.c.id, sample.a.id, sample.c.id, sample.a.id});
        QCOMPARE(sample.s.titles(), u("c a a1 a2 b d"));
    }

    void unknownIdentifiersDoNoHarm()
    {
        Sample sample;
        sample.s.store.applyPriorityOrder({QUuid::createUuid(), sample.c.id, QUuid()});
        QCOMPARE(sample.s.titles(), u("c a a1 a2 b d"));
    }

    void noSortLosesATask()
    {
        // Sorted in every state that loading repairs.
        const TaskItem a = madeTask(u("a"), 1);
        const TaskItem a1 = madeSubtask(u("a1"), a);
        const TaskItem lost = madeSubtask(u("lost"), madeTask(u("gone")));
        const TaskItem second = madeSubtask(u("second"), a1);
        StoreOnFakes s({lost, second, a, a1, a1, done(madeTask(u("x")))});
        s.store.applyPriorityOrder({a.id});
        QCOMPARE(s.store.tasks.value().size(), 6);
        QCOMPARE(s.titles(), u("a a1 a1 lost second x"));
    }

    void moveTaskThatIsNotAllowedChangesAndSavesNothing_data()
    {
        QTest::addColumn<QString>("moving");
        QTest::addColumn<QString>("target");
        QTest::newRow("equal") << u("a") << u("a");
        QTest::newRow("moving a subtask") << u("a1") << u("c");
        QTest::newRow("moving a deferred task") << u("b") << u("c");
        QTest::newRow("onto a subtask") << u("c") << u("a1");
        QTest::newRow("onto a deferred task") << u("c") << u("b");
        QTest::newRow("onto an own subtask") << u("a") << u("a1");
        QTest::newRow("moving an unknown task") << QString() << u("c");
        QTest::newRow("onto an unknown task") << u("c") << QString();
    }

    void moveTaskThatIsNotAllowedChangesAndSavesNothing()
    {
        QFETCH(QString, moving);
        QFETCH(QString, target);
        Sample sample;
        StoreOnFakes &s = sample.s;
        const auto id = [&s](const QString &title) {
            return title.isEmpty() ? QUuid::createUuid() : s.task(title).id;
        };
        s.store.moveTask(id(moving), id(target), true);
        s.store.moveTask(id(moving), id(target), false);
        QCOMPARE(s.titles(), u("a a1 a2 b c d"));
        QCOMPARE(s.preferences.writeCount(), 0);
        QVERIFY(!s.store.canUndo.value());
    }

    void movingAParentWithTwoSubtasksMovesAllThreeAsOneBlock()
    {
        Sample sample;
        StoreOnFakes &s = sample.s;
        s.store.moveTask(sample.a.id, sample.d.id, false);
        QCOMPARE(s.titles(), u("b c a a1 a2 d"));
        QVERIFY(!s.store.canUndo.value());
        QCOMPARE(s.saved().tasks, s.store.tasks.value());
    }

    void movingAfterATargetWithSubtasksPutsTheBlockBetweenThem()
    {
        Sample sample;
        sample.s.store.moveTask(sample.c.id, sample.a.id, true);
        QCOMPARE(sample.s.titles(), u("a c a1 a2 b d"));
    }

    void movingAfterTheLastTaskAppendsAtTheEnd()
    {
        Sample sample;
        sample.s.store.moveTask(sample.a.id, sample.d.id, true);
        QCOMPARE(sample.s.titles(), u("b c d a a1 a2"));
    }

    void doneAndOpenTasksMoveFreely()
    {
        Sample sample;
        sample.s.store.moveTask(sample.d.id, sample.a.id, false);
        QCOMPARE(sample.s.titles(), u("d a a1 a2 b c"));
    }

    void beginTwiceThenEndMakesOneEntryThatRestoresTheFirst()
    {
        Sample sample;
        StoreOnFakes &s = sample.s;
        s.store.beginTaskReorder();
        s.store.moveTask(sample.c.id, sample.a.id, false);
        s.store.beginTaskReorder();
        s.store.moveTask(sample.d.id, sample.a.id, false);
        s.store.endTaskReorder();
        QCOMPARE(s.titles(), u("c d a a1 a2 b"));
        QCOMPARE(s.undoName(), u("並べ替え"));
        s.store.undo();
        QCOMPARE(s.titles(), u("a a1 a2 b c d"));
        QVERIFY(!s.store.canUndo.value());
        s.store.redo();
        QCOMPARE(s.titles(), u("c d a a1 a2 b"));
    }

    void aDragThatEndsWhereItStartedRegistersNoEntry()
    {
        Sample sample;
        StoreOnFakes &s = sample.s;
        s.store.beginTaskReorder();
        s.store.moveTask(sample.d.id, sample.c.id, false);
        s.store.moveTask(sample.d.id, sample.c.id, true);
        s.store.endTaskReorder();
        QCOMPARE(s.titles(), u("a a1 a2 b c d"));
        QVERIFY(!s.store.canUndo.value());
    }

    void cancelAfterSeveralMovesRestoresOrderAndNowTask()
    {
        Sample sample;
        StoreOnFakes &s = sample.s;
        s.store.beginTaskReorder();
        s.store.moveTask(sample.c.id, sample.a.id, false);
        s.store.moveTask(sample.d.id, sample.a.id, true);
        s.store.setActive(sample.c);
        s.store.cancelTaskReorder();
        QCOMPARE(s.titles(), u("a a1 a2 b c d"));
        QCOMPARE(s.now(), u("a"));
        QCOMPARE(s.saved().tasks, s.store.tasks.value());
        QCOMPARE(s.saved().activeTaskID, std::optional(sample.a.id));
    }

    void cancelKeepsATaskAddedDuringTheDrag()
    {
        const TaskItem a = madeTask(QStringLiteral("a"));
        const TaskItem b = madeTask(QStringLiteral("b"));
        const TaskItem c = madeTask(QStringLiteral("c"));
        StoreOnFakes s({a, b, c}, a.id);
        s.store.beginTaskReorder();
        s.store.moveTask(c.id, a.id, false);
        s.store.addTask(QStringLiteral("new"), false);
        s.store.deleteTask(b);
        s.store.cancelTaskReorder();
        QCOMPARE(s.titles(), QStringLiteral("a new c"));
        QCOMPARE(s.now(), QStringLiteral("a"));
    }

    void cancelMakesNoEntry()
    {
        Sample sample;
        sample.s.store.beginTaskReorder();
        sample.s.store.moveTask(sample.c.id, sample.a.id, false);
        sample.s.store.cancelTaskReorder();
        QVERIFY(!sample.s.store.canUndo.value());
    }

    void endOrCancelWithoutABeginDoesNothing()
    {
        Sample sample;
        StoreOnFakes &s = sample.s;
        s.store.moveTask(sample.c.id, sample.a.id, false);
        const int writes = s.preferences.writeCount();
        s.store.endTaskReorder();
        s.store.cancelTaskReorder();
        QCOMPARE(s.titles(), u("c a a1 a2 b d"));
        QVERIFY(!s.store.canUndo.value());
        QCOMPARE(s.preferences.writeCount(), writes);
    }

    void anEndedDragIsNotCancelledAfterwards()
    {
        Sample sample;
        StoreOnFakes &s = sample.s;
        s.store.beginTaskReorder();
        s.store.moveTask(sample.c.id, sample.a.id, false);
        s.store.endTaskReorder();
        s.store.cancelTaskReorder();
        QCOMPARE(s.titles(), u("c a a1 a2 b d"));
    }

    void undoDuringADragWaitsForItsEnd()
    {
        Sample sample;
        StoreOnFakes &s = sample.s;
        s.store.deleteTask(sample.b);
        s.store.beginTaskReorder();
        s.store.moveTask(sample.d.id, sample.a.id, false);
        s.store.undo();
        QCoreApplication::processEvents();
        QCOMPARE(s.titles(), u("d a a1 a2 c"));
        s.store.endTaskReorder();
        QCoreApplication::processEvents();
        QCOMPARE(s.titles(), u("a a1 a2 c d"));
        QCOMPARE(s.store.sortStatus.value(), u("並べ替えを元に戻しました"));
    }

    void redoDuringADragWaitsForItsCancellation()
    {
        Sample sample;
        StoreOnFakes &s = sample.s;
        s.store.deleteTask(sample.b);
        s.store.undo();
        s.store.beginTaskReorder();
        s.store.moveTask(sample.d.id, sample.a.id, false);
        s.store.redo();
        QCoreApplication::processEvents();
        QCOMPARE(s.titles(), u("d a a1 a2 b c"));
        s.store.cancelTaskReorder();
        QCoreApplication::processEvents();
        QCOMPARE(s.titles(), u("a a1 a2 c d"));
    }

    void whatWaitedForADragWaitsForTheNextOneToo()
    {
        Sample sample;
        StoreOnFakes &s = sample.s;
        s.store.deleteTask(sample.b);
        s.store.beginTaskReorder();
        s.store.undo();
        s.store.cancelTaskReorder();
        s.store.beginTaskReorder();
        QCoreApplication::processEvents();
        QCOMPARE(s.titles(), u("a a1 a2 c d"));
        s.store.cancelTaskReorder();
        QCoreApplication::processEvents();
        QCOMPARE(s.titles(), u("a a1 a2 b c d"));
    }

    void aMoveThatFollowsUndoKeepsWhatCanBeRedone()
    {
        Sample sample;
        StoreOnFakes &s = sample.s;
        s.store.toggleDone(sample.c);
        s.store.undo();
        s.store.moveTask(sample.c.id, sample.a.id, false);
        QVERIFY(s.store.canRedo.value());
        s.store.beginTaskReorder();
        s.store.moveTask(sample.d.id, sample.a.id, false);
        s.store.endTaskReorder();
        QVERIFY(!s.store.canRedo.value());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreOrderTest)
#include "focus_store_order_test.moc"
