// SPDX-License-Identifier: MIT
#include "platform/linux/kwin_frontmost_application.h"

#include "app/application_id.h"
#include "platform/installed_applications.h"
#include "support/fake_kwin.h"
#include "support/files.h"
#include "support/private_bus.h"
#include "support/test_case.h"

#include <QDBusPendingCall>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <csignal>
#include <unistd.h>

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

const auto reporter = QStringLiteral("dev.tolvane.Wrenfold.ActiveWindow");
const auto minimizer = QStringLiteral("dev.tolvane.Wrenfold.MinimizeWindows");

const RunningApplication terminal{QStringLiteral("org.example.terminal"), QStringLiteral("Terminal")};
const RunningApplication ours{applicationID(), std::nullopt};

/// One address for all tests, because the bus library looks for it once in a process.
PrivateBus &theBus()
{
    static PrivateBus bus;
    return bus;
}

/// A bus, maybe with KWin on it, and the program's side of it.
struct Desk
{
    PrivateBus &bus = theBus();
    QTemporaryDir runtimeFolder;
    std::optional<FakeKWin> kwin;
    InstalledApplications installed;
    std::optional<KWinFrontmostApplication> frontmost;

    ~Desk() { bus.stop(); }

    /// Whether everything is there. KWin is, but has not taken its name.
    [[nodiscard]] bool setUp(std::chrono::milliseconds patience = 20s)
    {
        qputenv("XDG_RUNTIME_DIR", runtimeFolder.path().toUtf8());
        if (!bus.start().isEmpty())
            return false;
        kwin.emplace(bus.address());
        frontmost.emplace(installed, patience);
        return true;
    }

    [[nodiscard]] bool reporterRuns() const { return !kwin->running(reporter).text.isEmpty(); }

    /// The same, with KWin on the bus and the script running that has reported this window.
    [[nodiscard]] bool setUpWith(const QString &windowClass)
    {
        if (!setUp() || !kwin->arrive())
            return false;
        frontmost->start();
        return QTest::qWaitFor([this] { return reporterRuns(); }) && becomesActive(windowClass);
    }

    /// Whether the program has learnt that a window of this class, known to no desktop entry, is active.
    [[nodiscard]] bool becomesActive(const QString &windowClass)
    {
        kwin->report(windowClass);
        const RunningApplication active{std::nullopt, windowClass};
        return QTest::qWaitFor([&] { return frontmost->current() == active; });
    }
};

} // namespace

