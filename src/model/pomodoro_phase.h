// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>

namespace wrenfold {

/// What the timer counts: an interval of focus or a break.
enum class PomodoroPhase : std::uint8_t { work, shortBreak };

/// The text that stands for the phase in the log.
[[nodiscard]] inline QString rawValue(PomodoroPhase phase)
{
    return phase == PomodoroPhase::work ? QStringLiteral("work") : QStringLiteral("shortBreak");
}

} // namespace wrenfold
