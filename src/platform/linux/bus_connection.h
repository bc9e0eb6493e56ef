// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>

#include <functional>

class QDBusMessage;
class QDBusVirtualObject;

namespace wrenfold {

/// A signal on the bus, whoever sends it: to learn of a sender by its name Qt would wait for the bus.
struct BusSignal
{
    QString path;
    QString interface;
    QString name;
    QString firstArgument = {}; ///< Empty for any.

    /// Who is called `service` has come, gone or changed.
    [[nodiscard]] static BusSignal nameOwnerChanged(const QString &service);
    /// The bus itself has gone.
    [[nodiscard]] static BusSignal disconnected();
};

/// A call of the bus itself.
[[nodiscard]] QDBusMessage busCall(const QString &method, const QVariantList &arguments);

/// The question who is called `service`, by the unique name that its signals and calls come from. Answers do not tell
/// it on every version of Qt. An error if nobody is called so.
[[nodiscard]] QDBusMessage nameOwnerCall(const QString &service);

/// A connection to the bus that knows nothing of ours any more when it ends. Qt ends it on a thread of its own, which
/// goes on to look at what it knows, and to call it, while that goes here.
class BusConnection : public QDBusConnection
{
public:
    explicit BusConnection(const QDBusConnection &connection)
        : QDBusConnection(connection)
    {
    }
    ~BusConnection();
    Q_DISABLE_COPY_MOVE(BusConnection)

    // Both until the end of this object, which receivers and objects must outlive.
    /// Calls the slot, by SLOT() with a QDBusMessage, with each such signal.
    void follow(const BusSignal &signal, QObject *receiver, const char *slot);
    /// Puts the object's scriptable slots on the bus; of a virtual object what it answers.
    void offer(const QString &path, QObject *object);
    void offer(const QString &path, QDBusVirtualObject *object);

private:
    struct Followed
    {
        BusSignal signal;
        QObject *receiver;
        const char *slot;
    };
    struct Offered
    {
        QString path;
        QObject *object;
    };

    QList<Followed> m_followed;
    QList<Offered> m_offered;
};

/// Sends the call; `answered` is called with the answer, or the error, after `timeout` milliseconds at the latest (-1: Qt's
/// own), unless `receiver` has gone by then.
void callBus(const QDBusConnection &connection, const QDBusMessage &call, int timeout, QObject *receiver,
             std::function<void(const QDBusMessage &answer)> answered);

} // namespace wrenfold
