// SPDX-License-Identifier: MIT
#pragma once

#include "platform/clock.h"
#include "platform/desktop_appearance.h"
#include "platform/folder_watch.h"
#include "platform/frontmost_application.h"
#include "platform/global_shortcuts.h"
#include "platform/installed_applications.h"
#include "platform/login_item.h"
#include "platform/modifier_keys.h"
#include "platform/notification_center.h"
#include "platform/panel_window.h"
#include "platform/preferences.h"
#include "platform/single_instance.h"
#include "platform/sounds.h"
#include "platform/status_item.h"

#include <functional>
#include <memory>

namespace wrenfold {

/// Everything that the program asks of the desktop it runs on, chosen once at start. Only the entry and the
/// application delegate see it whole; everybody else is handed the one ability needed.
struct Platform
{
    std::unique_ptr<Clock> clock;
    std::unique_ptr<Preferences> preferences;
    std::unique_ptr<SingleInstance> singleInstance;
    std::unique_ptr<DesktopAppearance> desktopAppearance;
    std::unique_ptr<PanelWindow> panelWindow;
    std::unique_ptr<ModifierKeys> modifierKeys;
    std::unique_ptr<GlobalShortcuts> globalShortcuts;
    std::unique_ptr<StatusItem> statusItem;
    std::unique_ptr<Sounds> sounds;
    std::unique_ptr<NotificationCenter> notificationCenter;
    std::unique_ptr<FolderWatch> folderWatch;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<InstalledApplications> installedApplications; ///< Before those who look into it.
    std::unique_ptr<FrontmostApplication> frontmostApplication;
};

/// Whether there is a display that windows can be shown on: one that answers, or a window system that the user chose by
/// one of the program's arguments or in the environment. Where there is none, the toolkit aborts the process as soon as
/// an application object for windows is made.
[[nodiscard]] bool hasWindowSystem(const QStringList &arguments);

/// To be called before the application object is made: keeps the toolkit from what would stop it for good. A session
/// bus that takes connections and never answers is left out; what we do over it ourselves works once it answers.
/// Where the session offers several window systems, the one that lets the panel do most is taken.
void prepareForApplication();

/// To be called last, when everything has been saved and destroyed. Ends the process without more ado if a part of the
/// desktop that hangs would hold up its orderly end; returns otherwise.
void endProcessIfHeldUp(int status);

/// What a start needs to reach the running program; part of the platform, made alone where there is no window system.
[[nodiscard]] std::unique_ptr<SingleInstance> makeSingleInstance();

/// The platform of this session. Needs the application object, from which it learns the window system. `makeTrayIcon`
/// makes the status item where there is nothing but a tray of the old kind: that takes widgets, which are unknown here.
[[nodiscard]] Platform makePlatform(std::function<std::unique_ptr<StatusItem>()> makeTrayIcon);

} // namespace wrenfold
