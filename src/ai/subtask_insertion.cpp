// SPDX-License-Identifier: MIT
#include "ai/subtask_insertion.h"

#include "model/task_list.h"

namespace wrenfold {

namespace {

QStringList usable(const QStringList &titles)
{
    constexpr qsizetype most = 6;
    QStringList result;
    for (const QString &title : titles) {
        if (const QString trimmed = title.trimmed(); !trimmed.isEmpty() && result.size() < most)
            result.append(trimmed);
    }
    return result;
}

} // namespace

TaskList withSplit(TaskList tasks, const QStringList &titles, const QUuid &splitID, Timestamp now)
{
    const TaskItem *found = findTask(tasks, splitID);
    const QStringList newTitles = usable(titles);
    if (!found || newTitles.isEmpty())
        return tasks;
    const TaskItem split = *found;
    if (split.isTopLevel())
        tasks.removeIf([&](const TaskItem &task) { return task.parentID == split.id; });

    const qsizetype index = indexOfTask(tasks, split.id);
    for (qsizetype i = 0; i < newTitles.size(); ++i) {
        TaskItem task = TaskItem::make(newTitles.at(i), now);
        task.parentID = split.isTopLevel() ? split.id : split.parentID;
        task.isDeferred = split.isDeferred;
        task.quadrant = split.quadrant;
        tasks.insert(index + 1 + i, task);
    }
    if (split.isTopLevel())
        tasks[index].isExpanded = false;
    return tasks;
}

} // namespace wrenfold
