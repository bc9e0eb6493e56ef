// SPDX-License-Identifier: MIT
#include "model/focus_store.h"
#include "model/task_list.h"
#include "model/task_ordering.h"

#include <QObject>

#include <utility>

namespace wrenfold {

namespace {

QList<QUuid> withoutRepeats(const QList<QUuid> &ids)
{
    QSet<QUuid> seen;
    QList<QUuid> result;
    for (const QUuid &id : ids) {
        if (!seen.contains(id))
            result.append(id);
        seen.insert(id);
    }
    return result;
}

/// With the tasks of `all` that `ordered` lacks at its end, in their order.
TaskList withMissing(TaskList ordered, const TaskList &all)
{
    if (ordered.size() == all.size())
        return ordered;
    QSet<QUuid> present;
    for (const TaskItem &task : std::as_const(ordered))
        present.insert(task.id);
    for (const TaskItem &task : all) {
        if (!present.contains(task.id))
            ordered.append(task);
    }
    return ordered;
}

} // namespace

void FocusStore::applyPriorityOrder(const QList<QUuid> &orderedIDs)
{
    const TaskList ordered = withMissing(
        TaskOrdering::applyPriorityOrder(tasks.value(), withoutRepeats(orderedIDs)), tasks.value());
    if (ordered == tasks.value())
        return;
    const ChangeGroup::Scope scope(m_changes);
    registerTaskUndo(QStringLiteral("優先順に並べ替え"));
    setTasks(ordered);
}

void FocusStore::moveTask(const QUuid &movingID, const QUuid &targetID, bool placeAfter)
{
    setTasks(withTaskMoved(tasks.value(), movingID, targetID, placeAfter));
}

void FocusStore::beginTaskReorder()
{
    if (!m_reorderStartSnapshot)
        m_reorderStartSnapshot = snapshot();
}

void FocusStore::endTaskReorder()
{
    const std::optional<TaskSnapshot> start = std::exchange(m_reorderStartSnapshot, std::nullopt);
    endReorderWait();
    if (!start || *start == snapshot())
        return;
    const ChangeGroup::Scope scope(m_changes);
    registerTaskUndo(QStringLiteral("並べ替え"), start);
}

void FocusStore::cancelTaskReorder()
{
    const std::optional<TaskSnapshot> start = std::exchange(m_reorderStartSnapshot, std::nullopt);
    endReorderWait();
    if (!start)
        return;
    const ChangeGroup::Scope scope(m_changes);
    // The order alone: a task that was added while the drag was under way is not lost with it.
    setTasks(withOrderOf(start->tasks, tasks.value()));
    const TaskItem *active = start->activeTaskID ? findTask(tasks.value(), *start->activeTaskID) : nullptr;
    if (active && active->isOpen())
        activeTaskID.set(start->activeTaskID);
}

/// Carries the operation out at once or, during a drag, after its end: a list that changes under the pointer would
/// lose the drag, and the drag the change.
void FocusStore::whenNotReordering(std::function<void()> operation)
{
    if (m_reorderStartSnapshot)
        m_waitingForReorderEnd.push_back(std::move(operation));
    else
        operation();
}

void FocusStore::endReorderWait()
{
    // When the caller has finished: a drop on a quadrant is the end of the drag and a deferral.
    for (std::function<void()> &operation : std::exchange(m_waitingForReorderEnd, {})) {
        QMetaObject::invokeMethod(
            m_answersOwner.get(), [this, operation = std::move(operation)] { whenNotReordering(operation); },
            Qt::QueuedConnection);
    }
}

} // namespace wrenfold
