// SPDX-License-Identifier: MIT
#include "platform/linux/x11_panel_window.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace wrenfold {
namespace {

struct Free
{
    void operator()(void *reply) const { std::free(reply); }
};
template<typename T>
using Reply = std::unique_ptr<T, Free>;

constexpr uint32_t everyDesktop = 0xFFFFFFFF;

/// The number of the X screen that the program's display names; Qt uses the same.
int screenNumber()
{
    char *host = nullptr;
    int display = 0;
    int screen = 0;
    if (!xcb_parse_display(nullptr, &host, &display, &screen))
        return 0;
    std::free(host);
    return screen;
}

xcb_window_t rootOfScreen(xcb_connection_t *connection, int number)
{
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screen.rem > 1; --number)
        xcb_screen_next(&screen);
    return screen.data->root;
}

} // namespace

X11PanelWindow::X11PanelWindow()
{
    m_connection = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const int screen = screenNumber();
    m_root = rootOfScreen(m_connection, screen);

    const std::array<QByteArray, AtomCount> names = {"_NET_WM_CM_S" + QByteArray::number(screen),
                                                     "_NET_SUPPORTED",
                                                     "_NET_WM_DESKTOP",
                                                     "_NET_WM_STATE",
                                                     "_NET_WM_STATE_ABOVE",
                                                     "_NET_WM_STATE_STICKY",
                                                     "_NET_WM_STATE_SKIP_TASKBAR",
                                                     "_NET_WM_STATE_SKIP_PAGER"};
    // All questions first, so that the server is waited for once.
    std::array<xcb_intern_atom_cookie_t, AtomCount> cookies;
    std::transform(names.begin(), names.end(), cookies.begin(), [this](const QByteArray &name) {
        return xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(name.size()), name.constData());
    });
    std::transform(cookies.begin(), cookies.end(), m_atoms.begin(), [this](xcb_intern_atom_cookie_t cookie) {
        const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    });
}

Availability X11PanelWindow::availability() const
{
    if (!isManaged())
        return {Availability::Level::Limited, QStringLiteral("No window manager is running.")};
    if (!isSupported(Above))
        return {Availability::Level::Limited,
                QStringLiteral("The window manager does not keep windows above others.")};
    return {};
}

Qt::WindowFlags X11PanelWindow::flags() const
{
    return Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
}

bool X11PanelWindow::isTranslucencyAvailable() const
{
    const auto cookie = xcb_get_selection_owner(m_connection, m_atoms[CompositorSelection]);
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_connection, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void X11PanelWindow::joinAllWorkspaces(QWindow &window)
{
    // Right after showing, Qt and the window manager both write the window's states, and either may write over what the
    // other has just taken up. Said once more when both have done, the wishes stay.
    constexpr auto settled = std::chrono::milliseconds(250);
    sendWishes(window);
    QTimer::singleShot(settled, &window, [this, &window] {
        if (window.isVisible())
            sendWishes(window);
    });
}

void X11PanelWindow::sendWishes(QWindow &window)
{
    const auto id = static_cast<xcb_window_t>(window.winId());
    if (isManaged()) {
        constexpr uint32_t add = 1;
        constexpr uint32_t fromApplication = 1;
        sendToWindowManager(id, Desktop, {everyDesktop, fromApplication});
        sendToWindowManager(id, State, {add, m_atoms[Above], m_atoms[Sticky], fromApplication});
        sendToWindowManager(id, State, {add, m_atoms[SkipTaskbar], m_atoms[SkipPager], fromApplication});
    } else {
        // Nobody takes messages; a window manager that starts later reads the wishes from the window.
        const std::array states = {m_atoms[Above], m_atoms[Sticky], m_atoms[SkipTaskbar], m_atoms[SkipPager]};
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, id, m_atoms[Desktop], XCB_ATOM_CARDINAL, 32,
                            1, &everyDesktop);
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, id, m_atoms[State], XCB_ATOM_ATOM, 32,
                            static_cast<uint32_t>(states.size()), states.data());
    }
    xcb_flush(m_connection);
}

/// A window manager is who redirects what is done to the root's children; properties may be left over from
/// one that has gone.
bool X11PanelWindow::isManaged() const
{
    const auto cookie = xcb_get_window_attributes(m_connection, m_root);
    const Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(m_connection, cookie, nullptr));
    return reply && (reply->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
}

bool X11PanelWindow::isSupported(Atom atom) const
{
    constexpr uint32_t most = 1024; // Units of four bytes; window managers list a hundred.
    const auto cookie = xcb_get_property(m_connection, 0, m_root, m_atoms[Supported], XCB_ATOM_ATOM, 0, most);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply || reply->format != 32)
        return false;
    const auto *first = static_cast<const xcb_atom_t *>(xcb_get_property_value(reply.get()));
    const auto *end = first + reply->value_len;
    return std::find(first, end, m_atoms[atom]) != end;
}

void X11PanelWindow::sendToWindowManager(xcb_window_t window, Atom type, const std::array<uint32_t, 5> &data)
{
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = m_atoms[type];
    std::copy(data.begin(), data.end(), std::begin(message.data.data32));
    xcb_send_event(m_connection, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
}

} // namespace wrenfold
