// SPDX-License-Identifier: MIT
#include "support/fake_portal.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QUuid>

#include <utility>

namespace wrenfold {

namespace {

const auto path = QStringLiteral("/org/freedesktop/portal/desktop");
const auto interface = QStringLiteral("org.freedesktop.portal.Settings");

} // namespace

FakePortal::FakePortal(QString busAddress)
    : m_busAddress(std::move(busAddress))
{
    qDBusRegisterMetaType<QMap<QString, QVariantMap>>();
}

bool FakePortal::arrive()
{
    leave();
    m_connectionName = QUuid::createUuid().toString();
    QDBusConnection bus = QDBusConnection::connectToBus(m_busAddress, m_connectionName);
    return bus.registerObject(path, this, QDBusConnection::ExportScriptableSlots) &&
           bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

void FakePortal::leave()
{
    if (m_connectionName.isEmpty())
        return;
    QDBusConnection(m_connectionName).unregisterObject(path);
    // Else our destruction is told to the connection, which may be going at that moment.
    disconnect(this, &QObject::destroyed, nullptr, nullptr);
    QDBusConnection::disconnectFromBus(std::exchange(m_connectionName, {}));
}

void FakePortal::set(const QString &nameSpace, const QString &key, const QVariant &value)
{
    m_settings[nameSpace].insert(key, value);
    if (m_connectionName.isEmpty())
        return;
    QDBusMessage changed = QDBusMessage::createSignal(path, interface, QStringLiteral("SettingChanged"));
    changed << nameSpace << key << QVariant::fromValue(QDBusVariant(value));
    QDBusConnection(m_connectionName).send(changed);
}

void FakePortal::ReadAll(const QStringList &namespaces)
{
    ++m_asked;
    setDelayedReply(true);
    if (m_isHanging)
        return;
    QMap<QString, QVariantMap> answer;
    for (const QString &nameSpace : namespaces) {
        if (m_settings.contains(nameSpace))
            answer.insert(nameSpace, m_settings.value(nameSpace));
    }
    connection().send(message().createReply(m_answer.isValid() ? m_answer : QVariant::fromValue(answer)));
}

} // namespace wrenfold
