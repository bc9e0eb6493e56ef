// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/dbus_menu.h"
#include "platform/linux/status_icon_files.h"
#include "platform/linux/status_notifier_host.h"
#include "platform/linux/status_notifier_values.h"
#include "platform/status_item.h"

namespace wrenfold {

/// The status item as an object on the session bus (org.kde.StatusNotifierItem) with its menu beside it. A host that
/// restarts shows it again; a bus that comes back is found with the next content.
class StatusNotifierItem final : public DBusObject, public StatusItem
{
    Q_OBJECT

public:
    /// `hostChanged` is called, from the event loop, when it is known whether a host shows the item and whenever that
    /// may have changed. `patience` is as in StatusNotifierHost.
    explicit StatusNotifierItem(std::function<void()> hostChanged = {},
                                std::chrono::milliseconds patience = std::chrono::seconds(10));

    [[nodiscard]] Availability availability() const override;
    [[nodiscard]] Availability labelAvailability() const override;
    void show(const Actions &actions) override;
    void setContent(const StatusItemContent &content) override;
    void updateMenu() override;

    /// A host shows the item.
    [[nodiscard]] bool isHosted() const { return m_host.isThere(); }

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &call) override;
    [[nodiscard]] QVariantMap properties() override;
    void tell(const QString &signal, const QVariantList &arguments = {});
    void followHost();

    const std::function<void()> m_hostChanged;
    Actions m_actions;
    StatusItemContent m_content;
    QList<StatusPixmap> m_pixmaps; ///< Of the content's icon.
    StatusIconFiles m_files;
    DBusMenu m_menu;
    bool m_isLabelShown = false; ///< As it was told last.
    StatusNotifierHost m_host;   ///< After what it has on the bus.
};

} // namespace wrenfold
