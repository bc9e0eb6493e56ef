// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/bus_connection.h"
#include "platform/linux/session_bus.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QHash>
#include <QObject>

#include <chrono>
#include <functional>
#include <optional>

namespace wrenfold {

/// The desktop's host of status items, seen over the session bus. It is told of our item whenever it comes, and waited
/// for when it hangs. Nothing here waits for the bus.
class StatusNotifierHost : public QObject
{
    Q_OBJECT

public:
    /// What we have on the bus, by path. They must outlive this object.
    using Objects = QHash<QString, QDBusVirtualObject *>;

    /// `patience` is how long a bus is waited for, and how long after one failure the next attempt is made at the
    /// earliest.
    StatusNotifierHost(Objects objects, std::chrono::milliseconds patience);

    /// Connects to the bus, unless that was done or tried in vain a moment ago.
    void connectToBus();

    /// A host shows our item.
    [[nodiscard]] bool isThere() const { return m_isThere; }
    /// And it shows the label beside the icon.
    [[nodiscard]] bool drawsLabels() const { return m_isThere && m_drawsLabels; }

    /// Sends a signal, if there is a host to hear it.
    void tell(const QDBusMessage &signal);

Q_SIGNALS:
    /// isThere() or drawsLabels() may have changed, or it is known now that no host is there.
    void changed();

private Q_SLOTS:
    // Called by the bus.
    void watcherChanged(const QDBusMessage &signal);
    void hostChanged(const QDBusMessage &signal);
    void disconnected();

private:
    void serve(const QDBusConnection &connection);
    void findWatcher();
    /// Tells the watcher of our item; then, or if there is none, the rest is known.
    void registerItem(const QString &watcher);
    void askForHost();
    void setThere(bool isThere);
    /// `answered` is called with the answer, or the error, unless the watcher has changed by then.
    void call(const QDBusMessage &message, std::function<void(const QDBusMessage &answer)> answered);

    const Objects m_objects;
    const std::chrono::milliseconds m_patience;
    std::optional<BusConnection> m_connection;
    bool m_isConnecting = false;
    QDeadlineTimer m_nextAttempt;
    QString m_watcher; ///< Its unique name on the bus; empty while there is none.
    uint m_watcherProcess = 0;
    quint64 m_attempt = 0; ///< Counts the watchers.
    bool m_isThere = false;
    bool m_drawsLabels = false;
    SessionBus m_bus; ///< Last: its thread uses the rest.
};

} // namespace wrenfold
