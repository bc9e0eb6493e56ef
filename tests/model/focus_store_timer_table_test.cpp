// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
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

/// What is to be seen after an operation. The store's lengths are 25 and 5 minutes if it does not set them.
struct Outcome
{
    const char *state; ///< "work running 1440"
    QStringList log = {};
    const char *flash = "";
    QList<Notification> notifications = {};
    QList<Sound> sounds = {};
    int writes = 0;
};

QString described(const TimerState &state)
{
    return QStringLiteral("%1 %2 %3")
        .arg(state.phase == PomodoroPhase::work ? u("work") : u("break"),
             state.isRunning ? u("running") : u("stopped"))
        .arg(state.remainingSeconds);
}

/// Brings a fresh store into a state of the timer; a phase that runs or is paused has lost its first minute.
void bringInto(StoreOnFakes &s, const QString &state)
{
    if (state.startsWith(u("break")))
        s.store.startBreakSession();
    if (state.endsWith(u("idle")))
        return;
    s.store.startPomodoro();
    s.clock.advance(60s);
    if (state.endsWith(u("paused")))
        s.store.pauseTimer();
}

using Operation = std::function<void(StoreOnFakes &)>;

Operation operation(const QString &name)
{
    static const QHash<QString, Operation> operations = {
        {u("start"), [](StoreOnFakes &s) { s.store.startPomodoro(); }},
        {u("pause"), [](StoreOnFakes &s) { s.store.pauseTimer(); }},
        {u("reset"), [](StoreOnFakes &s) { s.store.resetPomodoro(); }},
        {u("set break"), [](StoreOnFakes &s) { s.store.startBreakSession(); }},
        {u("skip break"), [](StoreOnFakes &s) { s.store.skipBreakToWork(); }},
        {u("a second"), [](StoreOnFakes &s) { s.clock.advance(1s); }},
        {u("work 20"), [](StoreOnFakes &s) { s.store.setWorkDurationMinutes(20); }},
        {u("work 40"), [](StoreOnFakes &s) { s.store.setWorkDurationMinutes(40); }},
        {u("break 3"), [](StoreOnFakes &s) { s.store.setBreakDurationMinutes(3); }},
        {u("break 10"), [](StoreOnFakes &s) { s.store.setBreakDurationMinutes(10); }},
    };
    return operations.value(name);
}

SavedState afterwards(SavedState saved, const QString &operationName)
{
    const qint64 minutes = operationName.section(u(" "), 1).toLongLong();
    if (operationName.startsWith(u("work ")))
        saved.workDurationMinutes = minutes;
    if (operationName.startsWith(u("break ")))
        saved.breakDurationMinutes = minutes;
    return saved;
}

QString paused(int seconds)
{
    return QStringLiteral("debug timer: paused remaining=%1s").arg(seconds);
}

QString started(const char *phase, int seconds)
{
    return QStringLiteral("info timer: start phase=%1 remaining=%2s").arg(u(phase)).arg(seconds);
}

} // namespace

/// Every state of the timer under every operation.
class FocusStoreTimerTableTest : public TestCase
{
    Q_OBJECT

private:
    static void addRow(const char *state, const char *operation, const Outcome &outcome)
    {
        QTest::addRow("%s, %s", state, operation) << u(state) << u(operation) << outcome;
    }

    /// What these do is the same wherever they are called.
    static void addSetUps(const char *state, int remaining)
    {
        addRow(state, "reset",
               {.state = "work stopped 1500",
                .log = {paused(remaining), u("info timer: reset to work 1500s")},
                .writes = 1});
        addRow(state, "set break",
               {.state = "break stopped 300",
                .log = {paused(remaining), u("info timer: manual break 300s")},
                .flash = "休憩タイマーをセットしました",
                .writes = 1});
        addRow(state, "skip break",
               {.state = "work stopped 1500",
                .log = {paused(remaining), u("info timer: skipped break → work")},
                .flash = "作業セッションに戻しました",
                .writes = 1});
    }

