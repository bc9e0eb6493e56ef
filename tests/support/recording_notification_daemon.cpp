// SPDX-License-Identifier: MIT
#include "support/recording_notification_daemon.h"

#include <QDBusMessage>
#include <QUuid>

#include <utility>

namespace wrenfold {

RecordingNotificationDaemon::RecordingNotificationDaemon(QString busAddress)
    : m_busAddress(std::move(busAddress))
{
}

bool RecordingNotificationDaemon::arrive()
{
    leave();
    m_lastId = 0;
    m_listed.clear();
    m_connectionName = QUuid::createUuid().toString();
    QDBusConnection bus = QDBusConnection::connectToBus(m_busAddress, m_connectionName);
    return bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                              QDBusConnection::ExportScriptableContents) &&
           bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
}

void RecordingNotificationDaemon::leave()
{
    if (m_connectionName.isEmpty())
        return;
    QDBusConnection(m_connectionName).unregisterObject(QStringLiteral("/org/freedesktop/Notifications"));
    // Else our destruction is told to the connection, which may be going at that moment.
    disconnect(this, &QObject::destroyed, nullptr, nullptr);
    QDBusConnection::disconnectFromBus(std::exchange(m_connectionName, {}));
}

void RecordingNotificationDaemon::invoke(uint id, const QString &action, const QString &token)
{
    if (!token.isEmpty())
        Q_EMIT ActivationToken(id, token);
    Q_EMIT ActionInvoked(id, action);
}

QStringList RecordingNotificationDaemon::GetCapabilities()
{
    ++m_capabilitiesAsked;
    if (m_isHanging)
        setDelayedReply(true);
    return m_capabilities;
}

uint RecordingNotificationDaemon::Notify(const QString &appName, uint replacesId, const QString &icon,
                                         const QString &summary, const QString &body,
                                         const QStringList &actions, const QVariantMap &hints, int timeout)
{
    if (!m_refusal.isEmpty()) {
        sendErrorReply(QDBusError::Failed, std::exchange(m_refusal, {}));
        return 0;
    }
    if (m_isHanging)
        setDelayedReply(true);
    const uint id = replacesId != 0 ? replacesId : ++m_lastId;
    m_calls.append({appName, replacesId, icon, summary, body, actions, hints, timeout, id});
    m_listed.removeIf([id](const Call &call) { return call.id == id; });
    m_listed.append(m_calls.last());
    return id;
}

} // namespace wrenfold
