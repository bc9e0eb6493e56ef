// SPDX-License-Identifier: MIT
#include "support/test_case.h"
#include "views/panel_in_window.h"
#include "views/row_list_view.h"

#include <QScrollBar>

namespace wrenfold {

namespace {

using Kind = PanelRow::Kind;

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");
const QString subtaskHelp = QStringLiteral("サブタスクを手動追加");

/// Opens the subtask composer of the task by the button of its row.
bool open(PanelInWindow &panel, const QString &title)
{
    return panel.clickIn(panel.row(title), subtaskHelp);
}

} // namespace

/// The field under a task in which a subtask is typed.
class FocusPanelSubtasksTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aSubtaskComposerIsNeverOpenInAFoldedList()
    {
        PanelInWindow panel({madeTask(QStringLiteral("a"))});
        panel.store.setActive(panel.fakes.task(QStringLiteral("a")));
        QVERIFY(panel.show());
        panel.store.isTodoListHidden.set(true);
        QVERIFY(click(panel.nowCard(), QStringLiteral("サブタスクを追加")));
        QVERIFY(!panel.store.isTodoListHidden.value());
        QVERIFY(panel.subtaskField() && panel.subtaskField()->hasFocus());
        panel.store.isTodoListHidden.set(true);
        QCOMPARE(panel.store.subtaskComposerParentID.value(), std::nullopt);
    }

