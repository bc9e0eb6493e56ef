// SPDX-License-Identifier: MIT
#pragma once

#include "model/pomodoro_phase.h"

#include <QString>

namespace wrenfold {

/// How near the end of a work phase is; what shows the timer is coloured by it.
enum class TimerUrgency : std::uint8_t { normal, lastFiveMinutes, lastMinute };

/// The timer at one moment, and what follows from it.
struct TimerState
{
    PomodoroPhase phase = PomodoroPhase::work;
    bool isRunning = false;
    qint64 remainingSeconds = 1500;
    qint64 workDurationMinutes = 25;
    qint64 breakDurationMinutes = 5;

    /// The minutes of the present phase, at full length.
    [[nodiscard]] qint64 phaseDurationMinutes() const;
    [[nodiscard]] qint64 phaseDurationSeconds() const { return phaseDurationMinutes() * 60; }

    /// Minutes and seconds: "25:00". Above an hour the minutes go on: "90:00".
    [[nodiscard]] QString remainingText() const;

    /// Never urgent during a break or before a work phase has begun. A paused work phase keeps its urgency.
    [[nodiscard]] TimerUrgency urgency() const;

    /// Whether the status item shows the time. A work phase that has not begun is never shown there.
    [[nodiscard]] bool shouldShowMenubarTimer(bool alwaysShow) const;

    friend bool operator==(const TimerState &, const TimerState &) = default;
};

} // namespace wrenfold
