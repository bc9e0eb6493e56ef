// SPDX-License-Identifier: MIT
#include "ai/one_answer.h"
#include "ai/openrouter_api_key_provider.h"
#include "ai/openrouter_task_sorter.h"
#include "model/store_on_fakes.h"
#include "model/uuid_text.h"
#include "support/http_server.h"
#include "support/log_capture.h"
#include "support/test_case.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>

namespace wrenfold {

namespace {

const auto key = QStringLiteral("sk-secret");

QString orderedIDsJson(const QStringList &ids)
{
    return QStringLiteral(R"({"ordered_ids":["%1"]})").arg(ids.join(QStringLiteral("\",\"")));
}

} // namespace

/// What is sent, and what a well-behaved service's answers become.
class OpenRouterTaskSorterTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        qunsetenv("OPENROUTER_API_KEY");
    }

    void aSortIsOnePostWithTheKeyAndTheBody()
    {
        HttpServer server;
        server.setAnswer(HttpServer::completion(orderedIDsJson({QStringLiteral("none")})));
        OpenRouterTaskSorter sorter({server.origin(), {}});
        const TaskItem task = madeTask(QStringLiteral("\"一\"\n🍅"));
        const QStringList answer = oneAnswer(
            sorter.prioritizedTaskIDs({task}, task.id, QStringLiteral("goal"), key, QStringLiteral("m")));
        QCOMPARE(answer, QStringList{QStringLiteral("0")});
        QCOMPARE(server.requests().size(), 1);
        const HttpServer::Request &request = server.requests().first();
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.path, QByteArray("/api/v1/chat/completions"));
        QCOMPARE(request.headers.value("authorization"), QByteArray("Bearer sk-secret"));
        QCOMPARE(request.headers.value("content-type"), QByteArray("application/json"));
        QCOMPARE(request.headers.value("x-openrouter-title"), QByteArray("Wrenfold"));
        QCOMPARE(request.body,
                 makePriorityRequest({task}, task.id, QStringLiteral("goal"), QStringLiteral("m")).toJson());
    }

    void aSplitIsOnePostWithItsBody()
    {
        HttpServer server;
        server.setAnswer(HttpServer::completion(QStringLiteral(R"({"subtasks":[" a ","","b"]})")));
        OpenRouterTaskSorter sorter({server.origin(), {}});
        const TaskItem task = madeTask(QStringLiteral("A & B_c <b>x</b>"));
        const QStringList answer = oneAnswer(sorter.splitTask(task, {}, key, {}));
        QCOMPARE(answer, (QStringList{QStringLiteral(" a "), QString(), QStringLiteral("b")}));
        QCOMPARE(server.requests().size(), 1);
        QCOMPARE(server.requests().first().body, makeSplitRequest(task, {}, {}).toJson());
    }

    void aQuestionIsOnePostAndItsAnswerIsTrimmed()
    {
        HttpServer server;
        OpenRouterTaskSorter sorter({server.origin(), {}});
        const TaskItem task = madeTask(QStringLiteral("\"一\"\n🍅"));
        server.setAnswer(HttpServer::completion(QStringLiteral(" \nまず{これ}を。\n")));
        QCOMPARE(oneAnswer(sorter.chat(QStringLiteral("次は？"), {task}, {}, key, {})),
                 QStringList{QStringLiteral("まず{これ}を。")});
        QCOMPARE(server.requests().size(), 1);
        QCOMPARE(server.requests().first().path, QByteArray("/api/v1/chat/completions"));
        QCOMPARE(server.requests().first().body,
                 makeChatRequest(QStringLiteral("次は？"), {task}, {}, {}).toJson());
        server.setAnswer(HttpServer::completion(QStringLiteral(" \n")));
        QCOMPARE(oneAnswer(sorter.chat({}, {}, {}, key, {})), QStringList{QString()});
    }

    void identifiersComeInTheServicesOrder()
    {
        HttpServer server;
        const QUuid first = QUuid::createUuid();
        const QUuid second = QUuid::createUuid();
        server.setAnswer(HttpServer::completion(
            orderedIDsJson({uuidText(second), QStringLiteral("none"), uuidText(first), uuidText(second)})));
        OpenRouterTaskSorter sorter({server.origin(), {}});
        const QFuture<QList<QUuid>> ids = sorter.prioritizedTaskIDs({}, std::nullopt, {}, key, {});
        QVERIFY(QTest::qWaitFor([&] { return ids.isFinished(); }));
        QCOMPARE(ids.result(), (QList<QUuid>{second, first, second}));
    }

    void theOverrideIsTrimmedAndWinsOverTheEnvironment()
    {
        HttpServer server;
        server.setAnswer(HttpServer::completion(QStringLiteral(R"({"subtasks":[]})")));
        OpenRouterTaskSorter sorter({server.origin(), {}});
        qputenv("OPENROUTER_API_KEY", " from the environment ");
        for (const char *apiKeyOverride : {" mine\n", " ", ""})
            (void)oneAnswer(sorter.splitTask(madeTask({}), {}, QLatin1String(apiKeyOverride), {}));
        QCOMPARE(server.requests().size(), 3);
        QCOMPARE(server.requests().at(0).headers.value("authorization"), QByteArray("Bearer mine"));
        for (int i : {1, 2})
            QVERIFY(server.requests().at(i).headers.value("authorization").contains("from the environment"));
    }

    void theKeyIsTheTrimmedOverrideOrTheEnvironmentsAsItStands()
    {
        qputenv("OPENROUTER_API_KEY", "  from the environment ");
        QCOMPARE(OpenRouterAPIKeyProvider::apiKey(QString::fromUtf8("\u3000\n mi ne\t ")),
                 QStringLiteral("mi ne"));
        QCOMPARE(OpenRouterAPIKeyProvider::apiKey(QStringLiteral(" \n")),
                 QStringLiteral("  from the environment "));
        QCOMPARE(OpenRouterAPIKeyProvider::apiKey({}), QStringLiteral("  from the environment "));
        qputenv("OPENROUTER_API_KEY", " ");
        QCOMPARE(OpenRouterAPIKeyProvider::apiKey({}), QStringLiteral(" "));
        qputenv("OPENROUTER_API_KEY", "");
        QVERIFY_THROWS_EXCEPTION(AIError, (void)OpenRouterAPIKeyProvider::apiKey({}));
    }

    void aKeyThatWouldBreakTheHeadIsRefusedWithoutBeingTold_data()
    {
        QTest::addColumn<QString>("secret");
        for (const char16_t character : {u'\n', u'\r', u'\0', u'\t', u'\x1b', u'\x7f'})
            QTest::addRow("%#x", uint(character))
                << QStringLiteral("sk-1") + QChar(character) + QStringLiteral("X-Forged: 1");
    }

    void aKeyThatWouldBreakTheHeadIsRefusedWithoutBeingTold()
    {
        QFETCH(QString, secret);
        HttpServer server;
        server.setAnswer(HttpServer::completion(QStringLiteral(R"({"subtasks":[]})")));
        OpenRouterTaskSorter sorter({server.origin(), {}});
        QCOMPARE(oneAnswer(sorter.splitTask(madeTask({}), {}, secret, {})),
                 QStringList{QStringLiteral("! transport error: the key holds control characters")});
        if (!secret.contains(u'\0')) { // No variable can hold that.
            qputenv("OPENROUTER_API_KEY", secret.toUtf8());
            QCOMPARE(oneAnswer(sorter.splitTask(madeTask({}), {}, {}, {})),
                     QStringList{QStringLiteral("! transport error: the key holds control characters")});
        }
        QCOMPARE(server.connectionCount(), 0);
    }

    void withoutAKeyNothingIsSent()
    {
        HttpServer server;
        OpenRouterTaskSorter sorter({server.origin(), {}});
        for (const char *environment : {"", static_cast<const char *>(nullptr)}) {
            if (environment)
                qputenv("OPENROUTER_API_KEY", environment);
            else
                qunsetenv("OPENROUTER_API_KEY");
            QCOMPARE(oneAnswer(sorter.splitTask(madeTask({}), {}, QStringLiteral(" \n"), {})),
                     QStringList{QStringLiteral("! missingAPIKey")});
        }
        QCOMPARE(server.connectionCount(), 0);
    }

    void aRefusedOriginIsToldAndNothingIsSent()
    {
        OpenRouterTaskSorter sorter(ServiceOrigin::named(QStringLiteral("http://gateway.example")));
        const QString answer = oneAnswer(sorter.splitTask(madeTask({}), {}, key, {})).first();
        QVERIFY2(answer.contains(QStringLiteral("WRENFOLD_OPENROUTER_ORIGIN is refused")),
                 qPrintable(answer));
    }

    void severalRequestsRunAtOnce()
    {
        HttpServer server;
        QHash<QByteArray, QTcpSocket *> waiting; // By what was sent: which one comes first is left open.
        server.setAnswer([&](QTcpSocket &socket) { waiting.insert(server.requests().last().body, &socket); });
        OpenRouterTaskSorter sorter({server.origin(), {}});
        const TaskItem one = madeTask(QStringLiteral("1"));
        const TaskItem two = madeTask(QStringLiteral("2"));
        const QFuture<QStringList> first = sorter.splitTask(one, {}, key, {});
        const QFuture<QStringList> second = sorter.splitTask(two, {}, key, {});
        QTRY_COMPARE(waiting.size(), 2);
        HttpServer::completion(QStringLiteral(R"({"subtasks":["second"]})"))(
            *waiting.value(makeSplitRequest(two, {}, {}).toJson()));
        QCOMPARE(oneAnswer(second), QStringList{QStringLiteral("second")});
        QVERIFY(!first.isFinished());
        HttpServer::completion(QStringLiteral(R"({"subtasks":["first"]})"))(
            *waiting.value(makeSplitRequest(one, {}, {}).toJson()));
        QCOMPARE(oneAnswer(first), QStringList{QStringLiteral("first")});
    }

    void aSorterThatGoesCancelsWhatIsUnderWay()
    {
        HttpServer server;
        std::optional<OpenRouterTaskSorter> sorter(std::in_place, ServiceOrigin{server.origin(), {}});
        const QFuture<QStringList> answer = sorter->splitTask(madeTask({}), {}, key, {});
        QTRY_COMPARE(server.requests().size(), 1);
        sorter.reset();
        QTRY_VERIFY(answer.isFinished());
        QVERIFY(answer.isCanceled());
    }

    void theKeyIsInNoLogAndInNoErrorText_data()
    {
        QTest::addColumn<HttpServer::Answer>("answer");
        QTest::addColumn<QString>("start");
        const auto transport = QStringLiteral("! transport error: ");
        const auto decoding = QStringLiteral("! decoding error: ");
        QTest::newRow("status") << HttpServer::answer(401, "sk-secret is wrong")
                                << QStringLiteral("! badResponse");
        QTest::newRow("status line") << HttpServer::Answer([](QTcpSocket &socket) {
            socket.write("HTTP/1.1 500 sk-secret\r\nContent-Length: 0\r\n\r\n");
            socket.disconnectFromHost();
        }) << QStringLiteral("! badResponse");
        QTest::newRow("no HTTP") << HttpServer::Answer([](QTcpSocket &socket) {
            socket.write("sk-secret\r\n\r\n");
            socket.disconnectFromHost();
        }) << QStringLiteral("! ");
        QTest::newRow("closed") << HttpServer::Answer([](QTcpSocket &socket) { socket.disconnectFromHost(); })
                                << transport;
        QTest::newRow("closed in the middle") << HttpServer::Answer([](QTcpSocket &socket) {
            socket.write("HTTP/1.1 200 sk-secret\r\nContent-Length: 99\r\n\r\nsk-secret");
            socket.disconnectFromHost();
        }) << transport;
        QTest::newRow("packed badly")
            << HttpServer::answer(200, "sk-secret", "Content-Encoding: gzip\r\n") << QStringLiteral("! ");
        QTest::newRow("no JSON") << HttpServer::answer(200, "sk-secret") << decoding;
        QTest::newRow("no completion") << HttpServer::answer(200, R"({"sk-secret":"sk-secret"})") << decoding;
        QTest::newRow("prose") << HttpServer::completion(key) << decoding;
        QTest::newRow("another object")
            << HttpServer::completion(QStringLiteral(R"({"sk-secret":["sk-secret"]})")) << decoding;
    }

    void theKeyIsInNoLogAndInNoErrorText()
    {
        QFETCH(HttpServer::Answer, answer);
        QFETCH(QString, start);
        HttpServer server;
        server.setAnswer(answer);
        OpenRouterTaskSorter sorter({server.origin(), {}});
        QLoggingCategory::setFilterRules(QStringLiteral("*=true"));
        LogCapture log;
        const QString failure = oneAnswer(sorter.splitTask(madeTask({}), {}, key, {})).first();
        const QString lines = log.take().join(u'\n');
        QLoggingCategory::setFilterRules({});
        QVERIFY2(failure.startsWith(start), qPrintable(failure));
        QVERIFY2(!failure.contains(key), qPrintable(failure));
        QVERIFY2(!lines.contains(key), qPrintable(lines));
    }

    void theKeyIsInNoTextOfAConnectionThatCannotBeMade()
    {
        QUrl origin;
        {
            const HttpServer server;
            origin = server.origin();
        }
        LogCapture log;
        for (const QString &scheme : {QStringLiteral("http"), QStringLiteral("https")}) {
            origin.setScheme(scheme);
            OpenRouterTaskSorter sorter({origin, {}});
            const QString failure = oneAnswer(sorter.splitTask(madeTask({}), {}, key, {})).first();
            QVERIFY2(failure.startsWith(QStringLiteral("! transport error: ")), qPrintable(failure));
            QVERIFY2(!failure.contains(key), qPrintable(failure));
        }
        QVERIFY(!log.take().join(u'\n').contains(key));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::OpenRouterTaskSorterTest)
#include "openrouter_task_sorter_test.moc"
