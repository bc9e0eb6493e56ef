// SPDX-License-Identifier: MIT
#include "platform/linux/dbus_notification_center.h"

#include "app/application_id.h"
#include "platform/linux/activation_token.h"
#include "platform/sounds.h"

#include <QDBusError>
#include <QDBusMessage>

#include <utility>

namespace wrenfold {
namespace {

const auto service = QStringLiteral("org.freedesktop.Notifications");
const auto path = QStringLiteral("/org/freedesktop/Notifications");
const auto interface = QStringLiteral("org.freedesktop.Notifications");
const auto busService = QStringLiteral("org.freedesktop.DBus");
const auto desktopEntry = applicationID();
const auto defaultAction = QStringLiteral("default"); ///< What a click on the notification itself invokes.

QDBusMessage methodCall(const QString &method)
{
    return QDBusMessage::createMethodCall(service, path, interface, method);
}

QString errorText(const QDBusMessage &answer)
{
    return (answer.errorMessage().isEmpty() ? answer.errorName() : answer.errorMessage()).simplified();
}

} // namespace

DBusNotificationCenter::DBusNotificationCenter(Sounds &sounds, std::chrono::milliseconds patience)
    : m_sounds(sounds)
    , m_patience(patience)
{
    setUnavailable(QStringLiteral("The desktop has not answered yet."));
}

void DBusNotificationCenter::requestAuthorization(
    std::function<void(bool isGranted, const Error &error)> answered)
{
    m_questions.append(std::move(answered));
    advance();
}

void DBusNotificationCenter::post(const Notification &notification,
                                  std::function<void(const Error &error)> posted)
{
    for (Post &waiting : m_posts) {
        if (waiting.notification.identifier != notification.identifier)
            continue;
        waiting.notification = notification;
        std::exchange(waiting.posted, std::move(posted))({});
        return;
    }
    m_posts.append({notification, std::move(posted)});
    advance();
}

void DBusNotificationCenter::onClick(std::function<void()> clicked)
{
    m_clicked = std::move(clicked);
}

void DBusNotificationCenter::advance()
{
    if (m_isBusy || (m_questions.isEmpty() && m_posts.isEmpty()))
        return;
    if (!m_connection || !m_connection->isConnected())
        connectToBus();
    else if (!m_capabilities)
        askCapabilities();
    else if (m_daemon.isEmpty())
        findDaemon();
    else if (!m_questions.isEmpty())
        answerQuestions(true, {});
    else
        show(m_posts.takeFirst());
}

void DBusNotificationCenter::connectToBus()
{
    m_isBusy = true;
    m_connection.reset();
    forgetDaemon();
    m_bus.connect(m_patience, this, [this](const QDBusConnection &connection) {
        m_isBusy = false;
        m_connection.emplace(connection);
        if (!connection.isConnected())
            return fail(QStringLiteral("there is no session bus that answers"));
        followBus();
        advance();
    });
}

void DBusNotificationCenter::followBus()
{
    m_connection->follow(BusSignal::nameOwnerChanged(service), this, SLOT(nameOwnerChanged(QDBusMessage)));
    m_connection->follow({path, interface, QStringLiteral("ActivationToken")}, this,
                         SLOT(activationTokenCame(QDBusMessage)));
    m_connection->follow({path, interface, QStringLiteral("ActionInvoked")}, this,
                         SLOT(actionInvoked(QDBusMessage)));
}

void DBusNotificationCenter::askCapabilities()
{
    call(methodCall(QStringLiteral("GetCapabilities")), [this](const QDBusMessage &answer) {
        if (answer.type() == QDBusMessage::ErrorMessage)
            return fail(errorText(answer));
        m_capabilities = answer.arguments().value(0).toStringList();
        m_availability = {};
        advance();
    });
}

void DBusNotificationCenter::findDaemon()
{
    call(nameOwnerCall(service), [this](const QDBusMessage &answer) {
        if (answer.type() == QDBusMessage::ErrorMessage)
            return fail(errorText(answer));
        m_daemon = answer.arguments().value(0).toString();
        advance();
    });
}

void DBusNotificationCenter::show(const Post &post)
{
    call(notifyMessage(post.notification), [this, post](const QDBusMessage &answer) {
        if (answer.type() == QDBusMessage::ErrorMessage) {
            post.posted(errorText(answer));
            // Who waits behind a daemon that hangs need not wait as long again.
            if (QDBusError(answer).type() == QDBusError::NoReply)
                return fail(errorText(answer));
        } else {
            m_ids.insert(post.notification.identifier, answer.arguments().value(0).toUInt());
            if (m_capabilities && !m_capabilities->contains(QStringLiteral("sound")))
                m_sounds.play(Sound::Notification);
            post.posted({});
        }
        advance();
    });
}

QDBusMessage DBusNotificationCenter::notifyMessage(const Notification &notification) const
{
    const bool readsMarkup = m_capabilities->contains(QStringLiteral("body-markup"));
    QStringList actions;
    if (m_capabilities->contains(QStringLiteral("actions")))
        actions = {defaultAction, QStringLiteral("パネルを表示")};
    constexpr uchar normalUrgency = 1;
    constexpr int theDaemonsOwnTime = -1;
    QDBusMessage message = methodCall(QStringLiteral("Notify"));
    message << QStringLiteral("Wren Fold") << m_ids.value(notification.identifier) << desktopEntry
            << notification.title << (readsMarkup ? notification.body.toHtmlEscaped() : notification.body)
            << actions
            << QVariantMap{{QStringLiteral("desktop-entry"), desktopEntry},
                           {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")},
                           {QStringLiteral("urgency"), QVariant::fromValue(normalUrgency)}}
            << theDaemonsOwnTime;
    return message;
}

void DBusNotificationCenter::call(const QDBusMessage &message,
                                  std::function<void(const QDBusMessage &answer)> answered)
{
    m_isBusy = true;
    callBus(*m_connection, message, static_cast<int>(m_patience.count()), this,
            [this, answered = std::move(answered)](const QDBusMessage &answer) {
                m_isBusy = false;
                answered(answer);
            });
}

void DBusNotificationCenter::answerQuestions(bool isGranted, const Error &error)
{
    for (const auto &answered : std::exchange(m_questions, {}))
        answered(isGranted, error);
    advance();
}

void DBusNotificationCenter::fail(const QString &error)
{
    setUnavailable(QStringLiteral("The desktop's notifications do not answer: %1.").arg(error));
    for (const Post &post : std::exchange(m_posts, {}))
        post.posted(error);
    answerQuestions(false, error);
}

void DBusNotificationCenter::forgetDaemon()
{
    m_capabilities.reset();
    m_ids.clear();
    m_daemon.clear();
}

bool DBusNotificationCenter::isOurs(const QDBusMessage &signal) const
{
    return signal.service() == m_daemon && m_ids.values().contains(signal.arguments().value(0).toUInt());
}

void DBusNotificationCenter::setUnavailable(const QString &reason)
{
    m_availability = {Availability::Level::NotAvailable, reason};
}

void DBusNotificationCenter::nameOwnerChanged(const QDBusMessage &signal)
{
    if (signal.service() != busService)
        return;
    forgetDaemon();
    m_daemon = signal.arguments().value(2).toString();
    if (m_daemon.isEmpty())
        setUnavailable(QStringLiteral("The desktop's notification daemon has ended."));
    else
        m_availability = {};
}

void DBusNotificationCenter::activationTokenCame(const QDBusMessage &signal)
{
    if (isOurs(signal))
        m_activationToken = signal.arguments().value(1).toString().toUtf8();
}

void DBusNotificationCenter::actionInvoked(const QDBusMessage &signal)
{
    if (!m_clicked || !isOurs(signal) || signal.arguments().value(1).toString() != defaultAction)
        return;
    const ActivationToken token(std::exchange(m_activationToken, {}));
    m_clicked();
}

} // namespace wrenfold
