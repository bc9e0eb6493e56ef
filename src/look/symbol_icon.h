// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace wrenfold {

/// One of the names that Symbols knows, for the desktop's own controls. Drawn in the secondary ink of the theme that holds
/// when it is painted, so it follows the theme by itself.
[[nodiscard]] QIcon symbolIcon(const QString &name);

} // namespace wrenfold
