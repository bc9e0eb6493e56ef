// SPDX-License-Identifier: MIT
#include "platform/linux/x11_connection.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace wrenfold {
namespace {

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

X11Connection::X11Connection()
    : m_connection(qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection())
    , m_screen(screenNumber())
    , m_root(rootOfScreen(m_connection, m_screen))
{
}

std::vector<xcb_atom_t> X11Connection::atoms(const std::vector<QByteArray> &names) const
{
    std::vector<xcb_intern_atom_cookie_t> cookies(names.size());
    std::transform(names.begin(), names.end(), cookies.begin(), [this](const QByteArray &name) {
        return xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(name.size()), name.constData());
    });
    std::vector<xcb_atom_t> atoms(names.size());
    std::transform(cookies.begin(), cookies.end(), atoms.begin(), [this](xcb_intern_atom_cookie_t cookie) {
        const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    });
    return atoms;
}

xcb_get_property_cookie_t X11Connection::ask(xcb_window_t window, xcb_atom_t property) const
{
    // Units of four bytes; a window manager lists a thousand windows in a quarter of it.
    constexpr uint32_t most = 4096;
    return xcb_get_property(m_connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, most);
}

X11Property X11Connection::answer(xcb_get_property_cookie_t cookie) const
{
    // Handed a place for the error, xcb does not put it among the events, where Qt would warn of it.
    xcb_generic_error_t *error = nullptr;
    X11Property reply(xcb_get_property_reply(m_connection, cookie, &error));
    std::free(error);
    return reply;
}

std::vector<uint32_t> X11Connection::numbers(xcb_window_t window, xcb_atom_t property) const
{
    return numbersOf(answer(ask(window, property)));
}

std::vector<uint32_t> X11Connection::rootNumbers(xcb_atom_t property) const
{
    return numbers(m_root, property);
}

void X11Connection::listenToRootProperties() const
{
    const X11Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, m_root), nullptr));
    const uint32_t events =
        (attributes ? attributes->your_event_mask : 0) | uint32_t(XCB_EVENT_MASK_PROPERTY_CHANGE);
    xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &events);
}

void X11Connection::sendToWindowManager(xcb_window_t window, xcb_atom_t type,
                                        const std::array<uint32_t, 5> &data) const
{
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::copy(data.begin(), data.end(), std::begin(message.data.data32));
    xcb_send_event(m_connection, 0, m_root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
}

QByteArray bytesOf(const X11Property &property)
{
    if (!property || property->format != 8)
        return {};
    return QByteArray(static_cast<const char *>(xcb_get_property_value(property.get())),
                      xcb_get_property_value_length(property.get()));
}

std::vector<uint32_t> numbersOf(const X11Property &property)
{
    if (!property || property->format != 32)
        return {};
    const auto *first = static_cast<const uint32_t *>(xcb_get_property_value(property.get()));
    return {first, first + property->value_len};
}

bool contains(const std::vector<uint32_t> &numbers, uint32_t number)
{
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

xcb_window_t x11IdOf(const QWindow &window)
{
    return static_cast<xcb_window_t>(window.winId());
}

uint8_t typeOf(const xcb_generic_event_t &event)
{
    constexpr uint8_t sentByProgram = 0x80;
    return static_cast<uint8_t>(event.response_type & ~sentByProgram);
}

} // namespace wrenfold
