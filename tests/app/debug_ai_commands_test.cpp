// SPDX-License-Identifier: MIT
#include "ai/chat_completions.h"
#include "support/http_server.h"
#include "support/test_case.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace wrenfold {

namespace {

struct Run
{
    int status = -1; ///< Minus one when it did not end by itself.
    QByteArray output;
    QByteArray errors;
    QStringList filesBelowHome;
};

/// Runs the program against the server, without display, without bus, with an empty home. The server goes on answering.
Run run(const QStringList &arguments, const QUrl &origin, const QString &key = QStringLiteral("sk-secret"))
{
    const QTemporaryDir home;
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("HOME"), home.path());
    environment.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("OPENROUTER_API_KEY"), key);
    environment.insert(QStringLiteral("WRENFOLD_OPENROUTER_ORIGIN"), origin.toString());
    for (const char *variable : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"})
        environment.insert(QLatin1String(variable), qEnvironmentVariable(variable));

    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/../wrenfold"), arguments);
    const bool hasEnded = QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 30000);
    Run run;
    if (hasEnded && process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    run.output = process.readAllStandardOutput();
    run.errors = process.readAllStandardError();
    run.filesBelowHome = QDir(home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    return run;
}

/// What the user's message says in the last request.
QString promptOf(const HttpServer &server)
{
    return QJsonDocument::fromJson(server.requests().last().body)
        .object()
        .value(QStringLiteral("messages"))
        .toArray()
        .last()
        .toObject()
        .value(QStringLiteral("content"))
        .toString();
}

QStringList idsIn(const QString &prompt)
{
    QStringList ids;
    static const QRegularExpression form(QStringLiteral("- id: ([0-9A-F-]{36})\n"));
    for (auto matches = form.globalMatch(prompt); matches.hasNext();)
        ids.append(matches.next().captured(1));
    return ids;
}

} // namespace

