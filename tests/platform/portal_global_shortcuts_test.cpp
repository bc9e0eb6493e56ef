// SPDX-License-Identifier: MIT
#include "app/application_id.h"
#include "platform/shortcuts_desk.h"
#include "support/test_case.h"

#include <QDBusObjectPath>

#include <csignal>

namespace wrenfold {

using namespace std::chrono_literals;

/// The desktop's portal that says yes, no, half of it, and nothing.
class PortalGlobalShortcutsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("DBUS_SESSION_BUS_ADDRESS", theBus().address().toUtf8()); }

    void whatIsGrantedWorks()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        QCOMPARE(desk.level(), Availability::Level::NotAvailable); // Nobody has asked.
        QVERIFY(desk.registerAll());
        QCOMPARE(desk.shortcuts.availability(), nothing); // Until the desktop has answered.
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        desk.portal.press(idOfT);
        desk.portal.press(idOfP);
        QTRY_COMPARE(desk.pressed, (Ids{3, 1}));
        QCOMPARE(desk.refused, Ids());
    }

    void theRequestsAreWhatPortalsWant()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        QCOMPARE(desk.portal.calls(),
                 (QStringList{QStringLiteral("Register"), QStringLiteral("CreateSession"),
                              QStringLiteral("BindShortcuts")}));
        QCOMPARE(desk.portal.applicationID(), applicationID());
        const QList<PortalShortcut> &bound = desk.portal.bound();
        QCOMPARE(bound.size(), 3);
        QCOMPARE(bound[0].id, idOfP);
        QCOMPARE(bound[2].id, idOfT);
    }

    void aPortalThatDoesNotRegisterProgramsServesToo()
    {
        Desk desk;
        desk.portal.unknownMethods = QStringList{QStringLiteral("Register")};
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
    }

    void aSessionMayBeNamedByItsPath()
    {
        Desk desk;
        desk.portal.isSessionHandlePath = true;
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        desk.portal.press(idOfH);
        QTRY_COMPARE(desk.pressed, Ids{2});
    }

    void aNoIsTold_data()
    {
        QTest::addColumn<uint>("sessionResponse");
        QTest::addColumn<uint>("bindResponse");
        QTest::newRow("to the session") << 1U << 0U;
        QTest::newRow("to the shortcuts") << 0U << 1U;
        QTest::newRow("by another end of the question") << 0U << 2U;
    }

    void aNoIsTold()
    {
        QFETCH(const uint, sessionResponse);
        QFETCH(const uint, bindResponse);
        Desk desk;
        desk.portal.sessionResponse = sessionResponse;
        desk.portal.bindResponse = bindResponse;
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.refused, (Ids{1, 2, 3}));
        QCOMPARE(desk.shortcuts.availability(), nothing);
    }

    void anEmptyListIsANo()
    {
        Desk desk;
        desk.portal.withheld = QStringList{idOfP, idOfH, idOfT};
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.refused, (Ids{1, 2, 3}));
        QCOMPARE(desk.shortcuts.availability(), nothing);
    }

    void whatIsLeftOutIsRefusedAlone()
    {
        Desk desk;
        desk.portal.withheld = QStringList{idOfH};
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.refused, Ids{2});
        QCOMPARE(desk.shortcuts.availability(),
                 availabilityWithout({QStringLiteral("Ctrl+Alt+Super+H")}, true));
        desk.portal.press(idOfH);
        desk.portal.press(idOfT);
        QTRY_COMPARE(desk.pressed, Ids{3});
    }

    void withoutAPortalAllAreRefused()
    {
        Desk desk;
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.refused, (Ids{1, 2, 3}));
        QCOMPARE(desk.shortcuts.availability(), nothing);
    }

    void withoutABusAllAreRefused()
    {
        Desk desk;
        desk.bus.stop();
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.refused, (Ids{1, 2, 3}));
        QCOMPARE(desk.shortcuts.availability(), nothing);
    }

    void aPortalWithoutShortcutsRefusesAll()
    {
        Desk desk;
        desk.portal.unknownMethods = QStringList{QStringLiteral("Register"), QStringLiteral("CreateSession")};
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.refused, (Ids{1, 2, 3}));
        QCOMPARE(desk.shortcuts.availability(), nothing);
    }

    void aPortalThatNeverAnswersGivesNothing_data()
    {
        QTest::addColumn<QString>("method");
        QTest::newRow("the introduction") << QStringLiteral("Register");
        QTest::newRow("the session") << QStringLiteral("CreateSession");
        QTest::newRow("the shortcuts") << QStringLiteral("BindShortcuts");
    }

    void aPortalThatNeverAnswersGivesNothing()
    {
        QFETCH(const QString, method);
        Desk desk(200ms);
        desk.portal.hangingMethods = QStringList{method, QStringLiteral("CreateSession")};
        if (method == QLatin1String("BindShortcuts"))
            desk.portal.hangingMethods = QStringList{method};
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_VERIFY(desk.portal.calls().contains(method));
        QCOMPARE(desk.shortcuts.availability(), nothing);
        QTRY_COMPARE(desk.refused, (Ids{1, 2, 3}));
        QCOMPARE(desk.shortcuts.availability(), nothing);
    }

    void aUserWhoTakesTimeIsWaitedFor()
    {
        Desk desk(200ms);
        desk.portal.isUserThinking = true;
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_VERIFY(desk.portal.calls().contains(QStringLiteral("CreateSession")));
        desk.portal.userAnswers();
        QTRY_VERIFY(desk.portal.calls().contains(QStringLiteral("BindShortcuts")));
        QTest::qWait(400); // UNAVOIDABLE: longer than the patience
        QCOMPARE(desk.refused, Ids());
        QCOMPARE(desk.shortcuts.availability(), nothing);
        desk.portal.userAnswers();
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
    }

    void aShortcutWithoutKeysDoesNotWorkUntilTheUserGivesItSome()
    {
        Desk desk;
        desk.portal.trigger.clear();
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.portal.bound().size(), 3);
        desk.portal.press(QStringLiteral("WNFD-3")); // What comes after the list says that it has been read.
        QTRY_COMPARE(desk.pressed, Ids{3});
        QCOMPARE(desk.shortcuts.availability(), nothing);
        QCOMPARE(desk.refused, Ids());
        desk.portal.changeKeys(QStringLiteral("Meta+F1"));
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        desk.portal.changeKeys({});
        QTRY_COMPARE(desk.shortcuts.availability(), nothing);
    }

    void aClosedSessionIsANo()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        desk.portal.closeSession();
        QTRY_COMPARE(desk.refused, (Ids{1, 2, 3}));
        QCOMPARE(desk.shortcuts.availability(), nothing);
    }

    void anAnswerOfAnotherKindIsANo()
    {
        Desk desk;
        desk.portal.sessionHandle = QVariant(7);
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.refused, (Ids{1, 2, 3}));
    }

    void pressesOfOthersAndOfUnregisteredShortcutsAreNothing()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        desk.shortcuts.unregisterShortcut(2);
        desk.portal.press(idOfH);
        desk.portal.press(QStringLiteral("other"));
        desk.portal.press(idOfP, QStringLiteral("/org/freedesktop/portal/desktop/session/1_7/other"));
        desk.portal.press(idOfT);
        QTRY_COMPARE(desk.pressed, Ids{3});
    }

    void whatIsUnregisteredAtOnceIsNotAskedFor()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        desk.shortcuts.unregisterShortcut(1);
        QVERIFY(desk.shortcuts.registerShortcut(shortcutH));
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        QCOMPARE(desk.portal.calls().size(), 3);
        QCOMPARE(desk.portal.bound().size(), 1);
        QCOMPARE(desk.portal.bound()[0].id, idOfH);
    }

    void whenAllAreUnregisteredTheUserIsNotAsked()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        desk.portal.isUserThinking = true;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        QTRY_VERIFY(desk.portal.calls().contains(QStringLiteral("CreateSession")));
        desk.shortcuts.unregisterShortcut(1);
        desk.portal.userAnswers();
        desk.portal.isUserThinking = false;
        // What another asks comes later, and is answered.
        PortalGlobalShortcuts others;
        others.installEventHandler({.pressed = {}, .refused = {}});
        QVERIFY(others.registerShortcut(shortcutP));
        QTRY_COMPARE(others.availability(), Availability());
        QCOMPARE(desk.portal.calls().count(QStringLiteral("BindShortcuts")), 1);
    }

    void aLateRegistrationIsRefused()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        QVERIFY(!desk.shortcuts.registerShortcut(shortcutH));
        QCOMPARE(desk.shortcuts.availability(),
                 availabilityWithout({QStringLiteral("Ctrl+Alt+Super+H")}, true));
        QCOMPARE(desk.refused, Ids());
    }

    void aBusThatHangsHoldsUpNobody()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        ::kill(static_cast<pid_t>(desk.bus.processId()), SIGSTOP);
        QElapsedTimer timer;
        timer.start();
        const bool areTaken = desk.registerAll();
        QCoreApplication::processEvents();
        const qint64 spent = timer.elapsed();
        ::kill(static_cast<pid_t>(desk.bus.processId()), SIGCONT);
        QVERIFY(areTaken);
        QVERIFY2(spent < 1000, qPrintable(QString::number(spent)));
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
    }

    void theEndDoesNotWaitForAnAnswer()
    {
        Desk desk;
        desk.portal.hangingMethods = QStringList{QStringLiteral("CreateSession")};
        QVERIFY(desk.portal.arrive());
        int told = 0;
        {
            PortalGlobalShortcuts shortcuts;
            shortcuts.installEventHandler({.pressed = {}, .refused = [&](uint32_t) { ++told; }});
            QVERIFY(shortcuts.registerShortcut(shortcutP));
            QTRY_VERIFY(desk.portal.calls().contains(QStringLiteral("CreateSession")));
        }
        QCOMPARE(told, 0);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::PortalGlobalShortcutsTest)
#include "portal_global_shortcuts_test.moc"
