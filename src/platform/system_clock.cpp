// SPDX-License-Identifier: MIT
#include "platform/system_clock.h"

#include "platform/wall_clock_call.h"

#include <QTimer>

#include <limits>
#include <utility>

namespace wrenfold {

namespace {

/// A timer of the event loop that calls once, or again and again.
class TimerCall final : public ScheduledCall
{
public:
    TimerCall(std::chrono::milliseconds interval, bool isRepeating, std::function<void()> call)
        : m_call(std::make_shared<const std::function<void()>>(std::move(call)))
    {
        Q_ASSERT(interval.count() >= 0 && interval.count() <= std::numeric_limits<int>::max());
        m_timer.setSingleShot(!isRepeating);
        // A coarse timer may be off by 5 %, early too.
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            const auto callNow = m_call; // The call may destroy this handle.
            if (m_timer.isSingleShot())
                m_call.reset();
            (*callNow)();
        });
        m_timer.start(interval);
    }

private:
    QTimer m_timer;
    std::shared_ptr<const std::function<void()>> m_call;
};

} // namespace

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

std::unique_ptr<ScheduledCall> SystemClock::after(std::chrono::milliseconds delay, std::function<void()> call)
{
    return std::make_unique<TimerCall>(delay, false, std::move(call));
}

std::unique_ptr<ScheduledCall> SystemClock::at(const QDateTime &moment, std::function<void()> call)
{
    return std::make_unique<WallClockCall>(moment, std::move(call));
}

std::unique_ptr<ScheduledCall> SystemClock::every(std::chrono::milliseconds interval,
                                                  std::function<void()> call)
{
    return std::make_unique<TimerCall>(interval, true, std::move(call));
}

} // namespace wrenfold
