// SPDX-License-Identifier: MIT
#pragma once

#include "shell/focus_panel.h"

#include <functional>

namespace wrenfold {

class Clock;
class FocusPanelView;
class FocusStore;

/// Owns the panel and its content, and shows and hides them.
class PanelController
{
public:
    struct Actions
    {
        std::function<void(const QPoint &)> showAppMenu;
    };

    /// All three must outlive the controller.
    PanelController(FocusStore &store, Clock &clock, PanelWindow &ability, const Actions &actions);

    [[nodiscard]] FocusPanel &panel() { return m_panel; }

    void showAndPin();
    void hide();

private:
    void centreOnScreen();

    FocusStore &m_store;
    FocusPanel m_panel;
    FocusPanelView *m_view; ///< The panel's.
};

} // namespace wrenfold
