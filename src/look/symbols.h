// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>

namespace wrenfold {

/// The program's symbols: one drawing per name on a grid of 16 x 16, drawn in black and coloured here.
namespace Symbols {

/// The symbol in one colour, `size` device-independent pixels wide and high. Drawn when first asked for and
/// kept. The name must be one of resources/symbols.
[[nodiscard]] QPixmap pixmap(const QString &name, const QColor &color, int size, qreal devicePixelRatio);

} // namespace Symbols

} // namespace wrenfold
