// SPDX-License-Identifier: MIT
#include "platform/linux/kwin_script.h"

#include "platform/linux/bus_connection.h"

#include <QDBusError>
#include <QDir>

#include <utility>

namespace wrenfold {
namespace {

const auto kwinService = QStringLiteral("org.kde.KWin");

QDBusMessage methodCall(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(kwinService, QStringLiteral("/Scripting"),
                                                          QStringLiteral("org.kde.kwin.Scripting"), method);
    message.setArguments(arguments);
    message.setAutoStartService(false); // Nobody wants a second window manager.
    return message;
}

QString reasonFor(const QDBusMessage &error)
{
    const QDBusError::ErrorType type = QDBusError(error).type();
    if (type == QDBusError::ServiceUnknown ||
        error.errorName() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner"))
        return QStringLiteral("KWin is not running.");
    if (type == QDBusError::NoReply)
        return QStringLiteral("KWin does not answer.");
    return QStringLiteral("KWin refuses scripts: %1").arg(error.errorMessage().simplified());
}

/// The session's own folder, which nobody else can look into.
QString folder()
{
    const QString session = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return session.isEmpty() ? QDir::tempPath() : session;
}

/// A new file of mode 0600 with these bytes; null if it cannot be written.
std::unique_ptr<QTemporaryFile> fileWith(const QByteArray &bytes)
{
    auto file = std::make_unique<QTemporaryFile>(folder() + QStringLiteral("/wrenfold-XXXXXX.js"));
    if (!file->open() || file->write(bytes) != bytes.size() || !file->flush() || file->fileName().isEmpty())
        return nullptr;
    return file;
}

} // namespace

KWinScript::KWinScript(QString name, std::chrono::milliseconds patience)
    : m_name(std::move(name))
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, [this] { fail(QStringLiteral("KWin does not answer.")); });
}

KWinScript::~KWinScript()
{
    unload();
}

void KWinScript::run(const QDBusConnection &connection, const QByteArray &text)
{
    m_connection = connection;
    m_text = text;
    m_kwin.clear();
    m_file.reset();
    m_isBusy = true;
    ++m_attempt;
    // The answer is waited for: KWin takes a script away only after it, and refuses a second one of the name.
    call(methodCall(QStringLiteral("unloadScript"), {m_name}), [this](const QDBusMessage &) { findKWin(); });
}

void KWinScript::findKWin()
{
    call(nameOwnerCall(kwinService),
         [this](const QDBusMessage &answer) { load(answer.arguments().value(0).toString()); });
}

void KWinScript::load(const QString &kwin)
{
    m_file = fileWith(m_text);
    if (!m_file)
        return fail(QStringLiteral("No script for KWin can be written to %1.").arg(folder()));
    call(methodCall(QStringLiteral("loadScript"), {m_file->fileName(), m_name}),
         [this, kwin](const QDBusMessage &answer) {
             if (answer.arguments().value(0).toInt() < 0)
                 return fail(QStringLiteral("KWin did not load the script."));
             m_kwin = kwin;
             start();
         });
}

void KWinScript::start()
{
    // All scripts that do not run yet. The object that KWin makes for ours is no way to it: KWin counts them by how many
    // there are, so that after another one has gone two can bear one number.
    call(methodCall(QStringLiteral("start"), {}), [](const QDBusMessage &) {});
}

void KWinScript::call(const QDBusMessage &message, std::function<void(const QDBusMessage &answer)> answered)
{
    constexpr int usualTimeout = -1; // Longer than the patience.
    m_patience.start();
    callBus(*m_connection, message, usualTimeout, this,
            [this, attempt = m_attempt, answered = std::move(answered)](const QDBusMessage &answer) {
                if (attempt != m_attempt)
                    return;
                if (answer.type() == QDBusMessage::ErrorMessage)
                    fail(reasonFor(answer));
                else
                    answered(answer);
            });
}

void KWinScript::confirm()
{
    m_file.reset();
    m_patience.stop();
    m_isBusy = false;
    ++m_attempt;
}

void KWinScript::unload()
{
    confirm();
    m_kwin.clear();
    if (m_connection)
        m_connection->send(methodCall(QStringLiteral("unloadScript"), {m_name}));
    m_connection.reset();
}

void KWinScript::fail(const QString &reason)
{
    unload();
    Q_EMIT failed(reason);
}

} // namespace wrenfold
