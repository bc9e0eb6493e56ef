// SPDX-License-Identifier: MIT
#include "platform/linux/dbus_notification_center.h"
#include "support/fake_sounds.h"
#include "support/private_bus.h"
#include "support/recording_notification_daemon.h"
#include "support/test_case.h"

namespace wrenfold {

/// Whether notifications work, as the program knows it without asking.
class NotificationAvailabilityTest : public TestCase
{
    Q_OBJECT

    static Availability notAvailable(const char *reason)
    {
        return {Availability::Level::NotAvailable, QLatin1String(reason)};
    }
    static void ask(DBusNotificationCenter &center)
    {
        center.requestAuthorization([](bool, const NotificationCenter::Error &) {});
    }

private Q_SLOTS:
    void itFollowsTheDaemon()
    {
        PrivateBus bus;
        QCOMPARE(bus.start(), QString());
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
        RecordingNotificationDaemon daemon(bus.address());
        QVERIFY(daemon.arrive());
        FakeSounds sounds;
        DBusNotificationCenter center(sounds);
        QCOMPARE(center.availability(), notAvailable("The desktop has not answered yet."));
        ask(center);
        QTRY_COMPARE(center.availability(), Availability());
        daemon.leave();
        QTRY_COMPARE(center.availability(), notAvailable("The desktop's notification daemon has ended."));
        QVERIFY(daemon.arrive());
        QTRY_COMPARE(center.availability(), Availability());
        daemon.leave();
        ask(center);
        QTRY_VERIFY(center.availability().reason.startsWith(
            QStringLiteral("The desktop's notifications do not answer: ")));
    }

    void withoutABusItSaysSo()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
        FakeSounds sounds;
        DBusNotificationCenter center(sounds);
        ask(center);
        QTRY_COMPARE(center.availability(),
                     notAvailable("The desktop's notifications do not answer: there is no session bus that "
                                  "answers."));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::NotificationAvailabilityTest)
#include "notification_availability_test.moc"
