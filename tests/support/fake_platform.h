// SPDX-License-Identifier: MIT
#pragma once

#include "platform/platform.h"
#include "support/fake_clock.h"
#include "support/fake_desktop_appearance.h"
#include "support/fake_folder_watch.h"
#include "support/fake_frontmost_application.h"
#include "support/fake_global_shortcuts.h"
#include "support/fake_login_item.h"
#include "support/fake_modifier_keys.h"
#include "support/fake_notification_center.h"
#include "support/fake_panel_window.h"
#include "support/fake_preferences.h"
#include "support/fake_single_instance.h"
#include "support/fake_sounds.h"
#include "support/fake_status_item.h"

#include <memory>

namespace wrenfold {

/// A platform of fakes, and the pointers to steer them by once the platform has been moved to its owner.
struct FakePlatform
{
    FakePlatform()
    {
        platform.clock.reset(clock);
        platform.preferences.reset(preferences);
        platform.singleInstance.reset(singleInstance);
        platform.desktopAppearance.reset(desktopAppearance);
        platform.panelWindow.reset(panelWindow);
        platform.modifierKeys.reset(modifierKeys);
        platform.globalShortcuts.reset(globalShortcuts);
        platform.statusItem.reset(statusItem);
        platform.sounds.reset(sounds);
        platform.notificationCenter.reset(notificationCenter);
        platform.folderWatch.reset(folderWatch);
        platform.loginItem.reset(loginItem);
        platform.installedApplications = std::make_unique<InstalledApplications>();
        platform.frontmostApplication.reset(frontmostApplication);
    }

    FakeClock *clock = new FakeClock;
    FakePreferences *preferences = new FakePreferences;
    FakeSingleInstance *singleInstance = new FakeSingleInstance;
    FakeDesktopAppearance *desktopAppearance = new FakeDesktopAppearance;
    FakePanelWindow *panelWindow = new FakePanelWindow;
    FakeModifierKeys *modifierKeys = new FakeModifierKeys;
    FakeGlobalShortcuts *globalShortcuts = new FakeGlobalShortcuts;
    FakeStatusItem *statusItem = new FakeStatusItem;
    FakeSounds *sounds = new FakeSounds;
    FakeNotificationCenter *notificationCenter = new FakeNotificationCenter;
    FakeFolderWatch *folderWatch = new FakeFolderWatch;
    FakeLoginItem *loginItem = new FakeLoginItem;
    FakeFrontmostApplication *frontmostApplication = new FakeFrontmostApplication;
    Platform platform; ///< Owns them.
};

} // namespace wrenfold
