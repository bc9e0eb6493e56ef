// SPDX-License-Identifier: MIT
#pragma once

#include "platform/global_shortcuts.h"
#include "platform/linux/bus_connection.h"
#include "platform/linux/portal_shortcut.h"
#include "platform/linux/session_bus.h"

#include <QObject>
#include <QSet>

#include <chrono>
#include <optional>
#include <vector>

class QDBusMessage;

namespace wrenfold {

/// The global shortcuts that the desktop portal gives, on the session bus. It asks the user, so the answer comes late. The
/// registrations of one turn of the event loop are passed on together; the portal takes no more afterwards. Our keys are
/// a wish: the user may choose others. A portal that restarts is asked again for what it had granted, or not answered yet.
class PortalGlobalShortcuts final : public QObject, public GlobalShortcuts
{
    Q_OBJECT

public:
    /// `patience` is how long the bus, and then each reply of the portal, is waited for. Long, because nobody else waits
    /// and at the start of a session the portal may be starting too.
    explicit PortalGlobalShortcuts(std::chrono::milliseconds patience = std::chrono::seconds(30));

    [[nodiscard]] Availability availability() const override;
    [[nodiscard]] bool asksUser() const override { return true; }
    void installEventHandler(const EventHandler &handler) override { m_handler = handler; }
    [[nodiscard]] bool hasEventHandler() const override { return static_cast<bool>(m_handler.pressed); }
    [[nodiscard]] bool registerShortcut(const GlobalShortcut &shortcut) override;
    void unregisterShortcut(uint32_t id) override;

private Q_SLOTS:
    // Called by the bus.
    void nameOwnerChanged(const QDBusMessage &signal);
    void sessionCreated(const QDBusMessage &response);
    void shortcutsBound(const QDBusMessage &response);
    void shortcutsChanged(const QDBusMessage &signal);
    void sessionClosed(const QDBusMessage &signal);
    void activated(const QDBusMessage &signal);

private:
    void connectToBus();
    void followPortal(const QDBusConnection &connection);
    void introduceOurselves();
    void createSession();
    void bindShortcuts();
    /// `replied` is called with the reply, or the error, unless the portal has gone by then.
    void call(const QDBusMessage &message, std::function<void(const QDBusMessage &reply)> replied);
    /// A call whose answer is the response that comes later; an error means no.
    void request(const QDBusMessage &message);
    /// Has the slot called with the response to a request yet to be made, whose token is the answer.
    [[nodiscard]] QString expectResponse(const char *slot);
    /// Refuses what the portal has not granted.
    void keepOnly(const QStringList &granted);
    void noteKeys(const QList<PortalShortcut> &shortcuts);
    void loseSession();

    const std::chrono::milliseconds m_patience;
    EventHandler m_handler;
    std::vector<GlobalShortcut> m_shortcuts;
    QStringList m_refused;    ///< The names of the shortcuts that were refused.
    QSet<QString> m_withKeys; ///< The portal's ids of those that keys are assigned to.
    bool m_isPassedOn = false;
    QString m_session;                         ///< The path of the portal's session; empty without one.
    bool m_isToBeRestored = false;             ///< The portal went with shortcuts of ours.
    int m_departures = 0;                      ///< Of the portal.
    std::optional<BusConnection> m_connection; ///< Empty until it is made.
    SessionBus m_bus;                          ///< Last: its thread uses the rest.
};

} // namespace wrenfold
