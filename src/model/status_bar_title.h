// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace wrenfold {

// A title where there is little room. A character is what a person sees as one (a grapheme cluster).

/// As the status item shows it: whole up to 18 characters, else its first 16 and an ellipsis.
[[nodiscard]] QString statusBarTitle(const QString &title);

/// As the status item's menu shows it: whole up to 24 characters, else its first 21 and three full stops.
[[nodiscard]] QString statusMenuTitle(const QString &title);

} // namespace wrenfold
