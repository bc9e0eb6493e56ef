// SPDX-License-Identifier: MIT
#include "ai/one_password_items.h"
#include "support/test_case.h"

namespace wrenfold {

class OnePasswordItemsTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theReferencesAreTriedInThisOrder()
    {
        QCOMPARE(OnePasswordItems::secretReferences(),
                 (QStringList{
                     QStringLiteral("op://Private/OpenRouter API Key/credential"),
                     QStringLiteral("op://Private/OpenRouter API Key/password"),
                     QStringLiteral("op://Private/OpenRouter/credential"),
                     QStringLiteral("op://Private/OpenRouter/password"),
                     QStringLiteral("op://Personal/OpenRouter API Key/credential"),
                     QStringLiteral("op://Personal/OpenRouter API Key/password"),
                     QStringLiteral("op://Personal/OpenRouter/credential"),
                     QStringLiteral("op://Personal/OpenRouter/password"),
                 }));
    }

    void itemsCalledAfterTheServiceAreCandidatesInAnyLetterCase()
    {
        const QByteArray list = R"([
            {"id":"1","title":"OPENROUTER key"}, {"id":"2","title":"my Open Router"}, {"id":"3","title":"open-router"},
            {"id":4,"title":"openrouter"}, {"title":"openrouter"}, {"id":"5"}, {"id":"6","title":7},
            {"id":"7","title":"openrouter"}])";
        QCOMPARE(OnePasswordItems::candidates(list),
                 (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("7")}));
    }

    void aListThatIsNoneHasNoCandidates_data()
    {
        QTest::addColumn<QByteArray>("list");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("no JSON") << QByteArray("[ERROR] not signed in");
        QTest::newRow("an object") << QByteArray(R"({"id":"1","title":"openrouter"})");
        QTest::newRow("not only objects") << QByteArray(R"([{"id":"1","title":"openrouter"},2])");
        QTest::newRow("empty") << QByteArray("[]");
    }

    void aListThatIsNoneHasNoCandidates()
    {
        QFETCH(QByteArray, list);
        QCOMPARE(OnePasswordItems::candidates(list), QStringList());
    }

    void aFieldIsAKeyByItsLabelItsPurposeOrItsType_data()
    {
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<bool>("isKey");
        QTest::newRow("credential") << QByteArray(R"("label":"My Credential")") << true;
        QTest::newRow("password") << QByteArray(R"("label":"PASSWORD")") << true;
        QTest::newRow("api") << QByteArray(R"("label":"API token")") << true;
        QTest::newRow("identifier in place of a label") << QByteArray(R"("id":"credential")") << true;
        QTest::newRow("the label wins over the identifier")
            << QByteArray(R"("label":"note","id":"credential")") << false;
        QTest::newRow("a label of another type") << QByteArray(R"("label":1,"id":"credential")") << true;
        QTest::newRow("purpose") << QByteArray(R"("label":"x","purpose":"PASSWORD")") << true;
        QTest::newRow("type") << QByteArray(R"("label":"x","type":"CONCEALED")") << true;
        QTest::newRow("none of these")
            << QByteArray(R"("label":"username","purpose":"USERNAME","type":"STRING")") << false;
        QTest::newRow("nothing") << QByteArray(R"("x":1)") << false;
    }

    void aFieldIsAKeyByItsLabelItsPurposeOrItsType()
    {
        QFETCH(QByteArray, field);
        QFETCH(bool, isKey);
        QCOMPARE(OnePasswordItems::keyIn(R"({"fields":[{)" + field + R"(,"value":" sk-1\n"}]})"),
                 isKey ? QStringLiteral("sk-1") : QString());
    }

    void aFieldWithAnApiLabelIsTakenBeforeALaterConcealedOne()
    {
        QCOMPARE(OnePasswordItems::keyIn(
                     R"({"fields":[{"label":"the aPi","value":"1"},{"type":"CONCEALED","value":"2"}]})"),
                 QStringLiteral("1"));
    }

    void aFieldWithoutAValueGivesWayToTheNext()
    {
        QCOMPARE(OnePasswordItems::keyIn(R"({"fields":[{"label":"api"},{"label":"api","value":3},
                     {"label":"api","value":" \n"},{"type":"concealed","value":"2"}]})"),
                 QStringLiteral("2"));
    }

    void anItemThatIsNoneHasNoKey_data()
    {
        QTest::addColumn<QByteArray>("item");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("no JSON") << QByteArray("{");
        QTest::newRow("an array") << QByteArray("[]");
        QTest::newRow("no fields") << QByteArray("{}");
        QTest::newRow("fields of another type") << QByteArray(R"({"fields":"api"})");
        QTest::newRow("not only objects") << QByteArray(R"({"fields":[{"label":"api","value":"1"},2]})");
    }

    void anItemThatIsNoneHasNoKey()
    {
        QFETCH(QByteArray, item);
        QCOMPARE(OnePasswordItems::keyIn(item), QString());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::OnePasswordItemsTest)
#include "one_password_items_test.moc"
