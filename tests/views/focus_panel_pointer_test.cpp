// SPDX-License-Identifier: MIT
#include "look/check_circle.h"
#include "support/test_case.h"
#include "views/panel_in_window.h"
#include "views/row_list_view.h"
#include "views/task_row.h"

#include <QScrollBar>
#include <QWindow>

namespace wrenfold {

namespace {

const QString deleteHelp = QStringLiteral("削除（元に戻せます）");

TaskList tasks(int count)
{
    TaskList list;
    for (int i = 1; i <= count; ++i)
        list.append(madeTask(QString::number(i)));
    return list;
}

QPoint middleOf(const QWidget &widget)
{
    return widget.mapTo(widget.window(), widget.rect().center());
}

/// Moves the pointer as the desktop does.
void movePointer(const PanelInWindow &panel, const QPoint &place)
{
    QTest::mouseMove(panel.window.windowHandle(), place);
    QCoreApplication::processEvents();
}

/// The titles of the rows that show their actions.
QStringList engaged(const PanelInWindow &panel)
{
    QCoreApplication::processEvents();
    QStringList titles;
    for (PanelRowWidget *row : shown<PanelRowWidget>(panel.window)) {
        if (buttonNamed(*row, deleteHelp))
            titles.append(row->row().task.title);
    }
    return titles;
}

} // namespace

/// What is shown follows the pointer, also when the list moves under it.
class FocusPanelPointerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theRowUnderThePointerShowsItsActions()
    {
        PanelInWindow panel(tasks(3));
        QVERIFY(panel.show());
        QCOMPARE(engaged(panel), QStringList());
        movePointer(panel, middleOf(*panel.row(QStringLiteral("2"))));
        QCOMPARE(engaged(panel), QStringList(QStringLiteral("2")));
        movePointer(panel, middleOf(*buttonNamed(*panel.row(QStringLiteral("2")), deleteHelp)));
        QCOMPARE(engaged(panel), QStringList(QStringLiteral("2")));
        movePointer(panel, middleOf(*panel.row(QStringLiteral("3"))));
        QCOMPARE(engaged(panel), QStringList(QStringLiteral("3")));
        movePointer(panel, QPoint(2, 2));
        QCOMPARE(engaged(panel), QStringList());
    }

