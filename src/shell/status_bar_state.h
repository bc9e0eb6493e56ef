// SPDX-License-Identifier: MIT
#pragma once

#include "model/timer_state.h"

#include <optional>

namespace wrenfold {

class FocusStore;

/// What the status item shows, in the meaning of its colour.
enum class StatusTint : std::uint8_t { Label, Green, Orange, Pink };

/// The store at one moment, as far as the status item and its menu show it, and the texts that follow from it. Titles
/// are put into one line; beyond that they are as the user wrote them.
struct StatusBarState
{
    std::optional<QString> activeTitle; ///< Of the NOW task.
    QString statusBarNowTitle;          ///< The same, short; empty without one.
    int completedTodayCount = 0;
    int openTaskCount = 0;
    bool isGhostMode = false;
    bool isHardPinned = true;
    bool isTodoListHidden = false;
    bool shouldShowMenubarTimer = false;
    TimerState timer;

    [[nodiscard]] static StatusBarState of(const FocusStore &store);

    [[nodiscard]] StatusTint menubarTint() const;
    [[nodiscard]] QString title() const; ///< The label beside the icon.
    [[nodiscard]] QString tooltipText() const;

    friend bool operator==(const StatusBarState &, const StatusBarState &) = default;
};

} // namespace wrenfold
