// SPDX-License-Identifier: MIT
#include "platform/global_shortcuts.h"
#include "platform/none/no_global_shortcuts.h"
#include "support/test_case.h"

namespace wrenfold {

/// What is said of shortcuts, whoever serves them.
class GlobalShortcutsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aShortcutIsNamedAsPeopleWriteIt()
    {
        QCOMPARE(nameOf({1, 1, 35, 6400, {}}), QStringLiteral("Ctrl+Alt+Super+P"));
        QCOMPARE(nameOf({1, 1, 4, HotKeyModifier::option, {}}), QStringLiteral("Alt+H"));
        QCOMPARE(nameOf({1, 1, 17, HotKeyModifier::control + HotKeyModifier::command, {}}),
                 QStringLiteral("Ctrl+Super+T"));
    }

    void otherCodesHaveNoLetter() { QVERIFY(letterOf(36).isNull()); }

    void withoutRefusalsItWorks() { QCOMPARE(availabilityWithout({}, true), Availability()); }

    void refusedKeysAreNamedWithWhatToDo()
    {
        const QString reason = QStringLiteral(
            "The desktop does not give us Ctrl+Alt+Super+H, Ctrl+Alt+Super+T: bind keys of the desktop to "
            "wrenfold --toggle-panel, --hide-panel and --new-todo.");
        const QStringList refused = {QStringLiteral("Ctrl+Alt+Super+H"), QStringLiteral("Ctrl+Alt+Super+T")};
        QCOMPARE(availabilityWithout(refused, true), (Availability{Availability::Level::Limited, reason}));
        QCOMPARE(availabilityWithout(refused, false),
                 (Availability{Availability::Level::NotAvailable, reason}));
    }

    void aDesktopWithoutTheServiceRefusesAll()
    {
        NoGlobalShortcuts shortcuts;
        QVERIFY(!shortcuts.registerShortcut({1, 1, 35, 6400, {}}));
        QCOMPARE(shortcuts.availability().level, Availability::Level::NotAvailable);
        QVERIFY(shortcuts.availability().reason.endsWith(globalShortcutsRemedy()));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::GlobalShortcutsTest)
#include "global_shortcuts_test.moc"
