// SPDX-License-Identifier: MIT
#include "ai/one_answer.h"
#include "ai/openrouter_task_sorter.h"
#include "model/store_on_fakes.h"
#include "model/uuid_text.h"
#include "support/http_server.h"
#include "support/test_case.h"

#include <QTcpSocket>
#include <QTimer>

namespace wrenfold {

using namespace std::chrono_literals;

namespace {

const auto key = QStringLiteral("sk-secret");

/// Sends a piece every so often until the other side has had enough.
HttpServer::Answer drip(const QByteArray &start, const QByteArray &piece, std::chrono::milliseconds pause)
{
    return [=](QTcpSocket &socket) {
        socket.write(start);
        auto *timer = new QTimer(&socket);
        QObject::connect(timer, &QTimer::timeout, &socket, [&socket, piece] { socket.write(piece); });
        timer->start(pause);
    };
}

/// Answers without ending the connection.
HttpServer::Answer answerAndStay(const QByteArray &statusLine, const QByteArray &headers,
                                 const QByteArray &body = {})
{
    return [=](QTcpSocket &socket) {
        socket.write("HTTP/1.1 " + statusLine + "\r\nContent-Length: " + QByteArray::number(body.size()) +
                     "\r\n" + headers + "\r\n" + body);
    };
}

} // namespace

/// The service as nobody wishes it: every request ends, in what is written here.
class BadServiceTest : public TestCase
{
    Q_OBJECT

private:
    static QStringList splitAt(const QUrl &origin, const HttpExchange::Limits &limits = {})
    {
        OpenRouterTaskSorter sorter({origin, {}}, limits);
        return oneAnswer(sorter.splitTask(madeTask(QStringLiteral("task")), {}, key, {}));
    }

