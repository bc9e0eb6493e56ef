// SPDX-License-Identifier: MIT
#include "model/store_machine.h"

namespace wrenfold {

namespace {

constexpr qsizetype mostTasks = 40;
constexpr std::size_t mostUndoEntries = 50;
constexpr qint64 flashMilliseconds = 6000;

QSet<QUuid> idsOf(const TaskList &tasks)
{
    QSet<QUuid> ids;
    for (const TaskItem &task : tasks)
        ids.insert(task.id);
    return ids;
}

} // namespace

StoreMachine::StoreMachine(quint32 seed)
    : m_random(seed)
{
}

QString StoreMachine::step()
{
    // The commoner an operation in use, the more often it stands here.
    static constexpr Operation operations[] = {
        &StoreMachine::addTask,
        &StoreMachine::addTask,
        &StoreMachine::addTask,
        &StoreMachine::addTask,
        &StoreMachine::addSubtask,
        &StoreMachine::addSubtask,
        &StoreMachine::beginAddSubtask,
        &StoreMachine::endAddSubtask,
        &StoreMachine::toggleDone,
        &StoreMachine::toggleDone,
        &StoreMachine::setActive,
        &StoreMachine::toggleExpanded,
        &StoreMachine::updateTaskTitle,
        &StoreMachine::deleteTask,
        &StoreMachine::deferTask,
        &StoreMachine::restoreDeferredTask,
        &StoreMachine::setQuadrant,
        &StoreMachine::clearCompleted,
        &StoreMachine::undo,
        &StoreMachine::undo,
        &StoreMachine::undo,
        &StoreMachine::redo,
        &StoreMachine::redo,
        &StoreMachine::undoAndRedo,
        &StoreMachine::redoAndUndo,
        &StoreMachine::applyPriorityOrder,
        &StoreMachine::moveTask,
        &StoreMachine::moveTask,
        &StoreMachine::beginTaskReorder,
        &StoreMachine::endTaskReorder,
        &StoreMachine::cancelTaskReorder,
        &StoreMachine::setSortStatus,
        &StoreMachine::letTimePass,
    };
    m_before = {state(), m_ids};
    m_expected.reset();
    m_expectedNewTasks = 0;
    m_expectedWrites.reset();
    const int writes = m_fakes.preferences.writeCount();

    const bool isFull = m_ids.size() >= mostTasks;
    const Operation operation =
        isFull ? &StoreMachine::deleteTask : operations[m_random.bounded(quint32(std::size(operations)))];
    (this->*operation)();

    const int expectedWrites = m_expectedWrites.value_or(state() != m_before.snapshot ? 1 : 0);
    if (m_fakes.preferences.writeCount() - writes != expectedWrites)
        return QStringLiteral("%1 writes instead of %2")
            .arg(m_fakes.preferences.writeCount() - writes)
            .arg(expectedWrites);
    return wrongness();
}

TaskItem StoreMachine::anyTask()
{
    const TaskList &tasks = m_store.tasks.value();
    if (tasks.isEmpty() || oneIn(20))
        return m_unknown;
    return tasks[m_random.bounded(int(tasks.size()))];
}

QString StoreMachine::anyTitle()
{
    switch (m_random.bounded(8)) {
    case 0:
        return QStringLiteral(" \u3000\n");
    case 1:
        return QStringLiteral("\u3000👨‍👩‍👧‍👦 ") +
               QChar(char16_t(0xD800 + m_random.bounded(0x800)));
    default:
        return QStringLiteral("仕事 %1").arg(m_random.bounded(1000));
    }
}

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
    if (m_ids.contains(task.id))
        m_composer = task.parentID.value_or(task.id);
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
    if (!m_ids.contains(task.id) || task.isDone || task.isDeferred ||
        m_before.snapshot.activeTaskID == task.id)
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

void StoreMachine::undo()
{
    m_store.undo();
    expectStep(m_undo, m_redo);
}

void StoreMachine::redo()
{
    m_store.redo();
    expectStep(m_redo, m_undo);
}

void StoreMachine::undoAndRedo()
{
    if (m_undo.empty())
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
    if (m_redo.empty())
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
    // The state of the beginning comes back whole: with what was deleted, without what was added since.
    expectState(std::exchange(m_dragStart, std::nullopt).value_or(m_before));
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

void StoreMachine::expectUndoEntry(const State &before)
{
    m_undo.push_back(before);
    if (m_undo.size() > mostUndoEntries)
        m_undo.pop_front();
    m_redo.clear();
    m_pendingUndo.reset();
}

void StoreMachine::expectDeletion(const QSet<QUuid> &removed)
{
    m_ids.subtract(removed);
    expectUndoEntry();
    m_pendingUndo = DeletionSnapshot{m_before.snapshot.tasks, m_before.snapshot.activeTaskID};
    expectFlash();
}

void StoreMachine::expectFlash()
{
    m_isStatusShown = true;
    m_statusEnd = m_pendingUndoEnd = m_now + flashMilliseconds;
}

void StoreMachine::expectState(const State &state)
{
    m_expected = state.snapshot;
    m_ids = state.ids;
}

void StoreMachine::expectStep(std::deque<State> &from, std::deque<State> &to)
{
    if (from.empty())
        return expectNoChange();
    expectState(from.back());
    from.pop_back();
    to.push_back(m_before);
    m_pendingUndo.reset();
    expectFlash();
}

QString StoreMachine::wrongness()
{
    const QSet<QUuid> ids = idsOf(m_store.tasks.value());
    const QSet<QUuid> added = ids - m_ids;
    if (added.size() != m_expectedNewTasks)
        return QStringLiteral("%1 new tasks instead of %2").arg(added.size()).arg(m_expectedNewTasks);
    m_ids += added;
    if (ids != m_ids)
        return QStringLiteral("%1 tasks are lost").arg((m_ids - ids).size());
    if (m_composer && !m_ids.contains(*m_composer))
        m_composer.reset();
    if (m_expected && state() != *m_expected)
        return QStringLiteral("not the expected list or NOW task");
    if (m_store.canUndo.value() == m_undo.empty() || m_store.canRedo.value() == m_redo.empty())
        return QStringLiteral("can undo: %1, can redo: %2, which is wrong")
            .arg(m_store.canUndo.value())
            .arg(m_store.canRedo.value());
    if (m_store.pendingUndo.value() != m_pendingUndo)
        return QStringLiteral("not the expected record of a deletion");
    if (m_store.sortStatus.value().isEmpty() == m_isStatusShown)
        return QStringLiteral("the status line is \"%1\"").arg(m_store.sortStatus.value());
    if (m_store.subtaskComposerParentID.value() != m_composer)
        return QStringLiteral("the composer is open under the wrong task, or closed");
    return wrongList();
}

QString StoreMachine::wrongList() const
{
    const TaskList &tasks = m_store.tasks.value();
    if (m_ids.size() != tasks.size())
        return QStringLiteral("an identifier is there twice");
    for (const TaskItem &task : tasks) {
        const TaskItem *parent = task.parentID ? findTask(tasks, *task.parentID) : nullptr;
        if (task.parentID && !parent)
            return QStringLiteral("the parent of \"%1\" is missing").arg(task.title);
        if (parent && parent->parentID)
            return QStringLiteral("\"%1\" stands on a second level").arg(task.title);
        if (task.isDone != task.completedAt.has_value())
            return QStringLiteral("\"%1\" is done or has a completion time, but not both").arg(task.title);
        if (task.title.trimmed() != task.title || task.title.isEmpty())
            return QStringLiteral("\"%1\" is no proper title").arg(task.title);
    }
    if (const std::optional<QUuid> now = m_store.activeTaskID.value()) {
        const TaskItem *task = findTask(tasks, *now);
        if (!task || !task->isOpen())
            return QStringLiteral("the NOW task is missing or not open");
    }
    return {};
}

} // namespace wrenfold
