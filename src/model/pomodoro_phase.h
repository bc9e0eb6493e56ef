// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace wrenfold {

/// What the timer counts: an interval of focus or a break.
enum class PomodoroPhase : std::uint8_t { work, shortBreak };

} // namespace wrenfold
