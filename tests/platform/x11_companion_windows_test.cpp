// SPDX-License-Identifier: MIT
#include "look/utility_window.h"
#include "platform/linux/x11_panel_window.h"
#include "shell/focus_panel.h"
#include "support/test_case.h"
#include "support/x11_program.h"
#include "support/x11_server.h"

#include <QDialog>
#include <QFileDialog>
#include <QMenu>
#include <QProcess>

namespace wrenfold {

using namespace x11;

namespace {

void drivePointer(const QStringList &arguments)
{
    QCOMPARE(QProcess::execute(QStringLiteral("xdotool"), arguments), 0);
}

/// With the pointer, as a person does it: in the lower left corner.
void click(const QWidget &window)
{
    const QPoint point = window.mapToGlobal(QPoint(15, window.height() - 15));
    drivePointer({QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y()),
                  QStringLiteral("click"), QStringLiteral("1")});
}

/// What xfwm4 calls active may be the one before, when two follow quickly upon each other.
bool isActive(const QWidget &window)
{
    return window.windowHandle() && QGuiApplication::focusWindow() == window.windowHandle();
}

bool isAbove(const QWidget &window)
{
    return valuesOf(idOf(*window.windowHandle()), "_NET_WM_STATE").contains(atom("_NET_WM_STATE_ABOVE"));
}

/// All these windows lie there.
constexpr QPoint middle(560, 400);

bool isInFront(xcb_window_t window)
{
    return windowAt(middle) == topLevelOf(window);
}
bool isInFront(const QWidget &window)
{
    return isInFront(idOf(*window.windowHandle()));
}

/// With the keyboard, as a person sees it who then clicks elsewhere.
bool comesToFront(const QWidget &window)
{
    return comesToStay([&window] { return isActive(window) && isInFront(window); });
}

/// The panel and the two windows beside it, one upon the other.
struct Windows
{
    X11PanelWindow ability;
    FocusPanel panel{ability};
    UtilityWindow settings{QStringLiteral("Settings"), QSize(300, 300)};
    UtilityWindow chat{QStringLiteral("Chat"), QSize(300, 300)};

    explicit Windows(PanelLevel level = PanelLevel::Floating)
    {
        QObject::connect(&settings, &UtilityWindow::aboutToComeToFront, &settings,
                         [this](QWindow *window) { ability.accompany(*window, CompanionKind::Ordinary); });
        QObject::connect(&chat, &UtilityWindow::aboutToComeToFront, &chat,
                         [this](QWindow *window) { ability.accompany(*window, CompanionKind::Floating); });
        settings.move(400, 250);
        chat.move(440, 220);
        panel.move(500, 150);
        panel.setLevel(level);
        panel.comeToFront();
        QVERIFY(comesToFront(panel));
    }
    Q_DISABLE_COPY_MOVE(Windows)

    UtilityWindow &window(CompanionKind kind) { return kind == CompanionKind::Ordinary ? settings : chat; }
};

void bringToFrontFullScreen(X11Program &program)
{
    QTRY_VERIFY(valuesOf(root(), "_NET_CLIENT_LIST").contains(program.window()));
    program.setFullScreen(true);
    program.activate();
    QTRY_COMPARE(valuesOf(root(), "_NET_ACTIVE_WINDOW").value(0), program.window());
}

} // namespace

