// SPDX-License-Identifier: MIT
#include "shell/desktop_report.h"

#include "platform/platform.h"

namespace wrenfold {

namespace {

QString levelText(Availability::Level level)
{
    switch (level) {
    case Availability::Level::Works:
        return QStringLiteral("works");
    case Availability::Level::Limited:
        return QStringLiteral("limited");
    case Availability::Level::NotAvailable:
        return QStringLiteral("not available");
    }
    return {};
}

QString line(const DesktopAbility &ability)
{
    QStringList parts = {ability.name + QStringLiteral(": ") + levelText(ability.availability.level)};
    if (ability.availability.level != Availability::Level::Works) {
        parts.first() += u'.';
        parts << ability.availability.reason.simplified() << ability.remedy;
        parts.removeAll(QString());
    }
    return parts.join(u' ') + u'\n';
}

/// Only a native Wayland window can do nothing at all; with the others it is the window manager.
QString remedyForWindow(const Availability &availability)
{
    if (availability.level == Availability::Level::NotAvailable)
        return QStringLiteral(
            "Run it through Xwayland, or give its window such a rule in the desktop's settings.");
    return QStringLiteral(
        "Give its window such a rule in the desktop's settings, or run another window manager.");
}

} // namespace

QString desktopReport(const QList<DesktopAbility> &abilities)
{
    QString text;
    for (const DesktopAbility &ability : abilities)
        text += line(ability);
    return text;
}

QString desktopReport(const Platform &platform)
{
    const StatusItem &item = *platform.statusItem;
    const PanelWindow &panel = *platform.panelWindow;
    return desktopReport({
        {QStringLiteral("status item"), item.availability(),
         QStringLiteral("Start wrenfold again to get its panel.")},
        {QStringLiteral("label"), item.labelAvailability(), {}},
        {QStringLiteral("hot keys"), platform.globalShortcuts->availability(), {}},
        {QStringLiteral("on top"), panel.availability(), remedyForWindow(panel.availability())},
        {QStringLiteral("all workspaces"), panel.workspacesAvailability(),
         remedyForWindow(panel.workspacesAvailability())},
        {QStringLiteral("guard"), platform.frontmostApplication->availability(),
         QStringLiteral("An X11 session with a common window manager has no such limit.")},
        {QStringLiteral("reorder key"), platform.modifierKeys->availability(),
         QStringLiteral("Click the panel first, then hold Ctrl.")},
        {QStringLiteral("notifications"), platform.notificationCenter->availability(),
         QStringLiteral("Start a notification daemon.")},
    });
}

} // namespace wrenfold
