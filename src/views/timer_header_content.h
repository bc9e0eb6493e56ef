// SPDX-License-Identifier: MIT
#pragma once

#include "look/theme.h"
#include "model/timer_state.h"

namespace wrenfold {

/// What the panel's header shows of the timer.
struct TimerHeaderContent
{
    QString time;
    QString subtitle;
    QString playSymbol;
    QString playHelp;
    Theme::Color timeColor = &Theme::accent;
    Theme::Color ringColor = &Theme::accent; ///< The play symbol's too.
    qreal remainingFraction = 1;             ///< Of the present phase, 0 to 1.
    bool isSkipVisible = false;              ///< Whether there is a break to skip.

    friend bool operator==(const TimerHeaderContent &, const TimerHeaderContent &) = default;
};

[[nodiscard]] TimerHeaderContent timerHeaderContent(const TimerState &timer);

} // namespace wrenfold
