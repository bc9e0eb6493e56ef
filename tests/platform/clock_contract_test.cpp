// SPDX-License-Identifier: MIT
#include "platform/system_clock.h"
#include "support/fake_clock.h"
#include "support/test_case.h"

using namespace std::chrono_literals;

namespace wrenfold {

/// One suite over the fake and the real clock, and what the fake promises beyond.
class ClockContractTest : public TestCase
{
    Q_OBJECT

private:
    /// A clock, and how time is made to pass on it.
    struct Subject
    {
        std::unique_ptr<Clock> clock;
        std::function<void(std::chrono::milliseconds)> pass;
    };

    static Subject makeSubject()
    {
        QFETCH_GLOBAL(bool, isReal);
        if (isReal) {
            auto real = std::make_unique<SystemClock>();
            const SystemClock *clock = real.get();
            return {std::move(real), [clock](auto time) {
                        const QDateTime end = clock->now().addMSecs(time.count());
                        QVERIFY(QTest::qWaitFor([&] { return clock->now() >= end; }));
                    }};
        }
        auto fake = std::make_unique<FakeClock>();
        FakeClock *clock = fake.get();
        return {std::move(fake), [clock](auto time) { clock->advance(time); }};
    }

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("isReal");
        QTest::newRow("fake") << false;
        QTest::newRow("real") << true;
    }

    void nowIsInTheLocalTimeZone()
    {
        const Subject subject = makeSubject();
        QVERIFY(subject.clock->now().isValid());
        QCOMPARE(subject.clock->now().timeSpec(), Qt::LocalTime);
    }

    void timeThatPassesMovesNow()
    {
        const Subject subject = makeSubject();
        const QDateTime start = subject.clock->now();
        subject.pass(30ms);
        QVERIFY(start.msecsTo(subject.clock->now()) >= 30);
    }

    void aCallIsMadeOnceAndNotBeforeItsTime()
    {
        const Subject subject = makeSubject();
        const QDateTime start = subject.clock->now();
        int calls = 0;
        qint64 elapsed = 0;
        const auto handle = subject.clock->after(50ms, [&] {
            ++calls;
            elapsed = start.msecsTo(subject.clock->now());
        });
        QCOMPARE(calls, 0);
        subject.pass(50ms);
        QTRY_COMPARE(calls, 1);
        // The real timer counts in whole milliseconds of another clock than the one that tells the time.
        QVERIFY2(elapsed >= 49, qPrintable(QString::number(elapsed)));
        subject.pass(150ms);
        QCOMPARE(calls, 1);
    }

    void aCallIsNotMadeInsideAfter()
    {
        const Subject subject = makeSubject();
        int calls = 0;
        const auto handle = subject.clock->after(0ms, [&] { ++calls; });
        QCOMPARE(calls, 0);
        subject.pass(1ms);
        QTRY_COMPARE(calls, 1);
    }

    void callsAreMadeInTheOrderOfTheirTimes()
    {
        const Subject subject = makeSubject();
        QList<int> order;
        const auto third = subject.clock->after(60ms, [&] { order << 3; });
        const auto first = subject.clock->after(10ms, [&] { order << 1; });
        const auto second = subject.clock->after(30ms, [&] { order << 2; });
        subject.pass(60ms);
        QTRY_COMPARE(order, (QList<int>{1, 2, 3}));
    }

    void destroyingTheHandleTakesTheCallBack()
    {
        const Subject subject = makeSubject();
        int calls = 0;
        int later = 0;
        auto handle = subject.clock->after(20ms, [&] { ++calls; });
        const auto last = subject.clock->after(40ms, [&] { ++later; });
        handle.reset();
        subject.pass(40ms);
        QTRY_COMPARE(later, 1);
        QCOMPARE(calls, 0);
    }

    void aCallMayDestroyItsOwnHandle()
    {
        const Subject subject = makeSubject();
        // What the call holds must live until it returns, though the handle does not.
        auto token = std::make_shared<int>(0);
        const std::weak_ptr<int> observer = token;
        std::unique_ptr<ScheduledCall> handle;
        bool isDone = false;
        handle = subject.clock->after(5ms, [&handle, &isDone, token = std::move(token)] {
            handle.reset();
            ++*token;
            isDone = *token == 1;
        });
        subject.pass(5ms);
        QTRY_VERIFY(isDone);
        QVERIFY(observer.expired());
    }

    void aCallMayTakeAnotherOneBack()
    {
        const Subject subject = makeSubject();
        int calls = 0;
        int later = 0;
        std::unique_ptr<ScheduledCall> other = subject.clock->after(60ms, [&] { ++calls; });
        const auto handle = subject.clock->after(10ms, [&] { other.reset(); });
        const auto last = subject.clock->after(90ms, [&] { ++later; });
        subject.pass(90ms);
        QTRY_COMPARE(later, 1);
        QCOMPARE(calls, 0);
    }

