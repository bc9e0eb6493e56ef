// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/dbus_menu_values.h"
#include "platform/linux/dbus_object.h"
#include "platform/status_item.h"

#include <functional>
#include <optional>

namespace wrenfold {

/// The status item's menu as the desktop's hosts read it (com.canonical.dbusmenu). It has one level.
///
/// A row's number on the bus is its command, so that a press in a menu that is out of date means what was read there.
class DBusMenu final : public DBusObject
{
    Q_OBJECT

public:
    DBusMenu();

    /// `menuRows` is asked for the rows of now; `chooseRow` is called from the event loop when a row that is there, and
    /// enabled, is pressed.
    void setActions(std::function<QList<StatusMenuRow>()> menuRows,
                    std::function<void(int command)> chooseRow);

    /// Asks for the rows; the answer is what to tell the hosts, none if they know all.
    [[nodiscard]] std::optional<QDBusMessage> update();

    static QString path() { return QStringLiteral("/StatusNotifierItem/Menu"); }

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &call) override;
    [[nodiscard]] QVariantMap properties() override;
    [[nodiscard]] QDBusMessage layout(const QDBusMessage &call);
    [[nodiscard]] QDBusMessage groupProperties(const QDBusMessage &call) const;
    [[nodiscard]] QDBusMessage property(const QDBusMessage &call) const;
    [[nodiscard]] QDBusMessage aboutToShowGroup(const QDBusMessage &call);
    [[nodiscard]] QDBusMessage eventGroup(const QDBusMessage &call);

    /// Asks for the rows; whether they are others than the hosts know.
    bool refresh();
    /// The root and all rows.
    [[nodiscard]] QList<DBusMenuItem> items() const;
    [[nodiscard]] std::optional<DBusMenuItem> item(int id) const;
    void handleEvent(int id, const QString &name);

    std::function<QList<StatusMenuRow>()> m_menuRows;
    std::function<void(int command)> m_chooseRow;
    QList<StatusMenuRow> m_rows; ///< As the hosts know them.
    uint m_revision = 1;
};

} // namespace wrenfold
