// SPDX-License-Identifier: MIT
#include "model/timer_state.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

constexpr auto work = PomodoroPhase::work;
constexpr auto shortBreak = PomodoroPhase::shortBreak;

} // namespace

class TimerStateTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aFreshTimerIsAWholeWorkPhaseThatStands()
    {
        const TimerState fresh;
        QCOMPARE(fresh.phase, work);
        QVERIFY(!fresh.isRunning);
        QCOMPARE(fresh.remainingText(), QStringLiteral("25:00"));
        QCOMPARE(fresh.phaseDurationSeconds(), 1500);
        QCOMPARE(fresh.urgency(), TimerUrgency::normal);
    }

    void thePhaseDurationIsThatOfThePresentPhase()
    {
        QCOMPARE((TimerState{.phase = work, .workDurationMinutes = 90}.phaseDurationSeconds()), 5400);
        QCOMPARE((TimerState{.phase = shortBreak, .breakDurationMinutes = 30}.phaseDurationSeconds()), 1800);
    }

    void remainingTextIsMinutesAndSeconds_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << qint64(0) << QStringLiteral("00:00");
        QTest::newRow("one second") << qint64(1) << QStringLiteral("00:01");
        QTest::newRow("under a minute") << qint64(59) << QStringLiteral("00:59");
        QTest::newRow("a minute") << qint64(60) << QStringLiteral("01:00");
        QTest::newRow("25 minutes") << qint64(1500) << QStringLiteral("25:00");
        QTest::newRow("3599") << qint64(3599) << QStringLiteral("59:59");
        QTest::newRow("5400 of a 90-minute phase") << qint64(5400) << QStringLiteral("90:00");
    }

    void remainingTextIsMinutesAndSeconds()
    {
        QFETCH(qint64, seconds);
        QTEST((TimerState{.remainingSeconds = seconds}.remainingText()), "text");
    }

    void urgencyGrowsTowardsTheEndOfAWorkPhase_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<TimerUrgency>("urgency");
        QTest::newRow("301") << qint64(301) << TimerUrgency::normal;
        QTest::newRow("300") << qint64(300) << TimerUrgency::lastFiveMinutes;
        QTest::newRow("61") << qint64(61) << TimerUrgency::lastFiveMinutes;
        QTest::newRow("60") << qint64(60) << TimerUrgency::lastMinute;
        QTest::newRow("0") << qint64(0) << TimerUrgency::lastMinute;
    }

    void urgencyGrowsTowardsTheEndOfAWorkPhase()
    {
        QFETCH(qint64, seconds);
        QFETCH(TimerUrgency, urgency);
        QCOMPARE((TimerState{.isRunning = true, .remainingSeconds = seconds}.urgency()), urgency);
        // A paused phase keeps it.
        QCOMPARE((TimerState{.isRunning = false, .remainingSeconds = seconds}.urgency()), urgency);
        // A break never has any.
        QCOMPARE((TimerState{.phase = shortBreak, .isRunning = true, .remainingSeconds = seconds}.urgency()),
                 TimerUrgency::normal);
    }

    void aShortWorkPhaseIsUrgentOnlyOnceItHasBegun()
    {
        TimerState state{.remainingSeconds = 60, .workDurationMinutes = 1};
        QCOMPARE(state.urgency(), TimerUrgency::normal);
        state.isRunning = true;
        QCOMPARE(state.urgency(), TimerUrgency::lastMinute);
        state = {.remainingSeconds = 300, .workDurationMinutes = 5};
        QCOMPARE(state.urgency(), TimerUrgency::normal);
        state.isRunning = true;
        QCOMPARE(state.urgency(), TimerUrgency::lastFiveMinutes);
    }

    void theStatusItemShowsTheTime_data()
    {
        QTest::addColumn<PomodoroPhase>("phase");
        QTest::addColumn<bool>("isRunning");
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<bool>("always");
        QTest::addColumn<bool>("onRequest");
        QTest::newRow("work, idle") << work << false << qint64(1500) << false << false;
        QTest::newRow("work, longer left than it lasts") << work << false << qint64(1600) << false << false;
        QTest::newRow("work, running") << work << true << qint64(1500) << true << true;
        QTest::newRow("work, paused") << work << false << qint64(1499) << true << false;
        QTest::newRow("break, idle") << shortBreak << false << qint64(300) << true << false;
        QTest::newRow("break, running") << shortBreak << true << qint64(299) << true << true;
        QTest::newRow("break, paused") << shortBreak << false << qint64(299) << true << false;
    }

    void theStatusItemShowsTheTime()
    {
        QFETCH(PomodoroPhase, phase);
        QFETCH(bool, isRunning);
        QFETCH(qint64, seconds);
        const TimerState state{.phase = phase, .isRunning = isRunning, .remainingSeconds = seconds};
        QTEST(state.shouldShowMenubarTimer(true), "always");
        QTEST(state.shouldShowMenubarTimer(false), "onRequest");
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TimerStateTest)
#include "timer_state_test.moc"
