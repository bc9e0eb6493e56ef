// SPDX-License-Identifier: MIT
#include "platform/linux/canberra_sounds.h"
#include "platform/linux/dbus_notification_center.h"
#include "platform/linux/file_preferences.h"
#include "platform/linux/inotify_folder_watch.h"
#include "platform/linux/kwin_frontmost_application.h"
#include "platform/linux/linux_single_instance.h"
#include "platform/linux/linux_status_item.h"
#include "platform/linux/portal_appearance.h"
#include "platform/linux/portal_global_shortcuts.h"
#include "platform/linux/session_bus.h"
#include "platform/linux/session_bus_probe.h"
#include "platform/linux/wlroots_frontmost_application.h"
#include "platform/linux/x11_frontmost_application.h"
#include "platform/linux/x11_global_shortcuts.h"
#include "platform/linux/x11_modifier_keys.h"
#include "platform/linux/x11_panel_window.h"
#include "platform/linux/xdg_autostart_login_item.h"
#include "platform/none/no_frontmost_application.h"
#include "platform/none/no_global_shortcuts.h"
#include "platform/none/no_panel_window.h"
#include "platform/own_modifier_keys.h"
#include "platform/platform.h"
#include "platform/system_clock.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <wayland-client-core.h>
#include <xcb/xcb.h>

namespace wrenfold {
namespace {

constexpr auto windowSystemVariable = "QT_QPA_PLATFORM";
bool isWindowSystemOurs = false; ///< Set by us, and not by the user.

/// In a Wayland session the panel can be kept above other windows only through Xwayland. The user's own choice, by this
/// variable or the toolkit's option, wins.
void preferX11()
{
    isWindowSystemOurs =
        !qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty(windowSystemVariable);
    if (isWindowSystemOurs)
        qputenv(windowSystemVariable, "xcb;wayland");
}

bool answersX11()
{
    xcb_connection_t *const connection = xcb_connect(nullptr, nullptr); // Never null.
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

bool answersWayland()
{
    if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return false;
    wl_display *const display = wl_display_connect(nullptr);
    if (display)
        wl_display_disconnect(display);
    return display;
}

bool runsOnX11()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

/// Xwayland's server hears of no key while a Wayland window has the keyboard, and has no tray.
bool isX11Session()
{
    return runsOnX11() && !qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

bool runsInPlasmaOnWayland()
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    return desktops.contains(QLatin1String("KDE"), Qt::CaseInsensitive) &&
           qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

std::unique_ptr<PanelWindow> makePanelWindow()
{
    if (runsOnX11())
        return std::make_unique<X11PanelWindow>();
    return std::make_unique<NoPanelWindow>();
}

std::unique_ptr<ModifierKeys> makeModifierKeys()
{
    if (isX11Session())
        return std::make_unique<X11ModifierKeys>();
    return std::make_unique<OwnModifierKeys>();
}

std::unique_ptr<GlobalShortcuts> makeGlobalShortcuts()
{
    if (isX11Session())
        return std::make_unique<X11GlobalShortcuts>();
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return std::make_unique<PortalGlobalShortcuts>();
    return std::make_unique<NoGlobalShortcuts>();
}

std::unique_ptr<FrontmostApplication> makeFrontmostApplication(InstalledApplications &installed, Clock &clock)
{
    // The Wayland desktops first: through Xwayland we see but half of them.
    if (runsInPlasmaOnWayland())
        return std::make_unique<KWinFrontmostApplication>(installed);
    if (std::unique_ptr<FrontmostApplication> wlroots =
            WlrootsFrontmostApplication::connectIfOffered(installed))
        return wlroots;
    if (runsOnX11())
        return std::make_unique<X11FrontmostApplication>(installed, clock);
    return std::make_unique<NoFrontmostApplication>();
}

} // namespace

bool hasWindowSystem(const QStringList &arguments)
{
    const bool isChosenByArgument =
        std::any_of(arguments.begin(), arguments.end(), [](const QString &argument) {
            return argument == QLatin1String("-platform") || argument == QLatin1String("--platform") ||
                   argument == QLatin1String("-display") || argument == QLatin1String("--display");
        });
    const bool isChosenByVariable = !isWindowSystemOurs && !qEnvironmentVariableIsEmpty(windowSystemVariable);
    return isChosenByArgument || isChosenByVariable || answersX11() || answersWayland();
}

void prepareForApplication()
{
    constexpr std::chrono::milliseconds patience{500};
    leaveOutHungSessionBus(patience);
    preferX11();
}

void endProcessIfHeldUp(int status)
{
    if (SessionBus::isThreadLeftBehind())
        std::_Exit(status);
}

std::unique_ptr<SingleInstance> makeSingleInstance()
{
    return std::make_unique<LinuxSingleInstance>(FilePreferences::defaultFolder());
}

Platform makePlatform(std::function<std::unique_ptr<StatusItem>()> makeTrayIcon)
{
    // Read when the application object was made; programs that we start choose for themselves.
    if (isWindowSystemOurs)
        qunsetenv(windowSystemVariable);
    Platform platform;
    platform.clock = std::make_unique<SystemClock>();
    platform.preferences =
        std::make_unique<FilePreferences>(FilePreferences::defaultFolder(), *platform.clock);
    platform.singleInstance = makeSingleInstance();
    platform.desktopAppearance = std::make_unique<PortalAppearance>();
    platform.panelWindow = makePanelWindow();
    platform.modifierKeys = makeModifierKeys();
    platform.globalShortcuts = makeGlobalShortcuts();
    platform.statusItem =
        std::make_unique<LinuxStatusItem>(isX11Session() ? std::move(makeTrayIcon) : nullptr);
    platform.sounds = std::make_unique<CanberraSounds>();
    platform.notificationCenter = std::make_unique<DBusNotificationCenter>(*platform.sounds);
    platform.folderWatch = std::make_unique<InotifyFolderWatch>();
    platform.loginItem = std::make_unique<XdgAutostartLoginItem>(QCoreApplication::applicationFilePath());
    platform.installedApplications = std::make_unique<InstalledApplications>();
    platform.frontmostApplication =
        makeFrontmostApplication(*platform.installedApplications, *platform.clock);
    return platform;
}

} // namespace wrenfold
