// SPDX-License-Identifier: MIT
#pragma once

#include "app/launch_options.h"

#include <optional>

namespace wrenfold {

/// Runs the debug command that was named, if one was, without display, bus or document; its result goes to
/// standard output, what went wrong to standard error. The process's exit status: 0 done, 1 failed, 2 wrong
/// usage. None when no command was named.
[[nodiscard]] std::optional<int> runDebugCommandIfNeeded(const LaunchOptions &options);

} // namespace wrenfold
