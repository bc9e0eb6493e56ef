// SPDX-License-Identifier: MIT
#include "look/bring_to_front.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

namespace wrenfold {

void bringToFront(QWidget &window)
{
    window.show();
    window.raise();
    window.activateWindow();
    // The toolkit notices a tenth of a second late that a hidden window has lost the keyboard. One that is shown again
    // before that has never lost it, and is not made active again: none of its widgets would have the focus.
    if (window.windowHandle() == QGuiApplication::focusWindow() && !window.isActiveWindow()) {
        // From Qt 6.5 on it is advised against, in favour of activateWindow().
        QT_WARNING_PUSH
        QT_WARNING_DISABLE_DEPRECATED
        QApplication::setActiveWindow(&window);
        QT_WARNING_POP
    }
}

} // namespace wrenfold
