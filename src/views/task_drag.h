// SPDX-License-Identifier: MIT
#pragma once

#include "model/task_quadrant.h"
#include "platform/clock.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QUuid>

#include <memory>
#include <optional>

class QMouseEvent;

namespace wrenfold {

class DraggingTaskPreview;
class FocusStore;
class QuadrantBoard;
class RowListView;

/// Dragging a task with the pointer: by the handle of its row or, while the reorder key is held, by any place of the
/// row. In the list the task's block moves along at once; over a cell of the board it can be let go to defer it.
///
/// However a drag ends, it is at most one undo step, and the store is told of its end.
class TaskDrag : public QObject
{
    Q_OBJECT

public:
    /// `panel` holds the list and the board; all of them must outlive this object. It must be cancelled before it goes.
    TaskDrag(FocusStore &store, Clock &clock, RowListView &list, QuadrantBoard &board, QWidget &panel);

    /// Where in the panel a task is moved within the list; to be told at each change.
    void setMainPaneFrame(const QRect &frame) { m_mainPaneFrame = frame; }

    /// None while nothing is dragged.
    [[nodiscard]] std::optional<QUuid> draggingTaskID() const { return m_draggingTaskID; }

    /// The list shows other rows now. Ends the drag if its task can no longer be moved.
    void followRows();

    /// Puts everything back as it was before the drag; does nothing without one.
    void cancel();

Q_SIGNALS:
    void changed(); ///< A drag began or ended, or moved a task; the rows are to follow at once.

protected:
    /// Sees the events of all widgets: the pointer belongs to whichever it was pressed on.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool press(QWidget &widget, const QMouseEvent &event);
    void follow(const QMouseEvent &event);
    void begin();
    void update();
    void updateScrolling();
    [[nodiscard]] int scrollStep();
    [[nodiscard]] QRect mainPaneOnScreen() const;
    [[nodiscard]] bool isPointerInList();
    void release();
    void releaseUnseen();
    void end();

    FocusStore &m_store;
    Clock &m_clock;
    RowListView &m_list;
    QuadrantBoard &m_board;
    QWidget &m_panel;
    QRect m_mainPaneFrame;

    std::optional<QUuid> m_pressedTaskID; ///< From the press on; none when nothing is pressed.
    QPointer<QWidget> m_pressed;
    QPoint m_pressPosition; ///< Of the screen.
    QPoint m_pointer;       ///< Of the screen.
    QPoint m_grabbedAt;     ///< Where the row was taken hold of.
    /// Of the screen; until the pointer has left it, or is in the list again.
    std::optional<QRect> m_paneAtStart;
    /// Where it was pressed; until the pointer is away from the edges.
    std::optional<int> m_heightAtStart;

    std::optional<QUuid> m_draggingTaskID;
    std::optional<TaskQuadrant> m_targetedQuadrant;
    DraggingTaskPreview *m_preview = nullptr;   ///< The panel's; only while a task is dragged.
    std::unique_ptr<ScheduledCall> m_scrolling; ///< Only while the list scrolls under the pointer.
};

} // namespace wrenfold
