// SPDX-License-Identifier: MIT
#include "platform/linux/portal_global_shortcuts.h"

#include "app/application_id.h"
#include "app/debug_log.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QUuid>

#include <algorithm>
#include <utility>

namespace wrenfold {
namespace {

const auto service = QStringLiteral("org.freedesktop.portal.Desktop");
const auto path = QStringLiteral("/org/freedesktop/portal/desktop");
const auto interface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");

const auto handleToken = QStringLiteral("handle_token");

/// A token that nobody can guess: whatever comes under it is meant for us.
QString newToken()
{
    return QStringLiteral("wrenfold_") + QUuid::createUuid().toString(QUuid::Id128);
}

/// The results of a request that was granted; empty for another response.
QVariantMap resultsOf(const QDBusMessage &response)
{
    if (response.signature() != QLatin1String("ua{sv}") || response.arguments().value(0).toUInt() != 0)
        return {};
    return qdbus_cast<QVariantMap>(response.arguments().value(1));
}

} // namespace

PortalGlobalShortcuts::PortalGlobalShortcuts(std::chrono::milliseconds patience)
    : m_patience(patience)
{
    PortalShortcut::registerTypes();
}

Availability PortalGlobalShortcuts::availability() const
{
    // To find out, the desktop would ask the user.
    if (m_shortcuts.empty() && !m_isPassedOn)
        return {Availability::Level::NotAvailable,
                QStringLiteral("The desktop is asked when Wren Fold starts: start it, then look again.")};
    QStringList without = m_refused;
    bool hasOthers = false;
    for (const GlobalShortcut &shortcut : m_shortcuts) {
        if (m_withKeys.contains(PortalShortcut::idOf(shortcut)))
            hasOthers = true;
        else
            without << nameOf(shortcut);
    }
    return availabilityWithout(without, hasOthers);
}

bool PortalGlobalShortcuts::registerShortcut(const GlobalShortcut &shortcut)
{
    if (m_isPassedOn) {
        m_refused << nameOf(shortcut);
        return false;
    }
    QMetaObject::invokeMethod(this, &PortalGlobalShortcuts::connectToBus, Qt::QueuedConnection);
    m_shortcuts.push_back(shortcut);
    return true;
}

void PortalGlobalShortcuts::unregisterShortcut(uint32_t id)
{
    // The portal has no word for it; what it sends from now on finds nothing.
    std::erase_if(m_shortcuts, [id](const GlobalShortcut &shortcut) { return shortcut.id == id; });
}

void PortalGlobalShortcuts::connectToBus()
{
    if (std::exchange(m_isPassedOn, true))
        return;
    m_bus.connect(m_patience, this, [this](const QDBusConnection &connection) { followPortal(connection); });
}

void PortalGlobalShortcuts::followPortal(const QDBusConnection &connection)
{
    if (!connection.isConnected()) {
        keepOnly({});
        return;
    }
    m_connection.emplace(connection);
    // Others may send these too, but our session's path is not to be guessed.
    m_connection->follow(BusSignal::nameOwnerChanged(service), this, SLOT(nameOwnerChanged(QDBusMessage)));
    m_connection->follow({path, interface, QStringLiteral("Activated")}, this, SLOT(activated(QDBusMessage)));
    m_connection->follow({path, interface, QStringLiteral("ShortcutsChanged")}, this,
                         SLOT(shortcutsChanged(QDBusMessage)));
    introduceOurselves();
}

void PortalGlobalShortcuts::call(const QDBusMessage &message,
                                 std::function<void(const QDBusMessage &)> replied)
{
    callBus(*m_connection, message, static_cast<int>(m_patience.count()), this,
            [this, departures = m_departures, replied = std::move(replied)](const QDBusMessage &reply) {
                // The bus answers in the place of a portal that has gone, after it has told of its going.
                if (departures == m_departures)
                    replied(reply);
            });
}

void PortalGlobalShortcuts::introduceOurselves()
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.host.portal.Registry"), QStringLiteral("Register"));
    message << applicationID() << QVariantMap();
    // Older portals do not know the call and find out for themselves.
    call(message, [this](const QDBusMessage &) { createSession(); });
}

void PortalGlobalShortcuts::createSession()
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("CreateSession"));
    message << QVariantMap{{handleToken, expectResponse(SLOT(sessionCreated(QDBusMessage)))},
                           {QStringLiteral("session_handle_token"), newToken()}};
    request(message);
}

void PortalGlobalShortcuts::bindShortcuts()
{
    if (m_shortcuts.empty()) // Unregistered meanwhile, or refused for an answer that came too late.
        return;
    QList<PortalShortcut> shortcuts;
    for (const GlobalShortcut &shortcut : m_shortcuts)
        shortcuts << PortalShortcut::asking(shortcut);
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("BindShortcuts"));
    message << QVariant::fromValue(QDBusObjectPath(m_session)) << QVariant::fromValue(shortcuts) << QString()
            << QVariantMap{{handleToken, expectResponse(SLOT(shortcutsBound(QDBusMessage)))}};
    request(message);
}

