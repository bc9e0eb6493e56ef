// SPDX-License-Identifier: MIT
#include "model/store_machine.h"

#include <iterator>
#include <numeric>

namespace wrenfold {

namespace {

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
    , m_mostTasks(m_random.bounded(2, 41))
{
}

const StoreMachine::Operation &StoreMachine::anyOperation()
{
    static constexpr Operation operations[] = {
        {"addTask", 5, &StoreMachine::addTask},
        {"addSubtask", 2, &StoreMachine::addSubtask},
        {"beginAddSubtask", 1, &StoreMachine::beginAddSubtask},
        {"endAddSubtask", 1, &StoreMachine::endAddSubtask},
        {"toggleDone", 2, &StoreMachine::toggleDone},
        {"setActive", 1, &StoreMachine::setActive},
        {"toggleExpanded", 1, &StoreMachine::toggleExpanded},
        {"updateTaskTitle", 1, &StoreMachine::updateTaskTitle},
        {"deleteTask", 1, &StoreMachine::deleteTask},
        {"deferTask", 1, &StoreMachine::deferTask},
        {"restoreDeferredTask", 1, &StoreMachine::restoreDeferredTask},
        {"setQuadrant", 1, &StoreMachine::setQuadrant},
        {"clearCompleted", 1, &StoreMachine::clearCompleted},
        {"undo", 3, &StoreMachine::undo},
        {"redo", 2, &StoreMachine::redo},
        {"undoAndRedo", 1, &StoreMachine::undoAndRedo},
        {"redoAndUndo", 1, &StoreMachine::redoAndUndo},
        {"applyPriorityOrder", 1, &StoreMachine::applyPriorityOrder},
        {"moveTask", 2, &StoreMachine::moveTask},
        {"beginTaskReorder", 1, &StoreMachine::beginTaskReorder},
        {"endTaskReorder", 1, &StoreMachine::endTaskReorder},
        {"cancelTaskReorder", 1, &StoreMachine::cancelTaskReorder},
        {"setSortStatus", 1, &StoreMachine::setSortStatus},
        {"letTimePass", 1, &StoreMachine::letTimePass},
    };
    static const int weights = std::accumulate(std::begin(operations), std::end(operations), 0,
                                               [](int sum, const Operation &o) { return sum + o.weight; });
    const Operation *operation = operations;
    for (int left = m_random.bounded(weights) - operation->weight; left >= 0; left -= operation->weight)
        ++operation;
    return *operation;
}

QString StoreMachine::step()
{
    m_before = {state(), m_ids};
    m_expected.reset();
    m_expectedNewTasks = 0;
    m_expectedWrites.reset();
    const int writes = m_fakes.preferences.writeCount();

    const Operation &operation = anyOperation();
    (this->*(m_ids.size() >= m_mostTasks ? &StoreMachine::deleteTask : operation.perform))();

    const int expectedWrites = m_expectedWrites.value_or(state() != m_before.snapshot ? 1 : 0);
    const int written = m_fakes.preferences.writeCount() - writes;
    const QString wrong = written == expectedWrites
                              ? wrongness()
                              : QStringLiteral("%1 writes instead of %2").arg(written).arg(expectedWrites);
    return wrong.isEmpty() ? wrong : QStringLiteral("after %1: %2").arg(QLatin1String(operation.name), wrong);
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
