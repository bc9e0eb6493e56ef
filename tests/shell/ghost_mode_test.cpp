// SPDX-License-Identifier: MIT
#include "model/store_on_fakes.h"
#include "platform/linux/x11_panel_window.h"
#include "shell/panel_controller.h"
#include "support/test_case.h"
#include "support/x11_program.h"
#include "support/x11_server.h"

#include <QProcess>

namespace wrenfold {

using namespace x11;

namespace {

/// With the pointer, as a person does it.
void clickAt(const QPoint &point)
{
    const QStringList arguments = {QStringLiteral("mousemove"), QString::number(point.x()),
                                   QString::number(point.y()), QStringLiteral("click"), QStringLiteral("1")};
    QCOMPARE(QProcess::execute(QStringLiteral("xdotool"), arguments), 0);
}

} // namespace

/// Runs once for each window manager, see with_x11.sh.
class GhostModeTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void clicksReachWhatLiesBehindUntilThePanelIsShownAgain()
    {
        StoreOnFakes fakes{TaskList{}};
        X11PanelWindow ability;
        PanelController controller(fakes.store, fakes.clock, ability, {});
        FocusPanel &panel = controller.panel();
        X11Program behind("Behind");
        QTRY_VERIFY(valuesOf(root(), "_NET_CLIENT_LIST").contains(behind.window()));
        behind.setFullScreen(true);
        controller.showAndPin();
        QVERIFY(QTest::qWaitForWindowActive(&panel));
        QVERIFY(comeToBeMet(*panel.windowHandle()));
        const QPoint grip = panel.geometry().topLeft() + QPoint(172, 7);
        const auto isPanelAtGrip = [&] { return windowAt(grip) == topLevelOf(idOf(*panel.windowHandle())); };
        QVERIFY(comesToStay(isPanelAtGrip));

        clickAt(grip);
        QCOMPARE(behind.presses(), 0);

        fakes.store.isGhostMode.set(true);
        QVERIFY(comesToStay([&] { return !isPanelAtGrip(); }));
        clickAt(grip);
        QTRY_COMPARE(behind.presses(), 1);
        controller.hide();
        QTRY_VERIFY(!isMapped(*panel.windowHandle()));
        clickAt(grip);
        QTRY_COMPARE(behind.presses(), 2);

        controller.showAndPin();
        QVERIFY(panel.isVisible());
        QVERIFY(!fakes.store.isGhostMode.value());
        QVERIFY(QTest::qWaitForWindowActive(&panel));
        QVERIFY(comesToStay(isPanelAtGrip));
        clickAt(grip);
        QCOMPARE(behind.presses(), 2);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::GhostModeTest)
#include "ghost_mode_test.moc"
