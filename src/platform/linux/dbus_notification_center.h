// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/bus_connection.h"
#include "platform/linux/session_bus.h"
#include "platform/notification_center.h"

#include <QHash>
#include <QList>
#include <QObject>

#include <chrono>
#include <optional>

class QDBusMessage;

namespace wrenfold {

class Sounds;

/// The desktop's notification daemon, on the session bus. It is asked one thing after the other, so that a
/// notification that takes another's place knows that one's number. A daemon that restarts, and a bus, are found again
/// with the next notification.
class DBusNotificationCenter : public QObject, public NotificationCenter
{
    Q_OBJECT

public:
    /// `sounds`, which must outlive this object, plays a notification's sound where the daemon plays none. `patience`
    /// is how long the bus, and then each answer of the daemon, is waited for.
    explicit DBusNotificationCenter(Sounds &sounds,
                                    std::chrono::milliseconds patience = std::chrono::seconds(5));

    [[nodiscard]] Availability availability() const override { return m_availability; }

    void requestAuthorization(std::function<void(bool isGranted, const Error &error)> answered) override;

    /// A notification that still waits for its turn when a newer one of its identifier is posted gives way to that one
    /// and counts as posted.
    void post(const Notification &notification, std::function<void(const Error &error)> posted) override;

    void onClick(std::function<void()> clicked) override;

private Q_SLOTS:
    // Called by the bus.
    void nameOwnerChanged(const QDBusMessage &signal);
    void activationTokenCame(const QDBusMessage &signal);
    void actionInvoked(const QDBusMessage &signal);

private:
    struct Post
    {
        Notification notification;
        std::function<void(const Error &error)> posted;
    };

    /// Does the next thing that is to be done, unless one is being done.
    void advance();
    void connectToBus();
    void followBus();
    void askCapabilities();
    void findDaemon();
    void show(const Post &post);
    [[nodiscard]] QDBusMessage notifyMessage(const Notification &notification) const;

    /// Sends the message; `answered` is called with the answer, or the error, when `patience` is over at the latest.
    void call(const QDBusMessage &message, std::function<void(const QDBusMessage &answer)> answered);
    void answerQuestions(bool isGranted, const Error &error);
    /// Everything that waits ends in this error.
    void fail(const QString &error);
    void forgetDaemon();
    void setUnavailable(const QString &reason);
    /// Whether a signal of the daemon's is about one of our notifications.
    [[nodiscard]] bool isOurs(const QDBusMessage &signal) const;

    Sounds &m_sounds;
    const std::chrono::milliseconds m_patience;
    std::function<void()> m_clicked;
    QList<std::function<void(bool isGranted, const Error &error)>> m_questions;
    QList<Post> m_posts;
    bool m_isBusy = false;
    Availability m_availability;
    std::optional<BusConnection> m_connection;
    std::optional<QStringList> m_capabilities; ///< Of the daemon that is there now, once it has told them.
    QHash<QString, uint> m_ids;                ///< That daemon's numbers for our identifiers.
    QString m_daemon;                          ///< Its unique name on the bus; empty while not known.
    QByteArray m_activationToken;              ///< For the click that follows it.
    SessionBus m_bus;                          ///< Last: its thread uses the rest.
};

} // namespace wrenfold
