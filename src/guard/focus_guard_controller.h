// SPDX-License-Identifier: MIT
#pragma once

#include "guard/guard_warning.h"
#include "model/published.h"

#include <functional>
#include <memory>

namespace wrenfold {

class AppNotifier;
class Clock;
class FocusStore;
class ScheduledCall;
class Sounds;

/// While the store's focus guard is on, looks every 0.8 seconds which application is in front. A blocked one is warned
/// about; one that stays is hidden.
class FocusGuardController
{
public:
    /// What the guard works with; all of it must outlive the controller.
    struct Services
    {
        FrontmostApplication &frontmostApplication;
        Clock &clock;
        Sounds &sounds;
        AppNotifier &notifier;
    };
    struct Actions
    {
        /// Brings the panel into sight without the focus: with it our own window would be in front, and the warning
        /// over before it can lead to anything.
        std::function<void()> raisePanel;
        std::function<void()> showPanel; ///< As the user does it, with the focus.
    };

    /// `store` must outlive the controller.
    FocusGuardController(FocusStore &store, const Services &services, const Actions &actions);
    ~FocusGuardController();

private:
    void start();
    void stop();
    void checkFrontmostApplication();
    [[nodiscard]] std::optional<RunningApplication> blockedApplication() const;
    void warn(const GuardedApplication &application);
    void hide(const RunningApplication &application);

    FocusStore &m_store;
    const Services m_services;
    const Actions m_actions;
    GuardWarning m_warning;
    std::unique_ptr<ScheduledCall> m_timer; ///< Present while the guard runs.
    Subscription m_subscription;
};

} // namespace wrenfold
