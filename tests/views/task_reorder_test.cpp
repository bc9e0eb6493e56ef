// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "support/test_case.h"
#include "views/task_reorder.h"

namespace wrenfold {

namespace {

const TaskItem a = madeTask(QStringLiteral("a"));
const TaskItem b = madeTask(QStringLiteral("b"));
const TaskItem c = madeTask(QStringLiteral("c"));

/// Three rows of 20 from 10 on; b has two more for its subtasks.
QList<ReorderRow> rows()
{
    return {{a.id, false, 10, 30},
            {b.id, false, 30, 50},
            {b.id, true, 50, 60},
            {b.id, true, 60, 70},
            {c.id, false, 70, 90}};
}

QString nameOf(const QUuid &id)
{
    return id == a.id ? QStringLiteral("a") : id == b.id ? QStringLiteral("b") : QStringLiteral("c");
}

} // namespace

class TaskReorderTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aboveTheMiddleOfARowIsBeforeItAndBelowIsBehind_data()
    {
        QTest::addColumn<QUuid>("moving");
        QTest::addColumn<int>("y");
        QTest::addColumn<QString>("expected");
        QTest::newRow("upper half") << c.id << 15 << "before a";
        QTest::newRow("first pixel of the lower half") << c.id << 20 << "behind a";
        QTest::newRow("last pixel of the upper half") << c.id << 19 << "before a";
        QTest::newRow("upper half of a row with subtasks") << c.id << 39 << "before b";
        QTest::newRow("lower half of a row with subtasks is where it is") << c.id << 40 << "-";
        QTest::newRow("a's end from a subtask") << a.id << 55 << "behind b";
        QTest::newRow("a's end from the last subtask's upper half") << a.id << 61 << "behind b";
        QTest::newRow("upper half of the next") << a.id << 31 << "-";
        QTest::newRow("lower half of the next") << a.id << 45 << "behind b";
        QTest::newRow("upper half of the last") << a.id << 71 << "before c";
        QTest::newRow("above all") << c.id << -500 << "before a";
        QTest::newRow("below all") << a.id << 5000 << "behind c";
        QTest::newRow("above all, first already") << a.id << 0 << "-";
        QTest::newRow("below all, last already") << c.id << 95 << "-";
        QTest::newRow("over itself") << a.id << 12 << "-";
        QTest::newRow("over a subtask of its own") << b.id << 65 << "-";
        QTest::newRow("the block of b up") << b.id << 11 << "before a";
        QTest::newRow("the block of b down") << b.id << 85 << "behind c";
        QTest::newRow("upper half of what stands behind b") << b.id << 75 << "-";
    }

    void aboveTheMiddleOfARowIsBeforeItAndBelowIsBehind()
    {
        QFETCH(QUuid, moving);
        QFETCH(int, y);
        const std::optional<ReorderMove> move = reorderMove(rows(), moving, y);
        const QString text = !move              ? QStringLiteral("-")
                             : move->placeAfter ? QStringLiteral("behind ") + nameOf(move->targetID)
                                                : QStringLiteral("before ") + nameOf(move->targetID);
        QTEST(text, "expected");
    }

    void betweenNoRowsNothingMoves() { QCOMPARE(reorderMove({}, a.id, 10), std::nullopt); }

    void theRowsOfADragAreTheOpenTasksWithTheirSubtasks()
    {
        TaskItem parent = a;
        parent.isExpanded = true;
        const TaskItem subtask = madeSubtask(QStringLiteral("a1"), a);
        const TaskItem later = deferred(madeTask(QStringLiteral("later")));
        const TaskItem ended = done(madeTask(QStringLiteral("ended")));
        const TaskItem left = madeSubtask(QStringLiteral("left"), ended);
        const TaskItem orphan = madeSubtask(QStringLiteral("orphan"), later);
        const QList<PanelRow> all = panelRows({.tasks = {parent, subtask, orphan, b, later, ended, left},
                                               .subtaskComposerParentID = b.id,
                                               .isCompletedSectionExpanded = true});
        QStringList texts;
        for (const ReorderRow &row : reorderRows(all))
            texts << nameOf(row.taskID) + (row.isBelowTask ? QStringLiteral("+") : QString());
        QCOMPARE(texts, QStringList({QStringLiteral("a"), QStringLiteral("a+"), QStringLiteral("b"),
                                     QStringLiteral("b+")}));
        QCOMPARE(reorderRows(all).first().top, all.first().height());
    }

    void nearTheEdgesTheListScrollsFasterTheNearer()
    {
        constexpr int height = 200;
        QCOMPARE(autoScrollStep(100, height), 0);
        QCOMPARE(autoScrollStep(28, height), 0);
        QCOMPARE(autoScrollStep(172, height), 0);
        QVERIFY(autoScrollStep(20, height) < 0);
        QVERIFY(autoScrollStep(2, height) < autoScrollStep(20, height));
        QVERIFY(autoScrollStep(180, height) > 0);
        QVERIFY(autoScrollStep(198, height) > autoScrollStep(180, height));
        QCOMPARE(autoScrollStep(-3000, height), -autoScrollStep(3000, height));
        QCOMPARE(autoScrollStep(3000, height), 9);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TaskReorderTest)
#include "task_reorder_test.moc"
