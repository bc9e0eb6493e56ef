// SPDX-License-Identifier: MIT
#include "app/marketing_demo.h"
#include "model/store_on_fakes.h"
#include "support/quiet_services.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

/// A store as the demonstration has it.
struct SeededStore
{
    FakePreferences preferences;
    FakeClock clock;
    QuietServices quiet;
    FocusStore store{quiet.with(preferences, clock), {.loadSavedState = false, .monitorInbox = false}};

    explicit SeededStore(bool isBoardVisible = true) { seedMarketingDemo(store, isBoardVisible); }
};

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

/// The task as one line: its title, whose subtask it is, and where it is deferred to.
QString described(const TaskItem &task, const TaskList &tasks)
{
    QString text = task.title;
    if (task.parentID)
        text += u(" < ") + findTask(tasks, *task.parentID)->title;
    if (task.isDeferred)
        text += u(" @ ") + QString::number(int(task.quadrant));
    return text;
}

} // namespace

class MarketingDemoTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theSampleTasksAreTheseInThisOrder()
    {
        const SeededStore seeded;
        const TaskList tasks = seeded.store.tasks.value();
        QStringList lines;
        for (const TaskItem &task : tasks)
            lines.append(described(task, tasks));
        const auto deferred = [](const char *title, TaskQuadrant quadrant) {
            return u(title) + u(" @ ") + QString::number(int(quadrant));
        };
        QCOMPARE(lines, (QStringList{
                            u("リリースノートを公開する"),
                            u("新機能のスクリーンショットを用意 < リリースノートを公開する"),
                            u("更新内容を3行でまとめる < リリースノートを公開する"),
                            deferred("今週の計画を見直す", TaskQuadrant::importantNotUrgent),
                            deferred("請求書を今日中に確認", TaskQuadrant::urgentImportant),
                            deferred("通知設定を整理する", TaskQuadrant::notUrgentNotImportant),
                            deferred("短い返信をまとめて返す", TaskQuadrant::urgentNotImportant),
                        }));
        for (const TaskItem &task : tasks)
            QVERIFY(!task.isDone);
    }

    void theFirstIsTheNowTaskAndTheGoalIsSet()
    {
        const SeededStore seeded;
        QCOMPARE(seeded.store.activeTask().value().title, u("リリースノートを公開する"));
        QCOMPARE(seeded.store.mediumGoal.value(), u("今日いちばん大切なことに集中する"));
    }

    void theBoardIsOpenUnlessItIsAskedToBeClosed()
    {
        QVERIFY(SeededStore(true).store.isQuadrantBoardVisible.value());
        QVERIFY(!SeededStore(false).store.isQuadrantBoardVisible.value());
    }

    void nothingIsSavedNowOrLater()
    {
        SeededStore seeded;
        seeded.store.addTask(u("a"), true);
        seeded.store.save();
        QCOMPARE(seeded.preferences.writeCount(), 0);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::MarketingDemoTest)
#include "marketing_demo_test.moc"
