// SPDX-License-Identifier: MIT
#pragma once

class QMouseEvent;
class QWidget;

namespace wrenfold {

/// Whether this press is the second of a double one that began on another widget: what the first press did has moved
/// `widget` under the pointer, and nobody meant it. To be asked once at every press on a widget that acts on clicks: it
/// remembers on which one the last press was.
[[nodiscard]] bool isSecondPressMeantElsewhere(const QMouseEvent &press, const QWidget &widget);

} // namespace wrenfold
