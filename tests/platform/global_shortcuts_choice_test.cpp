// SPDX-License-Identifier: MIT
#include "platform/platform.h"
#include "support/fake_shortcuts_portal.h"
#include "support/private_bus.h"
#include "support/test_case.h"
#include "support/x11_program.h"

namespace wrenfold {
namespace {

const GlobalShortcut shortcut{0x574E4644, 1, VirtualKey::P, 6400, QStringLiteral("Show or hide")};

/// Whether the X server still gives the shortcut's key to others.
bool isFree()
{
    constexpr xcb_keycode_t keyOfP = 33;
    return X11Program("Other").grabKey(keyOfP, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4);
}

} // namespace

/// Who is asked for global shortcuts: an X11 session's server, but not the one that serves X11 programs in a Wayland
/// session, where a grabbed key only seems to work.
class GlobalShortcutsChoiceTest : public TestCase
{
    Q_OBJECT

public:
    /// Before there is an application: what the bus's library reads of the address at first is what it goes on to use,
    /// and newer versions of Qt look for a bus as soon as they are on an X server.
    static void initMain()
    {
        if (theBus().start().isEmpty())
            qputenv("DBUS_SESSION_BUS_ADDRESS", theBus().address().toUtf8());
    }

private Q_SLOTS:
    void cleanup() { qunsetenv("WAYLAND_DISPLAY"); }

    void inAnX11SessionTheServerIsAsked()
    {
        const Platform platform = makePlatform({});
        QVERIFY(platform.globalShortcuts->registerShortcut(shortcut));
        QCOMPARE(platform.globalShortcuts->availability(), Availability());
        QVERIFY(!isFree());
    }

    void inAWaylandSessionNoKeyIsCountedAsRegisteredWithoutAPortal()
    {
        qputenv("WAYLAND_DISPLAY", "wayland-of-the-session");
        const Platform platform = makePlatform({});
        QList<uint32_t> refused;
        platform.globalShortcuts->installEventHandler(
            {.pressed = {}, .refused = [&](uint32_t id) { refused << id; }});
        static_cast<void>(platform.globalShortcuts->registerShortcut(shortcut));
        QCOMPARE(platform.globalShortcuts->availability().level, Availability::Level::NotAvailable);
        QTRY_COMPARE(refused, QList<uint32_t>{1});
        QCOMPARE(platform.globalShortcuts->availability().level, Availability::Level::NotAvailable);
        QVERIFY(isFree());
    }

    void inAWaylandSessionThePortalIsAsked()
    {
        qputenv("WAYLAND_DISPLAY", "wayland-of-the-session");
        FakeShortcutsPortal portal(theBus().address());
        QVERIFY(portal.arrive());
        const Platform platform = makePlatform({});
        QList<uint32_t> pressed;
        platform.globalShortcuts->installEventHandler(
            {.pressed = [&](uint32_t id) { pressed << id; }, .refused = {}});
        QVERIFY(platform.globalShortcuts->registerShortcut(shortcut));
        QTRY_COMPARE(platform.globalShortcuts->availability(), Availability());
        portal.press(QStringLiteral("WNFD-1"));
        QTRY_COMPARE(pressed, QList<uint32_t>{1});
    }

private:
    static PrivateBus &theBus()
    {
        static PrivateBus bus;
        return bus;
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::GlobalShortcutsChoiceTest)
#include "global_shortcuts_choice_test.moc"