QString PortalGlobalShortcuts::expectResponse(const char *slot)
{
    const QString token = newToken();
    const QString sender = m_connection->baseService().mid(1).replace(u'.', u'_');
    m_connection->follow({QStringLiteral("%1/request/%2/%3").arg(path, sender, token),
                          QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response")},
                         this, slot);
    return token;
}

void PortalGlobalShortcuts::request(const QDBusMessage &message)
{
    call(message, [this](const QDBusMessage &reply) {
        if (reply.type() != QDBusMessage::ErrorMessage)
            return;
        if (DebugLog::isVerbose())
            qCDebug(DebugLog::app).noquote()
                << QStringLiteral("the desktop portal gives no shortcuts: ") + reply.errorMessage();
        keepOnly({});
    });
}

void PortalGlobalShortcuts::sessionCreated(const QDBusMessage &response)
{
    const QVariant handle = resultsOf(response).value(QStringLiteral("session_handle"));
    // Portals differ in whether they write it as a path or as a string.
    m_session =
        handle.canConvert<QDBusObjectPath>() ? handle.value<QDBusObjectPath>().path() : handle.toString();
    if (!m_session.startsWith(path + QStringLiteral("/session/"))) {
        m_session.clear();
        keepOnly({});
        return;
    }
    m_connection->follow(
        {m_session, QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Closed")}, this,
        SLOT(sessionClosed(QDBusMessage)));
    bindShortcuts();
}

void PortalGlobalShortcuts::shortcutsBound(const QDBusMessage &response)
{
    const QList<PortalShortcut> shortcuts =
        PortalShortcut::listFrom(resultsOf(response).value(QStringLiteral("shortcuts")));
    QStringList granted;
    for (const PortalShortcut &shortcut : shortcuts)
        granted << shortcut.id;
    noteKeys(shortcuts);
    keepOnly(granted);
}

void PortalGlobalShortcuts::keepOnly(const QStringList &granted)
{
    std::vector<GlobalShortcut> kept;
    std::vector<uint32_t> refused;
    for (const GlobalShortcut &shortcut : m_shortcuts) {
        if (granted.contains(PortalShortcut::idOf(shortcut))) {
            kept.push_back(shortcut);
        } else {
            m_refused << nameOf(shortcut);
            refused.push_back(shortcut.id);
        }
    }
    m_shortcuts = std::move(kept);
    for (const uint32_t id : refused) {
        if (m_handler.refused)
            m_handler.refused(id);
    }
}

void PortalGlobalShortcuts::noteKeys(const QList<PortalShortcut> &shortcuts)
{
    m_withKeys.clear();
    for (const PortalShortcut &shortcut : shortcuts) {
        if (shortcut.hasKeys())
            m_withKeys << shortcut.id;
    }
}

void PortalGlobalShortcuts::shortcutsChanged(const QDBusMessage &signal)
{
    if (signal.signature() == QLatin1String("oa(sa{sv})") &&
        signal.arguments().value(0).value<QDBusObjectPath>().path() == m_session)
        noteKeys(PortalShortcut::listFrom(signal.arguments().value(1)));
}

void PortalGlobalShortcuts::activated(const QDBusMessage &signal)
{
    if (signal.signature() != QLatin1String("osta{sv}") ||
        signal.arguments().value(0).value<QDBusObjectPath>().path() != m_session)
        return;
    const QString id = signal.arguments().value(1).toString();
    const auto found =
        std::find_if(m_shortcuts.begin(), m_shortcuts.end(),
                     [&id](const GlobalShortcut &shortcut) { return PortalShortcut::idOf(shortcut) == id; });
    if (found != m_shortcuts.end() && m_handler.pressed)
        m_handler.pressed(found->id);
}

void PortalGlobalShortcuts::sessionClosed(const QDBusMessage &signal)
{
    if (signal.path() != m_session)
        return;
    loseSession();
    keepOnly({});
}

void PortalGlobalShortcuts::nameOwnerChanged(const QDBusMessage &signal)
{
    const bool hasGone = !signal.arguments().value(1).toString().isEmpty();
    const bool hasCome = !signal.arguments().value(2).toString().isEmpty();
    if (hasGone) {
        ++m_departures;
        m_isToBeRestored = !m_shortcuts.empty();
        loseSession();
    }
    if (hasCome && std::exchange(m_isToBeRestored, false))
        introduceOurselves();
}

void PortalGlobalShortcuts::loseSession()
{
    m_session.clear();
    m_withKeys.clear();
}

} // namespace wrenfold
