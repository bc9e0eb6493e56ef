// SPDX-License-Identifier: MIT
#include "platform/linux/session_bus_probe.h"

#include <QList>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace wrenfold {
namespace {

/// Asks which ways of authentication there are, as every client may before it chooses one. The zero byte is
/// part of the protocol.
constexpr char question[] = "\0AUTH\r\n";

/// Written before there is a second thread.
QByteArray leftOutAddress;

bool connectTo(int descriptor, const QByteArray &name)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (static_cast<size_t>(name.size()) >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, name.constData(), static_cast<size_t>(name.size()));
    // An abstract name ends where the length says, a path with a zero byte.
    const size_t end = name.startsWith('\0') ? 0 : 1;
    const auto length = offsetof(sockaddr_un, sun_path) + static_cast<size_t>(name.size()) + end;
    return ::connect(descriptor, reinterpret_cast<const sockaddr *>(&address),
                     static_cast<socklen_t>(length)) == 0;
}

} // namespace

std::optional<QByteArray> busSocketName(const QByteArray &address, const QByteArray &runtimeFolder)
{
    if (address.isEmpty())
        return runtimeFolder + "/bus";
    const QByteArray first = address.split(';').first();
    if (!first.startsWith("unix:"))
        return std::nullopt;
    const QList<QByteArray> options = first.mid(5).split(',');
    for (const QByteArray &option : options) {
        const QByteArray value = QByteArray::fromPercentEncoding(option.mid(option.indexOf('=') + 1));
        if (option.startsWith("path="))
            return value;
        if (option.startsWith("abstract="))
            return '\0' + value;
        if (option == "runtime=yes")
            return runtimeFolder + "/bus";
    }
    return std::nullopt;
}

void leaveOutHungSessionBus(std::chrono::milliseconds patience)
{
    if (!sessionBusHangs(patience))
        return;
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    leftOutAddress = address.isEmpty() ? "unix:path=" + qgetenv("XDG_RUNTIME_DIR") + "/bus" : address;
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
}

std::optional<QString> leftOutSessionBus()
{
    return leftOutAddress.isEmpty() ? std::nullopt : std::optional(QString::fromUtf8(leftOutAddress));
}

bool sessionBusHangs(std::chrono::milliseconds patience)
{
    const QByteArray address =
        leftOutAddress.isEmpty() ? qgetenv("DBUS_SESSION_BUS_ADDRESS") : leftOutAddress;
    const auto name = busSocketName(address, qgetenv("XDG_RUNTIME_DIR"));
    if (!name)
        return false;
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0)
        return false;
    bool hangs = false;
    if (connectTo(descriptor, *name)) {
        pollfd answer = {descriptor, POLLIN, 0};
        hangs = ::send(descriptor, question, sizeof question - 1, MSG_NOSIGNAL) > 0 &&
                ::poll(&answer, 1, static_cast<int>(patience.count())) == 0;
    } else {
        hangs = errno == EAGAIN; // Its queue is full of others who wait.
    }
    ::close(descriptor);
    return hangs;
}

} // namespace wrenfold
