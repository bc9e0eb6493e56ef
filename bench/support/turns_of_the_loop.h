// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <ctime>

namespace wrenfold {

/// The longest that the main thread stayed away from its event loop, in milliseconds.
struct Stall
{
    double passed = 0;
    double worked = 0; ///< Of it, or of another stay, what the thread was running.
};

inline double threadMilliseconds()
{
    timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1000 + double(time.tv_nsec) / 1e6;
}

/// Measures turn by turn, from its making on. Its timer is due whenever the loop is.
class TurnsOfTheLoop
{
public:
    TurnsOfTheLoop()
    {
        m_passed.start();
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { noteTurn(); });
        m_timer.start(0);
    }

    /// Asks once a turn. False when it takes longer than a minute.
    template<typename Condition>
    [[nodiscard]] bool runUntil(Condition condition)
    {
        QEventLoop loop;
        QElapsedTimer patience;
        patience.start();
        const auto check = QObject::connect(&m_timer, &QTimer::timeout, &loop, [&] {
            if (condition() || patience.hasExpired(60'000))
                loop.quit();
        });
        loop.exec();
        QObject::disconnect(check);
        return condition();
    }

    /// A few turns bring what has been set off onto the screen.
    void runTurns(int count)
    {
        static_cast<void>(runUntil([&] { return --count <= 0; }));
    }

    [[nodiscard]] Stall longest() const { return m_longest; }

private:
    void noteTurn()
    {
        const double worked = threadMilliseconds();
        m_longest.passed = std::max(m_longest.passed, double(m_passed.nsecsElapsed()) / 1e6);
        m_longest.worked = std::max(m_longest.worked, worked - m_worked);
        m_passed.restart();
        m_worked = worked;
    }

    QTimer m_timer;
    QElapsedTimer m_passed;
    double m_worked = threadMilliseconds();
    Stall m_longest;
};

} // namespace wrenfold
