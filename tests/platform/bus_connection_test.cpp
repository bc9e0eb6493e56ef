// SPDX-License-Identifier: MIT
#include "platform/linux/bus_connection.h"
#include "support/private_bus.h"
#include "support/test_case.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <optional>

namespace wrenfold {

namespace {

const auto ourName = QStringLiteral("ours");
const auto othersName = QStringLiteral("others");
const auto path = QStringLiteral("/a/path");
const auto interface = QStringLiteral("an.interface");
const BusSignal signalOfInterest{path, interface, QStringLiteral("Changed"), QStringLiteral("this")};

} // namespace

/// What the bus calls.
class Listener : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "an.interface")

public:
    QStringList heard;

    [[nodiscard]] bool isBusToldOfTheEnd() const { return receivers(SIGNAL(destroyed(QObject *))) > 0; }

public Q_SLOTS:
    void changed(const QDBusMessage &signal) { heard << signal.arguments().value(1).toString(); }
    Q_SCRIPTABLE QString Echo(const QString &text) { return text; }
};

class VirtualListener : public QDBusVirtualObject
{
    Q_OBJECT

public:
    [[nodiscard]] bool isBusToldOfTheEnd() const { return receivers(SIGNAL(destroyed(QObject *))) > 0; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        return connection.send(message.createReply(message.arguments()));
    }
    [[nodiscard]] QString introspect(const QString & /*path*/) const override { return {}; }
};

/// What a connection does with objects of ours, and that at its end it forgets them.
class BusConnectionTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(m_bus.start(), QString());
        m_ours = QDBusConnection::connectToBus(m_bus.address(), ourName);
        m_others = QDBusConnection::connectToBus(m_bus.address(), othersName);
        QVERIFY(m_ours.isConnected());
        QVERIFY(m_others.isConnected());
    }

    void cleanupTestCase()
    {
        QDBusConnection::disconnectFromBus(ourName);
        QDBusConnection::disconnectFromBus(othersName);
    }

    void signalsAreHeardUntilTheEnd()
    {
        Listener first;
        Listener second;
        BusConnection lasting(m_ours);
        lasting.follow(signalOfInterest, &second, SLOT(changed(QDBusMessage)));
        {
            BusConnection connection(m_ours);
            connection.follow(signalOfInterest, &first, SLOT(changed(QDBusMessage)));
            tell(QStringLiteral("this"), QStringLiteral("one"));
            QTRY_COMPARE(first.heard, QStringList{QStringLiteral("one")});
        }
        tell(QStringLiteral("this"), QStringLiteral("two"));
        QTRY_COMPARE(second.heard, (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
        QCOMPARE(first.heard, QStringList{QStringLiteral("one")});
    }

    void onlyTheFirstArgumentThatIsNamedIsHeard()
    {
        Listener named;
        Listener any;
        BusConnection connection(m_ours);
        connection.follow(signalOfInterest, &named, SLOT(changed(QDBusMessage)));
        connection.follow({path, interface, QStringLiteral("Changed")}, &any, SLOT(changed(QDBusMessage)));
        tell(QStringLiteral("other"), QStringLiteral("one"));
        tell(QStringLiteral("this"), QStringLiteral("two"));
        QTRY_COMPARE(any.heard, (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
        QTRY_COMPARE(named.heard, QStringList{QStringLiteral("two")});
    }

    void anObjectIsOnTheBusUntilTheEnd()
    {
        Listener listener;
        {
            BusConnection connection(m_ours);
            connection.offer(path, &listener);
            QCOMPARE(echo(), QStringLiteral("text"));
        }
        QCOMPARE(echo(), QDBusError::errorString(QDBusError::UnknownObject));
    }

    void aVirtualObjectIsOnTheBusUntilTheEnd()
    {
        VirtualListener listener;
        {
            BusConnection connection(m_ours);
            connection.offer(path, &listener);
            QCOMPARE(echo(), QStringLiteral("text"));
        }
        QCOMPARE(echo(), QDBusError::errorString(QDBusError::UnknownObject));
    }

    void afterTheEndTheBusIsNotToldOfTheirs()
    {
        Listener receiver;
        Listener object;
        VirtualListener virtualObject;
        {
            BusConnection connection(m_ours);
            connection.follow(signalOfInterest, &receiver, SLOT(changed(QDBusMessage)));
            connection.offer(path, &object);
            connection.offer(path + QStringLiteral("/virtual"), &virtualObject);
            QVERIFY(receiver.isBusToldOfTheEnd());
            QVERIFY(object.isBusToldOfTheEnd());
            QVERIFY(virtualObject.isBusToldOfTheEnd());
        }
        QVERIFY(!receiver.isBusToldOfTheEnd());
        QVERIFY(!object.isBusToldOfTheEnd());
        QVERIFY(!virtualObject.isBusToldOfTheEnd());
    }

private:
    void tell(const QString &first, const QString &second)
    {
        // What the bus answers says that it knows what we listen to.
        const auto bus = QStringLiteral("org.freedesktop.DBus");
        const QDBusMessage question = QDBusMessage::createMethodCall(
            bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("GetId"));
        QCOMPARE(m_ours.call(question).type(), QDBusMessage::ReplyMessage);
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, QStringLiteral("Changed"));
        signal << first << second;
        QVERIFY(m_others.send(signal));
    }

    /// What the object on the bus answers to a text; the error's name if there is none.
    [[nodiscard]] QString echo()
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(m_ours.baseService(), path, interface, QStringLiteral("Echo"));
        message << QStringLiteral("text");
        const QDBusMessage answer = m_others.call(message, QDBus::BlockWithGui);
        return answer.type() == QDBusMessage::ErrorMessage ? answer.errorName()
                                                           : answer.arguments().value(0).toString();
    }

    PrivateBus m_bus;
    QDBusConnection m_ours{QString()};
    QDBusConnection m_others{QString()};
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::BusConnectionTest)
#include "bus_connection_test.moc"
