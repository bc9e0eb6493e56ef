// SPDX-License-Identifier: MIT
#include "platform/linux/linux_single_instance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
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
    constexpr std::chrono::milliseconds oneAsk = 1s;
    constexpr auto pause = 100ms;

    const QString instance = instanceName(m_folder);
    const InstanceSocket socket(instance);
    InstanceBus bus(instance);
    const QDeadlineTimer deadline(m_patience);
    const auto patience = [&] {
        return std::min(oneAsk, std::chrono::milliseconds(deadline.remainingTime()));
    };
    while (!deadline.hasExpired()) {
        // The bus first, because it takes the activation token along.
        if (const std::optional<QString> answer = bus.ask(request, patience()))
            return answer;
        if (const std::optional<QString> answer = socket.ask(request, patience()))
            return answer;
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
    m_socket->listen(answer);
    m_bus.emplace(instance);
    m_bus->listen(std::move(answer));
}

} // namespace wrenfold
