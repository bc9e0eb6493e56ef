// SPDX-License-Identifier: MIT
#include "platform/wall_clock_call.h"

#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>

namespace wrenfold {

namespace {

itimerspec onceAt(const QDateTime &moment)
{
    const qint64 milliseconds = moment.toMSecsSinceEpoch();
    itimerspec times = {};
    times.it_value.tv_sec = milliseconds / 1000;
    times.it_value.tv_nsec = milliseconds % 1000 * 1000000;
    return times;
}

} // namespace

WallClockCall::WallClockCall(const QDateTime &moment, std::function<void()> call)
    : m_timer(::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC))
    , m_call(std::move(call))
{
    if (m_timer < 0)
        return;
    const itimerspec times = onceAt(moment);
    ::timerfd_settime(m_timer, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &times, nullptr);
    m_notifier.emplace(m_timer, QSocketNotifier::Read);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, &*m_notifier, [this] { arrived(); });
}

WallClockCall::~WallClockCall()
{
    m_notifier.reset();
    if (m_timer >= 0)
        ::close(m_timer);
}

void WallClockCall::arrived()
{
    m_notifier->setEnabled(false);
    const std::function<void()> call = std::exchange(m_call, {}); // It may destroy this object.
    call();
}

} // namespace wrenfold
