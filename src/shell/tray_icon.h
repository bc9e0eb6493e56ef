// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status_item.h"

#include <QSystemTrayIcon>

namespace wrenfold {

/// The status item in a tray of the old kind, which X11 panels offer. It shows no label. A tray that comes later, or
/// again, shows it too.
class TrayIcon final : public StatusItem
{
public:
    [[nodiscard]] Availability availability() const override;
    [[nodiscard]] Availability labelAvailability() const override;
    void show(const Actions &actions) override;
    void setContent(const StatusItemContent &content) override;
    void updateMenu() override {} ///< The menu is not ours but the one that openMenu() brings.

private:
    QString m_iconName;
    QSystemTrayIcon m_icon;
};

} // namespace wrenfold
