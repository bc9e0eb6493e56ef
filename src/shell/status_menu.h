// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status_item.h"

namespace wrenfold {

struct StatusBarState;

/// What a row of the status item's menu does when it is chosen.
enum class StatusCommand {
    None, ///< Of the rows that only inform.
    ShowPanel,
    NewTodo,
    ShowAIChat,
    ShowSettings,
    HidePanel,
    ToggleHardPin,
    ToggleTodoList,
    EnterGhostMode,
    ExitGhostMode,
    StartBreak,
    SkipBreak,
    ToggleTimer,
    StopTimer,
    Quit,
};

/// The status item's menu, from top to bottom.
[[nodiscard]] QList<StatusMenuRow> makeMenu(const StatusBarState &state);

} // namespace wrenfold
