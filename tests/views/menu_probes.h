// SPDX-License-Identifier: MIT
#pragma once

#include "support/offscreen_silence.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>

/// What the tests of the views do with menus.
namespace wrenfold {

/// The menu that opens on the widget, by key or by the right button; null when there is none.
inline QMenu *openMenu(QWidget &widget, QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse)
{
    const QPoint middle = widget.rect().center();
    QContextMenuEvent event(reason, middle, widget.mapToGlobal(middle));
    const OffscreenSilence silence;
    QCoreApplication::sendEvent(&widget, &event);
    return qobject_cast<QMenu *>(QApplication::activePopupWidget());
}

/// The texts of a menu's entries, separators as dashes, submenus in front of what they hold.
inline QStringList menuTexts(const QMenu &menu)
{
    QStringList texts;
    for (const QAction *action : menu.actions()) {
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        if (const auto *submenu = action->menu<QMenu *>())
            texts.append(menuTexts(*submenu));
    }
    return texts;
}

inline QAction *menuEntry(const QMenu &menu, const QString &text)
{
    for (QAction *action : menu.actions()) {
        if (action->text() == text)
            return action;
        if (const auto *submenu = action->menu<QMenu *>()) {
            if (QAction *inside = menuEntry(*submenu, text))
                return inside;
        }
    }
    return nullptr;
}

/// Opens the widget's menu, chooses the entry and closes it; whether there is such an entry.
[[nodiscard]] inline bool chooseFromMenu(QWidget &widget, const QString &text)
{
    QMenu *menu = openMenu(widget);
    QAction *entry = menu ? menuEntry(*menu, text) : nullptr;
    if (entry)
        entry->trigger();
    if (menu)
        menu->close();
    return entry;
}

} // namespace wrenfold
