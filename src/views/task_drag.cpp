// SPDX-License-Identifier: MIT
#include "views/task_drag.h"

#include "app/debug_log.h"
#include "model/focus_store.h"
#include "model/task_list.h"
#include "views/dragging_task_preview.h"
#include "views/quadrant_board.h"
#include "views/row_list_view.h"
#include "views/task_reorder.h"
#include "views/task_row.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace wrenfold {

namespace {

bool canBeDragged(const TaskItem &task)
{
    return task.isTopLevel() && task.isOpen();
}

TaskRow *rowAround(QWidget *widget)
{
    while (widget && !qobject_cast<TaskRow *>(widget))
        widget = widget->parentWidget();
    return static_cast<TaskRow *>(widget);
}

} // namespace

TaskDrag::TaskDrag(FocusStore &store, Clock &clock, RowListView &list, QuadrantBoard &board, QWidget &panel)
    : m_store(store)
    , m_clock(clock)
    , m_list(list)
    , m_board(board)
    , m_panel(panel)
{
    qApp->installEventFilter(this);
    // The wheel, too, moves the list under the pointer.
    connect(m_list.verticalScrollBar(), &QScrollBar::valueChanged, this, &TaskDrag::update);
}

bool TaskDrag::eventFilter(QObject *watched, QEvent *event)
{
    auto *widget = qobject_cast<QWidget *>(watched);
    if (!widget)
        return false;
    const bool isPressed = m_pressedTaskID.has_value();
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (isPressed && static_cast<QMouseEvent *>(event)->button() != Qt::LeftButton)
            return true;
        releaseUnseen();
        return press(*widget, *static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        if (isPressed)
            follow(*static_cast<QMouseEvent *>(event));
        return isPressed;
    case QEvent::MouseButtonRelease:
        if (isPressed && static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton)
            release();
        return isPressed;
    case QEvent::ContextMenu:
        return isPressed;
    case QEvent::ShortcutOverride:
        if (!m_draggingTaskID)
            return false;
        event->accept(); // A shortcut could take the task from under the pointer.
        return true;
    case QEvent::KeyPress:
        if (!m_draggingTaskID)
            return false;
        if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
            cancel();
        return true;
    case QEvent::Hide:
        if (widget == m_panel.window() || widget == &m_list)
            cancel();
        return false;
    default:
        return false;
    }
}

bool TaskDrag::press(QWidget &widget, const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton || !m_list.isAncestorOf(&widget))
        return false;
    TaskRow *row = rowAround(&widget);
    if (!row || !canBeDragged(row->row().task) || qobject_cast<QLineEdit *>(&widget))
        return false;
    const bool isHandle = row->isHandle(widget);
    const bool isKeyHeld = m_store.isReorderKeyPressed.value() || event.modifiers() == Qt::ControlModifier;
    if (!isHandle && !isKeyHeld)
        return false;
    m_pressedTaskID = row->row().task.id;
    m_pressed = &widget;
    m_pressPosition = m_pointer = event.globalPosition().toPoint();
    m_grabbedAt = row->mapFromGlobal(m_pressPosition);
    return true;
}

void TaskDrag::follow(const QMouseEvent &event)
{
    if (!(event.buttons() & Qt::LeftButton)) {
        // Qt says by itself that the pointer is over something new when a widget goes, and knows no buttons then.
        if (!event.spontaneous())
            return;
        return releaseUnseen();
    }
    m_pointer = event.globalPosition().toPoint();
    const int distance = (m_pointer - m_pressPosition).manhattanLength();
    if (!m_draggingTaskID && distance >= QApplication::startDragDistance())
        begin();
    if (m_draggingTaskID)
        update();
}

void TaskDrag::begin()
{
    const std::optional<QRect> frame = m_list.rowFrame({PanelRow::Kind::Task, *m_pressedTaskID});
    const TaskItem *task = findTask(m_store.tasks.value(), *m_pressedTaskID);
    if (!frame || !task) {
        qCCritical(DebugLog::ui) << "a drag began on a row without a frame";
        m_pressedTaskID.reset();
        return;
    }
    m_draggingTaskID = m_pressedTaskID;
    m_paneAtStart = mainPaneOnScreen();
    m_heightAtStart = m_pressPosition.y();
    m_preview = new DraggingTaskPreview(*task, &m_panel);
    m_preview->resize(frame->size());
    m_preview->show();
    QApplication::setOverrideCursor(Qt::ClosedHandCursor);
    m_store.beginTaskReorder();
    m_store.isQuadrantDropActive.set(true);
    Q_EMIT changed();
}

