// SPDX-License-Identifier: MIT
#include "support/fake_clock.h"

#include <algorithm>

namespace wrenfold {

namespace {

class Handle final : public ScheduledCall
{
public:
    explicit Handle(std::shared_ptr<void> call)
        : m_call(std::move(call))
    {
    }

private:
    std::shared_ptr<void> m_call;
};

} // namespace

FakeClock::FakeClock()
    : m_now(QDate(2026, 3, 2), QTime(9, 0))
{
}

std::unique_ptr<ScheduledCall> FakeClock::after(std::chrono::milliseconds delay, std::function<void()> call)
{
    return schedule({m_passed + delay, {}, std::move(call)});
}

std::unique_ptr<ScheduledCall> FakeClock::at(const QDateTime &moment, std::function<void()> call)
{
    const std::chrono::milliseconds wait(std::max<qint64>(0, m_now.msecsTo(moment)));
    return schedule({m_passed + wait, {}, std::move(call), true});
}

std::unique_ptr<ScheduledCall> FakeClock::every(std::chrono::milliseconds interval,
                                                std::function<void()> call)
{
    return schedule({m_passed + interval, interval, std::move(call)});
}

std::unique_ptr<ScheduledCall> FakeClock::schedule(Call call)
{
    auto scheduled = std::make_shared<Call>(std::move(call));
    m_calls.push_back(scheduled);
    return std::make_unique<Handle>(std::move(scheduled));
}

void FakeClock::setNow(const QDateTime &now)
{
    m_now = now;
    const auto calls = m_calls;
    for (const auto &candidate : calls) {
        const auto call = candidate.lock();
        if (call && call->isForMoment &&
            std::erase_if(m_calls, [&call](const auto &each) { return each.lock() == call; }) > 0)
            call->function();
    }
}

void FakeClock::advance(std::chrono::milliseconds time)
{
    const auto until = m_passed + time;
    while (const auto next = takeNext(until)) {
        passTo(next->due);
        if (next->interval.count() > 0) {
            next->due += next->interval;
            m_calls.push_back(next);
        }
        next->function();
    }
    passTo(until);
}

int FakeClock::pendingCalls() const
{
    return int(
        std::count_if(m_calls.begin(), m_calls.end(), [](const auto &call) { return !call.expired(); }));
}

std::shared_ptr<FakeClock::Call> FakeClock::takeNext(std::chrono::milliseconds until)
{
    std::erase_if(m_calls, [](const auto &call) { return call.expired(); });
    const auto next = std::min_element(m_calls.begin(), m_calls.end(), [](const auto &a, const auto &b) {
        return a.lock()->due < b.lock()->due;
    });
    if (next == m_calls.end() || next->lock()->due > until)
        return nullptr;
    auto call = next->lock();
    m_calls.erase(next);
    return call;
}

void FakeClock::passTo(std::chrono::milliseconds moment)
{
    m_now = m_now.addMSecs((moment - m_passed).count());
    m_passed = moment;
}

} // namespace wrenfold
