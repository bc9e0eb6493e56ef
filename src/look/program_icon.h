// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace wrenfold {

/// The program's own icon, for windows with a title bar. Not the application's: the panel has none to show it in, and
/// the start would wait for the drawing.
[[nodiscard]] QIcon programIcon();

} // namespace wrenfold
