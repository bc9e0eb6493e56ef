// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

#include <chrono>
#include <functional>
#include <memory>

namespace wrenfold {

/// Handle of a call that a clock will make; destroying it takes the call back.
class ScheduledCall
{
public:
    virtual ~ScheduledCall() = default;
};

/// What time it is, and calls at a later time. Handed in wherever time matters, so that tests move it by hand.
class Clock
{
public:
    virtual ~Clock() = default;

    /// The present moment in the user's time zone.
    [[nodiscard]] virtual QDateTime now() const = 0;

    /// Calls `call` once on the main thread, `delay` from now, unless the handle has gone by then. The handle may
    /// be destroyed inside the call.
    [[nodiscard]] virtual std::unique_ptr<ScheduledCall> after(std::chrono::milliseconds delay,
                                                               std::function<void()> call) = 0;

    /// Calls `call` once on the main thread when now() reaches `moment`: in the time that passes or while the computer
    /// sleeps; and when somebody sets the clock. Otherwise as after().
    [[nodiscard]] virtual std::unique_ptr<ScheduledCall> at(const QDateTime &moment,
                                                            std::function<void()> call) = 0;

    /// Calls `call` on the main thread after each `interval` until the handle has gone, to the millisecond and
    /// without drift. A call that could not be made in its time (the computer sleeps, the main thread is held up) is
    /// left out, never made up for. The handle may be destroyed inside the call.
    [[nodiscard]] virtual std::unique_ptr<ScheduledCall> every(std::chrono::milliseconds interval,
                                                               std::function<void()> call) = 0;
};

} // namespace wrenfold
