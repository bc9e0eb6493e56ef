// SPDX-License-Identifier: MIT
#include "support/painted_text.h"
#include "support/test_case.h"
#include "views/board_chip.h"
#include "views/panel_in_window.h"
#include "views/quadrant_board.h"
#include "views/quadrant_board_cell.h"

namespace wrenfold {

namespace {

using Kind = PanelRow::Kind;

TaskItem deferredTo(const QString &title, TaskQuadrant quadrant)
{
    TaskItem task = deferred(madeTask(title));
    task.quadrant = quadrant;
    return task;
}

/// A wide panel that shows the board.
struct Board : PanelInWindow
{
    explicit Board(const TaskList &tasks)
        : PanelInWindow(tasks)
    {
        window.resize(716, 500);
        view->setGeometry(window.rect());
        store.isQuadrantBoardVisible.set(true);
    }

    [[nodiscard]] QuadrantBoard &board() const { return *window.findChild<QuadrantBoard *>(); }
    [[nodiscard]] QuadrantBoardCell *cell(TaskQuadrant quadrant) const
    {
        for (QuadrantBoardCell *cell : window.findChildren<QuadrantBoardCell *>()) {
            if (cell->quadrant() == quadrant)
                return cell;
        }
        return nullptr;
    }
    [[nodiscard]] PanelRowWidget *chip(const QString &title) const { return row(title, Kind::BoardTask); }
};

QString titlesIn(const QuadrantBoardCell &cell)
{
    QStringList titles;
    for (const BoardChip *chip : shown<BoardChip>(cell))
        titles.append(chip->row().task.title);
    titles.sort();
    return titles.join(QLatin1Char(' '));
}

const QString a = QStringLiteral("a");

} // namespace

class QuadrantBoardTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyDeferredTaskIsInItsCell()
    {
        const TaskItem parent = madeTask(QStringLiteral("parent"));
        TaskItem orphan = deferred(madeSubtask(QStringLiteral("s"), parent));
        orphan.quadrant = TaskQuadrant::importantNotUrgent;
        Board board({deferredTo(a, TaskQuadrant::urgentImportant),
                     deferredTo(QStringLiteral("b"), TaskQuadrant::urgentImportant),
                     deferredTo(QStringLiteral("c"), TaskQuadrant::notUrgentNotImportant), parent, orphan});
        QVERIFY(board.show());
        QCOMPARE(titlesIn(*board.cell(TaskQuadrant::urgentImportant)), QStringLiteral("a b"));
        QCOMPARE(titlesIn(*board.cell(TaskQuadrant::importantNotUrgent)), QStringLiteral("s"));
        QCOMPARE(titlesIn(*board.cell(TaskQuadrant::urgentNotImportant)), QString());
        QCOMPARE(titlesIn(*board.cell(TaskQuadrant::notUrgentNotImportant)), QStringLiteral("c"));
        QVERIFY(labelSaying(*board.cell(TaskQuadrant::urgentImportant), QStringLiteral("2")));
    }

    void theCellsAreNamedAndStandByUrgencyAndImportance()
    {
        Board board({});
        QVERIFY(board.show());
        const auto at = [&board](TaskQuadrant quadrant) { return board.cell(quadrant)->pos(); };
        QVERIFY(labelSaying(*board.cell(TaskQuadrant::urgentImportant), QStringLiteral("すぐやる")));
        QVERIFY(labelSaying(*board.cell(TaskQuadrant::importantNotUrgent), QStringLiteral("予定に入れる")));
        QVERIFY(labelSaying(*board.cell(TaskQuadrant::urgentNotImportant), QStringLiteral("短く済ませる")));
        QVERIFY(labelSaying(*board.cell(TaskQuadrant::notUrgentNotImportant), QStringLiteral("手放す")));
        for (const TaskQuadrant quadrant : allQuadrants)
            QVERIFY(labelSaying(*board.cell(quadrant), label(quadrant)));
        QVERIFY(at(TaskQuadrant::urgentImportant).x() < at(TaskQuadrant::importantNotUrgent).x());
        QCOMPARE(at(TaskQuadrant::urgentImportant).y(), at(TaskQuadrant::importantNotUrgent).y());
        QVERIFY(at(TaskQuadrant::urgentImportant).y() < at(TaskQuadrant::urgentNotImportant).y());
        QVERIFY(labelSaying(board.board(), QStringLiteral("あとでやるの4象限。上ほど重要、左ほど緊急")));
        const QString painted = paintedText(board.board());
        for (const QString &axis : {QStringLiteral("← 緊急度 高"), QStringLiteral("緊急度 低 →")})
            QVERIFY2(painted.contains(axis), qPrintable(painted));
    }

