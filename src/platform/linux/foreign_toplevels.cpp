// SPDX-License-Identifier: MIT
#include "platform/linux/foreign_toplevels.h"

#include <QDir>
#include <QFile>

#include <foreign_toplevel-client-protocol.h>
#include <wayland-client-protocol.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace wrenfold {
namespace {

constexpr uint32_t managerVersion = 1;

/// A connection to the compositor's socket, or -1. Not libwayland's: that waits while the queue of a compositor that
/// takes no connections is full, and it would take the one in WAYLAND_SOCKET away from Qt.
int connectedSocket()
{
    const QString name = qEnvironmentVariable("WAYLAND_DISPLAY");
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (name.isEmpty() || (folder.isEmpty() && !QDir::isAbsolutePath(name)))
        return -1;
    const QByteArray path = QFile::encodeName(QDir(folder).filePath(name));
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path)
        return -1;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0 || ::connect(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0)
        return descriptor;
    ::close(descriptor);
    return -1;
}

} // namespace

/// One window. What the compositor says of it counts from its "done" on.
class ForeignToplevels::Toplevel
{
public:
    struct State
    {
        QString appID;
        bool isActive = false;
        bool isMinimized = false;

        friend bool operator==(const State &, const State &) = default;
    };

    Toplevel(ForeignToplevels &owner, zwlr_foreign_toplevel_handle_v1 *handle);

    [[nodiscard]] const State &state() const { return m_state; }
    [[nodiscard]] bool isInFront() const { return m_state.isActive && !m_state.isMinimized; }
    /// When it became active, compared to others.
    [[nodiscard]] quint64 activation() const { return m_activation; }

    void activate(wl_seat *seat) { zwlr_foreign_toplevel_handle_v1_activate(m_handle.get(), seat); }
    void minimize() { zwlr_foreign_toplevel_handle_v1_set_minimized(m_handle.get()); }
    /// Lets the compositor forget it too.
    void release() { zwlr_foreign_toplevel_handle_v1_destroy(m_handle.release()); }

private:
    void takeStates(const wl_array &states);
    void apply();

    static const zwlr_foreign_toplevel_handle_v1_listener listener;

    ForeignToplevels &m_owner;
    Proxy<zwlr_foreign_toplevel_handle_v1> m_handle;
    State m_state;
    State m_announced;
    quint64 m_activation = 0;
};

// What is not listed stays unheard: titles change often, and nobody here asks for them.
const zwlr_foreign_toplevel_handle_v1_listener ForeignToplevels::Toplevel::listener = {
    .title = [](void *, zwlr_foreign_toplevel_handle_v1 *, const char *) {},
    .app_id =
        [](void *self, zwlr_foreign_toplevel_handle_v1 *, const char *appID) {
            static_cast<Toplevel *>(self)->m_announced.appID = QString::fromUtf8(appID);
        },
    .output_enter = [](void *, zwlr_foreign_toplevel_handle_v1 *, wl_output *) {},
    .output_leave = [](void *, zwlr_foreign_toplevel_handle_v1 *, wl_output *) {},
    .state = [](void *self, zwlr_foreign_toplevel_handle_v1 *,
                wl_array *states) { static_cast<Toplevel *>(self)->takeStates(*states); },
    .done = [](void *self, zwlr_foreign_toplevel_handle_v1 *) { static_cast<Toplevel *>(self)->apply(); },
    .closed =
        [](void *self, zwlr_foreign_toplevel_handle_v1 *) {
            auto *toplevel = static_cast<Toplevel *>(self);
            toplevel->m_owner.remove(toplevel);
        },
};

ForeignToplevels::Toplevel::Toplevel(ForeignToplevels &owner, zwlr_foreign_toplevel_handle_v1 *handle)
    : m_owner(owner)
    , m_handle(handle)
{
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &listener, this);
}

void ForeignToplevels::Toplevel::takeStates(const wl_array &states)
{
    const auto *first = static_cast<const uint32_t *>(states.data);
    const auto *last = first + states.size / sizeof *first;
    const auto holds = [&](uint32_t state) { return std::find(first, last, state) != last; };
    m_announced.isActive = holds(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
    m_announced.isMinimized = holds(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED);
}

void ForeignToplevels::Toplevel::apply()
{
    if (m_announced == m_state)
        return;
    const bool becomesActive = m_announced.isActive && !m_state.isActive;
    if (becomesActive)
        m_activation = ++m_owner.m_activations;
    m_state = m_announced;
    m_owner.m_isChanged = true;
    if (becomesActive)
        m_owner.becameActive(*this);
}

bool ForeignToplevels::isOffered(std::chrono::milliseconds patience)
{
    const QDeadlineTimer deadline(patience);
    const std::unique_ptr<ForeignToplevels> toplevels = follow();
    if (!toplevels)
        return false;
    while (!toplevels->m_manager && !toplevels->m_isGone && !deadline.hasExpired()) {
        pollfd socket = {wl_display_get_fd(toplevels->m_display.get()), POLLIN, 0};
        if (::poll(&socket, 1, static_cast<int>(deadline.remainingTime())) > 0)
            toplevels->readEvents();
    }
    return toplevels->m_manager && !toplevels->m_isGone;
}

std::unique_ptr<ForeignToplevels> ForeignToplevels::follow()
{
    const int descriptor = connectedSocket();
    wl_display *display = descriptor < 0 ? nullptr : wl_display_connect_to_fd(descriptor);
    if (!display)
        return nullptr;
    return std::unique_ptr<ForeignToplevels>(new ForeignToplevels(display));
}

ForeignToplevels::ForeignToplevels(wl_display *display)
    : m_display(display)
    , m_notifier(wl_display_get_fd(display), QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &ForeignToplevels::readEvents);
    listen();
    flush();
}

