// SPDX-License-Identifier: MIT
#include "app/marketing_demo.h"

#include "model/focus_store.h"

#include <algorithm>

namespace wrenfold {

namespace {

struct DeferredSample
{
    QString title;
    TaskQuadrant quadrant;
};

void addDeferred(FocusStore &store, const DeferredSample &sample)
{
    store.addTask(sample.title, false);
    const TaskList tasks = store.tasks.value();
    const auto added = std::find_if(tasks.begin(), tasks.end(),
                                    [&sample](const TaskItem &task) { return task.title == sample.title; });
    if (added != tasks.end())
        store.deferTask(*added, sample.quadrant);
}

} // namespace

void seedMarketingDemo(FocusStore &store, bool isBoardVisible)
{
    store.mediumGoal.set(QStringLiteral("今日いちばん大切なことに集中する"));
    store.addTask(QStringLiteral("リリースノートを公開する"), true);
    if (const std::optional<TaskItem> active = store.activeTask()) {
        store.addSubtask(active->id, QStringLiteral("新機能のスクリーンショットを用意"));
        store.addSubtask(active->id, QStringLiteral("更新内容を3行でまとめる"));
    }
    const DeferredSample samples[] = {
        {QStringLiteral("今週の計画を見直す"), TaskQuadrant::importantNotUrgent},
        {QStringLiteral("請求書を今日中に確認"), TaskQuadrant::urgentImportant},
        {QStringLiteral("通知設定を整理する"), TaskQuadrant::notUrgentNotImportant},
        {QStringLiteral("短い返信をまとめて返す"), TaskQuadrant::urgentNotImportant},
    };
    for (const DeferredSample &sample : samples)
        addDeferred(store, sample);
    store.isQuadrantBoardVisible.set(isBoardVisible);
}

} // namespace wrenfold
