// SPDX-License-Identifier: MIT
#pragma once

#include "model/published.h"
#include "platform/clock.h"
#include "shell/focus_panel.h"

#include <functional>
#include <memory>
#include <vector>

namespace wrenfold {

class FocusPanelView;
class FocusStore;

/// Owns the panel and its content, and shows and hides them.
class PanelController
{
public:
    struct Actions
    {
        std::function<void(const QPoint &)> showAppMenu;
        std::function<void()> openSettings;
        std::function<void()> openAIChat;
        std::function<void(const QUrl &)> openLink;
    };

    /// All three must outlive the controller.
    PanelController(FocusStore &store, Clock &clock, PanelWindow &ability, const Actions &actions);
    ~PanelController();
    Q_DISABLE_COPY_MOVE(PanelController)

    [[nodiscard]] FocusPanel &panel() { return m_panel; }

    /// Leaves ghost mode and brings the panel to the front, with the focus.
    void showAndPin();
    /// Leaves ghost mode and brings the panel into sight; who has the focus keeps it.
    void showWithoutFocus();
    void hide();

private:
    void centreOnScreen();
    void followScreens();
    void keepInSightSoon();
    void keepInSight();
    void logShown() const;
    void resizePanel(bool isListHidden, bool isQuadrantBoardPresented);
    void followSize();
    void followGhostMode();
    void applyLevel();

    FocusStore &m_store;
    Clock &m_clock;
    PanelWindow &m_ability;
    FocusPanel m_panel;
    FocusPanelView *m_view; ///< The panel's.
    std::optional<int> m_compactOriginX;
    bool m_isBoardLeftOfList = false;
    std::unique_ptr<ScheduledCall> m_keepingInSight;
    std::vector<Subscription> m_subscriptions;
};

} // namespace wrenfold