void TaskDrag::update()
{
    if (!m_draggingTaskID)
        return;
    const QPoint position = m_panel.mapFromGlobal(m_pointer);
    m_preview->move(position - m_grabbedAt);
    m_preview->raise();
    const bool isInList = isPointerInList();
    m_targetedQuadrant = isInList ? std::nullopt : m_board.quadrantAt(m_board.mapFromGlobal(m_pointer));
    m_board.setDrag(true, m_targetedQuadrant);
    if (!isInList) {
        m_scrolling.reset();
        return;
    }
    const int y = m_list.viewport()->mapFromGlobal(m_pointer).y();
    const int inSight = std::clamp(y, 0, m_list.viewport()->height() - 1);
    const std::optional<ReorderMove> move = reorderMove(reorderRows(m_list.rows()), *m_draggingTaskID,
                                                        inSight + m_list.verticalScrollBar()->value());
    if (move) {
        m_store.moveTask(*m_draggingTaskID, move->targetID, move->placeAfter);
        Q_EMIT changed();
    }
    if (m_draggingTaskID) // The list may have lost the task meanwhile.
        updateScrolling();
}

QRect TaskDrag::mainPaneOnScreen() const
{
    return {m_panel.mapToGlobal(m_mainPaneFrame.topLeft()), m_mainPaneFrame.size()};
}

bool TaskDrag::isPointerInList()
{
    // Above and below the panel too, so that a pointer that goes too far still moves the task to an end.
    const auto isAcross = [this](const QRect &pane) {
        return m_pointer.x() >= pane.left() && m_pointer.x() <= pane.right();
    };
    const bool isInPane = isAcross(mainPaneOnScreen());
    // Near the edge of the screen the list gives way to the board; where it was, the pointer has not left it.
    if (m_paneAtStart && (isInPane || !isAcross(*m_paneAtStart)))
        m_paneAtStart.reset();
    return isInPane || m_paneAtStart;
}

int TaskDrag::scrollStep()
{
    const QScrollBar &bar = *m_list.verticalScrollBar();
    const int y = m_list.viewport()->mapFromGlobal(m_pointer).y();
    const int step = autoScrollStep(y, m_list.viewport()->height());
    if (step == 0)
        m_heightAtStart.reset();
    // A panel that got lower when the board opened may have left the pointer beyond its edge.
    const bool isUnmeant =
        m_heightAtStart && (step < 0 ? m_pointer.y() >= *m_heightAtStart : m_pointer.y() <= *m_heightAtStart);
    return isUnmeant ? 0 : std::clamp(bar.value() + step, bar.minimum(), bar.maximum()) - bar.value();
}

void TaskDrag::updateScrolling()
{
    constexpr auto tick = std::chrono::milliseconds(16);
    if (scrollStep() == 0) {
        m_scrolling.reset();
    } else if (!m_scrolling) {
        m_scrolling = m_clock.every(tick, [this] {
            QScrollBar &bar = *m_list.verticalScrollBar();
            bar.setValue(bar.value() + scrollStep());
        });
    }
}

/// Let go where nobody told us, as when another program took the pointer.
void TaskDrag::releaseUnseen()
{
    m_pressed = nullptr;
    if (m_pressedTaskID)
        release();
}

void TaskDrag::release()
{
    if (!m_draggingTaskID) {
        m_pressedTaskID.reset();
        // It was a click, then.
        if (auto *button = qobject_cast<QAbstractButton *>(m_pressed))
            button->click();
        return;
    }
    if (m_targetedQuadrant) {
        // When it comes back into the list, then not to where it was dragged over.
        m_store.cancelTaskReorder();
        if (const TaskItem *task = findTask(m_store.tasks.value(), *m_draggingTaskID))
            m_store.deferTask(TaskItem(*task), *m_targetedQuadrant);
    }
    m_store.endTaskReorder();
    end();
}

void TaskDrag::followRows()
{
    if (!m_draggingTaskID)
        return;
    const TaskItem *task = findTask(m_store.tasks.value(), *m_draggingTaskID);
    if (!task || !canBeDragged(*task))
        cancel();
}

void TaskDrag::cancel()
{
    m_pressedTaskID.reset();
    if (!m_draggingTaskID)
        return;
    m_store.cancelTaskReorder();
    end();
}

void TaskDrag::end()
{
    m_pressedTaskID.reset();
    m_draggingTaskID.reset();
    m_targetedQuadrant.reset();
    m_scrolling.reset();
    delete std::exchange(m_preview, nullptr);
    QApplication::restoreOverrideCursor();
    m_board.setDrag(false, std::nullopt);
    m_store.isQuadrantDropActive.set(false);
    Q_EMIT changed();
}

} // namespace wrenfold
