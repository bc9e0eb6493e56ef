// SPDX-License-Identifier: MIT
#include "platform/linux/portal_shortcut.h"

#include "platform/global_shortcuts.h"

#include <QDBusArgument>
#include <QDBusMetaType>

namespace wrenfold {
namespace {

QString triggerFor(const GlobalShortcut &shortcut)
{
    QStringList keys;
    if (shortcut.modifiers & HotKeyModifier::control)
        keys << QStringLiteral("CTRL");
    if (shortcut.modifiers & HotKeyModifier::option)
        keys << QStringLiteral("ALT");
    if (shortcut.modifiers & HotKeyModifier::command)
        keys << QStringLiteral("LOGO");
    keys << letterOf(shortcut.keyCode);
    return keys.join(u'+');
}

} // namespace

void PortalShortcut::registerTypes()
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
}

PortalShortcut PortalShortcut::asking(const GlobalShortcut &shortcut)
{
    return {idOf(shortcut),
            {{QStringLiteral("description"), shortcut.description},
             {QStringLiteral("preferred_trigger"), triggerFor(shortcut)}}};
}

QString PortalShortcut::idOf(const GlobalShortcut &shortcut)
{
    QString signature;
    for (const int shift : {24, 16, 8, 0})
        signature += QLatin1Char(static_cast<char>(shortcut.signature >> shift & 0xFF));
    return QStringLiteral("%1-%2").arg(signature).arg(shortcut.id);
}

bool PortalShortcut::hasKeys() const
{
    // Some desktops grant a shortcut that the user has yet to give keys, and leave its description empty.
    const QVariant trigger = properties.value(QStringLiteral("trigger_description"));
    return !trigger.isValid() || !trigger.toString().isEmpty();
}

QList<PortalShortcut> PortalShortcut::listFrom(const QVariant &value)
{
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("a(sa{sv})"))
        return {};
    return qdbus_cast<QList<PortalShortcut>>(argument);
}

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

} // namespace wrenfold
