// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/status_notifier_item.h"

#include <memory>

namespace wrenfold {

/// The status item over the session bus, and as a tray icon of the old kind for as long as no host on the bus shows it.
class LinuxStatusItem final : public StatusItem
{
public:
    using MakeTrayIcon = std::function<std::unique_ptr<StatusItem>()>;

    /// Without `makeTrayIcon` there are no tray icons here. `patience` is as in StatusNotifierHost.
    explicit LinuxStatusItem(MakeTrayIcon makeTrayIcon,
                             std::chrono::milliseconds patience = std::chrono::seconds(10));

    [[nodiscard]] Availability availability() const override;
    [[nodiscard]] Availability labelAvailability() const override;
    void show(const Actions &actions) override;
    void setContent(const StatusItemContent &content) override;
    void updateMenu() override;

private:
    void followHost();

    const MakeTrayIcon m_makeTrayIcon;
    Actions m_actions;
    StatusItemContent m_content;
    std::unique_ptr<StatusItem> m_trayIcon; ///< Null while a host shows the item, or before that is known.
    StatusNotifierItem m_notifierItem;      ///< Last: it calls the rest.
};

} // namespace wrenfold
