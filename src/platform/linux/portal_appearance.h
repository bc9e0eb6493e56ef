// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop_appearance.h"
#include "platform/linux/bus_connection.h"
#include "platform/linux/session_bus.h"

#include <QMap>
#include <QObject>
#include <QVariantMap>

#include <chrono>
#include <optional>

class QDBusMessage;

namespace wrenfold {

/// The desktop portal's settings, on the session bus. A portal that comes late or restarts is followed; one that goes
/// leaves the appearance as it is, and so does one that answers nothing or nonsense, and the bus if it goes.
class PortalAppearance final : public QObject, public DesktopAppearance
{
    Q_OBJECT

public:
    /// `patience` is how long the bus, and then each answer of the portal, is waited for. Long, because nobody else waits
    /// and at the start of a session the portal may be starting too.
    explicit PortalAppearance(std::chrono::milliseconds patience = std::chrono::seconds(30));

    void follow(std::function<void(const Appearance &)> changed) override;

    /// What the portal's settings, by namespace and key, say. Values of another type than the documented one say nothing.
    [[nodiscard]] static Appearance appearanceOf(const QMap<QString, QVariantMap> &settings);

private Q_SLOTS:
    // Called by the bus.
    void nameOwnerChanged(const QDBusMessage &signal);
    void settingChanged(const QDBusMessage &signal);

private:
    void followPortal(const QDBusConnection &connection);
    /// Asks for all the settings; while an answer is awaited, once more after it.
    void ask();
    void answerCame(const QDBusMessage &answer);

    const std::chrono::milliseconds m_patience;
    std::function<void(const Appearance &)> m_changed;
    Appearance m_told;
    std::optional<BusConnection> m_connection; ///< Empty until it is made.
    bool m_isAsking = false;
    bool m_isToAskAgain = false;
    SessionBus m_bus; ///< Last: its thread uses the rest.
};

} // namespace wrenfold
