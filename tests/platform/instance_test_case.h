// SPDX-License-Identifier: MIT
#pragma once

#include "platform/program_under_test.h"
#include "support/private_bus.h"
#include "support/test_case.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace wrenfold {

/// Base of the tests that run instance_program: folders of its own for each test, no bus until one is
/// started.
class InstanceTestCase : public TestCase
{
protected:
    /// To be called in init().
    void makePlace()
    {
        m_place = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_place->path()).mkpath(QStringLiteral("runtime")));
        QVERIFY(
            QFile::setPermissions(runtimeFolder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtimeFolder());
        m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("disabled:"));
        m_environment.remove(QStringLiteral("XDG_ACTIVATION_TOKEN"));
    }

    /// To be called in cleanup().
    void leavePlace()
    {
        if (m_observer)
            QDBusConnection::disconnectFromBus(m_observer->name());
        m_observer.reset();
        m_bus.reset();
    }

    QString folder() const { return m_place->filePath(QStringLiteral("config/Wrenfold")); }
    QString runtimeFolder() const { return m_place->filePath(QStringLiteral("runtime")); }

    ProgramUnderTest start() const { return start(folder()); }
    ProgramUnderTest start(const QString &folder, int patience = 5000) const
    {
        return ProgramUnderTest(folder, m_environment, patience);
    }

    ProgramUnderTest startListening() const { return startListening(folder()); }
    ProgramUnderTest startListening(const QString &folder) const
    {
        return ProgramUnderTest(folder, m_environment, 5000, {"claim", "listen"});
    }

    void useBus(const QString &address)
    {
        m_environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
    }

    bool startBus()
    {
        m_bus = std::make_unique<PrivateBus>();
        if (const QString error = m_bus->start(); !error.isEmpty()) {
            qWarning().noquote() << error;
            return false;
        }
        useBus(m_bus->address());
        m_observer = QDBusConnection::connectToBus(m_bus->address(), QStringLiteral("observer"));
        return m_observer->isConnected();
    }

    QDBusMessage call(const QString &method, const QVariantList &arguments) const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QStringLiteral("dev.tolvane.Wrenfold"), QStringLiteral("/dev/tolvane/Wrenfold"),
            QStringLiteral("org.freedesktop.Application"), method);
        message.setArguments(arguments);
        return m_observer->call(message);
    }

    bool isNameTaken() const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
        message << QStringLiteral("dev.tolvane.Wrenfold");
        return m_observer->call(message).arguments().value(0).toBool();
    }

    bool waitForName() const
    {
        return QTest::qWaitFor([this] { return isNameTaken(); }, 10000);
    }

    std::unique_ptr<QTemporaryDir> m_place;
    std::unique_ptr<PrivateBus> m_bus;
    std::optional<QDBusConnection> m_observer; ///< Stands for a desktop.
    QProcessEnvironment m_environment;
};

} // namespace wrenfold
