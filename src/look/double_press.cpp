// SPDX-License-Identifier: MIT
#include "look/double_press.h"

#include <QMouseEvent>

namespace wrenfold {

bool isSecondPressMeantElsewhere(const QMouseEvent &press, const QWidget &widget)
{
    static const QWidget *lastPressed = nullptr; // Only to compare with: it may have gone.
    if (press.type() == QEvent::MouseButtonDblClick && lastPressed != &widget)
        return true;
    lastPressed = &widget;
    return false;
}

} // namespace wrenfold
