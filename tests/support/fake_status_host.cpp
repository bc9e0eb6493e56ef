// SPDX-License-Identifier: MIT
#include "support/fake_status_host.h"

#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QTest>
#include <QUuid>

#include <utility>

namespace wrenfold {
namespace {

const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");
const auto itemPath = QStringLiteral("/StatusNotifierItem");
const auto itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const auto menuInterface = QStringLiteral("com.canonical.dbusmenu");

} // namespace

FakeStatusHost::FakeStatusHost(QString busAddress)
    : m_busAddress(std::move(busAddress))
{
    registerDBusMenuValues();
}

bool FakeStatusHost::arrive(const QStringList &others)
{
    leave();
    m_items.clear();
    m_connectionName = QUuid::createUuid().toString();
    QDBusConnection bus = QDBusConnection::connectToBus(m_busAddress, m_connectionName);
    for (const QString &interface : {itemInterface, menuInterface})
        bus.connect({}, {}, interface, {}, this, SLOT(signalCame(QDBusMessage)));
    bool hasAll = bus.registerObject(watcherPath, this, QDBusConnection::ExportScriptableContents);
    for (const QString &name : others + QStringList{QStringLiteral("org.kde.StatusNotifierWatcher")})
        hasAll = bus.registerService(name) && hasAll;
    return hasAll;
}

void FakeStatusHost::leave()
{
    if (m_connectionName.isEmpty())
        return;
    QDBusConnection bus(m_connectionName);
    bus.unregisterObject(watcherPath);
    // The connection ends on a thread of its own, where it looks at whatever it still knows: by then that may have gone.
    for (const QString &interface : {itemInterface, menuInterface})
        bus.disconnect({}, {}, interface, {}, this, SLOT(signalCame(QDBusMessage)));
    disconnect(this, &QObject::destroyed, nullptr, nullptr);
    QDBusConnection::disconnectFromBus(std::exchange(m_connectionName, {}));
}

void FakeStatusHost::setHostThere(bool isThere)
{
    m_isHostThere = isThere;
    if (isThere)
        Q_EMIT StatusNotifierHostRegistered();
    else
        Q_EMIT StatusNotifierHostUnregistered();
}

void FakeStatusHost::setHanging(bool isHanging)
{
    m_isHanging = isHanging;
    if (isHanging)
        return;
    for (const QDBusMessage &message : std::exchange(m_unanswered, {}))
        QDBusConnection(m_connectionName).send(message.createReply());
}

void FakeStatusHost::RegisterStatusNotifierItem(const QString &service)
{
    if (m_isRefusing) {
        sendErrorReply(QDBusError::AccessDenied, QStringLiteral("not\nthis one"));
        return;
    }
    if (m_isHanging) {
        setDelayedReply(true);
        m_unanswered.append(message());
    }
    m_items.append(service);
}

void FakeStatusHost::signalCame(const QDBusMessage &signal)
{
    m_signals.append(signal.member());
    m_lastSignal = signal.arguments();
}

QStringList FakeStatusHost::takeSignals()
{
    return std::exchange(m_signals, {});
}

QVariantMap FakeStatusHost::properties()
{
    const QVariantList answer = callAt(itemPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                       QStringLiteral("GetAll"), {itemInterface});
    return qdbus_cast<QVariantMap>(answer.value(0));
}

QVariantList FakeStatusHost::call(const QString &method, const QVariantList &arguments)
{
    return callAt(itemPath, itemInterface, method, arguments);
}

QVariantList FakeStatusHost::callMenu(const QString &method, const QVariantList &arguments)
{
    const auto path = qvariant_cast<QDBusObjectPath>(property(QStringLiteral("Menu")));
    return callAt(path.path(), menuInterface, method, arguments);
}

QList<DBusMenuLayout> FakeStatusHost::openMenu()
{
    callMenu(QStringLiteral("AboutToShow"), {0});
    const QVariantList answer = callMenu(QStringLiteral("GetLayout"), {0, -1, QStringList()});
    return qdbus_cast<DBusMenuLayout>(answer.value(1)).children;
}

void FakeStatusHost::press(int row)
{
    callMenu(QStringLiteral("Event"),
             {row, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), 0U});
}

QVariantList FakeStatusHost::callAt(const QString &path, const QString &interface, const QString &method,
                                    const QVariantList &arguments)
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(m_items.value(m_items.size() - 1), path, interface, method);
    message.setArguments(arguments);
    const QDBusPendingCall pending = QDBusConnection(m_connectionName).asyncCall(message);
    if (!QTest::qWaitFor([&] { return pending.isFinished(); }))
        return {QStringLiteral("no answer")};
    const QDBusMessage answer = pending.reply();
    if (answer.type() == QDBusMessage::ErrorMessage)
        return {answer.errorName()};
    return answer.arguments();
}

} // namespace wrenfold
