// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace wrenfold {

/// A title as the status item shows it: whole up to 18 characters, else its first 16 and an ellipsis. A
/// character is what a person sees as one (a grapheme cluster).
[[nodiscard]] QString statusBarTitle(const QString &title);

} // namespace wrenfold
