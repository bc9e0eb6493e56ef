// SPDX-License-Identifier: MIT
#include "platform/linux/dbus_notification_center.h"
#include "platform/none/no_sounds.h"
#include "support/posted_notification.h"
#include "support/private_bus.h"
#include "support/test_case.h"

#include <QDBusInterface>
#include <QDBusReply>
#include <QFile>
#include <QProcess>

namespace wrenfold {

/// The notifications with a daemon that people use.
class DunstTest : public TestCase
{
    Q_OBJECT

private:
    /// What dunst says it shows, -1 as long as it says nothing.
    [[nodiscard]] int shownCount() const
    {
        const QDBusInterface dunst(QStringLiteral("org.freedesktop.Notifications"),
                                   QStringLiteral("/org/freedesktop/Notifications"),
                                   QStringLiteral("org.dunstproject.cmd0"), bus());
        const QVariant shown = dunst.property("displayedLength");
        return shown.isValid() ? shown.toInt() : -1;
    }

    [[nodiscard]] static QDBusConnection bus() { return QDBusConnection(QStringLiteral("looking on")); }

    PrivateBus m_bus;
    QTemporaryDir m_folder;
    QProcess m_dunst;

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(m_bus.start(), QString());
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
        QVERIFY(QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("looking on")).isConnected());
        // It shows its notifications until they are taken away, and as many as there are.
        QFile settings(m_folder.filePath(QStringLiteral("dunstrc")));
        QVERIFY(settings.open(QIODevice::WriteOnly));
        settings.write("[global]\nidle_threshold = 0\n[urgency_normal]\ntimeout = 0\n");
        settings.close();
        m_dunst.start(QStringLiteral("dunst"), {QStringLiteral("-config"), settings.fileName()});
        QTRY_COMPARE(shownCount(), 0);
    }

    void cleanupTestCase()
    {
        m_dunst.terminate();
        QVERIFY(m_dunst.waitForFinished());
        QDBusConnection::disconnectFromBus(QStringLiteral("looking on"));
    }

    void twoPostsOfOneKindLeaveOneAndAnotherKindStays()
    {
        NoSounds sounds;
        DBusNotificationCenter center(sounds);
        const auto post = [&](const char *identifier, const char *body) {
            const PostedNotification posted(center, {QString::fromUtf8(identifier),
                                                     QStringLiteral("🍅 作業完了"), QString::fromUtf8(body)});
            QTRY_VERIFY(posted.isAnswered());
            QCOMPARE(posted.answers(), QStringList{QString()});
        };
        post("wrenfold.pomodoro.work-done", "「一」— 5分休憩に入ります");
        QTRY_COMPARE(shownCount(), 1);
        post("wrenfold.pomodoro.work-done", "「二」— 5分休憩に入ります");
        QCOMPARE(shownCount(), 1);
        post("wrenfold.sprint.60", "A & B_c <b>x</b>");
        QTRY_COMPARE(shownCount(), 2);
        post("wrenfold.pomodoro.work-done", "「三」— 5分休憩に入ります");
        QCOMPARE(shownCount(), 2);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::DunstTest)
#include "dunst_test.moc"
