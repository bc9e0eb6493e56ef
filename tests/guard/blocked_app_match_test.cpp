// SPDX-License-Identifier: MIT
#include "guard/blocked_app_match.h"
#include "support/test_case.h"

namespace wrenfold {

namespace {

using Text = std::optional<QString>;

BlockedApp named(const QString &name, const Text &identifier = std::nullopt)
{
    return {identifier.value_or(name), name, identifier, std::nullopt};
}

} // namespace

class BlockedAppMatchTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void anIdentifierBlocksWhateverTheNameAndInAnyCase()
    {
        const QList<BlockedApp> blocked = {named(QStringLiteral("Chat"), QStringLiteral("org.example.Chat"))};
        QVERIFY(isBlocked({QStringLiteral("ORG.example.chat"), QStringLiteral("おしゃべり")}, blocked));
        QVERIFY(!isBlocked({QStringLiteral("org.example.Mail"), QStringLiteral("Mail")}, blocked));
    }

    void anEntryWithABlankNameAndNoIdentifierBlocksNothing()
    {
        const RunningApplication any = {QStringLiteral("org.example.Chat"), QStringLiteral(" ")};
        QVERIFY(!isBlocked(any, {named({})}));
        QVERIFY(!isBlocked(any, {named(QStringLiteral(" \n\t"))}));
        QVERIFY(!isBlocked(any, {named({}, QString())}));
        QVERIFY(!isBlocked({}, {named({}, QString())}));
    }

    void aNameBlocksWhatIsCalledSoOrHasItInItsNameOrIdentifier()
    {
        const QList<BlockedApp> blocked = {named(QStringLiteral(" Line\n"))};
        QVERIFY(isBlocked({std::nullopt, QStringLiteral("LINE")}, blocked));
        QVERIFY(isBlocked({std::nullopt, QStringLiteral("Online Banking")}, blocked));
        QVERIFY(isBlocked({QStringLiteral("jp.naver.line"), QStringLiteral("ライン")}, blocked));
        QVERIFY(!isBlocked({QStringLiteral("org.example.Lime"), QStringLiteral("Lime")}, blocked));
        QVERIFY(!isBlocked({}, blocked));
    }

    void thePathTakesNoPart()
    {
        const BlockedApp entry = {QStringLiteral("/usr/share/applications/xterm.desktop"),
                                  QStringLiteral("端末"), std::nullopt,
                                  QStringLiteral("/usr/share/applications/xterm.desktop")};
        QVERIFY(!isBlocked({QStringLiteral("xterm"), QStringLiteral("XTerm")}, {entry}));
    }

    void oneOfSeveralEntriesIsEnough()
    {
        QVERIFY(isBlocked({std::nullopt, QStringLiteral("Chat")},
                          {named(QStringLiteral("Mail")), named(QStringLiteral("chat"))}));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::BlockedAppMatchTest)
#include "blocked_app_match_test.moc"
