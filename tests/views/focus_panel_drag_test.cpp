// SPDX-License-Identifier: MIT
#include "look/check_circle.h"
#include "support/test_case.h"
#include "views/drag_in_panel.h"

#include <QScrollBar>

namespace wrenfold {

using namespace std::chrono_literals;

/// Where a dragged task goes.
class FocusPanelDragTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aRowPulledByItsHandleMovesAtOnceAndAsOneStep()
    {
        DragInPanel drag(numberedTasks(5));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        QVERIFY(!drag.isUnderWay());
        drag.pullBelow(QStringLiteral("2"));
        QVERIFY(drag.isUnderWay());
        QCOMPARE(drag.titles(), QStringLiteral("2 1 3 4 5"));
        drag.pullBelow(QStringLiteral("3"));
        drag.pullBelow(QStringLiteral("4"));
        QCOMPARE(drag.titles(), QStringLiteral("2 3 4 1 5"));
        drag.letGo();
        QVERIFY(!drag.isUnderWay());
        QCOMPARE(drag.titles(), QStringLiteral("2 3 4 1 5"));
        QCOMPARE(drag.panel.fakes.undoName(), QStringLiteral("並べ替え"));
        QCOMPARE(drag.undoSteps(), 1);
        QCOMPARE(drag.titles(), drag.before);
    }

