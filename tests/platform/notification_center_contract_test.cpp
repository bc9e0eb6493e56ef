// SPDX-License-Identifier: MIT
#include "platform/linux/dbus_notification_center.h"
#include "support/bus_contract_test.h"
#include "support/fake_notification_center.h"
#include "support/fake_sounds.h"
#include "support/posted_notification.h"
#include "support/recording_notification_daemon.h"

namespace wrenfold {

namespace {

/// Notifications, and how a test sees and steers what is behind them.
struct Subject
{
    virtual ~Subject() = default;
    virtual NotificationCenter &center() = 0;
    /// Answers what has been asked, as far as that does not come by itself.
    virtual void answer() = 0;
    [[nodiscard]] virtual QList<std::pair<QString, QString>> listed() const = 0; ///< Titles and bodies.
    virtual void clickLast() = 0;
};

struct FakeSubject : Subject
{
    FakeNotificationCenter fake;

    NotificationCenter &center() override { return fake; }
    void answer() override
    {
        fake.answerQuestions(true);
        fake.answerPosts();
    }
    [[nodiscard]] QList<std::pair<QString, QString>> listed() const override
    {
        QList<std::pair<QString, QString>> texts;
        for (const Notification &notification : fake.listed())
            texts.append({notification.title, notification.body});
        return texts;
    }
    void clickLast() override { fake.click(); }
};

struct RealSubject : Subject
{
    RecordingNotificationDaemon daemon;
    FakeSounds sounds;
    DBusNotificationCenter real{sounds};

    explicit RealSubject(const QString &busAddress)
        : daemon(busAddress)
    {
        if (!daemon.arrive())
            qFatal("the daemon does not come");
    }
    NotificationCenter &center() override { return real; }
    void answer() override {}
    [[nodiscard]] QList<std::pair<QString, QString>> listed() const override
    {
        QList<std::pair<QString, QString>> texts;
        for (const RecordingNotificationDaemon::Call &call : daemon.listed())
            texts.append({call.summary, call.body});
        return texts;
    }
    void clickLast() override { daemon.invoke(daemon.calls().last().id); }
};

} // namespace

/// One suite over the fake and the real notifications.
class NotificationCenterContractTest : public BusContractTest
{
    Q_OBJECT

private:
    [[nodiscard]] std::unique_ptr<Subject> makeSubject() const
    {
        return makeOneOf<Subject, FakeSubject, RealSubject>();
    }

    /// Whether the notification was posted without an error.
    [[nodiscard]] static bool post(Subject &subject, const char *identifier, const QString &title,
                                   const QString &body)
    {
        const PostedNotification posted(subject.center(), {QString::fromUtf8(identifier), title, body});
        subject.answer();
        return QTest::qWaitFor([&] { return posted.isAnswered(); }) &&
               posted.answers() == QStringList{QString()};
    }

private Q_SLOTS:
    void permissionIsAnsweredOnce()
    {
        const auto subject = makeSubject();
        QList<bool> answers;
        subject->center().requestAuthorization([&](bool isGranted, const NotificationCenter::Error &error) {
            answers << (isGranted && !error);
        });
        subject->answer();
        QTRY_COMPARE(answers, QList<bool>{true});
        QVERIFY(post(*subject, "a", QStringLiteral("title"), {}));
        QCOMPARE(answers.size(), 1);
    }

    void aNewerOneOfTheSameIdentifierTakesTheOldOnesPlace()
    {
        const auto subject = makeSubject();
        QVERIFY(post(*subject, "wrenfold.pomodoro.work-done", QStringLiteral("title"), QStringLiteral("1")));
        QVERIFY(post(*subject, "wrenfold.sprint.300", QStringLiteral("title"), QStringLiteral("2")));
        QVERIFY(post(*subject, "wrenfold.sprint.60", QStringLiteral("title"), QStringLiteral("3")));
        QVERIFY(post(*subject, "wrenfold.pomodoro.work-done", QStringLiteral("title"), QStringLiteral("4")));
        QStringList bodies;
        for (const auto &[title, body] : subject->listed())
            bodies << body;
        QCOMPARE(bodies, (QStringList{QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4")}));
    }

    void textsArriveCharacterForCharacter_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("markup") << QStringLiteral("A & B_c <b>x</b>");
        QTest::newRow("entities") << QStringLiteral("&amp; &lt;");
        QTest::newRow("emoji") << QStringLiteral("☕\uFE0F 休憩終了 🍅 👨‍👩‍👧‍👦");
        QTest::newRow("lines") << QStringLiteral("一行目\n二行目");
        QTest::newRow("both directions") << QStringLiteral("אבג \u202Eabc\u202C");
        QTest::newRow("long") << QStringLiteral("長い題名").repeated(500);
        QTest::newRow("empty") << QString();
    }

    void textsArriveCharacterForCharacter()
    {
        QFETCH(QString, text);
        const auto subject = makeSubject();
        QVERIFY(post(*subject, "a", QStringLiteral("🍅 ") + text, text));
        QCOMPARE(subject->listed().last(), std::pair(QStringLiteral("🍅 ") + text, text));
    }

    void aClickIsToldToTheLastWhoAsked()
    {
        const auto subject = makeSubject();
        int before = 0;
        int clicks = 0;
        subject->center().onClick([&] { ++before; });
        subject->center().onClick([&] { ++clicks; });
        QVERIFY(post(*subject, "a", QStringLiteral("title"), {}));
        subject->clickLast();
        QTRY_COMPARE(clicks, 1);
        subject->clickLast();
        QTRY_COMPARE(clicks, 2);
        QCOMPARE(before, 0);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::NotificationCenterContractTest)
#include "notification_center_contract_test.moc"
