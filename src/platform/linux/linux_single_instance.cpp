// SPDX-License-Identifier: MIT
#include "platform/linux/linux_single_instance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <thread>
#include <utility>

namespace wrenfold {
namespace {

using namespace std::chrono_literals;

/// The same for every way of writing the path to a folder, and short, for it goes into a socket's name.
QString instanceName(const QString &folder)
{
    const QByteArray path = QFile::encodeName(QFileInfo(folder).canonicalFilePath());
    return QString::fromLatin1(QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex().first(16));
}

} // namespace

LinuxSingleInstance::LinuxSingleInstance(QString folder, std::chrono::milliseconds patience)
    : m_folder(std::move(folder))
    , m_patience(patience)
    , m_lock(m_folder)
{
}

SingleInstance::Claim LinuxSingleInstance::claim()
{
    return m_lock.take();
}

std::optional<QString> LinuxSingleInstance::ask(Request request)
{
    using Outcome = InstanceReply::Outcome;
    constexpr auto pause = 100ms;

    const QString instance = instanceName(m_folder);
    const InstanceSocket socket(instance);
    InstanceBus bus(instance);
    const QDeadlineTimer deadline(m_patience);
    const auto remaining = [&] { return std::chrono::milliseconds(deadline.remainingTime()); };
    InstanceReply reply;
    while (!deadline.hasExpired()) {
        // The bus first, because it takes the activation token along. A program that is busy finds every message that
        // was sent meanwhile, so one that may have arrived is the last.
        if (reply.outcome == Outcome::Undelivered)
            reply = bus.ask(request, remaining());
        if (reply.outcome == Outcome::Undelivered)
            reply = socket.ask(request, remaining());
        if (reply.outcome == Outcome::Answered)
            return reply.text;
        if (m_lock.take() == Claim::First)
            break;                          // Nobody is left to ask.
        std::this_thread::sleep_for(pause); // UNAVOIDABLE: what has not begun to listen cannot be waited for
    }
    return std::nullopt;
}

void LinuxSingleInstance::listen(std::function<QString(Request request)> answer)
{
    if (!m_lock.isHeld())
        return;
    const QString instance = instanceName(m_folder);
    m_socket.emplace(instance);
    m_socket->listen([this, answer](Request request) {
        m_bus->listenAgain(); // Who came by the socket may not have found us on the bus.
        return answer(request);
    });
    m_bus.emplace(instance);
    m_bus->listen(std::move(answer));
}

} // namespace wrenfold
