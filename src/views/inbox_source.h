// SPDX-License-Identifier: MIT
#pragma once

#include "look/theme.h"

namespace wrenfold {

/// The colour of a candidate's tag, by what its source is called.
[[nodiscard]] Theme::Color sourceTint(const QString &source);

} // namespace wrenfold
