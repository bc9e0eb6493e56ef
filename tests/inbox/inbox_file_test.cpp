// SPDX-License-Identifier: MIT
#include "inbox/candidate_json.h"
#include "inbox/inbox_file.h"
#include "support/test_case.h"

#include <QTimeZone>

namespace wrenfold {

namespace {

const QUrl file = QUrl::fromLocalFile(QStringLiteral("/inbox/mail.json"));
const QDateTime written(QDate(2026, 3, 1), QTime(8, 0), QTimeZone::utc());

std::optional<InboxItem> decoded(const QByteArray &json)
{
    return InboxFile::decode(file, json, written);
}

} // namespace

class InboxFileTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void jsonIsTheOnlyExtensionInAnyCase()
    {
        QVERIFY(InboxFile::isCandidateName(QStringLiteral("a.json")));
        QVERIFY(InboxFile::isCandidateName(QStringLiteral("a.JSON")));
        QVERIFY(InboxFile::isCandidateName(QStringLiteral("a.b.Json")));
        for (const char *other : {"a.txt", "a.json.tmp", "json", ".json", "a.jsonl", "a"})
            QVERIFY2(!InboxFile::isCandidateName(QString::fromLatin1(other)), other);
    }

    void everyMemberIsTakenOver()
    {
        const auto item = decoded(json(
            "{'text':'  買い物 \\n','source':' GMail "
            "','url':'https://example.org/m?id=1','receivedAt':'2025-01-31T09:15:00Z','else':{'a':[1]}}"));
        QVERIFY(item);
        QCOMPARE(item->id, QStringLiteral("mail.json"));
        QCOMPARE(item->fileURL, file);
        QCOMPARE(item->text, QStringLiteral("買い物"));
        QCOMPARE(item->source, QStringLiteral("gmail"));
        QCOMPARE(item->url, QUrl(QStringLiteral("https://example.org/m?id=1")));
        QCOMPARE(item->receivedAt, QDateTime(QDate(2025, 1, 31), QTime(9, 15), QTimeZone::utc()));
    }

    void textAloneIsEnough()
    {
        const auto item = decoded(json("{'text':'a'}"));
        QVERIFY(item);
        QCOMPARE(item->source, QString());
        QVERIFY(!item->url);
        QCOMPARE(item->receivedAt, written);
    }

    void nullIsAsGoodAsAbsent()
    {
        QCOMPARE(decoded(json("{'text':'a','source':null,'url':null,'receivedAt':null}")),
                 decoded(json("{'text':'a'}")));
    }

    void aTextOfBlanksIsNoCandidate() { QVERIFY(!decoded(json("{'text':' \\t\\n\\u3000'}"))); }

    void whatIsNoCandidateIsSkipped_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("half written") << json("{'text':'a','sour");
        QTest::newRow("no object") << json("['text']");
        QTest::newRow("no text") << json("{'source':'mail'}");
        QTest::newRow("text is a number") << json("{'text':1}");
        QTest::newRow("text is null") << json("{'text':null}");
        QTest::newRow("source is a number") << json("{'text':'a','source':1}");
        QTest::newRow("url is a list") << json("{'text':'a','url':[]}");
        QTest::newRow("receivedAt is a number") << json("{'text':'a','receivedAt':1700000000}");
        QTest::newRow("invalid UTF-8") << QByteArray("{\"text\":\"a\xff\"}");
        QTest::newRow("nested 100,000 deep")
            << json("{'text':'a','x':") + QByteArray(100'000, '[') + QByteArray(100'000, ']') + '}';
        QTest::newRow("two documents") << json("{'text':'a'}{'text':'b'}");
    }
    void whatIsNoCandidateIsSkipped()
    {
        QFETCH(QByteArray, json);
        QVERIFY(!decoded(json));
    }

    void aDateWithAndOneWithoutAFractionAreRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDateTime>("moment");
        const QDateTime moment(QDate(2025, 1, 31), QTime(9, 15), QTimeZone::utc());
        QTest::newRow("whole seconds") << QStringLiteral("2025-01-31T09:15:00Z") << moment;
        QTest::newRow("milliseconds") << QStringLiteral("2025-01-31T09:15:00.250Z") << moment.addMSecs(250);
        QTest::newRow("tenths") << QStringLiteral("2025-01-31T09:15:00.5Z") << moment.addMSecs(500);
        QTest::newRow("zone") << QStringLiteral("2025-01-31T18:15:00+09:00") << moment;
        QTest::newRow("zone and milliseconds")
            << QStringLiteral("2025-01-31T09:15:00.250+09:00") << moment.addSecs(-9 * 3600).addMSecs(250);
        QTest::newRow("west") << QStringLiteral("2025-01-31T06:45:00-02:30") << moment;
    }
    void aDateWithAndOneWithoutAFractionAreRead()
    {
        QFETCH(QString, text);
        QFETCH(QDateTime, moment);
        QCOMPARE(InboxFile::internetDateTime(text), moment);
    }

    void whatIsNoInternetDateGivesWayToTheFilesDate_data()
    {
        QTest::addColumn<QString>("text");
        for (const char *text :
             {"", "yesterday", "2025-01-31", "2025-01-31T09:15:00", "2025-01-31 09:15:00Z",
              "2025-02-30T09:15:00Z", "2025-01-31T25:15:00Z", "2025-01-31T09:15Z", "1738314900"})
            QTest::newRow(*text ? text : "empty") << QString::fromLatin1(text);
    }
    void whatIsNoInternetDateGivesWayToTheFilesDate()
    {
        QFETCH(QString, text);
        const auto item =
            decoded(QString::fromUtf8(json("{'text':'a','receivedAt':'%1'}")).arg(text).toUtf8());
        QVERIFY(item);
        QCOMPARE(item->receivedAt, written);
    }

    void aLinkThatIsNoneIsLeftOut()
    {
        QVERIFY(!decoded(json("{'text':'a','url':''}"))->url);
        QVERIFY(!decoded(json("{'text':'a','url':'http://a b/'}"))->url);
        QVERIFY(!decoded(json("{'text':'a','url':'http://[::1'}"))->url);
        QCOMPARE(decoded(json("{'text':'a','url':'mailto:a@example.org'}"))->url,
                 QUrl(QStringLiteral("mailto:a@example.org")));
    }

    void markupAndBreaksStayText()
    {
        const auto item = decoded(json("{'text':'A & B_c <b>x</b>\\nsecond','source':'<i>Mail</i>'}"));
        QVERIFY(item);
        QCOMPARE(item->text, QStringLiteral("A & B_c <b>x</b>\nsecond"));
        QCOMPARE(item->source, QStringLiteral("<i>mail</i>"));
    }

    void aNameOfAnyCharactersIsTheIdentity()
    {
        const QString name = QStringLiteral("買い物 #1%20\n?.json");
        const QUrl url = QUrl::fromLocalFile(QStringLiteral("/inbox/") + name);
        QCOMPARE(InboxFile::decode(url, json("{'text':'a'}"), written)->id, name);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::InboxFileTest)
#include "inbox_file_test.moc"
