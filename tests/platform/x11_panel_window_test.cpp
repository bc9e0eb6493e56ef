// SPDX-License-Identifier: MIT
#include "platform/linux/x11_panel_window.h"
#include "support/test_case.h"
#include "support/x11_server.h"

#include <QRasterWindow>

namespace wrenfold {

using namespace x11;

/// Runs once for each window manager and once without, see with_x11.sh.
class X11PanelWindowTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theDesktopSaysWhetherItKeepsThePanelOnTopAndOnAllWorkspaces()
    {
        Availability expected;
        if (qgetenv("WRENFOLD_TEST_WINDOW_MANAGER") == "none")
            expected = {Availability::Level::Limited, QStringLiteral("No window manager is running.")};
        const X11PanelWindow desktop;
        QCOMPARE(desktop.availability(), expected);
        QCOMPARE(desktop.workspacesAvailability(), expected);
    }

    void aShownPanelIsOnEveryDesktopAboveOthersAndOutOfLists()
    {
        X11PanelWindow desktop;
        QRasterWindow window;
        window.setFlags(desktop.flags());
        window.resize(344, 480);
        for (int time = 0; time < 3; ++time) {
            desktop.pin(window, PanelLevel::Floating);
            window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&window));
            QVERIFY(comeToBeMet(window));
            window.hide();
            QTRY_VERIFY(!isMapped(window));
        }
    }

    void theWishesMayBeRepeatedRightAfterShowing()
    {
        X11PanelWindow desktop;
        QRasterWindow window;
        window.setFlags(desktop.flags());
        desktop.pin(window, PanelLevel::Floating);
        window.show();
        desktop.pin(window, PanelLevel::AboveFullScreen);
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(comeToBeMet(window));
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::X11PanelWindowTest)
#include "x11_panel_window_test.moc"
