// SPDX-License-Identifier: MIT
#include "ai/subtask_insertion.h"
#include "model/store_on_fakes.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

const Timestamp now{77};

QStringList list(const char *words)
{
    return QString::fromUtf8(words).split(u' ');
}

} // namespace

class SubtaskInsertionTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theNewTasksStandDirectlyBehindTheTaskAsItsSubtasks()
    {
        const TaskItem a = madeTask(QStringLiteral("a"));
        const TaskItem b = madeTask(QStringLiteral("b"));
        const TaskList split = withSplit({a, b}, list("1 2 3"), a.id, now);
        QCOMPARE(words(split), QStringLiteral("a 1 2 3 b"));
        for (qsizetype i = 1; i <= 3; ++i) {
            QCOMPARE(split[i].parentID, a.id);
            QVERIFY(split[i].isOpen() && !split[i].isExpanded);
            QCOMPARE(split[i].createdAt, now);
            QVERIFY(!split[i].completedAt);
        }
        QCOMPARE((QSet<QUuid>{split[1].id, split[2].id, split[3].id}.size()), 3);
    }

    void theSubtasksThatItHadAreReplacedAndItIsFolded()
    {
        TaskItem a = madeTask(QStringLiteral("a"));
        a.isExpanded = true;
        const TaskList split =
            withSplit({a, madeSubtask(QStringLiteral("old"), a),
                       done(madeSubtask(QStringLiteral("older"), a)), madeTask(QStringLiteral("b"))},
                      list("1 2"), a.id, now);
        QCOMPARE(words(split), QStringLiteral("a 1 2 b"));
        QVERIFY(!split.first().isExpanded);
    }

    void eightTitlesGiveTheFirstSix()
    {
        const TaskItem a = madeTask(QStringLiteral("a"));
        QCOMPARE(words(withSplit({a}, list("1 2 3 4 5 6 7 8"), a.id, now)), QStringLiteral("a 1 2 3 4 5 6"));
    }

    void titlesAreTrimmedAndEmptyOnesDoNotCount()
    {
        const TaskItem a = madeTask(QStringLiteral("a"));
        const QStringList titles = {
            QStringLiteral(" \u3000"), QStringLiteral(" 1\n"), {}, QStringLiteral("\t2")};
        QCOMPARE(words(withSplit({a}, titles, a.id, now)), QStringLiteral("a 1 2"));
    }

    void nothingToInsertChangesNothing()
    {
        TaskItem a = madeTask(QStringLiteral("a"));
        a.isExpanded = true;
        const TaskList tasks = {a, madeSubtask(QStringLiteral("old"), a)};
        QCOMPARE(withSplit(tasks, {}, a.id, now), tasks);
        QCOMPARE(withSplit(tasks, {QStringLiteral(" "), QStringLiteral("\n")}, a.id, now), tasks);
        QCOMPARE(withSplit(tasks, list("1"), QUuid::createUuid(), now), tasks);
    }

    void thoseOfADeferredTaskAreDeferredAndShareItsQuadrant()
    {
        TaskItem a = deferred(madeTask(QStringLiteral("a")));
        a.quadrant = TaskQuadrant::urgentNotImportant;
        const TaskList split = withSplit({a}, list("1"), a.id, now);
        QVERIFY(split[1].isDeferred);
        QCOMPARE(split[1].quadrant, TaskQuadrant::urgentNotImportant);
    }

    void thoseOfASubtaskAreItsSiblingsAndNothingGoes()
    {
        TaskItem a = madeTask(QStringLiteral("a"));
        a.isExpanded = true;
        const TaskItem first = madeSubtask(QStringLiteral("first"), a);
        const TaskItem second = madeSubtask(QStringLiteral("second"), a);
        const TaskList split = withSplit({a, first, second}, list("1 2"), first.id, now);
        QCOMPARE(words(split), QStringLiteral("a first 1 2 second"));
        QCOMPARE(split[2].parentID, a.id);
        QVERIFY(split[0].isExpanded);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::SubtaskInsertionTest)
#include "subtask_insertion_test.moc"
