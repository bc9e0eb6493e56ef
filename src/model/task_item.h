// SPDX-License-Identifier: MIT
#pragma once

#include "model/task_quadrant.h"
#include "model/timestamp.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace wrenfold {

/// One record of the task list: an open task, a subtask, a completed or a deferred one differ in their fields
/// only. The order of the list is the order on screen; the record holds no position.
struct TaskItem
{
    QUuid id; ///< Never changes.
    QString title;
    bool isDone = false;
    Timestamp createdAt;
    std::optional<Timestamp> completedAt; ///< None while open.
    std::optional<QUuid> parentID;        ///< The top-level task that this is a subtask of.
    bool isExpanded = false;              ///< A parent's subtasks are shown.
    bool isDeferred = false;              ///< Moved to the later list.
    TaskQuadrant quadrant = TaskQuadrant::notUrgentNotImportant;

    /// A new open task with an identifier of its own.
    [[nodiscard]] static TaskItem make(const QString &title, Timestamp createdAt)
    {
        TaskItem task;
        task.id = QUuid::createUuid();
        task.title = title;
        task.createdAt = createdAt;
        return task;
    }

    [[nodiscard]] bool isOpen() const { return !isDone && !isDeferred; }
    [[nodiscard]] bool isTopLevel() const { return !parentID; }

    friend bool operator==(const TaskItem &, const TaskItem &) = default;
};

using TaskList = QList<TaskItem>;

} // namespace wrenfold