    static void addLengths(const char *state, const std::array<const char *, 4> &states)
    {
        addRow(state, "work 20", {.state = states[0], .writes = 1});
        addRow(state, "work 40", {.state = states[1], .writes = 1});
        addRow(state, "break 3", {.state = states[2], .writes = 1});
        addRow(state, "break 10", {.state = states[3], .writes = 1});
    }

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        DebugLog::setArguments({u("wrenfold"), u("--verbose")});
    }

    void cleanup() { DebugLog::setArguments({}); }

    void anOperation_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QString>("operation");
        QTest::addColumn<Outcome>("outcome");

        addRow("work idle", "start", {.state = "work running 1500", .log = {started("work", 1500)}});
        addRow("work idle", "pause", {.state = "work stopped 1500", .log = {paused(1500)}});
        addRow("work idle", "a second", {.state = "work stopped 1500"});
        addSetUps("work idle", 1500);
        addLengths("work idle",
                   {"work stopped 1200", "work stopped 1500", "work stopped 1500", "work stopped 1500"});

        addRow("work running", "start", {.state = "work running 1440", .log = {started("work", 1440)}});
        addRow("work running", "pause", {.state = "work stopped 1440", .log = {paused(1440)}});
        addRow("work running", "a second", {.state = "work running 1439"});
        addSetUps("work running", 1440);
        addLengths("work running",
                   {"work running 1440", "work running 1440", "work running 1440", "work running 1440"});

        addRow("work paused", "start", {.state = "work running 1440", .log = {started("work", 1440)}});
        addRow("work paused", "pause", {.state = "work stopped 1440", .log = {paused(1440)}});
        addRow("work paused", "a second", {.state = "work stopped 1440"});
        addSetUps("work paused", 1440);
        addLengths("work paused",
                   {"work stopped 1200", "work stopped 1440", "work stopped 1440", "work stopped 1440"});

        addRow("break idle", "start", {.state = "break running 300", .log = {started("shortBreak", 300)}});
        addRow("break idle", "pause", {.state = "break stopped 300", .log = {paused(300)}});
        addRow("break idle", "a second", {.state = "break stopped 300"});
        addSetUps("break idle", 300);
        addLengths("break idle",
                   {"break stopped 300", "break stopped 300", "break stopped 180", "break stopped 300"});

        addRow("break running", "start", {.state = "break running 240", .log = {started("shortBreak", 240)}});
        addRow("break running", "pause", {.state = "break stopped 240", .log = {paused(240)}});
        addRow("break running", "a second", {.state = "break running 239"});
        addSetUps("break running", 240);
        addLengths("break running",
                   {"break running 240", "break running 240", "break running 240", "break running 240"});

        addRow("break paused", "start", {.state = "break running 240", .log = {started("shortBreak", 240)}});
        addRow("break paused", "pause", {.state = "break stopped 240", .log = {paused(240)}});
        addRow("break paused", "a second", {.state = "break stopped 240"});
        addSetUps("break paused", 240);
        addLengths("break paused",
                   {"break stopped 240", "break stopped 240", "break stopped 180", "break stopped 240"});
    }

    void anOperation()
    {
        QFETCH(QString, state);
        QFETCH(QString, operation);
        QFETCH(Outcome, outcome);
        StoreOnFakes s({madeTask(u("資料を読む"))});
        bringInto(s, state);
        s.store.setSortStatus({});
        expectOutcome(s, operation, outcome);
    }

    void theSecondAfterZero_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<Outcome>("outcome");
        QTest::newRow("work running")
            << u("work running")
            << Outcome{.state = "break running 300",
                       .log = {paused(0), u("info timer: work complete → auto-start break 300s"),
                               started("shortBreak", 300)},
                       .flash = "🍅 作業完了 → 5分休憩",
                       .notifications = {{u("wrenfold.pomodoro.work-done"), u("🍅 作業完了"),
                                          u("「資料を読む」— 5分休憩に入ります")}},
                       .sounds = {Sound::Glass},
                       .writes = 1};
        QTest::newRow("break running")
            << u("break running")
            << Outcome{.state = "work stopped 1500",
                       .log = {paused(0), u("info timer: break complete → ready for work")},
                       .flash = "休憩完了！次のポモドーロをどうぞ",
                       .notifications = {{u("wrenfold.pomodoro.break-done"), u("\u2615\uFE0F 休憩終了"),
                                          u("次の一手: 資料を読む")}},
                       .sounds = {Sound::Glass},
                       .writes = 1};
    }

    void theSecondAfterZero()
    {
        QFETCH(QString, state);
        QFETCH(Outcome, outcome);
        StoreOnFakes s({madeTask(u("資料を読む"))});
        s.store.setActive(s.task(u("資料を読む")));
        s.store.sprintNudgesEnabled.set(false);
        bringInto(s, state);
        s.clock.advance(std::chrono::seconds(s.store.remainingSeconds.value()));
        s.store.setSortStatus({});
        expectOutcome(s, u("a second"), outcome);
    }

private:
    static void expectOutcome(StoreOnFakes &s, const QString &operationName, const Outcome &outcome)
    {
        const SavedState saved = s.saved();
        const int writes = s.preferences.writeCount();
        LogCapture log;
        operation(operationName)(s);
        QCOMPARE(log.take(), outcome.log);
        QCOMPARE(described(s.store.timerState()), u(outcome.state));
        QCOMPARE(s.store.sortStatus.value(), u(outcome.flash));
        QCOMPARE(s.notificationCenter.take(), outcome.notifications);
        QCOMPARE(s.sounds.take(), outcome.sounds);
        QCOMPARE(s.preferences.writeCount() - writes, outcome.writes);
        QCOMPARE(encodeSavedState(s.saved()), encodeSavedState(afterwards(saved, operationName)));
        // One timer counts, exactly while it runs.
        const qint64 remaining = s.store.remainingSeconds.value();
        s.clock.advance(10s);
        QCOMPARE(remaining - s.store.remainingSeconds.value(), s.store.isTimerRunning.value() ? 10 : 0);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::FocusStoreTimerTableTest)
#include "focus_store_timer_table_test.moc"
