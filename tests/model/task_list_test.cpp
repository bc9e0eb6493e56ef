// SPDX-License-Identifier: MIT
#include "model/task_list.h"

#include "model/store_on_fakes.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

/// a (a1, a2), b deferred, c done (c1), d
struct SampleList
{
    TaskItem a = madeTask(QStringLiteral("a"));
    TaskItem a1 = madeSubtask(QStringLiteral("a1"), a);
    TaskItem a2 = madeSubtask(QStringLiteral("a2"), a);
    TaskItem b = deferred(madeTask(QStringLiteral("b")));
    TaskItem c = done(madeTask(QStringLiteral("c")));
    TaskItem c1 = madeSubtask(QStringLiteral("c1"), c);
    TaskItem d = madeTask(QStringLiteral("d"));

    [[nodiscard]] TaskList list() const { return {a, a1, a2, b, c, c1, d}; }
};

} // namespace

class TaskListTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void anOpenTasksNeighbourIsTheNextOpenTopLevelOne()
    {
        const TaskItem a = madeTask(QStringLiteral("a"));
        const TaskItem b = madeTask(QStringLiteral("b"));
        const TaskItem later = deferred(madeTask(QStringLiteral("later")));
        const TaskItem child = madeSubtask(QStringLiteral("child"), a);
        const TaskList tasks = {a, child, done(madeTask(QStringLiteral("done"))), later, b};
        QCOMPARE(openNeighbour(tasks, a.id, 1), b.id);
        QCOMPARE(openNeighbour(tasks, b.id, -1), a.id);
        QCOMPARE(openNeighbour(tasks, a.id, -1), std::nullopt);
        QCOMPARE(openNeighbour(tasks, b.id, 1), std::nullopt);
        for (const TaskItem &other : {child, later})
            QCOMPARE(openNeighbour(tasks, other.id, 1), std::nullopt);
    }

    void aTaskIsFoundByItsIdentifier()
    {
        const SampleList s;
        const TaskList list = s.list();
        QCOMPARE(indexOfTask(list, s.b.id), 3);
        QCOMPARE(findTask(list, s.b.id)->title, QStringLiteral("b"));
        QCOMPARE(indexOfTask(list, QUuid::createUuid()), -1);
        QVERIFY(!findTask(list, QUuid::createUuid()));
    }

    void theNextOpenTaskIsTheFirstBehindTheIndexElseTheFirstFromTheStart_data()
    {
        QTest::addColumn<QString>("list"); // A capital letter is an open task.
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("next");
        QTest::newRow("behind") << "ABC" << 0 << "B";
        QTest::newRow("skips others") << "AbcD" << 0 << "D";
        QTest::newRow("wraps around") << "aBc" << 2 << "B";
        QTest::newRow("wraps to itself") << "abC" << 2 << "C";
        QTest::newRow("before the start") << "AB" << -1 << "A";
        QTest::newRow("far before the start") << "AB" << -5 << "A";
        QTest::newRow("behind the end") << "aBc" << 9 << "B";
        QTest::newRow("none open") << "abc" << 1 << "";
        QTest::newRow("empty list") << "" << 0 << "";
    }

    void theNextOpenTaskIsTheFirstBehindTheIndexElseTheFirstFromTheStart()
    {
        QFETCH(QString, list);
        QFETCH(int, index);
        QFETCH(QString, next);
        TaskList tasks;
        for (const QChar letter : list) {
            const TaskItem task = madeTask(letter);
            const bool isDone = tasks.size() % 2 == 0; // Done and deferred tasks are passed over alike.
            tasks << (letter.isUpper() ? task : isDone ? done(task) : deferred(task));
        }
        const std::optional<QUuid> id = nextOpenTaskID(tasks, index);
        QCOMPARE(id ? findTask(tasks, *id)->title : QString(), next);
    }

    void subtasksCountAsNextOpenTasks()
    {
        const SampleList s;
        QCOMPARE(nextOpenTaskID(s.list(), 0), std::optional(s.a1.id));
    }

    void theSelectionsComeBackInListOrder()
    {
        const SampleList s;
        QCOMPARE(words(topLevelTasks(s.list())), QStringLiteral("a b c d"));
        QCOMPARE(words(childTasks(s.list(), s.a.id)), QStringLiteral("a1 a2"));
        QCOMPARE(words(childTasks(s.list(), s.d.id)), QString());
        QCOMPARE(words(completedTasks(s.list())), QStringLiteral("c"));
        QCOMPARE(words(deferredTasks(s.list())), QStringLiteral("b"));
        QCOMPARE(openTaskCount(s.list()), 5);
    }

    void aTaskBothDoneAndDeferredIsCompletedNotDeferred()
    {
        const TaskList list = {deferred(done(madeTask(QStringLiteral("a"))))};
        QCOMPARE(completedTasks(list).size(), 1);
        QCOMPARE(deferredTasks(list).size(), 0);
        QCOMPARE(openTaskCount(list), 0);
    }

    void visibleTasksShowExpandedSubtasksThatAreNotDeferred()
    {
        SampleList s;
        QCOMPARE(words(visibleTasks(s.list())), QStringLiteral("a d"));
        s.a.isExpanded = true;
        s.c.isExpanded = true;
        QCOMPARE(words(visibleTasks(s.list())), QStringLiteral("a a1 a2 d"));
        s.a1.isDeferred = true;
        QCOMPARE(words(visibleTasks(s.list())), QStringLiteral("a a2 d"));
        s.a2 = done(s.a2);
        QCOMPARE(words(visibleTasks(s.list())), QStringLiteral("a a2 d"));
    }

    void visibleSubtasksFollowTheirParentWhereverTheyStand()
    {
        SampleList s;
        s.a.isExpanded = true;
        QCOMPARE(words(visibleTasks({s.a2, s.a, s.d, s.a1})), QStringLiteral("a a2 a1 d"));
    }

    void completedTasksAreCountedFromTheGivenMomentOn()
    {
        const auto completedAt = [](double moment) {
            TaskItem task = done(madeTask(QStringLiteral("x")));
            task.completedAt = Timestamp{moment};
            return task;
        };
        TaskItem withoutTime = done(madeTask(QStringLiteral("y")));
        withoutTime.completedAt.reset();
        TaskItem reopened = madeTask(QStringLiteral("z"));
        reopened.completedAt = Timestamp{200};
        const TaskList list = {completedAt(99.999), completedAt(100), completedAt(101), withoutTime,
                               reopened};
        QCOMPARE(completedCountSince(list, {100}), 2);
    }

    void aFamilyIsATaskWithItsSubtasks()
    {
        const SampleList s;
        QCOMPARE(family(s.list(), s.a.id), (QSet<QUuid>{s.a.id, s.a1.id, s.a2.id}));
        QCOMPARE(family(s.list(), s.a1.id), QSet<QUuid>{s.a1.id});
    }

    void theParentForNewSubtasksIsTopLevel()
    {
        const SampleList s;
        const TaskList list = s.list();
        QCOMPARE(subtaskParent(list, s.a.id)->title, QStringLiteral("a"));
        QCOMPARE(subtaskParent(list, s.a2.id)->title, QStringLiteral("a"));
        QVERIFY(!subtaskParent(list, QUuid::createUuid()));
    }

    void aNewSubtaskStandsBehindItsParentsLastSubtask()
    {
        const SampleList s;
        const TaskList list = withSubtask(s.list(), madeSubtask(QStringLiteral("new"), s.a));
        QCOMPARE(words(list), QStringLiteral("a a1 a2 new b c c1 d"));
        QVERIFY(list.first().isExpanded);
    }

    void aNewSubtaskStandsBehindItsParentWhenThatHasNone()
    {
        const SampleList s;
        QCOMPARE(words(withSubtask(s.list(), madeSubtask(QStringLiteral("new"), s.b))),
                 QStringLiteral("a a1 a2 b new c c1 d"));
        QCOMPARE(words(withSubtask(s.list(), madeSubtask(QStringLiteral("new"), s.d))),
                 QStringLiteral("a a1 a2 b c c1 d new"));
    }

    void aNewSubtaskStandsBehindTheLastOneThatAMoveHasPartedFromItsParent()
    {
        const SampleList s;
        QCOMPARE(words(withSubtask({s.a, s.d, s.a1, s.b}, madeSubtask(QStringLiteral("new"), s.a))),
                 QStringLiteral("a d a1 new b"));
    }

    void withoutCompletedLosesNoOpenTask()
    {
        const SampleList s;
        const TaskList kept = withoutCompleted(s.list());
        QCOMPARE(words(kept), QStringLiteral("a a1 a2 b c1 d"));
        QVERIFY(findTask(kept, s.c1.id)->isTopLevel());
        QCOMPARE(findTask(kept, s.a1.id)->parentID, std::optional(s.a.id));
    }

    void aDeferredSubtaskOfARemovedParentBecomesTopLevelToo()
    {
        SampleList s;
        s.c1.isDeferred = true;
        const TaskList kept = withoutCompleted(s.list());
        QVERIFY(findTask(kept, s.c1.id)->isTopLevel());
        QVERIFY(findTask(kept, s.c1.id)->isDeferred);
    }

    void aBlockMovesBeforeOrBehindTheTargetsRow()
    {
        const SampleList s;
        QCOMPARE(words(withTaskMoved(s.list(), s.d.id, s.a.id, false)), QStringLiteral("d a a1 a2 b c c1"));
        QCOMPARE(words(withTaskMoved(s.list(), s.d.id, s.a.id, true)), QStringLiteral("a d a1 a2 b c c1"));
        QCOMPARE(words(withTaskMoved(s.list(), s.a.id, s.d.id, true)), QStringLiteral("b c c1 d a a1 a2"));
        QCOMPARE(words(withTaskMoved(s.list(), s.a.id, s.c.id, false)), QStringLiteral("b a a1 a2 c c1 d"));
    }

    void aScatteredBlockIsGatheredInItsOrder()
    {
        const SampleList s;
        QCOMPARE(words(withTaskMoved({s.a1, s.d, s.a, s.c, s.a2}, s.a.id, s.c.id, true)),
                 QStringLiteral("d c a1 a a2"));
    }

    void aRepairedListHasUniqueIdentifiersAndKeepsEveryTask()
    {
        const SampleList s;
        TaskItem copy = s.d;
        copy.title = QStringLiteral("copy");
        const TaskList list = repaired({s.d, copy, s.a, s.a1, copy});
        QCOMPARE(words(list), QStringLiteral("d copy a a1 copy"));
        QCOMPARE(list.at(0), s.d);
        QSet<QUuid> ids;
        for (const TaskItem &task : list)
            ids.insert(task.id);
        QCOMPARE(ids.size(), 5);
        QCOMPARE(list.at(3).parentID, std::optional(s.a.id));
    }

    void aTaskWhoseParentIsMissingIsRepairedToTopLevel()
    {
        const SampleList s;
        QVERIFY(repaired({s.a1, s.d}).first().isTopLevel());
    }

    void aTaskWhoseParentIsASubtaskIsRepairedToTopLevel()
    {
        const SampleList s;
        const TaskItem second = madeSubtask(QStringLiteral("second"), s.a1);
        const TaskList list = repaired({s.a, s.a1, second});
        QVERIFY(list.at(2).isTopLevel());
        QVERIFY(!list.at(1).isTopLevel());
    }

    void circlesOfParentsAreRepaired()
    {
        TaskItem own = madeTask(QStringLiteral("own"));
        own.parentID = own.id;
        TaskItem x = madeTask(QStringLiteral("x"));
        TaskItem y = madeSubtask(QStringLiteral("y"), x);
        x.parentID = y.id;
        for (const TaskItem &task : repaired({own, x, y}))
            QVERIFY(task.isTopLevel());
    }

    void aParentMayStandBehindItsSubtask()
    {
        const SampleList s;
        QCOMPARE(repaired({s.a1, s.a}), (TaskList{s.a1, s.a}));
    }

    void aSoundListIsNotChangedByRepairing()
    {
        const TaskList list = SampleList().list();
        QCOMPARE(repaired(list), list);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TaskListTest)
#include "task_list_test.moc"
