// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11_connection.h"

class QWindow;

namespace wrenfold {

/// What windows of ours ask of the window manager.
class X11WindowWishes
{
public:
    explicit X11WindowWishes(const X11Connection &connection); ///< Must outlive this object.

    /// Asks it to keep a window in sight above others.
    void keepAbove(const QWindow &window, bool isAbove) const;

    /// Asks it to have a window on every workspace and in no list of windows, and above others or as any other. Without
    /// a window manager it is written on the window, for one that comes later.
    void keepAtHand(QWindow &window, bool isAbove) const;

    /// Writes on a window what keepAtHand() asks, for a window manager that takes it in later.
    void writeAtHand(const QWindow &window, bool isAbove) const;

    /// Makes it a group of its own.
    void leaveGroup(const QWindow &window) const;

    /// Brings a window to the front, with the keyboard, also one that the window manager has put out of sight.
    void bringToFront(const QWindow &window) const;

    [[nodiscard]] bool hasManager() const;
    [[nodiscard]] bool isAboveSupported() const { return isSupported(Above); }
    [[nodiscard]] bool isEveryWorkspaceSupported() const { return isSupported(Desktop); }

private:
    enum Atom { Supported, Desktop, State, Above, Sticky, SkipTaskbar, SkipPager, ActiveWindow };

    [[nodiscard]] bool isSupported(Atom atom) const;

    const X11Connection &m_connection;
    const std::vector<xcb_atom_t> m_atoms;
};

} // namespace wrenfold
