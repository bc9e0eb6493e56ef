// SPDX-License-Identifier: MIT
#pragma once

#include "model/task_item.h"

namespace wrenfold {

/// The one ordering rule of the task list.
class TaskOrdering
{
public:
    /// The tasks ordered by rank: open top-level tasks before done ones, then by their place in `orderedIDs`
    /// (tasks not named there follow), then newest first; ties keep their order. Each is followed by its
    /// subtasks in their present order. A subtask whose parent is no top-level task of the list is left out.
    /// `orderedIDs` must not repeat an identifier: that is a programming error and ends the program.
    [[nodiscard]] static TaskList applyPriorityOrder(const TaskList &tasks, const QList<QUuid> &orderedIDs);
};

} // namespace wrenfold
