// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop_entries.h"
#include "platform/frontmost_application.h"
#include "platform/linux/bus_connection.h"
#include "platform/linux/kwin_script.h"
#include "platform/linux/session_bus.h"

#include <QDBusContext>
#include <QList>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <optional>

namespace wrenfold {

class InstalledApplications;

/// For Plasma on Wayland, where only KWin knows the windows of others: a script of ours in KWin reports which window is
/// active, another one minimises an application's windows. A KWin, or a bus, that is not there or hangs holds up nobody
/// and is found when it comes back.
///
/// It works, as far as availability() goes, until KWin has been asked and something stood against it.
class KWinFrontmostApplication final : public QObject, public FrontmostApplication, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "dev.tolvane.Wrenfold.ActiveWindow")

public:
    /// `installed` must outlive this object. `patience` is how long the bus, and then KWin, is waited for, and after
    /// how long it is tried again.
    explicit KWinFrontmostApplication(InstalledApplications &installed,
                                      std::chrono::milliseconds patience = std::chrono::seconds(10));
    /// As stop().
    ~KWinFrontmostApplication() override;

    [[nodiscard]] Availability availability() const override { return m_availability; }
    void start() override;
    void stop() override;
    [[nodiscard]] std::optional<RunningApplication> current() const override { return m_current; }

    /// The windows are told by what those that have been active called themselves.
    void hide(const RunningApplication &application) override;

public Q_SLOTS:
    // Called by the scripts in KWin, over the bus. Anybody else is not listened to.
    Q_SCRIPTABLE void Changed(const QString &windowClass, const QString &windowInstance,
                              const QString &desktopFile, const QString &pid);
    Q_SCRIPTABLE void WindowsMinimized();

private Q_SLOTS:
    // Called by the bus.
    void nameOwnerChanged(const QDBusMessage &signal);
    void disconnected();

private:
    /// Does what is to be done next for reports to come: connects, or gives KWin the script.
    void advance();
    void serve(const QDBusConnection &connection);
    void fail(const QString &reason);
    void forgetWindow();
    void identify();
    [[nodiscard]] bool isCalledByKWin() const;

    InstalledApplications &m_installed;
    const std::chrono::milliseconds m_patience;
    bool m_isStarted = false;
    bool m_isConnecting = false;
    Availability m_availability;
    std::optional<BusConnection> m_connection;
    KWinScript m_reporter;
    KWinScript m_minimizer;
    QTimer m_retry;
    std::optional<WindowIdentity> m_window; ///< The active one, if it is somebody else's.
    bool m_isOurWindowActive = false;
    QList<WindowIdentity> m_seen; ///< Of windows that have been active, each once, the latest last.
    std::optional<RunningApplication> m_current;
    SessionBus m_bus; ///< Last: its thread uses the rest.
};

} // namespace wrenfold
