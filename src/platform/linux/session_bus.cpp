// SPDX-License-Identifier: MIT
#include "platform/linux/session_bus.h"

#include "platform/linux/session_bus_probe.h"

#include <QUuid>

#include <utility>

namespace wrenfold {
namespace {

/// Waits for the bus; the answer is not connected on failure. A bus that hangs is left alone for as long as
/// it does and then given up, because Qt's attempt to connect to it can be neither stopped nor bounded.
QDBusConnection connectToSessionBus(const std::stop_token &stop, std::chrono::milliseconds patience,
                                    const QString &name)
{
    constexpr auto oneLook = std::chrono::milliseconds(250); // So much later at most the program can end.
    for (auto waited = std::chrono::milliseconds(0); waited < patience && !stop.stop_requested();
         waited += oneLook) {
        if (!sessionBusHangs(oneLook))
            return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    }
    return QDBusConnection(name);
}

} // namespace

SessionBus::SessionBus()
    : m_connectionName(QUuid::createUuid().toString())
{
}

SessionBus::~SessionBus()
{
    // A thread still inside Qt when the process ends would crash it.
    m_thread.request_stop();
    if (m_thread.joinable())
        m_thread.join();
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void SessionBus::connect(std::chrono::milliseconds patience,
                         std::function<void(const QDBusConnection &)> done)
{
    QDBusConnection::disconnectFromBus(m_connectionName); // Else Qt hands out the old one again.
    m_thread =
        std::jthread([name = m_connectionName, patience, done = std::move(done)](
                         const std::stop_token &stop) { done(connectToSessionBus(stop, patience, name)); });
}

} // namespace wrenfold
