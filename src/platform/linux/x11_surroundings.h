// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/panel_standing.h"
#include "platform/linux/x11_connection.h"

#include <QRect>

namespace wrenfold {

/// Looks around the panel. Waits for the server's answers.
class X11Surroundings
{
public:
    explicit X11Surroundings(const X11Connection &connection); ///< Must outlive this object.

    /// Of a window of ours.
    [[nodiscard]] PanelSurroundings around(xcb_window_t window) const;

    /// Whether the window manager has one window above the other.
    [[nodiscard]] bool liesAbove(xcb_window_t upper, xcb_window_t lower) const;

    /// Whether a change of this property of the root may change what is around.
    [[nodiscard]] bool dependOn(xcb_atom_t rootProperty) const;

private:
    enum Atom { ActiveWindow, Stacking, CurrentDesktop, State, FullScreen, Hidden, Desktop };

    [[nodiscard]] std::vector<xcb_window_t> fullScreenInSight(const std::vector<xcb_window_t> &windows) const;
    [[nodiscard]] QRect rectOf(xcb_window_t window) const;

    const X11Connection &m_connection;
    const std::vector<xcb_atom_t> m_atoms;
};

} // namespace wrenfold
