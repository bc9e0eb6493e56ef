// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

namespace wrenfold {

/// Every text that the widget and its children paint, piece after piece, without the invisible bidi isolates.
[[nodiscard]] QString paintedText(QWidget &widget);

} // namespace wrenfold
