// SPDX-License-Identifier: MIT
#include "ai/one_answer.h"
#include "ai/openrouter_task_sorter.h"
#include "model/store_on_fakes.h"
#include "support/http_server.h"
#include "support/test_case.h"

#include <QFile>
#include <QProcess>
#include <QTcpSocket>

namespace wrenfold {

namespace {

/// By how much an answer that is too long may raise what this process has of memory.
#ifdef __SANITIZE_ADDRESS__
constexpr qint64 mostMegabytes = 160; // The sanitizer keeps what has been freed for a while.
#else
constexpr qint64 mostMegabytes = 64;
#endif

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

HttpServer::Answer gzipAnswer(const QByteArray &packed)
{
    return HttpServer::answer(200, packed, "Content-Encoding: gzip\r\n");
}

/// The text and so many spaces behind it, packed by another process: unpacked it may be more than is wanted here.
QByteArray gzipped(const QByteArray &text, qint64 spaces)
{
    QProcess gzip;
    gzip.start(QStringLiteral("/bin/sh"),
               QStringList{QStringLiteral("-c"),
                           QStringLiteral("{ cat; head -c \"$0\" /dev/zero | tr '\\0' ' '; } | gzip"),
                           QString::number(spaces)});
    gzip.write(text);
    gzip.closeWriteChannel();
    return gzip.waitForFinished() ? gzip.readAllStandardOutput() : QByteArray();
}

/// Forgets how much memory this process has had.
bool forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write("5") == 1;
}

/// The most memory that this process has had since, in MiB.
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

} // namespace

/// Answers in pieces, packed ones, and ones that are longer than anybody wants.
class AnswerLengthTest : public TestCase
{
    Q_OBJECT

private:
    static QStringList splitAt(const QUrl &origin)
    {
        OpenRouterTaskSorter sorter({origin, {}});
        return oneAnswer(sorter.splitTask(madeTask(QStringLiteral("task")), {}, QStringLiteral("key"), {}));
    }

    static QString failureAt(const QUrl &origin) { return splitAt(origin).first(); }

private Q_SLOTS:
    void aHundredMegabytesEndInABadResponseAndFewMegabytesHere_data()
    {
        QTest::addColumn<QByteArray>("start");
        QTest::newRow("announced") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 104857600\r\n\r\n");
        QTest::newRow("unannounced") << QByteArray("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n");
    }

    void aHundredMegabytesEndInABadResponseAndFewMegabytesHere()
    {
        QFETCH(QByteArray, start);
        QVERIFY(forgetPeak());
        const qint64 before = peakMegabytes();
        qint64 sent = 0;
        HttpServer server;
        server.setAnswer(flood(start, 100 * 1024 * 1024, sent));
        QCOMPARE(failureAt(server.origin()), QStringLiteral("! badResponse"));
        QVERIFY2(sent < 40 * 1024 * 1024, qPrintable(QString::number(sent)));
        QVERIFY2(peakMegabytes() - before < mostMegabytes,
                 qPrintable(QString::number(peakMegabytes() - before)));
    }

    void anAnswerInPiecesIsRead()
    {
        HttpServer server;
        server.setAnswer([](QTcpSocket &socket) {
            const QByteArray body = HttpServer::completionBody(QStringLiteral(R"({"subtasks":["a"]})"));
            socket.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
            for (qsizetype i = 0; i < body.size(); i += 7) {
                const QByteArray piece = body.mid(i, 7);
                socket.write(QByteArray::number(piece.size(), 16) + "\r\n" + piece + "\r\n");
            }
            socket.write("0\r\n\r\n");
        });
        QCOMPARE(splitAt(server.origin()), QStringList{QStringLiteral("a")});
    }

    void aPackedAnswerIsRead_data()
    {
        QTest::addColumn<qint64>("spaces");
        QTest::newRow("short") << qint64(0);
        QTest::newRow("12 MB") << qint64(12'000'000);
    }

    void aPackedAnswerIsRead()
    {
        QFETCH(qint64, spaces);
        const QByteArray packed =
            gzipped(HttpServer::completionBody(QStringLiteral(R"({"subtasks":["a"]})")), spaces);
        QVERIFY(!packed.isEmpty());
        HttpServer server;
        server.setAnswer(gzipAnswer(packed));
        QCOMPARE(splitAt(server.origin()), QStringList{QStringLiteral("a")});
    }

    void aPackedAnswerThatUnpacksToFarTooMuchIsABadResponse()
    {
        const QByteArray packed =
            gzipped(HttpServer::completionBody(QStringLiteral(R"({"subtasks":["a"]})")), 200'000'000);
        QVERIFY(!packed.isEmpty());
        HttpServer server;
        server.setAnswer(gzipAnswer(packed));
        QVERIFY(forgetPeak());
        const qint64 before = peakMegabytes();
        QCOMPARE(failureAt(server.origin()), QStringLiteral("! badResponse"));
        QVERIFY2(peakMegabytes() - before < mostMegabytes,
                 qPrintable(QString::number(peakMegabytes() - before)));
    }

    void whatCannotBeUnpackedIsAnErrorWithAText_data()
    {
        QTest::addColumn<QByteArray>("packed");
        const QByteArray packed = gzipped(HttpServer::completionBody(QStringLiteral("{}")), 1000);
        QTest::newRow("not packed") << QByteArray("{\"choices\":[]}");
        QTest::newRow("spoilt") << packed.first(20) + QByteArray(100, 'x');
        QTest::newRow("cut short") << packed.first(packed.size() / 2);
    }

    void whatCannotBeUnpackedIsAnErrorWithAText()
    {
        QFETCH(QByteArray, packed);
        HttpServer server;
        server.setAnswer(gzipAnswer(packed));
        const QString failure = failureAt(server.origin());
        QVERIFY2(failure.startsWith(QStringLiteral("! transport error: ")) ||
                     failure.startsWith(QStringLiteral("! decoding error: ")),
                 qPrintable(failure));
        QVERIFY2(!failure.trimmed().endsWith(u':'), qPrintable(failure));
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
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::AnswerLengthTest)
#include "answer_length_test.moc"