ForeignToplevels::~ForeignToplevels() = default;

void ForeignToplevels::listen()
{
    static constexpr wl_registry_listener registryListener = {
        .global =
            [](void *data, wl_registry *registry, uint32_t name, const char *interface, uint32_t) {
                auto *self = static_cast<ForeignToplevels *>(data);
                if (!self->m_seat && std::strcmp(interface, wl_seat_interface.name) == 0) {
                    self->m_seat.reset(
                        static_cast<wl_seat *>(wl_registry_bind(registry, name, &wl_seat_interface, 1)));
                }
                const wl_interface &manager = zwlr_foreign_toplevel_manager_v1_interface;
                if (self->m_manager || std::strcmp(interface, manager.name) != 0)
                    return;
                self->m_manager.reset(static_cast<zwlr_foreign_toplevel_manager_v1 *>(
                    wl_registry_bind(registry, name, &manager, managerVersion)));
                self->listenToManager();
            },
        .global_remove = [](void *, wl_registry *, uint32_t) {},
    };
    static constexpr wl_callback_listener allAnnouncedListener = {
        .done =
            [](void *data, wl_callback *, uint32_t) {
                auto *self = static_cast<ForeignToplevels *>(data);
                if (!self->m_manager)
                    self->close();
            },
    };
    m_registry.reset(wl_display_get_registry(m_display.get()));
    wl_registry_add_listener(m_registry.get(), &registryListener, this);
    m_allAnnounced.reset(wl_display_sync(m_display.get()));
    wl_callback_add_listener(m_allAnnounced.get(), &allAnnouncedListener, this);
}

void ForeignToplevels::listenToManager()
{
    static constexpr zwlr_foreign_toplevel_manager_v1_listener listener = {
        .toplevel =
            [](void *data, zwlr_foreign_toplevel_manager_v1 *, zwlr_foreign_toplevel_handle_v1 *handle) {
                auto *self = static_cast<ForeignToplevels *>(data);
                self->m_toplevels.push_back(std::make_unique<Toplevel>(*self, handle));
            },
        .finished =
            [](void *data, zwlr_foreign_toplevel_manager_v1 *) {
                static_cast<ForeignToplevels *>(data)->close();
            },
    };
    zwlr_foreign_toplevel_manager_v1_add_listener(m_manager.get(), &listener, this);
}

ForeignToplevels::Toplevel *ForeignToplevels::active() const
{
    Toplevel *front = nullptr;
    for (const auto &toplevel : m_toplevels) {
        if (toplevel->isInFront() && (!front || front->activation() < toplevel->activation()))
            front = toplevel.get();
    }
    return m_isGone ? nullptr : front;
}

std::optional<QString> ForeignToplevels::activeAppID() const
{
    const Toplevel *front = active();
    return front ? std::optional(front->state().appID) : std::nullopt;
}

void ForeignToplevels::keepActive(const AppIDFilter &isIntruder, std::chrono::milliseconds time)
{
    m_kept = active();
    m_isIntruder = isIntruder;
    m_keptUntil = QDeadlineTimer(time);
}

void ForeignToplevels::becameActive(const Toplevel &toplevel)
{
    if (!m_kept || !m_seat || m_keptUntil.hasExpired() || !m_isIntruder(toplevel.state().appID))
        return;
    std::exchange(m_kept, nullptr)->activate(m_seat.get());
    flush();
}

bool ForeignToplevels::isAnyShown(const AppIDFilter &isWanted) const
{
    return std::any_of(m_toplevels.begin(), m_toplevels.end(), [&](const auto &toplevel) {
        return !toplevel->state().isMinimized && isWanted(toplevel->state().appID);
    });
}

void ForeignToplevels::minimize(const AppIDFilter &isWanted)
{
    for (const auto &toplevel : m_toplevels) {
        if (!m_isGone && !toplevel->state().isMinimized && isWanted(toplevel->state().appID)) {
            toplevel->minimize();
            flush(); // Each by itself, so that libwayland's own buffer never runs full.
        }
    }
}

/// Takes what the socket holds and runs the listeners.
void ForeignToplevels::readEvents()
{
    wl_display *display = m_display.get();
    while (wl_display_prepare_read(display) != 0) {
        if (wl_display_dispatch_pending(display) < 0)
            return close();
    }
    if (wl_display_read_events(display) < 0 || wl_display_dispatch_pending(display) < 0)
        return close();
    flush();
    if (std::exchange(m_isChanged, false))
        Q_EMIT changed();
}

void ForeignToplevels::flush()
{
    // A compositor that takes nothing any more is as good as gone.
    if (!m_isGone && wl_display_flush(m_display.get()) < 0)
        close();
}

void ForeignToplevels::close()
{
    if (std::exchange(m_isGone, true))
        return;
    m_notifier.setEnabled(false);
    Q_EMIT gone();
}

void ForeignToplevels::remove(const Toplevel *toplevel)
{
    const auto found = std::find_if(m_toplevels.begin(), m_toplevels.end(),
                                    [toplevel](const auto &each) { return each.get() == toplevel; });
    if (m_kept == toplevel)
        m_kept = nullptr;
    (*found)->release();
    m_toplevels.erase(found);
    m_isChanged = true;
}

} // namespace wrenfold
