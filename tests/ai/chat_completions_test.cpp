// SPDX-License-Identifier: MIT
#include "ai/ai_error.h"
#include "ai/chat_completions.h"
#include "model/uuid_text.h"
#include "support/http_server.h"
#include "support/test_case.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace wrenfold {

namespace {

const auto firstID = QStringLiteral("0C4D5B1E-6B5A-4B0B-9C8B-2F1D3A4E5F60");
const auto secondID = QStringLiteral("1C4D5B1E-6B5A-4B0B-9C8B-2F1D3A4E5F60");

TaskItem task(const QString &id, const QString &title)
{
    TaskItem item = TaskItem::make(title, Timestamp{});
    item.id = *uuidFromText(id);
    return item;
}

QJsonObject bodyOf(const ChatCompletionRequest &request)
{
    return QJsonDocument::fromJson(request.toJson()).object();
}

QString text(const QJsonObject &body, int message, const char *member)
{
    return body.value(QStringLiteral("messages"))
        .toArray()
        .at(message)
        .toObject()
        .value(QLatin1String(member))
        .toString();
}

/// What reading threw: an AIError's description, or nothing.
template<typename Read>
QString failureOf(Read read)
{
    try {
        (void)read();
        return {};
    } catch (const AIError &error) {
        return error.description();
    }
}

} // namespace

/// Request bodies member by member, and the reading of answers.
class ChatCompletionsTest : public TestCase
{
    Q_OBJECT

private:
    static void expectCommonMembers(const QJsonObject &body, const QString &system, double temperature)
    {
        QCOMPARE(body.keys(), (QStringList{QStringLiteral("messages"), QStringLiteral("model"),
                                           QStringLiteral("plugins"), QStringLiteral("temperature")}));
        const QJsonArray plugins = body.value(QStringLiteral("plugins")).toArray();
        QCOMPARE(plugins.size(), 1);
        QCOMPARE(plugins.first().toObject(),
                 (QJsonObject{{QStringLiteral("id"), QStringLiteral("auto-router")},
                              {QStringLiteral("cost_quality_tradeoff"), 10}}));
        QCOMPARE(body.value(QStringLiteral("temperature")).toDouble(), temperature);
        QCOMPARE(body.value(QStringLiteral("messages")).toArray().size(), 2);
        QCOMPARE(text(body, 0, "role"), QStringLiteral("system"));
        QCOMPARE(text(body, 0, "content"), system);
        QCOMPARE(text(body, 1, "role"), QStringLiteral("user"));
    }

private Q_SLOTS:
    void aPriorityRequestHasEveryTaskTheGoalAndTheNowTask()
    {
        const TaskItem first = task(firstID, QStringLiteral("\"quoted\"\nline 🍅"));
        const TaskItem second = task(secondID, QStringLiteral("資料を読む"));
        const QJsonObject body = bodyOf(makePriorityRequest(
            {first, second}, second.id, QStringLiteral(" goal "), QStringLiteral("some/model")));
        expectCommonMembers(body, QStringLiteral("Return compact JSON only. No markdown."), 0.1);
        QCOMPARE(body.value(QStringLiteral("model")).toString(), QStringLiteral("some/model"));
        QCOMPARE(text(body, 1, "content"),
                 QStringLiteral(
                     "You are prioritizing a small ADHD-friendly TODO list.\nReturn only JSON in this exact "
                     "shape: {\"ordered_ids\":[\"uuid-1\",\"uuid-2\"]}.\nPut the highest priority task "
                     "first.\nPrefer tasks that are concrete, unblock work, and match the medium-term "
                     "goal.\nKeep every provided id exactly once.\n\nMedium-term goal:  goal \nCurrent NOW "
                     "task id: 1C4D5B1E-6B5A-4B0B-9C8B-2F1D3A4E5F60\n\nTODOs:\n- id: "
                     "0C4D5B1E-6B5A-4B0B-9C8B-2F1D3A4E5F60\n  title: \"quoted\"\nline 🍅\n- id: "
                     "1C4D5B1E-6B5A-4B0B-9C8B-2F1D3A4E5F60\n  title: 資料を読む"));
    }

    void withNoActiveTaskAndNoGoalThePriorityPromptSaysNotSet()
    {
        const QJsonObject body = bodyOf(makePriorityRequest({}, std::nullopt, {}, QStringLiteral("m")));
        QVERIFY(text(body, 1, "content")
                    .endsWith(QStringLiteral("\n\nMedium-term goal: not set\nCurrent NOW task id: not "
                                             "set\n\nTODOs:\n")));
    }

