// SPDX-License-Identifier: MIT
#include "platform/linux/x11_modifier_keys.h"

#include "platform/linux/xcb_xkb.h"

#include <QGuiApplication>

#include <utility>

namespace wrenfold {

X11ModifierKeys::X11ModifierKeys()
{
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(m_connection, &xcb_xkb_id);
    if (!extension || !extension->present)
        return;
    m_keyboardEvent = extension->first_event;
    // Besides what Qt has asked for, which is left as it is.
    constexpr uint16_t state = XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr uint16_t modifiers = XCB_XKB_STATE_PART_MODIFIER_STATE;
    xcb_xkb_select_events_details_t details = {};
    details.affectState = modifiers;
    details.stateDetails = modifiers;
    xcb_xkb_select_events_aux(m_connection, XCB_XKB_ID_USE_CORE_KBD, state, 0, 0, 0, 0, &details);
    qGuiApp->installNativeEventFilter(this);
}

X11ModifierKeys::~X11ModifierKeys()
{
    qGuiApp->removeNativeEventFilter(this);
}

Availability X11ModifierKeys::availability() const
{
    if (m_keyboardEvent == 0)
        return {Availability::Level::NotAvailable, QStringLiteral("The X server has no keyboard extension.")};
    return {};
}

void X11ModifierKeys::watchControl(std::function<void(bool)> changed)
{
    m_changed = std::move(changed);
    m_isDown = askWhetherDown();
    if (m_changed)
        m_changed(m_isDown);
}

bool X11ModifierKeys::askWhetherDown() const
{
    const auto cookie = xcb_query_pointer(m_connection, m_connection.root());
    const X11Reply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(m_connection, cookie, nullptr));
    return reply && (reply->mask & XCB_MOD_MASK_CONTROL) != 0;
}

bool X11ModifierKeys::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<const xcb_xkb_state_notify_event_t *>(message);
    if (typeOf(*static_cast<const xcb_generic_event_t *>(message)) != m_keyboardEvent ||
        event->xkbType != XCB_XKB_STATE_NOTIFY)
        return false;
    const bool isDown = (event->mods & XCB_MOD_MASK_CONTROL) != 0;
    if (isDown != std::exchange(m_isDown, isDown) && m_changed)
        m_changed(isDown);
    return false;
}

} // namespace wrenfold
