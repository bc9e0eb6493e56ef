// SPDX-License-Identifier: MIT
#include "platform/linux/x11_window_wishes.h"

#include <QWindow>

namespace wrenfold {
namespace {

constexpr uint32_t fromApplication = 1;

} // namespace

X11WindowWishes::X11WindowWishes(const X11Connection &connection)
    : m_connection(connection)
    , m_atoms(connection.atoms({"_NET_SUPPORTED", "_NET_WM_DESKTOP", "_NET_WM_STATE", "_NET_WM_STATE_ABOVE",
                                "_NET_WM_STATE_STICKY", "_NET_WM_STATE_SKIP_TASKBAR",
                                "_NET_WM_STATE_SKIP_PAGER", "_NET_ACTIVE_WINDOW"}))
{
}

void X11WindowWishes::keepAbove(const QWindow &window, bool isAbove) const
{
    m_connection.sendToWindowManager(x11IdOf(window), m_atoms[State],
                                     {isAbove ? 1U : 0U, m_atoms[Above], 0, fromApplication});
    xcb_flush(m_connection);
}

void X11WindowWishes::keepAtHand(QWindow &window, bool isAbove) const
{
    if (!hasManager()) {
        writeAtHand(window, isAbove);
        return;
    }
    constexpr uint32_t add = 1;
    const xcb_window_t id = x11IdOf(window);
    m_connection.sendToWindowManager(id, m_atoms[Desktop], {allDesktops, fromApplication});
    m_connection.sendToWindowManager(id, m_atoms[State], {add, m_atoms[Sticky], 0, fromApplication});
    m_connection.sendToWindowManager(id, m_atoms[State],
                                     {add, m_atoms[SkipTaskbar], m_atoms[SkipPager], fromApplication});
    keepAbove(window, isAbove);
    // Full-screen windows have a layer of their own with some window managers only.
    if (!isAbove)
        window.lower();
}

void X11WindowWishes::writeAtHand(const QWindow &window, bool isAbove) const
{
    std::vector<xcb_atom_t> states = {m_atoms[Sticky], m_atoms[SkipTaskbar], m_atoms[SkipPager]};
    if (isAbove)
        states.push_back(m_atoms[Above]);
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, x11IdOf(window), m_atoms[Desktop],
                        XCB_ATOM_CARDINAL, 32, 1, &allDesktops);
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, x11IdOf(window), m_atoms[State], XCB_ATOM_ATOM,
                        32, static_cast<uint32_t>(states.size()), states.data());
    xcb_flush(m_connection);
}

void X11WindowWishes::leaveGroup(const QWindow &window) const
{
    constexpr size_t flags = 0, group = 8, count = 9; // Of the property's numbers.
    constexpr uint32_t hasGroup = 1U << 6;
    const xcb_window_t id = x11IdOf(window);
    std::vector<uint32_t> hints = m_connection.numbers(id, XCB_ATOM_WM_HINTS);
    hints.resize(count);
    hints[flags] |= hasGroup;
    hints[group] = id;
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, id, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 32,
                        count, hints.data());
    xcb_flush(m_connection);
}

void X11WindowWishes::bringToFront(const QWindow &window) const
{
    // As a task bar does it: the window manager may refuse a program that asks for itself, and Qt asks nothing for a
    // window that is not in sight.
    constexpr uint32_t fromPager = 2;
    m_connection.sendToWindowManager(x11IdOf(window), m_atoms[ActiveWindow], {fromPager, XCB_CURRENT_TIME});
    xcb_flush(m_connection);
}

/// A window manager is who redirects what is done to the root's children; properties may be left over from
/// one that has gone.
bool X11WindowWishes::hasManager() const
{
    const auto cookie = xcb_get_window_attributes(m_connection, m_connection.root());
    const X11Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(m_connection, cookie, nullptr));
    return reply && (reply->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
}

bool X11WindowWishes::isSupported(Atom atom) const
{
    return contains(m_connection.rootNumbers(m_atoms[Supported]), m_atoms[atom]);
}

} // namespace wrenfold
