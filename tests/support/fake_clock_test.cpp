// SPDX-License-Identifier: MIT
#include "support/fake_clock.h"
#include "support/test_case.h"

using namespace std::chrono_literals;

namespace wrenfold {

/// What the fake promises beyond the contract that it shares with the real clock.
class FakeClockTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nowStandsAtTheTimeOfTheCallBeingMade()
    {
        FakeClock clock;
        const QDateTime start = clock.now();
        QList<qint64> times;
        const auto note = [&] { times << start.msecsTo(clock.now()); };
        const auto second = clock.after(2h, note);
        const auto first = clock.after(1s, note);
        clock.advance(3h);
        QCOMPARE(times, (QList<qint64>{1000, 7200 * 1000}));
        QCOMPARE(start.msecsTo(clock.now()), 3 * 3600 * 1000);
    }

    void callsDueAtTheSameTimeAreMadeInTheOrderOfTheirScheduling()
    {
        FakeClock clock;
        QList<int> order;
        std::unique_ptr<ScheduledCall> fromInside;
        const auto first = clock.after(1s, [&] {
            order << 1;
            fromInside = clock.after(0ms, [&] { order << 3; });
        });
        const auto second = clock.after(1s, [&] { order << 2; });
        clock.advance(1s);
        QCOMPARE(order, (QList<int>{1, 2, 3}));
    }

    void aCallIsMadeAtItsTimeAndNotAMillisecondEarlier()
    {
        FakeClock clock;
        int calls = 0;
        const auto handle = clock.after(1s, [&] { ++calls; });
        clock.advance(999ms);
        QCOMPARE(calls, 0);
        clock.advance(1ms);
        QCOMPARE(calls, 1);
    }

    void aRepeatedCallIsMadeOnceForEachInterval()
    {
        FakeClock clock;
        const QDateTime start = clock.now();
        QList<qint64> times;
        auto handle = clock.every(1s, [&] { times << start.secsTo(clock.now()); });
        clock.advance(3500ms);
        QCOMPARE(times, (QList<qint64>{1, 2, 3}));
        QCOMPARE(clock.pendingCalls(), 1);
        handle.reset();
        clock.advance(1h);
        QCOMPARE(times.size(), 3);
        QCOMPARE(clock.pendingCalls(), 0);
    }

    void settingTheClockMakesNoCallAfterATimeAndMovesNone()
    {
        FakeClock clock;
        int calls = 0;
        const auto handle = clock.after(1min, [&] { ++calls; });
        const QDateTime tomorrow = clock.now().addDays(1);
        clock.setNow(tomorrow);
        QCOMPARE(clock.now(), tomorrow);
        QCOMPARE(calls, 0);
        clock.advance(1min);
        QCOMPARE(calls, 1);
        QCOMPARE(clock.now(), tomorrow.addSecs(60));
    }

    void settingTheClockMakesTheCallsAtAMoment()
    {
        FakeClock clock;
        int calls = 0;
        std::unique_ptr<ScheduledCall> second;
        const auto first = clock.at(clock.now().addSecs(60), [&] {
            ++calls;
            second.reset();
        });
        second = clock.at(clock.now().addSecs(120), [&] { ++calls; });
        clock.setNow(clock.now().addSecs(-3600));
        QCOMPARE(calls, 1);
        QCOMPARE(clock.pendingCalls(), 0);
    }

    void pendingCallsAreThoseNeitherMadeNorTakenBack()
    {
        FakeClock clock;
        QCOMPARE(clock.pendingCalls(), 0);
        auto first = clock.after(1s, [] {});
        auto second = clock.after(2s, [] {});
        QCOMPARE(clock.pendingCalls(), 2);
        clock.advance(1s);
        QCOMPARE(clock.pendingCalls(), 1);
        second.reset();
        QCOMPARE(clock.pendingCalls(), 0);
        first.reset();
        QCOMPARE(clock.pendingCalls(), 0);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FakeClockTest)
#include "fake_clock_test.moc"
