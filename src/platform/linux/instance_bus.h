// SPDX-License-Identifier: MIT
#pragma once

#include "app/launch_options.h"
#include "platform/linux/instance_reply.h"
#include "platform/linux/session_bus.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QVariant>

#include <chrono>
#include <functional>
#include <future>
#include <optional>

namespace wrenfold {

/// The program's name on the session bus, over which desktops and further starts send the running
/// program requests. The connection is its own and made on a thread of its own, so that a bus that hangs holds
/// up nobody.
class InstanceBus : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// `instance` goes with each request of ours; a running program that was given another one refuses it.
    explicit InstanceBus(QString instance);

    /// Asks the running program, handing on the activation token that this start was given. Blocks for no longer than
    /// `patience`, and for a second at most while the bus itself is silent.
    [[nodiscard]] InstanceReply ask(Request request, std::chrono::milliseconds patience);

    /// Calls `answer` on the main thread for each request, until this object goes. Returns at once and never waits
    /// on the bus. If there is no bus, or another program holds the name, nothing comes.
    void listen(std::function<QString(Request request)> answer);

    /// Listens anew if there was no bus or it has gone meanwhile; for when a request came by another way. Returns at
    /// once.
    void listenAgain();

public Q_SLOTS:
    // Named by the interface they serve.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void Open(const QStringList &uris, const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(const QString &action, const QVariantList &parameter,
                                     const QVariantMap &platformData);

private:
    friend class InstanceReport;

    /// The answer to a request that came over the bus; none, and an error sent back, where it was meant for another.
    [[nodiscard]] QString answerTo(Request request, const QVariantMap &platformData);
    void connectAndServe();
    void serve(const QDBusConnection &connection);

    const QString m_instance;
    std::function<QString(Request request)> m_answer;
    std::future<QDBusConnection> m_connecting;   ///< Valid from the first ask until it is made.
    std::optional<QDBusConnection> m_connection; ///< Empty until it is made.
    SessionBus m_bus;                            ///< Last: its thread uses the rest.
};

} // namespace wrenfold
