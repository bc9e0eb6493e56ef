// SPDX-License-Identifier: MIT
#include "look/theme.h"
#include "model/store_on_fakes.h"
#include "support/test_case.h"
#include "views/panel_rows.h"

#include <QSet>

namespace wrenfold {

namespace {

using Kind = PanelRow::Kind;

TaskItem task(const char *title)
{
    return madeTask(QString::fromUtf8(title));
}

TaskItem subtask(const char *title, const TaskItem &parent)
{
    return madeSubtask(QString::fromUtf8(title), parent);
}

TaskItem expanded(TaskItem task)
{
    task.isExpanded = true;
    return task;
}

/// The row in a short form: kind, what it shows, its number or count.
QString shortForm(const PanelRow &row)
{
    const QString title = row.task.title;
    switch (row.kind) {
    case Kind::InboxHeader:
        return QStringLiteral("INBOX %1").arg(row.count);
    case Kind::InboxCandidate:
        return QStringLiteral("? ") + row.inboxItem.text;
    case Kind::TodoHeader:
        return QStringLiteral("TODO %1").arg(row.count);
    case Kind::EmptyState:
        return QStringLiteral("empty");
    case Kind::Task:
        return row.isSubtask
                   ? QStringLiteral("- %1 %2/%3").arg(title).arg(row.subtaskNumber).arg(row.subtaskTotal)
                   : title;
    case Kind::SubtaskComposer:
        return QStringLiteral("+ under ") + title;
    case Kind::DeferredHeader:
        return QStringLiteral("LATER %1").arg(row.count);
    case Kind::DeferredTask:
        return QStringLiteral("later ") + title;
    case Kind::CompletedHeader:
        return QStringLiteral("DONE %1").arg(row.count);
    case Kind::CompletedTask:
        return QStringLiteral("done ") + title;
    case Kind::BoardTask:
        return QStringLiteral("board ") + title;
    }
    return {};
}

QString shortForms(const PanelRowsInput &input)
{
    QStringList forms;
    for (const PanelRow &row : panelRows(input))
        forms.append(shortForm(row));
    return forms.join(QStringLiteral(", "));
}

PanelRow rowOf(const PanelRowsInput &input, const TaskItem &task, Kind kind = Kind::Task)
{
    for (const PanelRow &row : panelRows(input)) {
        if (row.kind == kind && row.task.id == task.id)
            return row;
    }
    QTest::qFail(qPrintable(QStringLiteral("no row for ") + task.title), __FILE__, __LINE__);
    return {};
}

PanelRow emptyState(const TaskList &tasks)
{
    const QList<PanelRow> rows = panelRows({.tasks = tasks});
    return rows.value(1);
}

const QString noneYet = QStringLiteral("TODOはまだありません");
const QString noneNow = QStringLiteral("今やるTODOはありません");
const QString addAbove = QStringLiteral("上の入力欄からTODOを追加できます");
const QString restoreBelow = QStringLiteral("下の「あとでやる」からTODOへ戻せます");

} // namespace

class PanelRowsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void candidatesStandAboveTheTasks()
    {
        InboxItem a;
        a.id = QStringLiteral("a.json");
        a.text = QStringLiteral("a");
        InboxItem b = a;
        b.id = QStringLiteral("b.json");
        b.text = QStringLiteral("b");
        PanelRowsInput input = {.tasks = {madeTask(QStringLiteral("t"))}};
        QCOMPARE(shortForms(input), QStringLiteral("TODO 1, t"));
        input.inboxItems = {a, b};
        QCOMPARE(shortForms(input), QStringLiteral("INBOX 2, ? a, ? b, TODO 1, t"));
        const QList<PanelRow> rows = panelRows(input);
        QVERIFY(!(rows[1].identity() == rows[2].identity()));
        QVERIFY(rows[0].takesFocus() && rows[1].takesFocus());
    }

    void openTasksStandInTheListsOrder()
    {
        QCOMPARE(shortForms({.tasks = {task("b"), task("a"), task("c")}}), QStringLiteral("TODO 3, b, a, c"));
    }

    void anExpandedParentIsFollowedByItsNumberedSubtasks()
    {
        const TaskItem parent = expanded(task("p"));
        const TaskList tasks = {parent, subtask("a", parent), task("x"), done(subtask("b", parent))};
        QCOMPARE(shortForms({.tasks = tasks}), QStringLiteral("TODO 3, p, - a 1/2, - b 2/2, x, DONE 1"));
        const PanelRow row = rowOf({.tasks = tasks}, parent);
        QVERIFY(row.isExpanded);
        QCOMPARE(row.childCount, 2);
    }

    void aFoldedParentHidesItsSubtasksButCountsThem()
    {
        const TaskItem parent = task("p");
        const PanelRowsInput input = {.tasks = {parent, subtask("a", parent)}};
        QCOMPARE(shortForms(input), QStringLiteral("TODO 2, p"));
        QVERIFY(!rowOf(input, parent).isExpanded);
        QCOMPARE(rowOf(input, parent).childCount, 1);
    }