    void anEmptyModelIsTheDefaultOne()
    {
        const auto modelOf = [](const ChatCompletionRequest &request) {
            return bodyOf(request).value(QStringLiteral("model")).toString();
        };
        const auto standard = QStringLiteral("~anthropic/claude-sonnet-latest");
        QCOMPARE(modelOf(makePriorityRequest({}, std::nullopt, {}, {})), standard);
        QCOMPARE(modelOf(makeSplitRequest(task(firstID, {}), {}, {})), standard);
        QCOMPARE(modelOf(makeChatRequest({}, {}, {}, {})), standard);
        QCOMPARE(modelOf(makeChatRequest({}, {}, {}, QStringLiteral(" "))), QStringLiteral(" "));
    }

    void aSplitRequestHasTheTaskAndTheGoal()
    {
        const QJsonObject body =
            bodyOf(makeSplitRequest(task(firstID, QStringLiteral("A & B_c <b>x</b>\n二行")),
                                    QStringLiteral("今週の軸"), QStringLiteral("m")));
        expectCommonMembers(body, QStringLiteral("Return compact JSON only. No markdown."), 0.2);
        QCOMPARE(text(body, 1, "content"),
                 QStringLiteral(
                     "Split this TODO into 3 to 6 concrete subtasks for an ADHD-friendly task list.\nReturn "
                     "only JSON in this exact shape: {\"subtasks\":[\"subtask 1\",\"subtask 2\"]}.\nKeep "
                     "each subtask short and actionable.\n\nMedium-term goal: 今週の軸\nTODO: A & B_c "
                     "<b>x</b>\n二行"));
        QVERIFY(text(bodyOf(makeSplitRequest(task(firstID, QStringLiteral("t")), {}, {})), 1, "content")
                    .endsWith(QStringLiteral("\n\nMedium-term goal: not set\nTODO: t")));
    }

    void aChatRequestHasTheQuestionTheGoalAndTheTitles()
    {
        const QJsonObject body = bodyOf(
            makeChatRequest(QStringLiteral("次は？"),
                            {task(firstID, QStringLiteral("一")), task(secondID, QStringLiteral("二"))},
                            QStringLiteral("goal"), QStringLiteral("m")));
        expectCommonMembers(
            body,
            QStringLiteral("You are an ADHD-friendly TODO copilot. Reply in concise Japanese. Prefer "
                           "concrete next actions, small subtasks, and priority reasoning. Do not use "
                           "markdown tables."),
            0.3);
        QCOMPARE(
            text(body, 1, "content"),
            QStringLiteral("User request:\n次は？\n\nMedium-term goal:\ngoal\n\nOpen TODOs:\n- 一\n- 二"));
        QVERIFY(
            !QString::fromUtf8(makeChatRequest({}, {task(firstID, {})}, {}, {}).toJson()).contains(firstID));
        QCOMPARE(
            text(bodyOf(makeChatRequest({}, {}, {}, {})), 1, "content"),
            QStringLiteral("User request:\n\n\nMedium-term goal:\nnot set\n\nOpen TODOs:\nNo open TODOs."));
    }

    void theBodyIsCompact() { QVERIFY(!makeChatRequest({}, {}, {}, {}).toJson().contains('\n')); }

    void theFirstChoiceIsTheAnswer()
    {
        QCOMPARE(completionContent(HttpServer::completionBody(QStringLiteral(" text \n"))),
                 QStringLiteral(" text \n"));
        QCOMPARE(completionContent(R"({"choices":[{"message":{"role":"a","content":"1"}},)"
                                   R"({"message":{"role":"a","content":"2"},"more":[]}],"id":7})"),
                 QStringLiteral("1"));
    }

