// SPDX-License-Identifier: MIT
#pragma once

#include "model/task_item.h"
#include "platform/notification_center.h"

#include <array>
#include <optional>

namespace wrenfold {

/// A moment near the end of a work phase at which the user is nudged.
struct SprintMilestone
{
    qint64 seconds; ///< Left in the phase.
    QString label;
    QString message;

    friend bool operator==(const SprintMilestone &, const SprintMilestone &) = default;
};

/// The milestones, the earliest first. The NOW task, where there is one, is named.
[[nodiscard]] std::array<SprintMilestone, 2> sprintMilestones(const std::optional<TaskItem> &now);

/// How the timer announces itself outside our windows.
[[nodiscard]] Notification sprintNotification(const SprintMilestone &milestone);
[[nodiscard]] Notification workDoneNotification(const std::optional<TaskItem> &now, qint64 breakMinutes);
[[nodiscard]] Notification breakDoneNotification(const std::optional<TaskItem> &now, bool hasOpenTask);

} // namespace wrenfold
