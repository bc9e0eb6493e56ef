// SPDX-License-Identifier: MIT
#include "shell/desktop_report.h"
#include "support/fake_platform.h"
#include "support/test_case.h"

#include <QGuiApplication>

namespace wrenfold {

namespace {

QString u(const char *text)
{
    return QString::fromUtf8(text);
}

using Level = Availability::Level;

} // namespace

class DesktopReportTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aLineSaysHowFarAnAbilityWorksWhyAndWhatToDo_data()
    {
        QTest::addColumn<DesktopAbility>("ability");
        QTest::addColumn<QString>("line");
        QTest::newRow("works") << DesktopAbility{u("guard"), {}, u("Do it.")} << u("guard: works\n");
        QTest::newRow("limited") << DesktopAbility{u("guard"),
                                                   {Level::Limited, u("Half of it.")},
                                                   u("Do it.")}
                                 << u("guard: limited. Half of it. Do it.\n");
        QTest::newRow("not available")
            << DesktopAbility{u("guard"), {Level::NotAvailable, u("None.")}, u("Do it.")}
            << u("guard: not available. None. Do it.\n");
        QTest::newRow("no remedy") << DesktopAbility{u("label"), {Level::Limited, u("Half.")}, {}}
                                   << u("label: limited. Half.\n");
        QTest::newRow("several lines") << DesktopAbility{u("label"), {Level::Limited, u("Half.\nof it")}, {}}
                                       << u("label: limited. Half. of it\n");
    }

    void aLineSaysHowFarAnAbilityWorksWhyAndWhatToDo()
    {
        QFETCH(DesktopAbility, ability);
        QTEST(desktopReport(QList<DesktopAbility>{ability}), "line");
    }

    void xwaylandIsAdvisedOnlyToWhoIsNotThere()
    {
        FakePlatform fakes;
        fakes.panelWindow->setAvailability({Level::Limited, u("Not above.")});
        fakes.panelWindow->setWorkspacesAvailability({Level::NotAvailable, u("Not everywhere.")});
        const QStringList lines = desktopReport(fakes.platform).split(u'\n');
        QVERIFY(!lines.at(3).contains(u("Xwayland")));
        QVERIFY(lines.at(4).contains(u("Xwayland")));
    }

    void eachAbilityHasItsLine()
    {
        FakePlatform fakes;
        fakes.panelWindow->setAvailability({Level::Limited, u("Not above.")});
        fakes.panelWindow->setWorkspacesAvailability({Level::NotAvailable, u("Not everywhere.")});
        fakes.notificationCenter->setAvailability({Level::NotAvailable, u("No daemon.")});
        QStringList lines = desktopReport(fakes.platform).split(u'\n');
        QCOMPARE(lines.takeLast(), QString());
        QStringList beginnings;
        for (const QString &line : lines)
            beginnings << line.section(u(". "), 0, 1);
        QCOMPARE(beginnings,
                 (QStringList{u("status item: works"), u("label: works"), u("hot keys: works"),
                              u("on top: limited. Not above"),
                              u("all workspaces: not available. Not everywhere"), u("guard: works"),
                              u("reorder key: works"), u("notifications: not available. No daemon")}));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::DesktopReportTest)
#include "desktop_report_test.moc"