    void anAnswerThatIsNoneIsADecodingErrorOrNamed_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("start");
        const auto decoding = QStringLiteral("decoding error: ");
        QTest::newRow("empty") << QByteArray() << decoding;
        QTest::newRow("no JSON") << QByteArray("<html>") << decoding;
        QTest::newRow("an array") << QByteArray("[]") << decoding;
        QTest::newRow("no choices") << QByteArray("{}") << decoding;
        QTest::newRow("choices of another type") << QByteArray(R"({"choices":"a"})") << decoding;
        QTest::newRow("empty choices") << QByteArray(R"({"choices":[]})") << QStringLiteral("missingContent");
        QTest::newRow("a choice without a message") << QByteArray(R"({"choices":[{}]})") << decoding;
        QTest::newRow("a message without a role")
            << QByteArray(R"({"choices":[{"message":{"content":"a"}}]})") << decoding;
        QTest::newRow("a message without a content")
            << QByteArray(R"({"choices":[{"message":{"role":"a"}}]})") << decoding;
        QTest::newRow("null content")
            << QByteArray(R"({"choices":[{"message":{"role":"a","content":null}}]})") << decoding;
        QTest::newRow("a second choice without a message")
            << QByteArray(R"({"choices":[{"message":{"role":"a","content":"1"}},{}]})") << decoding;
        QTest::newRow("invalid UTF-8")
            << QByteArray("{\"choices\":[{\"message\":{\"role\":\"a\",\"content\":\"\xff\xfe\"}}]}")
            << decoding;
        QTest::newRow("deeply nested") << QByteArray(100'000, '[') << decoding;
    }

    void anAnswerThatIsNoneIsADecodingErrorOrNamed()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, start);
        const QString failure = failureOf([&] { return completionContent(body); });
        QVERIFY2(failure.startsWith(start), qPrintable(failure));
        QVERIFY(!failure.contains(u'\n'));
    }

    void anObjectInAFencedBlockAfterProseIsReadFromTheObjectAlone()
    {
        const QString content =
            QStringLiteral("Here you are.\n```json\n{\"subtasks\":[\"一\",\" 二 \"]}\n```\nGood luck!");
        QCOMPARE(splitTitles(content), (QStringList{QStringLiteral("一"), QStringLiteral(" 二 ")}));
    }

    void anAnswerWithTwoObjectsFailsToDecode()
    {
        const QString content = QStringLiteral(R"({"subtasks":["a"]} or {"subtasks":["b"]})");
        QCOMPARE(extractedObject(content), content.toUtf8());
        QVERIFY(
            failureOf([&] { return splitTitles(content); }).startsWith(QStringLiteral("decoding error: ")));
    }

    void anAnswerWithoutBracesIsDecodedAsItStands()
    {
        QCOMPARE(extractedObject(QStringLiteral(" nothing ")), QByteArray(" nothing "));
        QVERIFY(failureOf([] {
                    return splitTitles(QStringLiteral("nothing"));
                }).startsWith(QStringLiteral("decoding error: ")));
        QVERIFY(failureOf([] {
                    return splitTitles(QStringLiteral("{ half"));
                }).startsWith(QStringLiteral("decoding error: ")));
    }

    void anAnswerWhoseLastBraceClosesBeforeTheFirstOpensHasNoContent()
    {
        QCOMPARE(failureOf([] { return orderedIDs(QStringLiteral("} nothing {")); }),
                 QStringLiteral("missingContent"));
    }

    void anAnswerThatIsNoUtf8HasNoContent()
    {
        const QString half = QStringLiteral("{\"subtasks\":[\"") + QChar(0xD800) + QStringLiteral("\"]}");
        QCOMPARE(failureOf([&] { return splitTitles(half); }), QStringLiteral("missingContent"));
    }

    void orderedIdsThatAreNoIdentifiersAreLeftOut()
    {
        const QString content = QStringLiteral(R"({"ordered_ids":["%1","first","","{%1}","%2","%1"]})")
                                    .arg(firstID.toLower(), secondID);
        QCOMPARE(orderedIDs(content),
                 (QList<QUuid>{*uuidFromText(firstID), *uuidFromText(secondID), *uuidFromText(firstID)}));
    }

    void membersOfTheWrongTypeAreDecodingErrors()
    {
        for (const char *content :
             {"{}", R"({"ordered_ids":null})", R"({"ordered_ids":{}})", R"({"ordered_ids":[1]})"})
            QVERIFY2(failureOf([&] {
                         return orderedIDs(QLatin1String(content));
                     }).startsWith(QStringLiteral("decoding error: ")),
                     content);
        for (const char *content : {"{}", R"({"subtasks":"a"})", R"({"subtasks":["a",null]})"})
            QVERIFY2(failureOf([&] {
                         return splitTitles(QLatin1String(content));
                     }).startsWith(QStringLiteral("decoding error: ")),
                     content);
        QCOMPARE(orderedIDs(QStringLiteral(R"({"ordered_ids":[]})")), QList<QUuid>());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::ChatCompletionsTest)
#include "chat_completions_test.moc"
