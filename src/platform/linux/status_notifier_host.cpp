// SPDX-License-Identifier: MIT
#include "platform/linux/status_notifier_host.h"

#include "app/debug_log.h"

#include <QCoreApplication>
#include <QDBusVariant>

#include <limits>
#include <utility>

namespace wrenfold {
namespace {

const auto watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");
const auto watcherInterface = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto busService = QStringLiteral("org.freedesktop.DBus");

/// What the programs call themselves that are a watcher and draw labels: the Ayatana indicators, GNOME's shell with an
/// extension for indicators, MATE's panel.
QStringList labelDrawers()
{
    return {QStringLiteral("org.ayatana.indicator.application"), QStringLiteral("org.gnome.Shell"),
            QStringLiteral("org.mate.panel.applet.NotificationAreaAppletFactory")};
}

QString itemService()
{
    return QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
}

/// What the bus says of a connection's process; 0 if there is none.
uint processId(const QDBusMessage &answer)
{
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toUInt() : 0;
}

} // namespace

StatusNotifierHost::StatusNotifierHost(Objects objects, std::chrono::milliseconds patience)
    : m_objects(std::move(objects))
    , m_patience(patience)
{
}

void StatusNotifierHost::connectToBus()
{
    if (m_isConnecting || !m_nextAttempt.hasExpired() || (m_connection && m_connection->isConnected()))
        return;
    m_isConnecting = true;
    m_connection.reset();
    m_bus.connect(m_patience, this, [this](const QDBusConnection &connection) { serve(connection); });
}

void StatusNotifierHost::serve(const QDBusConnection &connection)
{
    m_isConnecting = false;
    m_connection.emplace(connection);
    if (!m_connection->isConnected())
        return disconnected();
    m_connection->follow(BusSignal::nameOwnerChanged(watcherService), this,
                         SLOT(watcherChanged(QDBusMessage)));
    m_connection->follow({watcherPath, watcherInterface, QStringLiteral("StatusNotifierHostRegistered")},
                         this, SLOT(hostChanged(QDBusMessage)));
    m_connection->follow({watcherPath, watcherInterface, QStringLiteral("StatusNotifierHostUnregistered")},
                         this, SLOT(hostChanged(QDBusMessage)));
    m_connection->follow(BusSignal::disconnected(), this, SLOT(disconnected()));
    // The objects before the name: whoever sees it may call at once.
    for (auto object = m_objects.cbegin(); object != m_objects.cend(); ++object)
        m_connection->offer(object.key(), object.value());
    m_connection->send(busCall(QStringLiteral("RequestName"), {itemService(), 0U}));
    findWatcher();
}

void StatusNotifierHost::findWatcher()
{
    ++m_attempt;
    m_watcher.clear();
    call(nameOwnerCall(watcherService), [this](const QDBusMessage &answer) {
        const bool isOwned = answer.type() == QDBusMessage::ReplyMessage;
        registerItem(isOwned ? answer.arguments().value(0).toString() : QString());
    });
}

void StatusNotifierHost::registerItem(const QString &watcher)
{
    m_watcher = watcher;
    m_drawsLabels = false;
    if (m_watcher.isEmpty())
        return setThere(false);
    // The bus answers these before the watcher answers the rest. Programs are compared, because one may have several
    // connections.
    const auto process = QStringLiteral("GetConnectionUnixProcessID");
    m_watcherProcess = 0;
    call(busCall(process, {m_watcher}),
         [this](const QDBusMessage &answer) { m_watcherProcess = processId(answer); });
    const QStringList names = labelDrawers();
    for (const QString &name : names) {
        call(busCall(process, {name}), [this](const QDBusMessage &answer) {
            m_drawsLabels = m_drawsLabels || (m_watcherProcess != 0 && processId(answer) == m_watcherProcess);
        });
    }
    QDBusMessage message = QDBusMessage::createMethodCall(m_watcher, watcherPath, watcherInterface,
                                                          QStringLiteral("RegisterStatusNotifierItem"));
    message << itemService();
    call(message, [this](const QDBusMessage &answer) {
        if (answer.type() != QDBusMessage::ErrorMessage)
            return askForHost();
        qCInfo(DebugLog::ui).noquote()
            << QStringLiteral("The status area refuses the item: %1").arg(answer.errorMessage().simplified());
        setThere(false);
    });
}

void StatusNotifierHost::askForHost()
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        m_watcher, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message << watcherInterface << QStringLiteral("IsStatusNotifierHostRegistered");
    call(message, [this](const QDBusMessage &answer) {
        // A watcher that does not know is its own host.
        setThere(answer.type() == QDBusMessage::ErrorMessage ||
                 answer.arguments().value(0).value<QDBusVariant>().variant().toBool());
    });
}

void StatusNotifierHost::setThere(bool isThere)
{
    m_isThere = isThere;
    Q_EMIT changed();
}

void StatusNotifierHost::tell(const QDBusMessage &signal)
{
    if (m_isThere)
        m_connection->send(signal);
}

void StatusNotifierHost::call(const QDBusMessage &message,
                              std::function<void(const QDBusMessage &answer)> answered)
{
    // A watcher that hangs is waited for: once it goes on, it will show the item.
    constexpr int forEver = std::numeric_limits<int>::max();
    callBus(*m_connection, message, forEver, this,
            [this, attempt = m_attempt, answered = std::move(answered)](const QDBusMessage &answer) {
                if (attempt == m_attempt)
                    answered(answer);
            });
}

void StatusNotifierHost::watcherChanged(const QDBusMessage &signal)
{
    if (signal.service() == busService)
        findWatcher();
}

void StatusNotifierHost::hostChanged(const QDBusMessage &signal)
{
    if (signal.service() == m_watcher)
        askForHost();
}

void StatusNotifierHost::disconnected()
{
    ++m_attempt;
    m_watcher.clear();
    m_nextAttempt.setRemainingTime(m_patience);
    setThere(false);
}

} // namespace wrenfold
