// SPDX-License-Identifier: MIT
#include "app/debug_log.h"
#include "notify/app_notifier.h"
#include "support/fake_notification_center.h"
#include "support/log_capture.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

const Notification workDone = {QStringLiteral("wrenfold.pomodoro.work-done"), QStringLiteral("🍅 作業完了"),
                               QStringLiteral("「フォーカス」— 5分休憩に入ります")};

Notification sprint(int seconds)
{
    return {QStringLiteral("wrenfold.sprint.%1").arg(seconds), QStringLiteral("🍅 あと"), {}};
}

} // namespace

class AppNotifierTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { DebugLog::setArguments({}); }

    void theFirstPostAsksForPermissionOnceAndTheSecondDoesNotAskAgain()
    {
        FakeNotificationCenter center;
        AppNotifier notifier(center);
        QCOMPARE(center.openQuestions(), 0);
        notifier.notify(workDone);
        QCOMPARE(center.openQuestions(), 1);
        notifier.notify(workDone);
        QCOMPARE(center.openQuestions(), 1);
    }

    void permissionAskedForBeforeIsNotAskedForByAPost()
    {
        FakeNotificationCenter center;
        AppNotifier notifier(center);
        notifier.requestPermissionIfNeeded();
        notifier.requestPermissionIfNeeded();
        notifier.notify(workDone);
        QCOMPARE(center.openQuestions(), 1);
    }

    void postsAreMadeWhateverTheAnswer()
    {
        FakeNotificationCenter center;
        AppNotifier notifier(center);
        notifier.requestPermissionIfNeeded();
        LogCapture log;
        center.answerQuestions(false);
        notifier.notify(workDone);
        QCOMPARE(center.take(), QList<Notification>{workDone});
    }

    void twoPostsOfOneKindLeaveTheNewer()
    {
        FakeNotificationCenter center;
        AppNotifier notifier(center);
        Notification newer = workDone;
        newer.body = QStringLiteral("「別の」— 5分休憩に入ります");
        notifier.notify(workDone);
        notifier.notify(newer);
        QCOMPARE(center.listed(), QList<Notification>{newer});
    }

    void nudgesAt300And60SecondsBothRemain()
    {
        FakeNotificationCenter center;
        AppNotifier notifier(center);
        notifier.notify(sprint(300));
        notifier.notify(sprint(60));
        QCOMPARE(center.listed(), (QList<Notification>{sprint(300), sprint(60)}));
    }

    void theAnswerToTheQuestionIsLogged_data()
    {
        QTest::addColumn<bool>("isGranted");
        QTest::addColumn<NotificationCenter::Error>("error");
        QTest::addColumn<QString>("line");
        QTest::newRow("granted") << true << NotificationCenter::Error()
                                 << QStringLiteral("info app: notification permission granted=true");
        QTest::newRow("refused") << false << NotificationCenter::Error()
                                 << QStringLiteral("info app: notification permission granted=false");
        QTest::newRow("error") << false << NotificationCenter::Error(QStringLiteral("no bus"))
                               << QStringLiteral("warning app: notification auth error: no bus");
    }

    void theAnswerToTheQuestionIsLogged()
    {
        QFETCH(bool, isGranted);
        QFETCH(NotificationCenter::Error, error);
        QFETCH(QString, line);
        FakeNotificationCenter center;
        AppNotifier notifier(center);
        notifier.requestPermissionIfNeeded();
        LogCapture log;
        center.answerQuestions(isGranted, error);
        QCOMPARE(log.take(), QStringList{line});
    }

    void aPostThatFailsIsOneLineInTheLog()
    {
        FakeNotificationCenter center;
        AppNotifier notifier(center);
        notifier.notify(workDone);
        LogCapture log;
        center.answerPosts(QStringLiteral("nobody there"));
        QCOMPARE(log.take(),
                 QStringList{QStringLiteral("warning app: notification schedule failed: nobody there")});
    }

    void aPostIsLoggedOnlyWhenVerbose()
    {
        FakeNotificationCenter center;
        AppNotifier notifier(center);
        LogCapture log;
        notifier.notify(workDone);
        center.answerPosts();
        QCOMPARE(log.take(), QStringList());
        DebugLog::setArguments({QStringLiteral("wrenfold"), QStringLiteral("--verbose")});
        notifier.notify(workDone);
        center.answerPosts();
        QCOMPARE(log.take(),
                 QStringList{QStringLiteral("debug app: notification posted: wrenfold.pomodoro.work-done")});
    }

    void anAnswerAfterTheNotifierHasGoneIsStillLogged()
    {
        FakeNotificationCenter center;
        std::make_unique<AppNotifier>(center)->requestPermissionIfNeeded();
        LogCapture log;
        center.answerQuestions(true);
        QCOMPARE(log.take().size(), 1);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::AppNotifierTest)
#include "app_notifier_test.moc"
