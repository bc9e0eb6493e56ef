// SPDX-License-Identifier: MIT
#include "platform/linux/dbus_notification_center.h"
#include "support/fake_sounds.h"
#include "support/posted_notification.h"
#include "support/private_bus.h"
#include "support/recording_notification_daemon.h"
#include "support/test_case.h"

#include <csignal>

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

const auto hazard = QStringLiteral("A & B_c <b>x</b>");

Notification notification(const QString &identifier, const QString &body = QStringLiteral("body"))
{
    return {identifier, QStringLiteral("title"), body};
}

const Notification first = notification(QStringLiteral("first"));
const Notification second = notification(QStringLiteral("second"));

/// One address for all tests, because the bus library looks for it once in a process.
PrivateBus &theBus()
{
    static PrivateBus bus;
    return bus;
}

/// A bus with a daemon, and the program's side of it.
struct Desk
{
    PrivateBus &bus = theBus();
    std::optional<RecordingNotificationDaemon> daemon;
    FakeSounds sounds;
    std::optional<DBusNotificationCenter> center;

    ~Desk() { bus.stop(); }

    /// Whether everything is there.
    [[nodiscard]] bool setUp(std::chrono::milliseconds patience = 5s)
    {
        if (!bus.start().isEmpty())
            return false;
        daemon.emplace(bus.address());
        center.emplace(sounds, patience);
        return daemon->arrive();
    }

    /// Another daemon takes the name. The program learns of it a moment later, and then asks for its capabilities.
    [[nodiscard]] bool restartDaemon(const QStringList &capabilities = {})
    {
        daemon->setCapabilities(capabilities);
        const int asked = daemon->capabilitiesAsked();
        return daemon->arrive() && QTest::qWaitFor([&] {
                   return post({QStringLiteral("probe"), {}, {}}).isEmpty() &&
                          daemon->capabilitiesAsked() > asked;
               });
    }

    /// The answer to one notification, once it is there.
    [[nodiscard]] QString post(const Notification &notification)
    {
        const PostedNotification posted(*center, notification);
        if (!QTest::qWaitFor([&] { return posted.isAnswered(); }, 10000))
            return QStringLiteral("no answer");
        return posted.answers().join(u'|');
    }
};

} // namespace

