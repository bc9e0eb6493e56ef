// SPDX-License-Identifier: MIT
#include "platform/linux/instance_bus.h"

#include "app/application_id.h"
#include "app/debug_log.h"
#include "platform/linux/activation_token.h"

#include <QDBusAbstractAdaptor>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDeadlineTimer>

#include <algorithm>
#include <memory>
#include <utility>

namespace wrenfold {
namespace {

const auto serviceName = applicationID();
const auto objectPath = QStringLiteral("/dev/tolvane/Wrenfold");
const auto applicationInterface = QStringLiteral("org.freedesktop.Application");
const auto ownInterface = applicationID();

// Keys of the platform data. The first is ours: desktops do not send it.
const auto instanceKey = QStringLiteral("dev.tolvane.Wrenfold.instance");
const auto activationTokenKey = QStringLiteral("activation-token");

/// How long a bus that hangs is waited for.
constexpr std::chrono::seconds busPatience(20);

QVariantMap askingPlatformData(const QString &instance)
{
    QVariantMap data{{instanceKey, instance}};
    if (const QByteArray token = ActivationToken::ofThisStart(); !token.isEmpty())
        data.insert(activationTokenKey, QString::fromLocal8Bit(token));
    return data;
}

QDBusMessage messageFor(Request request, const QVariantMap &platformData)
{
    const auto call = [](const QString &interface, const QString &method) {
        return QDBusMessage::createMethodCall(serviceName, objectPath, interface, method);
    };
    switch (request) {
    case Request::ShowPanel:
        return call(applicationInterface, QStringLiteral("Activate")) << platformData;
    case Request::DesktopReport:
        return call(ownInterface, QStringLiteral("DesktopReport")) << platformData;
    case Request::TogglePanel:
    case Request::HidePanel:
    case Request::NewTodo:
        break;
    }
    return call(applicationInterface, QStringLiteral("ActivateAction"))
           << wordFor(request) << QVariantList() << platformData;
}

QDBusMessage requestNameMessage()
{
    constexpr uint doNotQueue = 4; // And without the flag that lets another program take the name over.
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    message << serviceName << doNotQueue;
    return message;
}

InstanceReply replyFrom(const QDBusMessage &message)
{
    using Outcome = InstanceReply::Outcome;
    if (message.type() == QDBusMessage::ReplyMessage)
        return {Outcome::Answered, message.arguments().value(0).toString()};
    switch (QDBusError(message).type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
    case QDBusError::Disconnected: // The bus has gone, with or without having passed it on.
        return {Outcome::Unanswered, {}};
    default:
        return {}; // Nobody has the name, or who has it refused.
    }
}

} // namespace

/// What no desktop asks for, but a start of ours.
class InstanceReport : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "dev.tolvane.Wrenfold")

public:
    explicit InstanceReport(InstanceBus &bus)
        : QDBusAbstractAdaptor(&bus)
        , m_bus(bus)
    {
    }

public Q_SLOTS:
    // Named as it is on the bus.
    QString DesktopReport(const QVariantMap &platformData)
    {
        return m_bus.answerTo(Request::DesktopReport, platformData);
    }

private:
    InstanceBus &m_bus;
};

InstanceBus::InstanceBus(QString instance)
    : m_instance(std::move(instance))
{
}

InstanceReply InstanceBus::ask(Request request, std::chrono::milliseconds patience)
{
    constexpr std::chrono::milliseconds connecting(1000);
    const QDeadlineTimer deadline(patience);
    if (!m_connection) {
        if (!m_connecting.valid()) {
            const auto promise = std::make_shared<std::promise<QDBusConnection>>();
            m_connecting = promise->get_future();
            m_bus.connect(busPatience,
                          [promise](const QDBusConnection &connection) { promise->set_value(connection); });
        }
        if (m_connecting.wait_for(std::min(patience, connecting)) != std::future_status::ready)
            return {};
        m_connection = m_connecting.get();
    }
    if (!m_connection->isConnected())
        return {};
    QDBusMessage message = messageFor(request, askingPlatformData(m_instance));
    message.setAutoStartService(false); // Only a program that runs already is asked.
    const auto remaining = static_cast<int>(deadline.remainingTime());
    return replyFrom(m_connection->call(message, QDBus::Block, remaining));
}

void InstanceBus::listen(std::function<QString(Request request)> answer)
{
    m_answer = std::move(answer);
    new InstanceReport(*this); // Goes with this object.
    connectAndServe();
}

void InstanceBus::listenAgain()
{
    if (!m_connection || m_connection->isConnected())
        return; // It is being made, or well.
    m_connection.reset();
    connectAndServe();
}

void InstanceBus::connectAndServe()
{
    m_bus.connect(busPatience, this, [this](const QDBusConnection &connection) { serve(connection); });
}

void InstanceBus::serve(const QDBusConnection &connection)
{
    m_connection = connection;
    if (!m_connection->isConnected()) {
        qCInfo(DebugLog::app).noquote()
            << QStringLiteral("There is no session bus: %1").arg(m_connection->lastError().message());
        return;
    }
    // The object first: whoever sees the name may call at once.
    m_connection->registerObject(objectPath, this,
                                 QDBusConnection::ExportScriptableSlots | QDBusConnection::ExportAdaptors);
    auto *request = new QDBusPendingCallWatcher(m_connection->asyncCall(requestNameMessage()), this);
    connect(request, &QDBusPendingCallWatcher::finished, this, [request] {
        constexpr uint primaryOwner = 1;
        const QDBusPendingReply<uint> reply = *request;
        if (reply.isError() || reply.value() != primaryOwner)
            qCInfo(DebugLog::app).noquote() << QStringLiteral("The bus name %1 is not ours").arg(serviceName);
        request->deleteLater();
    });
}

QString InstanceBus::answerTo(Request request, const QVariantMap &platformData)
{
    const auto instance = platformData.constFind(instanceKey);
    if (instance != platformData.cend() && instance->toString() != m_instance) {
        sendErrorReply(QStringLiteral("dev.tolvane.Wrenfold.Error.OtherInstance"),
                       QStringLiteral("This program runs with other preferences"));
        return {};
    }
    const ActivationToken token(platformData.value(activationTokenKey).toString().toUtf8());
    return m_answer(request);
}

void InstanceBus::Activate(const QVariantMap &platformData)
{
    static_cast<void>(answerTo(Request::ShowPanel, platformData));
}

void InstanceBus::Open(const QStringList & /*uris*/, const QVariantMap &platformData)
{
    Activate(platformData);
}

void InstanceBus::ActivateAction(const QString &action, const QVariantList & /*parameter*/,
                                 const QVariantMap &platformData)
{
    if (const std::optional<Request> request = requestNamed(action))
        static_cast<void>(answerTo(*request, platformData));
    else
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no action %1").arg(action));
}

} // namespace wrenfold

#include "instance_bus.moc"
