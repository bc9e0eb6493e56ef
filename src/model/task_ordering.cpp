// SPDX-License-Identifier: MIT
#include "model/task_ordering.h"

#include <QHash>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace wrenfold {

namespace {

/// What a task is compared by, copied out so that sorting touches neither the records nor the rank map.
struct SortKey
{
    bool isDone;
    qint64 rank;
    Timestamp createdAt;
    qsizetype index; ///< Of the task in the input.

    bool operator<(const SortKey &other) const
    {
        if (isDone != other.isDone)
            return !isDone;
        if (rank != other.rank)
            return rank < other.rank;
        return createdAt > other.createdAt;
    }
};

QHash<QUuid, qint64> rankMap(const QList<QUuid> &orderedIDs)
{
    QHash<QUuid, qint64> ranks;
    ranks.reserve(orderedIDs.size());
    for (const QUuid &id : orderedIDs)
        ranks.insert(id, ranks.size());
    if (ranks.size() != orderedIDs.size())
        qFatal("TaskOrdering: an identifier is repeated in the order");
    return ranks;
}

} // namespace

TaskList TaskOrdering::applyPriorityOrder(const TaskList &tasks, const QList<QUuid> &orderedIDs)
{
    constexpr qint64 unranked = std::numeric_limits<qint64>::max();
    const QHash<QUuid, qint64> ranks = rankMap(orderedIDs);

    std::vector<SortKey> topLevel;
    QHash<QUuid, QList<qsizetype>> subtasks;
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        const TaskItem &task = tasks[i];
        if (task.parentID)
            subtasks[*task.parentID].append(i);
        else
            topLevel.push_back({task.isDone, ranks.isEmpty() ? unranked : ranks.value(task.id, unranked),
                                task.createdAt, i});
    }
    std::stable_sort(topLevel.begin(), topLevel.end());

    // Copied in their old order and moved into the new one: a copy touches the title too, and in the new order
    // each would be far from the last.
    std::vector<TaskItem> records(tasks.begin(), tasks.end());
    TaskList result;
    result.reserve(tasks.size());
    for (const SortKey &key : topLevel) {
        const auto children = subtasks.constFind(tasks[key.index].id);
        result.append(std::move(records[std::size_t(key.index)]));
        if (children == subtasks.cend())
            continue;
        for (const qsizetype index : *children)
            result.append(std::move(records[std::size_t(index)]));
    }
    return result;
}

} // namespace wrenfold
