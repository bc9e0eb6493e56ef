// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <QVariantMap>

namespace wrenfold {

/// How properties are read over the bus.
[[nodiscard]] inline QString propertiesInterface()
{
    return QStringLiteral("org.freedesktop.DBus.Properties");
}

/// The answer to a call of that interface at an object that has these properties, for reading, in this one of its own;
/// an invalid message if there is no such call.
[[nodiscard]] QDBusMessage answerToPropertyCall(const QDBusMessage &call, const QString &interface,
                                                const QVariantMap &properties);

} // namespace wrenfold
