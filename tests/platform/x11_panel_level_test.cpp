// SPDX-License-Identifier: MIT
#include "platform/linux/x11_panel_window.h"
#include "support/test_case.h"
#include "support/x11_program.h"
#include "support/x11_server.h"

#include <QRasterWindow>

namespace wrenfold {

using namespace x11;

/// The panel's window and full-screen windows. Runs once for each window manager, see with_x11.sh.
class X11PanelLevelTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aPinnedPanelLiesAboveAFullScreenWindowAndIsGivenBackAfterwards()
    {
        X11PanelWindow desktop;
        QRasterWindow window;
        showPanel(desktop, window, PanelLevel::AboveFullScreen);
        const QRect place = window.geometry();

        X11Program video("Video");
        bringToFrontFullScreen(video);
        QVERIFY(comesToLieAt(place.center(), idOf(window)));
        QTRY_VERIFY(keepsAboveByItself() || isUnmanaged(window));
        QVERIFY(isMapped(window));

        // A press in it gives it the keyboard, by which nothing else changes.
        QTest::mouseClick(&window, Qt::LeftButton);
        if (!keepsAboveByItself())
            QTRY_COMPARE(QGuiApplication::focusWindow(), &window);

        video.activate();
        QTRY_COMPARE(QGuiApplication::focusWindow(), nullptr);
        video.setFullScreen(false);
        QTRY_VERIFY(!isUnmanaged(window));
        QTRY_VERIFY(valuesOf(root(), "_NET_CLIENT_LIST_STACKING").contains(idOf(window)));
        QVERIFY(comeToBeMet(window));
        QCOMPARE(window.geometry(), place);
        QCOMPARE(valuesOf(root(), "_NET_ACTIVE_WINDOW").value(0), video.window());
    }

    void aFloatingPanelIsHiddenByAFullScreenWindowInFrontOnly()
    {
        X11PanelWindow desktop;
        QRasterWindow window;
        showPanel(desktop, window, PanelLevel::Floating);
        X11Program video("Video");
        bringToFrontFullScreen(video);
        QVERIFY(comesToLieAt(window.geometry().center(), video.window()));

        desktop.pin(window, PanelLevel::AboveFullScreen);
        QVERIFY(comesToLieAt(window.geometry().center(), idOf(window)));
        desktop.pin(window, PanelLevel::Floating);
        QVERIFY(comesToLieAt(window.geometry().center(), video.window()));

        X11Program editor("Editor");
        QTRY_VERIFY(valuesOf(root(), "_NET_CLIENT_LIST").contains(editor.window()));
        editor.activate();
        QVERIFY(comesToLieAt(window.geometry().center(), idOf(window)));
        QVERIFY(comeToBeMet(window));
    }

    void aPanelHiddenWhileItLiesAboveAFullScreenWindowComesBackManaged()
    {
        X11PanelWindow desktop;
        QRasterWindow window;
        showPanel(desktop, window, PanelLevel::AboveFullScreen);
        {
            X11Program video("Video");
            bringToFrontFullScreen(video);
            QVERIFY(comesToLieAt(window.geometry().center(), idOf(window)));
            window.hide();
            QTRY_VERIFY(!isMapped(window));
        }
        const QRect place = window.geometry();
        desktop.pin(window, PanelLevel::AboveFullScreen);
        window.show();
        QVERIFY(comeToBeMet(window));
        QVERIFY(!isUnmanaged(window));
        QCOMPARE(window.geometry(), place);
    }

private:
    /// Above full-screen windows too.
    static bool keepsAboveByItself() { return qgetenv("WRENFOLD_TEST_WINDOW_MANAGER") == "xfwm4"; }

    /// Waits until the window is the one in sight at a point of the screen.
    static bool comesToLieAt(const QPoint &point, xcb_window_t window)
    {
        return comesToStay([&] { return windowAt(point) == topLevelOf(window); });
    }

    static void showPanel(X11PanelWindow &desktop, QWindow &window, PanelLevel level)
    {
        window.setFlags(desktop.flags());
        window.setGeometry(600, 200, 344, 480);
        desktop.pin(window, level);
        window.show();
        QVERIFY(comeToBeMet(window));
    }
    static void bringToFrontFullScreen(X11Program &program)
    {
        QTRY_VERIFY(valuesOf(root(), "_NET_CLIENT_LIST").contains(program.window()));
        program.setFullScreen(true);
        program.activate();
        QTRY_COMPARE(valuesOf(root(), "_NET_ACTIVE_WINDOW").value(0), program.window());
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::X11PanelLevelTest)
#include "x11_panel_level_test.moc"
