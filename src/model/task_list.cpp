// SPDX-License-Identifier: MIT
#include "model/task_list.h"

#include <QHash>

#include <algorithm>
#include <utility>
#include <vector>

namespace wrenfold {

namespace {

template<typename Predicate>
TaskList filtered(const TaskList &tasks, Predicate isWanted)
{
    TaskList result;
    std::copy_if(tasks.begin(), tasks.end(), std::back_inserter(result), isWanted);
    return result;
}

} // namespace

qsizetype indexOfTask(const TaskList &tasks, const QUuid &id)
{
    const auto found =
        std::find_if(tasks.begin(), tasks.end(), [&id](const TaskItem &task) { return task.id == id; });
    return found == tasks.end() ? -1 : found - tasks.begin();
}

const TaskItem *findTask(const TaskList &tasks, const QUuid &id)
{
    const qsizetype index = indexOfTask(tasks, id);
    return index < 0 ? nullptr : &tasks[index];
}

std::optional<QUuid> nextOpenTaskID(const TaskList &tasks, qsizetype index)
{
    const qsizetype start = std::clamp<qsizetype>(index + 1, 0, tasks.size());
    const auto isOpen = [](const TaskItem &task) { return task.isOpen(); };
    auto found = std::find_if(tasks.begin() + start, tasks.end(), isOpen);
    if (found == tasks.end()) {
        found = std::find_if(tasks.begin(), tasks.begin() + start, isOpen);
        if (found == tasks.begin() + start)
            return std::nullopt;
    }
    return found->id;
}

TaskList topLevelTasks(const TaskList &tasks)
{
    return filtered(tasks, [](const TaskItem &task) { return task.isTopLevel(); });
}

TaskList openTopLevelTasks(const TaskList &tasks)
{
    return filtered(tasks, [](const TaskItem &task) { return task.isTopLevel() && task.isOpen(); });
}

TaskList childTasks(const TaskList &tasks, const QUuid &parentID)
{
    return filtered(tasks, [&parentID](const TaskItem &task) { return task.parentID == parentID; });
}

TaskList visibleTasks(const TaskList &tasks)
{
    QHash<QUuid, TaskList> shownSubtasks;
    for (const TaskItem &task : tasks) {
        if (task.parentID && !task.isDeferred)
            shownSubtasks[*task.parentID].append(task);
    }
    TaskList result;
    for (const TaskItem &task : tasks) {
        if (!task.isTopLevel() || !task.isOpen())
            continue;
        result.append(task);
        if (task.isExpanded)
            result.append(shownSubtasks.value(task.id));
    }
    return result;
}

TaskList completedTasks(const TaskList &tasks)
{
    return filtered(tasks, [](const TaskItem &task) { return task.isDone; });
}

TaskList deferredTasks(const TaskList &tasks)
{
    return filtered(tasks, [](const TaskItem &task) { return task.isDeferred && !task.isDone; });
}

int openTaskCount(const TaskList &tasks)
{
    return int(std::count_if(tasks.begin(), tasks.end(), [](const TaskItem &task) { return task.isOpen(); }));
}

int completedCountSince(const TaskList &tasks, Timestamp start)
{
    return int(std::count_if(tasks.begin(), tasks.end(), [start](const TaskItem &task) {
        return task.isDone && task.completedAt && *task.completedAt >= start;
    }));
}

QSet<QUuid> family(const TaskList &tasks, const QUuid &id)
{
    QSet<QUuid> ids = {id};
    for (const TaskItem &task : tasks) {
        if (task.parentID == id)
            ids.insert(task.id);
    }
    return ids;
}

const TaskItem *subtaskParent(const TaskList &tasks, const QUuid &id)
{
    const TaskItem *task = findTask(tasks, id);
    return task && task->parentID ? findTask(tasks, *task->parentID) : task;
}

TaskList withSubtask(TaskList tasks, const TaskItem &subtask)
{
    const qsizetype parentIndex = indexOfTask(tasks, *subtask.parentID);
    qsizetype place = parentIndex + 1;
    for (qsizetype i = tasks.size() - 1; i >= 0; --i) {
        if (tasks[i].parentID == subtask.parentID) {
            place = i + 1;
            break;
        }
    }
    tasks[parentIndex].isExpanded = true;
    tasks.insert(place, subtask);
    return tasks;
}

TaskList withoutCompleted(const TaskList &tasks)
{
    QSet<QUuid> removed;
    for (const TaskItem &task : tasks) {
        if (task.isDone)
            removed.insert(task.id);
    }
    TaskList kept = filtered(tasks, [](const TaskItem &task) { return !task.isDone; });
    for (TaskItem &task : kept) {
        if (task.parentID && removed.contains(*task.parentID))
            task.parentID.reset();
    }
    return kept;
}

TaskList withTaskMoved(const TaskList &tasks, const QUuid &movingID, const QUuid &targetID, bool placeAfter)
{
    const auto takesPart = [&tasks](const QUuid &id) {
        const TaskItem *task = findTask(tasks, id);
        return task && task->isTopLevel() && !task->isDeferred;
    };
    if (movingID == targetID || !takesPart(movingID) || !takesPart(targetID))
        return tasks;

    const auto isMoving = [&movingID](const TaskItem &task) {
        return task.id == movingID || task.parentID == movingID;
    };
    TaskList result;
    result.reserve(tasks.size());
    TaskList block;
    for (const TaskItem &task : tasks)
        (isMoving(task) ? block : result).append(task);

    // Behind the target means behind its own row, before its subtasks: on screen these follow their parent
    // anyway.
    const qsizetype place = indexOfTask(result, targetID) + (placeAfter ? 1 : 0);
    const qsizetype kept = result.size();
    result.append(block);
    std::rotate(result.begin() + place, result.begin() + kept, result.end());
    return result;
}

std::optional<QUuid> openNeighbour(const TaskList &tasks, const QUuid &id, int step)
{
    const TaskList open = openTopLevelTasks(tasks);
    const qsizetype index = indexOfTask(open, id);
    const qsizetype neighbour = index + step;
    if (index < 0 || neighbour < 0 || neighbour >= open.size())
        return std::nullopt;
    return open[neighbour].id;
}

TaskList withOrderOf(const TaskList &order, const TaskList &tasks)
{
    QHash<QUuid, qsizetype> places;
    places.reserve(order.size());
    for (const TaskItem &task : order)
        places.insert(task.id, places.size());

    std::vector<std::pair<qsizetype, qsizetype>> placeAndIndex;
    qsizetype place = -1;
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        place = places.value(tasks[i].id, place);
        placeAndIndex.emplace_back(place, i);
    }
    std::sort(placeAndIndex.begin(), placeAndIndex.end());

    TaskList result;
    result.reserve(tasks.size());
    for (const auto &[ignored, index] : placeAndIndex)
        result.append(tasks[index]);
    return result;
}

TaskList repaired(TaskList tasks)
{
    QHash<QUuid, bool> isTopLevelByID;
    isTopLevelByID.reserve(tasks.size());
    for (const TaskItem &task : std::as_const(tasks)) {
        if (!isTopLevelByID.contains(task.id))
            isTopLevelByID.insert(task.id, task.isTopLevel());
    }
    QSet<QUuid> seen;
    seen.reserve(tasks.size());
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        if (seen.contains(tasks.at(i).id))
            tasks[i].id = QUuid::createUuid();
        seen.insert(tasks.at(i).id);
        if (tasks.at(i).parentID && !isTopLevelByID.value(*tasks.at(i).parentID, false))
            tasks[i].parentID.reset();
    }
    return tasks;
}

} // namespace wrenfold
