// SPDX-License-Identifier: MIT
#include "platform/system_clock.h"

#include <QTimer>

#include <limits>
#include <utility>

namespace wrenfold {

namespace {

class TimerCall final : public ScheduledCall
{
public:
    TimerCall(std::chrono::milliseconds delay, std::function<void()> call)
        : m_call(std::move(call))
    {
        m_timer.setSingleShot(true);
        // A coarse timer may be early, by half a second when the delay is long.
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            // The call may destroy this handle.
            const auto callNow = std::move(m_call);
            callNow();
        });
        m_timer.start(delay);
    }

private:
    QTimer m_timer;
    std::function<void()> m_call;
};

} // namespace

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

std::unique_ptr<ScheduledCall> SystemClock::after(std::chrono::milliseconds delay, std::function<void()> call)
{
    Q_ASSERT(delay.count() >= 0 && delay.count() <= std::numeric_limits<int>::max());
    return std::make_unique<TimerCall>(delay, std::move(call));
}

} // namespace wrenfold
