// SPDX-License-Identifier: MIT
#include "model/timer_notices.h"

namespace wrenfold {

namespace {

QString quoted(const QString &title)
{
    return QStringLiteral("「") + title + QStringLiteral("」");
}

} // namespace

std::array<SprintMilestone, 2> sprintMilestones(const std::optional<TaskItem> &now)
{
    return {SprintMilestone{300, QStringLiteral("あと5分"),
                            now ? quoted(now->title) + QStringLiteral("— 仕上げるなら今。")
                                : QStringLiteral("残り5分。NOW だけ見よう。")},
            SprintMilestone{60, QStringLiteral("あと1分"),
                            QStringLiteral("クローズできるところまで。できなくてもOK、区切ろう。")}};
}

Notification sprintNotification(const SprintMilestone &milestone)
{
    return {.identifier = QStringLiteral("wrenfold.sprint.") + QString::number(milestone.seconds),
            .title = QStringLiteral("🍅 ") + milestone.label,
            .body = milestone.message};
}

Notification workDoneNotification(const std::optional<TaskItem> &now, qint64 breakMinutes)
{
    return {.identifier = QStringLiteral("wrenfold.pomodoro.work-done"),
            .title = QStringLiteral("🍅 作業完了"),
            .body = quoted(now ? now->title : QStringLiteral("フォーカス")) + QStringLiteral("— ") +
                    QString::number(breakMinutes) + QStringLiteral("分休憩に入ります")};
}

Notification breakDoneNotification(const std::optional<TaskItem> &now, bool hasOpenTask)
{
    const QString next = now ? now->title : QStringLiteral("タスクを選んでください");
    return {.identifier = QStringLiteral("wrenfold.pomodoro.break-done"),
            .title = QStringLiteral("☕\uFE0F 休憩終了"),
            .body = hasOpenTask ? QStringLiteral("次の一手: ") + next
                                : QStringLiteral("次のフォーカスを始めましょう")};
}

} // namespace wrenfold