/// The desktop's daemon in good and bad health.
class DBusNotificationCenterTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("DBUS_SESSION_BUS_ADDRESS", theBus().address().toUtf8()); }

    void aNotificationHasAllThatTheDaemonNeeds()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        desk.daemon->setCapabilities({QStringLiteral("actions"), QStringLiteral("body")});
        QCOMPARE(desk.post(first), QString());
        const RecordingNotificationDaemon::Call call = desk.daemon->calls().value(0);
        QCOMPARE(call.appName, QStringLiteral("Wren Fold"));
        QCOMPARE(call.replacesId, 0U);
        QCOMPARE(call.icon, QStringLiteral("dev.tolvane.Wrenfold"));
        QCOMPARE(call.summary, QStringLiteral("title"));
        QCOMPARE(call.body, QStringLiteral("body"));
        QCOMPARE(call.actions, (QStringList{QStringLiteral("default"), QStringLiteral("パネルを表示")}));
        QCOMPARE(call.hints.value(QStringLiteral("desktop-entry")).toString(),
                 QStringLiteral("dev.tolvane.Wrenfold"));
        QCOMPARE(call.hints.value(QStringLiteral("sound-name")).toString(),
                 QStringLiteral("message-new-instant"));
        QCOMPARE(call.hints.value(QStringLiteral("urgency")), QVariant::fromValue(uchar(1)));
        QCOMPARE(call.hints.value(QStringLiteral("urgency")).userType(), int(QMetaType::UChar));
        QCOMPARE(call.timeout, -1);
    }

    void actionsAreLeftOutWhereTheDaemonHasNone()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        QCOMPARE(desk.post(first), QString());
        QCOMPARE(desk.daemon->calls().value(0).actions, QStringList());
    }

    void theBodyIsEscapedExactlyWhenTheDaemonReadsMarkup()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        Notification awkward = notification(QStringLiteral("awkward"), hazard);
        awkward.title = hazard;
        QCOMPARE(desk.post(awkward), QString());
        QCOMPARE(desk.daemon->calls().last().body, hazard);
        QCOMPARE(desk.daemon->calls().last().summary, hazard);
        QVERIFY(desk.restartDaemon({QStringLiteral("body-markup")}));
        QCOMPARE(desk.post(awkward), QString());
        QCOMPARE(desk.daemon->calls().last().body, QStringLiteral("A &amp; B_c &lt;b&gt;x&lt;/b&gt;"));
        QCOMPARE(desk.daemon->calls().last().summary, hazard);
    }

    void textsThatTheBusDoesNotCarryDoNoHarm()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        QCOMPARE(desk.post(notification(QStringLiteral("odd"), QString(QChar(0xD800)) + QChar(0xFFFE))),
                 QString());
        QCOMPARE(desk.post(notification(QStringLiteral("odd"), QStringLiteral("a") + QChar(0) + u'b')),
                 QString());
        QCOMPARE(desk.post(first), QString());
        QCOMPARE(desk.daemon->calls().size(), 3);
    }

    void twoOfOneIdentifierAtOnceStillReplaceOneAnother()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        QCOMPARE(desk.post(second), QString());
        const PostedNotification one(*desk.center,
                                     notification(QStringLiteral("first"), QStringLiteral("1")));
        const PostedNotification two(*desk.center,
                                     notification(QStringLiteral("first"), QStringLiteral("2")));
        QTRY_VERIFY(one.isAnswered() && two.isAnswered());
        QCOMPARE(desk.daemon->listed().size(), 2);
        QCOMPARE(desk.daemon->listed().last().body, QStringLiteral("2"));
        QCOMPARE(desk.daemon->calls().last().replacesId, desk.daemon->calls().at(1).id);
    }

    void oneThatWaitsGivesWayToANewerOfItsIdentifier()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        const PostedNotification other(*desk.center, second);
        const PostedNotification one(*desk.center,
                                     notification(QStringLiteral("first"), QStringLiteral("1")));
        const PostedNotification two(*desk.center,
                                     notification(QStringLiteral("first"), QStringLiteral("2")));
        QCOMPARE(one.answers(), QStringList{QString()});
        QTRY_VERIFY(two.isAnswered());
        QCOMPARE(two.answers(), QStringList{QString()});
        QCOMPARE(desk.daemon->calls().size(), 2);
        QCOMPARE(desk.daemon->calls().last().body, QStringLiteral("2"));
    }

    void theCapabilitiesAreAskedForOnce()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        for (int round = 0; round < 3; ++round)
            QCOMPARE(desk.post(first), QString());
        QCOMPARE(desk.daemon->capabilitiesAsked(), 1);
    }

    void aDaemonThatRestartsIsAskedAnewAndReplacesNothing()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        QCOMPARE(desk.post(first), QString());
        QCOMPARE(desk.post(second), QString());
        QVERIFY(desk.restartDaemon());
        QCOMPARE(desk.daemon->capabilitiesAsked(), 2);
        QCOMPARE(desk.post(second), QString());
        QCOMPARE(desk.daemon->calls().last().replacesId, 0U);
        QCOMPARE(desk.post(second), QString());
        QCOMPARE(desk.daemon->calls().last().replacesId, desk.daemon->listed().last().id);
        QCOMPARE(desk.daemon->capabilitiesAsked(), 2);
    }

    void withoutADaemonEachPostEndsInOneError()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        desk.daemon->leave();
        const PostedNotification one(*desk.center, first);
        const PostedNotification two(*desk.center, second);
        QTRY_VERIFY(one.isAnswered() && two.isAnswered());
        QCOMPARE(one.answers().size(), 1);
        QVERIFY(!one.answers().first().isEmpty());
        QVERIFY(!one.answers().first().contains(u'\n'));
        // It comes later, and is found.
        QVERIFY(desk.daemon->arrive());
        QCOMPARE(desk.post(first), QString());
    }

    void permissionIsThereOnceADaemonAnswers()
    {
        Desk desk;
        QVERIFY(desk.setUp(700ms));
        QStringList answers;
        const auto ask = [&] {
            desk.center->requestAuthorization([&](bool isGranted, const NotificationCenter::Error &error) {
                answers << (isGranted ? QStringLiteral("granted") : QStringLiteral("refused")) +
                               (error && !error->isEmpty() ? QStringLiteral(", error") : QString());
            });
        };
        desk.daemon->leave();
        ask();
        QTRY_COMPARE(answers, QStringList{QStringLiteral("refused, error")});
        QVERIFY(desk.daemon->arrive());
        desk.daemon->setHanging(true);
        ask();
        QTRY_COMPARE(answers.mid(1), QStringList{QStringLiteral("refused, error")});
        desk.daemon->setHanging(false);
        ask();
        QTRY_COMPARE(answers.mid(2), QStringList{QStringLiteral("granted")});
    }

    void aDaemonThatHangsEndsInOneErrorAndIsAskedAgain()
    {
        Desk desk;
        QVERIFY(desk.setUp(700ms));
        desk.daemon->setHanging(true);
        QVERIFY(!desk.post(first).isEmpty());
        desk.daemon->setHanging(false);
        QCOMPARE(desk.post(first), QString());
        desk.daemon->setHanging(true);
        QVERIFY(!desk.post(second).isEmpty());
        desk.daemon->setHanging(false);
        QCOMPARE(desk.post(second), QString());
        QVERIFY(!desk.sounds.take().isEmpty());
    }

    void aRefusalIsOneLineOfText()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        desk.daemon->refuseNext(QStringLiteral("too\nmany  of them\n"));
        QCOMPARE(desk.post(first), QStringLiteral("too many of them"));
        QCOMPARE(desk.sounds.take(), QList<Sound>());
    }

    void withoutABusNothingWaits()
    {
        FakeSounds sounds;
        DBusNotificationCenter center(sounds);
        QStringList answers;
        center.requestAuthorization([&](bool isGranted, const NotificationCenter::Error &error) {
            answers << (isGranted ? QStringLiteral("granted") : *error);
        });
        const PostedNotification posted(center, first);
        QVERIFY(!posted.isAnswered()); // Whatever is asked is asked on another thread.
        QTRY_VERIFY(posted.isAnswered());
        QCOMPARE(posted.answers(), QStringList{QStringLiteral("there is no session bus that answers")});
        QCOMPARE(answers, posted.answers());
    }

    void aBusThatHangsEndsInOneError()
    {
        Desk desk;
        QVERIFY(desk.setUp(700ms));
        ::kill(static_cast<pid_t>(desk.bus.processId()), SIGSTOP);
        const QString answer = desk.post(first);
        ::kill(static_cast<pid_t>(desk.bus.processId()), SIGCONT);
        QCOMPARE(answer, QStringLiteral("there is no session bus that answers"));
        QCOMPARE(desk.post(first), QString());
    }

    void aBusThatHangsLaterEndsInOneErrorToo()
    {
        Desk desk;
        QVERIFY(desk.setUp(700ms));
        QCOMPARE(desk.post(first), QString());
        ::kill(static_cast<pid_t>(desk.bus.processId()), SIGSTOP);
        const QString answer = desk.post(first);
        ::kill(static_cast<pid_t>(desk.bus.processId()), SIGCONT);
        QVERIFY(!answer.isEmpty());
        QCOMPARE(desk.post(first), QString());
    }

    void aBusThatEndsBeforeTheAnswerEndsInOneErrorEach()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        QCOMPARE(desk.post(first), QString());
        desk.daemon->setHanging(true);
        const PostedNotification sent(*desk.center, first);
        const PostedNotification waiting(*desk.center, second);
        QTRY_COMPARE(desk.daemon->calls().size(), 2);
        desk.bus.stop();
        QTRY_VERIFY(sent.isAnswered() && waiting.isAnswered());
        QCOMPARE(desk.bus.start(), QString());
        desk.daemon->setHanging(false);
        QVERIFY(desk.daemon->arrive());
        QCOMPARE(desk.post(first), QString());
        for (const QStringList &answers : {sent.answers(), waiting.answers()})
            QVERIFY(answers.size() == 1 && !answers.first().isEmpty());
    }

    void aBusThatComesBackIsFoundAgain()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        QCOMPARE(desk.post(first), QString());
        desk.bus.stop();
        QVERIFY(!desk.post(first).isEmpty());
        QCOMPARE(desk.bus.start(), QString());
        QVERIFY(desk.daemon->arrive());
        QCOMPARE(desk.post(first), QString());
        QCOMPARE(desk.daemon->calls().last().replacesId, 0U);
        QVERIFY(desk.daemon->calls().size() >= 2);
    }

    void theSoundIsOursOnlyWhereTheDaemonHasNone()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        QCOMPARE(desk.post(first), QString());
        QCOMPARE(desk.sounds.take(), QList<Sound>{Sound::Notification});
        QVERIFY(desk.restartDaemon({QStringLiteral("sound")}));
        (void)desk.sounds.take();
        QCOMPARE(desk.post(first), QString());
        QCOMPARE(desk.sounds.take(), QList<Sound>());
    }

    void onlyAClickOnOneOfOursCounts()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        int clicks = 0;
        desk.center->onClick([&] { ++clicks; });
        QCOMPARE(desk.post(first), QString());
        const uint id = desk.daemon->calls().last().id;
        desk.daemon->invoke(id + 1);
        desk.daemon->invoke(id, QStringLiteral("another"));
        desk.daemon->invoke(id);
        QTRY_COMPARE(clicks, 1);
        QCOMPARE(desk.post(first), QString()); // Whatever was on its way has come.
        QCOMPARE(clicks, 1);
    }

    void theActivationTokenComesWithTheClick()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        qunsetenv("XDG_ACTIVATION_TOKEN");
        QList<QByteArray> tokens; // One a click.
        desk.center->onClick([&] { tokens << qgetenv("XDG_ACTIVATION_TOKEN"); });
        QCOMPARE(desk.post(first), QString());
        const uint id = desk.daemon->calls().last().id;
        const auto click = QStringLiteral("default");
        desk.daemon->invoke(id + 1, click, QStringLiteral("another program's"));
        desk.daemon->invoke(id);
        desk.daemon->invoke(id, click, QStringLiteral("token-1"));
        QTRY_COMPARE(tokens, (QList<QByteArray>{"", "token-1"}));
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }

    void nothingIsAnsweredAfterTheEnd()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        const PostedNotification early(*desk.center, first);
        desk.center.reset();
        QVERIFY(!early.isAnswered());
        desk.center.emplace(desk.sounds, 700ms);
        QCOMPARE(desk.post(first), QString());
        desk.daemon->setHanging(true);
        const PostedNotification late(*desk.center, second);
        QTRY_COMPARE(desk.daemon->calls().size(), 2);
        desk.center.reset();
        desk.center.emplace(desk.sounds, 700ms);
        QVERIFY(!desk.post(first).isEmpty());
        QVERIFY(!late.isAnswered());
        QVERIFY(!early.isAnswered());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::DBusNotificationCenterTest)
#include "dbus_notification_center_test.moc"
