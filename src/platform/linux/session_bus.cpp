// SPDX-License-Identifier: MIT
#include "platform/linux/session_bus.h"

#include "platform/linux/session_bus_probe.h"

#include <QObject>
#include <QUuid>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

namespace wrenfold {
namespace {

std::atomic_bool threadLeftBehind = false;

/// Waits for the bus; the answer is not connected on failure. A bus that hangs is left alone for as long as
/// it does and then given up, because Qt's attempt to connect to it can be neither stopped nor bounded.
QDBusConnection connectToSessionBus(const std::stop_token &stop, std::chrono::milliseconds patience,
                                    const QString &name)
{
    constexpr auto oneLook = std::chrono::milliseconds(250); // So much later at most the program can end.
    for (auto waited = std::chrono::milliseconds(0); waited < patience && !stop.stop_requested();
         waited += oneLook) {
        if (sessionBusHangs(oneLook))
            continue;
        const std::optional<QString> address = leftOutSessionBus();
        return address ? QDBusConnection::connectToBus(*address, name)
                       : QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    }
    return QDBusConnection(name);
}

} // namespace

/// What the thread shares with the object that may go before it.
struct SessionBus::Attempt
{
    std::mutex mutex;
    std::condition_variable ended;
    bool hasEnded = false;
    bool isAbandoned = false;
};

SessionBus::SessionBus()
    : m_connectionName(QUuid::createUuid().toString())
{
}

SessionBus::~SessionBus()
{
    if (!m_attempt)
        return;
    m_thread.request_stop();
    std::unique_lock lock(m_attempt->mutex);
    m_attempt->isAbandoned = true;
    const bool hasEnded = m_attempt->ended.wait_for(lock, std::chrono::milliseconds(500),
                                                    [this] { return m_attempt->hasEnded; });
    lock.unlock();
    if (hasEnded) {
        m_thread.join();
        QDBusConnection::disconnectFromBus(m_connectionName);
    } else {
        m_thread.detach();
        threadLeftBehind = true;
    }
}

void SessionBus::connect(std::chrono::milliseconds patience,
                         std::function<void(const QDBusConnection &)> done)
{
    QDBusConnection::disconnectFromBus(m_connectionName); // Else Qt hands out the old one again.
    m_attempt = std::make_shared<Attempt>();
    m_thread = std::jthread([attempt = m_attempt, name = m_connectionName, patience,
                             done = std::move(done)](const std::stop_token &stop) {
        const QDBusConnection connection = connectToSessionBus(stop, patience, name);
        const std::scoped_lock lock(attempt->mutex);
        if (!attempt->isAbandoned)
            done(connection);
        attempt->hasEnded = true;
        attempt->ended.notify_all();
    });
}

void SessionBus::connect(std::chrono::milliseconds patience, QObject *receiver,
                         std::function<void(const QDBusConnection &)> done)
{
    connect(patience, [receiver, done = std::move(done)](const QDBusConnection &connection) {
        const auto tell = [done, connection] { done(connection); };
        QMetaObject::invokeMethod(receiver, tell, Qt::QueuedConnection);
    });
}

bool SessionBus::isThreadLeftBehind()
{
    return threadLeftBehind;
}

} // namespace wrenfold
