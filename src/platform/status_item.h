// SPDX-License-Identifier: MIT
#pragma once

#include "platform/availability.h"

#include <QImage>
#include <QList>
#include <QString>

#include <functional>

namespace wrenfold {

/// A picture that a host shows in the status area.
struct StatusIcon
{
    QString name; ///< The same name is always the same picture. Letters, digits and hyphens of ASCII.
    /// Draws it, this many pixels wide and high. Called when one of another name is to be seen.
    std::function<QImage(int side)> paint;

    friend bool operator==(const StatusIcon &icon, const StatusIcon &other)
    {
        return icon.name == other.name;
    }
};

/// What the status item shows; all texts are plain.
struct StatusItemContent
{
    StatusIcon icon;
    QString label;   ///< Beside the icon on a host that shows labels; may be empty.
    QString toolTip; ///< Its first line is the title.

    friend bool operator==(const StatusItemContent &, const StatusItemContent &) = default;
};

/// One row of the status item's menu.
struct StatusMenuRow
{
    QString title;         ///< Plain text; empty: a line between groups.
    int command = 0;       ///< What choosing the row reports; 0 for rows that only inform.
    bool isEnabled = true; ///< Rows that only inform are never enabled.

    [[nodiscard]] bool isSeparator() const { return title.isEmpty(); }

    friend bool operator==(const StatusMenuRow &, const StatusMenuRow &) = default;
};

/// The program's item in the desktop's status area. Everything is called on the main thread, and nothing here waits for
/// the desktop. Where there is no status area yet, the item comes when one does.
class StatusItem
{
public:
    virtual ~StatusItem() = default;

    struct Actions
    {
        std::function<void()> activate; ///< A plain click.
        /// Asks for the menu where the host leaves that to us: under the pointer.
        std::function<void()> openMenu;
        std::function<QList<StatusMenuRow>()> menuRows; ///< The rows of now; asked at each opening.
        std::function<void(int command)> chooseRow;
        /// Called at once and on each change: whether the host shows labels beside icons.
        std::function<void(bool isLabelShown)> labelShown;
    };

    [[nodiscard]] virtual Availability availability() const = 0;
    [[nodiscard]] virtual Availability labelAvailability() const = 0;

    /// Puts the item into the status area, to stay there until this object goes. To be called once, and setContent()
    /// before anything can be seen.
    virtual void show(const Actions &actions) = 0;

    virtual void setContent(const StatusItemContent &content) = 0; ///< What is shown already costs nothing.
    virtual void updateMenu() = 0; ///< The rows may have changed; a menu that is open shows the new ones.
};

} // namespace wrenfold
