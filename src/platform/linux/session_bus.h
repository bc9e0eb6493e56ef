// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

class QObject;

namespace wrenfold {

/// A connection to the session bus for one part of the program. It is made on a thread of its own, so that a bus that
/// hangs holds up nobody.
class SessionBus
{
public:
    SessionBus();
    /// Ends the connection. Waits for half a second at most: then the thread is left behind.
    ~SessionBus();
    Q_DISABLE_COPY_MOVE(SessionBus)

    /// Connects, anew if there was a connection before, and calls `done` on the thread, once, with a connection that is
    /// not connected if there is no bus or it still hung after `patience`. A bus that stops answering in the middle of
    /// the greeting takes half a minute. Not to be called again before `done`, which is not called any more once this
    /// object has gone.
    void connect(std::chrono::milliseconds patience, std::function<void(const QDBusConnection &)> done);
    /// The same, but `done` is called from the event loop, unless `receiver`, which has this object, has gone by then.
    void connect(std::chrono::milliseconds patience, QObject *receiver,
                 std::function<void(const QDBusConnection &)> done);

    /// Whether a thread was left behind in this process. Qt's own end would wait for it, and then crash.
    [[nodiscard]] static bool isThreadLeftBehind();

private:
    struct Attempt;

    const QString m_connectionName;
    std::shared_ptr<Attempt> m_attempt; ///< The thread's too. Null before the first one.
    std::jthread m_thread;
};

} // namespace wrenfold
