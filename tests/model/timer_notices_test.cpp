// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "model/timer_notices.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

const auto hazard = QStringLiteral("A & B_c <b>x</b>");

} // namespace

class TimerNoticesTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theMilestonesNameTheNowTask()
    {
        const auto [five, one] = sprintMilestones(madeTask(u("資料を読む")));
        QCOMPARE(five, (SprintMilestone{300, u("あと5分"), u("「資料を読む」— 仕上げるなら今。")}));
        QCOMPARE(one, (SprintMilestone{60, u("あと1分"),
                                       u("クローズできるところまで。できなくてもOK、区切ろう。")}));
    }

    void theMilestonesWithoutANowTask()
    {
        const auto [five, one] = sprintMilestones(std::nullopt);
        QCOMPARE(five, (SprintMilestone{300, u("あと5分"), u("残り5分。NOW だけ見よう。")}));
        QCOMPARE(one, (SprintMilestone{60, u("あと1分"),
                                       u("クローズできるところまで。できなくてもOK、区切ろう。")}));
    }

    void sprintNudgesHaveDifferentIdentifiers()
    {
        const auto [five, one] = sprintMilestones(std::nullopt);
        QCOMPARE(sprintNotification(five),
                 (Notification{u("wrenfold.sprint.300"), u("🍅 あと5分"), u("残り5分。NOW だけ見よう。")}));
        QCOMPARE(sprintNotification(one),
                 (Notification{u("wrenfold.sprint.60"), u("🍅 あと1分"),
                               u("クローズできるところまで。できなくてもOK、区切ろう。")}));
    }

    void theEndOfAWorkPhaseNamesTheNowTaskAndTheBreak()
    {
        QCOMPARE(workDoneNotification(madeTask(u("資料を読む")), 5),
                 (Notification{u("wrenfold.pomodoro.work-done"), u("🍅 作業完了"),
                               u("「資料を読む」— 5分休憩に入ります")}));
        QCOMPARE(workDoneNotification(std::nullopt, 30).body, u("「フォーカス」— 30分休憩に入ります"));
    }

    void theEndOfABreakNamesWhatComesNext()
    {
        QCOMPARE(breakDoneNotification(madeTask(u("資料を読む")), true),
                 (Notification{u("wrenfold.pomodoro.break-done"), u("\u2615\uFE0F 休憩終了"),
                               u("次の一手: 資料を読む")}));
        QCOMPARE(breakDoneNotification(std::nullopt, true).body, u("次の一手: タスクを選んでください"));
        QCOMPARE(breakDoneNotification(std::nullopt, false).body, u("次のフォーカスを始めましょう"));
    }

    void titlesStandInTheTextsAsTheyAre()
    {
        const TaskItem task = madeTask(hazard);
        QCOMPARE(sprintMilestones(task)[0].message, u("「A & B_c <b>x</b>」— 仕上げるなら今。"));
        QCOMPARE(workDoneNotification(task, 5).body, u("「A & B_c <b>x</b>」— 5分休憩に入ります"));
        QCOMPARE(breakDoneNotification(task, true).body, u("次の一手: A & B_c <b>x</b>"));
        const TaskItem percent = madeTask(u("%1 %2 100%"));
        QCOMPARE(workDoneNotification(percent, 5).body, u("「%1 %2 100%」— 5分休憩に入ります"));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TimerNoticesTest)
#include "timer_notices_test.moc"
