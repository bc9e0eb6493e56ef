// SPDX-License-Identifier: MIT
#include "look/count_badge.h"
#include "support/painted_text.h"
#include "support/test_case.h"
#include "views/panel_header.h"
#include "views/panel_in_window.h"
#include "views/status_line.h"

namespace wrenfold {

namespace {

using Kind = PanelRow::Kind;
using namespace std::chrono_literals;

const QString doneHelp = QStringLiteral("完了");
const QString restoreHelp = QStringLiteral("未完了に戻す");
const QString pinHelp = QStringLiteral("NOWにピン留め");
const QString pinnedHelp = QStringLiteral("NOWにピン留め中");
const QString deleteHelp = QStringLiteral("削除（元に戻せます）");
const QString subtaskHelp = QStringLiteral("サブタスクを手動追加");
const QString cardSubtaskHelp = QStringLiteral("サブタスクを追加");
const QString undoText = QStringLiteral("元に戻す");

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");

int badge(const PanelInWindow &panel)
{
    return panel.window.findChild<CountBadge *>()->count();
}

} // namespace

/// Each control calls its operation: by mouse.
class FocusPanelViewTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theRowsControlsCallTheirOperations()
    {
        PanelInWindow panel({madeTask(a), madeTask(b), madeTask(c)});
        QVERIFY(panel.show());
        QVERIFY(panel.clickIn(panel.row(b), pinHelp));
        QCOMPARE(panel.fakes.now(), b);
        QTest::mouseClick(labelSaying(*panel.row(c), c), Qt::LeftButton);
        QCOMPARE(panel.fakes.now(), c);
        QVERIFY(panel.clickIn(panel.row(a), doneHelp));
        QVERIFY(panel.fakes.task(a).isDone);
        QVERIFY(panel.clickIn(panel.row(b), deleteHelp));
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a c"));
        QVERIFY(!panel.row(b));
    }

