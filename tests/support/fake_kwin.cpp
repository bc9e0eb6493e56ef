// SPDX-License-Identifier: MIT
#include "support/fake_kwin.h"

#include "support/files.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QUuid>

#include <utility>

namespace wrenfold {
namespace {

const auto scripting = QStringLiteral("/Scripting");

} // namespace

FakeKWin::FakeKWin(QString busAddress)
    : m_busAddress(std::move(busAddress))
{
}

bool FakeKWin::arrive()
{
    leave();
    m_connectionName = QUuid::createUuid().toString();
    QDBusConnection bus = QDBusConnection::connectToBus(m_busAddress, m_connectionName);
    return bus.registerObject(scripting, this, QDBusConnection::ExportScriptableContents) &&
           bus.registerService(QStringLiteral("org.kde.KWin"));
}

void FakeKWin::leave()
{
    m_scripts.clear();
    if (m_connectionName.isEmpty())
        return;
    QDBusConnection(m_connectionName).unregisterObject(scripting);
    // Else our destruction is told to the connection, which may be going at that moment.
    disconnect(this, &QObject::destroyed, nullptr, nullptr);
    QDBusConnection::disconnectFromBus(std::exchange(m_connectionName, {}));
}

FakeKWin::Script FakeKWin::running(const QString &name) const
{
    const Script script = m_scripts.value(indexOf(name));
    return script.text.isEmpty() ? Script{} : script;
}

void FakeKWin::report(const QString &windowClass, const QString &windowInstance, const QString &desktopFile,
                      const QString &pid) const
{
    call(QDBusConnection(m_connectionName), running(QStringLiteral("dev.tolvane.Wrenfold.ActiveWindow")).text,
         QStringLiteral("Changed"), {windowClass, windowInstance, desktopFile, pid});
}

void FakeKWin::reportMinimized() const
{
    call(QDBusConnection(m_connectionName),
         running(QStringLiteral("dev.tolvane.Wrenfold.MinimizeWindows")).text,
         QStringLiteral("WindowsMinimized"), {});
}

QDBusPendingCall FakeKWin::call(const QDBusConnection &connection, const QByteArray &script,
                                const QString &method, const QVariantList &arguments)
{
    // const program = "<name>";
    const QByteArray literal = script.left(script.indexOf(';')).mid(script.indexOf('"'));
    const QString program = QJsonDocument::fromJson('[' + literal + ']').array().at(0).toString();
    QDBusMessage message =
        QDBusMessage::createMethodCall(program, QStringLiteral("/dev/tolvane/Wrenfold/ActiveWindow"),
                                       QStringLiteral("dev.tolvane.Wrenfold.ActiveWindow"), method);
    message.setArguments(arguments);
    return connection.asyncCall(message);
}

int FakeKWin::loadScript(const QString &path, const QString &name)
{
    note(QStringLiteral("loadScript ") + name);
    if (m_isHanging || std::exchange(m_isRefusing, false) || indexOf(name) >= 0)
        return -1;
    m_scripts.append({name, path, {}, 0});
    return int(m_scripts.size()) - 1;
}

bool FakeKWin::unloadScript(const QString &name)
{
    note(QStringLiteral("unloadScript ") + name);
    const bool isLoaded = indexOf(name) >= 0;
    // Like KWin, only once this call has been answered; a script of the name is refused until then.
    QMetaObject::invokeMethod(
        this,
        [this, name] { m_scripts.removeIf([&name](const Script &script) { return script.name == name; }); },
        Qt::QueuedConnection);
    return isLoaded;
}

void FakeKWin::start()
{
    note(QStringLiteral("start"));
    if (m_isHanging)
        return;
    // One whose file has gone meanwhile is dropped.
    m_scripts.removeIf(
        [](const Script &script) { return script.text.isEmpty() && !QFile::exists(script.path); });
    for (Script &script : m_scripts) {
        if (script.text.isEmpty()) {
            script.text = bytesOf(script.path);
            script.mode = modeOf(script.path);
        }
    }
    Q_EMIT started();
}

qsizetype FakeKWin::indexOf(const QString &name) const
{
    for (qsizetype i = 0; i < m_scripts.size(); ++i) {
        if (m_scripts[i].name == name)
            return i;
    }
    return -1;
}

void FakeKWin::note(const QString &call)
{
    m_calls.append(call);
    if (m_isHanging)
        setDelayedReply(true);
}

} // namespace wrenfold
