// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/dbus_menu_values.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace wrenfold {

/// A desktop's status area for tests, on a bus of theirs: the watcher that items come to, and a host that reads them.
class FakeStatusHost : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostThere SCRIPTABLE true)

public:
    explicit FakeStatusHost(QString busAddress);
    ~FakeStatusHost() override { leave(); }

    /// Takes the watcher's name on the bus, and `others`, with a new connection that knows of no item. Whether it has
    /// them.
    [[nodiscard]] bool arrive(const QStringList &others = {});
    void leave();

    /// Items are taken, but nobody shows them; or somebody does again.
    void setHostThere(bool isThere);
    /// Items are noted and not answered, until it ends.
    void setHanging(bool isHanging);
    void setRefusing(bool isRefusing) { m_isRefusing = isRefusing; }

    /// The items that have come, by their names on the bus.
    [[nodiscard]] const QStringList &items() const { return m_items; }
    /// The members of the signals of the last item and its menu, since this was asked last.
    [[nodiscard]] QStringList takeSignals();
    /// The arguments of the last signal.
    [[nodiscard]] const QVariantList &lastSignal() const { return m_lastSignal; }

    // What a host asks of the last item. The answer is waited for: an error's name, or its arguments.
    [[nodiscard]] QVariantMap properties();
    [[nodiscard]] QVariant property(const QString &name) { return properties().value(name); }
    QVariantList call(const QString &method, const QVariantList &arguments);
    QVariantList callMenu(const QString &method, const QVariantList &arguments);

    /// The menu's rows, as a host reads them when it opens it.
    [[nodiscard]] QList<DBusMenuLayout> openMenu();
    /// Presses a row with the pointer.
    void press(int row);

    [[nodiscard]] bool isHostThere() const { return m_isHostThere; }

public Q_SLOTS:
    // Named by the interface it serves.
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString &service);

Q_SIGNALS:
    Q_SCRIPTABLE void StatusNotifierHostRegistered();
    Q_SCRIPTABLE void StatusNotifierHostUnregistered();

private Q_SLOTS:
    void signalCame(const QDBusMessage &signal);

private:
    QVariantList callAt(const QString &path, const QString &interface, const QString &method,
                        const QVariantList &arguments);

    const QString m_busAddress;
    QString m_connectionName;
    QStringList m_items;
    QStringList m_signals;
    QVariantList m_lastSignal;
    QList<QDBusMessage> m_unanswered;
    bool m_isHostThere = true;
    bool m_isHanging = false;
    bool m_isRefusing = false;
};

} // namespace wrenfold
