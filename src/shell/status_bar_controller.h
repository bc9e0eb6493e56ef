// SPDX-License-Identifier: MIT
#pragma once

#include "model/published.h"
#include "platform/midnight_call.h"
#include "platform/status_item.h"
#include "shell/status_bar_state.h"
#include "shell/status_menu.h"

#include <QMenu>

namespace wrenfold {

/// The program's item in the status area: what it shows follows the store, what it is asked for goes to the store and
/// to these actions.
class StatusBarController
{
public:
    struct Actions
    {
        std::function<void()> showPanel; ///< Leaves ghost mode and brings the panel to the front.
        std::function<void()> showSettings;
        std::function<void()> showAIChat;
        std::function<void()> hidePanel;
        std::function<void()> quit;
    };

    /// Puts the item into the status area. The first three must outlive the controller.
    StatusBarController(FocusStore &store, Clock &clock, StatusItem &statusItem, const Actions &actions);
    Q_DISABLE_COPY_MOVE(StatusBarController)

private:
    void installObservers();
    void updateStatusItem();
    void statusItemClicked();
    void popUpMenu();
    void chooseRow(int command);
    void choose(StatusCommand command);
    void showPanel();
    void enterGhostMode();
    void leaveGhostMode();

    FocusStore &m_store;
    StatusItem &m_statusItem;
    Actions m_actions;
    bool m_isLabelShown = false;
    std::optional<StatusBarState> m_state; ///< Drawn last; nothing when the item is to be drawn in any case.
    QList<StatusMenuRow> m_rows;           ///< Those the item was told of last.
    QMenu m_menu;                          ///< Where the host leaves the menu to us; filled when it opens.
    MidnightCall m_midnightCall;
    std::vector<Subscription> m_subscriptions;
};

} // namespace wrenfold
