// SPDX-License-Identifier: MIT
#include "platform/shortcuts_desk.h"
#include "support/test_case.h"

namespace wrenfold {

/// The desktop's portal that goes and comes back.
class PortalShortcutsRestartTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("DBUS_SESSION_BUS_ADDRESS", theBus().address().toUtf8()); }

    void aPortalThatRestartsIsAskedAgain()
    {
        Desk desk;
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        desk.portal.leave();
        QTRY_COMPARE(desk.shortcuts.availability(), nothing);
        QVERIFY(desk.portal.arrive());
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        desk.portal.press(idOfP);
        QTRY_COMPARE(desk.pressed, Ids{1});
        QCOMPARE(desk.refused, Ids());
    }

    void aPortalThatGoesBeforeItRepliesIsAskedWhenItIsBack_data()
    {
        QTest::addColumn<QString>("method");
        QTest::newRow("to the introduction") << QStringLiteral("Register");
        QTest::newRow("about the session") << QStringLiteral("CreateSession");
        QTest::newRow("about the shortcuts") << QStringLiteral("BindShortcuts");
    }

    void aPortalThatGoesBeforeItRepliesIsAskedWhenItIsBack()
    {
        QFETCH(const QString, method);
        Desk desk;
        desk.portal.hangingMethods = QStringList{method};
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_VERIFY(desk.portal.calls().contains(method));
        desk.portal.hangingMethods.clear();
        QVERIFY(desk.portal.arrive()); // It leaves first.
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        desk.portal.press(idOfP);
        QTRY_COMPARE(desk.pressed, Ids{1});
        QCOMPARE(desk.refused, Ids());
        QCOMPARE(desk.portal.calls().last(), QStringLiteral("BindShortcuts"));
    }

    void aPortalThatGoesBeforeTheUserAnswersIsAskedWhenItIsBack_data()
    {
        QTest::addColumn<QString>("question");
        QTest::newRow("about the session") << QStringLiteral("CreateSession");
        QTest::newRow("about the shortcuts") << QStringLiteral("BindShortcuts");
    }

    void aPortalThatGoesBeforeTheUserAnswersIsAskedWhenItIsBack()
    {
        QFETCH(const QString, question);
        Desk desk;
        desk.portal.isUserThinking = true;
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_VERIFY(desk.portal.calls().contains(QStringLiteral("CreateSession")));
        if (question == QLatin1String("BindShortcuts")) {
            desk.portal.userAnswers();
            QTRY_VERIFY(desk.portal.calls().contains(question));
        }
        desk.portal.leave();
        desk.portal.isUserThinking = false;
        QVERIFY(desk.portal.arrive());
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        QCOMPARE(desk.refused, Ids());
    }

    void aPortalThatGoesAfterItsNoIsNotAskedAgain()
    {
        Desk desk;
        desk.portal.bindResponse = 1;
        QVERIFY(desk.portal.arrive());
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.refused, (Ids{1, 2, 3}));
        const qsizetype calls = desk.portal.calls().size();
        QVERIFY(desk.portal.arrive()); // It leaves first.
        // What another asks of it says that the portal has been seen to come.
        PortalGlobalShortcuts others;
        others.installEventHandler({.pressed = {}, .refused = {}});
        QVERIFY(others.registerShortcut(shortcutP));
        QTRY_COMPARE(desk.portal.calls().count(QStringLiteral("BindShortcuts")), 2);
        QCOMPARE(desk.portal.calls().size(), calls + 3);
    }

    void aPortalThatComesAfterTheNoIsNotAsked()
    {
        Desk desk;
        QVERIFY(desk.registerAll());
        QTRY_COMPARE(desk.refused, (Ids{1, 2, 3}));
        QVERIFY(desk.portal.arrive());
        // What another asks of it says that the portal has been seen to come.
        PortalGlobalShortcuts others;
        others.installEventHandler({.pressed = {}, .refused = {}});
        QVERIFY(others.registerShortcut(shortcutP));
        QTRY_COMPARE(others.availability(), Availability());
        QCOMPARE(desk.portal.calls().size(), 3);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::PortalShortcutsRestartTest)
#include "portal_shortcuts_restart_test.moc"
