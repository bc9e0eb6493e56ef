// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "model/store_on_fakes.h"
#include "support/log_capture.h"
#include "support/quiet_services.h"
#include "support/test_case.h"

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

constexpr auto work = PomodoroPhase::work;
constexpr auto shortBreak = PomodoroPhase::shortBreak;

} // namespace

/// What the timer does as time passes.
class FocusStoreTimerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aFreshStoreShows2500AndStands()
    {
        FakePreferences preferences;
        FakeClock clock;
        QuietServices quiet;
        const FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
        QCOMPARE(store.remainingText(), u("25:00"));
        QCOMPARE(store.timerUrgency(), TimerUrgency::normal);
        QVERIFY(!store.isTimerRunning.value());
        QCOMPARE(store.timerPhase.value(), work);
        QCOMPARE(clock.pendingCalls(), 0);
    }

    void eachSecondTakesOneAway()
    {
        StoreOnFakes s(TaskList{});
        QStringList shown;
        const Subscription seconds =
            s.store.remainingSeconds.onChange([&](qint64) { shown << s.store.remainingText(); });
        s.store.startPomodoro();
        s.clock.advance(999ms);
        QCOMPARE(shown, QStringList());
        s.clock.advance(1ms);
        QCOMPARE(shown, QStringList{u("24:59")});
        s.clock.advance(2s);
        QCOMPARE(shown, (QStringList{u("24:59"), u("24:58"), u("24:57")}));
    }

    void secondsThatPassUnnoticedAreNotCounted()
    {
        StoreOnFakes s(TaskList{});
        s.store.startPomodoro();
        // As after a night's sleep: the time of day is another one, and no call has come due by it.
        s.clock.setNow(s.clock.now().addSecs(8 * 3600));
        s.clock.advance(1s);
        QCOMPARE(s.store.remainingSeconds.value(), 1499);
    }

    void zeroIsShownForOneTickAndThenTheBreakStarts()
    {
        StoreOnFakes s(TaskList{});
        s.store.setBreakDurationMinutes(7);
        s.store.startPomodoro();
        s.clock.advance(1500s);
        QCOMPARE(s.store.remainingText(), u("00:00"));
        QCOMPARE(s.store.timerPhase.value(), work);
        QVERIFY(s.store.isTimerRunning.value());
        s.clock.advance(1s);
        QCOMPARE(s.store.timerPhase.value(), shortBreak);
        QCOMPARE(s.store.remainingSeconds.value(), 7 * 60);
        QVERIFY(s.store.isTimerRunning.value());
        s.clock.advance(1s);
        QCOMPARE(s.store.remainingSeconds.value(), 7 * 60 - 1);
    }

    void aPhaseThatEndsIsAnnouncedWhole()
    {
        StoreOnFakes s(TaskList{});
        s.store.startPomodoro();
        s.clock.advance(1500s);
        QList<TimerState> seen;
        const auto note = [&](const auto &) { seen << s.store.timerState(); };
        const Subscription running = s.store.isTimerRunning.onChange(note);
        const Subscription phase = s.store.timerPhase.onChange(note);
        const Subscription seconds = s.store.remainingSeconds.onChange(note);
        s.clock.advance(1s);
        const TimerState breakRunning{.phase = shortBreak, .isRunning = true, .remainingSeconds = 300};
        // It ran before and runs after: nobody is told of the moment between.
        QCOMPARE(seen, (QList<TimerState>{breakRunning, breakRunning}));
    }

    void atTheEndOfABreakThePhaseIsWorkAtFullLengthStopped()
    {
        StoreOnFakes s(TaskList{});
        s.store.startBreakSession();
        s.store.startPomodoro();
        s.clock.advance(301s);
        QCOMPARE(s.store.timerState(), TimerState{});
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList{u("wrenfold.pomodoro.break-done")});
        QCOMPARE(s.sounds.take(), QList<Sound>{Sound::Glass});
        QCOMPARE(s.store.sortStatus.value(), u("休憩完了！次のポモドーロをどうぞ"));
        s.clock.advance(1h);
        QCOMPARE(s.store.timerState(), TimerState{});
        QCOMPARE(s.clock.pendingCalls(), 0);
    }

    void theEndOfABreakNamesTheNowTaskOfThatMoment()
    {
        StoreOnFakes s({madeTask(u("一"))});
        s.store.startBreakSession();
        s.store.startPomodoro();
        s.clock.advance(300s);
        s.store.addTask(u("二"), true);
        s.clock.advance(1s);
        QCOMPARE(s.notificationCenter.take().last().body, u("次の一手: 二"));
    }

    void withOpenTasksButNoNowTaskTheEndOfABreakAsksToChoose()
    {
        StoreOnFakes s({madeTask(u("一"))});
        s.store.startBreakSession();
        s.store.startPomodoro();
        s.clock.advance(301s);
        QCOMPARE(s.notificationCenter.take().last().body, u("次の一手: タスクを選んでください"));
    }

    void theLengthsAreKeptWithinTheirBounds()
    {
        StoreOnFakes s(TaskList{});
        s.store.setWorkDurationMinutes(0);
        QCOMPARE(s.store.workDurationMinutes.value(), 1);
        s.store.setWorkDurationMinutes(120);
        QCOMPARE(s.store.workDurationMinutes.value(), 90);
        s.store.setBreakDurationMinutes(45);
        QCOMPARE(s.store.breakDurationMinutes.value(), 30);
        s.store.setBreakDurationMinutes(std::numeric_limits<qint64>::min());
        QCOMPARE(s.store.breakDurationMinutes.value(), 1);
        QCOMPARE(s.saved().workDurationMinutes, 90);
        QCOMPARE(s.saved().breakDurationMinutes, 1);
    }

    void idleAt2500TheLength20Shows2000AndThen40StillDoes()
    {
        StoreOnFakes s(TaskList{});
        s.store.setWorkDurationMinutes(20);
        QCOMPARE(s.store.remainingText(), u("20:00"));
        s.store.setWorkDurationMinutes(40);
        QCOMPARE(s.store.remainingText(), u("20:00"));
        s.store.resetPomodoro();
        QCOMPARE(s.store.remainingText(), u("40:00"));
    }

    void startingAtZeroFillsThePhaseFirst()
    {
        StoreOnFakes s(TaskList{});
        s.store.startPomodoro();
        s.clock.advance(1500s);
        s.store.pauseTimer();
        QCOMPARE(s.store.remainingSeconds.value(), 0);
        (void)s.notificationCenter.take();
        s.store.startPomodoro();
        QCOMPARE(s.store.remainingSeconds.value(), 1500);
        s.clock.advance(1500s);
        QCOMPARE(s.notificationCenter.takeIdentifiers(),
                 (QStringList{u("wrenfold.sprint.300"), u("wrenfold.sprint.60")}));
    }

    void startingTwiceRunsOneTimer()
    {
        StoreOnFakes s(TaskList{});
        s.store.startPomodoro();
        s.store.startPomodoro();
        s.clock.advance(10s);
        QCOMPARE(s.store.remainingSeconds.value(), 1490);
        s.store.pauseTimer();
        s.clock.advance(10s);
        QCOMPARE(s.store.remainingSeconds.value(), 1490);
    }

    void theStatusItemShowsTheTimeOnlyOnceAWorkPhaseHasBegun()
    {
        StoreOnFakes s(TaskList{});
        QVERIFY(s.store.alwaysShowMenubarTimer.value());
        QVERIFY(!s.store.shouldShowMenubarTimer());
        s.store.startPomodoro();
        s.clock.advance(1s);
        s.store.pauseTimer();
        QVERIFY(s.store.shouldShowMenubarTimer());
        s.store.alwaysShowMenubarTimer.set(false);
        QVERIFY(!s.store.shouldShowMenubarTimer());
    }

    void afterLoadingTheWholeSavedWorkLengthRemains_data()
    {
        QTest::addColumn<qint64>("saved");
        QTest::addColumn<qint64>("remaining");
        QTest::newRow("shorter than the first one") << qint64(10) << qint64(600);
        QTest::newRow("longer than the first one") << qint64(50) << qint64(3000);
        QTest::newRow("too long") << qint64(500) << qint64(5400);
    }

    void afterLoadingTheWholeSavedWorkLengthRemains()
    {
        QFETCH(qint64, saved);
        SavedState state;
        state.workDurationMinutes = saved;
        const StoreOnFakes s(encodeSavedState(state));
        QTEST(s.store.remainingSeconds.value(), "remaining");
        QVERIFY(!s.store.isTimerRunning.value());
        QCOMPARE(s.store.timerPhase.value(), work);
        QCOMPARE(s.preferences.writeCount(), 0);
    }

    void aRunningTimerDoesNotSurviveARestart()
    {
        StoreOnFakes s(TaskList{});
        s.store.startBreakSession();
        s.store.startPomodoro();
        s.clock.advance(10s);
        const StoreOnFakes next(s.document());
        QCOMPARE(next.store.timerState(), TimerState{});
    }

    void aPhaseThatEndsTriesAgainToSaveWhatTheDiskRefused()
    {
        StoreOnFakes s(TaskList{});
        LogCapture log;
        s.preferences.failNextWrites(1);
        s.store.addTask(u("一"), false);
        QVERIFY(s.store.hasUnsavedChanges());
        s.store.startBreakSession();
        QVERIFY(!s.store.hasUnsavedChanges());
        QCOMPARE(s.saved().tasks.size(), 1);
    }

    void undoKeepsItsHandsOffTheTimer()
    {
        StoreOnFakes s(TaskList{});
        s.store.addTask(u("一"), false);
        s.store.startPomodoro();
        s.clock.advance(5s);
        s.store.undo();
        QCOMPARE(s.store.remainingSeconds.value(), 1495);
        QVERIFY(s.store.isTimerRunning.value());
        QVERIFY(!s.store.canUndo.value());
    }

    void theDebugLineComesEveryThirtySecondsAndOnlyWhenVerbose()
    {
        StoreOnFakes s(TaskList{});
        LogCapture log;
        s.store.startPomodoro();
        s.clock.advance(60s);
        QCOMPARE(log.take(), QStringList{u("info timer: start phase=work remaining=1500s")});
        DebugLog::setArguments({u("wrenfold"), u("--verbose")});
        s.clock.advance(60s);
        DebugLog::setArguments({});
        QCOMPARE(log.take(), (QStringList{u("debug timer: tick phase=work remaining=1410s"),
                                          u("debug timer: tick phase=work remaining=1380s")}));
    }

    void aStoreThatGoesTakesItsTimerAlong()
    {
        FakePreferences preferences;
        FakeClock clock;
        QuietServices quiet;
        {
            FocusStore store(quiet.with(preferences, clock), {.monitorInbox = false});
            store.startPomodoro();
            QCOMPARE(clock.pendingCalls(), 1);
        }
        QCOMPARE(clock.pendingCalls(), 0);
        clock.advance(1h);
    }

    void aSubscriberMayStartTheTimerAgainWhenItIsPaused()
    {
        StoreOnFakes s(TaskList{});
        s.store.startPomodoro();
        const Subscription running = s.store.isTimerRunning.onChange([&](bool isRunning) {
            if (!isRunning)
                s.store.startPomodoro();
        });
        s.store.pauseTimer();
        QVERIFY(s.store.isTimerRunning.value());
        s.clock.advance(10s);
        QCOMPARE(s.store.remainingSeconds.value(), 1490);
    }

    void aSubscriberMayStopTheTimerInsideItsTick()
    {
        StoreOnFakes s(TaskList{});
        const Subscription seconds = s.store.remainingSeconds.onChange([&](qint64) { s.store.pauseTimer(); });
        s.store.startPomodoro();
        s.clock.advance(10s);
        QCOMPARE(s.store.remainingSeconds.value(), 1499);
        QVERIFY(!s.store.isTimerRunning.value());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreTimerTest)
#include "focus_store_timer_test.moc"
