// SPDX-License-Identifier: MIT
#include "platform/linux/x11_global_shortcuts.h"
#include "platform/linux/xcb_xkb.h"
#include "support/test_case.h"
#include "support/x11_program.h"
#include "support/x11_server.h"

#include <QProcess>

namespace wrenfold {

using namespace x11;

namespace {

constexpr xcb_keycode_t keyOfP = 33; // Of the usual keyboards and layouts.
constexpr xcb_keycode_t keyOfH = 43;
constexpr uint16_t controlAltSuper = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4;

const GlobalShortcut shortcutP{1, 1, VirtualKey::P, 6400, {}};
const GlobalShortcut shortcutH{1, 2, VirtualKey::H, 6400, {}};
const GlobalShortcut shortcutT{1, 3, VirtualKey::T, 6400, {}};

void run(const QString &program, const QStringList &arguments)
{
    QCOMPARE(QProcess::execute(program, arguments), 0);
}

/// With the keyboard, as a person does it.
void keyboard(const QString &action, const QString &key)
{
    run(QStringLiteral("xdotool"), {action, key});
}
void press(const char *key)
{
    keyboard(QStringLiteral("key"), QStringLiteral("ctrl+alt+super+") + QLatin1String(key));
}
void setLayout(const QStringList &layout)
{
    run(QStringLiteral("setxkbmap"), layout);
}
void changeModifiers(const QStringList &expressions)
{
    QStringList arguments;
    for (const QString &expression : expressions)
        arguments << QStringLiteral("-e") << expression;
    run(QStringLiteral("xmodmap"), arguments);
}

/// Counts how often the X server says that a key went down.
class KeyPressCount : public QAbstractNativeEventFilter
{
public:
    KeyPressCount() { qGuiApp->installNativeEventFilter(this); }
    [[nodiscard]] int count() const { return m_count; }
    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        m_count += static_cast<xcb_generic_event_t *>(message)->response_type == XCB_KEY_PRESS ? 1 : 0;
        return false;
    }

private:
    int m_count = 0;
};

/// Shortcuts, and the ids of those that were pressed.
struct Desk
{
    QList<uint32_t> pressed;
    X11GlobalShortcuts shortcuts;

    Desk()
    {
        shortcuts.installEventHandler(
            {.pressed = [this](uint32_t id) { pressed << id; }, .refused = [](uint32_t) {}});
    }
};

} // namespace

