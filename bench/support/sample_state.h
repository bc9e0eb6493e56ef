// SPDX-License-Identifier: MIT
#pragma once

#include "model/saved_state.h"

namespace wrenfold {

/// A document as somebody might have it who keeps `count` tasks: Japanese titles of some 25 characters; of
/// ten tasks two are done, one is deferred and one is a subtask of the one before it, with its parent expanded.
/// The same at every call.
[[nodiscard]] SavedState sampleState(int count);

} // namespace wrenfold
