// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <wayland-client-core.h>

struct wl_callback;
struct wl_registry;
struct wl_seat;
struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace wrenfold {

/// The windows of all programs, as a wlroots compositor tells them: over a connection of its own beside Qt's, which
/// ends with this object. Nothing here waits for the compositor, but isOffered().
class ForeignToplevels : public QObject
{
    Q_OBJECT

public:
    using AppIDFilter = std::function<bool(const QString &appID)>;

    /// Whether the compositor that WAYLAND_DISPLAY names tells of windows. Waits for its answer, no longer than that.
    [[nodiscard]] static bool isOffered(std::chrono::milliseconds patience);

    /// Connects to that compositor; null if nobody listens there.
    [[nodiscard]] static std::unique_ptr<ForeignToplevels> follow();

    ~ForeignToplevels() override;

    /// The app_id of the active window, empty if it has none. Nothing while no window is active, or a minimised one.
    [[nodiscard]] std::optional<QString> activeAppID() const;

    [[nodiscard]] bool isAnyShown(const AppIDFilter &isWanted) const;

    /// Asks the compositor to minimise those that are not. It may ignore that.
    void minimize(const AppIDFilter &isWanted);

    /// If within this time a window becomes active for which `isIntruder`, the one that is active now becomes it again.
    void keepActive(const AppIDFilter &isIntruder, std::chrono::milliseconds time);

    /// Whether the connection has broken, or does not tell of windows. Then nothing changes any more.
    [[nodiscard]] bool isGone() const { return m_isGone; }

Q_SIGNALS:
    /// activeAppID() may have changed.
    void changed();
    /// isGone() has become true.
    void gone();

private:
    class Toplevel;
    struct DisplayDeleter
    {
        void operator()(wl_display *display) const { wl_display_disconnect(display); }
    };
    struct ProxyDeleter
    {
        template<typename T>
        void operator()(T *object) const
        {
            wl_proxy_destroy(reinterpret_cast<wl_proxy *>(object));
        }
    };
    template<typename T>
    using Proxy = std::unique_ptr<T, ProxyDeleter>;

    explicit ForeignToplevels(wl_display *display);

    void listen();
    void listenToManager();
    void readEvents();
    void flush();
    void close();
    void remove(const Toplevel *toplevel);
    [[nodiscard]] Toplevel *active() const;
    void becameActive(const Toplevel &toplevel);

    std::unique_ptr<wl_display, DisplayDeleter> m_display;
    QSocketNotifier m_notifier; ///< Goes before the connection that it looks at.
    Proxy<wl_registry> m_registry;
    Proxy<wl_callback> m_allAnnounced;
    Proxy<zwlr_foreign_toplevel_manager_v1> m_manager;
    Proxy<wl_seat> m_seat; ///< The first one; windows are activated on behalf of one.
    std::vector<std::unique_ptr<Toplevel>> m_toplevels;
    Toplevel *m_kept = nullptr; ///< One of those, to become active again.
    AppIDFilter m_isIntruder;
    QDeadlineTimer m_keptUntil;
    quint64 m_activations = 0; ///< How often a window has become active: the order in which they did.
    bool m_isChanged = false;
    bool m_isGone = false;
};

} // namespace wrenfold
