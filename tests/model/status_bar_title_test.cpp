// SPDX-License-Identifier: MIT
#include "model/status_bar_title.h"

#include "support/test_case.h"

namespace wrenfold {

namespace {

const QString family = QStringLiteral("👨‍👩‍👧‍👦");
const QString flag = QStringLiteral("🇯🇵");
const QString combined = QStringLiteral("か\u3099"); // か with a combining voiced mark

} // namespace

class StatusBarTitleTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void a19CharacterTitleIsCutTo16AndAnEllipsis()
    {
        QCOMPARE(statusBarTitle(QStringLiteral("1234567890123456789")), QStringLiteral("1234567890123456…"));
    }

    void an18CharacterTitleShowsWhole()
    {
        QCOMPARE(statusBarTitle(QStringLiteral("123456789012345678")), QStringLiteral("123456789012345678"));
    }

    void aShortOrEmptyTitleShowsWhole()
    {
        QCOMPARE(statusBarTitle(QStringLiteral("今日")), QStringLiteral("今日"));
        QCOMPARE(statusBarTitle(QString()), QString());
    }

    void aCharacterIsWhatAPersonSeesAsOne_data()
    {
        QTest::addColumn<QString>("character");
        QTest::newRow("family emoji") << family;
        QTest::newRow("flag") << flag;
        QTest::newRow("combining mark") << combined;
        QTest::newRow("beyond the first plane") << QStringLiteral("𠮷");
        QTest::newRow("skin tone") << QStringLiteral("👍🏽");
        QTest::newRow("line break of two") << QStringLiteral("\r\n");
    }

    void aCharacterIsWhatAPersonSeesAsOne()
    {
        QFETCH(QString, character);
        QCOMPARE(statusBarTitle(character.repeated(18)), character.repeated(18));
        QCOMPARE(statusBarTitle(character.repeated(19)), character.repeated(16) + QStringLiteral("…"));
    }

    void aCutNeverPartsACharacter()
    {
        const QString title = QStringLiteral("123456789012345") + family + QStringLiteral("789");
        QCOMPARE(statusBarTitle(title), QStringLiteral("123456789012345") + family + QStringLiteral("…"));
    }

    void aVeryLongTitleIsCut()
    {
        QCOMPARE(statusBarTitle(QStringLiteral("あ").repeated(1'000'000)),
                 QStringLiteral("あ").repeated(16) + QStringLiteral("…"));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::StatusBarTitleTest)
#include "status_bar_title_test.moc"
