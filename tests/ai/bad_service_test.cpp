// SPDX-License-Identifier: MIT
#include "ai/one_answer.h"
#include "ai/openrouter_task_sorter.h"
#include "model/store_on_fakes.h"
#include "model/uuid_text.h"
#include "support/http_server.h"
#include "support/test_case.h"

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslServer>
#include <QTcpSocket>
#include <QTemporaryDir>
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

/// Sends far more than anybody wants to read, as fast as the other side reads.
HttpServer::Answer flood(const QByteArray &start, qint64 total, qint64 &sent)
{
    return [start, total, &sent](QTcpSocket &socket) {
        socket.write(start);
        const auto more = [&socket, total, &sent] {
            static const QByteArray piece(256 * 1024, ' ');
            while (sent < total && socket.bytesToWrite() < piece.size() &&
                   socket.state() == QAbstractSocket::ConnectedState)
                sent += socket.write(piece);
        };
        QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, more);
        more();
    };
}

/// The most memory that this process has had, in MiB.
qint64 peakMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toLongLong() / 1024;
    }
    return 0;
}

/// A server with a certificate that nobody vouches for; null if it cannot be made.
std::unique_ptr<QSslServer> selfSignedServer()
{
    const QTemporaryDir folder;
    const QString keyFile = folder.filePath(QStringLiteral("key"));
    const QString certificateFile = folder.filePath(QStringLiteral("certificate"));
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  QStringList{QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                              QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-days"),
                              QStringLiteral("2"), QStringLiteral("-subj"), QStringLiteral("/CN=127.0.0.1"),
                              QStringLiteral("-keyout"), keyFile, QStringLiteral("-out"), certificateFile});
    QFile keyData(keyFile);
    QFile certificateData(certificateFile);
    if (!openssl.waitForFinished() || !keyData.open(QIODevice::ReadOnly) ||
        !certificateData.open(QIODevice::ReadOnly))
        return nullptr;
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(&certificateData));
    configuration.setPrivateKey(QSslKey(&keyData, QSsl::Rsa));
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(configuration);
    return server;
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
        for (const int status : {400, 401, 403, 404, 429, 500, 503, 304, 199})
            QTest::addRow("%d", status) << status;
    }

    void aStatusOtherThanSuccessIsABadResponse()
    {
        QFETCH(int, status);
        HttpServer server;
        server.setAnswer(
            HttpServer::answer(status, HttpServer::completionBody(QStringLiteral(R"({"subtasks":["a"]})"))));
        if (status == 199) // An informal one: the real answer never comes.
            QCOMPARE(failureAt(server.origin(), {.silence = 300ms}).first(2), QStringLiteral("! "));
        else
            QCOMPARE(failureAt(server.origin()), QStringLiteral("! badResponse"));
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
        std::unique_ptr<QSslServer> listener = selfSignedServer();
        QVERIFY(listener);
        HttpServer server(std::move(listener));
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

    void aHundredMegabytesEndInABadResponseAndFewMegabytesHere_data()
    {
        QTest::addColumn<QByteArray>("start");
        QTest::newRow("announced") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 104857600\r\n\r\n");
        QTest::newRow("unannounced") << QByteArray("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n");
    }

    void aHundredMegabytesEndInABadResponseAndFewMegabytesHere()
    {
        QFETCH(QByteArray, start);
        const qint64 before = peakMegabytes();
        qint64 sent = 0;
        HttpServer server;
        server.setAnswer(flood(start, 100 * 1024 * 1024, sent));
        QCOMPARE(failureAt(server.origin()), QStringLiteral("! badResponse"));
        QVERIFY2(sent < 40 * 1024 * 1024, qPrintable(QString::number(sent)));
#ifdef __SANITIZE_ADDRESS__
        constexpr qint64 most = 160; // The sanitizer keeps what has been freed for a while.
#else
        constexpr qint64 most = 64;
#endif
        QVERIFY2(peakMegabytes() - before < most, qPrintable(QString::number(peakMegabytes() - before)));
    }

    void anAnswerOfSixteenMebibytesIsRead()
    {
        const QByteArray body = HttpServer::completionBody(QStringLiteral(R"({"subtasks":["long"]})"));
        HttpServer server;
        server.setAnswer(HttpServer::answer(200, body + QByteArray(16 * 1024 * 1024 - body.size(), ' ')));
        QCOMPARE(splitAt(server.origin()), QStringList{QStringLiteral("long")});
        server.setAnswer(HttpServer::answer(200, body + QByteArray(16 * 1024 * 1024 - body.size() + 1, ' ')));
        QCOMPARE(failureAt(server.origin()), QStringLiteral("! badResponse"));
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

    void aConnectionClosedBeforeTheAnswerIsAnError()
    {
        HttpServer server;
        server.setAnswer([](QTcpSocket &socket) { socket.disconnectFromHost(); });
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
