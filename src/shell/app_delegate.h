// SPDX-License-Identifier: MIT
#pragma once

#include "ai/openrouter_task_sorter.h"
#include "guard/focus_guard_controller.h"
#include "look/application_look.h"
#include "model/focus_store.h"
#include "notify/app_notifier.h"
#include "platform/platform.h"
#include "shell/app_menu.h"
#include "shell/global_hot_key.h"
#include "shell/panel_controller.h"
#include "shell/reorder_key_controller.h"
#include "shell/status_bar_controller.h"

namespace wrenfold {

/// Owns everything that lives as long as the program, in the order of construction.
class AppDelegate
{
public:
    explicit AppDelegate(Platform &platform); ///< `platform` must outlive the delegate.
    ~AppDelegate();
    Q_DISABLE_COPY_MOVE(AppDelegate)

    /// To be called once, when the application is ready to show windows. Reading it is reading the start-up.
    void applicationDidFinishLaunching();

private:
    void makeMenu();
    void registerHotKeys();
    void makeStatusItem();
    void makeFocusGuard();
    [[nodiscard]] PanelController &panelController();

    void showPanel();
    void showPanelUnasked();
    void togglePanel();
    void hidePanel();
    void newTodo();
    static void quit();

    Platform &m_platform;
    ApplicationLook m_look;
    AppNotifier m_notifier;
    OpenRouterTaskSorter m_sorter;
    FocusStore m_store;
    // Made when the launch has finished.
    std::optional<AppMenu> m_appMenu;
    std::optional<PanelController> m_panelController;     ///< Made when first used.
    std::vector<std::unique_ptr<GlobalHotKey>> m_hotKeys; ///< Those that the desktop did not refuse.
    std::optional<StatusBarController> m_statusBarController;
    std::optional<FocusGuardController> m_focusGuardController;
    std::optional<ReorderKeyController> m_reorderKeyController;
};

} // namespace wrenfold
