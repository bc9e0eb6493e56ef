// SPDX-License-Identifier: MIT
#include "platform/linux/x11_panel_window.h"

#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <array>

namespace wrenfold {
namespace {

constexpr uint32_t everyDesktop = 0xFFFFFFFF;

} // namespace

X11PanelWindow::X11PanelWindow()
    : m_atoms(m_connection.atoms({"_NET_WM_CM_S" + QByteArray::number(m_connection.screen()),
                                  "_NET_SUPPORTED", "_NET_WM_DESKTOP", "_NET_WM_STATE", "_NET_WM_STATE_ABOVE",
                                  "_NET_WM_STATE_STICKY", "_NET_WM_STATE_SKIP_TASKBAR",
                                  "_NET_WM_STATE_SKIP_PAGER"}))
{
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
    const X11Reply<xcb_get_selection_owner_reply_t> reply(
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
        m_connection.sendToWindowManager(id, m_atoms[Desktop], {everyDesktop, fromApplication});
        m_connection.sendToWindowManager(id, m_atoms[State],
                                         {add, m_atoms[Above], m_atoms[Sticky], fromApplication});
        m_connection.sendToWindowManager(id, m_atoms[State],
                                         {add, m_atoms[SkipTaskbar], m_atoms[SkipPager], fromApplication});
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
    const auto cookie = xcb_get_window_attributes(m_connection, m_connection.root());
    const X11Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(m_connection, cookie, nullptr));
    return reply && (reply->all_event_masks & XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT) != 0;
}

bool X11PanelWindow::isSupported(Atom atom) const
{
    const std::vector<uint32_t> supported =
        numbersOf(m_connection.answer(m_connection.ask(m_connection.root(), m_atoms[Supported])));
    return std::find(supported.begin(), supported.end(), m_atoms[atom]) != supported.end();
}

} // namespace wrenfold
