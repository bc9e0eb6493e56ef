// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "support/log_capture.h"
#include "support/test_case.h"

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

/// The nudges towards the end of a work phase.
class FocusStoreNudgesTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nudgesComeAtFiveMinutesAndAtOneEachOnce()
    {
        StoreOnFakes s({madeTask(u("資料を読む"))});
        s.store.setActive(s.task(u("資料を読む")));
        s.store.startPomodoro();
        s.clock.advance(1199s);
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList());
        QCOMPARE(s.sounds.take(), QList<Sound>());
        s.clock.advance(1s);
        QCOMPARE(s.store.remainingSeconds.value(), 300);
        QCOMPARE(s.store.sortStatus.value(), u("あと5分 — 「資料を読む」— 仕上げるなら今。"));
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList{u("wrenfold.sprint.300")});
        QCOMPARE(s.sounds.take(), QList<Sound>{Sound::Tink});
        s.clock.advance(239s);
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList());
        s.clock.advance(1s);
        QCOMPARE(s.store.remainingSeconds.value(), 60);
        QCOMPARE(s.store.sortStatus.value(),
                 u("あと1分 — クローズできるところまで。できなくてもOK、区切ろう。"));
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList{u("wrenfold.sprint.60")});
        QCOMPARE(s.sounds.take(), QList<Sound>{Sound::Tink});
        s.clock.advance(60s);
        QCOMPARE(s.store.remainingSeconds.value(), 0);
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList());
        QCOMPARE(s.sounds.take(), QList<Sound>());
    }

    void aNudgeWithoutANowTaskHasTextsOfItsOwn()
    {
        StoreOnFakes s(TaskList{});
        s.store.startPomodoro();
        s.clock.advance(1200s);
        QCOMPARE(s.store.sortStatus.value(), u("あと5分 — 残り5分。NOW だけ見よう。"));
    }

    void aNudgeComesOnceEvenAcrossAPauseAndResume()
    {
        StoreOnFakes s(TaskList{});
        s.store.startPomodoro();
        s.clock.advance(1200s);
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList{u("wrenfold.sprint.300")});
        s.store.pauseTimer();
        s.clock.advance(1h);
        QCOMPARE(s.store.remainingSeconds.value(), 300);
        s.store.startPomodoro();
        s.clock.advance(240s);
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList{u("wrenfold.sprint.60")});
    }

    void theNextWorkPhaseHasItsOwnNudges()
    {
        StoreOnFakes s(TaskList{});
        s.store.startPomodoro();
        s.clock.advance(1501s + 301s);
        QCOMPARE(s.store.timerPhase.value(), PomodoroPhase::work);
        (void)s.notificationCenter.take();
        s.store.startPomodoro();
        s.clock.advance(1500s);
        QCOMPARE(s.notificationCenter.takeIdentifiers(),
                 (QStringList{u("wrenfold.sprint.300"), u("wrenfold.sprint.60")}));
    }

    void aRestartedWorkPhaseHasItsNudgesAgain()
    {
        StoreOnFakes s(TaskList{});
        for (int round = 0; round < 2; ++round) {
            s.store.startPomodoro();
            s.clock.advance(1200s);
            QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList{u("wrenfold.sprint.300")});
            s.store.resetPomodoro();
        }
    }

    void withAFiveMinuteWorkLengthOnlyTheOneMinuteNudgeFires()
    {
        StoreOnFakes s(TaskList{});
        s.store.setWorkDurationMinutes(5);
        s.store.startPomodoro();
        s.clock.advance(300s);
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList{u("wrenfold.sprint.60")});
    }

    void withAOneMinuteWorkLengthNoNudgeFires()
    {
        StoreOnFakes s(TaskList{});
        s.store.setWorkDurationMinutes(1);
        s.store.startPomodoro();
        s.clock.advance(60s);
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList());
        QCOMPARE(s.sounds.take(), QList<Sound>());
        QCOMPARE(s.store.sortStatus.value(), QString());
    }

    void withNudgesSwitchedOffThePhaseCompletesNormally()
    {
        StoreOnFakes s(TaskList{});
        s.store.sprintNudgesEnabled.set(false);
        s.store.startPomodoro();
        s.clock.advance(1500s);
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList());
        QCOMPARE(s.sounds.take(), QList<Sound>());
        QCOMPARE(s.store.sortStatus.value(), QString());
        s.clock.advance(1s);
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList{u("wrenfold.pomodoro.work-done")});
        QCOMPARE(s.sounds.take(), QList<Sound>{Sound::Glass});
        QCOMPARE(s.store.timerPhase.value(), PomodoroPhase::shortBreak);
        QVERIFY(s.store.isTimerRunning.value());
    }

    void aBreakHasNoNudges()
    {
        StoreOnFakes s(TaskList{});
        s.store.setBreakDurationMinutes(10);
        s.store.startBreakSession();
        s.store.startPomodoro();
        s.clock.advance(600s);
        QCOMPARE(s.notificationCenter.takeIdentifiers(), QStringList());
    }

    void aNudgeIsLogged()
    {
        StoreOnFakes s(TaskList{});
        s.store.startPomodoro();
        LogCapture log;
        s.clock.advance(1440s);
        QCOMPARE(log.take(),
                 (QStringList{u("info timer: sprint nudge at 300s"), u("info timer: sprint nudge at 60s")}));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreNudgesTest)
#include "focus_store_nudges_test.moc"
