// SPDX-License-Identifier: MIT
#include "ai/one_answer.h"
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
        QList<QTcpSocket *> waiting;
        server.setAnswer([&](QTcpSocket &socket) { waiting.append(&socket); });
        OpenRouterTaskSorter sorter({server.origin(), {}});
        const QFuture<QStringList> first = sorter.splitTask(madeTask(QStringLiteral("1")), {}, key, {});
        const QFuture<QStringList> second = sorter.splitTask(madeTask(QStringLiteral("2")), {}, key, {});
        QTRY_COMPARE(waiting.size(), 2);
        HttpServer::completion(QStringLiteral(R"({"subtasks":["second"]})"))(*waiting.last());
        QTRY_VERIFY(second.isFinished());
        QVERIFY(!first.isFinished());
        HttpServer::completion(QStringLiteral(R"({"subtasks":["first"]})"))(*waiting.first());
        QTRY_VERIFY(first.isFinished());
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

    void nothingOfTheKeyIsLogged()
    {
        HttpServer server;
        server.setAnswer(HttpServer::answer(401, "sk-secret is wrong"));
        OpenRouterTaskSorter sorter({server.origin(), {}});
        QLoggingCategory::setFilterRules(QStringLiteral("qt.network*=true"));
        LogCapture log;
        const QString answer = oneAnswer(sorter.splitTask(madeTask({}), {}, key, {})).first();
        const QString lines = log.take().join(u'\n');
        QLoggingCategory::setFilterRules({});
        QCOMPARE(answer, QStringLiteral("! badResponse"));
        QVERIFY(!lines.contains(key));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::OpenRouterTaskSorterTest)
#include "openrouter_task_sorter_test.moc"
