// SPDX-License-Identifier: MIT
#include "platform/own_modifier_keys.h"
#include "support/test_case.h"

#include <QRasterWindow>

namespace wrenfold {

class OwnModifierKeysTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theKeyIsSeenInOurWindow()
    {
        QRasterWindow window;
        QVERIFY(shown(window));
        OwnModifierKeys keys;
        QCOMPARE(keys.availability().level, Availability::Level::Limited);
        QVERIFY(!keys.availability().reason.isEmpty());
        QList<bool> told;
        keys.watchControl([&told](bool isDown) { told.append(isDown); });
        QTest::keyPress(&window, Qt::Key_Control);
        send(window, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(told, (QList<bool>{false, true}));
        QTest::keyRelease(&window, Qt::Key_Control);
        QCOMPARE(told, (QList<bool>{false, true, false}));
    }

    void aKeyThatWasPressedElsewhereIsSeenWithTheNextOne()
    {
        QRasterWindow window;
        QVERIFY(shown(window));
        OwnModifierKeys keys;
        QList<bool> told;
        keys.watchControl([&told](bool isDown) { told.append(isDown); });
        send(window, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(told, (QList<bool>{false, true}));
        send(window, Qt::Key_A, Qt::NoModifier);
        QCOMPARE(told, (QList<bool>{false, true, false}));
    }

    void withTheKeyboardElsewhereNoKeyIsHeld()
    {
        QRasterWindow window;
        QVERIFY(shown(window));
        OwnModifierKeys keys;
        QList<bool> told;
        keys.watchControl([&told](bool isDown) { told.append(isDown); });
        QTest::keyPress(&window, Qt::Key_Control);
        Q_EMIT qGuiApp->focusWindowChanged(nullptr); // As when another program takes it.
        QCOMPARE(told, (QList<bool>{false, true, false}));
    }

    void nobodyIsToldOnceTheListenerHasGone()
    {
        QRasterWindow window;
        QVERIFY(shown(window));
        OwnModifierKeys keys;
        int calls = 0;
        keys.watchControl([&calls](bool) { ++calls; });
        keys.watchControl({});
        QTest::keyPress(&window, Qt::Key_Control);
        QTest::keyRelease(&window, Qt::Key_Control);
        QCOMPARE(calls, 1);
    }

private:
    /// A key alone: what QTest sends holds its modifiers down for the moment.
    static void send(QRasterWindow &window, Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(&window, &press);
    }

    static bool shown(QRasterWindow &window)
    {
        window.show();
        window.requestActivate();
        return QTest::qWaitForWindowActive(&window);
    }
};

} // namespace wrenfold

QTEST_MAIN(wrenfold::OwnModifierKeysTest)
#include "own_modifier_keys_test.moc"
