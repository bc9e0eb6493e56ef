// SPDX-License-Identifier: MIT
#include "ai/ai_answer.h"
#include "ai/openrouter_api_key_provider.h"
#include "ai/openrouter_task_sorter.h"
#include "ai/subtask_insertion.h"
#include "model/focus_store.h"
#include "model/task_list.h"

#include <functional>
#include <utility>

namespace wrenfold {

namespace {

/// Of several tasks added together, the first one starts the sort, which is of all of them. Nothing is called once the
/// owner has gone.
void whenTheCallerHasFinished(QObject *owner, std::function<void()> work)
{
    QMetaObject::invokeMethod(owner, std::move(work), Qt::QueuedConnection);
}

} // namespace

QFuture<QList<QUuid>> FocusStore::proposePriorityOrderWithLLM()
{
    const TaskList open = openTopLevelTasks(tasks.value());
    if (open.size() < 2)
        return QtFuture::makeExceptionalFuture<QList<QUuid>>(AIError(OpenRouterSorterError::notEnoughTasks));
    return m_sorter.prioritizedTaskIDs(open, activeTaskID.value(), mediumGoal.value(), apiKeyOverride.value(),
                                       openRouterModel.value());
}

void FocusStore::prioritizeTasksWithLLM()
{
    if (isSortingTasks.value())
        return;
    beginAIWork(QStringLiteral("整列中..."));
    whenTheCallerHasFinished(m_answersOwner.get(), [this] {
        onAnswer(
            proposePriorityOrderWithLLM(), m_answersOwner.get(),
            [this](const QList<QUuid> &ids) {
                whenNotReordering([this, ids] {
                    const ChangeGroup::Scope scope(m_changes);
                    applyPriorityOrder(ids);
                    endAIWork(QStringLiteral("優先順に整列しました"));
                });
            },
            [this](const AIError &) { endAIWork(QStringLiteral("整列できませんでした")); });
    });
}

QFuture<QStringList> FocusStore::proposeSubtasksWithLLM(const TaskItem &task)
{
    return m_sorter.splitTask(task, mediumGoal.value(), apiKeyOverride.value(), openRouterModel.value());
}

void FocusStore::splitTaskWithLLM(const TaskItem &task)
{
    if (isSortingTasks.value())
        return;
    beginAIWork(QStringLiteral("分割中..."));
    whenTheCallerHasFinished(m_answersOwner.get(), [this, task] {
        onAnswer(
            proposeSubtasksWithLLM(task), m_answersOwner.get(),
            [this, id = task.id](const QStringList &titles) {
                whenNotReordering([this, id, titles] {
                    const ChangeGroup::Scope scope(m_changes);
                    insertSubtasks(titles, id);
                    endAIWork(QStringLiteral("サブタスクを追加しました"));
                });
            },
            [this](const AIError &) { endAIWork(QStringLiteral("分割できませんでした")); });
    });
}

void FocusStore::beginAIWork(const QString &status)
{
    const ChangeGroup::Scope scope(m_changes);
    isSortingTasks.set(true);
    setSortStatus(status);
}

void FocusStore::endAIWork(const QString &status)
{
    const ChangeGroup::Scope scope(m_changes);
    flashStatus(status);
    isSortingTasks.set(false);
}

void FocusStore::insertSubtasks(const QStringList &titles, const QUuid &after)
{
    const TaskList split = withSplit(tasks.value(), titles, after, now());
    if (split == tasks.value())
        return;
    const ChangeGroup::Scope scope(m_changes);
    registerTaskUndo(QStringLiteral("サブタスクを分割"));
    setTasks(split);
}

QFuture<QString> FocusStore::askAssistant(const QString &prompt)
{
    TaskList open = tasks.value();
    open.removeIf([](const TaskItem &task) { return !task.isOpen(); });
    return m_sorter.chat(prompt, open, mediumGoal.value(), apiKeyOverride.value(), openRouterModel.value());
}

void FocusStore::importOpenRouterKeyFromOnePassword()
{
    apiImportStatus.set(apiImportRunning());
    onAnswer(
        OpenRouterAPIKeyProvider::importFromOnePassword(m_answersOwner.get()), m_answersOwner.get(),
        [this](const QString &key) {
            const ChangeGroup::Scope scope(m_changes);
            apiKeyOverride.set(key);
            m_changes.requestSave();
            apiImportStatus.set(QStringLiteral("OpenRouter APIキーを保存しました"));
        },
        [this](const AIError &) {
            apiImportStatus.set(QStringLiteral("1Passwordから取得できませんでした"));
        });
}

} // namespace wrenfold