    void eachControlOfAChipDoesItsOperation()
    {
        Board board({deferredTo(a, TaskQuadrant::urgentImportant),
                     deferredTo(QStringLiteral("b"), TaskQuadrant::urgentImportant),
                     deferredTo(QStringLiteral("c"), TaskQuadrant::urgentImportant),
                     deferredTo(QStringLiteral("d"), TaskQuadrant::urgentImportant)});
        QVERIFY(board.show());
        QVERIFY(board.clickIn(board.chip(a), QStringLiteral("TODOに戻す")));
        QVERIFY(!board.fakes.task(a).isDeferred);
        QVERIFY(board.clickIn(board.chip(QStringLiteral("b")), QStringLiteral("完了")));
        QVERIFY(board.fakes.task(QStringLiteral("b")).isDone);
        QVERIFY(board.clickIn(board.chip(QStringLiteral("c")), QStringLiteral("削除（元に戻せます）")));
        QCOMPARE(board.store.tasks.value().size(), 3);
        QVERIFY(chooseFromMenu(*board.chip(QStringLiteral("d")), label(TaskQuadrant::notUrgentNotImportant)));
        QCOMPARE(board.fakes.task(QStringLiteral("d")).quadrant, TaskQuadrant::notUrgentNotImportant);
        QCOMPARE(titlesIn(*board.cell(TaskQuadrant::notUrgentNotImportant)), QStringLiteral("d"));
    }

    void aCountThatGetsLongerIsShownWhole()
    {
        TaskList tasks;
        for (int i = 0; i < 9; ++i)
            tasks.append(deferredTo(QStringLiteral("t%1").arg(i), TaskQuadrant::urgentImportant));
        const TaskItem last = madeTask(QStringLiteral("last"));
        Board board(tasks + TaskList{last});
        QVERIFY(board.show());
        board.store.deferTask(board.fakes.task(QStringLiteral("last")), TaskQuadrant::urgentImportant);
        const TextLabel *count =
            labelSaying(*board.cell(TaskQuadrant::urgentImportant), QStringLiteral("10"));
        QVERIFY(count && !count->isElided());
    }

    void theBoardIsClosedByItsButton()
    {
        Board board({});
        QVERIFY(board.show());
        QVERIFY(click(board.board(), QStringLiteral("4象限を閉じる")));
        QVERIFY(!board.store.isQuadrantBoardVisible.value());
        QVERIFY(!board.board().isVisible());
    }

    void whileATaskIsDraggedTheTargetedCellSaysSo()
    {
        Board board({});
        QVERIFY(board.show());
        const QString drop = QStringLiteral("ここへドロップ");
        board.board().setDrag(true, std::nullopt);
        QVERIFY(!labelSaying(board.board(), drop));
        board.board().setDrag(true, TaskQuadrant::urgentNotImportant);
        QVERIFY(labelSaying(*board.cell(TaskQuadrant::urgentNotImportant), drop));
        QVERIFY(!labelSaying(*board.cell(TaskQuadrant::urgentImportant), drop));
        board.board().setDrag(false, std::nullopt);
        QVERIFY(!labelSaying(board.board(), drop));
    }

    void aPointIsInTheCellItIsIn()
    {
        Board board({});
        QVERIFY(board.show());
        for (const TaskQuadrant quadrant : allQuadrants)
            QCOMPARE(board.board().quadrantAt(board.cell(quadrant)->geometry().center()), quadrant);
        QCOMPARE(board.board().quadrantAt(QPoint(5, 5)), std::nullopt);
    }

    void everyButtonIsLargeEnoughAndReadOut()
    {
        Board board({deferredTo(QString(60, QChar(u'w')), TaskQuadrant::urgentImportant)});
        QVERIFY(board.show());
        enter(*board.chip(QString(60, QChar(u'w'))));
        QCOMPARE(faultsOfButtons(*board.chip(QString(60, QChar(u'w')))), QStringList());
    }

    void markupIsShownAsText()
    {
        Board board({deferredTo(awkward(), TaskQuadrant::urgentImportant)});
        QVERIFY(board.show());
        QCOMPARE(accessibleName(*board.chip(awkward())), awkward());
    }

    void theBoardLiesOnTheSideItIsPut()
    {
        Board board({});
        QVERIFY(board.show());
        QCOMPARE(board.board().x(), 344);
        board.view->setBoardLeftOfList(true);
        QCOMPARE(board.board().x(), 0);
        QCOMPARE(board.board().width(), 372);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::QuadrantBoardTest)
#include "quadrant_board_test.moc"
