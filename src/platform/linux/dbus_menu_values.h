// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QVariantMap>

namespace wrenfold {

// What goes over the bus in the interface com.canonical.dbusmenu.

/// A row and the rows below it.
struct DBusMenuLayout
{
    int id = 0;
    QVariantMap properties;
    QList<DBusMenuLayout> children;
};

/// A row alone.
struct DBusMenuItem
{
    int id = 0;
    QVariantMap properties;
};

/// What has happened to a row.
struct DBusMenuEvent
{
    int id = 0;
    QString name;
    QDBusVariant data;
    uint time = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuLayout &layout);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuLayout &layout);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuItem &item);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuItem &item);
QDBusArgument &operator<<(QDBusArgument &argument, const DBusMenuEvent &event);
const QDBusArgument &operator>>(const QDBusArgument &argument, DBusMenuEvent &event);

/// To be called before any of them is sent.
void registerDBusMenuValues();

} // namespace wrenfold

Q_DECLARE_METATYPE(wrenfold::DBusMenuLayout)
Q_DECLARE_METATYPE(wrenfold::DBusMenuItem)
Q_DECLARE_METATYPE(wrenfold::DBusMenuEvent)
