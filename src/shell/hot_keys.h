// SPDX-License-Identifier: MIT
#pragma once

#include "shell/global_hot_key.h"

#include <vector>

namespace wrenfold {

/// What the three hot keys do.
struct HotKeyActions
{
    std::function<void()> togglePanel;
    std::function<void()> hidePanel;
    std::function<void()> newTodo;
};

/// Registers Ctrl+Alt+Super with P, H and T, in this order, for as long as the result lives. Those that the desktop
/// refuses are left out. `shortcuts` must outlive the hot keys.
[[nodiscard]] std::vector<std::unique_ptr<GlobalHotKey>> registerHotKeys(GlobalShortcuts &shortcuts,
                                                                         const HotKeyActions &actions);

} // namespace wrenfold
