// SPDX-License-Identifier: MIT
#include "platform/midnight_call.h"

#include <QTimeZone>

#include <utility>

namespace wrenfold {

MidnightCall::MidnightCall(Clock &clock, std::function<void()> call)
    : m_clock(clock)
    , m_call(std::move(call))
{
    reckon();
}

void MidnightCall::reckon()
{
    const QDateTime now = m_clock.now();
    const QDateTime midnight = now.date().addDays(1).startOfDay(now.timeZone());
    m_next = m_clock.at(midnight, [this] {
        reckon();
        m_call();
    });
}

} // namespace wrenfold