    void aCallMayScheduleTheNextOne()
    {
        const Subject subject = makeSubject();
        int calls = 0;
        std::unique_ptr<ScheduledCall> handle;
        std::function<void()> again = [&] {
            if (++calls < 3)
                handle = subject.clock->after(10ms, again);
        };
        handle = subject.clock->after(10ms, again);
        subject.pass(30ms);
        QTRY_COMPARE(calls, 3);
    }

    void aCallAtAMomentIsMadeOnceAndNotBefore()
    {
        const Subject subject = makeSubject();
        const QDateTime moment = subject.clock->now().addMSecs(50);
        int calls = 0;
        QDateTime made;
        const auto handle = subject.clock->at(moment, [&] {
            ++calls;
            made = subject.clock->now();
        });
        QCOMPARE(calls, 0);
        subject.pass(50ms);
        QTRY_COMPARE(calls, 1);
        QVERIFY(made >= moment);
        subject.pass(100ms);
        QCOMPARE(calls, 1);
    }

    void aMomentThatHasPassedIsNow()
    {
        const Subject subject = makeSubject();
        int calls = 0;
        const auto handle = subject.clock->at(subject.clock->now().addDays(-1), [&] { ++calls; });
        QCOMPARE(calls, 0);
        subject.pass(1ms);
        QTRY_COMPARE(calls, 1);
    }

    void aCallAtAMomentIsTakenBackOrTakesItselfBack()
    {
        const Subject subject = makeSubject();
        int calls = 0;
        auto takenBack = subject.clock->at(subject.clock->now().addMSecs(10), [&] { ++calls; });
        std::unique_ptr<ScheduledCall> itself;
        auto token = std::make_shared<int>(0);
        const std::weak_ptr<int> observer = token;
        bool isDone = false;
        itself = subject.clock->at(subject.clock->now().addMSecs(20),
                                   [&itself, &isDone, token = std::move(token)] {
                                       itself.reset();
                                       isDone = ++*token == 1;
                                   });
        takenBack.reset();
        subject.pass(20ms);
        QTRY_VERIFY(isDone);
        QVERIFY(observer.expired());
        QCOMPARE(calls, 0);
    }

    void aRepeatedCallIsMadeAfterEachIntervalAndNotBefore()
    {
        const Subject subject = makeSubject();
        const QDateTime start = subject.clock->now();
        QList<qint64> moments;
        const auto handle =
            subject.clock->every(40ms, [&] { moments << start.msecsTo(subject.clock->now()); });
        QVERIFY(moments.isEmpty());
        for (int i = 1; i <= 4; ++i) {
            subject.pass(40ms);
            QTRY_VERIFY(moments.size() >= i);
        }
        for (qsizetype i = 0; i < 4; ++i)
            QVERIFY2(moments[i] >= 40 * (i + 1) - 1, qPrintable(QString::number(moments[i])));
    }

    void aRepeatedCallEndsWithItsHandle()
    {
        const Subject subject = makeSubject();
        int calls = 0;
        int later = 0;
        auto handle = subject.clock->every(10ms, [&] { ++calls; });
        subject.pass(10ms);
        QTRY_VERIFY(calls >= 1);
        handle.reset();
        const int made = calls;
        const auto last = subject.clock->after(50ms, [&] { ++later; });
        subject.pass(50ms);
        QTRY_COMPARE(later, 1);
        QCOMPARE(calls, made);
    }

    void aRepeatedCallMayDestroyItsOwnHandle()
    {
        const Subject subject = makeSubject();
        auto token = std::make_shared<int>(0);
        const std::weak_ptr<int> observer = token;
        std::unique_ptr<ScheduledCall> handle;
        int calls = 0;
        handle = subject.clock->every(5ms, [&handle, &calls, token = std::move(token)] {
            handle.reset();
            calls += ++*token;
        });
        subject.pass(20ms);
        QTRY_COMPARE(calls, 1);
        QVERIFY(observer.expired());
    }

    void aRepeatedCallMayReplaceItsOwnHandleByAnother()
    {
        const Subject subject = makeSubject();
        std::unique_ptr<ScheduledCall> handle;
        int first = 0;
        int second = 0;
        handle = subject.clock->every(5ms, [&] {
            ++first;
            handle = subject.clock->every(5ms, [&] { ++second; });
        });
        subject.pass(30ms);
        QTRY_VERIFY(second >= 2);
        QCOMPARE(first, 1);
    }

    void aHandleMayBeDestroyedAfterItsCallAndAfterItsClock()
    {
        Subject subject = makeSubject();
        int calls = 0;
        auto made = subject.clock->after(0ms, [&] { ++calls; });
        auto pending = subject.clock->after(1h, [&] { ++calls; });
        auto repeating = subject.clock->every(1h, [&] { ++calls; });
        subject.pass(1ms);
        QTRY_COMPARE(calls, 1);
        made.reset();
        subject.clock.reset();
        pending.reset();
        repeating.reset();
        QCOMPARE(calls, 1);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::ClockContractTest)
#include "clock_contract_test.moc"
