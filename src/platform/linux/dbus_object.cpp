// SPDX-License-Identifier: MIT
#include "platform/linux/dbus_object.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusVariant>

namespace wrenfold {
namespace {

QDBusMessage answerToPropertyCall(const QDBusMessage &call, const QString &interface,
                                  const QVariantMap &properties)
{
    const QString asked = call.arguments().value(0).toString();
    if (call.member() == QLatin1String("GetAll") && call.signature() == QLatin1String("s"))
        return call.createReply(asked == interface || asked.isEmpty() ? properties : QVariantMap());
    if (call.member() == QLatin1String("Get") && call.signature() == QLatin1String("ss")) {
        const QString name = call.arguments().value(1).toString();
        const auto property = properties.constFind(name);
        if (property == properties.cend() || (asked != interface && !asked.isEmpty()))
            return call.createErrorReply(QDBusError::UnknownProperty,
                                         QStringLiteral("There is no property %1").arg(name));
        return call.createReply(QVariant::fromValue(QDBusVariant(*property)));
    }
    if (call.member() == QLatin1String("Set"))
        return call.createErrorReply(QDBusError::PropertyReadOnly, QStringLiteral("It can only be read"));
    return {};
}

} // namespace

DBusObject::DBusObject(const QString &interface)
    : m_interface(interface)
{
}

bool DBusObject::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    QDBusMessage answer;
    if (message.interface() == QLatin1String("org.freedesktop.DBus.Properties"))
        answer = answerToPropertyCall(message, m_interface, properties());
    else if (message.interface() == m_interface)
        answer = answerTo(message);
    if (answer.type() == QDBusMessage::InvalidMessage)
        return false;
    if (message.isReplyRequired())
        connection.send(answer);
    return true;
}

QString DBusObject::introspect(const QString & /*path*/) const
{
    return {};
}

} // namespace wrenfold