    void aTaskWithoutSubtasksIsNotExpanded()
    {
        const TaskItem task = expanded(wrenfold::task("a"));
        QVERIFY(!rowOf({.tasks = {task}}, task).isExpanded);
    }

    void onlyTheTaskInHandIsActive()
    {
        const TaskItem parent = expanded(task("p"));
        const TaskItem child = subtask("a", parent);
        const PanelRowsInput input = {.tasks = {parent, child}, .activeTaskID = child.id};
        QVERIFY(!rowOf(input, parent).isActive);
        QVERIFY(rowOf(input, child).isActive);
    }

    void theComposerStandsBehindTheLastSubtask()
    {
        const TaskItem parent = expanded(task("p"));
        const TaskItem other = task("x");
        const TaskList tasks = {parent, subtask("a", parent), other};
        QCOMPARE(shortForms({.tasks = tasks, .subtaskComposerParentID = parent.id}),
                 QStringLiteral("TODO 3, p, - a 1/1, + under p, x"));
        QCOMPARE(shortForms({.tasks = tasks, .subtaskComposerParentID = other.id}),
                 QStringLiteral("TODO 3, p, - a 1/1, x, + under x"));
    }

    void theComposerStandsBehindAFoldedParent()
    {
        const TaskItem parent = task("p");
        QCOMPARE(shortForms({.tasks = {parent, subtask("a", parent), task("x")},
                             .subtaskComposerParentID = parent.id}),
                 QStringLiteral("TODO 3, p, + under p, x"));
    }

    void thereIsNoComposerForATaskThatIsNotOpen()
    {
        const TaskItem later = deferred(task("a"));
        const TaskItem over = done(task("b"));
        QCOMPARE(shortForms({.tasks = {later, over}, .subtaskComposerParentID = later.id}),
                 QStringLiteral("TODO 0, empty, LATER 1, later a, DONE 1"));
        QCOMPARE(shortForms({.tasks = {later, over}, .subtaskComposerParentID = over.id}),
                 QStringLiteral("TODO 0, empty, LATER 1, later a, DONE 1"));
    }

    void anEmptyListHasNoTasksYet()
    {
        QCOMPARE(shortForms({}), QStringLiteral("TODO 0, empty"));
        QCOMPARE(emptyState({}).title, noneYet);
        QCOMPARE(emptyState({}).hint, addAbove);
    }

    void withOnlyCompletedTasksThereIsNothingToDoNow()
    {
        QCOMPARE(emptyState({done(task("a"))}).title, noneNow);
        QCOMPARE(emptyState({done(task("a"))}).hint, addAbove);
    }

    void withDeferredTasksTheHintPointsAtThem()
    {
        QCOMPARE(emptyState({deferred(task("a"))}).title, noneNow);
        QCOMPARE(emptyState({deferred(task("a"))}).hint, restoreBelow);
        QCOMPARE(emptyState({done(task("b")), deferred(task("a"))}).hint, restoreBelow);
        QCOMPARE(emptyState({done(deferred(task("a")))}).hint, addAbove);
    }

    void thereIsNoEmptyStateBesideAnOpenTask()
    {
        QCOMPARE(shortForms({.tasks = {task("a"), deferred(task("b"))}}),
                 QStringLiteral("TODO 1, a, LATER 1, later b"));
    }

    void aDeferredParentSpeaksForItsSubtasks()
    {
        const TaskItem parent = deferred(task("p"));
        const PanelRowsInput input = {
            .tasks = {parent, deferred(subtask("a", parent)), deferred(subtask("b", parent))}};
        QCOMPARE(shortForms(input), QStringLiteral("TODO 0, empty, LATER 1, later p"));
        QCOMPARE(rowOf(input, parent, Kind::DeferredTask).childCount, 2);
    }

    void aDeferredSubtaskOfAnOpenParentHasARowOfItsOwn()
    {
        const TaskItem parent = expanded(task("p"));
        QCOMPARE(shortForms({.tasks = {parent, deferred(subtask("a", parent)), subtask("b", parent)}}),
                 QStringLiteral("TODO 2, p, - b 2/2, LATER 1, later a"));
    }

    void aDeferredSubtaskOfACompletedParentHasARowOfItsOwn()
    {
        const TaskItem parent = done(deferred(task("p")));
        QCOMPARE(shortForms({.tasks = {parent, deferred(subtask("a", parent))}}),
                 QStringLiteral("TODO 0, empty, LATER 1, later a, DONE 1"));
    }

    void completedTasksAreListedWhereverTheyStood()
    {
        const TaskItem parent = task("p");
        QCOMPARE(shortForms({.tasks = {done(task("a")), parent, done(subtask("b", parent)),
                                       done(deferred(task("c")))},
                             .isCompletedSectionExpanded = true}),
                 QStringLiteral("TODO 1, p, DONE 3, done a, done b, done c"));
    }

