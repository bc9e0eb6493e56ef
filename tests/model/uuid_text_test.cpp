// SPDX-License-Identifier: MIT
#include "model/uuid_text.h"

#include "support/test_case.h"

namespace wrenfold {

class UuidTextTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theTextIsHyphenatedAndUpperCase()
    {
        const QUuid id(0xdeadbeef, 0x12ab, 0x4cd3, 0x8e, 0x0f, 0x01, 0x23, 0x45, 0x67, 0x89, 0xab);
        QCOMPARE(uuidText(id), QStringLiteral("DEADBEEF-12AB-4CD3-8E0F-0123456789AB"));
    }

    void anyLetterCaseIsRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("upper") << QStringLiteral("DEADBEEF-12AB-4CD3-8E0F-0123456789AB");
        QTest::newRow("lower") << QStringLiteral("deadbeef-12ab-4cd3-8e0f-0123456789ab");
        QTest::newRow("mixed") << QStringLiteral("DeadBeef-12aB-4Cd3-8e0F-0123456789aB");
    }

    void anyLetterCaseIsRead()
    {
        QFETCH(QString, text);
        const std::optional<QUuid> id = uuidFromText(text);
        QVERIFY(id);
        QCOMPARE(uuidText(*id), text.toUpper());
    }

    void theNullIdentifierIsAnIdentifierToo()
    {
        QCOMPARE(uuidFromText(u"00000000-0000-0000-0000-000000000000"), std::optional(QUuid()));
    }

    void anyOtherTextIsNoIdentifier_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("braces") << QStringLiteral("{DEADBEEF-12AB-4CD3-8E0F-0123456789AB}");
        QTest::newRow("brace in front") << QStringLiteral("{DEADBEEF-12AB-4CD3-8E0F-0123456789A");
        QTest::newRow("without hyphens") << QStringLiteral("DEADBEEF12AB4CD38E0F0123456789AB");
        QTest::newRow("35 characters") << QStringLiteral("DEADBEEF-12AB-4CD3-8E0F-0123456789A");
        QTest::newRow("37 characters") << QStringLiteral("DEADBEEF-12AB-4CD3-8E0F-0123456789AB0");
        QTest::newRow("blank behind") << QStringLiteral("DEADBEEF-12AB-4CD3-8E0F-0123456789AB ");
        QTest::newRow("hyphen moved") << QStringLiteral("DEADBEE-F12AB-4CD3-8E0F-0123456789AB");
        QTest::newRow("hyphen too many") << QStringLiteral("DEADBEEF-12AB-4CD3-8E0F-01234-6789AB");
        QTest::newRow("no hex digit") << QStringLiteral("GEADBEEF-12AB-4CD3-8E0F-0123456789AB");
        QTest::newRow("sign") << QStringLiteral("+EADBEEF-12AB-4CD3-8E0F-0123456789AB");
        QTest::newRow("0x") << QStringLiteral("0xADBEEF-12AB-4CD3-8E0F-0123456789AB");
        QTest::newRow("full-width digit") << QStringLiteral("DEADBEEF-12AB-4CD3-8E0F-0123456789A\uFF11");
        QTest::newRow("urn") << QStringLiteral("urn:uuid:DEADBEEF-12AB-4CD3-8E0F-012");
    }

    void anyOtherTextIsNoIdentifier()
    {
        QFETCH(QString, text);
        QCOMPARE(uuidFromText(text), std::nullopt);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::UuidTextTest)
#include "uuid_text_test.moc"
