// SPDX-License-Identifier: MIT
#pragma once

#include <QLocalServer>
#include <QString>

#include <chrono>
#include <functional>

namespace wrenfold {

/// The local socket over which a start asks the running program to show its panel: one line "show", answered
/// "ok". It lies in a folder that only this user can enter.
class InstanceSocket
{
public:
    /// `instance` is part of the socket's file name: only programs given the same one meet.
    explicit InstanceSocket(const QString &instance);

    /// Asks the running program; true when it answered within `patience`. Blocks no longer than that.
    [[nodiscard]] bool ask(std::chrono::milliseconds patience) const;

    /// Calls `show` on the main thread for each ask, until this object goes. What a killed run has left at
    /// the socket's place is removed, so call it only while holding the instance lock. On failure there is a
    /// log line.
    void listen(std::function<void()> show);

private:
    void serve(QLocalSocket &client);

    const QString m_path; ///< Empty if there is no folder to put it in.
    std::function<void()> m_show;
    QLocalServer m_server;
};

} // namespace wrenfold
