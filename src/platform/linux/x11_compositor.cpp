// SPDX-License-Identifier: MIT
#include "platform/linux/x11_compositor.h"

#include <QGuiApplication>

#include <utility>
#include <xcb/xfixes.h>

namespace wrenfold {

X11Compositor::X11Compositor(const X11Connection &connection)
    : m_connection(connection)
    , m_selection(connection.atoms({"_NET_WM_CM_S" + QByteArray::number(connection.screen())}).front())
{
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(m_connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return;
    m_selectionEvent = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
    // The server does nothing for a client that has not told it a version.
    xcb_discard_reply(m_connection, xcb_xfixes_query_version(m_connection, 5, 0).sequence);
    xcb_xfixes_select_selection_input(m_connection, m_connection.root(), m_selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    qGuiApp->installNativeEventFilter(this);
}

X11Compositor::~X11Compositor()
{
    qGuiApp->removeNativeEventFilter(this);
}

void X11Compositor::watch(std::function<void(bool)> listener)
{
    m_listener = std::move(listener);
    m_isRunning = isRunning();
    if (m_listener)
        m_listener(m_isRunning);
}

bool X11Compositor::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if (typeOf(*event) != m_selectionEvent || !m_listener)
        return false;
    // Asked rather than taken from the event, which may be about another selection.
    if (std::exchange(m_isRunning, isRunning()) != m_isRunning)
        m_listener(m_isRunning);
    return false;
}

bool X11Compositor::isRunning() const
{
    const X11Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, m_selection), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace wrenfold
