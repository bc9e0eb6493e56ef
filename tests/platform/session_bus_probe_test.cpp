// SPDX-License-Identifier: MIT
#include "platform/linux/session_bus_probe.h"
#include "support/private_bus.h"
#include "support/test_case.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QTemporaryDir>

#include <csignal>

namespace wrenfold {

using namespace std::chrono_literals;

class SessionBusProbeTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theSocketIsFoundInTheAddress_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<bool>("isSocket");
        QTest::addColumn<QByteArray>("name");
        const auto row = [](const char *address, const char *name) {
            QTest::newRow(address) << QByteArray(address) << true << QByteArray(name);
        };
        const auto noSocket = [](const char *address) {
            QTest::newRow(address) << QByteArray(address) << false << QByteArray();
        };
        row("", "/run/bus");
        row("unix:path=/a/bus", "/a/bus");
        row("unix:path=/a%20b,guid=1234", "/a b");
        row("unix:guid=1234,path=/a/bus;tcp:host=b", "/a/bus");
        row("unix:runtime=yes", "/run/bus");
        QTest::newRow("abstract") << QByteArray("unix:abstract=/a/bus,guid=12") << true
                                  << QByteArray("\0/a/bus", 7);
        noSocket("disabled:");
        noSocket("autolaunch:");
        noSocket("tcp:host=localhost,port=1;unix:path=/a");
        noSocket("unix:guid=1234");
        noSocket("nonsense");
    }

    void theSocketIsFoundInTheAddress()
    {
        QFETCH(QByteArray, address);
        QFETCH(QByteArray, name);
        const auto found = busSocketName(address, "/run");
        QTEST(found.has_value(), "isSocket");
        QCOMPARE(found.value_or(QByteArray()), name);
    }

    void aBusThatAnswersDoesNotHangUntilItIsStopped()
    {
        PrivateBus bus;
        QCOMPARE(bus.start(), QString());
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toLatin1());
        QVERIFY(!sessionBusHangs(10s));
        ::kill(static_cast<pid_t>(bus.processId()), SIGSTOP);
        QVERIFY(sessionBusHangs(100ms));
        ::kill(static_cast<pid_t>(bus.processId()), SIGCONT);
        QVERIFY(!sessionBusHangs(10s));
        bus.stop();
        QVERIFY(!sessionBusHangs(10s));
    }

    void anAbstractSocketIsAskedToo()
    {
        QLocalServer silent;
        silent.setSocketOptions(QLocalServer::AbstractNamespaceOption);
        const QString name = QStringLiteral("wrenfold-test-%1").arg(QCoreApplication::applicationPid());
        QVERIFY2(silent.listen(name), qPrintable(silent.errorString()));
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:abstract=" + name.toLatin1());
        QVERIFY(sessionBusHangs(100ms));
        silent.close();
        QVERIFY(!sessionBusHangs(10s));
    }

    void noBusDoesNotHang_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::newRow("disabled") << QByteArray("disabled:");
        QTest::newRow("no socket there") << QByteArray("unix:path=/nowhere/bus");
        QTest::newRow("name too long") << QByteArray("unix:path=/" + QByteArray(200, 'a'));
        QTest::newRow("no name") << QByteArray("unix:path=");
    }

    void noBusDoesNotHang()
    {
        QFETCH(QByteArray, address);
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        QVERIFY(!sessionBusHangs(10s));
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::SessionBusProbeTest)
#include "session_bus_probe_test.moc"
