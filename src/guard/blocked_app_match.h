// SPDX-License-Identifier: MIT
#pragma once

#include "model/blocked_app.h"
#include "platform/frontmost_application.h"

namespace wrenfold {

/// Whether one of the entries means the application: by its identifier, or by a name that is the application's or part
/// of its name or identifier. Comparisons ignore case. An entry of one word blocks all that have it in their name.
[[nodiscard]] bool isBlocked(const RunningApplication &application, const QList<BlockedApp> &blockedApps);

} // namespace wrenfold
