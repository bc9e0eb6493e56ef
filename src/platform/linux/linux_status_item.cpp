// SPDX-License-Identifier: MIT
#include "platform/linux/linux_status_item.h"

#include <utility>

namespace wrenfold {

LinuxStatusItem::LinuxStatusItem(MakeTrayIcon makeTrayIcon, std::chrono::milliseconds patience)
    : m_makeTrayIcon(std::move(makeTrayIcon))
    , m_notifierItem([this] { followHost(); }, patience)
{
}

Availability LinuxStatusItem::availability() const
{
    if (m_trayIcon && m_trayIcon->availability().level != Availability::Level::NotAvailable)
        return m_trayIcon->availability();
    return m_notifierItem.availability();
}

Availability LinuxStatusItem::labelAvailability() const
{
    if (m_trayIcon && m_trayIcon->availability().level != Availability::Level::NotAvailable)
        return m_trayIcon->labelAvailability();
    return m_notifierItem.labelAvailability();
}

void LinuxStatusItem::show(const Actions &actions)
{
    m_actions = actions;
    m_notifierItem.show(actions);
}

void LinuxStatusItem::setContent(const StatusItemContent &content)
{
    m_content = content;
    if (m_trayIcon)
        m_trayIcon->setContent(content);
    m_notifierItem.setContent(content);
}

void LinuxStatusItem::updateMenu()
{
    if (m_trayIcon)
        m_trayIcon->updateMenu();
    m_notifierItem.updateMenu();
}

void LinuxStatusItem::followHost()
{
    if (m_notifierItem.isHosted()) {
        m_trayIcon.reset();
    } else if (!m_trayIcon && m_makeTrayIcon) {
        m_trayIcon = m_makeTrayIcon();
        Actions actions = m_actions;
        actions.labelShown = [](bool) {}; // Told by the other already.
        m_trayIcon->show(actions);
        m_trayIcon->setContent(m_content);
    }
}

} // namespace wrenfold
