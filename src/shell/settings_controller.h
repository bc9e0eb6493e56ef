// SPDX-License-Identifier: MIT
#pragma once

#include "look/utility_window.h"

#include <functional>
#include <memory>

namespace wrenfold {

class Clock;
class FocusStore;
class InstalledApplications;
class PanelWindow;

/// Owns the settings window, which is made when it is first shown and then kept.
class SettingsController
{
public:
    struct Actions
    {
        std::function<void(QWidget &window)> windowMade; ///< Before it is shown for the first time.
    };

    /// The first four must outlive the controller.
    SettingsController(FocusStore &store, Clock &clock, PanelWindow &ability,
                       InstalledApplications &applications, const Actions &actions);

    /// Brings the window to the front with the keyboard.
    void show();

    /// Null until it is first shown.
    [[nodiscard]] UtilityWindow *window() const { return m_window.get(); }

private:
    void makeWindow();

    FocusStore &m_store;
    Clock &m_clock;
    PanelWindow &m_ability;
    InstalledApplications &m_applications;
    Actions m_actions;
    std::unique_ptr<UtilityWindow> m_window;
};

} // namespace wrenfold