/// Runs once for each window manager and once without, see with_x11.sh.
class X11GlobalShortcutsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        run(QStringLiteral("xset"),
            {QStringLiteral("r"), QStringLiteral("rate"), QStringLiteral("100"), QStringLiteral("50")});
    }

    void init()
    {
        TestCase::init();
        setLayout({QStringLiteral("us")});
        m_other = std::make_unique<X11Program>("Other");
        QTRY_VERIFY(isInSight(m_other->window()));
        m_other->focus();
    }

    void cleanup()
    {
        for (const char *key : {"p", "Control_L", "Alt_L", "Super_L"})
            keyboard(QStringLiteral("keyup"), QLatin1String(key));
        m_other.reset();
    }

    void aPressArrivesWhileAnotherWindowHasTheKeyboard()
    {
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        QVERIFY(desk.shortcuts.registerShortcut(shortcutH));
        QVERIFY(desk.shortcuts.registerShortcut(shortcutT));
        QCOMPARE(desk.shortcuts.availability(), Availability());
        press("h");
        press("t");
        press("p");
        press("p");
        QTRY_COMPARE(desk.pressed, (QList<uint32_t>{2, 3, 1, 1}));
    }

    void locksDoNotMatter_data()
    {
        QTest::addColumn<QStringList>("locks");
        QTest::newRow("num") << QStringList{QStringLiteral("Num_Lock")};
        QTest::newRow("caps") << QStringList{QStringLiteral("Caps_Lock")};
        QTest::newRow("both") << QStringList{QStringLiteral("Num_Lock"), QStringLiteral("Caps_Lock")};
    }

    void locksDoNotMatter()
    {
        QFETCH(const QStringList, locks);
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        for (const QString &lock : locks)
            keyboard(QStringLiteral("key"), lock);
        press("p");
        for (const QString &lock : locks)
            keyboard(QStringLiteral("key"), lock);
        QTRY_COMPARE(desk.pressed, QList<uint32_t>{1});
    }

    void otherCombinationsAreNothing()
    {
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        QVERIFY(desk.shortcuts.registerShortcut(shortcutH));
        for (const char *keys : {"p", "ctrl+p", "ctrl+alt+p", "alt+super+p", "ctrl+alt+super+shift+p"})
            keyboard(QStringLiteral("key"), QLatin1String(keys));
        press("x");
        // What comes last says that the others have been seen.
        press("h");
        QTRY_COMPARE(desk.pressed, QList<uint32_t>{2});
    }

    void aHeldKeyIsOnePress()
    {
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        const KeyPressCount events;
        keyboard(QStringLiteral("keydown"), QStringLiteral("ctrl+alt+super+p"));
        QTRY_VERIFY(events.count() > 5);
        keyboard(QStringLiteral("keyup"), QStringLiteral("p"));
        QCOMPARE(desk.pressed, QList<uint32_t>{1});
        keyboard(QStringLiteral("keydown"), QStringLiteral("p"));
        QTRY_COMPARE(desk.pressed, (QList<uint32_t>{1, 1}));
    }

    void aKeyThatAnotherProgramHoldsIsRefusedAlone()
    {
        QVERIFY(m_other->grabKey(keyOfH, controlAltSuper));
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        QVERIFY(!desk.shortcuts.registerShortcut(shortcutH));
        QVERIFY(desk.shortcuts.registerShortcut(shortcutT));
        QCOMPARE(desk.shortcuts.availability(),
                 availabilityWithout({QStringLiteral("Ctrl+Alt+Super+H")}, true));
        press("h");
        press("p");
        press("t");
        QTRY_COMPARE(desk.pressed, (QList<uint32_t>{1, 3}));
    }

    void aKeyHeldWithALockOnlyIsRefusedAndLeftToTheOther()
    {
        QVERIFY(m_other->grabKey(keyOfP, controlAltSuper | XCB_MOD_MASK_LOCK));
        Desk desk;
        QVERIFY(!desk.shortcuts.registerShortcut(shortcutP));
        QVERIFY(m_other->grabKey(keyOfP, controlAltSuper));
    }

    void whenAllAreRefusedItIsNotAvailable()
    {
        QVERIFY(m_other->grabKey(keyOfP, controlAltSuper));
        Desk desk;
        QVERIFY(!desk.shortcuts.registerShortcut(shortcutP));
        QCOMPARE(desk.shortcuts.availability().level, Availability::Level::NotAvailable);
        // Freed, it is ours the next time.
        m_other->ungrabKey(keyOfP, controlAltSuper);
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        QCOMPARE(desk.shortcuts.availability(), Availability());
    }

    void anUnregisteredKeyIsFree()
    {
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        QVERIFY(desk.shortcuts.registerShortcut(shortcutH));
        QVERIFY(!m_other->grabKey(keyOfP, controlAltSuper));
        desk.shortcuts.unregisterShortcut(1);
        desk.shortcuts.unregisterShortcut(7);
        QTRY_VERIFY(m_other->grabKey(keyOfP, controlAltSuper));
        press("p");
        press("h");
        QTRY_COMPARE(desk.pressed, QList<uint32_t>{2});
    }

    void theEndFreesAllKeys()
    {
        {
            Desk desk;
            QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
            QVERIFY(!m_other->grabKey(keyOfP, controlAltSuper));
        }
        QTRY_VERIFY(m_other->grabKey(keyOfP, controlAltSuper));
    }

    void theLetterIsFollowedToItsPlaceOnAnotherLayout()
    {
        constexpr xcb_keycode_t dvorakP = 27;
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        setLayout({QStringLiteral("us"), QStringLiteral("dvorak")});
        QTRY_VERIFY(isTaken(dvorakP));
        press("p");
        QTRY_COMPARE(desk.pressed, QList<uint32_t>{1});
        QVERIFY(!isTaken(keyOfP));
        setLayout({QStringLiteral("us")});
        QTRY_VERIFY(isTaken(keyOfP));
        press("p");
        QTRY_COMPARE(desk.pressed, (QList<uint32_t>{1, 1}));
    }

    void theLetterOfTheSecondLayoutCounts()
    {
        setLayout({QStringLiteral("ru,us"), QStringLiteral(",dvorak")});
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        QVERIFY(isTaken(27));
    }

    void itDoesNotMatterWhichLayoutIsOn()
    {
        setLayout({QStringLiteral("us,ru")});
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        turnOnLayout(XCB_XKB_GROUP_2);
        press("33");
        QTRY_COMPARE(desk.pressed, QList<uint32_t>{1});
        turnOnLayout(XCB_XKB_GROUP_1);
    }

    void aLayoutWithoutTheLetterHasItInItsUsualPlace()
    {
        setLayout({QStringLiteral("ru")});
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        QVERIFY(desk.shortcuts.registerShortcut(shortcutH));
        QVERIFY(desk.shortcuts.registerShortcut(shortcutT));
        for (const char *key : {"33", "43", "28"})
            press(key);
        QTRY_COMPARE(desk.pressed, (QList<uint32_t>{1, 2, 3}));
    }

    void modifiersAreFoundWhereverTheyAre()
    {
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        changeModifiers({QStringLiteral("clear mod1"), QStringLiteral("clear mod2"),
                         QStringLiteral("clear mod3"), QStringLiteral("clear mod4"),
                         QStringLiteral("add mod2 = Alt_L"), QStringLiteral("add mod3 = Super_L"),
                         QStringLiteral("add mod4 = Num_Lock")});
        QTRY_VERIFY(isTaken(keyOfP, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_2 | XCB_MOD_MASK_3));
        press("p");
        QTRY_COMPARE(desk.pressed, QList<uint32_t>{1});
        keyboard(QStringLiteral("key"), QStringLiteral("Num_Lock"));
        press("p");
        keyboard(QStringLiteral("key"), QStringLiteral("Num_Lock"));
        QTRY_COMPARE(desk.pressed, (QList<uint32_t>{1, 1}));
    }

    void aKeyboardWithoutAModifierIsRefused()
    {
        changeModifiers({QStringLiteral("clear mod4")});
        Desk desk;
        QVERIFY(!desk.shortcuts.registerShortcut(shortcutP));
        QCOMPARE(desk.shortcuts.availability().level, Availability::Level::NotAvailable);
    }

    void aPlaceTakenOnTheNewLayoutIsToldAndComesBack()
    {
        constexpr xcb_keycode_t dvorakP = 27;
        QVERIFY(m_other->grabKey(dvorakP, controlAltSuper));
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        setLayout({QStringLiteral("us"), QStringLiteral("dvorak")});
        QTRY_COMPARE(desk.shortcuts.availability().level, Availability::Level::NotAvailable);
        setLayout({QStringLiteral("us")});
        QTRY_COMPARE(desk.shortcuts.availability(), Availability());
        press("p");
        QTRY_COMPARE(desk.pressed, QList<uint32_t>{1});
    }

    void aWindowOfOursThatHasGrabbedTheKeyboardDoesNotGetThePress()
    {
        struct Window : QWindow
        {
            int keys = 0;
            void keyPressEvent(QKeyEvent *event) override { keys += event->key() == Qt::Key_P ? 1 : 0; }
        } window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        QTRY_VERIFY(window.setKeyboardGrabEnabled(true));
        press("p");
        QTRY_COMPARE(desk.pressed, QList<uint32_t>{1});
        keyboard(QStringLiteral("key"), QStringLiteral("p"));
        QTRY_COMPARE(window.keys, 1);
        QCOMPARE(desk.pressed, QList<uint32_t>{1});
        window.setKeyboardGrabEnabled(false);
    }

    void aPressThatAProgramMadeUpIsNothing()
    {
        QWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        Desk desk;
        QVERIFY(desk.shortcuts.registerShortcut(shortcutP));
        QVERIFY(desk.shortcuts.registerShortcut(shortcutH));
        xcb_key_press_event_t event = {};
        event.response_type = XCB_KEY_PRESS;
        event.detail = keyOfP;
        event.root = root();
        event.event = idOf(window);
        event.state = controlAltSuper;
        xcb_send_event(connection(), 0, event.event, XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char *>(&event));
        press("h");
        QTRY_COMPARE(desk.pressed, QList<uint32_t>{2});
    }

private:
    static bool isInSight(xcb_window_t window)
    {
        const auto cookie = xcb_get_window_attributes(connection(), window);
        auto *reply = xcb_get_window_attributes_reply(connection(), cookie, nullptr);
        const bool answer = reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
        std::free(reply);
        return answer;
    }

    static void turnOnLayout(uint8_t layout)
    {
        const auto cookie =
            xcb_xkb_latch_lock_state_checked(connection(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, layout, 0, 0, 0);
        xcb_generic_error_t *error = xcb_request_check(connection(), cookie);
        QVERIFY(!error);
    }

    /// Whether somebody else than the other program has the key.
    [[nodiscard]] bool isTaken(xcb_keycode_t key, uint16_t modifiers = controlAltSuper) const
    {
        if (!m_other->grabKey(key, modifiers))
            return true;
        m_other->ungrabKey(key, modifiers);
        return false;
    }

    std::unique_ptr<X11Program> m_other;
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::X11GlobalShortcutsTest)
#include "x11_global_shortcuts_test.moc"
