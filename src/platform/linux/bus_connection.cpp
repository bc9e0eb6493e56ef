// SPDX-License-Identifier: MIT
#include "platform/linux/bus_connection.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVirtualObject>

#include <utility>

namespace wrenfold {
namespace {

const auto busPath = QStringLiteral("/org/freedesktop/DBus");
const auto busInterface = QStringLiteral("org.freedesktop.DBus");

QStringList argumentsOf(const BusSignal &signal)
{
    return signal.firstArgument.isEmpty() ? QStringList() : QStringList{signal.firstArgument};
}

/// The connection asks to be told of the object's destruction, and does not take that back itself.
void keepDestructionFromBus(const QObject *object)
{
    QObject::disconnect(object, &QObject::destroyed, nullptr, nullptr);
}

} // namespace

BusSignal BusSignal::nameOwnerChanged(const QString &service)
{
    return {busPath, busInterface, QStringLiteral("NameOwnerChanged"), service};
}

BusSignal BusSignal::disconnected()
{
    return {QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
            QStringLiteral("Disconnected")};
}

QDBusMessage busCall(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(busInterface, busPath, busInterface, method);
    message.setArguments(arguments);
    return message;
}

QDBusMessage nameOwnerCall(const QString &service)
{
    return busCall(QStringLiteral("GetNameOwner"), {service});
}

BusConnection::~BusConnection()
{
    for (const auto &[signal, receiver, slot] : std::as_const(m_followed)) {
        disconnect({}, signal.path, signal.interface, signal.name, argumentsOf(signal), {}, receiver, slot);
        keepDestructionFromBus(receiver);
    }
    for (const auto &[path, object] : std::as_const(m_offered)) {
        unregisterObject(path);
        keepDestructionFromBus(object);
    }
}

void BusConnection::follow(const BusSignal &signal, QObject *receiver, const char *slot)
{
    connect({}, signal.path, signal.interface, signal.name, argumentsOf(signal), {}, receiver, slot);
    m_followed.append({signal, receiver, slot});
}

void BusConnection::offer(const QString &path, QObject *object)
{
    registerObject(path, object, ExportScriptableSlots);
    m_offered.append({path, object});
}

void BusConnection::offer(const QString &path, QDBusVirtualObject *object)
{
    registerVirtualObject(path, object);
    m_offered.append({path, object});
}

void callBus(const QDBusConnection &connection, const QDBusMessage &call, int timeout, QObject *receiver,
             std::function<void(const QDBusMessage &answer)> answered)
{
    auto *watcher = new QDBusPendingCallWatcher(connection.asyncCall(call, timeout), receiver);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, receiver,
                     [watcher, answered = std::move(answered)] {
                         watcher->deleteLater();
                         answered(watcher->reply());
                     });
}

} // namespace wrenfold
