// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "shell/status_bar_state.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

StatusBarState withTimer(PomodoroPhase phase, bool isRunning, qint64 remainingSeconds)
{
    StatusBarState state;
    state.statusBarNowTitle = QStringLiteral("書く");
    state.timer = {phase, isRunning, remainingSeconds, 25, 5};
    state.shouldShowMenubarTimer = state.timer.shouldShowMenubarTimer(true);
    return state;
}

} // namespace

class StatusBarStateTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theTitleAndTheColorFollowTheTimer_data()
    {
        QTest::addColumn<PomodoroPhase>("phase");
        QTest::addColumn<bool>("isRunning");
        QTest::addColumn<qint64>("remainingSeconds");
        QTest::addColumn<QString>("title");
        QTest::addColumn<StatusTint>("tint");
        const auto row = [](const char *name, PomodoroPhase phase, bool isRunning, qint64 seconds,
                            const QString &title, StatusTint tint) {
            QTest::newRow(name) << phase << isRunning << seconds << title << tint;
        };
        using enum PomodoroPhase;
        using enum StatusTint;
        row("a work phase that never started has no timer and no prefix", work, false, 1500,
            QStringLiteral(" 書く"), Label);
        row("work runs", work, true, 1499, QStringLiteral(" 24:59"), Green);
        row("a paused work phase that has run shows the pause sign", work, false, 1499,
            QStringLiteral(" ⏸24:59"), Label);
        row("just before the last five minutes", work, true, 301, QStringLiteral(" 05:01"), Green);
        row("in the last five minutes orange without prefix", work, true, 300, QStringLiteral(" 05:00"),
            Orange);
        row("paused in the last five minutes still without prefix", work, false, 200,
            QStringLiteral(" 03:20"), Orange);
        row("in the last minute a flash and pink", work, true, 60, QStringLiteral(" ⚡01:00"), Pink);
        row("paused in the last minute the flash alone", work, false, 59, QStringLiteral(" ⚡00:59"), Pink);
        row("a break runs", shortBreak, true, 299, QStringLiteral(" ☕️04:59"), Orange);
        row("a break's last minute", shortBreak, true, 30, QStringLiteral(" ☕️00:30"), Orange);
        row("a break that has not begun", shortBreak, false, 300, QStringLiteral(" ☕️05:00"), Orange);
        row("a paused break", shortBreak, false, 100, QStringLiteral(" ☕️01:40"), Orange);
    }

    void theTitleAndTheColorFollowTheTimer()
    {
        QFETCH(PomodoroPhase, phase);
        QFETCH(bool, isRunning);
        QFETCH(qint64, remainingSeconds);
        const StatusBarState state = withTimer(phase, isRunning, remainingSeconds);
        QTEST(state.title(), "title");
        QTEST(state.menubarTint(), "tint");
    }

    void aBreakWhoseTimerIsHiddenIsOrangeAndShowsTheTask()
    {
        StatusBarState state = withTimer(PomodoroPhase::shortBreak, false, 300);
        state.shouldShowMenubarTimer = state.timer.shouldShowMenubarTimer(false);
        QCOMPARE(state.title(), QStringLiteral(" 書く"));
        QCOMPARE(state.menubarTint(), StatusTint::Orange);
    }

    void inGhostModeWithoutTheTimerTheTitleIsTheGhost()
    {
        StatusBarState state;
        state.statusBarNowTitle = QStringLiteral("書く");
        state.isGhostMode = true;
        QCOMPARE(state.title(), QStringLiteral(" 👻"));
        QVERIFY(state.tooltipText().contains(QStringLiteral("ゴーストモード中 — クリックで復帰")));
    }

    void theTimerGoesBeforeTheGhost()
    {
        StatusBarState state = withTimer(PomodoroPhase::work, true, 1499);
        state.isGhostMode = true;
        QCOMPARE(state.title(), QStringLiteral(" 24:59"));
    }

    void withoutATaskAndTheTimerThereIsNoTitle() { QCOMPARE(StatusBarState().title(), QString()); }

    void theToolTipSaysEverythingInOrder()
    {
        StatusBarState state = withTimer(PomodoroPhase::work, true, 1499);
        state.activeTitle = QStringLiteral("A & B_c <b>x</b>");
        state.isGhostMode = true;
        state.completedTodayCount = 3;
        QCOMPARE(state.tooltipText(), QStringLiteral("Wren Fold\nNOW: A & B_c <b>x</b>\n作業: 24:59\n"
                                                     "ゴーストモード中 — クリックで復帰\n今日の完了: 3"));
        state = withTimer(PomodoroPhase::shortBreak, true, 299);
        QCOMPARE(state.tooltipText(), QStringLiteral("Wren Fold\n休憩: 04:59\n今日の完了: 0"));
        state.timer.isRunning = false;
        QCOMPARE(state.tooltipText(), QStringLiteral("Wren Fold\n今日の完了: 0"));
    }

    void itIsTakenFromTheStore()
    {
        TaskItem now = madeTask(QStringLiteral("a title\nin two lines, longer than the item shows"));
        StoreOnFakes fakes({now, madeSubtask(QStringLiteral("under it"), now)}, now.id);
        fakes.store.isGhostMode.set(true);
        fakes.store.isHardPinned.set(false);
        fakes.store.isTodoListHidden.set(true);
        StatusBarState state = StatusBarState::of(fakes.store);
        QCOMPARE(state.activeTitle, QStringLiteral("a title in two lines, longer than the item shows"));
        QCOMPARE(state.statusBarNowTitle, QStringLiteral("a title in two l…"));
        QCOMPARE(state.openTaskCount, 2);
        QCOMPARE(state.completedTodayCount, 0);
        QVERIFY(state.isGhostMode);
        QVERIFY(!state.isHardPinned);
        QVERIFY(state.isTodoListHidden);
        QVERIFY(!state.shouldShowMenubarTimer);
        fakes.store.toggleDone(fakes.store.tasks.value().last());
        fakes.store.startPomodoro();
        state = StatusBarState::of(fakes.store);
        QCOMPARE(state.openTaskCount, 1);
        QCOMPARE(state.completedTodayCount, 1);
        QVERIFY(state.shouldShowMenubarTimer);
        QVERIFY(state.timer.isRunning);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::StatusBarStateTest)
#include "status_bar_state_test.moc"
