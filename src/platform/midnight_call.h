// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clock.h"

namespace wrenfold {

/// Calls at each midnight of the user's time zone, as long as this object lives.
class MidnightCall
{
public:
    /// The clock must outlive this object.
    MidnightCall(Clock &clock, std::function<void()> call);

    /// Reckons anew when the next midnight is: no timer counts the time that the machine sleeps.
    void reckon();

private:
    Clock &m_clock;
    const std::function<void()> m_call;
    std::unique_ptr<ScheduledCall> m_next;
};

} // namespace wrenfold
