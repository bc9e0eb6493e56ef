// SPDX-License-Identifier: MIT
#include "platform/linux/panel_standing.h"

#include <algorithm>

namespace wrenfold {
namespace {

using Kind = PanelStanding::Kind;

bool staysUnmanaged(const PanelStanding &current, PanelLevel level, const PanelSurroundings &surroundings)
{
    // Going back hides the window for a moment, which would take the keyboard from who is typing in it.
    if (surroundings.isFocusHere)
        return true;
    // Unmanaged, it would lie above another window of ours too.
    if (surroundings.isFocusOurs)
        return false;
    // How the panel would lie if it was managed cannot be seen from here; when another window gets active it is tried.
    const bool isSameActive = surroundings.active == 0 || surroundings.active == current.activeAtLeave;
    return level == PanelLevel::AboveFullScreen && isSameActive && !surroundings.fullScreen.empty();
}

bool isFullScreenInFront(const PanelSurroundings &surroundings)
{
    const std::vector<uint32_t> &windows = surroundings.fullScreen;
    return std::find(windows.begin(), windows.end(), surroundings.active) != windows.end();
}

} // namespace

PanelStanding nextStanding(const PanelStanding &current, PanelLevel level,
                           const PanelSurroundings &surroundings)
{
    if (current.kind == Kind::Unmanaged && staysUnmanaged(current, level, surroundings))
        return current;
    if (surroundings.isFocusOurs)
        return {Kind::Above};
    if (level == PanelLevel::AboveFullScreen) {
        // Of one that was not kept above nothing can be told before it is.
        const bool isCovered = current.kind == Kind::Above && !surroundings.fullScreenAbove.empty();
        return isCovered ? PanelStanding{Kind::Unmanaged, surroundings.active} : PanelStanding{Kind::Above};
    }
    // Between two windows none is active for a moment.
    if (surroundings.active == 0 && current.kind == Kind::Ordinary)
        return current;
    return {isFullScreenInFront(surroundings) ? Kind::Ordinary : Kind::Above};
}

} // namespace wrenfold
