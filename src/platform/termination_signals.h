// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <optional>

namespace wrenfold {

/// While an object of this class lives, SIGTERM, SIGINT and SIGHUP do not kill the program but cause a call,
/// so that it can end cleanly. A SIGHUP that was ignored at start (nohup) stays ignored. Only one may live at
/// a time, in the main thread.
class TerminationSignals
{
public:
    /// `terminate` is called on the main thread, through the event loop, once or more after each signal.
    explicit TerminationSignals(std::function<void()> terminate);
    ~TerminationSignals();
    Q_DISABLE_COPY_MOVE(TerminationSignals)

private:
    std::function<void()> m_terminate;
    std::optional<QSocketNotifier> m_notifier;
};

} // namespace wrenfold