/// The panel and the windows beside it. Runs once for each window manager, see with_x11.sh.
class X11CompanionWindowsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowInUseLiesAboveThePanelUntilThatIsClicked_data()
    {
        QTest::addColumn<CompanionKind>("kind");
        QTest::addColumn<PanelLevel>("level");
        QTest::newRow("ordinary") << CompanionKind::Ordinary << PanelLevel::Floating;
        QTest::newRow("floating") << CompanionKind::Floating << PanelLevel::Floating;
        QTest::newRow("ordinary, pinned") << CompanionKind::Ordinary << PanelLevel::AboveFullScreen;
        QTest::newRow("floating, pinned") << CompanionKind::Floating << PanelLevel::AboveFullScreen;
    }
    void theWindowInUseLiesAboveThePanelUntilThatIsClicked()
    {
        QFETCH(CompanionKind, kind);
        QFETCH(PanelLevel, level);
        Windows windows(level);
        UtilityWindow &window = windows.window(kind);
        window.comeToFront();
        QVERIFY(comesToFront(window));
        for (int time = 0; time < 3; ++time) {
            click(windows.panel);
            QVERIFY(comesToFront(windows.panel));
            click(window);
            QVERIFY(comesToFront(window));
        }
        window.hide();
        QVERIFY(comesToStay([&] { return isInFront(windows.panel); }));
    }

    void withBothOpenTheOneInUseIsInFront()
    {
        Windows windows;
        windows.settings.comeToFront();
        QVERIFY(comesToFront(windows.settings));
        windows.chat.comeToFront();
        QVERIFY(comesToFront(windows.chat));
        QTRY_VERIFY(!isAbove(windows.settings));
        click(windows.settings);
        QVERIFY(comesToFront(windows.settings));
        click(windows.panel);
        QVERIFY(comesToFront(windows.panel));
        windows.chat.comeToFront();
        QVERIFY(comesToFront(windows.chat));
        click(windows.panel);
        QVERIFY(comesToFront(windows.panel));
    }

    void anOrdinaryWindowGoesBackBehindTheProgramThatIsUsedNext()
    {
        Windows windows;
        X11Program editor("Editor");
        bringToFrontFullScreen(editor);
        windows.settings.comeToFront();
        QVERIFY(comesToFront(windows.settings));
        QVERIFY(isAbove(windows.settings));
        windows.panel.hide();
        editor.activate();
        QTRY_VERIFY(!isAbove(windows.settings));
        QVERIFY(comesToStay([&] { return isInFront(editor.window()); }));
    }

    void aFloatingWindowStaysAboveOtherProgramsButNotAboveAFullScreenOneInFront()
    {
        Windows windows;
        windows.panel.hide();
        X11Program video("Video");
        X11Program editor("Editor");
        windows.chat.comeToFront();
        QVERIFY(comesToFront(windows.chat));
        bringToFrontFullScreen(video);
        QVERIFY(comesToStay([&] { return isInFront(video.window()); }));
        editor.activate();
        QVERIFY(comesToStay([&] { return isInFront(windows.chat); }));
        video.setFullScreen(false);
        video.activate();
        QVERIFY(comesToStay([&] { return isInFront(windows.chat); }));
    }

    void onlyAFloatingWindowIsOnEveryDesktopAboveOthersAndOutOfLists()
    {
        Windows windows;
        for (int time = 0; time < 2; ++time) {
            windows.chat.comeToFront();
            QVERIFY(comeToBeMet(*windows.chat.windowHandle()));
            windows.chat.hide();
            QTRY_VERIFY(!isMapped(*windows.chat.windowHandle()));
        }
        windows.settings.comeToFront();
        QVERIFY(comesToFront(windows.settings));
        click(windows.panel);
        QVERIFY(comesToFront(windows.panel));
        const xcb_window_t settings = idOf(*windows.settings.windowHandle());
        QTRY_VERIFY(!isAbove(windows.settings));
        QCOMPARE(valuesOf(settings, "_NET_WM_DESKTOP"), Values{0});
        for (const char *state :
             {"_NET_WM_STATE_STICKY", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"})
            QVERIFY2(!valuesOf(settings, "_NET_WM_STATE").contains(atom(state)), state);
    }

    void aboveAFullScreenWindowTooTheWindowInUseIsNotCoveredByThePanel_data()
    {
        theWindowInUseLiesAboveThePanelUntilThatIsClicked_data();
    }
    void aboveAFullScreenWindowTooTheWindowInUseIsNotCoveredByThePanel()
    {
        QFETCH(CompanionKind, kind);
        QFETCH(PanelLevel, level);
        Windows windows(level);
        X11Program video("Video");
        bringToFrontFullScreen(video);
        if (level == PanelLevel::AboveFullScreen) {
            QVERIFY(comesToStay([&] { return isInFront(windows.panel); }));
            click(windows.panel); // From there it is opened.
            QTRY_COMPARE(QGuiApplication::focusWindow(), windows.panel.windowHandle());
        } else {
            QVERIFY(comesToStay([&] { return isInFront(video.window()); }));
        }
        UtilityWindow &window = windows.window(kind);
        window.comeToFront();
        QVERIFY(comesToFront(window));
        QTRY_VERIFY(!isUnmanaged(*windows.panel.windowHandle()));
        QVERIFY(comeToBeMet(*windows.panel.windowHandle()));
        QVERIFY(isActive(window) && isInFront(window));
        click(windows.panel);
        QVERIFY(comesToFront(windows.panel));
        click(window);
        QVERIFY(comesToFront(window));
        video.activate();
        if (level == PanelLevel::AboveFullScreen)
            QVERIFY(comesToStay([&] { return isInFront(windows.panel); }));
        else
            QVERIFY(comesToStay([&] { return isInFront(video.window()); }));
        window.hide();
    }

    void aDialogIsInFrontOfThePanel_data() { theWindowInUseLiesAboveThePanelUntilThatIsClicked_data(); }
    void aDialogIsInFrontOfThePanel()
    {
        QFETCH(CompanionKind, kind);
        QFETCH(PanelLevel, level);
        Windows windows(level);
        UtilityWindow &window = windows.window(kind);
        window.comeToFront();
        QVERIFY(comesToFront(window));
        QFileDialog dialog(&window);
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.resize(300, 250);
        dialog.move(450, 300);
        dialog.setModal(true);
        dialog.show();
        QVERIFY(comesToFront(dialog));
        // It keeps the program to itself, and so the keyboard.
        click(windows.panel);
        QVERIFY(comesToFront(dialog));
        dialog.reject();
        QVERIFY(comesToStay([&] { return isInFront(window); }));
    }

    void aMenuIsInFrontOfThePanel()
    {
        Windows windows;
        windows.settings.comeToFront();
        QVERIFY(comesToFront(windows.settings));
        QMenu menu(&windows.settings);
        menu.addAction(QStringLiteral("Something rather long, so that it reaches far enough"));
        menu.popup(middle - QPoint(10, 10));
        QVERIFY(comesToStay([&] { return isInFront(menu); }));
        menu.hide();
        QVERIFY(comesToStay([&] { return isInFront(windows.settings); }));
    }

    void aWindowShownAgainIsWhereItWas_data()
    {
        QTest::addColumn<CompanionKind>("kind");
        QTest::newRow("ordinary") << CompanionKind::Ordinary;
        QTest::newRow("floating") << CompanionKind::Floating;
    }
    void aWindowShownAgainIsWhereItWas()
    {
        QFETCH(CompanionKind, kind);
        Windows windows;
        UtilityWindow &window = windows.window(kind);
        window.comeToFront();
        QVERIFY(comesToFront(window));
        const auto placeOnScreen = [&window] {
            const auto cookie =
                xcb_translate_coordinates(connection(), idOf(*window.windowHandle()), root(), 0, 0);
            auto *reply = xcb_translate_coordinates_reply(connection(), cookie, nullptr);
            const QPoint place(reply->dst_x, reply->dst_y);
            std::free(reply);
            return place;
        };
        // By its title bar, with the pointer.
        const QPoint before = placeOnScreen();
        const QPoint grip = before + QPoint(150, -8);
        drivePointer({QStringLiteral("mousemove"), QString::number(grip.x()), QString::number(grip.y()),
                      QStringLiteral("mousedown"), QStringLiteral("1")});
        drivePointer({QStringLiteral("mousemove_relative"), QStringLiteral("--"), QStringLiteral("-60"),
                      QStringLiteral("40")});
        drivePointer({QStringLiteral("mousemove_relative"), QStringLiteral("--"), QStringLiteral("-60"),
                      QStringLiteral("40")});
        drivePointer({QStringLiteral("mouseup"), QStringLiteral("1")});
        QTRY_COMPARE(placeOnScreen(), before + QPoint(-120, 80));
        const QPoint moved = placeOnScreen();
        for (int time = 0; time < 4; ++time) {
            window.hide();
            QTRY_VERIFY(!isMapped(*window.windowHandle()));
            window.comeToFront();
            QVERIFY(comesToStay([&] { return isActive(window) && placeOnScreen() == moved; }));
            QCOMPARE(window.geometry().topLeft(), moved);
        }
    }

    void aWindowThatTheWindowManagerHasIconifiedComesBackWithTheKeyboard_data()
    {
        aWindowShownAgainIsWhereItWas_data();
    }
    void aWindowThatTheWindowManagerHasIconifiedComesBackWithTheKeyboard()
    {
        QFETCH(CompanionKind, kind);
        Windows windows;
        UtilityWindow &window = windows.window(kind);
        window.comeToFront();
        QVERIFY(comesToFront(window));
        const QRect place = window.geometry();
        window.showMinimized();
        QTRY_VERIFY(!isMapped(*window.windowHandle()));
        QTRY_VERIFY(!isActive(window));
        window.comeToFront();
        QVERIFY(comesToFront(window));
        QCOMPARE(window.geometry(), place);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::X11CompanionWindowsTest)
#include "x11_companion_windows_test.moc"