    static QString failureAt(const QUrl &origin, const HttpExchange::Limits &limits = {})
    {
        return splitAt(origin, limits).first();
    }

private Q_SLOTS:
    void aStatusOtherThanSuccessIsABadResponse_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {400, 401, 403, 404, 407, 429, 500, 503, 304})
            QTest::addRow("%d", status) << status;
    }

    void aStatusOtherThanSuccessIsABadResponse()
    {
        QFETCH(int, status);
        HttpServer server;
        server.setAnswer(
            HttpServer::answer(status, HttpServer::completionBody(QStringLiteral(R"({"subtasks":["a"]})"))));
        QCOMPARE(failureAt(server.origin()), QStringLiteral("! badResponse"));
    }

    /// Qt takes an unknown status below 200 for the answer or, in newer versions, for the announcement of one.
    void anAnnouncementAloneIsAFailure()
    {
        HttpServer server;
        server.setAnswer(
            HttpServer::answer(199, HttpServer::completionBody(QStringLiteral(R"({"subtasks":["a"]})"))));
        QVERIFY(failureAt(server.origin()).startsWith(QStringLiteral("! ")));
    }

    void aStatusThatOnlyAnnouncesTheAnswerIsPassedOver()
    {
        HttpServer server;
        server.setAnswer([](QTcpSocket &socket) {
            socket.write("HTTP/1.1 100 Continue\r\n\r\n");
            socket.flush();
            HttpServer::completion(QStringLiteral(R"({"subtasks":["a"]})"))(socket);
        });
        QCOMPARE(splitAt(server.origin()), QStringList{QStringLiteral("a")});
    }

    void theRequestIsSentOnce_data()
    {
        QTest::addColumn<HttpServer::Answer>("answer");
        QTest::addColumn<QString>("failure");
        const auto closed = QStringLiteral("! transport error: the connection was closed");
        const auto bad = QStringLiteral("! badResponse");
        QTest::newRow("closed") << HttpServer::Answer([](QTcpSocket &socket) { socket.disconnectFromHost(); })
                                << closed;
        QTest::newRow("reset") << HttpServer::Answer([](QTcpSocket &socket) { socket.abort(); }) << closed;
        for (const char *method :
             {"NTLM", "Negotiate", "Basic realm=\"r\"", "Digest realm=\"r\", nonce=\"n\", qop=\"auth\""}) {
            QTest::addRow("401 %s", method)
                << answerAndStay("401 No", "WWW-Authenticate: " + QByteArray(method) + "\r\n") << bad;
        }
    }

    void theRequestIsSentOnce()
    {
        QFETCH(HttpServer::Answer, answer);
        QFETCH(QString, failure);
        HttpServer server;
        server.setAnswer(answer);
        QCOMPARE(failureAt(server.origin()), failure);
        QTest::qWait(50); // UNAVOIDABLE: what is not to come cannot be waited for
        QCOMPARE(server.requests().size(), 1);
    }

    void nothingIsKeptForTheNextRequest()
    {
        HttpServer server;
        server.setAnswer(answerAndStay("200 OK", "Set-Cookie: a=b\r\n",
                                       HttpServer::completionBody(QStringLiteral(R"({"subtasks":["a"]})"))));
        OpenRouterTaskSorter sorter({server.origin(), {}});
        for (int count : {1, 2}) {
            QCOMPARE(oneAnswer(sorter.splitTask(madeTask({}), {}, key, {})),
                     QStringList{QStringLiteral("a")});
            QCOMPARE(server.requests().size(), count);
            QCOMPARE(server.connectionCount(), count);
            QVERIFY(!server.requests().last().headers.contains("cookie"));
        }
    }

    void aRedirectElsewhereIsNotFollowed_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {301, 302, 303, 307, 308})
            QTest::addRow("%d", status) << status;
    }

    void aRedirectElsewhereIsNotFollowed()
    {
        QFETCH(int, status);
        HttpServer other;
        other.setAnswer(HttpServer::completion(QStringLiteral(R"({"subtasks":["stolen"]})")));
        HttpServer server;
        server.setAnswer(HttpServer::answer(
            status, {}, "Location: " + other.origin().toEncoded() + "/api/v1/chat/completions\r\n"));
        QCOMPARE(failureAt(server.origin()), QStringLiteral("! badResponse"));
        QTest::qWait(50); // UNAVOIDABLE: what is not to come cannot be waited for
        QCOMPARE(other.connectionCount(), 0);
    }

    void nobodyListening()
    {
        QUrl origin;
        {
            const HttpServer server;
            origin = server.origin();
        }
        const QString failure = failureAt(origin);
        QVERIFY2(failure.startsWith(QStringLiteral("! transport error: ")), qPrintable(failure));
    }

    void aCertificateThatNobodyVouchesForIsAnError()
    {
        HttpServer server(HttpServer::selfSignedListener());
        server.setAnswer(HttpServer::completion(QStringLiteral(R"({"subtasks":["a"]})")));
        const QString failure = failureAt(server.origin(QStringLiteral("https")));
        QVERIFY2(failure.startsWith(QStringLiteral("! transport error: ")), qPrintable(failure));
        QCOMPARE(server.requests().size(), 0);
    }

    void aServerWithoutTlsIsAnError()
    {
        HttpServer server;
        server.setAnswer(HttpServer::answer(200, {}));
        const QString failure = failureAt(server.origin(QStringLiteral("https")), {.silence = 500ms});
        QVERIFY2(failure.startsWith(QStringLiteral("! transport error: ")), qPrintable(failure));
    }

    void answersThatAreNone_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QString>("start");
        const auto decoding = QStringLiteral("! decoding error: ");
        QTest::newRow("empty body") << QByteArray() << decoding;
        QTest::newRow("wrong types") << QByteArray(R"({"choices":{"message":1}})") << decoding;
        QTest::newRow("null content")
            << QByteArray(R"({"choices":[{"message":{"role":"assistant","content":null}}]})") << decoding;
        QTest::newRow("no choices") << QByteArray(R"({"choices":[]})") << QStringLiteral("! missingContent");
        QTest::newRow("invalid UTF-8")
            << QByteArray("{\"choices\":[{\"message\":{\"role\":\"a\",\"content\":\"\xc3\x28\"}}]}")
            << decoding;
        QTest::newRow("two objects") << HttpServer::completionBody(
                                            QStringLiteral(R"({"subtasks":["a"]} {"subtasks":["b"]})"))
                                     << decoding;
        QTest::newRow("braces the wrong way round")
            << HttpServer::completionBody(QStringLiteral("} {")) << QStringLiteral("! missingContent");
    }

    void answersThatAreNone()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, start);
        HttpServer server;
        server.setAnswer(HttpServer::answer(200, body));
        const QString failure = failureAt(server.origin());
        QVERIFY2(failure.startsWith(start), qPrintable(failure));
    }

    void anAnswerInAFenceOrInProseIsRead()
    {
        HttpServer server;
        server.setAnswer(HttpServer::completion(QStringLiteral("```json\n{\"subtasks\":[\"a\"]}\n```")));
        QCOMPARE(splitAt(server.origin()), QStringList{QStringLiteral("a")});
        server.setAnswer(
            HttpServer::completion(QStringLiteral("Sure: {\"subtasks\":[\"b\"]}. Anything else?")));
        QCOMPARE(splitAt(server.origin()), QStringList{QStringLiteral("b")});
    }

    void silenceEndsAfterItsLimit()
    {
        HttpServer server;
        QCOMPARE(failureAt(server.origin(), {.silence = 100ms}),
                 QStringLiteral("! transport error: no answer for too long"));
        server.setAnswer(
            [](QTcpSocket &socket) { socket.write("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{"); });
        QCOMPARE(failureAt(server.origin(), {.silence = 100ms}),
                 QStringLiteral("! transport error: no answer for too long"));
    }

    void theLimitsAreAMinuteOfSilenceAndFiveInAll()
    {
        const HttpExchange::Limits limits;
        QCOMPARE(limits.silence, 60s);
        QCOMPARE(limits.whole, 5min);
        QCOMPARE(limits.bytes, qint64(16) * 1024 * 1024);
    }

    void oneByteAtATimeEndsAtTheWholeLimit()
    {
        HttpServer server;
        server.setAnswer(drip("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n", " ", 20ms));
        QCOMPARE(failureAt(server.origin(), {.silence = 5s, .whole = 400ms}),
                 QStringLiteral("! transport error: the answer took too long"));
    }

    void headersOneByteAtATimeEndAtTheWholeLimitToo()
    {
        HttpServer server;
        server.setAnswer(drip("HTTP/1.1 200 OK\r\nX: ", "x", 20ms));
        QCOMPARE(failureAt(server.origin(), {.silence = 5s, .whole = 400ms}),
                 QStringLiteral("! transport error: the answer took too long"));
    }

    void aSlowAnswerWithinTheLimitsIsRead()
    {
        const QByteArray body = HttpServer::completionBody(QStringLiteral(R"({"subtasks":["slow"]})"));
        HttpServer server;
        server.setAnswer([body](QTcpSocket &socket) {
            socket.write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) +
                         "\r\n\r\n");
            auto *timer = new QTimer(&socket);
            auto written = std::make_shared<qsizetype>(0);
            QObject::connect(timer, &QTimer::timeout, &socket, [&socket, body, written] {
                socket.write(body.mid(*written, 10));
                *written += 10;
            });
            timer->start(5ms);
        });
        QCOMPARE(splitAt(server.origin(), {.silence = 2s}), QStringList{QStringLiteral("slow")});
    }

    void aConnectionClosedInTheMiddleIsAnError()
    {
        HttpServer server;
        server.setAnswer([](QTcpSocket &socket) {
            socket.write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n{\"choices\":");
            socket.disconnectFromHost();
        });
        const QString failure = failureAt(server.origin());
        QVERIFY2(failure.startsWith(QStringLiteral("! transport error: ")), qPrintable(failure));
    }

    void somethingElseThanHttpIsAnError()
    {
        HttpServer server;
        server.setAnswer([](QTcpSocket &socket) {
            socket.write("220 mail.example ready\r\n");
            socket.disconnectFromHost();
        });
        QCOMPARE(failureAt(server.origin()).first(2), QStringLiteral("! "));
    }

    void tenThousandIdentifiersAreRead()
    {
        QStringList ids;
        for (int i = 0; i < 10'000; ++i)
            ids.append(uuidText(QUuid::createUuid()));
        HttpServer server;
        server.setAnswer(HttpServer::completion(
            QStringLiteral(R"({"ordered_ids":["%1"]})").arg(ids.join(QStringLiteral("\",\"")))));
        OpenRouterTaskSorter sorter({server.origin(), {}});
        QCOMPARE(oneAnswer(sorter.prioritizedTaskIDs({}, std::nullopt, {}, key, {})),
                 QStringList{QStringLiteral("10000")});
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::BadServiceTest)
#include "bad_service_test.moc"
