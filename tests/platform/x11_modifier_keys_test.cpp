// SPDX-License-Identifier: MIT
#include "platform/linux/x11_modifier_keys.h"
#include "support/test_case.h"
#include "support/x11_program.h"
#include "support/x11_server.h"

#include <QProcess>

namespace wrenfold {

using namespace x11;

namespace {

/// With the keyboard, as a person does it.
void keyboard(const QString &action, const QString &key)
{
    QCOMPARE(QProcess::execute(QStringLiteral("xdotool"), {action, key}), 0);
}

} // namespace

/// Runs once for each window manager and once without, see with_x11.sh.
class X11ModifierKeysTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        for (const char *key : {"Control_L", "Control_R"})
            keyboard(QStringLiteral("keyup"), QLatin1String(key));
    }

    void theKeyIsSeenWhoeverHasTheKeyboard_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("left") << QStringLiteral("Control_L");
        QTest::newRow("right") << QStringLiteral("Control_R");
    }

    void theKeyIsSeenWhoeverHasTheKeyboard()
    {
        QFETCH(QString, key);
        X11Program other("Other");
        QTRY_VERIFY(isMappedWindow(other.window()));
        X11ModifierKeys keys;
        QCOMPARE(keys.availability(), Availability());
        QList<bool> told;
        keys.watchControl([&told](bool isDown) { told.append(isDown); });
        QCOMPARE(told, QList<bool>{false});
        keyboard(QStringLiteral("keydown"), key);
        QTRY_COMPARE(told, (QList<bool>{false, true}));
        // Other keys meanwhile are nothing to it.
        keyboard(QStringLiteral("key"), QStringLiteral("a"));
        keyboard(QStringLiteral("keyup"), key);
        QTRY_COMPARE(told, (QList<bool>{false, true, false}));
    }

    void oneOfTwoHeldKeysIsEnough()
    {
        X11ModifierKeys keys;
        QList<bool> told;
        keys.watchControl([&told](bool isDown) { told.append(isDown); });
        keyboard(QStringLiteral("keydown"), QStringLiteral("Control_L"));
        keyboard(QStringLiteral("keydown"), QStringLiteral("Control_R"));
        keyboard(QStringLiteral("keyup"), QStringLiteral("Control_L"));
        QTRY_COMPARE(told, (QList<bool>{false, true}));
        keyboard(QStringLiteral("keyup"), QStringLiteral("Control_R"));
        QTRY_COMPARE(told, (QList<bool>{false, true, false}));
    }

    void aKeyThatIsHeldAlreadyIsToldAtOnce()
    {
        keyboard(QStringLiteral("keydown"), QStringLiteral("Control_L"));
        X11ModifierKeys keys;
        QList<bool> told;
        keys.watchControl([&told](bool isDown) { told.append(isDown); });
        QCOMPARE(told, QList<bool>{true});
        keyboard(QStringLiteral("keyup"), QStringLiteral("Control_L"));
        QTRY_COMPARE(told, (QList<bool>{true, false}));
    }

    void otherModifiersAreNotControl()
    {
        X11ModifierKeys keys;
        QList<bool> told;
        keys.watchControl([&told](bool isDown) { told.append(isDown); });
        for (const char *key : {"Shift_L", "Alt_L", "Super_L", "Caps_Lock", "Caps_Lock"})
            keyboard(QStringLiteral("key"), QLatin1String(key));
        // What comes last says that the others have been seen.
        keyboard(QStringLiteral("keydown"), QStringLiteral("Control_L"));
        QTRY_COMPARE(told, (QList<bool>{false, true}));
    }

    void nobodyIsToldOnceTheListenerHasGone()
    {
        X11ModifierKeys keys;
        int calls = 0;
        keys.watchControl([&calls](bool) { ++calls; });
        keys.watchControl({});
        QList<bool> told;
        X11ModifierKeys others;
        others.watchControl([&told](bool isDown) { told.append(isDown); });
        keyboard(QStringLiteral("keydown"), QStringLiteral("Control_L"));
        QTRY_COMPARE(told, (QList<bool>{false, true}));
        QCOMPARE(calls, 1);
    }

private:
    static bool isMappedWindow(xcb_window_t window)
    {
        const auto cookie = xcb_get_window_attributes(connection(), window);
        auto *reply = xcb_get_window_attributes_reply(connection(), cookie, nullptr);
        const bool answer = reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
        std::free(reply);
        return answer;
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::X11ModifierKeysTest)
#include "x11_modifier_keys_test.moc"
