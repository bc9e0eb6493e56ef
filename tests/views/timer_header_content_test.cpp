// SPDX-License-Identifier: MIT
#include "support/test_case.h"
#include "views/timer_header_content.h"

namespace wrenfold {

namespace {

constexpr auto work = PomodoroPhase::work;
constexpr auto shortBreak = PomodoroPhase::shortBreak;

} // namespace

class TimerHeaderContentTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theTextsFollowTheTimer_data()
    {
        QTest::addColumn<TimerState>("timer");
        QTest::addColumn<QString>("subtitle");
        QTest::addColumn<QString>("playHelp");
        const auto addRow = [](const char *name, const TimerState &timer, const QString &subtitle,
                               const QString &playHelp) {
            QTest::newRow(name) << timer << subtitle << playHelp;
        };
        const auto pause = QStringLiteral("タイマー一時停止");
        const auto begin = QStringLiteral("ポモドーロを開始（25分）");
        const auto resume = QStringLiteral("休憩を再開（5分）");
        addRow("work, idle", {work, false, 1500}, QStringLiteral("25分 — 再生で開始"), begin);
        addRow("work, running", {work, true, 1104}, QStringLiteral("ポモドーロ実行中（25分）"), pause);
        addRow("work, running, just begun", {work, true, 1500}, QStringLiteral("ポモドーロ実行中（25分）"),
               pause);
        addRow("work, paused", {work, false, 1104}, QStringLiteral("25分 — 再生で開始"), begin);
        addRow("work, last five minutes", {work, true, 300}, QStringLiteral("あと5分 — NOWだけ見よう"),
               pause);
        addRow("work, paused in the last five", {work, false, 61}, QStringLiteral("25分 — 再生で開始"),
               begin);
        addRow("work, last minute", {work, true, 60}, QStringLiteral("あと1分 — 区切れるところまで"), pause);
        addRow("work, paused in the last minute", {work, false, 1}, QStringLiteral("25分 — 再生で開始"),
               begin);
        addRow("work, at zero", {work, true, 0}, QStringLiteral("あと1分 — 区切れるところまで"), pause);
        addRow("work of a minute, idle", {work, false, 60, 1}, QStringLiteral("1分 — 再生で開始"),
               QStringLiteral("ポモドーロを開始（1分）"));
        addRow("work of 90 minutes, running", {work, true, 5400, 90},
               QStringLiteral("ポモドーロ実行中（90分）"), pause);
        addRow("break, idle", {shortBreak, false, 300}, QStringLiteral("休憩 一時停止"), resume);
        addRow("break, running", {shortBreak, true, 299}, QStringLiteral("休憩中（5分）"), pause);
        addRow("break, running, last minute", {shortBreak, true, 41}, QStringLiteral("休憩中（5分）"), pause);
        addRow("break, paused", {shortBreak, false, 41}, QStringLiteral("休憩 一時停止"), resume);
        addRow("break of 30 minutes", {shortBreak, true, 1800, 25, 30}, QStringLiteral("休憩中（30分）"),
               pause);
    }

    void theTextsFollowTheTimer()
    {
        QFETCH(TimerState, timer);
        const TimerHeaderContent content = timerHeaderContent(timer);
        QTEST(content.subtitle, "subtitle");
        QTEST(content.playHelp, "playHelp");
        QCOMPARE(content.time, timer.remainingText());
        QCOMPARE(content.playSymbol,
                 timer.isRunning ? QStringLiteral("pause.fill") : QStringLiteral("play.fill"));
        QCOMPARE(content.isSkipVisible, timer.phase == shortBreak);
    }

    void theColoursFollowTheUrgency()
    {
        const auto colours = [](const TimerState &timer) {
            const TimerHeaderContent content = timerHeaderContent(timer);
            return std::pair(content.ringColor, content.timeColor);
        };
        QVERIFY(colours({work, false, 1500}) == std::pair(&Theme::accent, &Theme::accent));
        QVERIFY(colours({work, true, 1104}) == std::pair(&Theme::green, &Theme::ink));
        QVERIFY(colours({work, true, 252}) == std::pair(&Theme::orange, &Theme::orange));
        QVERIFY(colours({work, false, 252}) == std::pair(&Theme::orange, &Theme::orange));
        QVERIFY(colours({work, true, 41}) == std::pair(&Theme::pink, &Theme::pink));
        QVERIFY(colours({shortBreak, true, 41}) == std::pair(&Theme::green, &Theme::ink));
        QVERIFY(colours({shortBreak, false, 300}) == std::pair(&Theme::accent, &Theme::accent));
    }

    void theRingShowsWhatRemainsOfThePhase()
    {
        QCOMPARE(timerHeaderContent({work, false, 1500}).remainingFraction, 1.0);
        QCOMPARE(timerHeaderContent({work, true, 750}).remainingFraction, 0.5);
        QCOMPARE(timerHeaderContent({work, true, 0}).remainingFraction, 0.0);
        QCOMPARE(timerHeaderContent({shortBreak, true, 150}).remainingFraction, 0.5);
        // The length was made shorter while the phase ran.
        QCOMPARE(timerHeaderContent({work, true, 1400, 20}).remainingFraction, 1.0);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TimerHeaderContentTest)
#include "timer_header_content_test.moc"