/// The active window as KWin tells it, in good and bad health.
class KWinFrontmostApplicationTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", theBus().address().toUtf8());
        QVERIFY(QDir(m_data.path()).mkdir(QStringLiteral("applications")));
        putFile(m_data.filePath(QStringLiteral("applications/org.example.terminal.desktop")),
                "[Desktop Entry]\nType=Application\nName=Terminal\nExec=terminal\nStartupWMClass=term\n");
        qputenv("XDG_DATA_HOME", m_data.path().toUtf8());
        qputenv("XDG_DATA_DIRS", m_data.path().toUtf8());
    }

    void theActiveWindowsApplicationIsCurrent()
    {
        Desk desk;
        QVERIFY(desk.setUpWith(QStringLiteral("stranger")));
        QCOMPARE(desk.frontmost->availability(), Availability{});
        desk.kwin->report(QStringLiteral("term"), QStringLiteral("term"));
        QTRY_COMPARE(desk.frontmost->current(), terminal);
        desk.kwin->report(QString());
        QTRY_COMPARE(desk.frontmost->current(), std::nullopt);
        desk.kwin->report(QStringLiteral("x"), {}, QStringLiteral("org.example.terminal"));
        QTRY_COMPARE(desk.frontmost->current(), terminal);
    }

    void aWindowIsAlsoKnownByItsProgram()
    {
        Desk desk;
        QVERIFY(desk.setUpWith(QStringLiteral("stranger")));
        // The test's parent, whatever it is, runs a program; this process would count as our own.
        const QString parent = QString::number(::getppid());
        const QString program =
            QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(parent))).fileName();
        QVERIFY(!program.isEmpty());
        desk.kwin->report({}, {}, {}, parent);
        QTRY_COMPARE(desk.frontmost->current(), (RunningApplication{std::nullopt, program}));
    }

    void ourOwnWindowIsOurs_data()
    {
        QTest::addColumn<QStringList>("report");
        QTest::newRow("process") << QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                                                QString::number(QCoreApplication::applicationPid())};
        QTest::newRow("class") << QStringList{QStringLiteral("Wrenfold"), {}, {}, QStringLiteral("1")};
        QTest::newRow("class like the id") << QStringList{applicationID(), {}, {}, {}};
        QTest::newRow("desktop file") << QStringList{QStringLiteral("a"), {}, applicationID(), {}};
    }

    void ourOwnWindowIsOurs()
    {
        QFETCH(const QStringList, report);
        Desk desk;
        QVERIFY(desk.setUpWith(QStringLiteral("stranger")));
        desk.kwin->report(report[0], report[1], report[2], report[3]);
        QTRY_COMPARE(desk.frontmost->current(), ours);
        desk.frontmost->hide(ours);
        desk.frontmost->hide({std::nullopt, report[0]}); // What it would be if it were somebody else's.
        QVERIFY(desk.becomesActive(QStringLiteral("stranger"))); // By then KWin would have been asked.
        QVERIFY(!desk.kwin->calls().contains(QStringLiteral("unloadScript ") + minimizer));
    }

    void theScriptsFileIsPrivateAndGoesOnceTheScriptReports()
    {
        Desk desk;
        QVERIFY(desk.setUp() && desk.kwin->arrive());
        desk.frontmost->start();
        QTRY_VERIFY(desk.reporterRuns());
        const FakeKWin::Script script = desk.kwin->running(reporter);
        QCOMPARE(script.mode, 0600U);
        QCOMPARE(QFileInfo(script.path).path(), desk.runtimeFolder.path());
        QVERIFY(QFileInfo::exists(script.path));
        QVERIFY(desk.becomesActive(QStringLiteral("stranger")));
        QCOMPARE(namesIn(desk.runtimeFolder.path()), QStringList());
    }

    void aReportBySomebodyElseCountsForNothing()
    {
        Desk desk;
        QVERIFY(desk.setUpWith(QStringLiteral("first")));
        const QString name = QStringLiteral("stranger");
        const QDBusPendingCall forged = FakeKWin::call(
            QDBusConnection::connectToBus(desk.bus.address(), name), desk.kwin->running(reporter).text,
            QStringLiteral("Changed"), {QStringLiteral("forged"), QString(), QString(), QString()});
        QTRY_VERIFY(forged.isFinished());
        QVERIFY(!forged.isError()); // It did arrive.
        QCOMPARE(desk.frontmost->current(), (RunningApplication{std::nullopt, QStringLiteral("first")}));
        QDBusConnection::disconnectFromBus(name);
    }

    void aKWinThatRestartsIsGivenTheScriptAnew()
    {
        Desk desk;
        QVERIFY(desk.setUpWith(QStringLiteral("first")));
        desk.kwin->leave();
        QTRY_COMPARE(desk.frontmost->availability().level, Availability::Level::NotAvailable);
        QCOMPARE(desk.frontmost->current(), std::nullopt);
        QVERIFY(desk.kwin->arrive());
        QTRY_VERIFY(desk.reporterRuns());
        QVERIFY(desk.becomesActive(QStringLiteral("second")));
        QCOMPARE(desk.frontmost->availability(), Availability{});
    }

    void aKWinThatComesLaterIsFound()
    {
        Desk desk;
        QVERIFY(desk.setUp());
        desk.frontmost->start();
        QTRY_COMPARE(desk.frontmost->availability(), (Availability{Availability::Level::NotAvailable,
                                                                   QStringLiteral("KWin is not running.")}));
        QCOMPARE(desk.frontmost->current(), std::nullopt);
        QVERIFY(desk.kwin->arrive());
        QTRY_VERIFY(desk.reporterRuns());
        QVERIFY(desk.becomesActive(QStringLiteral("first")));
    }

    void aKWinThatHangsHoldsUpNobodyAndIsAskedAgain()
    {
        Desk desk;
        QVERIFY(desk.setUp(300ms) && desk.kwin->arrive());
        desk.kwin->setHanging(true);
        QElapsedTimer elapsed;
        elapsed.start();
        desk.frontmost->start();
        desk.frontmost->hide(terminal);
        QVERIFY(elapsed.elapsed() < 100);
        QTRY_COMPARE(desk.frontmost->availability(), (Availability{Availability::Level::NotAvailable,
                                                                   QStringLiteral("KWin does not answer.")}));
        desk.kwin->setHanging(false);
        QTRY_VERIFY(desk.reporterRuns());
        QVERIFY(desk.becomesActive(QStringLiteral("first")));
        QCOMPARE(desk.frontmost->availability(), Availability{});
    }

    void aScriptThatNeverReportsIsTriedAgain()
    {
        Desk desk;
        QVERIFY(desk.setUp(300ms) && desk.kwin->arrive());
        desk.frontmost->start();
        QTRY_COMPARE(desk.frontmost->availability().level, Availability::Level::NotAvailable);
        QTRY_VERIFY(desk.kwin->calls().count(QStringLiteral("start")) >= 2);
    }

    void aKWinThatRefusesTheScriptIsAskedAgain()
    {
        Desk desk;
        QVERIFY(desk.setUp(300ms) && desk.kwin->arrive());
        desk.kwin->refuseNext();
        desk.frontmost->start();
        QTRY_COMPARE(desk.frontmost->availability(),
                     (Availability{Availability::Level::NotAvailable,
                                   QStringLiteral("KWin did not load the script.")}));
        QTRY_VERIFY(desk.reporterRuns());
    }

    void withoutABusNothingIsKnownUntilThereIsOne()
    {
        Desk desk;
        QVERIFY(desk.setUp(300ms));
        desk.bus.stop();
        QElapsedTimer elapsed;
        elapsed.start();
        desk.frontmost->start();
        desk.frontmost->hide(terminal);
        QVERIFY(elapsed.elapsed() < 100);
        QTRY_COMPARE(desk.frontmost->availability(),
                     (Availability{Availability::Level::NotAvailable,
                                   QStringLiteral("There is no session bus that answers.")}));
        QCOMPARE(desk.bus.start(), QString());
        QVERIFY(desk.kwin->arrive());
        QTRY_VERIFY(desk.reporterRuns());
        QVERIFY(desk.becomesActive(QStringLiteral("first")));
    }

    void aBusThatGoesIsNoticedAndFoundAgain()
    {
        Desk desk;
        QVERIFY(desk.setUp(300ms) && desk.kwin->arrive());
        desk.frontmost->start();
        QTRY_VERIFY(desk.reporterRuns());
        QVERIFY(desk.becomesActive(QStringLiteral("first")));
        ::kill(pid_t(desk.bus.processId()), SIGKILL); // With no time left to tell who goes with it.
        desk.bus.stop();
        desk.kwin->leave();
        QTRY_COMPARE(desk.frontmost->availability().reason,
                     QStringLiteral("There is no session bus that answers."));
        QCOMPARE(desk.frontmost->current(), std::nullopt);
        QCOMPARE(desk.bus.start(), QString());
        QVERIFY(desk.kwin->arrive());
        QTRY_VERIFY(desk.reporterRuns());
        QVERIFY(desk.becomesActive(QStringLiteral("second")));
    }

    void aBusThatHangsHoldsUpNobody()
    {
        Desk desk;
        QVERIFY(desk.setUpWith(QStringLiteral("first")));
        ::kill(pid_t(desk.bus.processId()), SIGSTOP);
        QElapsedTimer elapsed;
        elapsed.start();
        desk.frontmost->hide({std::nullopt, QStringLiteral("first")});
        desk.frontmost->stop();
        desk.frontmost->start();
        desk.frontmost.reset();
        const qint64 took = elapsed.elapsed();
        ::kill(pid_t(desk.bus.processId()), SIGCONT);
        QVERIFY(took < 800); // The end of a connection may take half a second.
    }

    void stoppingTakesTheScriptAway()
    {
        Desk desk;
        QVERIFY(desk.setUpWith(QStringLiteral("first")));
        desk.frontmost->stop();
        QCOMPARE(desk.frontmost->current(), std::nullopt);
        QTRY_VERIFY(!desk.reporterRuns());
        desk.frontmost->start();
        QTRY_VERIFY(desk.reporterRuns());
        QVERIFY(desk.becomesActive(QStringLiteral("second")));
        desk.frontmost.reset();
        QTRY_VERIFY(!desk.reporterRuns());
    }

    void stoppingTakesAwayAScriptThatIsBeingLoaded()
    {
        Desk desk;
        QVERIFY(desk.setUp() && desk.kwin->arrive());
        desk.frontmost->start();
        const QString load = QStringLiteral("loadScript ") + reporter;
        QTRY_VERIFY(desk.kwin->calls().contains(load));
        desk.frontmost->stop();
        QTRY_COMPARE(desk.kwin->calls().last(), QStringLiteral("unloadScript ") + reporter);
        QVERIFY(desk.kwin->running(reporter).text.isEmpty());
        QCOMPARE(namesIn(desk.runtimeFolder.path()), QStringList());
    }

    void whatAnEarlierProcessLeftBehindGoesFirst()
    {
        Desk desk;
        QVERIFY(desk.setUp() && desk.kwin->arrive());
        QVERIFY(desk.kwin->loadScript(QStringLiteral("/nowhere"), reporter) >= 0);
        desk.frontmost->start();
        QTRY_VERIFY(desk.reporterRuns());
    }

    void hidingMinimizesWhatTheApplicationsWindowsCallThemselves()
    {
        Desk desk;
        QVERIFY(desk.setUpWith(QStringLiteral("stranger")));
        desk.kwin->report(QStringLiteral("term"), QStringLiteral("t\"1"));
        QTRY_COMPARE(desk.frontmost->current(), terminal);
        desk.frontmost->hide(terminal);
        QTRY_VERIFY(!desk.kwin->running(minimizer).text.isEmpty());
        QVERIFY(desk.kwin->running(minimizer).text.contains(
            "const names = [[\"term\", \"t\\u00221\", \"\"]];\n"));
        desk.kwin->reportMinimized();
        QTRY_VERIFY(desk.kwin->running(minimizer).text.isEmpty());
        QCOMPARE(namesIn(desk.runtimeFolder.path()), QStringList());
        QVERIFY(desk.reporterRuns());
        desk.frontmost->hide(terminal);
        QTRY_VERIFY(!desk.kwin->running(minimizer).text.isEmpty());
    }

    void hidingWhatIsBeingHiddenStartsNothingAnew()
    {
        Desk desk;
        QVERIFY(desk.setUpWith(QStringLiteral("first")));
        const RunningApplication first{std::nullopt, QStringLiteral("first")};
        for (int i = 0; i < 3; ++i)
            desk.frontmost->hide(first);
        QTRY_VERIFY(!desk.kwin->running(minimizer).text.isEmpty());
        desk.frontmost->hide(first);
        QVERIFY(desk.becomesActive(QStringLiteral("second")));
        QCOMPARE(desk.kwin->calls().count(QStringLiteral("unloadScript ") + minimizer),
                 1); // It is the first step.
    }

    void anApplicationThatWasNeverActiveIsNotHidden()
    {
        Desk desk;
        QVERIFY(desk.setUpWith(QStringLiteral("first")));
        desk.frontmost->hide(terminal);
        QVERIFY(desk.becomesActive(QStringLiteral("second")));
        QVERIFY(!desk.kwin->calls().contains(QStringLiteral("unloadScript ") + minimizer));
    }

private:
    QTemporaryDir m_data;
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::KWinFrontmostApplicationTest)
#include "kwin_frontmost_application_test.moc"