    void upwardTheUpperHalfDecides()
    {
        DragInPanel drag(numberedTasks(4));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("4"));
        drag.pullBelow(QStringLiteral("3"));
        QCOMPARE(drag.titles(), drag.before);
        drag.pullAbove(QStringLiteral("3"));
        QCOMPARE(drag.titles(), QStringLiteral("1 2 4 3"));
        drag.pull(QPoint(100, 2));
        QCOMPARE(drag.titles(), QStringLiteral("4 1 2 3"));
        drag.letGo();
        QCOMPARE(drag.undoSteps(), 1);
    }

    void aBlockMovesWithItsSubtasksAndOverOthers()
    {
        TaskItem parent = madeTask(QStringLiteral("p"));
        parent.isExpanded = true;
        DragInPanel drag({parent, madeSubtask(QStringLiteral("s"), parent),
                          madeSubtask(QStringLiteral("t"), parent), madeTask(QStringLiteral("a")),
                          madeTask(QStringLiteral("b"))});
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("p"));
        drag.pullBelow(QStringLiteral("a"));
        drag.letGo();
        QCOMPARE(drag.titles(), QStringLiteral("a p s t b"));
        drag.pressHandle(QStringLiteral("b"));
        drag.pull(drag.middleOf(QStringLiteral("s")));
        QCOMPARE(drag.titles(), QStringLiteral("a p s t b"));
        drag.pullAbove(QStringLiteral("p"));
        drag.letGo();
        QCOMPARE(drag.titles(), QStringLiteral("a b p s t"));
    }

    void aSmallMovementIsNoDrag()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("2"));
        drag.pull(drag.place + QPoint(2, QApplication::startDragDistance() - 3));
        QVERIFY(!drag.isUnderWay());
        const OffscreenSilence silence;
        drag.letGo();
        QCOMPARE(drag.titles(), drag.before);
        QVERIFY(!drag.store().canUndo.value());
        // It is a click, which opens the menu.
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        menu->close();
    }

    void theHandleOpensTheMenuForWhoCannotPull()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.movePointer(drag.middleOf(QStringLiteral("2")));
        const OffscreenSilence silence;
        buttonNamed(*drag.panel.row(QStringLiteral("2")), handleHelp())->click();
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        menu->close();
    }

    void whileTheReorderKeyIsHeldAnyPlaceOfTheRowPulls()
    {
        for (const bool isByFlag : {true, false}) {
            DragInPanel drag(numberedTasks(3));
            QVERIFY(drag.panel.show());
            drag.store().isReorderKeyPressed.set(isByFlag);
            const auto *circle = drag.panel.row(QStringLiteral("1"))->findChild<CheckCircle *>();
            drag.press(drag.middleOf(*circle), isByFlag ? Qt::NoModifier : Qt::ControlModifier);
            drag.pullBelow(QStringLiteral("2"));
            drag.letGo();
            QCOMPARE(drag.titles(), QStringLiteral("2 1 3"));
            QVERIFY(!drag.panel.fakes.task(QStringLiteral("1")).isDone);
        }
    }

    void withoutTheKeyOnlyTheHandlePulls()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.press(drag.middleOf(QStringLiteral("1")));
        drag.pullBelow(QStringLiteral("2"));
        QVERIFY(!drag.isUnderWay());
        drag.letGo();
        QCOMPARE(drag.titles(), drag.before);
    }

    void theReorderKeyShowsTheHandles()
    {
        TaskItem parent = madeTask(QStringLiteral("p"));
        parent.isExpanded = true;
        DragInPanel drag({parent, madeSubtask(QStringLiteral("s"), parent), madeTask(QStringLiteral("a"))});
        QVERIFY(drag.panel.show());
        QVERIFY(!buttonNamed(drag.panel.window, handleHelp()));
        drag.store().isReorderKeyPressed.set(true);
        const QString help = QStringLiteral("TODOをドラッグして並べ替え、またはあとでやるへ分類");
        QVERIFY(buttonNamed(*drag.panel.row(QStringLiteral("p")), help));
        QVERIFY(buttonNamed(*drag.panel.row(QStringLiteral("a")), help));
        QVERIFY(!buttonNamed(*drag.panel.row(QStringLiteral("s")), help));
        QCOMPARE(faultsOfButtons(drag.panel.window), QStringList());
        drag.store().isReorderKeyPressed.set(false);
        QCoreApplication::processEvents();
        QVERIFY(!buttonNamed(drag.panel.window, help));
    }

    void subtasksHaveNoHandle()
    {
        TaskItem parent = madeTask(QStringLiteral("p"));
        parent.isExpanded = true;
        DragInPanel drag({parent, madeSubtask(QStringLiteral("s"), parent)});
        QVERIFY(drag.panel.show());
        drag.movePointer(drag.middleOf(QStringLiteral("s")));
        QVERIFY(!buttonNamed(drag.panel.window, handleHelp()));
        drag.press(drag.place, Qt::ControlModifier);
        drag.pull(drag.place + QPoint(0, 60));
        QVERIFY(!drag.isUnderWay());
        drag.letGo();
    }

    void aClickWithTheKeyHeldIsAClick()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.movePointer(drag.middleOf(QStringLiteral("2")));
        drag.press(drag.middleOf(*drag.panel.row(QStringLiteral("2"))->findChild<CheckCircle *>()),
                   Qt::ControlModifier);
        drag.letGo();
        QVERIFY(drag.panel.fakes.task(QStringLiteral("2")).isDone);
    }

    void theOthersSlideToMakeWay()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pull(drag.place + QPoint(0, 12));
        Durations::setMotionReduced(false);
        const int before = drag.panel.row(QStringLiteral("2"))->y();
        const int after = drag.panel.row(QStringLiteral("1"))->y();
        drag.pullBelow(QStringLiteral("2"));
        QCOMPARE(drag.titles(), QStringLiteral("2 1 3"));
        QVERIFY(drag.panel.row(QStringLiteral("2"))->y() > after); // On its way.
        QTRY_COMPARE(drag.panel.row(QStringLiteral("2"))->y(), after);
        QCOMPARE(drag.panel.row(QStringLiteral("1"))->y(), before);
        drag.letGo();
        // Without a drag, and without motion, a row is where it belongs at once.
        drag.store().undo();
        QCOMPARE(drag.panel.row(QStringLiteral("2"))->y(), before);
    }

    void theBlockFollowsTheWheel()
    {
        DragInPanel drag(numberedTasks(40));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pull(drag.place + QPoint(0, 70));
        drag.list().verticalScrollBar()->setValue(320);
        drag.letGo();
        QVERIFY(!drag.isUnderWay());
        QCOMPARE(drag.store().tasks.value().at(12).title, QStringLiteral("1"));
    }

    void aPanelThatGetsLowerDoesNotScrollAwayFromThePointer()
    {
        DragInPanel drag(numberedTasks(40));
        drag.panel.window.resize(344, 760);
        drag.panel.view->setGeometry(drag.panel.window.rect());
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("13"));
        const QPoint pressed = drag.place;
        // As high as it always is with the board, so that the pointer is below it.
        const Subscription lower = drag.store().isQuadrantDropActive.onChange([&drag](bool) {
            drag.panel.window.resize(716, 500);
            drag.panel.view->setGeometry(drag.panel.window.rect());
        });
        drag.pull(pressed - QPoint(0, 14));
        drag.panel.fakes.clock.advance(1s);
        QCOMPARE(drag.list().verticalScrollBar()->value(), 0);
        drag.pullBeyond(pressed + QPoint(0, 10));
        drag.panel.fakes.clock.advance(1s);
        QVERIFY(drag.list().verticalScrollBar()->value() > 0);
        drag.panel.press(Qt::Key_Escape);
    }

    void noMenuOpensDuringADrag()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        QVERIFY(!openMenu(*drag.panel.row(QStringLiteral("3"))));
        QVERIFY(drag.isUnderWay());
        drag.letGo();
        QMenu *menu = openMenu(*drag.panel.row(QStringLiteral("3")));
        QVERIFY(menu);
        menu->close();
    }

    void thePreviewFollowsThePointerAndTheRowIsFaint()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        const QPoint rowAt = drag.panel.row(QStringLiteral("1"))->mapTo(&drag.panel.window, QPoint());
        drag.pressHandle(QStringLiteral("1"));
        const QPoint start = drag.place;
        drag.pull(start + QPoint(40, 25));
        QVERIFY(drag.preview());
        QCOMPARE(drag.preview()->pos(), rowAt + QPoint(40, 25));
        QCOMPARE(drag.preview()->size(), drag.panel.row(QStringLiteral("1"))->size());
        QVERIFY(labelSaying(*drag.preview(), QStringLiteral("1")));
        QVERIFY(drag.panel.row(QStringLiteral("1"))->graphicsEffect());
        QVERIFY(!drag.panel.row(QStringLiteral("2"))->graphicsEffect());
        drag.letGo();
        QVERIFY(!drag.preview());
        QVERIFY(!drag.panel.row(QStringLiteral("1"))->graphicsEffect());
    }

    void aDropOnACellDefersIntoItsQuadrantFromTheOldPlace()
    {
        DragInPanel drag(numberedTasks(4));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("3"));
        QCOMPARE(drag.titles(), QStringLiteral("2 3 1 4"));
        drag.makeRoomForBoard();
        QVERIFY(drag.board().isVisible());
        drag.pull(drag.cell(TaskQuadrant::urgentNotImportant));
        QVERIFY(labelSaying(drag.board(), QStringLiteral("ここへドロップ")));
        drag.letGo();
        const TaskItem dropped = drag.panel.fakes.task(QStringLiteral("1"));
        QVERIFY(dropped.isDeferred);
        QCOMPARE(dropped.quadrant, TaskQuadrant::urgentNotImportant);
        QCOMPARE(drag.titles(), drag.before);
        QVERIFY(!drag.board().isVisible());
        QCOMPARE(drag.panel.fakes.undoName(), QStringLiteral("あとでやるに移動"));
        QCOMPARE(drag.undoSteps(), 1);
    }

    void aListThatGivesWayToTheBoardIsNotLeftByThePointer()
    {
        DragInPanel drag(numberedTasks(3));
        drag.panel.window.move(400, 100);
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        const QPoint pressed = drag.panel.window.mapToGlobal(drag.place);
        // The wide panel ends at the edge of the screen, and with it the list; the pointer is over the board then.
        const Subscription widen = drag.store().isQuadrantDropActive.onChange([&drag](bool isActive) {
            if (!isActive)
                return;
            drag.panel.view->setBoardLeftOfList(true);
            drag.panel.window.setGeometry(400 - 314, 100, 716, 500);
            drag.panel.view->setGeometry(drag.panel.window.rect());
        });
        drag.pull(drag.place + QPoint(0, 12));
        drag.pull(drag.panel.window.mapFromGlobal(pressed + QPoint(0, 40)));
        QVERIFY(drag.board().quadrantAt(drag.board().mapFrom(&drag.panel.window, drag.place)));
        QVERIFY(!labelSaying(drag.board(), QStringLiteral("ここへドロップ")));
        QCOMPARE(drag.titles(), QStringLiteral("2 1 3"));
        drag.pull(drag.cell(TaskQuadrant::urgentImportant));
        QVERIFY(labelSaying(drag.board(), QStringLiteral("ここへドロップ")));
        // Now that it has been left, every cell can be hit, also one where the list was.
        drag.pull(drag.cell(TaskQuadrant::notUrgentNotImportant));
        drag.pull(drag.panel.window.mapFromGlobal(pressed + QPoint(0, 40)));
        QVERIFY(labelSaying(drag.board(), QStringLiteral("ここへドロップ")));
        drag.letGo();
        QVERIFY(drag.panel.fakes.task(QStringLiteral("1")).isDeferred);
    }

    void noCellIsTargetedBeforeThePointerHasLeftTheList()
    {
        DragInPanel drag(numberedTasks(3));
        drag.panel.window.move(400, 100);
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pull(drag.place + QPoint(0, 12));
        // At the right edge of the screen the board comes left of the list.
        drag.panel.view->setBoardLeftOfList(true);
        drag.panel.window.move(400 - 372, 100);
        drag.makeRoomForBoard();
        drag.pull(QPoint(716 - 344 + 1, 300));
        QVERIFY(!labelSaying(drag.board(), QStringLiteral("ここへドロップ")));
        drag.pull(drag.cell(TaskQuadrant::urgentImportant));
        QVERIFY(labelSaying(drag.board(), QStringLiteral("ここへドロップ")));
        drag.pull(QPoint(716 - 344 + 1, 300));
        QVERIFY(!labelSaying(drag.board(), QStringLiteral("ここへドロップ")));
        drag.letGo();
        QVERIFY(!drag.panel.fakes.task(QStringLiteral("1")).isDeferred);
    }

    void atTheEdgesTheListScrollsUnderThePointer()
    {
        DragInPanel drag(numberedTasks(40));
        QVERIFY(drag.panel.show());
        QScrollBar &bar = *drag.list().verticalScrollBar();
        drag.pressHandle(QStringLiteral("1"));
        const QRect list(drag.list().mapTo(&drag.panel.window, QPoint()), drag.list().size());
        drag.pull(QPoint(list.center().x(), list.bottom() - 4));
        drag.panel.fakes.clock.advance(160ms);
        const int scrolled = bar.value();
        QVERIFY(scrolled > 30);
        // Faster movements of the pointer do not hold it up.
        for (int i = 0; i < 10; ++i) {
            drag.pull(drag.place + QPoint(i % 2 ? 1 : -1, 0));
            drag.panel.fakes.clock.advance(8ms);
        }
        QVERIFY(bar.value() > scrolled);
        drag.panel.fakes.clock.advance(60s);
        QCOMPARE(bar.value(), bar.maximum());
        QCOMPARE(drag.panel.fakes.clock.pendingCalls(),
                 1); // Midnight. The end of the list is the end of the scrolling.
        drag.letGo();
        QVERIFY(drag.titles().endsWith(QStringLiteral(" 40 1")));
        QCOMPARE(drag.undoSteps(), 1);
    }

    void aDraggedHostileTitleIsPlainText()
    {
        DragInPanel drag({madeTask(awkward()), madeTask(QStringLiteral("2"))});
        QVERIFY(drag.panel.show());
        drag.pressHandle(awkward());
        drag.pullBelow(QStringLiteral("2"));
        QVERIFY(labelSaying(*drag.preview(), awkward()));
        drag.letGo();
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::FocusPanelDragTest)
#include "focus_panel_drag_test.moc"
