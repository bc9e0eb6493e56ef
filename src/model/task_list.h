// SPDX-License-Identifier: MIT
#pragma once

#include "model/task_item.h"

#include <QSet>

namespace wrenfold {

/// Questions about a task list and changes of it, as functions from values to values. "Open" is neither done
/// nor deferred. Lists come back in list order.

[[nodiscard]] qsizetype indexOfTask(const TaskList &tasks, const QUuid &id);    ///< -1 when there is none.
[[nodiscard]] const TaskItem *findTask(const TaskList &tasks, const QUuid &id); ///< Null when there is none.

/// The first open task behind `index`, else the first one from the start up to and including `index`.
[[nodiscard]] std::optional<QUuid> nextOpenTaskID(const TaskList &tasks, qsizetype index);

[[nodiscard]] TaskList topLevelTasks(const TaskList &tasks);
[[nodiscard]] TaskList openTopLevelTasks(const TaskList &tasks);
[[nodiscard]] TaskList childTasks(const TaskList &tasks, const QUuid &parentID);
/// Open top-level tasks, each expanded one followed by its subtasks that are not deferred.
[[nodiscard]] TaskList visibleTasks(const TaskList &tasks);
[[nodiscard]] TaskList completedTasks(const TaskList &tasks);
[[nodiscard]] TaskList deferredTasks(const TaskList &tasks); ///< Deferred and not done.
[[nodiscard]] int openTaskCount(const TaskList &tasks);      ///< Subtasks included.
[[nodiscard]] int completedCountSince(const TaskList &tasks, Timestamp start);

/// The identifiers of a task and of its subtasks.
[[nodiscard]] QSet<QUuid> family(const TaskList &tasks, const QUuid &id);

/// The top-level task that subtasks added to `id` belong under: the task itself, or its parent. Null when
/// `id` is not in the list.
[[nodiscard]] const TaskItem *subtaskParent(const TaskList &tasks, const QUuid &id);

/// With `subtask` directly behind its parent's last subtask, behind the parent when it has none, and the
/// parent expanded. The subtask's parent must be in the list.
[[nodiscard]] TaskList withSubtask(TaskList tasks, const TaskItem &subtask);

/// Without the done tasks; an open subtask of a removed parent becomes top-level.
[[nodiscard]] TaskList withoutCompleted(const TaskList &tasks);

/// With the block of `movingID` and its subtasks directly before or behind the row of `targetID`; the list
/// itself when one of the two is missing, a subtask or deferred, or both are the same.
[[nodiscard]] TaskList withTaskMoved(const TaskList &tasks, const QUuid &movingID, const QUuid &targetID,
                                     bool placeAfter);

/// The open top-level task that stands `step` places below `id` among them, above for a negative step. None when `id` is
/// not one of them, or there is none so far.
[[nodiscard]] std::optional<QUuid> openNeighbour(const TaskList &tasks, const QUuid &id, int step);

/// The tasks in the order that `order` has them in. One that it lacks stays behind the task it stands behind.
[[nodiscard]] TaskList withOrderOf(const TaskList &order, const TaskList &tasks);

/// A list as the store may hold it: an identifier that is there already is replaced by a new one, and a task
/// whose parent is missing or is itself a subtask becomes top-level.
[[nodiscard]] TaskList repaired(TaskList tasks);

} // namespace wrenfold
