// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop_entries.h"

#include <QByteArray>
#include <QList>
#include <QString>

// What KWin is given to run: the scripts in resources/kwin with the values they need in front.

namespace wrenfold {

/// A JavaScript literal of exactly this text, in ASCII, and safe wherever a script may stand: everything but letters,
/// digits, spaces, dots and dashes is escaped.
[[nodiscard]] QByteArray javaScriptString(const QString &text);

/// Tells which window is active, now and whenever it changes, to who has this name on the bus.
[[nodiscard]] QByteArray reportActiveWindowScript(const QString &busName);

/// Minimises the windows that call themselves one of `windows` (their class, instance and desktop file count), then
/// tells so.
[[nodiscard]] QByteArray minimizeWindowsScript(const QString &busName, const QList<WindowIdentity> &windows);

} // namespace wrenfold
