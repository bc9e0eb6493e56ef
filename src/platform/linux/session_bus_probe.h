// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <optional>

namespace wrenfold {

/// Whether the session bus takes connections but says nothing within `patience`. A program that connects to
/// such a bus through Qt waits without end, at its exit too, so ask this first. False for a bus that answers,
/// for none at all, and for one reached otherwise than by a socket of this machine. Needs no application
/// object; blocks for less than a millisecond when the bus is well, and no longer than `patience`. May be
/// called on any thread.
[[nodiscard]] bool sessionBusHangs(std::chrono::milliseconds patience);

/// Keeps Qt, and libraries under it, from a session bus that hangs now: for them there is none in this process. To be
/// called before they look for it.
void leaveOutHungSessionBus(std::chrono::milliseconds patience);

/// The address of the bus that was left out, which may answer later; none if none was.
[[nodiscard]] std::optional<QString> leftOutSessionBus();

/// The name of the socket that a bus address leads to, with a zero byte in front if it is an abstract one. Of
/// a list of addresses the first counts. Nothing if it is no local socket.
[[nodiscard]] std::optional<QByteArray> busSocketName(const QByteArray &address,
                                                      const QByteArray &runtimeFolder);

} // namespace wrenfold
