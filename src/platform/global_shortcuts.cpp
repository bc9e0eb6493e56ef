// SPDX-License-Identifier: MIT
#include "platform/global_shortcuts.h"

namespace wrenfold {

QChar letterOf(uint32_t keyCode)
{
    switch (keyCode) {
    case VirtualKey::P:
        return u'p';
    case VirtualKey::H:
        return u'h';
    case VirtualKey::T:
        return u't';
    default:
        return {};
    }
}

QString nameOf(const GlobalShortcut &shortcut)
{
    QStringList keys;
    if (shortcut.modifiers & HotKeyModifier::control)
        keys << QStringLiteral("Ctrl");
    if (shortcut.modifiers & HotKeyModifier::option)
        keys << QStringLiteral("Alt");
    if (shortcut.modifiers & HotKeyModifier::command)
        keys << QStringLiteral("Super");
    keys << letterOf(shortcut.keyCode).toUpper();
    return keys.join(u'+');
}

QString globalShortcutsRemedy()
{
    return QStringLiteral(
        "bind keys of the desktop to wrenfold --toggle-panel, --hide-panel and --new-todo.");
}

Availability availabilityWithout(const QStringList &refused, bool hasOthers)
{
    if (refused.isEmpty())
        return {};
    return {hasOthers ? Availability::Level::Limited : Availability::Level::NotAvailable,
            QStringLiteral("The desktop does not give us %1: ").arg(refused.join(QStringLiteral(", "))) +
                globalShortcutsRemedy()};
}

} // namespace wrenfold
