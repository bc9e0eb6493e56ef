// SPDX-License-Identifier: MIT
#pragma once

#include "platform/availability.h"

#include <Qt>

#include <functional>

class QWindow;

namespace wrenfold {

/// How high the panel lies.
enum class PanelLevel {
    Floating,        ///< Above other windows, but not above a full-screen window that is in front.
    AboveFullScreen, ///< Above that too.
};

/// A window of the program beside the panel.
enum class CompanionKind {
    Ordinary, ///< Among the windows of other programs, and on one workspace.
    Floating, ///< Above them, but not above a full-screen window that is in front; on every workspace.
};

/// What a desktop can do for the floating panel, and for the windows beside it: above other windows, on every
/// workspace, out of the task bar.
class PanelWindow
{
public:
    virtual ~PanelWindow() = default;

    /// Whether it can lie above other windows, and be on every workspace.
    [[nodiscard]] virtual Availability availability() const = 0;
    [[nodiscard]] virtual Availability workspacesAvailability() const = 0;

    /// The flags to create the panel's window with.
    [[nodiscard]] virtual Qt::WindowFlags flags() const = 0;

    /// Calls `listener` at once and on each change: whether parts of a window can be seen through, so that its corners
    /// may be rounded by painting. There is one listener; an empty one ends it.
    virtual void watchTranslucency(std::function<void(bool)> listener) = 0;

    /// Puts the panel's window on its level and on every workspace. To be called each time it is about to be shown, as
    /// desktops forget these wishes when it is hidden, and when the level changes. Until it is hidden the level is kept
    /// up by itself, whatever other windows do. There is one such window; it must not outlive this object.
    virtual void pin(QWindow &window, PanelLevel level) = 0;

    /// Brings the panel's window back, with the keyboard, when the desktop has put it away though the program shows it:
    /// iconified, or out of sight with all others. Does nothing on a desktop that cannot be asked.
    virtual void bringBack(QWindow &window) = 0;

    /// Keeps another window above the panel while that window has the keyboard, and grants what its kind says as far as
    /// the desktop does. To be called each time it is about to be shown. There may be several such windows.
    virtual void accompany(QWindow &window, CompanionKind kind) = 0;
};

} // namespace wrenfold
