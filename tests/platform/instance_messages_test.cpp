// SPDX-License-Identifier: MIT
#include "platform/instance_test_case.h"
#include "support/files.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>

#include <unistd.h>

namespace wrenfold {

/// How a further start reaches the running program.
class InstanceMessagesTest : public InstanceTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestCase::init();
        makePlace();
    }
    void cleanup() { leavePlace(); }

    void theRunningOneAnswersOverTheBus()
    {
        QVERIFY(startBus());
        ProgramUnderTest first = startListening();
        QVERIFY(waitForName());
        QVERIFY(QDir(runtimeFolder()).removeRecursively()); // No way round by the socket.
        m_environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), QStringLiteral("token-1"));
        ProgramUnderTest second = start();
        QCOMPARE(second.tell("claim"), "taken");
        QCOMPARE(second.tell("show"), "answered");
        QCOMPARE(first.nextLine(), "show token-1");
        m_environment.remove(QStringLiteral("XDG_ACTIVATION_TOKEN"));
        QCOMPARE(start().tell("show"), "answered");
        QCOMPARE(first.nextLine(), "show");
    }

    void theRunningOneAnswersOverTheSocketWhenThereIsNoBus()
    {
        ProgramUnderTest first = startListening();
        QCOMPARE(start().tell("show"), "answered");
        QCOMPARE(first.nextLine(), "show");
    }

    void aRequestOverTheSocketBringsTheRunningOneBackToABusThatWasRestarted()
    {
        QVERIFY(startBus());
        ProgramUnderTest first = startListening();
        QVERIFY(waitForName());
        m_bus->stop();
        QCOMPARE(m_bus->start(), QString());
        QDBusConnection::disconnectFromBus(m_observer->name());
        m_observer = QDBusConnection::connectToBus(m_bus->address(), m_observer->name());
        QVERIFY(!isNameTaken());
        QTRY_VERIFY(start().tell("show") == "answered" && isNameTaken());
        QVERIFY(QDir(runtimeFolder()).removeRecursively());
        QCOMPARE(start().tell("new-todo"), "answered");
    }

    void theRunningOneAnswersOverTheSocketWhenTheBusDaemonHangs()
    {
        QVERIFY(startBus());
        ProgramUnderTest first = startListening();
        QVERIFY(waitForName());
        ::kill(static_cast<pid_t>(m_bus->processId()), SIGSTOP);
        ProgramUnderTest second = start();
        QCOMPARE(second.tell("show"), "answered");
        QCOMPARE(first.nextLine(), "show");
        second.signal(SIGTERM);
        QCOMPARE(second.nextLine(), "terminating");
        QCOMPARE(second.waitForEnd(), 0);
    }

    void aBusThatStopsInTheMiddleOfTheGreetingDoesNotHoldUpTheEnd()
    {
        QLocalServer bus;
        QVERIFY(bus.listen(m_place->filePath(QStringLiteral("half-a-bus"))));
        bool isGreeted = false;
        connect(&bus, &QLocalServer::newConnection, &bus, [&] {
            QLocalSocket *client = bus.nextPendingConnection();
            connect(client, &QLocalSocket::readyRead, client, [client, &isGreeted] {
                const QByteArray line = client->readAll();
                if (line.contains("AUTH EXTERNAL"))
                    client->write("OK 1234deadbeef1234deadbeef1234dead\r\n");
                else if (line.contains("NEGOTIATE_UNIX_FD"))
                    client->write("AGREE_UNIX_FD\r\n");
                else if (line.contains("AUTH"))
                    client->write("REJECTED EXTERNAL\r\n");
                isGreeted = isGreeted || line.contains("BEGIN");
            });
        });
        useBus(QStringLiteral("unix:path=") + bus.fullServerName());
        ProgramUnderTest program = startListening();
        QTRY_VERIFY(isGreeted);
        QElapsedTimer time;
        time.start();
        program.signal(SIGTERM);
        QCOMPARE(program.nextLine(), "terminating");
        QCOMPARE(program.waitForEnd(), 0);
        QVERIFY2(time.elapsed() < 5000, qPrintable(QString::number(time.elapsed())));
    }

    void withoutARuntimeFolderTheyMeetInAFolderOfTheUsersOwn()
    {
        m_environment.remove(QStringLiteral("XDG_RUNTIME_DIR"));
        m_environment.insert(QStringLiteral("TMPDIR"), m_place->path());
        ProgramUnderTest first = startListening();
        QCOMPARE(modeOf(m_place->filePath(QStringLiteral("wrenfold-%1").arg(::geteuid()))), mode_t(0700));
        QCOMPARE(start().tell("show"), "answered");
    }

    void aFolderThatOthersCanEnterHoldsNoSocket()
    {
        QVERIFY(QFile::setPermissions(runtimeFolder(), QFile::Permissions(0x7055)));
        m_environment.insert(QStringLiteral("TMPDIR"), m_place->path());
        const QString own = m_place->filePath(QStringLiteral("wrenfold-%1").arg(::geteuid()));
        QVERIFY(QFile::link(runtimeFolder(), own));
        ProgramUnderTest first = startListening();
        QCOMPARE(namesIn(runtimeFolder()), QStringList());
        QCOMPARE(start(folder(), 300).tell("show"), "not answered");
    }

    void aSocketLeftByAKilledRunIsReplaced()
    {
        ProgramUnderTest killed = startListening();
        QCOMPARE(namesIn(runtimeFolder()).size(), 1);
        killed.signal(SIGKILL);
        QCOMPARE(killed.waitForEnd(), -1);
        QCOMPARE(namesIn(runtimeFolder()).size(), 1);
        ProgramUnderTest first = startListening();
        QCOMPARE(start().tell("show"), "answered");
        QCOMPARE(first.nextLine(), "show");
    }

    void aCleanEndLeavesNoSocket()
    {
        ProgramUnderTest first = startListening();
        first.signal(SIGTERM);
        QCOMPARE(first.waitForEnd(), 0);
        QCOMPARE(namesIn(runtimeFolder()), QStringList());
    }

    void twoFoldersDoNotMeet_data()
    {
        QTest::addColumn<bool>("hasBus");
        QTest::newRow("bus") << true;
        QTest::newRow("no bus") << false;
    }

    void twoFoldersDoNotMeet()
    {
        QFETCH(bool, hasBus);
        QVERIFY(!hasBus || startBus());
        ProgramUnderTest other = startListening(m_place->filePath(QStringLiteral("other")));
        QVERIFY(!hasBus || waitForName());
        ProgramUnderTest silent = start();
        QCOMPARE(silent.tell("claim"), "first");
        ProgramUnderTest second = start(folder(), 400);
        QCOMPARE(second.tell("claim"), "taken");
        QCOMPARE(second.tell("show"), "not answered");
        QCOMPARE(silent.tell("listen"), "listening");
        QCOMPARE(second.tell("show"), "answered");
        QCOMPARE(silent.nextLine(), "show");
        QCOMPARE(other.tell("are you there"), "awake");
    }

    void eachRequestArrivesAndItsAnswerComesBack_data()
    {
        QTest::addColumn<bool>("hasBus");
        QTest::addColumn<QByteArray>("word");
        QTest::addColumn<QByteArray>("answer");
        for (const bool hasBus : {true, false}) {
            for (const char *word : {"show", "toggle-panel", "hide-panel", "new-todo"})
                QTest::addRow("%s, bus: %d", word, hasBus)
                    << hasBus << QByteArray(word) << QByteArray("answered");
            QTest::addRow("report, bus: %d", hasBus)
                << hasBus << QByteArray("desktop-report") << QByteArray("answered works");
        }
    }

    void eachRequestArrivesAndItsAnswerComesBack()
    {
        QFETCH(bool, hasBus);
        QFETCH(QByteArray, word);
        QFETCH(QByteArray, answer);
        QVERIFY(!hasBus || startBus());
        ProgramUnderTest first = startListening();
        if (hasBus) {
            QVERIFY(waitForName());
            QVERIFY(QDir(runtimeFolder()).removeRecursively()); // No way round by the socket.
        }
        QCOMPARE(start().tell(word), answer);
        QCOMPARE(first.nextLine(), word);
    }

    // What comes over the socket

    void aSocketAnswersWhatEarlierVersionsSay()
    {
        ProgramUnderTest first = startListening();
        QLocalSocket socket;
        connectTo(socket);
        socket.write("show\n");
        QTRY_COMPARE(socket.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(socket.readAll(), "ok\n");
        QCOMPARE(first.nextLine(), "show");
    }

    void aSocketIgnoresWhatIsNoRequest_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("an unknown word") << QByteArray("fly\n");
        QTest::newRow("an empty line") << QByteArray("\n");
        QTest::newRow("a line without end") << QByteArray(100000, 'x');
        QTest::newRow("no text") << QByteArray("\xff\0\xfe\n", 4);
        QTest::newRow("a word and more") << QByteArray("show now\n");
    }

    void aSocketIgnoresWhatIsNoRequest()
    {
        QFETCH(QByteArray, bytes);
        ProgramUnderTest first = startListening();
        QLocalSocket socket;
        connectTo(socket);
        socket.write(bytes);
        QTRY_COMPARE(socket.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(socket.readAll(), "");
        QCOMPARE(first.tell("are you there"), "awake");
    }

    void aLinkToTheFolderMeansTheSameFolder()
    {
        ProgramUnderTest first = startListening();
        const QString link = m_place->filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(folder(), link));
        ProgramUnderTest second = start(link);
        QCOMPARE(second.tell("claim"), "taken");
        QCOMPARE(second.tell("show"), "answered");
    }

    void aBusThatTakesTheConnectionAndIsSilentHoldsUpNeitherListeningNorTheEnd()
    {
        QLocalServer silentBus;
        QVERIFY(silentBus.listen(m_place->filePath(QStringLiteral("silent"))));
        useBus(QStringLiteral("unix:path=") + silentBus.fullServerName());
        ProgramUnderTest first = start();
        QCOMPARE(first.tell("claim"), "first");
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(first.tell("listen"), "listening");
        QVERIFY(silentBus.waitForNewConnection(5000)); // It has tried.
        QCOMPARE(first.tell("are you there"), "awake");
        first.signal(SIGTERM);
        QCOMPARE(first.nextLine(), "terminating");
        QCOMPARE(first.waitForEnd(), 0);
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    }

    // What desktops send

    void aDesktopThatActivatesOrOpensGetsThePanelAndAnUnknownActionIsAnError()
    {
        QVERIFY(startBus());
        ProgramUnderTest first = startListening();
        QVERIFY(waitForName());
        const QVariantMap none;
        QCOMPARE(call(QStringLiteral("Activate"), {none}).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(first.nextLine(), "show");
        QCOMPARE(
            call(QStringLiteral("ActivateAction"), {QStringLiteral("new-todo"), QVariantList(), none}).type(),
            QDBusMessage::ReplyMessage);
        QCOMPARE(first.nextLine(), "new-todo");
        QCOMPARE(call(QStringLiteral("Open"), {QStringList(), none}).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(first.nextLine(), "show");
        const QDBusMessage answer =
            call(QStringLiteral("ActivateAction"), {QStringLiteral("fly"), QVariantList(), none});
        QCOMPARE(answer.errorName(), QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
    }

    void theBusNameIsFreedByTheEndAndNotHandedOver()
    {
        QVERIFY(startBus());
        ProgramUnderTest first = startListening();
        QVERIFY(waitForName());
        const QDBusMessage request = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
        constexpr uint replaceAndDoNotQueue = 6;
        constexpr uint alreadyExists = 3;
        QDBusMessage takeOver = request;
        takeOver << QStringLiteral("dev.tolvane.Wrenfold") << replaceAndDoNotQueue;
        QCOMPARE(m_observer->call(takeOver).arguments().value(0).toUInt(), alreadyExists);
        first.signal(SIGTERM);
        QCOMPARE(first.nextLine(), "terminating");
        QCOMPARE(first.waitForEnd(), 0);
        QTRY_VERIFY(!isNameTaken());
    }

private:
    /// Connects to the one socket in the runtime folder.
    void connectTo(QLocalSocket &socket) const
    {
        socket.connectToServer(runtimeFolder() + u'/' + namesIn(runtimeFolder()).value(0));
        QVERIFY(socket.waitForConnected(5000));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::InstanceMessagesTest)
#include "instance_messages_test.moc"