/// `--debug-sort` and `--debug-split` of the built program, from the command line to the service and back.
class DebugAICommandsTest : public TestCase
{
    Q_OBJECT

private:
    /// Answers a sort with the identifiers that were sent, last one first, and one that was not and one that is none.
    static void answerReversed(HttpServer &server)
    {
        server.setAnswer([&server](QTcpSocket &socket) {
            QStringList ids = idsIn(promptOf(server));
            std::reverse(ids.begin(), ids.end());
            ids.insert(1, QStringLiteral("0C4D5B1E-6B5A-4B0B-9C8B-2F1D3A4E5F60"));
            ids.append(QStringLiteral("none"));
            HttpServer::completion(
                QStringLiteral(R"({"ordered_ids":["%1"]})").arg(ids.join(QStringLiteral("\",\""))))(socket);
        });
    }

private Q_SLOTS:
    void aSortPrintsTheTitlesInTheReturnedOrder_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("goal behind") << QStringList{
            QStringLiteral("--debug-sort"), QStringLiteral("資料を読む"), QStringLiteral("A & B_c <b>x</b>"),
            QStringLiteral("--goal"), QStringLiteral("G")};
        QTest::newRow("goal before") << QStringList{
            QStringLiteral("--goal"), QStringLiteral("G"), QStringLiteral("--debug-sort"),
            QStringLiteral("資料を読む"), QStringLiteral("A & B_c <b>x</b>")};
    }

    void aSortPrintsTheTitlesInTheReturnedOrder()
    {
        QFETCH(QStringList, arguments);
        HttpServer server;
        answerReversed(server);
        const Run run = wrenfold::run(arguments, server.origin());
        QCOMPARE(run.errors, QByteArray());
        QCOMPARE(run.output, QByteArray("{\n    \"ordered_tasks\": [\n        \"A & B_c <b>x</b>\",\n        "
                                        "\"資料を読む\"\n    ]\n}\n"));
        QCOMPARE(run.status, 0);
        QCOMPARE(run.filesBelowHome, QStringList());
        QCOMPARE(server.requests().size(), 1);
        QCOMPARE(server.requests().first().headers.value("authorization"), QByteArray("Bearer sk-secret"));
        const QString prompt = promptOf(server);
        QVERIFY(prompt.contains(QStringLiteral("Medium-term goal: G\nCurrent NOW task id: not set\n")));
        QVERIFY(prompt.contains(QStringLiteral("\n  title: 資料を読む\n")));
        QCOMPARE(QJsonDocument::fromJson(server.requests().first().body)
                     .object()
                     .value(QStringLiteral("model"))
                     .toString(),
                 QStringLiteral("~anthropic/claude-sonnet-latest"));
    }

    void identifiersThatRepeatAreRepeated()
    {
        HttpServer server;
        server.setAnswer([&server](QTcpSocket &socket) {
            const QString id = idsIn(promptOf(server)).first();
            HttpServer::completion(QStringLiteral(R"({"ordered_ids":["%1","%1"]})").arg(id))(socket);
        });
        const Run run = wrenfold::run(
            {QStringLiteral("--debug-sort"), QStringLiteral("A"), QStringLiteral("B")}, server.origin());
        QCOMPARE(run.output,
                 QByteArray("{\n    \"ordered_tasks\": [\n        \"A\",\n        \"A\"\n    ]\n}\n"));
        QCOMPARE(run.status, 0);
    }

    void aSplitPrintsTheTitlesAsTheyCame()
    {
        HttpServer server;
        server.setAnswer(
            HttpServer::completion(QStringLiteral("Sure!\n{\"subtasks\":[\" 一 \",\"\",\"2\"]}")));
        const Run run =
            wrenfold::run({QStringLiteral("--debug-split"), QStringLiteral("資料"), QStringLiteral("--goal")},
                          server.origin());
        QCOMPARE(run.errors, QByteArray());
        QCOMPARE(run.output,
                 QByteArray(
                     "{\n    \"subtasks\": [\n        \" 一 \",\n        \"\",\n        \"2\"\n    ]\n}\n"));
        QCOMPARE(run.status, 0);
        QCOMPARE(run.filesBelowHome, QStringList());
        QVERIFY(promptOf(server).endsWith(QStringLiteral("Medium-term goal: not set\nTODO: 資料")));
    }

    void failuresNameTheCaseInOneLine_data()
    {
        QTest::addColumn<HttpServer::Answer>("answer");
        QTest::addColumn<QByteArray>("error");
        QTest::newRow("401") << HttpServer::answer(401, "sk-secret") << QByteArray("badResponse\n");
        QTest::newRow("no choices") << HttpServer::answer(200, R"({"choices":[]})")
                                    << QByteArray("missingContent\n");
        QTest::newRow("no object") << HttpServer::completion(QStringLiteral("No."))
                                   << QByteArray("decoding error: ");
    }

    void failuresNameTheCaseInOneLine()
    {
        QFETCH(HttpServer::Answer, answer);
        QFETCH(QByteArray, error);
        HttpServer server;
        server.setAnswer(answer);
        const auto expectFailure = [&](const QStringList &arguments, const QByteArray &start) {
            const Run run = wrenfold::run(arguments, server.origin());
            QVERIFY2(run.errors.startsWith(start + error), run.errors.constData());
            QCOMPARE(run.errors.count('\n'), 1);
            QVERIFY(!run.errors.contains("sk-secret"));
            QCOMPARE(run.output, QByteArray());
            QCOMPARE(run.status, 1);
        };
        expectFailure({QStringLiteral("--debug-split"), QStringLiteral("A")}, "debug split failed: ");
        expectFailure({QStringLiteral("--debug-sort"), QStringLiteral("A"), QStringLiteral("B")},
                      "debug sort failed: ");
    }

    void anAnswerThatWouldTakeMuchMemoryIsAFailure()
    {
        HttpServer server;
        server.setAnswer(HttpServer::answer(200, '[' + QByteArray("[1],").repeated(3'900'000) + "1]"));
        const Run run =
            wrenfold::run({QStringLiteral("--debug-split"), QStringLiteral("A")}, server.origin());
        QCOMPARE(run.errors, QByteArray("debug split failed: decoding error: too many lists and objects\n"));
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.status, 1);
    }

    void withoutAKeyNothingIsSent()
    {
        HttpServer server;
        const Run run =
            wrenfold::run({QStringLiteral("--debug-split"), QStringLiteral("A")}, server.origin(), {});
        QCOMPARE(run.errors, QByteArray("debug split failed: missingAPIKey\n"));
        QCOMPARE(run.status, 1);
        QCOMPARE(server.connectionCount(), 0);
    }

    void aRefusedOriginIsSaidClearly()
    {
        const Run run = wrenfold::run({QStringLiteral("--debug-split"), QStringLiteral("A")},
                                      QUrl(QStringLiteral("http://gateway.example")));
        QVERIFY2(run.errors.startsWith(
                     "debug split failed: transport error: WRENFOLD_OPENROUTER_ORIGIN is refused"),
                 run.errors.constData());
        QCOMPARE(run.errors.count('\n'), 1);
        QCOMPARE(run.status, 1);
    }

    void nobodyListeningIsATransportError()
    {
        const Run run = wrenfold::run({QStringLiteral("--debug-split"), QStringLiteral("A")},
                                      QUrl(QStringLiteral("http://127.0.0.1:1")));
        QVERIFY2(run.errors.startsWith("debug split failed: transport error: "), run.errors.constData());
        QCOMPARE(run.errors.count('\n'), 1);
        QCOMPARE(run.status, 1);
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::DebugAICommandsTest)
#include "debug_ai_commands_test.moc"
