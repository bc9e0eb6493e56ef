// SPDX-License-Identifier: MIT
#include "support/fake_shortcuts_portal.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QUuid>

#include <utility>

namespace wrenfold {

namespace {

const auto path = QStringLiteral("/org/freedesktop/portal/desktop");
const auto interface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");

QString pathFor(const QString &kind, const QDBusMessage &message, const QString &token)
{
    return QStringLiteral("%1/%2/%3/%4").arg(path, kind, message.service().mid(1).replace(u'.', u'_'), token);
}

} // namespace

FakeShortcutsPortal::FakeShortcutsPortal(QString busAddress)
    : m_busAddress(std::move(busAddress))
{
}

bool FakeShortcutsPortal::arrive()
{
    leave();
    m_connectionName = QUuid::createUuid().toString();
    QDBusConnection bus = QDBusConnection::connectToBus(m_busAddress, m_connectionName);
    return bus.registerVirtualObject(path, this) &&
           bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
}

void FakeShortcutsPortal::leave()
{
    if (m_connectionName.isEmpty())
        return;
    QDBusConnection(m_connectionName).unregisterObject(path);
    // Else our destruction is told to the connection, which may be going at that moment.
    disconnect(this, &QObject::destroyed, nullptr, nullptr);
    QDBusConnection::disconnectFromBus(std::exchange(m_connectionName, {}));
}

void FakeShortcutsPortal::userAnswers()
{
    send(m_response);
}

void FakeShortcutsPortal::press(const QString &id, const QString &session)
{
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, QStringLiteral("Activated"));
    signal << QVariant::fromValue(QDBusObjectPath(session.isEmpty() ? m_session : session)) << id
           << QVariant::fromValue(qulonglong(1)) << QVariantMap();
    send(signal);
}

void FakeShortcutsPortal::changeKeys(const QString &newTrigger)
{
    trigger = newTrigger;
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, QStringLiteral("ShortcutsChanged"));
    signal << QVariant::fromValue(QDBusObjectPath(m_session)) << QVariant::fromValue(granted());
    send(signal);
}

void FakeShortcutsPortal::closeSession()
{
    send(QDBusMessage::createSignal(m_session, QStringLiteral("org.freedesktop.portal.Session"),
                                    QStringLiteral("Closed")));
}

bool FakeShortcutsPortal::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    m_calls << message.member();
    if (hangingMethods.contains(message.member()))
        return true;
    if (unknownMethods.contains(message.member())) {
        send(message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("No such method.")));
    } else if (message.member() == QLatin1String("Register")) {
        m_applicationID = message.arguments().value(0).toString();
        send(message.createReply());
    } else if (message.member() == QLatin1String("CreateSession")) {
        createSession(message);
    } else if (message.member() == QLatin1String("BindShortcuts")) {
        bindShortcuts(message);
    }
    return true;
}

void FakeShortcutsPortal::createSession(const QDBusMessage &message)
{
    const auto options = qdbus_cast<QVariantMap>(message.arguments().value(0));
    m_session = pathFor(QStringLiteral("session"), message,
                        options.value(QStringLiteral("session_handle_token")).toString());
    const QVariant handle = isSessionHandlePath ? QVariant::fromValue(QDBusObjectPath(m_session)) : m_session;
    respond(message, options, sessionResponse,
            {{QStringLiteral("session_handle"), sessionHandle.isValid() ? sessionHandle : handle}});
}

void FakeShortcutsPortal::bindShortcuts(const QDBusMessage &message)
{
    if (message.signature() != QLatin1String("oa(sa{sv})sa{sv}") ||
        message.arguments().value(0).value<QDBusObjectPath>().path() != m_session) {
        send(message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("Not so.")));
        return;
    }
    m_bound = qdbus_cast<QList<PortalShortcut>>(message.arguments().value(1));
    respond(message, qdbus_cast<QVariantMap>(message.arguments().value(3)), bindResponse,
            {{QStringLiteral("shortcuts"), QVariant::fromValue(granted())}});
}

void FakeShortcutsPortal::respond(const QDBusMessage &message, const QVariantMap &options, uint code,
                                  const QVariantMap &results)
{
    const QString request =
        pathFor(QStringLiteral("request"), message, options.value(QStringLiteral("handle_token")).toString());
    send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
    m_response = QDBusMessage::createTargetedSignal(message.service(), request,
                                                    QStringLiteral("org.freedesktop.portal.Request"),
                                                    QStringLiteral("Response"));
    m_response << code << results;
    if (!isUserThinking)
        userAnswers();
}

QList<PortalShortcut> FakeShortcutsPortal::granted() const
{
    QList<PortalShortcut> list;
    for (const PortalShortcut &shortcut : m_bound) {
        if (!withheld.contains(shortcut.id))
            list << PortalShortcut{shortcut.id, {{QStringLiteral("trigger_description"), trigger}}};
    }
    return list;
}

void FakeShortcutsPortal::send(const QDBusMessage &message) const
{
    QDBusConnection(m_connectionName).send(message);
}

} // namespace wrenfold