    void theActiveRowsPinReadsPinnedAndTheOthersPin()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        panel.store.setActive(panel.fakes.task(b));
        QVERIFY(buttonNamed(*panel.row(b), pinnedHelp));
        enter(*panel.row(a));
        QVERIFY(buttonNamed(*panel.row(a), pinHelp));
        QVERIFY(!buttonNamed(*panel.row(a), pinnedHelp));
    }

    void theChevronFoldsAndUnfolds()
    {
        const TaskItem parent = madeTask(a);
        PanelInWindow panel({parent, madeSubtask(b, parent)});
        QVERIFY(panel.show());
        QVERIFY(!panel.row(b));
        QVERIFY(panel.clickIn(panel.row(a), QStringLiteral("サブタスクを表示")));
        QVERIFY(panel.row(b));
        QVERIFY(panel.fakes.task(a).isExpanded);
        QVERIFY(panel.clickIn(panel.row(a), QStringLiteral("サブタスクを閉じる")));
        QVERIFY(!panel.row(b));
    }

    void aTaskIsDeferredFromItsMenuAndRestored()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        QVERIFY(chooseFromMenu(*panel.row(a), QStringLiteral("緊急 × 重要ではない")));
        QVERIFY(panel.fakes.task(a).isDeferred);
        QCOMPARE(panel.fakes.task(a).quadrant, TaskQuadrant::urgentNotImportant);
        QVERIFY(!panel.row(a));
        QVERIFY(chooseFromMenu(*panel.row(a, Kind::DeferredTask), QStringLiteral("緊急 × 重要")));
        QCOMPARE(panel.fakes.task(a).quadrant, TaskQuadrant::urgentImportant);
        QVERIFY(panel.clickIn(panel.row(a, Kind::DeferredTask), QStringLiteral("TODOに戻す")));
        QVERIFY(!panel.fakes.task(a).isDeferred);
        QVERIFY(panel.row(a));
    }

    void theDeferredRowsControlsCallTheirOperations()
    {
        PanelInWindow panel({deferred(madeTask(a)), deferred(madeTask(b))});
        QVERIFY(panel.show());
        QVERIFY(panel.clickIn(panel.row(a, Kind::DeferredTask), doneHelp));
        QVERIFY(panel.fakes.task(a).isDone);
        QVERIFY(panel.clickIn(panel.row(b, Kind::DeferredTask), deleteHelp));
        QCOMPARE(panel.fakes.titles(), a);
    }

    void theSectionsFoldAndUnfold()
    {
        PanelInWindow panel({deferred(madeTask(a)), done(madeTask(b))});
        QVERIFY(panel.show());
        QTest::mouseClick(panel.header(Kind::DeferredHeader), Qt::LeftButton);
        QVERIFY(!panel.row(a, Kind::DeferredTask));
        QVERIFY(!panel.store.isDeferredSectionExpanded.value());
        QTest::mouseClick(panel.header(Kind::CompletedHeader), Qt::LeftButton);
        QVERIFY(panel.row(b, Kind::CompletedTask));
        QVERIFY(panel.store.isCompletedSectionExpanded.value());
        QVERIFY(!panel.fakes.saved().isDeferredSectionExpanded);
    }

    void theCompletedAreReopenedDeletedAndCleared()
    {
        PanelInWindow panel({done(madeTask(a)), done(madeTask(b)), done(madeTask(c))});
        QVERIFY(panel.show());
        QTest::mouseClick(panel.header(Kind::CompletedHeader), Qt::LeftButton);
        QVERIFY(panel.clickIn(panel.row(a, Kind::CompletedTask), restoreHelp));
        QVERIFY(!panel.fakes.task(a).isDone);
        QVERIFY(panel.clickIn(panel.row(b, Kind::CompletedTask), deleteHelp));
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a c"));
        QVERIFY(panel.clickIn(panel.header(Kind::CompletedHeader),
                              QStringLiteral("完了済みのタスクをまとめて削除（元に戻せます）")));
        QCOMPARE(panel.fakes.titles(), a);
    }

    void theCardsControlsCallTheirOperations()
    {
        PanelInWindow panel({madeTask(a), madeTask(b), madeTask(c)});
        QVERIFY(panel.show());
        panel.store.setActive(panel.fakes.task(a));
        QVERIFY(click(panel.nowCard(), doneHelp));
        QVERIFY(panel.fakes.task(a).isDone);
        QVERIFY(labelSaying(panel.nowCard(), b));
        QVERIFY(click(panel.nowCard(), deleteHelp));
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a c"));
        QVERIFY(click(panel.nowCard(), cardSubtaskHelp));
        QCOMPARE(panel.store.subtaskComposerParentID.value(), panel.fakes.task(c).id);
        QVERIFY(panel.subtaskField()->hasFocus());
    }

    void theEmptyCardBringsTheInput()
    {
        PanelInWindow panel({done(madeTask(a))});
        QVERIFY(panel.show());
        QVERIFY(click(panel.nowCard(), QStringLiteral("＋ タスクを追加してここにピン留め")));
        QCOMPARE(panel.calls, QStringList(QStringLiteral("focusInput")));
        QVERIFY(panel.composer()->hasFocus());
        type(panel.composer(), b);
        panel.press(Qt::Key_Return);
        QCOMPARE(panel.fakes.now(), b);
        QVERIFY(labelSaying(panel.nowCard(), b));
    }

    void theHeadersControlsCallTheirOperations()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        const QString undoHelp = QStringLiteral("元に戻す（⌘Z）");
        const QString redoHelp = QStringLiteral("やり直す（⌘Y）");
        QVERIFY(!buttonNamed(panel.window, undoHelp)->isEnabled());
        QVERIFY(!buttonNamed(panel.window, redoHelp)->isEnabled());
        panel.store.addTask(b, false);
        QVERIFY(click(panel.window, undoHelp));
        QCOMPARE(panel.fakes.titles(), a);
        QVERIFY(!buttonNamed(panel.window, undoHelp)->isEnabled());
        QVERIFY(click(panel.window, redoHelp));
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a b"));
        QVERIFY(click(panel.window, QStringLiteral("パネルを隠す")));
        QCOMPARE(panel.calls, QStringList(QStringLiteral("hide")));
    }

    void theSortButtonRestsWhileTheAIWorks()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        const QString help = QStringLiteral("AIで優先順に並べ替え（GOALが基準）");
        QVERIFY(click(panel.window, help));
        QVERIFY(!buttonNamed(panel.window, help)->isEnabled());
        QVERIFY(labelSaying(panel.window, QStringLiteral("整列中...")));
        QTRY_VERIFY(buttonNamed(panel.window, help)->isEnabled()); // There is no service.
        QVERIFY(labelSaying(panel.window, QStringLiteral("整列できませんでした")));
    }

    void theSplitButtonOfARowSplitsItsTask()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        const QString help = QStringLiteral("AIでサブタスクに分割");
        enter(*panel.row(a));
        QVERIFY(click(*panel.row(a), help));
        QVERIFY(labelSaying(panel.window, QStringLiteral("分割中...")));
        QVERIFY(!buttonNamed(*panel.row(a), help)->isEnabled());
        QTRY_VERIFY(buttonNamed(*panel.row(a), help)->isEnabled());
        QVERIFY(labelSaying(panel.window, QStringLiteral("分割できませんでした")));
    }

    void theRightButtonBesideARowOpensTheApplicationsMenu()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 10), QPoint(10, 10));
        QCoreApplication::sendEvent(buttonNamed(panel.window, QStringLiteral("パネルを隠す")), &event);
        QCOMPARE(panel.calls, QStringList(QStringLiteral("menu")));
    }

    void theStatusLineOffersTheWayBackWhileThereIsOne()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        panel.store.toggleDone(panel.fakes.task(a));
        QVERIFY(!buttonNamed(panel.window, undoText));
        panel.store.deleteTask(panel.fakes.task(b));
        QVERIFY(labelSaying(panel.window, QStringLiteral("削除しました")));
        QVERIFY(click(panel.window, undoText));
        QCOMPARE(panel.fakes.titles(), QStringLiteral("a b"));
        QVERIFY(!buttonNamed(panel.window, undoText));
        QVERIFY(labelSaying(panel.window, QStringLiteral("削除を元に戻しました")));
    }

    void theWayBackGoesAfterSixSeconds()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        panel.store.deleteTask(panel.fakes.task(a));
        panel.fakes.clock.advance(5999ms);
        QVERIFY(buttonNamed(panel.window, undoText));
        panel.fakes.clock.advance(1ms);
        QVERIFY(!buttonNamed(panel.window, undoText));
        QVERIFY(!labelSaying(panel.window, QStringLiteral("削除しました")));
    }

    void aStatusIsShownExactly()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        panel.store.setSortStatus(awkward());
        QVERIFY(labelSaying(panel.window, awkward()));
    }

    void anEmptyListSaysSoAndWhatToDo()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        QVERIFY(!panel.header(Kind::EmptyState));
        panel.store.deferTask(panel.fakes.task(a), TaskQuadrant::urgentImportant);
        PanelRowWidget *row = panel.header(Kind::EmptyState);
        QVERIFY(row);
        const QString title = QStringLiteral("今やるTODOはありません");
        const QString hint = QStringLiteral("下の「あとでやる」からTODOへ戻せます");
        QCOMPARE(paintedText(*row), title + hint);
        QCOMPARE(accessibleName(*row), title);
        QCOMPARE(QAccessible::queryAccessibleInterface(row)->text(QAccessible::Description), hint);
        QTest::mouseClick(row, Qt::LeftButton);
        QVERIFY(!row->hasFocus());
    }

    void theDaysCountFollowsTheTasks()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        QCOMPARE(badge(panel), 0);
        panel.store.toggleDone(panel.fakes.task(a));
        QCOMPARE(badge(panel), 1);
        panel.store.undo();
        QCOMPARE(badge(panel), 0);
    }

    void theDaysCountStartsAnewAtEveryMidnight()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        panel.store.toggleDone(panel.fakes.task(a));
        panel.fakes.clock.advance(15h - 1ms);
        QCOMPARE(badge(panel), 1);
        panel.fakes.clock.advance(1ms);
        QCOMPARE(badge(panel), 0);
        panel.store.toggleDone(panel.fakes.task(b));
        QCOMPARE(badge(panel), 1);
        panel.fakes.clock.advance(24h);
        QCOMPARE(badge(panel), 0);
    }

    void afterASleepTheCountIsTodays()
    {
        PanelInWindow panel({madeTask(a), madeTask(b)});
        QVERIFY(panel.show());
        panel.store.toggleDone(panel.fakes.task(a));
        panel.fakes.clock.setNow(panel.fakes.clock.now().addDays(2));
        QCOMPARE(badge(panel), 0);
        panel.store.toggleDone(panel.fakes.task(b));
        panel.fakes.clock.advance(15h);
        QCOMPARE(badge(panel), 0);
    }

    void nothingOfThePanelWakesBeforeMidnight()
    {
        PanelInWindow panel({madeTask(a)});
        QVERIFY(panel.show());
        QCOMPARE(panel.fakes.clock.pendingCalls(), 1);
    }

    void titlesStatusAndGoalAreShownExactlyEverywhere()
    {
        const TaskItem parent = madeTask(awkward());
        const TaskItem last = madeTask(awkward());
        PanelInWindow panel(
            {parent, madeSubtask(awkward(), parent), deferred(madeTask(awkward())), done(last)}, parent.id);
        QVERIFY(panel.show());
        panel.store.toggleExpanded(parent);
        panel.store.isCompletedSectionExpanded.set(true);
        panel.store.mediumGoal.set(awkward());
        panel.store.setSortStatus(awkward());
        QCoreApplication::processEvents();
        // Card, goal, two open rows, one deferred, one completed, status.
        QCOMPARE(paintedText(panel.window).count(awkward()), 7);
        int labels = 0;
        for (TextLabel *label : shown<TextLabel>(panel.window))
            labels += accessibleName(*label) == awkward() ? 1 : 0;
        QCOMPARE(labels, 7);
        QCOMPARE(shown<PanelRowWidget>(panel.window).size(), 7);
    }

    void everyButtonCanBeHitAndIsNamed()
    {
        const TaskItem parent = madeTask(a);
        PanelInWindow panel(
            {parent, madeSubtask(b, parent), madeTask(c), deferred(madeTask(a)), done(madeTask(b))});
        QVERIFY(panel.show());
        panel.store.toggleExpanded(parent);
        panel.store.isCompletedSectionExpanded.set(true);
        panel.store.deleteTask(panel.fakes.task(c));
        QCoreApplication::processEvents();
        for (PanelRowWidget *row : shown<PanelRowWidget>(panel.window))
            enter(*row);
        QVERIFY(shown<PaintedButton>(panel.window).size() >= 20);
        QCOMPARE(faultsOfButtons(panel.window), QStringList());
    }

    void theLowestPanelStillHoldsEverything()
    {
        const TaskItem task = madeTask(QStringLiteral("長い題名").repeated(40));
        PanelInWindow panel({task}, task.id);
        QVERIFY(panel.show());
        panel.view->resize(344, 250);
        QCOMPARE(faultsOfButtons(*panel.view), QStringList());
        // One below the other. Of the list there may be nothing left.
        int bottom = 0;
        for (const QWidget *part : std::initializer_list<QWidget *>{
                 panel.view->findChild<PanelHeader *>(), panel.view->findChild<NowCard *>(),
                 panel.view->findChild<TodoComposer *>(), panel.view->findChild<StatusLine *>()}) {
            QVERIFY2(part->y() >= bottom, part->metaObject()->className());
            bottom = part->y() + part->height();
        }
        QVERIFY2(bottom <= 250, qPrintable(QString::number(bottom)));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::FocusPanelViewTest)
#include "focus_panel_view_test.moc"
