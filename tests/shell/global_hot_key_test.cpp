// SPDX-License-Identifier: MIT
#include "shell/global_hot_key.h"
#include "support/fake_global_shortcuts.h"
#include "support/test_case.h"

#include <QStringList>

#include <csignal>
#include <limits>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace wrenfold {
namespace {

constexpr int modifiers = HotKeyModifier::control + HotKeyModifier::option + HotKeyModifier::command;

/// Three hot keys, of which some may be refused, and what their actions did.
struct Keyboard
{
    FakeGlobalShortcuts shortcuts;
    QStringList done;
    std::unique_ptr<GlobalHotKey> p;
    std::unique_ptr<GlobalHotKey> h;
    std::unique_ptr<GlobalHotKey> t;

    void createAll()
    {
        p = create(VirtualKey::P, QStringLiteral("P"));
        h = create(VirtualKey::H, QStringLiteral("H"));
        t = create(VirtualKey::T, QStringLiteral("T"));
    }
    std::unique_ptr<GlobalHotKey> create(int keyCode, const QString &name)
    {
        return GlobalHotKey::create(shortcuts, keyCode, modifiers, name, [this, name] { done << name; });
    }
};

/// The signal that ended a process which did this; zero if it went on.
int signalThatStops(const std::function<void()> &action)
{
    const pid_t child = ::fork();
    if (child == 0) {
        const rlimit noCoreFile = {0, 0};
        ::setrlimit(RLIMIT_CORE, &noCoreFile);
        ::signal(SIGABRT, SIG_DFL); // The test library's own handler would report the test as failed.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        action();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

} // namespace

/// The numbers and the actions of the hot keys.
class GlobalHotKeyTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    // The first: numbers are counted as long as the process lives.
    void theFirstThreeAreOneToThree()
    {
        Keyboard keyboard;
        keyboard.createAll();
        QCOMPARE(keyboard.p->id(), 1U);
        QCOMPARE(keyboard.h->id(), 2U);
        QCOMPARE(keyboard.t->id(), 3U);
    }

    void theDesktopIsToldCodesModifiersAndSignature()
    {
        Keyboard keyboard;
        keyboard.createAll();
        const QList<GlobalShortcut> &registered = keyboard.shortcuts.registered();
        QCOMPARE(registered.size(), 3);
        QCOMPARE(registered[0].keyCode, 35U);
        QCOMPARE(registered[1].keyCode, 4U);
        QCOMPARE(registered[2].keyCode, 17U);
        for (const GlobalShortcut &shortcut : registered) {
            QCOMPARE(shortcut.modifiers, 6400U);
            QCOMPARE(shortcut.signature, int32_t('W') << 24 | 'N' << 16 | 'F' << 8 | 'D');
        }
        QCOMPARE(registered[1].id, keyboard.h->id());
        QCOMPARE(registered[1].description, QStringLiteral("H"));
    }

    void aPressRunsTheActionOfItsKeyOnly()
    {
        Keyboard keyboard;
        keyboard.createAll();
        keyboard.shortcuts.press(VirtualKey::H);
        QTRY_COMPARE(keyboard.done, QStringList{QStringLiteral("H")});
        keyboard.shortcuts.press(VirtualKey::P);
        keyboard.shortcuts.press(VirtualKey::T);
        QTRY_COMPARE(keyboard.done,
                     (QStringList{QStringLiteral("H"), QStringLiteral("P"), QStringLiteral("T")}));
    }

    void theActionRunsFromTheEventLoop()
    {
        Keyboard keyboard;
        keyboard.createAll();
        keyboard.shortcuts.press(VirtualKey::P);
        QCOMPARE(keyboard.done, QStringList());
        QCoreApplication::processEvents();
        QCOMPARE(keyboard.done, QStringList{QStringLiteral("P")});
    }

    void aRefusedKeyLeavesTheOthersTheirNumbersAndActions()
    {
        Keyboard keyboard;
        keyboard.shortcuts.hold(VirtualKey::H);
        keyboard.createAll();
        QVERIFY(!keyboard.h);
        QCOMPARE(keyboard.t->id(), keyboard.p->id() + 2);
        keyboard.shortcuts.press(VirtualKey::T);
        QTRY_COMPARE(keyboard.done, QStringList{QStringLiteral("T")});
        // The refused number runs nothing and is not given again.
        keyboard.shortcuts.pressID(keyboard.p->id() + 1);
        keyboard.shortcuts.press(VirtualKey::P);
        QTRY_COMPARE(keyboard.done, (QStringList{QStringLiteral("T"), QStringLiteral("P")}));
        const auto another = keyboard.create(VirtualKey::P, QStringLiteral("another"));
        QCOMPARE(another->id(), keyboard.t->id() + 1);
    }

    void aPressThatArrivesAfterTheDestructionDoesNothing()
    {
        Keyboard keyboard;
        keyboard.createAll();
        const uint32_t id = keyboard.h->id();
        keyboard.h.reset();
        keyboard.shortcuts.pressID(id);
        keyboard.shortcuts.press(VirtualKey::P);
        QTRY_COMPARE(keyboard.done, QStringList{QStringLiteral("P")});
    }

    void aPressThatWaitsWhenItsKeyIsDestroyedDoesNothing()
    {
        Keyboard keyboard;
        keyboard.createAll();
        keyboard.shortcuts.press(VirtualKey::H);
        keyboard.h.reset();
        keyboard.shortcuts.press(VirtualKey::P);
        QTRY_COMPARE(keyboard.done, QStringList{QStringLiteral("P")});
    }

    void destructionUnregisters()
    {
        Keyboard keyboard;
        keyboard.createAll();
        keyboard.h.reset();
        const QList<GlobalShortcut> &registered = keyboard.shortcuts.registered();
        QCOMPARE(registered.size(), 2);
        QCOMPARE(registered[0].id, keyboard.p->id());
        QCOMPARE(registered[1].id, keyboard.t->id());
    }

    void theEventHandlerIsInstalledOnce()
    {
        Keyboard keyboard;
        QCOMPARE(keyboard.shortcuts.installations(), 0);
        keyboard.createAll();
        keyboard.p.reset();
        keyboard.h.reset();
        keyboard.t.reset();
        keyboard.createAll();
        QCOMPARE(keyboard.shortcuts.installations(), 1);
    }

    void aKeyThatTheDesktopTakesBackDoesNothing()
    {
        Keyboard keyboard;
        keyboard.createAll();
        keyboard.shortcuts.refuse(VirtualKey::H);
        keyboard.shortcuts.pressID(keyboard.h->id());
        keyboard.shortcuts.press(VirtualKey::T);
        QTRY_COMPARE(keyboard.done, QStringList{QStringLiteral("T")});
    }

    void anActionMayDestroyItsHotKey()
    {
        FakeGlobalShortcuts shortcuts;
        std::unique_ptr<GlobalHotKey> hotKey;
        const auto token = std::make_shared<int>(7);
        int seen = 0;
        hotKey = GlobalHotKey::create(shortcuts, VirtualKey::P, modifiers, {}, [&hotKey, &seen, token] {
            hotKey.reset();
            seen = *token;
        });
        shortcuts.press(VirtualKey::P);
        QTRY_COMPARE(seen, 7);
        QVERIFY(shortcuts.registered().isEmpty());
        QCOMPARE(token.use_count(), 1);
    }

    void theLastNumberStopsTheProgram()
    {
        constexpr uint32_t last = std::numeric_limits<uint32_t>::max();
        QCOMPARE(GlobalHotKey::idAfter(last - 1), last);
        QCOMPARE(signalThatStops([] { static_cast<void>(GlobalHotKey::idAfter(last)); }), SIGABRT);
    }

    void aNegativeCodeStopsTheProgram()
    {
        FakeGlobalShortcuts shortcuts;
        const auto create = [&shortcuts](int keyCode, int held) {
            return [&shortcuts, keyCode, held] {
                static_cast<void>(GlobalHotKey::create(shortcuts, keyCode, held, {}, {}));
            };
        };
        QCOMPARE(signalThatStops(create(VirtualKey::P, modifiers)), 0);
        QCOMPARE(signalThatStops(create(-1, modifiers)), SIGABRT);
        QCOMPARE(signalThatStops(create(VirtualKey::P, -1)), SIGABRT);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::GlobalHotKeyTest)
#include "global_hot_key_test.moc"
