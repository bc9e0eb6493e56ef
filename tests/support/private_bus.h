// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace wrenfold {

/// A bus daemon for one test, which starts no services. It ends with this object.
class PrivateBus
{
public:
    PrivateBus() = default;
    ~PrivateBus();
    Q_DISABLE_COPY_MOVE(PrivateBus)

    /// Starts the daemon and waits until it takes connections. The answer is empty or what went wrong.
    [[nodiscard]] QString start();

    /// Ends the daemon, as when a session's bus goes; start() brings it back at the same address.
    void stop();

    /// For DBUS_SESSION_BUS_ADDRESS.
    [[nodiscard]] QString address() const;

    /// The daemon's process, for tests that make it hang.
    [[nodiscard]] qint64 processId() const { return m_daemon.processId(); }

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
};

} // namespace wrenfold
