// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>

class QDBusArgument;
class QDBusMessage;

namespace wrenfold {

struct GlobalShortcut;

/// A global shortcut as it is written on the desktop portal's bus.
struct PortalShortcut
{
    QString id;
    QVariantMap properties;

    /// To be called before any is written or read.
    static void registerTypes();

    /// Asks for a shortcut. Desktops remember what keys the user gave an id.
    [[nodiscard]] static PortalShortcut asking(const GlobalShortcut &shortcut);
    [[nodiscard]] static QString idOf(const GlobalShortcut &shortcut);

    /// Of a shortcut that was granted: whether the user has given it keys.
    [[nodiscard]] bool hasKeys() const;

    /// A list of them as the bus brings it; empty for anything else.
    [[nodiscard]] static QList<PortalShortcut> listFrom(const QVariant &value);
};
QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut);
const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut);

} // namespace wrenfold
