// SPDX-License-Identifier: MIT
#pragma once

#include "app/launch_options.h"
#include "platform/linux/instance_reply.h"

#include <QLocalServer>
#include <QString>

#include <chrono>
#include <functional>

namespace wrenfold {

/// The local socket over which a start sends the running program a request: a line with its word, answered by the line
/// "ok" and the text of the answer. It lies in a folder that only this user can enter.
class InstanceSocket
{
public:
    /// `instance` is part of the socket's file name: only programs given the same one meet.
    explicit InstanceSocket(const QString &instance);

    /// Asks the running program. Blocks for no longer than `patience`.
    [[nodiscard]] InstanceReply ask(Request request, std::chrono::milliseconds patience) const;

    /// Calls `answer` on the main thread for each request, until this object goes. What a killed run has left at
    /// the socket's place is removed, so call it only while holding the instance lock. On failure there is a
    /// log line.
    void listen(std::function<QString(Request request)> answer);

private:
    void serve(QLocalSocket &client);

    const QString m_path; ///< Empty if there is no folder to put it in.
    std::function<QString(Request request)> m_answer;
    QLocalServer m_server;
};

} // namespace wrenfold