    void theButtonOpensTheFieldWithTheCaretInIt()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        QVERIFY(!panel.subtaskField());
        QVERIFY(open(panel, a));
        QVERIFY(panel.subtaskField() && panel.subtaskField()->hasFocus());
    }

    void theInsertKeyOpensItToo()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        panel.row(a)->setFocus(Qt::TabFocusReason);
        panel.press(Qt::Key_Insert);
        QVERIFY(panel.subtaskField()->hasFocus());
    }

    void returnAddsTheSubtaskAndGivesTheFocusBack()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        QVERIFY(open(panel, a));
        type(panel.subtaskField(), awkward());
        panel.press(Qt::Key_Return);
        QCOMPARE(panel.fakes.task(awkward()).parentID, panel.fakes.task(a).id);
        QVERIFY(panel.row(awkward()));
        QVERIFY(!panel.subtaskField());
        QCOMPARE(panel.focused(), a);
    }

    void escapeClosesItAndGivesTheFocusBack()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        QVERIFY(open(panel, a));
        type(panel.subtaskField(), c);
        panel.press(Qt::Key_Escape);
        QVERIFY(!panel.subtaskField());
        QVERIFY(!panel.store.subtaskComposerParentID.value());
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a b"));
        QCOMPARE(panel.focused(), a);
    }

    void openedForAnotherTaskItAddsWhatIsTypedFirst()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        QVERIFY(open(panel, a));
        type(panel.subtaskField(), c);
        QVERIFY(open(panel, b));
        QCOMPARE(panel.store.subtaskComposerParentID.value(), panel.fakes.task(b).id);
        QCOMPARE(panel.subtaskField()->text(), QString());
        QVERIFY(panel.subtaskField()->hasFocus());
        QCOMPARE(panel.fakes.task(c).parentID, panel.fakes.task(a).id);
    }

    void theMainFieldClosesItAndKeepsWhatIsTyped()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        QVERIFY(open(panel, a));
        type(panel.subtaskField(), c);
        panel.composer()->setFocus();
        QVERIFY(!panel.subtaskField());
        QCOMPARE(panel.fakes.task(c).parentID, panel.fakes.task(a).id);
        // What is typed there is a task of its own.
        type(panel.composer(), QStringLiteral("d"));
        panel.press(Qt::Key_Return);
        QVERIFY(panel.fakes.task(QStringLiteral("d")).isTopLevel());
    }

    void theMainFieldClosesAnEmptyOneToo()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        QVERIFY(open(panel, a));
        panel.store.requestTodoInput();
        QVERIFY(!panel.subtaskField());
        QCOMPARE(panel.fakes.titles(), a);
    }

    void askedForAgainTheOpenFieldGetsTheCaretBack()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        QVERIFY(open(panel, a));
        panel.row(b)->setFocus(Qt::MouseFocusReason);
        QVERIFY(panel.subtaskField());
        QVERIFY(open(panel, a));
        QVERIFY(panel.subtaskField()->hasFocus());
    }

    void itClosesWhenItsParentLeavesTheOpenList_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("done") << 0;
        QTest::newRow("deferred") << 1;
        QTest::newRow("deleted") << 2;
    }

    void itClosesWhenItsParentLeavesTheOpenList()
    {
        QFETCH(int, way);
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        QVERIFY(open(panel, a));
        QVERIFY(panel.subtaskField());
        type(panel.subtaskField(), c);
        const TaskItem parent = panel.fakes.task(a);
        if (way == 0)
            panel.store.toggleDone(parent);
        else if (way == 1)
            panel.store.deferTask(parent, TaskQuadrant::urgentImportant);
        else
            panel.store.deleteTask(parent);
        QVERIFY(!panel.subtaskField());
        QVERIFY(!panel.store.subtaskComposerParentID.value());
        // What is typed above is a task of its own again.
        type(panel.composer(), QStringLiteral("d"));
        QTest::keyClick(panel.composer(), Qt::Key_Return);
        QVERIFY(!panel.fakes.task(QStringLiteral("d")).parentID);
    }

    void whileItIsOpenTheListStaysWhereItWasScrolledTo()
    {
        TaskList tasks;
        for (int i = 1; i <= 100; ++i)
            tasks.append(madeTask(QString::number(i)));
        PanelInWindow panel(tasks);
        QVERIFY(panel.show());
        QVERIFY(open(panel, QStringLiteral("2")));
        QVERIFY(panel.subtaskField());
        QScrollBar *bar = panel.window.findChild<RowListView *>()->verticalScrollBar();
        bar->setValue(1500);
        QVERIFY(panel.clickIn(panel.row(QStringLiteral("50")), QStringLiteral("NOWにピン留め")));
        QCoreApplication::processEvents();
        QCOMPARE(panel.fakes.now(), QStringLiteral("50"));
        QCOMPARE(bar->value(), 1500);
        QVERIFY(panel.store.subtaskComposerParentID.value());
    }

    void openedForATaskOutOfSightItIsScrolledIntoSight()
    {
        TaskList tasks;
        for (int i = 1; i <= 100; ++i)
            tasks.append(madeTask(QString::number(i)));
        PanelInWindow panel(tasks);
        QVERIFY(panel.show());
        panel.store.beginAddSubtask(panel.fakes.task(QStringLiteral("90")));
        TextField *field = panel.subtaskField();
        QVERIFY(field && field->hasFocus());
        const auto *list = panel.window.findChild<RowListView *>();
        QVERIFY(list->viewport()->rect().contains(
            QRect(field->mapTo(list->viewport(), QPoint()), field->size())));
    }

    void underACompletedParentItOpensAmongTheCompleted()
    {
        const TaskItem parent = madeTask(a);
        const TaskItem now = madeSubtask(b, parent);
        PanelInWindow panel({done(parent), now}, now.id);
        QVERIFY(panel.show());
        QVERIFY(click(panel.nowCard(), QStringLiteral("サブタスクを追加")));
        QVERIFY(panel.subtaskField() && panel.subtaskField()->hasFocus());
        type(panel.subtaskField(), c);
        panel.press(Qt::Key_Return);
        QCOMPARE(panel.fakes.task(c).parentID, parent.id);
        QVERIFY(!panel.subtaskField());
    }

    void forASubtaskItOpensUnderTheParent()
    {
        TaskItem parent = madeTask(a);
        parent.isExpanded = true;
        PanelInWindow panel({parent, madeSubtask(b, parent), madeTask(c)});
        QVERIFY(panel.show());
        QVERIFY(open(panel, b));
        type(panel.subtaskField(), QStringLiteral("d"));
        panel.press(Qt::Key_Return);
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a b d c"));
        QCOMPARE(panel.focused(), a);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::FocusPanelSubtasksTest)
#include "focus_panel_subtasks_test.moc"
