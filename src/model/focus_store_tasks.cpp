// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "model/focus_store.h"
#include "model/status_bar_title.h"
#include "model/task_list.h"
#include "model/uuid_text.h"

#include <QTimeZone>

#include <algorithm>

namespace wrenfold {

void FocusStore::addTask(const QString &title, bool makeActive, std::optional<QUuid> parentID)
{
    const QString trimmed = title.trimmed();
    if (trimmed.isEmpty())
        return;
    if (const std::optional<QUuid> parent = parentID ? parentID : subtaskComposerParentID.value()) {
        const ChangeGroup::Scope scope(m_changes);
        addSubtask(*parent, trimmed);
        endAddSubtask();
        if (DebugLog::isVerbose())
            qCDebug(DebugLog::store).noquote()
                << QStringLiteral("added subtask under %1: %2").arg(uuidText(*parent), trimmed);
        return;
    }
    addTopLevelTask(trimmed, makeActive);
}

void FocusStore::addTopLevelTask(const QString &title, bool makeActive)
{
    appendTopLevelTask(title, makeActive);
    if (autoSortAfterAdding.value())
        prioritizeTasksWithLLM();
}

void FocusStore::appendTopLevelTask(const QString &title, bool makeActive)
{
    const ChangeGroup::Scope scope(m_changes);
    registerTaskUndo(QStringLiteral("TODOを追加"));
    const TaskItem task = TaskItem::make(title, now());
    setTasks(TaskList(tasks.value()) << task);
    if (makeActive || !activeTask())
        activeTaskID.set(task.id);
    if (DebugLog::isVerbose()) {
        qCDebug(DebugLog::store).noquote()
            << QStringLiteral("added task: %1 makeActive=%2").arg(title, DebugLog::word(makeActive));
    }
}

void FocusStore::addSubtask(const QUuid &parentID, const QString &title)
{
    const QString trimmed = title.trimmed();
    const TaskItem *parent = subtaskParent(tasks.value(), parentID);
    if (trimmed.isEmpty() || !parent)
        return;
    const ChangeGroup::Scope scope(m_changes);
    TaskItem subtask = TaskItem::make(trimmed, now());
    subtask.parentID = parent->id;
    subtask.isDeferred = parent->isDeferred;
    subtask.quadrant = parent->quadrant;
    registerTaskUndo(QStringLiteral("サブタスクを追加"));
    setTasks(withSubtask(tasks.value(), subtask));
}

void FocusStore::beginAddSubtask(const TaskItem &parent)
{
    if (const TaskItem *topLevel = subtaskParent(tasks.value(), parent.id))
        subtaskComposerParentID.set(topLevel->id);
}

void FocusStore::endAddSubtask()
{
    subtaskComposerParentID.set(std::nullopt);
}

void FocusStore::requestTodoInput()
{
    composerFocusToken.set(composerFocusToken.value() + 1);
}

void FocusStore::toggleDone(const TaskItem &task)
{
    TaskList list = tasks.value();
    const qsizetype index = indexOfTask(list, task.id);
    if (index < 0)
        return;
    const ChangeGroup::Scope scope(m_changes);
    const bool isDone = !list.at(index).isDone;
    registerTaskUndo(isDone ? QStringLiteral("完了") : QStringLiteral("未完了に戻す"));
    list[index].isDone = isDone;
    list[index].completedAt = isDone ? std::optional(now()) : std::nullopt;
    setTasks(list);
    if (isDone && activeTaskID.value() == task.id)
        activeTaskID.set(nextOpenTaskID(list, index));
}

void FocusStore::setActive(const TaskItem &task)
{
    const TaskItem *stored = findTask(tasks.value(), task.id);
    if (!stored || !stored->isOpen() || activeTaskID.value() == task.id)
        return;
    const ChangeGroup::Scope scope(m_changes);
    registerTaskUndo(QStringLiteral("NOWを変更"));
    activeTaskID.set(task.id);
}

void FocusStore::toggleExpanded(const TaskItem &task)
{
    TaskList list = tasks.value();
    const qsizetype index = indexOfTask(list, task.id);
    if (index < 0 || family(list, task.id).size() == 1)
        return;
    list[index].isExpanded = !list.at(index).isExpanded;
    setTasks(std::move(list));
}

void FocusStore::updateTaskTitle(const TaskItem &task, const QString &title)
{
    const QString trimmed = title.trimmed();
    TaskList list = tasks.value();
    const qsizetype index = indexOfTask(list, task.id);
    if (index < 0 || trimmed.isEmpty())
        return;
    const ChangeGroup::Scope scope(m_changes);
    registerTaskUndo(QStringLiteral("名前を変更"));
    list[index].title = trimmed;
    setTasks(std::move(list));
}

void FocusStore::deleteTask(const TaskItem &task)
{
    const TaskList list = tasks.value();
    const qsizetype index = indexOfTask(list, task.id);
    if (index < 0)
        return;
    const ChangeGroup::Scope scope(m_changes);
    const DeletionSnapshot before = {list, activeTaskID.value()};
    registerTaskUndo(QStringLiteral("削除"));
    const QSet<QUuid> removed = family(list, task.id);
    const auto isRemoved = [&removed](const TaskItem &candidate) { return removed.contains(candidate.id); };
    // Where the removed task stood, counted in what is left.
    const auto freedPlace = index - std::count_if(list.begin(), list.begin() + index, isRemoved);
    TaskList kept = list;
    kept.removeIf(isRemoved);
    setTasks(kept);
    if (activeTaskID.value() && removed.contains(*activeTaskID.value()))
        activeTaskID.set(nextOpenTaskID(kept, freedPlace - 1));
    pendingUndo.set(before);
    flashStatus(QStringLiteral("削除しました"));
}

/// Applies `change` to the task and its subtasks; their identifiers decide, not their fields.
template<typename Change>
void FocusStore::changeFamily(const QUuid &id, Change change)
{
    TaskList list = tasks.value();
    for (TaskItem &task : list) {
        if (task.id == id || task.parentID == id)
            change(task);
    }
    setTasks(std::move(list));
}

void FocusStore::deferTask(const TaskItem &task, TaskQuadrant quadrant)
{
    const TaskList list = tasks.value();
    const qsizetype index = indexOfTask(list, task.id);
    const QSet<QUuid> ids = family(list, task.id);
    const bool isDifferent = std::any_of(list.begin(), list.end(), [&](const TaskItem &candidate) {
        return ids.contains(candidate.id) && (!candidate.isDeferred || candidate.quadrant != quadrant);
    });
    if (index < 0 || !isDifferent)
        return;
    const ChangeGroup::Scope scope(m_changes);
    registerTaskUndo(QStringLiteral("あとでやるに移動"));
    changeFamily(task.id, [quadrant](TaskItem &member) {
        member.isDeferred = true;
        member.quadrant = quadrant;
    });
    if (activeTaskID.value() && ids.contains(*activeTaskID.value()))
        activeTaskID.set(nextOpenTaskID(tasks.value(), index));
    flashStatus(QStringLiteral("あとでやるへ移動しました"));
}

void FocusStore::restoreDeferredTask(const TaskItem &task)
{
    const QSet<QUuid> ids = family(tasks.value(), task.id);
    const bool isAnyDeferred =
        std::any_of(tasks.value().begin(), tasks.value().end(), [&ids](const TaskItem &candidate) {
            return ids.contains(candidate.id) && candidate.isDeferred;
        });
    if (!findTask(tasks.value(), task.id) || !isAnyDeferred)
        return;
    const ChangeGroup::Scope scope(m_changes);
    registerTaskUndo(QStringLiteral("TODOに戻す"));
    changeFamily(task.id, [](TaskItem &member) { member.isDeferred = false; });
    flashStatus(QStringLiteral("TODOに戻しました"));
}

void FocusStore::setQuadrant(TaskQuadrant quadrant, const TaskItem &task)
{
    if (!findTask(tasks.value(), task.id))
        return;
    const ChangeGroup::Scope scope(m_changes);
    registerTaskUndo(QStringLiteral("4象限を変更"));
    changeFamily(task.id, [quadrant](TaskItem &member) { member.quadrant = quadrant; });
    flashStatus(label(quadrant) + QStringLiteral("へ移動しました"));
}

void FocusStore::clearCompleted()
{
    const DeletionSnapshot before = {tasks.value(), activeTaskID.value()};
    const TaskList kept = withoutCompleted(tasks.value());
    const qsizetype count = before.tasks.size() - kept.size();
    if (count == 0)
        return;
    const ChangeGroup::Scope scope(m_changes);
    registerTaskUndo(QStringLiteral("完了済みを削除"));
    setTasks(kept);
    pendingUndo.set(before);
    flashStatus(QStringLiteral("%1件を削除しました").arg(count));
}

std::optional<TaskItem> FocusStore::activeTask() const
{
    const TaskItem *task = activeTaskID.value() ? findTask(tasks.value(), *activeTaskID.value()) : nullptr;
    return task ? std::optional(*task) : std::nullopt;
}

TaskList FocusStore::topLevelTasks() const
{
    return wrenfold::topLevelTasks(tasks.value());
}

TaskList FocusStore::childTasks(const QUuid &parentID) const
{
    return wrenfold::childTasks(tasks.value(), parentID);
}

TaskList FocusStore::visibleTasks() const
{
    return wrenfold::visibleTasks(tasks.value());
}

TaskList FocusStore::completedTasks() const
{
    return wrenfold::completedTasks(tasks.value());
}

TaskList FocusStore::deferredTasks() const
{
    return wrenfold::deferredTasks(tasks.value());
}

int FocusStore::openTaskCount() const
{
    return wrenfold::openTaskCount(tasks.value());
}

int FocusStore::completedTodayCount() const
{
    const QDateTime now = m_clock.now();
    return completedCountSince(tasks.value(), Timestamp::fromDateTime(now.date().startOfDay(now.timeZone())));
}

QString FocusStore::statusBarNowTitle() const
{
    const std::optional<TaskItem> task = activeTask();
    return task ? statusBarTitle(task->title) : QString();
}

void FocusStore::setTasks(TaskList list)
{
    const ChangeGroup::Scope scope(m_changes);
    tasks.set(std::move(list));
    // A composer whose parent has left would swallow what is typed into it.
    if (subtaskComposerParentID.value() && !findTask(tasks.value(), *subtaskComposerParentID.value()))
        endAddSubtask();
}

} // namespace wrenfold
