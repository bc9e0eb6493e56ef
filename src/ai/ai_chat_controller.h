// SPDX-License-Identifier: MIT
#pragma once

#include "look/utility_window.h"

namespace wrenfold {

class AIChatView;
class FocusStore;
class PanelWindow;

/// Owns the chat's window, which keeps the conversation until the program ends.
class AIChatController
{
public:
    /// Both must outlive the controller.
    AIChatController(FocusStore &store, PanelWindow &ability);

    [[nodiscard]] UtilityWindow &window() { return m_window; }

    /// Brings the window to the front, ready to be typed into.
    void show();

private:
    UtilityWindow m_window;
    AIChatView *m_view; ///< The window's.
};

} // namespace wrenfold
