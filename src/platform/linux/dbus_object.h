// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QVariantMap>

namespace wrenfold {

/// An object on the bus with one interface, whose properties are for reading. Who calls knows the interface: it is not
/// described.
class DBusObject : public QDBusVirtualObject
{
    Q_OBJECT

public:
    explicit DBusObject(const QString &interface);

    // Called by the bus.
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) final;
    [[nodiscard]] QString introspect(const QString &path) const final;

private:
    /// To a call of the interface; an invalid message if there is no such call.
    [[nodiscard]] virtual QDBusMessage answerTo(const QDBusMessage &call) = 0;
    [[nodiscard]] virtual QVariantMap properties() = 0;

    const QString m_interface;
};

} // namespace wrenfold
