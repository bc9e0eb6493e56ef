// SPDX-License-Identifier: MIT
#include "platform/linux/instance_socket.h"

#include "app/debug_log.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QLocalSocket>

#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace wrenfold {
namespace {

constexpr QByteArrayView acknowledgement = "ok\n";
constexpr qint64 longestQuestion = 64;
constexpr qint64 longestAnswer = 1 << 16;

bool isPrivateFolder(const QString &folder)
{
    struct stat info = {};
    return !folder.isEmpty() && ::lstat(QFile::encodeName(folder).constData(), &info) == 0 &&
           S_ISDIR(info.st_mode) && info.st_uid == ::geteuid() && (info.st_mode & 077) == 0;
}

/// The session's runtime folder, else one of our own; empty if neither is this user's alone.
QString runtimeFolder()
{
    const QString session = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (isPrivateFolder(session))
        return session;
    const QString own = QDir::tempPath() + QStringLiteral("/wrenfold-%1").arg(::geteuid());
    ::mkdir(QFile::encodeName(own).constData(), 0700); // Somebody else's may be there: the check below tells.
    return isPrivateFolder(own) ? own : QString();
}

QString socketPath(const QString &instance)
{
    const QString folder = runtimeFolder();
    return folder.isEmpty() ? QString() : folder + QStringLiteral("/wrenfold-%1.socket").arg(instance);
}

} // namespace

InstanceSocket::InstanceSocket(const QString &instance)
    : m_path(socketPath(instance))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
}

InstanceReply InstanceSocket::ask(Request request, std::chrono::milliseconds patience) const
{
    using Outcome = InstanceReply::Outcome;
    if (m_path.isEmpty())
        return {};
    const QDeadlineTimer deadline(patience);
    const auto remaining = [&deadline] { return static_cast<int>(deadline.remainingTime()); };
    QLocalSocket socket;
    socket.setReadBufferSize(longestAnswer);
    socket.connectToServer(m_path);
    if (!socket.waitForConnected(remaining()))
        return {};
    socket.write(wordFor(request).toUtf8() + '\n');
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(remaining()))
            return {Outcome::Unanswered, {}};
    }
    if (socket.readLine() != acknowledgement)
        return {Outcome::Unanswered, {}};
    // The whole answer is there when the other side hangs up.
    if (socket.state() != QLocalSocket::UnconnectedState && !socket.waitForDisconnected(remaining()))
        return {Outcome::Unanswered, {}};
    return {Outcome::Answered, QString::fromUtf8(socket.readAll())};
}

void InstanceSocket::listen(std::function<QString(Request request)> answer)
{
    m_answer = std::move(answer);
    QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] {
        while (QLocalSocket *client = m_server.nextPendingConnection()) {
            client->setReadBufferSize(longestQuestion);
            QObject::connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
            QObject::connect(client, &QLocalSocket::readyRead, &m_server, [this, client] { serve(*client); });
            serve(*client);
        }
    });
    if (m_path.isEmpty()) {
        qCInfo(DebugLog::app).noquote()
            << QStringLiteral("There is no private folder for the instance socket");
        return;
    }
    QLocalServer::removeServer(m_path);
    if (!m_server.listen(m_path)) {
        qCInfo(DebugLog::app).noquote() << QStringLiteral("Cannot listen on the instance socket %1: %2")
                                               .arg(m_path, m_server.errorString());
    }
}

void InstanceSocket::serve(QLocalSocket &client)
{
    if (!client.canReadLine() && client.bytesAvailable() < longestQuestion)
        return;
    const QString word = QString::fromUtf8(client.readLine()).trimmed();
    if (const std::optional<Request> request = requestNamed(word))
        client.write(acknowledgement.toByteArray() + m_answer(*request).toUtf8());
    client.disconnectFromServer();
}

} // namespace wrenfold
