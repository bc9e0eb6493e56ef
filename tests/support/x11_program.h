// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QTest>

#include <xcb/xcb.h>

#include <array>
#include <cstdlib>

namespace wrenfold {

/// Another program on the X server, with a connection of its own and one window, which is shown at once. What it asks of
/// the server has been done when a function returns.
class X11Program
{
public:
    explicit X11Program(const QByteArray &windowClass)
        : m_connection(xcb_connect(nullptr, nullptr))
        , m_screen(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data)
        , m_window(xcb_generate_id(m_connection))
    {
        const std::array<uint32_t, 2> attributes = {m_screen->white_pixel, XCB_EVENT_MASK_BUTTON_PRESS};
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_screen->root, 0, 0, 300, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, attributes.data());
        if (!windowClass.isEmpty())
            setClass(windowClass);
        xcb_map_window(m_connection, m_window);
        sync();
    }
    ~X11Program() { xcb_disconnect(m_connection); }
    Q_DISABLE_COPY_MOVE(X11Program)

    [[nodiscard]] xcb_window_t window() const { return m_window; }

    /// Class and, in lower case, instance.
    void setClass(const QByteArray &windowClass)
    {
        const QByteArray names = windowClass.toLower() + '\0' + windowClass + '\0';
        setProperty(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8, names.size(), names.constData());
    }
    void setNumber(const char *name, xcb_atom_t type, uint32_t number)
    {
        setProperty(atom(name), type, 32, 1, &number);
    }
    void setText(const char *name, const QByteArray &text)
    {
        setProperty(atom(name), XCB_ATOM_STRING, 8, text.size(), text.constData());
    }

    /// As a task bar does it.
    void activate()
    {
        constexpr uint32_t fromPager = 2;
        send(atom("_NET_ACTIVE_WINDOW"), fromPager);
    }
    void setFullScreen(bool isFullScreen)
    {
        send(atom("_NET_WM_STATE"), isFullScreen ? 1 : 0, atom("_NET_WM_STATE_FULLSCREEN"));
    }
    void moveToDesktop(uint32_t desktop) { send(atom("_NET_WM_DESKTOP"), desktop); }

    /// How often a pointer's button was pressed in the window.
    int presses()
    {
        sync();
        while (xcb_generic_event_t *event = xcb_poll_for_event(m_connection)) {
            m_presses += (event->response_type & 0x7f) == XCB_BUTTON_PRESS ? 1 : 0;
            std::free(event);
        }
        return m_presses;
    }

    /// Becomes the owner of a selection; the server takes it back when this program ends.
    void own(const char *selection) const
    {
        xcb_set_selection_owner(m_connection, m_window, atom(selection), XCB_CURRENT_TIME);
        sync();
    }

    /// Takes the keyboard without asking a window manager. The window must be in sight.
    void focus() const
    {
        xcb_set_input_focus(m_connection, XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
        sync();
    }

    /// Asks for a key whoever has the keyboard. Whether nobody else had it.
    [[nodiscard]] bool grabKey(xcb_keycode_t key, uint16_t modifiers) const
    {
        const auto cookie = xcb_grab_key_checked(m_connection, 0, m_screen->root, modifiers, key,
                                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_generic_error_t *error = xcb_request_check(m_connection, cookie);
        std::free(error);
        return !error;
    }
    void ungrabKey(xcb_keycode_t key, uint16_t modifiers) const
    {
        xcb_ungrab_key(m_connection, key, m_screen->root, modifiers);
        sync();
    }

    xcb_atom_t atom(const char *name) const
    {
        const auto cookie = xcb_intern_atom(m_connection, 0, uint16_t(qstrlen(name)), name);
        xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(m_connection, cookie, nullptr);
        const xcb_atom_t answer = reply->atom;
        std::free(reply);
        return answer;
    }

private:
    /// Waits until the server has done what was asked: what another connection asks it then comes after.
    void sync() const
    {
        std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
    }
    void setProperty(xcb_atom_t name, xcb_atom_t type, uint8_t format, qsizetype count, const void *values)
    {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, name, type, format,
                            uint32_t(count), values);
        sync();
    }
    void send(xcb_atom_t type, uint32_t value, uint32_t second = 0)
    {
        xcb_client_message_event_t message = {};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = m_window;
        message.type = type;
        message.data.data32[0] = value;
        message.data.data32[1] = second;
        xcb_send_event(m_connection, 0, m_screen->root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char *>(&message));
        sync();
    }

    xcb_connection_t *m_connection;
    const xcb_screen_t *m_screen;
    const xcb_window_t m_window;
    int m_presses = 0;
};

} // namespace wrenfold
