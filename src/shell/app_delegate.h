// SPDX-License-Identifier: MIT
#pragma once

#include "ai/ai_chat_controller.h"
#include "ai/openrouter_task_sorter.h"
#include "guard/focus_guard_controller.h"
#include "look/application_look.h"
#include "model/focus_store.h"
#include "notify/app_notifier.h"
#include "platform/platform.h"
#include "shell/app_menu.h"
#include "shell/hot_keys.h"
#include "shell/menu_key.h"
#include "shell/panel_controller.h"
#include "shell/reorder_key_controller.h"
#include "shell/settings_controller.h"
#include "shell/status_bar_controller.h"

namespace wrenfold {

/// Owns everything that lives as long as the program, in the order of construction.
class AppDelegate
{
public:
    /// How the store is made, and what is put into it before anything is shown.
    struct StoreMaking
    {
        FocusStore::Options options;
        std::function<void(FocusStore &)> seed;
    };

    /// `platform` must outlive the delegate.
    explicit AppDelegate(Platform &platform, const StoreMaking &storeMaking = {});
    ~AppDelegate();
    Q_DISABLE_COPY_MOVE(AppDelegate)

    /// To be called once, when the application is ready to show windows. Reading it is reading the start-up.
    /// `request` is what this start was asked for; none if that is still to come by the message bus. The bus drops what
    /// somebody asks who ends before this program is there: if nothing comes, the panel shows after two seconds.
    void applicationDidFinishLaunching(std::optional<Request> request = Request::ShowPanel);

private:
    void makeMenu();
    void makeHotKeys();
    void makeStatusItem();
    void makeFocusGuard();
    [[nodiscard]] PanelController &panelController();
    [[nodiscard]] SettingsController &settingsController();
    [[nodiscard]] AIChatController &aiChatController();
    void prepareWindow(QWidget &window);

    void showPanel();
    void showPanelUnasked();
    void togglePanel();
    void hidePanel();
    void showSettings();
    void showAIChat();
    void newTodo();
    /// Does what another start asks for; the text is for that one to print.
    QString answer(Request request);
    static void quit();

    Platform &m_platform;
    ApplicationLook m_look;
    AppNotifier m_notifier;
    OpenRouterTaskSorter m_sorter;
    FocusStore m_store;
    // Made when the launch has finished.
    std::optional<AppMenu> m_appMenu;
    std::optional<PanelController> m_panelController;       ///< Made when first used.
    std::optional<SettingsController> m_settingsController; ///< Made when first used.
    std::optional<AIChatController> m_aiChatController;     ///< Made when first used.
    std::vector<std::unique_ptr<GlobalHotKey>> m_hotKeys;   ///< Those that the desktop did not refuse.
    std::optional<StatusBarController> m_statusBarController;
    std::optional<FocusGuardController> m_focusGuardController;
    std::optional<ReorderKeyController> m_reorderKeyController;
    MenuKey m_menuKey;
    std::unique_ptr<ScheduledCall> m_unheardRequest;
};

} // namespace wrenfold
