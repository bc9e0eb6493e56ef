// SPDX-License-Identifier: MIT
#include "platform/linux/portal_shortcut.h"

#include "platform/global_shortcuts.h"
#include "support/test_case.h"

namespace wrenfold {

/// What is written to the portal and read from it.
class PortalShortcutTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theIDIsOfTheSignatureAndTheNumber()
    {
        QCOMPARE(PortalShortcut::idOf({0x574E4644, 3, VirtualKey::T, 6400, {}}), QStringLiteral("WNFD-3"));
    }

    void keysAreAskedForInThePortalsWords()
    {
        const QString description = QStringLiteral("パネルを隠す");
        const PortalShortcut all = PortalShortcut::asking({0x574E4644, 2, VirtualKey::H, 6400, description});
        QCOMPARE(all.id, QStringLiteral("WNFD-2"));
        QCOMPARE(all.properties,
                 (QVariantMap{{QStringLiteral("description"), description},
                              {QStringLiteral("preferred_trigger"), QStringLiteral("CTRL+ALT+LOGO+h")}}));
        const PortalShortcut one =
            PortalShortcut::asking({1, 1, VirtualKey::P, HotKeyModifier::option, description});
        QCOMPARE(one.properties.value(QStringLiteral("preferred_trigger")), QStringLiteral("ALT+p"));
    }

    void onlyAnEmptyDescriptionSaysThatThereAreNoKeys()
    {
        const auto trigger = QStringLiteral("trigger_description");
        QVERIFY((PortalShortcut{{}, {{trigger, QStringLiteral("Meta+F1")}}}.hasKeys()));
        QVERIFY((PortalShortcut{{}, {}}.hasKeys()));
        QVERIFY((!PortalShortcut{{}, {{trigger, QString()}}}.hasKeys()));
    }

    void whatIsNoListHasNoShortcuts()
    {
        QVERIFY(PortalShortcut::listFrom({}).isEmpty());
        QVERIFY(PortalShortcut::listFrom(7).isEmpty());
        QVERIFY(PortalShortcut::listFrom(QStringList{QStringLiteral("WNFD-1")}).isEmpty());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::PortalShortcutTest)
#include "portal_shortcut_test.moc"
