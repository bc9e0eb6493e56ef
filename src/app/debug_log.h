// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>
#include <QString>

#include <functional>

namespace wrenfold {

/// The program's one log. A caller composes its line as one text and writes it with qCInfo (always written),
/// qCDebug (only after isVerbose() said yes, so that no text is built in vain), qCWarning (an error that the
/// program recovers from) or qCCritical (a fault: an internal state that should not exist).
class DebugLog
{
public:
    static const QLoggingCategory &app();   ///< Start-up, the application delegate, notifications, settings.
    static const QLoggingCategory &timer(); ///< The Pomodoro timer.
    static const QLoggingCategory &guard(); ///< The focus guard.
    static const QLoggingCategory &store(); ///< Loading, saving and the task store.
    static const QLoggingCategory &ui();    ///< The panel and the status item.
    static const QLoggingCategory &login(); ///< The launch-at-login registration.

    /// Whether diagnostic lines are wanted: the argument --verbose, else WRENFOLD_DEBUG being "1", else the
    /// preference. Asked anew each time, so that a change counts from the next line on.
    static bool isVerbose();
    /// As lines of the log have it.
    static QString word(bool value) { return value ? QStringLiteral("true") : QStringLiteral("false"); }

    /// Says where the argument and the preference are found. Until then neither is seen.
    static void setArguments(const QStringList &arguments);
    static void setVerbosePreference(std::function<bool()> isSet);

    /// Sends every message of the process, Qt's own included, to standard error: one line each, with the
    /// syslog priority in front when standard error is connected to the journal.
    static void install();

    /// The line for one message, without a line break at its end. Control and bidi characters are written as
    /// escapes, so that no text from outside can forge a line. `priorities` puts the syslog priority in
    /// front.
    static QString line(QtMsgType type, const char *category, const QString &message, bool priorities);
};

} // namespace wrenfold
