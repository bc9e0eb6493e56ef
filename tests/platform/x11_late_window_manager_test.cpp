// SPDX-License-Identifier: MIT
#include "platform/linux/x11_panel_window.h"
#include "support/test_case.h"
#include "support/x11_program.h"
#include "support/x11_server.h"

#include <QProcess>
#include <QRasterWindow>

namespace wrenfold {

using namespace x11;

/// Window managers and compositors that come and go while the program runs. Begins without one.
class X11LateWindowManagerTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aWindowManagerThatStartsLaterFindsTheWishes()
    {
        X11PanelWindow desktop;
        QRasterWindow window;
        window.setFlags(desktop.flags());
        desktop.pin(window, PanelLevel::Floating);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        QProcess manager;
        manager.start(QStringLiteral("openbox"), {});
        QTRY_COMPARE_WITH_TIMEOUT(desktop.availability(), Availability(), 20000);
        // It has taken the window in when it has listed it.
        QTRY_COMPARE_WITH_TIMEOUT(valuesOf(root(), "_NET_CLIENT_LIST"), Values{idOf(window)}, 20000);
        QCOMPARE(valuesOf(idOf(window), "_NET_WM_DESKTOP"), Values{0xFFFFFFFF});
        QCOMPARE(missingStates(window), QList<QByteArray>());

        manager.terminate();
        QVERIFY(manager.waitForFinished());
        QTRY_COMPARE(desktop.availability().reason, QStringLiteral("No window manager is running."));
    }

    void aWindowManagerThatKnowsNeitherAboveNorAllWorkspacesMakesItLimited()
    {
        QProcess manager;
        manager.start(QStringLiteral("openbox"), {});
        const X11PanelWindow desktop;
        QTRY_COMPARE_WITH_TIMEOUT(desktop.availability(), Availability(), 20000);
        const Values listed = valuesOf(root(), "_NET_SUPPORTED");
        Values others = listed;
        QCOMPARE(others.removeAll(atom("_NET_WM_STATE_ABOVE")), 1);
        QCOMPARE(others.removeAll(atom("_NET_WM_DESKTOP")), 1);
        setValues(root(), "_NET_SUPPORTED", others);
        QCOMPARE(desktop.availability().level, Availability::Level::Limited);
        QCOMPARE(desktop.availability().reason,
                 QStringLiteral("The window manager does not keep windows above others."));
        QCOMPARE(desktop.workspacesAvailability().reason,
                 QStringLiteral("The window manager does not put windows on every workspace."));

        manager.terminate();
        QVERIFY(manager.waitForFinished());
        QTRY_COMPARE(desktop.availability().reason, QStringLiteral("No window manager is running."));
    }

    void translucencyComesAndGoesWithTheCompositor()
    {
        X11PanelWindow desktop;
        QList<bool> told;
        desktop.watchTranslucency([&told](bool isTranslucent) { told.append(isTranslucent); });
        QCOMPARE(told, QList<bool>({false}));
        {
            // A program of its own, as a compositor is.
            X11Program compositor("Compositor");
            compositor.own("_NET_WM_CM_S0");
            QTRY_COMPARE(told, QList<bool>({false, true}));
            compositor.own("WM_S0");
        }
        QTRY_COMPARE(told, QList<bool>({false, true, false}));

        const X11Program next("Compositor");
        next.own("_NET_WM_CM_S0");
        QTRY_COMPARE(told, QList<bool>({false, true, false, true}));
        desktop.watchTranslucency([&told](bool isTranslucent) { told = {isTranslucent}; });
        QCOMPARE(told, QList<bool>({true}));
        desktop.watchTranslucency({});
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::X11LateWindowManagerTest)
#include "x11_late_window_manager_test.moc"
