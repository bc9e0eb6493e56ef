// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

class QWindow;

namespace wrenfold {

/// Frees what the X server answered.
struct FreeX11Reply
{
    void operator()(void *reply) const { std::free(reply); }
};
template<typename T>
using X11Reply = std::unique_ptr<T, FreeX11Reply>;
using X11Property = X11Reply<xcb_get_property_reply_t>;

/// Qt's own connection to the X server, to be used while the application object exists. Questions wait for the
/// server's answer; to wait once for many, send all of them before taking the first answer.
class X11Connection
{
public:
    X11Connection();

    operator xcb_connection_t *() const { return m_connection; }
    [[nodiscard]] xcb_window_t root() const { return m_root; }
    [[nodiscard]] int screen() const { return m_screen; }

    [[nodiscard]] std::vector<xcb_atom_t> atoms(const std::vector<QByteArray> &names) const;

    [[nodiscard]] xcb_get_property_cookie_t ask(xcb_window_t window, xcb_atom_t property) const;
    /// Null when there is no such window.
    [[nodiscard]] X11Property answer(xcb_get_property_cookie_t cookie) const;
    /// Both at once; see numbersOf().
    [[nodiscard]] std::vector<uint32_t> numbers(xcb_window_t window, xcb_atom_t property) const;
    [[nodiscard]] std::vector<uint32_t> rootNumbers(xcb_atom_t property) const;

    /// Has changes of the root's properties come as events, besides what Qt has asked for.
    void listenToRootProperties() const;

    /// A message about a window to whoever manages the windows.
    void sendToWindowManager(xcb_window_t window, xcb_atom_t type, const std::array<uint32_t, 5> &data) const;

private:
    xcb_connection_t *m_connection;
    int m_screen;
    xcb_window_t m_root;
};

/// What a property holds: its bytes, or its 32-bit numbers; empty for a null one and one of another format.
[[nodiscard]] QByteArray bytesOf(const X11Property &property);
[[nodiscard]] std::vector<uint32_t> numbersOf(const X11Property &property);
[[nodiscard]] bool contains(const std::vector<uint32_t> &numbers, uint32_t number);

/// The desktop of a window that is on all of them.
inline constexpr uint32_t allDesktops = 0xFFFFFFFF;

/// The window's number on the server.
[[nodiscard]] xcb_window_t x11IdOf(const QWindow &window);

/// The event's type, whether the server or a program has sent it.
[[nodiscard]] uint8_t typeOf(const xcb_generic_event_t &event);

} // namespace wrenfold
