// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace wrenfold {

/// Shows the window above others and gives it the keyboard, as far as the window system lets it.
void bringToFront(QWidget &window);

} // namespace wrenfold
