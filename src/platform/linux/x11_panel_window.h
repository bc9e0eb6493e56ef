// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11_connection.h"
#include "platform/panel_window.h"

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
    };

    void sendWishes(QWindow &window);
    [[nodiscard]] bool isManaged() const;
    [[nodiscard]] bool isSupported(Atom atom) const;

    const X11Connection m_connection;
    const std::vector<xcb_atom_t> m_atoms;
};

} // namespace wrenfold
