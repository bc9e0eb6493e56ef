// SPDX-License-Identifier: MIT
#include "platform/linux/portal_appearance.h"
#include "support/fake_portal.h"
#include "support/private_bus.h"
#include "support/test_case.h"

#include <QDBusVariant>

#include <csignal>

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

const auto common = QStringLiteral("org.freedesktop.appearance");
const auto gnome = QStringLiteral("org.gnome.desktop.interface");
const auto colorScheme = QStringLiteral("color-scheme");
const auto contrast = QStringLiteral("contrast");
const auto reducedMotion = QStringLiteral("reduced-motion");
const auto animations = QStringLiteral("enable-animations");

const Appearance dark{true, false, false};
const Appearance light{false, false, false};

/// One address for all tests, because the bus library looks for it once in a process.
PrivateBus &theBus()
{
    static PrivateBus bus;
    return bus;
}

/// A bus with a portal that has yet to come, and the program's side of it.
struct Desk
{
    PrivateBus &bus = theBus();
    FakePortal portal{bus.address()};
    QList<Appearance> told;
    PortalAppearance appearance;

    explicit Desk(std::chrono::milliseconds patience = 30s)
        : appearance(patience)
    {
        const QString error = bus.start();
        if (!error.isEmpty())
            qFatal("%s", qPrintable(error));
    }
    ~Desk() { bus.stop(); }

    void follow()
    {
        appearance.follow([this](const Appearance &changed) { told << changed; });
    }
    void setColorScheme(uint value) { portal.set(common, colorScheme, value); }
};

} // namespace

