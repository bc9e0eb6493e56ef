// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clock.h"

namespace wrenfold {

/// Calls when a day begins in the user's time zone, as long as this object lives; also when the clock was set, which
/// may have changed the day.
class MidnightCall
{
public:
    /// The clock must outlive this object.
    MidnightCall(Clock &clock, std::function<void()> call);

private:
    void reckon();

    Clock &m_clock;
    const std::function<void()> m_call;
    std::unique_ptr<ScheduledCall> m_next;
};

} // namespace wrenfold
