// SPDX-License-Identifier: MIT
#include "model/store_machine.h"

namespace wrenfold {

void StoreMachine::addTask()
{
    const QString title = anyTitle();
    const std::optional<QUuid> parent = oneIn(4) ? std::optional(anyTask().id) : std::nullopt;
    m_store.addTask(title, oneIn(2), parent);
    if (title.trimmed().isEmpty())
        return expectNoChange();
    const std::optional<QUuid> place = parent ? parent : m_composer;
    if (place)
        m_composer.reset();
    if (place && !m_ids.contains(*place))
        return expectNoChange();
    m_expectedNewTasks = 1;
    expectUndoEntry();
}

void StoreMachine::addSubtask()
{
    const QUuid parent = anyTask().id;
    const QString title = anyTitle();
    m_store.addSubtask(parent, title);
    if (title.trimmed().isEmpty() || !m_ids.contains(parent))
        return expectNoChange();
    m_expectedNewTasks = 1;
    expectUndoEntry();
}

void StoreMachine::beginAddSubtask()
{
    const TaskItem task = anyTask();
    m_store.beginAddSubtask(task);
    if (const TaskItem *present = findTask(m_before.snapshot.tasks, task.id))
        m_composer = present->parentID.value_or(task.id);
    expectNoChange();
}

void StoreMachine::endAddSubtask()
{
    m_store.endAddSubtask();
    m_composer.reset();
    expectNoChange();
}

void StoreMachine::toggleDone()
{
    const TaskItem task = anyTask();
    m_store.toggleDone(task);
    if (m_ids.contains(task.id))
        expectUndoEntry();
    else
        expectNoChange();
}

void StoreMachine::setActive()
{
    const TaskItem task = anyTask();
    m_store.setActive(task);
    const TaskItem *present = findTask(m_before.snapshot.tasks, task.id);
    if (!present || present->isDone || present->isDeferred || m_before.snapshot.activeTaskID == task.id)
        return expectNoChange();
    m_expected = {m_before.snapshot.tasks, task.id};
    expectUndoEntry();
}

void StoreMachine::toggleExpanded()
{
    m_store.toggleExpanded(anyTask());
}

void StoreMachine::updateTaskTitle()
{
    const TaskItem task = anyTask();
    const QString title = anyTitle();
    m_store.updateTaskTitle(task, title);
    if (m_ids.contains(task.id) && !title.trimmed().isEmpty())
        expectUndoEntry();
    else
        expectNoChange();
}

void StoreMachine::deleteTask()
{
    const TaskItem task = anyTask();
    m_store.deleteTask(task);
    if (!m_ids.contains(task.id))
        return expectNoChange();
    expectDeletion(family(m_before.snapshot.tasks, task.id));
    m_unknown = task;
}

void StoreMachine::deferTask()
{
    const TaskItem task = anyTask();
    const TaskQuadrant quadrant = anyQuadrant();
    m_store.deferTask(task, quadrant);
    bool isDifferent = false;
    for (const TaskItem &member : m_before.snapshot.tasks) {
        if (member.id == task.id || member.parentID == task.id)
            isDifferent = isDifferent || !member.isDeferred || member.quadrant != quadrant;
    }
    if (!isDifferent)
        return expectNoChange();
    expectUndoEntry();
    expectFlash();
}

void StoreMachine::restoreDeferredTask()
{
    const TaskItem task = anyTask();
    m_store.restoreDeferredTask(task);
    bool isDifferent = false;
    for (const TaskItem &member : m_before.snapshot.tasks) {
        if (member.id == task.id || member.parentID == task.id)
            isDifferent = isDifferent || member.isDeferred;
    }
    if (!m_ids.contains(task.id) || !isDifferent)
        return expectNoChange();
    expectUndoEntry();
    expectFlash();
}

void StoreMachine::setQuadrant()
{
    const TaskItem task = anyTask();
    m_store.setQuadrant(anyQuadrant(), task);
    if (!m_ids.contains(task.id))
        return expectNoChange();
    expectUndoEntry();
    expectFlash();
}

void StoreMachine::clearCompleted()
{
    QSet<QUuid> removed;
    for (const TaskItem &task : m_before.snapshot.tasks) {
        if (task.isDone)
            removed.insert(task.id);
    }
    m_store.clearCompleted();
    if (removed.isEmpty())
        expectNoChange();
    else
        expectDeletion(removed);
}

// During a drag undo and redo wait, which the test of the order shows; here it ends first.
void StoreMachine::undo()
{
    if (m_dragStart)
        return endTaskReorder();
    m_store.undo();
    expectStep(m_undo, m_redo);
}

void StoreMachine::redo()
{
    if (m_dragStart)
        return endTaskReorder();
    m_store.redo();
    expectStep(m_redo, m_undo);
}

void StoreMachine::undoAndRedo()
{
    if (m_undo.empty() || m_dragStart)
        return undo();
    m_store.undo();
    m_store.redo();
    m_expectedWrites = m_undo.back().snapshot == m_before.snapshot ? 0 : 2;
    m_pendingUndo.reset();
    expectFlash();
    expectNoChange();
    if (!m_ids.contains(m_composer.value_or(QUuid())) || !m_undo.back().ids.contains(*m_composer))
        m_composer.reset();
}

void StoreMachine::redoAndUndo()
{
    if (m_redo.empty() || m_dragStart)
        return redo();
    m_store.redo();
    m_store.undo();
    m_expectedWrites = m_redo.back().snapshot == m_before.snapshot ? 0 : 2;
    m_pendingUndo.reset();
    expectFlash();
    expectNoChange();
    if (!m_ids.contains(m_composer.value_or(QUuid())) || !m_redo.back().ids.contains(*m_composer))
        m_composer.reset();
}

void StoreMachine::applyPriorityOrder()
{
    QList<QUuid> order;
    for (int i = m_random.bounded(10); i > 0; --i)
        order << anyTask().id; // Repeats, subtasks and unknown ones among them.
    m_store.applyPriorityOrder(order);
    if (state() != m_before.snapshot)
        expectUndoEntry();
}

void StoreMachine::moveTask()
{
    m_store.moveTask(anyTask().id, anyTask().id, oneIn(2));
}

void StoreMachine::beginTaskReorder()
{
    m_store.beginTaskReorder();
    if (!m_dragStart)
        m_dragStart = m_before;
    expectNoChange();
}

void StoreMachine::endTaskReorder()
{
    m_store.endTaskReorder();
    const std::optional<State> start = std::exchange(m_dragStart, std::nullopt);
    if (start && start->snapshot != m_before.snapshot)
        expectUndoEntry(*start);
    expectNoChange();
}

void StoreMachine::cancelTaskReorder()
{
    m_store.cancelTaskReorder();
    const std::optional<State> start = std::exchange(m_dragStart, std::nullopt);
    if (!start)
        return expectNoChange();
    // The order of the beginning with the tasks of now; one added since stays behind the one before it.
    const TaskList &present = m_before.snapshot.tasks;
    TaskList expected;
    for (const TaskItem &task : start->snapshot.tasks) {
        if (const TaskItem *now = findTask(present, task.id))
            expected.append(*now);
    }
    for (qsizetype i = 0; i < present.size(); ++i) {
        if (!findTask(expected, present[i].id))
            expected.insert(i == 0 ? 0 : indexOfTask(expected, present[i - 1].id) + 1, present[i]);
    }
    const std::optional<QUuid> startActive = start->snapshot.activeTaskID;
    const TaskItem *active = startActive ? findTask(present, *startActive) : nullptr;
    m_expected =
        TaskSnapshot{expected, active && active->isOpen() ? startActive : m_before.snapshot.activeTaskID};
}

void StoreMachine::setSortStatus()
{
    m_store.setSortStatus(QStringLiteral("AIで整列中"));
    m_isStatusShown = true;
    m_statusEnd = -1;
    expectNoChange();
}

void StoreMachine::letTimePass()
{
    const int milliseconds = m_random.bounded(8000);
    m_fakes.clock.advance(std::chrono::milliseconds(milliseconds));
    m_now += milliseconds;
    if (m_statusEnd >= 0 && m_now >= m_statusEnd)
        m_isStatusShown = false;
    if (m_now >= m_pendingUndoEnd)
        m_pendingUndo.reset();
    expectNoChange();
}

} // namespace wrenfold
