// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11_surroundings.h"
#include "platform/linux/x11_window_wishes.h"

#include <QPointer>
#include <QTimer>
#include <QWindow>

namespace wrenfold {

/// The windows of the program beside the panel.
class X11CompanionWindows
{
public:
    /// Both must outlive this object.
    X11CompanionWindows(const X11Surroundings &surroundings, const X11WindowWishes &wishes);

    /// A window that is about to be shown, or to come to the front.
    void add(QWindow &window, CompanionKind kind);
    [[nodiscard]] bool areInSight() const;
    [[nodiscard]] bool isHidden(xcb_window_t window) const; ///< False if it is none of them.

    /// Looks around, and tells the window manager what has changed for them.
    void judge();

    /// Puts the one that has the keyboard above the panel, if it is not there. The other way round it is the window
    /// manager's: it raises the window that is clicked.
    void raiseAbove(const QWindow &panel) const;

private:
    struct Companion
    {
        QPointer<QWindow> window;
        CompanionKind kind;
        bool isAbove; ///< What the window manager was told.
    };

    void repeatWishes() const;
    void tell(const Companion &companion) const;
    [[nodiscard]] bool hasToBeAbove(const Companion &companion) const;

    const X11Surroundings &m_surroundings;
    const X11WindowWishes &m_wishes;
    std::vector<Companion> m_companions;
    QTimer m_settled; ///< Runs until everybody has written what he writes when a window is shown.
};

} // namespace wrenfold
