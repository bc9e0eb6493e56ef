// SPDX-License-Identifier: MIT
#include "support/minimizing_compositor.h"

#include <foreign_toplevel-server-protocol.h>
#include <wayland-server-core.h>

namespace wrenfold {

MinimizingCompositor::MinimizingCompositor(Windows windows)
    : m_display(wl_display_create())
{
    qputenv("XDG_RUNTIME_DIR", m_folder.path().toUtf8());
    qputenv("WAYLAND_DISPLAY", "wayland-test");
    if (wl_display_add_socket(m_display, "wayland-test") != 0)
        qFatal("the compositor cannot listen");
    if (windows == Windows::Told)
        wl_global_create(m_display, &zwlr_foreign_toplevel_manager_v1_interface, 1, this, bind);
    wl_event_loop *loop = wl_display_get_event_loop(m_display);
    m_notifier = std::make_unique<QSocketNotifier>(wl_event_loop_get_fd(loop), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this, loop] {
        wl_event_loop_dispatch(loop, 0);
        flush();
    });
}

MinimizingCompositor::~MinimizingCompositor()
{
    m_notifier.reset();
    wl_display_destroy_clients(m_display);
    wl_display_destroy(m_display);
}

void MinimizingCompositor::bind(wl_client *client, void *data, uint32_t version, uint32_t id)
{
    auto *self = static_cast<MinimizingCompositor *>(data);
    self->m_manager = wl_resource_create(client, &zwlr_foreign_toplevel_manager_v1_interface,
                                         static_cast<int>(version), id);
    wl_resource_set_implementation(self->m_manager, nullptr, self, [](wl_resource *manager) {
        static_cast<MinimizingCompositor *>(wl_resource_get_user_data(manager))->m_manager = nullptr;
    });
    for (const auto &window : self->m_windows)
        self->announce(*window);
}

void MinimizingCompositor::announce(Window &window)
{
    using Handle = struct zwlr_foreign_toplevel_handle_v1_interface;
    static const Handle implementation = [] {
        Handle requests = {};
        requests.set_minimized = [](wl_client *, wl_resource *handle) {
            auto *minimized = static_cast<Window *>(wl_resource_get_user_data(handle));
            minimized->isMinimized = true; // And still active, as it is with some.
            tell(*minimized);
        };
        requests.destroy = [](wl_client *, wl_resource *handle) { wl_resource_destroy(handle); };
        return requests;
    }();
    window.handle =
        wl_resource_create(wl_resource_get_client(m_manager), &zwlr_foreign_toplevel_handle_v1_interface,
                           wl_resource_get_version(m_manager), 0);
    wl_resource_set_implementation(window.handle, &implementation, &window, nullptr);
    zwlr_foreign_toplevel_manager_v1_send_toplevel(m_manager, window.handle);
    zwlr_foreign_toplevel_handle_v1_send_app_id(window.handle, window.appID.constData());
    tell(window);
}

MinimizingCompositor::Window &MinimizingCompositor::open(const QByteArray &appID)
{
    m_windows.push_back(std::make_unique<Window>());
    m_windows.back()->appID = appID;
    if (m_manager)
        announce(*m_windows.back());
    return *m_windows.back();
}

void MinimizingCompositor::tell(const Window &window)
{
    wl_array states;
    wl_array_init(&states);
    const auto add = [&states](uint32_t state) {
        *static_cast<uint32_t *>(wl_array_add(&states, sizeof state)) = state;
    };
    if (window.isActive)
        add(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
    if (window.isMinimized)
        add(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED);
    zwlr_foreign_toplevel_handle_v1_send_state(window.handle, &states);
    wl_array_release(&states);
    zwlr_foreign_toplevel_handle_v1_send_done(window.handle);
    wl_client_flush(wl_resource_get_client(window.handle));
}

void MinimizingCompositor::changeTitle(const Window &window, const QByteArray &title)
{
    zwlr_foreign_toplevel_handle_v1_send_title(window.handle, title.constData());
    zwlr_foreign_toplevel_handle_v1_send_done(window.handle);
    flush();
}

void MinimizingCompositor::closeWindow(const Window &window)
{
    zwlr_foreign_toplevel_handle_v1_send_closed(window.handle);
    flush();
}

void MinimizingCompositor::finish()
{
    zwlr_foreign_toplevel_manager_v1_send_finished(m_manager);
    flush();
}

void MinimizingCompositor::flush()
{
    wl_display_flush_clients(m_display);
}

} // namespace wrenfold