    void anOpenSubtaskOfACompletedParentIsShownUnderIt()
    {
        const TaskItem parent = done(task("p"));
        const TaskList tasks = {parent, done(subtask("a", parent)), subtask("b", parent), done(task("c"))};
        QCOMPARE(shortForms({.tasks = tasks, .isCompletedSectionExpanded = true}),
                 QStringLiteral("TODO 0, empty, DONE 3, done p, - b 2/2, done a, done c"));
        QCOMPARE(shortForms({.tasks = tasks}), QStringLiteral("TODO 0, empty, DONE 3"));
    }

    void theReorderKeyIsHintedOnWhatCanBeDragged()
    {
        const TaskItem parent = expanded(task("p"));
        const TaskItem child = subtask("a", parent);
        const TaskItem later = deferred(task("l"));
        PanelRowsInput input = {.tasks = {parent, child, later, done(task("d"))},
                                .isReorderKeyPressed = true};
        QVERIFY(rowOf(input, parent).isReorderHinted);
        QVERIFY(!rowOf(input, child).isReorderHinted);
        QVERIFY(!rowOf(input, later, Kind::DeferredTask).isReorderHinted);
        input.isReorderKeyPressed = false;
        QVERIFY(!rowOf(input, parent).isReorderHinted);
    }

    void theWholeBlockIsMarkedAsDragged()
    {
        const TaskItem parent = expanded(task("p"));
        const TaskItem child = subtask("a", parent);
        const TaskItem other = task("b");
        const PanelRowsInput input = {.tasks = {parent, child, other}, .draggingTaskID = parent.id};
        QVERIFY(rowOf(input, parent).isDragging);
        QVERIFY(rowOf(input, child).isDragging);
        QVERIFY(!rowOf(input, other).isDragging);
    }

    void aFoldedSectionShowsOnlyItsHeaderWithTheCount()
    {
        const TaskList tasks = {deferred(task("a")), deferred(task("b")), done(task("c"))};
        QCOMPARE(shortForms({.tasks = tasks, .isDeferredSectionExpanded = false}),
                 QStringLiteral("TODO 0, empty, LATER 2, DONE 1"));
        QCOMPARE(shortForms({.tasks = tasks, .isCompletedSectionExpanded = true}),
                 QStringLiteral("TODO 0, empty, LATER 2, later a, later b, DONE 1, done c"));
    }

    void aHeaderSaysWhetherItsSectionIsShown()
    {
        const TaskList tasks = {deferred(task("a")), done(task("c"))};
        const QList<PanelRow> rows = panelRows({.tasks = tasks});
        QVERIFY(rows.at(2).kind == Kind::DeferredHeader && rows.at(2).isExpanded);
        QVERIFY(rows.at(4).kind == Kind::CompletedHeader && !rows.at(4).isExpanded);
    }

    void noTwoRowsHaveTheSameIdentity()
    {
        const TaskItem parent = expanded(task("p"));
        const PanelRowsInput input = {.tasks = {parent, done(subtask("a", parent)),
                                                deferred(subtask("b", parent)), deferred(task("c")),
                                                done(task("d"))},
                                      .subtaskComposerParentID = parent.id,
                                      .isCompletedSectionExpanded = true};
        QSet<PanelRow::Identity> identities;
        const QList<PanelRow> rows = panelRows(input);
        for (const PanelRow &row : rows)
            identities.insert(row.identity());
        QCOMPARE(identities.size(), rows.size());
    }

    void aRowKeepsItsIdentityWhenItsTaskChanges()
    {
        TaskItem task = wrenfold::task("a");
        const PanelRow before = rowOf({.tasks = {task}}, task);
        task.title = QStringLiteral("b");
        const PanelRow after = rowOf({.tasks = {task}, .activeTaskID = task.id}, task);
        QVERIFY(before != after);
        QCOMPARE(before.identity(), after.identity());
    }

    void rowsThatCanBeActedOnTakeTheFocus()
    {
        const TaskItem parent = expanded(task("p"));
        const QList<PanelRow> rows =
            panelRows({.tasks = {parent, subtask("a", parent), deferred(task("c")), done(task("d"))},
                       .subtaskComposerParentID = parent.id,
                       .isCompletedSectionExpanded = true});
        for (const PanelRow &row : rows)
            QCOMPARE(row.takesFocus(), row.kind != Kind::TodoHeader);
        QVERIFY(!panelRows({}).at(1).takesFocus());
    }

    void everyRowIsHighEnoughToBeHit()
    {
        const TaskItem parent = expanded(task("p"));
        const QList<PanelRow> rows =
            panelRows({.tasks = {parent, subtask("a", parent), deferred(task("c")), done(task("d"))},
                       .subtaskComposerParentID = parent.id,
                       .isCompletedSectionExpanded = true});
        for (const PanelRow &row : rows)
            QVERIFY(row.height() >= Metrics::checkHitSize);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::PanelRowsTest)
#include "panel_rows_test.moc"
