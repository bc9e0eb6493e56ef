// SPDX-License-Identifier: MIT
#pragma once

#include "views/dragging_task_preview.h"
#include "views/panel_in_window.h"
#include "views/quadrant_board.h"
#include "views/row_list_view.h"

#include <QWindow>

namespace wrenfold {

inline const QString &handleHelp()
{
    static const QString text = QStringLiteral("ドラッグして並べ替え／あとでやるへ分類");
    return text;
}

/// Tasks titled 1, 2, 3 and so on.
inline TaskList numberedTasks(int count)
{
    TaskList list;
    for (int i = 1; i <= count; ++i)
        list.append(madeTask(QString::number(i)));
    return list;
}

/// A panel in which tasks are dragged with the pointer, as the desktop reports it.
struct DragInPanel
{
    PanelInWindow panel;
    QString before;
    QPoint place; ///< Of the pointer, in the window.

    explicit DragInPanel(const TaskList &list, std::optional<QUuid> activeTaskID = std::nullopt)
        : panel(list, activeTaskID)
        , before(panel.fakes.titles())
    {
    }

    FocusStore &store() { return panel.store; }
    RowListView &list() const { return *panel.window.findChild<RowListView *>(); }
    QuadrantBoard &board() const { return *panel.window.findChild<QuadrantBoard *>(); }
    DraggingTaskPreview *preview() const { return panel.window.findChild<DraggingTaskPreview *>(); }
    QString titles() const { return panel.fakes.titles(); }

    QPoint middleOf(const QWidget &widget) const
    {
        return widget.mapTo(&panel.window, widget.rect().center());
    }
    QPoint middleOf(const QString &title) const { return middleOf(*panel.row(title)); }

    void movePointer(const QPoint &to)
    {
        place = to;
        QTest::mouseMove(panel.window.windowHandle(), to);
        QCoreApplication::processEvents();
    }
    void press(const QPoint &at, Qt::KeyboardModifiers modifiers = {})
    {
        movePointer(at);
        QTest::mousePress(panel.window.windowHandle(), Qt::LeftButton, modifiers, at);
    }
    void pressHandle(const QString &title)
    {
        movePointer(middleOf(title));
        press(middleOf(*buttonNamed(*panel.row(title), handleHelp())));
    }
    void pull(const QPoint &to) { movePointer(to); }
    /// Also to where the window is not.
    void pullBeyond(const QPoint &to)
    {
        place = to;
        QMouseEvent move(QEvent::MouseMove, to, panel.window.mapToGlobal(QPointF(to)), Qt::NoButton,
                         Qt::LeftButton, {});
        QCoreApplication::sendEvent(panel.view, &move);
        QCoreApplication::processEvents();
    }
    /// To where a small way into the upper or the lower half of the row is.
    void pullAbove(const QString &title) { pull(middleOf(title) - QPoint(0, 8)); }
    void pullBelow(const QString &title) { pull(middleOf(title) + QPoint(0, 8)); }
    /// The pointer is seen to move without its button, which was let go where nobody told us.
    void moveReleased()
    {
        QMouseEvent move(QEvent::MouseMove, place, panel.window.mapToGlobal(QPointF(place)), Qt::NoButton,
                         Qt::NoButton, {});
        QSpontaneKeyEvent::setSpontaneous(&move);
        qApp->notify(panel.view, &move); // sendEvent() would say that it came from us.
    }
    void letGo()
    {
        QTest::mouseRelease(panel.window.windowHandle(), Qt::LeftButton, {}, place);
        QCoreApplication::processEvents();
    }
    /// The panel widens as the window's controller has it do.
    void makeRoomForBoard()
    {
        panel.window.resize(716, 500);
        panel.view->setGeometry(panel.window.rect());
        QCoreApplication::processEvents();
    }
    QPoint cell(TaskQuadrant quadrant) const
    {
        for (int x = 0; x < board().width(); x += 5) {
            for (int y = 0; y < board().height(); y += 5) {
                if (board().quadrantAt({x, y}) == quadrant)
                    return board().mapTo(&panel.window, QPoint(x + 20, y + 20));
            }
        }
        return {};
    }
    bool isUnderWay() { return store().isQuadrantDropActive.value() || preview(); }
    int undoSteps()
    {
        int steps = 0;
        for (; store().canUndo.value(); ++steps)
            store().undo();
        return steps;
    }
};

} // namespace wrenfold
