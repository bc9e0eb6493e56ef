// SPDX-License-Identifier: MIT
#pragma once

#include "model/task_item.h"

#include <QStringList>

namespace wrenfold {

/// The list after the split of the task `splitID` into tasks of these titles: trimmed, without empty ones, six at most.
/// They stand directly behind it and take over whether it is deferred, and its quadrant. Those of a top-level task
/// become its subtasks in place of the ones it had, and it is folded; those of a subtask become its siblings, and
/// nothing goes. The list itself when the task is missing or no title is left.
[[nodiscard]] TaskList withSplit(TaskList tasks, const QStringList &titles, const QUuid &splitID,
                                 Timestamp now);

} // namespace wrenfold
