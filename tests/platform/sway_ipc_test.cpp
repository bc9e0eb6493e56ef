// SPDX-License-Identifier: MIT
#include "platform/linux/sway_ipc.h"

#include "support/test_case.h"

#include <QLocalServer>
#include <QTemporaryDir>

namespace wrenfold {
namespace {

bool isWriter(const QString &name)
{
    return name == QLatin1String("writer");
}

/// A root whose second output and its first workspace have the focus.
QByteArray treeWith(const QByteArray &nodes, const QByteArray &floating = "")
{
    return R"({"id":1,"focus":[20,10],"nodes":[
        {"id":10,"focus":[11],"nodes":[{"id":11,"nodes":[{"id":12,"app_id":"writer"}]}]},
        {"id":20,"focus":[21,22],"nodes":[
            {"id":22,"nodes":[{"id":23,"app_id":"writer"}]},
            {"id":21,"nodes":[)" +
           nodes + R"(],"floating_nodes":[)" + floating + "]}]}]}";
}

} // namespace

/// What is sent to sway, and what is made of its answers.
class SwayIpcTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void onlyWindowsOnTheFocusedWorkspaceAreMeant()
    {
        const QByteArray nodes = R"({"id":30,"app_id":"writer"},{"id":31,"app_id":"reader"},
            {"id":32,"nodes":[{"id":33,"app_id":null,"window_properties":{"class":"writer","instance":"x"}}]})";
        const QByteArray floating = R"({"id":34,"window_properties":{"class":"x","instance":"writer"}})";
        QCOMPARE(windowsOnFocusedWorkspace(treeWith(nodes, floating), isWriter), (QList<qint64>{30, 33, 34}));
    }

    void anAnswerThatMakesNoSenseMeansNoWindow_data()
    {
        QTest::addColumn<QByteArray>("tree");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("no JSON") << QByteArray("\xff{]");
        QTest::newRow("a list") << QByteArray("[1,2]");
        QTest::newRow("no focus") << QByteArray(R"({"nodes":[{"id":1,"app_id":"writer"}]})");
        QTest::newRow("a focus on nothing")
            << QByteArray(R"({"focus":[7],"nodes":[{"id":1,"app_id":"writer"}]})");
        QTest::newRow("other types") << QByteArray(R"({"focus":{"a":1},"nodes":"x","floating_nodes":3})");
        QTest::newRow("an id that is none") << treeWith(R"({"id":"all","app_id":"writer"})");
        QTest::newRow("nested beyond reading") << QByteArray(R"({"nodes":[)").repeated(200'000);
    }
    void anAnswerThatMakesNoSenseMeansNoWindow()
    {
        QFETCH(const QByteArray, tree);
        QCOMPARE(windowsOnFocusedWorkspace(tree, isWriter), QList<qint64>());
    }

    void deeplyNestedContainersAreSearched()
    {
        constexpr int depth = 400;
        const QByteArray nested = QByteArray(R"({"id":2,"nodes":[)").repeated(depth) +
                                  R"({"id":3,"app_id":"writer"})" + QByteArray("]}").repeated(depth);
        QCOMPARE(windowsOnFocusedWorkspace(treeWith(nested), isWriter), QList<qint64>{3});
    }

    void aMessageIsReadOnceItIsWhole()
    {
        const SwayMessage message{SwayMessage::GetTree, "{}"};
        const QByteArray bytes = message.encoded();
        for (qsizetype length = 0; length < bytes.size(); ++length)
            QCOMPARE(SwayInput::parse(bytes.first(length)).state, SwayInput::State::Incomplete);
        const SwayInput input = SwayInput::parse(bytes + "more");
        QCOMPARE(input.state, SwayInput::State::Complete);
        QCOMPARE(input.message, message);
    }

    void whatIsNoMessageIsRefusedAtOnce()
    {
        QCOMPARE(SwayInput::parse("i4").state, SwayInput::State::Malformed);
        QByteArray tooLong = SwayMessage{SwayMessage::GetTree, {}}.encoded();
        tooLong.replace(6, 4, "\xff\xff\xff\xff");
        QCOMPARE(SwayInput::parse(tooLong).state, SwayInput::State::Malformed);
    }

    void theWindowsAreMovedInOneCommand()
    {
        QTemporaryDir folder;
        QLocalServer server;
        QVERIFY(server.listen(folder.filePath(QStringLiteral("sway"))));
        QObject context;
        SwayScratchpad::moveWindows(server.fullServerName(), isWriter, &context);
        QTRY_VERIFY(server.hasPendingConnections());
        QLocalSocket *client = server.nextPendingConnection();
        const QByteArray question = SwayMessage{SwayMessage::GetTree, {}}.encoded();
        QTRY_COMPARE(client->peek(1000), question);
        (void)client->readAll();
        client->write(SwayMessage{SwayMessage::GetTree,
                                  treeWith(R"({"id":5,"app_id":"writer"},{"id":6,"app_id":"writer"})")}
                          .encoded());
        const SwayMessage command{SwayMessage::RunCommand,
                                  "[con_id=5] move scratchpad; [con_id=6] move scratchpad"};
        QTRY_COMPARE(client->peek(1000), command.encoded());
        client->write(SwayMessage{SwayMessage::RunCommand, R"([{"success":true}])"}.encoded());
        QTRY_VERIFY(context.children().isEmpty());
    }

    void anAnswerThatDoesNotComeIsNotWaitedFor_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("silence") << QByteArray();
        QTest::newRow("half an answer") << QByteArray("i3-ipc\x10");
        QTest::newRow("another protocol") << QByteArray("HTTP/1.1 200 OK\r\n");
    }
    void anAnswerThatDoesNotComeIsNotWaitedFor()
    {
        QFETCH(const QByteArray, answer);
        QTemporaryDir folder;
        QLocalServer server;
        QVERIFY(server.listen(folder.filePath(QStringLiteral("sway"))));
        QObject context;
        SwayScratchpad::moveWindows(server.fullServerName(), isWriter, &context);
        QTRY_VERIFY(server.hasPendingConnections());
        server.nextPendingConnection()->write(answer);
        QVERIFY(!context.children().isEmpty());
        QTRY_VERIFY(context.children().isEmpty());
    }

    void aSocketThatIsNotThereIsGivenUp()
    {
        QObject context;
        SwayScratchpad::moveWindows(QStringLiteral("/nowhere/sway"), isWriter, &context);
        QTRY_VERIFY(context.children().isEmpty());
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::SwayIpcTest)
#include "sway_ipc_test.moc"
