// SPDX-License-Identifier: MIT
#include "platform/linux/canberra_sounds.h"
#include "platform/linux/dbus_notification_center.h"
#include "platform/linux/file_preferences.h"
#include "platform/linux/linux_single_instance.h"
#include "platform/linux/session_bus.h"
#include "platform/linux/session_bus_probe.h"
#include "platform/linux/x11_panel_window.h"
#include "platform/none/no_panel_window.h"
#include "platform/platform.h"
#include "platform/system_clock.h"

#include <QGuiApplication>

#include <cstdlib>

namespace wrenfold {
namespace {

std::unique_ptr<PanelWindow> makePanelWindow()
{
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        return std::make_unique<X11PanelWindow>();
    return std::make_unique<NoPanelWindow>();
}

} // namespace

void prepareForApplication()
{
    constexpr std::chrono::milliseconds patience{500};
    leaveOutHungSessionBus(patience);
}

void endProcessIfHeldUp(int status)
{
    if (SessionBus::isThreadLeftBehind())
        std::_Exit(status);
}

Platform makePlatform()
{
    const QString folder = FilePreferences::defaultFolder();
    Platform platform;
    platform.clock = std::make_unique<SystemClock>();
    platform.preferences = std::make_unique<FilePreferences>(folder, *platform.clock);
    platform.singleInstance = std::make_unique<LinuxSingleInstance>(folder);
    platform.panelWindow = makePanelWindow();
    platform.sounds = std::make_unique<CanberraSounds>();
    platform.notificationCenter = std::make_unique<DBusNotificationCenter>(*platform.sounds);
    return platform;
}

} // namespace wrenfold
