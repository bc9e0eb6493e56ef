// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <QTemporaryDir>

#include <memory>
#include <vector>

struct wl_client;
struct wl_display;
struct wl_resource;

namespace wrenfold {

/// A compositor without a screen that tells of windows and minimises them when asked, as labwc and wayfire do. It runs
/// in the test's own event loop, so nothing may wait for it.
class MinimizingCompositor
{
public:
    struct Window
    {
        QByteArray appID;
        bool isActive = false;
        bool isMinimized = false;
        wl_resource *handle = nullptr; ///< What the client knows it by, once there is a client.
    };

    enum class Windows { Told, Untold };

    /// Listens, and names itself in WAYLAND_DISPLAY and XDG_RUNTIME_DIR.
    explicit MinimizingCompositor(Windows windows = Windows::Told);
    ~MinimizingCompositor();
    Q_DISABLE_COPY_MOVE(MinimizingCompositor)

    Window &open(const QByteArray &appID);
    /// Tells the client how the window is now.
    static void tell(const Window &window);
    void changeTitle(const Window &window, const QByteArray &title);
    void closeWindow(const Window &window);
    /// Ends the telling, as a compositor may that keeps the connection.
    void finish();

    [[nodiscard]] bool hasClient() const { return m_manager != nullptr; }

private:
    static void bind(wl_client *client, void *self, uint32_t version, uint32_t id);
    void announce(Window &window);
    void flush();

    QTemporaryDir m_folder;
    wl_display *m_display;
    std::unique_ptr<QSocketNotifier> m_notifier;
    wl_resource *m_manager = nullptr;
    std::vector<std::unique_ptr<Window>> m_windows;
};

} // namespace wrenfold
