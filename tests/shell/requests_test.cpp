// SPDX-License-Identifier: MIT
#include "shell/desktop_report.h"
#include "shell/program_on_fakes.h"
#include "support/test_case.h"

namespace wrenfold {

/// What a running program does when another start, or a key of the desktop, asks for it.
class RequestsTest : public TestCase
{
    Q_OBJECT

    static QString ask(const Program &program, Request request)
    {
        return program.fakes.singleInstance->startAgain(request).value_or(QStringLiteral("nobody listens"));
    }

private Q_SLOTS:
    void togglingHidesThePanelThatIsInSightAndShowsItAgain()
    {
        Program program;
        program.start();
        QVERIFY(QTest::qWaitForWindowActive(Program::panel()));
        QCOMPARE(ask(program, Request::TogglePanel), QString());
        QVERIFY(!Program::panel()->isVisible());
        QCOMPARE(ask(program, Request::TogglePanel), QString());
        QVERIFY(Program::panel()->isVisible());
        QVERIFY(QTest::qWaitForWindowActive(Program::panel()));
    }

    void togglingBringsBackAPanelThatTheWindowManagerHasIconified()
    {
        Program program;
        program.start();
        QVERIFY(QTest::qWaitForWindowActive(Program::panel()));
        QWindow *window = Program::panel()->windowHandle();
        window->showMinimized();
        QTRY_VERIFY(!Program::panel()->isInSight());
        QCOMPARE(program.fakes.panelWindow->takeBroughtBack(), QList<QWindow *>());
        QCOMPARE(ask(program, Request::TogglePanel), QString());
        QVERIFY(Program::panel()->isVisible());
        QCOMPARE(program.fakes.panelWindow->takeBroughtBack(), QList<QWindow *>({window}));
    }

    void aStartByTheMessageBusDoesWhatTheBusAsksFor_data()
    {
        QTest::addColumn<Request>("request");
        QTest::addColumn<bool>("isShown");
        QTest::newRow("show") << Request::ShowPanel << true;
        QTest::newRow("toggle") << Request::TogglePanel << true;
        QTest::newRow("hide") << Request::HidePanel << false;
        QTest::newRow("new") << Request::NewTodo << true;
        QTest::newRow("report") << Request::DesktopReport << false;
    }

    void aStartByTheMessageBusDoesWhatTheBusAsksFor()
    {
        QFETCH(Request, request);
        QFETCH(bool, isShown);
        Program program;
        program.start(std::nullopt);
        QVERIFY(!Program::panel());
        static_cast<void>(ask(program, request));
        QCOMPARE(Program::panel() && Program::panel()->isVisible(), isShown);
        if (isShown)
            QTRY_COMPARE(Program::composer()->hasFocus(), request == Request::NewTodo);
    }

    void aStartByTheMessageBusWhoseRequestGotLostShowsThePanel()
    {
        Program program;
        program.start(std::nullopt);
        program.fakes.clock->advance(std::chrono::milliseconds(1999));
        QVERIFY(!Program::panel());
        program.fakes.clock->advance(std::chrono::milliseconds(1));
        QVERIFY(Program::panel()->isVisible());
    }

    void aStartByTheMessageBusThatHidesThePanelLeavesItHidden()
    {
        Program program;
        program.start(std::nullopt);
        static_cast<void>(ask(program, Request::HidePanel));
        program.fakes.clock->advance(std::chrono::seconds(10));
        QVERIFY(!Program::panel() || !Program::panel()->isVisible());
    }

    void hidingHidesThePanelAndAgainDoesNothing()
    {
        Program program;
        program.start();
        QCOMPARE(ask(program, Request::HidePanel), QString());
        QVERIFY(!Program::panel()->isVisible());
        QCOMPARE(ask(program, Request::HidePanel), QString());
        QVERIFY(!Program::panel()->isVisible());
    }

    void aNewTodoFocusesTheFieldWhetherThePanelWasInSightOrNot_data()
    {
        QTest::addColumn<bool>("isHidden");
        QTest::newRow("in sight") << false;
        QTest::newRow("hidden") << true;
    }

    void aNewTodoFocusesTheFieldWhetherThePanelWasInSightOrNot()
    {
        QFETCH(bool, isHidden);
        Program program;
        program.start();
        QVERIFY(QTest::qWaitForWindowActive(Program::panel()));
        QVERIFY(!Program::composer()->hasFocus());
        if (isHidden) {
            QCOMPARE(ask(program, Request::HidePanel), QString());
            QTRY_VERIFY(
                !QGuiApplication::focusWindow()); // Another request comes in a later turn of the loop.
        }
        QCOMPARE(ask(program, Request::NewTodo), QString());
        QVERIFY(Program::panel()->isVisible());
        QTRY_VERIFY(Program::composer()->hasFocus());
    }

    void theReportIsThatOfTheRunningProgram()
    {
        Program program;
        program.start();
        program.fakes.panelWindow->setAvailability(
            {Availability::Level::Limited, QStringLiteral("Not above.")});
        const QString report = ask(program, Request::DesktopReport);
        QCOMPARE(report, desktopReport(program.fakes.platform));
        QVERIFY(report.contains(QStringLiteral("on top: limited. Not above.")));
    }

    void aStartForANewTodoFocusesTheField()
    {
        Program program;
        program.start(Request::NewTodo);
        QTRY_VERIFY(Program::composer()->hasFocus());
    }

    void aStartToToggleShowsThePanel()
    {
        Program program;
        program.start(Request::TogglePanel);
        QVERIFY(Program::panel()->isVisible());
        QVERIFY(QTest::qWaitForWindowActive(Program::panel()));
        QVERIFY(!Program::composer()->hasFocus());
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::RequestsTest)
#include "requests_test.moc"
