// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

namespace wrenfold {

/// The tool tip that the widget shows when the pointer rests on it, as it was handed to Qt.
[[nodiscard]] QString shownToolTip(QWidget &widget);

/// Whether the pointer's rest brings up nothing.
[[nodiscard]] bool showsNoToolTip(QWidget &widget);

} // namespace wrenfold
