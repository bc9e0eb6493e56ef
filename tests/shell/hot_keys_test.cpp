// SPDX-License-Identifier: MIT
#include "shell/hot_keys.h"
#include "support/fake_global_shortcuts.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

/// The hot keys on a keyboard, and what their actions did.
struct Keyboard
{
    FakeGlobalShortcuts shortcuts;
    QStringList done;

    [[nodiscard]] std::vector<std::unique_ptr<GlobalHotKey>> makeHotKeys()
    {
        return registerHotKeys(shortcuts, {.togglePanel = [this] { done << QStringLiteral("toggle"); },
                                           .hidePanel = [this] { done << QStringLiteral("hide"); },
                                           .newTodo = [this] { done << QStringLiteral("new"); }});
    }
};

} // namespace

class HotKeysTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    // The first: numbers are counted as long as the process lives.
    void theyAreRegisteredInTheirOrder()
    {
        Keyboard keyboard;
        const auto hotKeys = keyboard.makeHotKeys();
        QCOMPARE(hotKeys.size(), std::size_t(3));
        QStringList registered;
        for (const GlobalShortcut &shortcut : keyboard.shortcuts.registered())
            registered << QStringLiteral("%1 %2 %3")
                              .arg(QString::number(shortcut.id), nameOf(shortcut), shortcut.description);
        QCOMPARE(registered, (QStringList{QStringLiteral("1 Ctrl+Alt+Super+P パネルの表示を切り替える"),
                                          QStringLiteral("2 Ctrl+Alt+Super+H パネルを隠す"),
                                          QStringLiteral("3 Ctrl+Alt+Super+T 新規TODOを追加")}));
    }

    void eachRunsItsAction()
    {
        Keyboard keyboard;
        const auto hotKeys = keyboard.makeHotKeys();
        for (const int key : {VirtualKey::T, VirtualKey::H, VirtualKey::P})
            keyboard.shortcuts.press(static_cast<uint32_t>(key));
        QTRY_COMPARE(keyboard.done,
                     (QStringList{QStringLiteral("new"), QStringLiteral("hide"), QStringLiteral("toggle")}));
    }

    void aRefusedOneIsLeftOut()
    {
        Keyboard keyboard;
        keyboard.shortcuts.hold(VirtualKey::H);
        const auto hotKeys = keyboard.makeHotKeys();
        QCOMPARE(hotKeys.size(), std::size_t(2));
        keyboard.shortcuts.press(VirtualKey::T);
        QTRY_COMPARE(keyboard.done, QStringList{QStringLiteral("new")});
    }

    void theyAreReleasedAtTheirEnd()
    {
        Keyboard keyboard;
        keyboard.makeHotKeys().clear();
        QVERIFY(keyboard.shortcuts.registered().isEmpty());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::HotKeysTest)
#include "hot_keys_test.moc"
