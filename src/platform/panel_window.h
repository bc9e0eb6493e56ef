// SPDX-License-Identifier: MIT
#pragma once

#include "platform/availability.h"

#include <Qt>

class QWindow;

namespace wrenfold {

/// What a desktop can do for the floating panel: above other windows, on every workspace, out of the task bar.
class PanelWindow
{
public:
    virtual ~PanelWindow() = default;

    [[nodiscard]] virtual Availability availability() const = 0;

    /// The flags to create the panel's window with.
    [[nodiscard]] virtual Qt::WindowFlags flags() const = 0;

    /// Whether parts of a window can be seen through, so that its corners may be rounded by painting.
    [[nodiscard]] virtual bool isTranslucencyAvailable() const = 0;

    /// To be called after each time the panel's window was shown: desktops forget these wishes when it is hidden.
    /// Repeats itself a moment later, so the window must not outlive this object.
    virtual void joinAllWorkspaces(QWindow &window) = 0;
};

} // namespace wrenfold
