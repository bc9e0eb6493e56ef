// SPDX-License-Identifier: MIT
#pragma once

#include "platform/panel_window.h"

#include <xcb/xcb.h>

#include <array>

namespace wrenfold {

/// The panel's window under X11, through Qt's own connection: to be made after the application object and
/// used while that exists. Questions to the server wait for its answer, not for the window manager's.
class X11PanelWindow : public PanelWindow
{
public:
    X11PanelWindow();

    [[nodiscard]] Availability availability() const override;
    [[nodiscard]] Qt::WindowFlags flags() const override;
    [[nodiscard]] bool isTranslucencyAvailable() const override;
    void joinAllWorkspaces(QWindow &window) override;

private:
    enum Atom {
        CompositorSelection,
        Supported,
        Desktop,
        State,
        Above,
        Sticky,
        SkipTaskbar,
        SkipPager,
        AtomCount
    };

    void sendWishes(QWindow &window);
    [[nodiscard]] bool isManaged() const;
    [[nodiscard]] bool isSupported(Atom atom) const;
    void sendToWindowManager(xcb_window_t window, Atom type, const std::array<uint32_t, 5> &data);

    xcb_connection_t *m_connection = nullptr; ///< Qt's.
    xcb_window_t m_root = XCB_WINDOW_NONE;
    std::array<xcb_atom_t, AtomCount> m_atoms = {};
};

} // namespace wrenfold
