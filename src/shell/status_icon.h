// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status_item.h"
#include "shell/status_bar_state.h"

class QColor;

namespace wrenfold {

/// Its colour on a status area, which may be light or dark whatever our own windows are: at least 3 : 1 on white and on
/// the greys of dark panels.
[[nodiscard]] QColor statusColor(StatusTint tint);

/// The status item's icon: a pin. Where the host shows no label it says in the label's place what it can: the minutes
/// left, begun ones included, while the timer is shown; a pale pin for ghost mode.
[[nodiscard]] StatusIcon statusIcon(const StatusBarState &state, bool isLabelShown);

} // namespace wrenfold
