// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <optional>

namespace wrenfold {

/// The urgency and importance class of a task. The order of the cases is the order of every list of
/// quadrants.
enum class TaskQuadrant : std::uint8_t {
    urgentImportant,
    importantNotUrgent,
    urgentNotImportant,
    notUrgentNotImportant,
};

inline constexpr std::array allQuadrants = {
    TaskQuadrant::urgentImportant,
    TaskQuadrant::importantNotUrgent,
    TaskQuadrant::urgentNotImportant,
    TaskQuadrant::notUrgentNotImportant,
};

/// The text that stands for the quadrant in documents; do not change it.
[[nodiscard]] QLatin1String rawValue(TaskQuadrant quadrant);

/// None for any text that is not exactly one of the raw values.
[[nodiscard]] std::optional<TaskQuadrant> quadrantFromRawValue(const QString &text);

/// The text that stands for the quadrant in menus and messages.
[[nodiscard]] QString label(TaskQuadrant quadrant);

} // namespace wrenfold
