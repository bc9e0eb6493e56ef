// SPDX-License-Identifier: MIT
#pragma once

#include "platform/status_item.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QString>

namespace wrenfold {

// What goes over the bus in the interface org.kde.StatusNotifierItem.

/// A picture in one size.
struct StatusPixmap
{
    int width = 0;
    int height = 0;
    QByteArray bytes; ///< Four a pixel: alpha, red, green, blue.

    explicit StatusPixmap(const QImage &image = {});
};

struct StatusToolTip
{
    QString iconName;
    QList<StatusPixmap> pixmaps;
    QString title;
    QString text; ///< Markup.
};

QDBusArgument &operator<<(QDBusArgument &argument, const StatusPixmap &pixmap);
const QDBusArgument &operator>>(const QDBusArgument &argument, StatusPixmap &pixmap);
QDBusArgument &operator<<(QDBusArgument &argument, const StatusToolTip &toolTip);
const QDBusArgument &operator>>(const QDBusArgument &argument, StatusToolTip &toolTip);

/// To be called before any of them is sent.
void registerStatusNotifierValues();

/// The icon in the sizes that hosts ask for.
[[nodiscard]] QList<StatusPixmap> statusPixmaps(const StatusIcon &icon);

/// Of a plain text: its first line and the others.
[[nodiscard]] StatusToolTip statusToolTip(const QString &text);

} // namespace wrenfold

Q_DECLARE_METATYPE(wrenfold::StatusPixmap)
Q_DECLARE_METATYPE(wrenfold::StatusToolTip)
