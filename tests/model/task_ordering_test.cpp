// SPDX-License-Identifier: MIT
#include "model/task_ordering.h"

#include "model/store_on_fakes.h"
#include "support/test_case.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace wrenfold {

namespace {

QString orderedWords(const TaskList &tasks, const QList<QUuid> &ids = {})
{
    return words(TaskOrdering::applyPriorityOrder(tasks, ids));
}

} // namespace

class TaskOrderingTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void orderedIDsEmptySortsOpenNewestFirstThenDoneNewestFirst()
    {
        const TaskItem oldDone = done(madeTask(QStringLiteral("oldDone"), 1));
        const TaskItem newDone = done(madeTask(QStringLiteral("newDone"), 9));
        const TaskItem oldOpen = madeTask(QStringLiteral("oldOpen"), 2);
        const TaskItem newOpen = madeTask(QStringLiteral("newOpen"), 8);
        const TaskItem first = madeSubtask(QStringLiteral("first"), oldOpen);
        const TaskItem second = done(madeSubtask(QStringLiteral("second"), oldOpen));
        const TaskItem third = madeSubtask(QStringLiteral("third"), newDone);
        QCOMPARE(orderedWords({oldDone, first, newDone, third, oldOpen, second, newOpen}),
                 QStringLiteral("newOpen oldOpen first second newDone third oldDone"));
    }

    void orderedIDsNamingOnlySomeOpenTasksPutsTheseFirst()
    {
        const TaskItem a = madeTask(QStringLiteral("a"), 1);
        const TaskItem b = madeTask(QStringLiteral("b"), 2);
        const TaskItem c = madeTask(QStringLiteral("c"), 3);
        const TaskItem d = madeTask(QStringLiteral("d"), 4);
        const TaskItem x = done(madeTask(QStringLiteral("x"), 5));
        const TaskItem y = done(madeTask(QStringLiteral("y"), 6));
        QCOMPARE(orderedWords({x, a, b, c, d, y}, {b.id, a.id}), QStringLiteral("b a d c y x"));
    }

    void aDoneTaskNamedInOrderedIDsStillComesAfterEveryOpenTask()
    {
        const TaskItem a = madeTask(QStringLiteral("a"), 1);
        const TaskItem b = madeTask(QStringLiteral("b"), 2);
        const TaskItem x = done(madeTask(QStringLiteral("x"), 3));
        const TaskItem y = done(madeTask(QStringLiteral("y"), 4));
        QCOMPARE(orderedWords({a, b, x, y}, {x.id, a.id}), QStringLiteral("a b x y"));
    }

    void twoTasksWithTheSameRankAndCreatedAtKeepTheirRelativeOrder()
    {
        TaskList tasks;
        for (int i = 0; i < 40; ++i)
            tasks << madeTask(QString::number(i), 5);
        QCOMPARE(TaskOrdering::applyPriorityOrder(tasks, {}), tasks);
        const TaskItem named = madeTask(QStringLiteral("named"), 1);
        QCOMPARE(TaskOrdering::applyPriorityOrder(tasks + TaskList{named}, {named.id}),
                 TaskList{named} + tasks);
    }

    void theFourTaskSelfCheckKeepsAllFour()
    {
        const TaskItem first = madeTask(QStringLiteral("first"), 1);
        const TaskItem child = madeSubtask(QStringLiteral("child"), first);
        const TaskItem second = madeTask(QStringLiteral("second"), 2);
        const TaskItem complete = done(madeTask(QStringLiteral("complete"), 3));
        QCOMPARE(orderedWords({complete, first, second, child}, {first.id, second.id}),
                 QStringLiteral("first child second complete"));
    }

    void aSubtaskWhoseParentIDNamesNoTaskDisappears()
    {
        const TaskItem a = madeTask(QStringLiteral("a"));
        const TaskItem lost = madeSubtask(QStringLiteral("lost"), madeTask(QStringLiteral("gone")));
        QCOMPARE(orderedWords({lost, a}), QStringLiteral("a"));
    }

    void aSubtaskOfASubtaskDisappears()
    {
        const TaskItem a = madeTask(QStringLiteral("a"));
        const TaskItem b = madeSubtask(QStringLiteral("b"), a);
        QCOMPARE(orderedWords({a, b, madeSubtask(QStringLiteral("c"), b)}), QStringLiteral("a b"));
    }

    void ranksOfSubtasksDoNotMoveThem()
    {
        const TaskItem a = madeTask(QStringLiteral("a"), 1);
        const TaskItem a1 = madeSubtask(QStringLiteral("a1"), a);
        const TaskItem a2 = madeSubtask(QStringLiteral("a2"), a);
        const TaskItem b = madeTask(QStringLiteral("b"), 2);
        QCOMPARE(orderedWords({b, a, a1, a2}, {a2.id, a.id, a1.id, b.id}), QStringLiteral("a a1 a2 b"));
    }

    void deferredTasksGetNoSpecialTreatment()
    {
        const TaskItem a = deferred(madeTask(QStringLiteral("a"), 3));
        const TaskItem b = madeTask(QStringLiteral("b"), 2);
        QCOMPARE(orderedWords({b, a}), QStringLiteral("a b"));
        QCOMPARE(orderedWords({a, b}, {b.id, a.id}), QStringLiteral("b a"));
    }

    void unknownIdentifiersAreHarmless()
    {
        const TaskItem a = madeTask(QStringLiteral("a"), 1);
        const TaskItem b = madeTask(QStringLiteral("b"), 2);
        QCOMPARE(orderedWords({b, a}, {QUuid::createUuid(), a.id, QUuid::createUuid()}),
                 QStringLiteral("a b"));
    }

    void noFieldOfATaskIsChanged()
    {
        const TaskItem a = madeTask(QStringLiteral("a"), 1);
        const TaskItem b = deferred(done(madeTask(QStringLiteral("b"), 2)));
        QCOMPARE(TaskOrdering::applyPriorityOrder({b, a}, {}), (TaskList{a, b}));
    }

    void anEmptyListStaysEmpty()
    {
        QCOMPARE(TaskOrdering::applyPriorityOrder({}, {QUuid::createUuid()}), TaskList());
    }

    void aRepeatedIdentifierEndsTheProgram()
    {
        const TaskItem a = madeTask(QStringLiteral("a"));
        const pid_t child = ::fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            const rlimit noCore = {0, 0};
            ::setrlimit(RLIMIT_CORE, &noCore);
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
            std::signal(SIGABRT, SIG_DFL);
            const TaskList unreached = TaskOrdering::applyPriorityOrder({a}, {a.id, a.id});
            ::_exit(int(unreached.size()));
        }
        int status = 0;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QVERIFY(WIFSIGNALED(status));
        QCOMPARE(WTERMSIG(status), SIGABRT);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TaskOrderingTest)
#include "task_ordering_test.moc"
