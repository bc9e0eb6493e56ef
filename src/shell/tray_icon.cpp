// SPDX-License-Identifier: MIT
#include "shell/tray_icon.h"

#include "look/plain_text.h"

namespace wrenfold {

Availability TrayIcon::availability() const
{
    if (QSystemTrayIcon::isSystemTrayAvailable())
        return {};
    return {Availability::Level::NotAvailable,
            QStringLiteral("This desktop has no tray: add a status tray to its panel.")};
}

Availability TrayIcon::labelAvailability() const
{
    return {Availability::Level::Limited,
            QStringLiteral("A tray shows no text beside icons, so the icon itself shows the state.")};
}

void TrayIcon::show(const Actions &actions)
{
    QObject::connect(
        &m_icon, &QSystemTrayIcon::activated, &m_icon, [actions](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Context)
                actions.openMenu();
            else if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::MiddleClick)
                actions.activate();
        });
    actions.labelShown(false);
}

void TrayIcon::setContent(const StatusItemContent &content)
{
    m_icon.setToolTip(plainToolTip(content.toolTip));
    if (content.icon.name == m_iconName)
        return;
    m_iconName = content.icon.name;
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 48})
        icon.addPixmap(QPixmap::fromImage(content.icon.paint(side)));
    m_icon.setIcon(icon);
    m_icon.show(); // Not before there is something to see.
}

} // namespace wrenfold
