// SPDX-License-Identifier: MIT
#include "look/check_circle.h"
#include "support/log_capture.h"
#include "support/test_case.h"
#include "views/drag_in_panel.h"

namespace wrenfold {

/// However a drag ends, it leaves at most one undo step and nothing open.
class FocusPanelDragEndTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void escapePutsEverythingBack()
    {
        DragInPanel drag(numberedTasks(4));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("3"));
        QCOMPARE(drag.titles(), QStringLiteral("2 3 1 4"));
        drag.panel.press(Qt::Key_Escape);
        QVERIFY(!drag.isUnderWay());
        QCOMPARE(drag.titles(), drag.before);
        drag.pull(drag.place + QPoint(0, 20));
        drag.letGo();
        QCOMPARE(drag.titles(), drag.before);
        QVERIFY(!drag.store().canUndo.value());
    }

    void keysDoNothingElseDuringADrag()
    {
        DragInPanel drag(numberedTasks(4));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Space, Qt::Key_P, Qt::Key_Return})
            drag.panel.press(key);
        QTest::keyClick(drag.panel.window.windowHandle(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(drag.titles(), QStringLiteral("2 1 3 4"));
        drag.letGo();
        QCOMPARE(drag.undoSteps(), 1);
    }

    void aReleaseOutsideThePanelEndsTheDragWhereItWas()
    {
        DragInPanel drag(numberedTasks(4));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        drag.pull(QPoint(-200, 300));
        QCOMPARE(drag.titles(), QStringLiteral("2 1 3 4"));
        drag.letGo();
        QVERIFY(!drag.isUnderWay());
        QCOMPARE(drag.titles(), QStringLiteral("2 1 3 4"));
        QCOMPARE(drag.undoSteps(), 1);
    }

    void aReleaseThatNobodyToldEndsTheDrag()
    {
        DragInPanel drag(numberedTasks(4));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        drag.moveReleased();
        QVERIFY(!drag.isUnderWay());
        QCOMPARE(drag.undoSteps(), 1);
    }

    void hidingTheWindowCancels()
    {
        DragInPanel drag(numberedTasks(4));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        drag.panel.window.hide();
        QVERIFY(!drag.isUnderWay());
        QCOMPARE(drag.titles(), drag.before);
        QVERIFY(!drag.store().canUndo.value());
    }

    void foldingTheListCancels()
    {
        DragInPanel drag(numberedTasks(4));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        drag.store().isTodoListHidden.set(true);
        QVERIFY(!drag.isUnderWay());
        QCOMPARE(drag.titles(), drag.before);
    }

    void aTaskThatGoesTakesTheDragWithIt_data()
    {
        QTest::addColumn<int>("how");
        QTest::newRow("deleted") << 0;
        QTest::newRow("completed") << 1;
        QTest::newRow("deferred") << 2;
        QTest::newRow("all replaced") << 3;
    }

    void aTaskThatGoesTakesTheDragWithIt()
    {
        QFETCH(int, how);
        DragInPanel drag(numberedTasks(4));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        const TaskItem task = drag.panel.fakes.task(QStringLiteral("1"));
        if (how == 0)
            drag.store().deleteTask(task);
        else if (how == 1)
            drag.store().toggleDone(task);
        else if (how == 2)
            drag.store().deferTask(task, TaskQuadrant::urgentImportant);
        else
            for (const TaskItem &each : TaskList(drag.store().tasks.value()))
                drag.store().deleteTask(each);
        QCoreApplication::processEvents();
        QVERIFY(!drag.isUnderWay());
        drag.pull(drag.place + QPoint(0, 30));
        drag.letGo();
        const int steps = how == 3 ? 4 : 1;
        QCOMPARE(drag.undoSteps(), steps); // No bracket was left open, so no step of the drag's.
    }

    void aTaskThatGoesUnseenEndsTheDragAtTheNextMovement()
    {
        DragInPanel drag(numberedTasks(40));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        drag.store().deleteTask(drag.panel.fakes.task(QStringLiteral("1")));
        // Before the rows have followed, at the edge where the list scrolls.
        const QPoint edge(100,
                          drag.list().mapTo(&drag.panel.window, QPoint(0, drag.list().height() - 3)).y());
        QMouseEvent move(QEvent::MouseMove, edge, drag.panel.window.mapToGlobal(QPointF(edge)), Qt::NoButton,
                         Qt::LeftButton, {});
        QCoreApplication::sendEvent(drag.panel.view, &move);
        drag.panel.fakes.clock.advance(std::chrono::milliseconds(100));
        QCoreApplication::processEvents();
        QVERIFY(!drag.isUnderWay());
        QCOMPARE(drag.panel.fakes.clock.pendingCalls(), 3); // Midnight, and what the deletion shows.
        drag.letGo();
        QCOMPARE(drag.undoSteps(), 1);
    }

    void aPressWhoseReleaseWasLostLeavesNothingBehind()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        // The handle goes with its row, and Qt tells of no release.
        drag.store().deleteTask(drag.panel.fakes.task(QStringLiteral("1")));
        QCoreApplication::processEvents();
        drag.letGo();
        drag.movePointer(drag.middleOf(QStringLiteral("2")));
        const auto &circle = *drag.panel.row(QStringLiteral("2"))->findChild<CheckCircle *>();
        QTest::mouseClick(drag.panel.window.windowHandle(), Qt::LeftButton, {}, drag.middleOf(circle));
        QVERIFY(drag.panel.fakes.task(QStringLiteral("2")).isDone);
    }

    void aPressThatIsLostOpensNoMenu()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.moveReleased();
        QVERIFY(!QApplication::activePopupWidget());
    }

    void anotherTaskThatGoesLeavesTheDragUnderWay()
    {
        DragInPanel drag(numberedTasks(4));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        drag.store().deleteTask(drag.panel.fakes.task(QStringLiteral("3")));
        QCoreApplication::processEvents();
        QVERIFY(drag.isUnderWay());
        drag.pullBelow(QStringLiteral("4"));
        drag.letGo();
        QCOMPARE(drag.titles(), QStringLiteral("2 4 1"));
    }

    void undoDuringADragWaitsForItsEnd()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.store().deleteTask(drag.panel.fakes.task(QStringLiteral("3")));
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        drag.store().undo();
        QCoreApplication::processEvents();
        QVERIFY(drag.isUnderWay());
        QCOMPARE(drag.titles(), QStringLiteral("2 1"));
        drag.letGo();
        QCOMPARE(drag.titles(), QStringLiteral("1 2"));
        QVERIFY(drag.store().canRedo.value());
    }

    void aRowWithoutAFrameIsLoggedAndNotDragged()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        // Taken away between the press and the first movement.
        drag.store().deleteTask(drag.panel.fakes.task(QStringLiteral("1")));
        QCoreApplication::processEvents();
        LogCapture log;
        drag.pullBeyond(drag.place + QPoint(0, 40));
        QCOMPARE(log.take(),
                 QStringList(QStringLiteral("critical ui: a drag began on a row without a frame")));
        QVERIFY(!drag.isUnderWay());
        drag.letGo();
        QCOMPARE(drag.titles(), QStringLiteral("2 3"));
        QCOMPARE(drag.undoSteps(), 1);
    }

    void theNextDragBeginsAfresh()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        drag.letGo();
        drag.pressHandle(QStringLiteral("3"));
        drag.pullAbove(QStringLiteral("2"));
        drag.letGo();
        QCOMPARE(drag.titles(), QStringLiteral("3 2 1"));
        QCOMPARE(drag.undoSteps(), 2);
    }

    void anEditUnderWayElsewhereIsNotLost()
    {
        DragInPanel drag(numberedTasks(3));
        QVERIFY(drag.panel.show());
        drag.panel.row(QStringLiteral("3"))->setFocus(Qt::TabFocusReason);
        drag.panel.press(Qt::Key_F2);
        QVERIFY(drag.panel.editField());
        drag.panel.editField()->setText(QStringLiteral("three"));
        drag.pressHandle(QStringLiteral("1"));
        drag.pullBelow(QStringLiteral("2"));
        drag.letGo();
        QCoreApplication::processEvents();
        const TextField *field = drag.panel.editField();
        QVERIFY(field && field->text() == QStringLiteral("three"));
        QCOMPARE(drag.titles(), QStringLiteral("2 1 3"));
    }

    void theProgramCanEndDuringADrag()
    {
        auto drag = std::make_unique<DragInPanel>(numberedTasks(3));
        QVERIFY(drag->panel.show());
        drag->pressHandle(QStringLiteral("1"));
        drag->pullBelow(QStringLiteral("2"));
        delete drag->panel.view;
        QCOMPARE(drag->titles(), drag->before);
        QVERIFY(!drag->store().isQuadrantDropActive.value());
        QVERIFY(!QApplication::overrideCursor());
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::FocusPanelDragEndTest)
#include "focus_panel_drag_end_test.moc"
