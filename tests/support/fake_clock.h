// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clock.h"

#include <vector>

namespace wrenfold {

/// A clock that stands still until a test moves it.
class FakeClock final : public Clock
{
public:
    /// Starts on 2 March 2026 at 9:00 local time, a Monday.
    FakeClock();

    [[nodiscard]] QDateTime now() const override { return m_now; }
    [[nodiscard]] std::unique_ptr<ScheduledCall> after(std::chrono::milliseconds delay,
                                                       std::function<void()> call) override;
    [[nodiscard]] std::unique_ptr<ScheduledCall> at(const QDateTime &moment,
                                                    std::function<void()> call) override;
    [[nodiscard]] std::unique_ptr<ScheduledCall> every(std::chrono::milliseconds interval,
                                                       std::function<void()> call) override;

    /// Sets the clock without any time passing, as a user does: of the calls, those that wait for a moment are made.
    void setNow(const QDateTime &now);

    /// Lets time pass and makes every call that comes due in it, those scheduled meanwhile included: in the
    /// order of their times, and of their scheduling where these are equal. During a call now() is the call's
    /// time.
    void advance(std::chrono::milliseconds time);

    /// How many calls are still to be made; a repeated one counts once.
    [[nodiscard]] int pendingCalls() const;

private:
    struct Call
    {
        std::chrono::milliseconds due;
        std::chrono::milliseconds interval; ///< Zero if it is made once.
        std::function<void()> function;
        bool isForMoment = false;
    };

    std::unique_ptr<ScheduledCall> schedule(Call call);
    std::shared_ptr<Call> takeNext(std::chrono::milliseconds until);
    void passTo(std::chrono::milliseconds moment);

    QDateTime m_now;
    std::chrono::milliseconds m_passed{0}; ///< Time passed since the start, on which the calls are set.
    /// In the order of their scheduling. The handles own the calls.
    std::vector<std::weak_ptr<Call>> m_calls;
};

} // namespace wrenfold
