// SPDX-License-Identifier: MIT
#pragma once

#include "platform/panel_window.h"

#include <cstdint>
#include <vector>

namespace wrenfold {

/// How the panel's window stands with the window manager.
struct PanelStanding
{
    enum class Kind {
        Above,     ///< Managed, and kept above others.
        Ordinary,  ///< Managed as any other window, so that a full-screen one hides it.
        Unmanaged, ///< Out of the window manager's hands, and so above everything it manages.
    };

    Kind kind = Kind::Above;
    uint32_t activeAtLeave = 0; ///< Of an unmanaged one: the window that was active when it became so.

    friend bool operator==(const PanelStanding &, const PanelStanding &) = default;
};

/// What there is around the panel. Windows are told by their X11 ids.
struct PanelSurroundings
{
    bool isFocusOurs = false; ///< Whether a window of ours has the keyboard.
    bool isFocusHere = false; ///< Whether it is the panel.
    uint32_t active = 0;      ///< The window that the window manager calls active; zero where there is none.
    /// The full-screen windows in sight that reach over the panel's place.
    std::vector<uint32_t> fullScreen;
    /// Those of them that lie above the panel; none above an unmanaged one.
    std::vector<uint32_t> fullScreenAbove;
};

/// How the panel has to stand from now on. Some window managers keep a window that is to be above others above
/// full-screen ones as well, some do not: which, shows in who lies above whom.
[[nodiscard]] PanelStanding nextStanding(const PanelStanding &current, PanelLevel level,
                                         const PanelSurroundings &surroundings);

} // namespace wrenfold
