// SPDX-License-Identifier: MIT
#include "shell/menu_key.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>

namespace wrenfold {

MenuKey::MenuKey()
{
    qGuiApp->installEventFilter(this);
}

bool MenuKey::eventFilter(QObject *watched, QEvent *event)
{
    // Windows come before the widgets in them.
    if (event->type() != QEvent::KeyPress || !watched->isWindowType())
        return false;
    const auto *key = static_cast<const QKeyEvent *>(event);
    if (key->key() != Qt::Key_F10 || key->modifiers() != Qt::ShiftModifier)
        return false;
    // The window finds the widget and the place in it.
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QGuiApplication::sendEvent(watched, &menu);
    return true;
}

} // namespace wrenfold
