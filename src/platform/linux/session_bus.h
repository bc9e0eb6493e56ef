// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QString>

#include <chrono>
#include <functional>
#include <thread>

namespace wrenfold {

/// A connection to the session bus for one part of the program. It is made on a thread of its own, so that a bus that
/// hangs holds up nobody.
class SessionBus
{
public:
    SessionBus();
    /// Ends the connection. Waits for a quarter of a second at most.
    ~SessionBus();
    SessionBus(const SessionBus &) = delete;
    SessionBus &operator=(const SessionBus &) = delete;

    /// Connects, anew if there was a connection before, and calls `done` on the thread, once, with a connection that is
    /// not connected if there is no bus or it still hung after `patience`. Not to be called again before that.
    void connect(std::chrono::milliseconds patience, std::function<void(const QDBusConnection &)> done);

private:
    const QString m_connectionName;
    std::jthread m_thread;
};

} // namespace wrenfold
