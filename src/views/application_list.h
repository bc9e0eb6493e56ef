// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop_entries.h"

#include <QAbstractListModel>
#include <QCache>
#include <QIcon>
#include <QStyledItemDelegate>
#include <QTimer>

namespace wrenfold {

/// What a search compares: the same for letters of another case or width.
[[nodiscard]] QString searchKey(const QString &text);

/// The applications that menus show, by name. Icons are read one at a time, from the event loop, once they are asked
/// for; until then a row has none.
class ApplicationList : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role { SearchKeyRole = Qt::UserRole, PathRole };

    explicit ApplicationList(QObject *parent = nullptr);

    void setEntries(const QList<DesktopEntry> &entries);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

private:
    struct Row
    {
        DesktopEntry entry;
        QString label; ///< The name; where it is not the only one, with the id.
    };

    [[nodiscard]] QVariant icon(int row) const;
    void readIcon();

    QList<Row> m_rows;
    // A view asks for icons while it paints, by a function that changes nothing.
    mutable QCache<int, QIcon> m_icons;
    mutable QList<int> m_wanted; ///< The rows whose icons are to be read, the last one first.
    mutable QTimer m_reading;
};

/// Draws its rows in the style's way, each as wide as the view, with room for an icon also where there is none.
class ApplicationDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace wrenfold