/// The desktop's portal in good and bad health.
class PortalAppearanceTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("DBUS_SESSION_BUS_ADDRESS", theBus().address().toUtf8()); }

    void settingsMeanWhatTheirDocumentationSays_data()
    {
        QTest::addColumn<QString>("nameSpace");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<Appearance>("appearance");
        const auto add = [](const char *name, const QString &nameSpace, const QString &key,
                            const QVariant &value, const Appearance &appearance) {
            QTest::newRow(name) << nameSpace << key << value << appearance;
        };
        add("no preference", common, colorScheme, 0U, {});
        add("dark", common, colorScheme, 1U, dark);
        add("light", common, colorScheme, 2U, light);
        add("an unknown scheme", common, colorScheme, 3U, {});
        add("a scheme that is no unsigned number", common, colorScheme, 1, {});
        add("a scheme that is a text", common, colorScheme, QStringLiteral("1"), {});
        add("a scheme that is a list", common, colorScheme, QVariantList{1U}, {});
        add("a scheme wrapped twice", common, colorScheme, QVariant::fromValue(QDBusVariant(1U)), {});
        add("a scheme in another place", gnome, colorScheme, 1U, {});
        add("normal contrast", common, contrast, 0U, {});
        add("high contrast", common, contrast, 1U, {{}, true, false});
        add("an unknown contrast", common, contrast, 2U, {});
        add("motion", common, reducedMotion, 0U, {});
        add("less motion", common, reducedMotion, 1U, {{}, false, true});
        add("animations", gnome, animations, true, {});
        add("no animations", gnome, animations, false, {{}, false, true});
        add("animations that are a number", gnome, animations, 0U, {});
    }

    void settingsMeanWhatTheirDocumentationSays()
    {
        QFETCH(const QString, nameSpace);
        QFETCH(const QString, key);
        QFETCH(const QVariant, value);
        QFETCH(const Appearance, appearance);
        QCOMPARE(PortalAppearance::appearanceOf({{nameSpace, {{key, value}}}}), appearance);
    }

    void whatIsSetAtTheStartAndLaterIsTold()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        desk.setColorScheme(1);
        desk.follow();
        QVERIFY(desk.told.isEmpty()); // Whatever is asked is asked on another thread.
        QTRY_COMPARE(desk.told, (QList{dark}));
        desk.portal.set(gnome, animations, false);
        QTRY_COMPARE(desk.told.last(), (Appearance{true, false, true}));
        desk.portal.set(common, contrast, 1U);
        QTRY_COMPARE(desk.told.last(), (Appearance{true, true, true}));
        QCOMPARE(desk.told.size(), 3);
    }

    void otherSettingsAskNothing()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        desk.follow();
        QTRY_COMPARE(desk.portal.asked(), 1);
        desk.portal.set(QStringLiteral("org.gnome.desktop.wm"), QStringLiteral("theme"), 1U);
        desk.setColorScheme(1);
        QTRY_COMPARE(desk.told, (QList{dark}));
        QCOMPARE(desk.portal.asked(), 2);
    }

    void aPortalThatComesLaterIsFollowed()
    {
        Desk desk;
        desk.setColorScheme(1);
        desk.follow();
        QVERIFY(desk.portal.arrive());
        QTRY_COMPARE(desk.told, (QList{dark}));
    }

    void aPortalThatRestartsIsFollowed()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        desk.setColorScheme(1);
        desk.follow();
        QTRY_COMPARE(desk.told, (QList{dark}));
        desk.portal.leave();
        desk.setColorScheme(2);
        QVERIFY(desk.portal.arrive());
        QTRY_COMPARE(desk.told, (QList{dark, light}));
        desk.setColorScheme(1);
        QTRY_COMPARE(desk.told, (QList{dark, light, dark}));
    }

    void aPortalThatHungIsAskedAgainWhenSomethingChanges()
    {
        Desk desk(300ms);
        QVERIFY(desk.portal.arrive());
        desk.portal.setHanging(true);
        desk.setColorScheme(1);
        desk.follow();
        QTRY_COMPARE(desk.portal.asked(), 1);
        desk.portal.setHanging(false);
        desk.setColorScheme(2);
        QTRY_COMPARE(desk.told, (QList{light}));
    }

    void anAnswerOfAnotherKindSaysNothing_data()
    {
        QTest::addColumn<QVariant>("answer");
        QTest::newRow("a number") << QVariant(1U);
        QTest::newRow("a text") << QVariant(QStringLiteral("dark"));
        QTest::newRow("one level less") << QVariant(QVariantMap{{colorScheme, 2U}});
        QTest::newRow("a list") << QVariant(QVariantList{common, colorScheme, 2U});
        QTest::newRow("nothing in it") << QVariant::fromValue(QMap<QString, QVariantMap>{{common, {}}});
    }

    void anAnswerOfAnotherKindSaysNothing()
    {
        QFETCH(const QVariant, answer);
        Desk desk;
        QVERIFY(desk.portal.arrive());
        desk.portal.setAnswer(answer);
        desk.follow();
        QTRY_COMPARE(desk.portal.asked(), 1);
        desk.portal.setAnswer({});
        desk.setColorScheme(1);
        QTRY_COMPARE(desk.told, (QList{dark}));
    }

    void aBusThatHangsAtTheStartIsWaitedFor()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        desk.setColorScheme(1);
        ::kill(static_cast<pid_t>(desk.bus.processId()), SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        desk.follow();
        const qint64 spent = timer.elapsed();
        ::kill(static_cast<pid_t>(desk.bus.processId()), SIGCONT);
        QVERIFY2(spent < 1000, qPrintable(QString::number(spent)));
        QTRY_COMPARE(desk.told, (QList{dark}));
    }

    void withoutABusOrAPortalNothingIsTold()
    {
        QList<Appearance> told;
        {
            Desk desk;
            desk.follow();
            QTest::qWait(100); // UNAVOIDABLE: there is nothing to see of what is not told
            told += desk.told;
        }
        PortalAppearance appearance;
        appearance.follow([&](const Appearance &changed) { told << changed; });
        QTest::qWait(100); // UNAVOIDABLE: there is nothing to see of what is not told
        QCOMPARE(told, QList<Appearance>());
    }

    void aBusThatGoesLeavesTheAppearance()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        desk.setColorScheme(1);
        desk.follow();
        QTRY_COMPARE(desk.told, (QList{dark}));
        desk.portal.setHanging(true);
        desk.setColorScheme(2);
        QTRY_COMPARE(desk.portal.asked(), 2);
        desk.bus.stop();
        QTest::qWait(100); // UNAVOIDABLE: there is nothing to see of what is not told
        QCOMPARE(desk.told, (QList{dark}));
    }

    void theEndDoesNotWaitForAnAnswer()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        desk.portal.setHanging(true);
        int told = 0;
        {
            PortalAppearance appearance;
            appearance.follow([&](const Appearance &) { ++told; });
            QTRY_COMPARE(desk.portal.asked(), 1);
        }
        desk.portal.setHanging(false);
        desk.setColorScheme(1);
        desk.follow();
        QTRY_COMPARE(desk.told, (QList{dark}));
        QCOMPARE(told, 0);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::PortalAppearanceTest)
#include "portal_appearance_test.moc"
