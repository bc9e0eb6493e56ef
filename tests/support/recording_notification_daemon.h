// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace wrenfold {

/// A notification daemon for tests, on a bus of theirs: it shows nothing and remembers everything.
class RecordingNotificationDaemon : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Call
    {
        QString appName;
        uint replacesId = 0;
        QString icon;
        QString summary;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int timeout = 0;
        uint id = 0; ///< What the daemon answered.
    };

    explicit RecordingNotificationDaemon(QString busAddress);
    ~RecordingNotificationDaemon() override { leave(); }

    /// Takes the name on the bus, with a new connection, numbers from 1 again, and nothing listed. Whether it has it.
    [[nodiscard]] bool arrive();
    void leave();

    void setCapabilities(const QStringList &capabilities) { m_capabilities = capabilities; }
    /// Calls are noted and not answered.
    void setHanging(bool isHanging) { m_isHanging = isHanging; }
    /// The next notification is answered with this error.
    void refuseNext(const QString &message) { m_refusal = message; }

    [[nodiscard]] int capabilitiesAsked() const { return m_capabilitiesAsked; }
    /// Every notification since it was made.
    [[nodiscard]] const QList<Call> &calls() const { return m_calls; }
    /// Those that no other has replaced, oldest first.
    [[nodiscard]] const QList<Call> &listed() const { return m_listed; }

    /// The user clicks the notification, or one of its actions.
    void invoke(uint id, const QString &action = QStringLiteral("default"), const QString &token = {});

public Q_SLOTS:
    // Named by the interface they serve.
    Q_SCRIPTABLE QStringList GetCapabilities();
    Q_SCRIPTABLE uint Notify(const QString &appName, uint replacesId, const QString &icon,
                             const QString &summary, const QString &body, const QStringList &actions,
                             const QVariantMap &hints, int timeout);

Q_SIGNALS:
    Q_SCRIPTABLE void ActionInvoked(uint id, const QString &action);
    Q_SCRIPTABLE void ActivationToken(uint id, const QString &token);

private:
    const QString m_busAddress;
    QString m_connectionName;
    QStringList m_capabilities;
    QString m_refusal;
    bool m_isHanging = false;
    int m_capabilitiesAsked = 0;
    uint m_lastId = 0;
    QList<Call> m_calls;
    QList<Call> m_listed;
};

} // namespace wrenfold
