// SPDX-License-Identifier: MIT
#include "app/launch_options.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

using Mode = LaunchOptions::Mode;

/// Splits at blanks.
LaunchOptions parsed(const char *arguments)
{
    return LaunchOptions::parse(QString::fromUtf8(arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

LaunchOptions request(Mode mode, const QStringList &titles, const QString &goal = {})
{
    LaunchOptions options;
    options.mode = mode;
    options.taskTitles = titles;
    options.mediumGoal = goal;
    return options;
}

LaunchOptions usageError(const char *text)
{
    LaunchOptions options;
    options.mode = Mode::UsageError;
    options.usageError = QString::fromUtf8(text);
    return options;
}

const QString a = QStringLiteral("A");
const QString b = QStringLiteral("B");
const QString goal = QStringLiteral("G");

} // namespace

class LaunchOptionsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void noArgumentsAreAnInteractiveRun() { QCOMPARE(parsed(""), LaunchOptions()); }

    void unknownAndPartialOptionsAreAnInteractiveRun()
    {
        QCOMPARE(parsed("A --platform offscreen --verbose --debug --DEBUG-SORT --debug-sort=A --helpful"),
                 LaunchOptions());
    }

    void aSplitTakesTheArgumentBehindIt()
    {
        QCOMPARE(parsed("--debug-split A B"), request(Mode::DebugSplit, {a}));
        QCOMPARE(parsed("B --debug-split A --debug-split B"), request(Mode::DebugSplit, {a}));
    }

    void anEmptyOrJapaneseTitleIsATitle()
    {
        QCOMPARE(LaunchOptions::parse({QStringLiteral("--debug-split"), QString()}),
                 request(Mode::DebugSplit, {QString()}));
        QCOMPARE(parsed("--debug-split 資料を作る"),
                 request(Mode::DebugSplit, {QStringLiteral("資料を作る")}));
    }

    void aSplitWithoutATitleIsAUsageError()
    {
        QCOMPARE(parsed("--debug-split"), usageError("--debug-split requires a task title"));
        QCOMPARE(parsed("--goal G --debug-split"), usageError("--debug-split requires a task title"));
    }

    void aSplitTakesItsGoalFromAnywhere()
    {
        QCOMPARE(parsed("--debug-split A --goal G"), request(Mode::DebugSplit, {a}, goal));
        QCOMPARE(parsed("--goal G --debug-split A"), request(Mode::DebugSplit, {a}, goal));
    }

    void splitFollowedByGoalTakesGoalItselfAsTheTitle()
    {
        QCOMPARE(parsed("--debug-split --goal"), request(Mode::DebugSplit, {QStringLiteral("--goal")}));
    }

    void splitFollowedByHelpTakesHelpAsTheTitle()
    {
        QCOMPARE(parsed("--debug-split --help"), request(Mode::DebugSplit, {QStringLiteral("--help")}));
    }

    void withASplitAndASortOnlyTheSplitRunsWhereverItStands()
    {
        QCOMPARE(parsed("--debug-split A --debug-sort A B"), request(Mode::DebugSplit, {a}));
        QCOMPARE(parsed("--debug-sort A B --debug-split A"), request(Mode::DebugSplit, {a}));
        QCOMPARE(parsed("--debug-sort A B --debug-split"), usageError("--debug-split requires a task title"));
    }

    void sortWithTheGoalBehindOrBeforeTheTitlesIsTheSame()
    {
        QCOMPARE(parsed("--debug-sort A B --goal G"), request(Mode::DebugSort, {a, b}, goal));
        QCOMPARE(parsed("--goal G --debug-sort A B"), request(Mode::DebugSort, {a, b}, goal));
    }

    void sortATheGoalGBTakesOnlyAAndFails()
    {
        QCOMPARE(parsed("--debug-sort A --goal G B"),
                 usageError("--debug-sort requires at least two task titles"));
    }

    void aSortWithFewerThanTwoTitlesIsAUsageError()
    {
        const LaunchOptions error = usageError("--debug-sort requires at least two task titles");
        QCOMPARE(parsed("--debug-sort"), error);
        QCOMPARE(parsed("--debug-sort A"), error);
        QCOMPARE(parsed("A B --debug-sort"), error);
        QCOMPARE(parsed("--debug-sort --debug-sort A B"), error);
    }

    void aSortStopsAtTheNextOptionOfAnyName()
    {
        QCOMPARE(parsed("--debug-sort A -b --verbose B"),
                 request(Mode::DebugSort, {a, QStringLiteral("-b")}));
    }

    void goalAsTheLastArgumentIsAnEmptyGoal()
    {
        QCOMPARE(parsed("--debug-sort A B --goal"), request(Mode::DebugSort, {a, b}));
        QCOMPARE(parsed("--debug-split A --goal"), request(Mode::DebugSplit, {a}));
    }

    void aValueIsTakenAsItStandsBehindTheFirstOfItsKey()
    {
        const QStringList arguments = {QStringLiteral("--goal"), QStringLiteral("--verbose"),
                                       QStringLiteral("--goal"), goal};
        QCOMPARE(debugValue(QStringLiteral("--goal"), arguments), QStringLiteral("--verbose"));
        QCOMPARE(debugValue(QStringLiteral("--Goal"), arguments), QString());
        QCOMPARE(debugValue(QStringLiteral("--goal"), {}), QString());
    }

    void theSelfCheckYieldsToSortAndSplitOnly()
    {
        QCOMPARE(parsed("--help --version --debug-preserve-completed"),
                 request(Mode::DebugPreserveCompleted, {}));
        QCOMPARE(parsed("--debug-preserve-completed --debug-sort A B"), request(Mode::DebugSort, {a, b}));
        QCOMPARE(parsed("--debug-preserve-completed --debug-split A"), request(Mode::DebugSplit, {a}));
    }

    void helpAndVersionHaveTheirUsualNames()
    {
        QCOMPARE(parsed("--help"), request(Mode::Help, {}));
        QCOMPARE(parsed("--version -h"), request(Mode::Help, {}));
        QCOMPARE(parsed("--version"), request(Mode::Version, {}));
        QCOMPARE(parsed("-v"), request(Mode::Version, {}));
    }

    // The demonstration

    void theDemonstrationIsAskedForAnywhereInTheList()
    {
        LaunchOptions demonstration;
        demonstration.isDemonstration = true;
        QCOMPARE(parsed("--marketing-demo"), demonstration);
        QCOMPARE(parsed("A --verbose --marketing-demo B"), demonstration);
        QCOMPARE(parsed("--marketing-demo=1 --Marketing-demo -marketing-demo"), LaunchOptions());
    }

    void theVariableMeansTheDemonstrationOnlyWhenItIsExactlyOne_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("isDemonstration");
        QTest::newRow("1") << QStringLiteral("1") << true;
        QTest::newRow("true") << QStringLiteral("true") << false;
        QTest::newRow("0") << QStringLiteral("0") << false;
        QTest::newRow("01") << QStringLiteral("01") << false;
        QTest::newRow("1 and a blank") << QStringLiteral("1 ") << false;
        QTest::newRow("empty") << QString() << false;
    }

    void theVariableMeansTheDemonstrationOnlyWhenItIsExactlyOne()
    {
        QFETCH(QString, value);
        QProcessEnvironment environment;
        environment.insert(QStringLiteral("WRENFOLD_MARKETING_DEMO"), value);
        QTEST(LaunchOptions::parse({}, environment).isDemonstration, "isDemonstration");
        QVERIFY(LaunchOptions::parse({QStringLiteral("--marketing-demo")}, environment).isDemonstration);
    }

    void theBoardIsClosedOnlyByItsOwnSwitchWhichStartsNoDemonstration()
    {
        QVERIFY(!parsed("--marketing-demo").isBoardClosed);
        QVERIFY(parsed("--marketing-demo-closed --marketing-demo").isBoardClosed);
        QVERIFY(!parsed("--marketing-demo-closed").isDemonstration);
    }

    // Requests

    void eachRequestHasItsOption_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<Request>("request");
        QTest::newRow("none") << QStringLiteral("--verbose") << Request::ShowPanel;
        QTest::newRow("toggle") << QStringLiteral("--toggle-panel") << Request::TogglePanel;
        QTest::newRow("hide") << QStringLiteral("--hide-panel") << Request::HidePanel;
        QTest::newRow("new") << QStringLiteral("--new-todo") << Request::NewTodo;
        QTest::newRow("report") << QStringLiteral("--desktop-report") << Request::DesktopReport;
        QTest::newRow("the first of two") << QStringLiteral("--new-todo --hide-panel") << Request::NewTodo;
        QTest::newRow("other spellings")
            << QStringLiteral("--Hide-panel hide-panel --hide") << Request::ShowPanel;
    }

    void eachRequestHasItsOption()
    {
        QFETCH(QString, option);
        QTEST(LaunchOptions::parse(option.split(QLatin1Char(' '))).request, "request");
    }

    void showingThePanelHasNoOption()
    {
        QCOMPARE(parsed("--show --hide-panel").request, Request::HidePanel);
        QCOMPARE(unknownOption({QStringLiteral("--show")}), QStringLiteral("--show"));
    }

    void onlyTheBussOwnOptionLeavesTheRequestToTheBus()
    {
        QVERIFY(parsed("--verbose --dbus-service").isBusService);
        QVERIFY(!parsed("--toggle-panel").isBusService);
        QVERIFY(!parsed("--dbus-service --marketing-demo").isBusService);
    }

    void anUnknownOptionIsFound_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("unknown"); // Empty if there is none.
        const QString none;
        QTest::newRow("none") << none << none;
        QTest::newRow("all of ours")
            << QStringLiteral(
                   "--verbose --goal G --marketing-demo --marketing-demo-closed --toggle-panel --hide-panel "
                   "--new-todo --desktop-report --dbus-service")
            << none;
        QTest::newRow("no options") << QStringLiteral("A -b - hide-panel") << none;
        QTest::newRow("a slip of the finger")
            << QStringLiteral("--hide-panle") << QStringLiteral("--hide-panle");
        QTest::newRow("another hyphen")
            << QStringLiteral("--toggle_panel") << QStringLiteral("--toggle_panel");
        QTest::newRow("capitals") << QStringLiteral("--Verbose") << QStringLiteral("--Verbose");
        QTest::newRow("with a value") << QStringLiteral("--verbose=1") << QStringLiteral("--verbose=1");
        QTest::newRow("the first of two, behind a known one")
            << QStringLiteral("--hide-panel --one --two") << QStringLiteral("--one");
    }

    void anUnknownOptionIsFound()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, unknown);
        QCOMPARE(unknownOption(arguments.split(QLatin1Char(' '))).value_or(QString()), unknown);
    }

    void aDemonstrationAsksNobodyForAnything()
    {
        QCOMPARE(parsed("--hide-panel --marketing-demo").request, Request::ShowPanel);
    }

    void aRequestsWordMeansThatRequest()
    {
        for (const Request request : {Request::ShowPanel, Request::TogglePanel, Request::HidePanel,
                                      Request::NewTodo, Request::DesktopReport})
            QCOMPARE(requestNamed(wordFor(request)), std::optional(request));
        QCOMPARE(requestNamed(QString()), std::nullopt);
        QCOMPARE(requestNamed(QStringLiteral("fly")), std::nullopt);
    }

    void theHelpNamesEveryOption()
    {
        for (const char *option :
             {"--verbose", "--help", "--version", "--debug-split", "--debug-sort", "--goal",
              "--debug-preserve-completed", "WRENFOLD_DEBUG", "--marketing-demo", "--marketing-demo-closed",
              "WRENFOLD_MARKETING_DEMO", "--toggle-panel", "--hide-panel", "--new-todo", "--desktop-report",
              "--dbus-service"})
            QVERIFY2(LaunchOptions::help().contains(QLatin1String(option)), option);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::LaunchOptionsTest)
#include "launch_options_test.moc"
