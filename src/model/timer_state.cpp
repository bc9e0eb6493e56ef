// SPDX-License-Identifier: MIT
#include "model/timer_state.h"

namespace wrenfold {

qint64 TimerState::phaseDurationMinutes() const
{
    return phase == PomodoroPhase::shortBreak ? breakDurationMinutes : workDurationMinutes;
}

QString TimerState::remainingText() const
{
    const qint64 minutes = remainingSeconds / 60;
    const qint64 seconds = remainingSeconds - minutes * 60;
    return QStringLiteral("%1:%2")
        .arg(minutes, 2, 10, QLatin1Char('0'))
        .arg(seconds, 2, 10, QLatin1Char('0'));
}

TimerUrgency TimerState::urgency() const
{
    if (phase == PomodoroPhase::shortBreak)
        return TimerUrgency::normal;
    if (!isRunning && remainingSeconds >= phaseDurationSeconds())
        return TimerUrgency::normal;
    if (remainingSeconds <= 60)
        return TimerUrgency::lastMinute;
    if (remainingSeconds <= 300)
        return TimerUrgency::lastFiveMinutes;
    return TimerUrgency::normal;
}

bool TimerState::shouldShowMenubarTimer(bool alwaysShow) const
{
    if (isRunning)
        return true;
    if (!alwaysShow)
        return false;
    return remainingSeconds < phaseDurationSeconds() || phase == PomodoroPhase::shortBreak;
}

} // namespace wrenfold