    void aDeletedRowLeavesNothingBehind()
    {
        PanelInWindow panel(tasks(3));
        QVERIFY(panel.show());
        movePointer(panel, middleOf(*panel.row(QStringLiteral("1"))));
        const QPoint trash = middleOf(*buttonNamed(*panel.row(QStringLiteral("1")), deleteHelp));
        movePointer(panel, trash);
        QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {}, trash);
        QVERIFY(!panel.row(QStringLiteral("1")));
        panel.view->setFocus();
        movePointer(panel, QPoint(2, 2));
        // The next task is shown by the widget of the one that went.
        panel.store.addTask(QStringLiteral("4"), false);
        QVERIFY(panel.row(QStringLiteral("4")));
        QCOMPARE(engaged(panel), QStringList());
    }

    void aDoubleClickOnAButtonDoesNotHitTheNextRow()
    {
        for (const QString &help : {deleteHelp, QStringLiteral("完了")}) {
            PanelInWindow panel(tasks(3));
            QVERIFY(panel.show());
            movePointer(panel, middleOf(*panel.row(QStringLiteral("1"))));
            const QPoint place = middleOf(*buttonNamed(*panel.row(QStringLiteral("1")), help));
            QTest::mouseDClick(panel.window.windowHandle(), Qt::LeftButton, {}, place);
            QCoreApplication::processEvents();
            QVERIFY(!panel.row(QStringLiteral("1")));
            QCOMPARE(panel.store.openTaskCount(), 2);
        }
    }

    void aDoubleClickOnATitleDoesNotHitTheRowThatMovesUnderThePointer()
    {
        TaskList list = tasks(3);
        list.prepend(madeTask(QStringLiteral("two lines of a card ").repeated(4)));
        PanelInWindow panel(list, list.constFirst().id);
        QVERIFY(panel.show());
        const TextLabel *title = labelSaying(*panel.row(QStringLiteral("1")), QStringLiteral("1"));
        const QPoint place = title->mapTo(&panel.window, title->rect().bottomLeft() + QPoint(4, -2));
        movePointer(panel, place);
        QTest::mouseDClick(panel.window.windowHandle(), Qt::LeftButton, {}, place);
        QCOMPARE(panel.window.childAt(place),
                 labelSaying(*panel.row(QStringLiteral("2")), QStringLiteral("2")));
        QCOMPARE(panel.store.activeTask()->title, QStringLiteral("1"));
        QVERIFY(!panel.editField());
    }

    void aClickOnAnotherTitleEndsTheEditingOfOne()
    {
        PanelInWindow panel(tasks(2));
        QVERIFY(panel.show());
        qobject_cast<TaskRow *>(panel.row(QStringLiteral("1")))->rename();
        QVERIFY(panel.editField());
        panel.editField()->setText(QStringLiteral("one"));
        const QPoint place = middleOf(*labelSaying(*panel.row(QStringLiteral("2")), QStringLiteral("2")));
        QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {}, place);
        QVERIFY(!panel.editField());
        QVERIFY(panel.row(QStringLiteral("one")));
        QCOMPARE(panel.store.activeTask()->title, QStringLiteral("2"));
    }

    void noActionIsUnderThePointerBeforeThePointerIsOnIt()
    {
        PanelInWindow panel(tasks(3));
        QVERIFY(panel.show());
        PanelRowWidget *row = panel.row(QStringLiteral("1"));
        // At the row's beginning, where its buttons are before they are placed.
        movePointer(panel, row->mapTo(&panel.window, QPoint(3, 3)));
        QVERIFY(buttonNamed(*row, deleteHelp));
        for (const PaintedButton *button : shown<PaintedButton>(*row))
            QVERIFY2(!button->underMouse(), qPrintable(button->help()));
    }

    void afterADeletionByPointerOnlyTheRowUnderItShowsItsActions()
    {
        PanelInWindow panel(tasks(4));
        QVERIFY(panel.show());
        movePointer(panel, middleOf(*panel.row(QStringLiteral("1"))));
        const QPoint trash = middleOf(*buttonNamed(*panel.row(QStringLiteral("1")), deleteHelp));
        QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {}, trash);
        movePointer(panel, middleOf(*panel.row(QStringLiteral("4"))));
        QCOMPARE(engaged(panel), QStringList(QStringLiteral("4")));
    }

    void aKeyDoesNothingToARowThatWasOnlyClicked()
    {
        PanelInWindow panel(tasks(3));
        QVERIFY(panel.show());
        panel.row(QStringLiteral("2"))->setFocus(Qt::MouseFocusReason);
        for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Space, Qt::Key_P})
            panel.press(key);
        QCOMPARE(panel.fakes.titles(), QStringLiteral("1 2 3"));
        QVERIFY(!panel.store.canUndo.value());
        panel.press(Qt::Key_Down);
        panel.press(Qt::Key_Delete);
        QCOMPARE(panel.fakes.titles(), QStringLiteral("1 2"));
    }

    void aClickOnAButtonLeavesTheCaretWhereTheUserTypes()
    {
        PanelInWindow panel(tasks(3));
        QVERIFY(panel.show());
        panel.composer()->setFocus(Qt::TabFocusReason);
        const auto clickOn = [&panel](const QWidget &widget) {
            movePointer(panel, middleOf(widget));
            QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {}, middleOf(widget));
        };
        movePointer(panel, middleOf(*panel.row(QStringLiteral("2"))));
        clickOn(*buttonNamed(*panel.row(QStringLiteral("2")), QStringLiteral("NOWにピン留め")));
        QCOMPARE(panel.fakes.now(), QStringLiteral("2"));
        QVERIFY(panel.composer()->hasFocus());
        clickOn(*buttonNamed(panel.window, QStringLiteral("最前面固定: オン")));
        QVERIFY(!panel.store.isHardPinned.value());
        QVERIFY(panel.composer()->hasFocus());
        clickOn(*buttonNamed(panel.nowCard(), deleteHelp));
        QVERIFY(!panel.row(QStringLiteral("2")));
        QVERIFY(panel.composer()->hasFocus());
        // Beside everything, the editing ends.
        QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {}, QPoint(300, 488));
        QVERIFY(!panel.composer()->hasFocus());
    }

    void aRowPutAwayUnderThePointerForgetsIt()
    {
        PanelInWindow panel(tasks(3));
        QVERIFY(panel.show());
        enter(*panel.row(QStringLiteral("1")));
        QCOMPARE(engaged(panel), QStringList(QStringLiteral("1")));
        panel.store.deferTask(panel.fakes.task(QStringLiteral("1")), TaskQuadrant::urgentImportant);
        QCoreApplication::processEvents();
        panel.store.undo();
        QCOMPARE(engaged(panel), QStringList());
    }

    void aRowScrolledFromUnderThePointerLeavesNothingBehind()
    {
        PanelInWindow panel(tasks(100));
        QVERIFY(panel.show());
        movePointer(panel, middleOf(*panel.row(QStringLiteral("3"))));
        QCOMPARE(engaged(panel), QStringList(QStringLiteral("3")));
        QScrollBar *bar = panel.window.findChild<RowListView *>()->verticalScrollBar();
        for (const int value : {400, 1500, 2800, 0})
            bar->setValue(value);
        movePointer(panel, QPoint(2, 2));
        QCOMPARE(engaged(panel), QStringList());
    }

    void whileTheListScrollsTheActionsAreAtThePointer()
    {
        PanelInWindow panel(tasks(100));
        QVERIFY(panel.show());
        const QPoint place = middleOf(*panel.row(QStringLiteral("3")));
        movePointer(panel, place);
        panel.window.findChild<RowListView *>()->verticalScrollBar()->setValue(1600);
        const QStringList titles = engaged(panel);
        for (const QString &title : titles) {
            const PanelRowWidget *row = panel.row(title);
            QVERIFY(row->rect().contains(row->mapFrom(&panel.window, place)));
        }
    }

    void theWheelScrollsTheList()
    {
        PanelInWindow panel(tasks(100));
        QVERIFY(panel.show());
        const QPoint place = middleOf(*panel.row(QStringLiteral("3")));
        QWheelEvent wheel(place, panel.window.mapToGlobal(place), {}, QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        auto *list = panel.window.findChild<RowListView *>();
        QCoreApplication::sendEvent(panel.row(QStringLiteral("3")), &wheel);
        QVERIFY(!wheel.isAccepted()); // The row leaves it to the list.
        QCoreApplication::sendEvent(list->viewport(), &wheel);
        QVERIFY(list->verticalScrollBar()->value() > 0);
    }

    void aTaskBroughtBackShowsTheCircleOfAnOpenTask()
    {
        PanelInWindow panel({madeTask(QStringLiteral("a")), deferred(madeTask(QStringLiteral("b"))),
                             done(madeTask(QStringLiteral("c")))});
        panel.store.isCompletedSectionExpanded.set(true);
        QVERIFY(panel.show());
        using Kind = PanelRow::Kind;
        const auto isChecked = [&panel](const QString &title, Kind kind) {
            return panel.row(title, kind)->findChild<CheckCircle *>()->isChecked();
        };
        QVERIFY(panel.clickIn(panel.row(QStringLiteral("a")), QStringLiteral("完了")));
        panel.store.undo();
        QVERIFY(panel.clickIn(panel.row(QStringLiteral("b"), Kind::DeferredTask), QStringLiteral("完了")));
        QVERIFY(!panel.row(QStringLiteral("b"), Kind::DeferredTask));
        panel.store.undo();
        QVERIFY(panel.clickIn(panel.row(QStringLiteral("c"), Kind::CompletedTask),
                              QStringLiteral("未完了に戻す")));
        QVERIFY(!panel.row(QStringLiteral("c"), Kind::CompletedTask));
        panel.store.undo();
        QVERIFY(panel.clickIn(panel.row(QStringLiteral("a")), QStringLiteral("完了")));
        QVERIFY(!panel.row(QStringLiteral("a")));
        panel.store.undo();
        QVERIFY(!isChecked(QStringLiteral("a"), Kind::Task));
        QVERIFY(!isChecked(QStringLiteral("b"), Kind::DeferredTask));
        QVERIFY(isChecked(QStringLiteral("c"), Kind::CompletedTask));
    }

    void aClickOnARowLeavesNoFocusRing()
    {
        PanelInWindow panel(tasks(3));
        QVERIFY(panel.show());
        PanelRowWidget *row = panel.row(QStringLiteral("2"));
        QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {},
                          row->mapTo(&panel.window, QPoint(2, 2)));
        QVERIFY(row->hasFocus());
        QVERIFY(!row->showsFocusRing());
        panel.press(Qt::Key_Down);
        QVERIFY(panel.row(QStringLiteral("3"))->showsFocusRing());
    }

    void aClickBesideARenameKeepsIt()
    {
        PanelInWindow panel(tasks(3));
        QVERIFY(panel.show());
        panel.row(QStringLiteral("2"))->setFocus(Qt::TabFocusReason);
        panel.press(Qt::Key_F2);
        type(panel.editField(), QStringLiteral("renamed"));
        QTest::mouseClick(panel.window.windowHandle(), Qt::LeftButton, {}, QPoint(2, 2));
        QVERIFY(!panel.editField());
        QCOMPARE(panel.fakes.titles(), QStringLiteral("1 renamed 3"));
    }

    void aPressOnTheTitleThatMovesAwayDoesNothing()
    {
        PanelInWindow panel(tasks(3));
        panel.store.setActive(panel.fakes.task(QStringLiteral("1")));
        QVERIFY(panel.show());
        TextLabel *title = labelSaying(*panel.row(QStringLiteral("2")), QStringLiteral("2"));
        QTest::mousePress(title, Qt::LeftButton);
        QTest::mouseRelease(title, Qt::LeftButton, {}, QPoint(10, 300));
        QCOMPARE(panel.fakes.now(), QStringLiteral("1"));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::FocusPanelPointerTest)
#include "focus_panel_pointer_test.moc"
