// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "platform/linux/dbus_notification_center.h"
#include "support/private_bus.h"
#include "support/recording_notification_daemon.h"
#include "support/test_case.h"

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

using Texts = QList<std::pair<QString, QString>>;

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

/// The timer's notifications on their whole way: from the store over the bus to the daemon.
class TimerNotificationsTest : public TestCase
{
    Q_OBJECT

private:
    /// A store that has loaded this list, with the real notifications before it.
    struct Desk
    {
        RecordingNotificationDaemon daemon;
        FakePreferences preferences;
        FakeClock clock;
        FakeSounds sounds;
        FakeFolderWatch folderWatch;
        FakeLoginItem loginItem;
        DBusNotificationCenter center{sounds};
        AppNotifier notifier{center};
        OpenRouterTaskSorter sorter{StoreOnFakes::noService()};
        FocusStore store;

        Desk(const QString &busAddress, const TaskList &tasks, std::optional<QUuid> activeTaskID)
            : daemon(busAddress)
            , preferences(StoreOnFakes::preferencesWith(StoreOnFakes::documentWith(tasks, activeTaskID)))
            , store({preferences, clock, notifier, sounds, sorter, folderWatch, loginItem},
                    {.monitorInbox = false})
        {
        }

        [[nodiscard]] Texts listed() const
        {
            Texts texts;
            for (const RecordingNotificationDaemon::Call &call : daemon.listed())
                texts.append({call.summary, call.body});
            return texts;
        }
    };

    PrivateBus m_bus;

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(m_bus.start(), QString());
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
    }

    void aWorkPhaseAndABreakWithANowTask()
    {
        const TaskItem task = madeTask(u("A & B_c <b>x</b> 資料"));
        Desk desk(m_bus.address(), {task}, task.id);
        QVERIFY(desk.daemon.arrive());
        desk.store.startPomodoro();
        desk.clock.advance(1200s);
        QTRY_COMPARE(desk.listed(),
                     (Texts{{u("🍅 あと5分"), u("「A & B_c <b>x</b> 資料」— 仕上げるなら今。")}}));
        desk.clock.advance(240s);
        QTRY_COMPARE(desk.daemon.listed().size(), 2);
        QCOMPARE(desk.listed().last(),
                 (std::pair{u("🍅 あと1分"), u("クローズできるところまで。できなくてもOK、区切ろう。")}));
        desk.clock.advance(61s);
        QTRY_COMPARE(desk.daemon.listed().size(), 3);
        QCOMPARE(desk.listed().last(),
                 (std::pair{u("🍅 作業完了"), u("「A & B_c <b>x</b> 資料」— 5分休憩に入ります")}));
        desk.clock.advance(301s);
        QTRY_COMPARE(desk.daemon.listed().size(), 4);
        QCOMPARE(desk.listed().last(),
                 (std::pair{u("\u2615\uFE0F 休憩終了"), u("次の一手: A & B_c <b>x</b> 資料")}));
    }

    void aWorkPhaseAndABreakWithoutANowTask()
    {
        Desk desk(m_bus.address(), {madeTask(u("一"))}, std::nullopt);
        QVERIFY(desk.daemon.arrive());
        desk.store.setBreakDurationMinutes(10);
        desk.store.startPomodoro();
        desk.clock.advance(1200s);
        QTRY_COMPARE(desk.listed(), (Texts{{u("🍅 あと5分"), u("残り5分。NOW だけ見よう。")}}));
        desk.clock.advance(301s);
        QTRY_COMPARE(desk.daemon.listed().size(), 3);
        const std::pair workIsDone{u("🍅 作業完了"), u("「フォーカス」— 10分休憩に入ります")};
        QCOMPARE(desk.listed().last(), workIsDone);
        desk.clock.advance(601s);
        QTRY_COMPARE(desk.daemon.listed().size(), 4);
        QCOMPARE(desk.listed().last(),
                 (std::pair{u("\u2615\uFE0F 休憩終了"), u("次の一手: タスクを選んでください")}));
    }

    void aBreakWithNothingOpen()
    {
        Desk desk(m_bus.address(), {}, std::nullopt);
        QVERIFY(desk.daemon.arrive());
        desk.store.startBreakSession();
        desk.store.startPomodoro();
        desk.clock.advance(301s);
        QTRY_COMPARE(desk.listed(), (Texts{{u("\u2615\uFE0F 休憩終了"), u("次のフォーカスを始めましょう")}}));
    }

    void theOtherKindsOfNotificationArriveAsTheyAre()
    {
        Desk desk(m_bus.address(), {}, std::nullopt);
        QVERIFY(desk.daemon.arrive());
        const Notification arrival = {u("wrenfold.inbox.arrival"), u("\U0001F4E5 TODO候補が3件届きました"),
                                      u("見積書の差し替えをお願いします")};
        const Notification block = {u("wrenfold.guard.block"), u("Focus Guard"),
                                    u("A & B_c <b>x</b> をブロックしました — NOW に戻りましょう")};
        desk.notifier.notify(arrival);
        desk.notifier.notify(block);
        QTRY_COMPARE(desk.listed(), (Texts{{arrival.title, arrival.body}, {block.title, block.body}}));
    }

    void twoFinishedWorkPhasesLeaveTheNewerNotification()
    {
        const TaskItem task = madeTask(u("一"));
        Desk desk(m_bus.address(), {task}, task.id);
        QVERIFY(desk.daemon.arrive());
        desk.store.sprintNudgesEnabled.set(false);
        desk.store.startPomodoro();
        desk.clock.advance(1501s);
        QTRY_COMPARE(desk.daemon.calls().size(), 1);
        desk.store.skipBreakToWork();
        desk.store.setBreakDurationMinutes(7);
        desk.store.startPomodoro();
        desk.clock.advance(1501s);
        QTRY_COMPARE(desk.daemon.calls().size(), 2);
        QCOMPARE(desk.daemon.calls().last().replacesId, desk.daemon.calls().first().id);
        QCOMPARE(desk.listed(), (Texts{{u("🍅 作業完了"), u("「一」— 7分休憩に入ります")}}));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::TimerNotificationsTest)
#include "timer_notifications_test.moc"
