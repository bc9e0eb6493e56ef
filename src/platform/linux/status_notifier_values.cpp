// SPDX-License-Identifier: MIT
#include "platform/linux/status_notifier_values.h"

#include "platform/linux/host_texts.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace wrenfold {

StatusPixmap::StatusPixmap(const QImage &image)
    : width(image.width())
    , height(image.height())
    , bytes(qsizetype(width) * height * 4, Qt::Uninitialized)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    const qsizetype lineBytes = qsizetype(width) * 4;
    for (int y = 0; y < height; ++y)
        qToBigEndian<quint32>(argb.constScanLine(y), width, bytes.data() + y * lineBytes);
}

QDBusArgument &operator<<(QDBusArgument &argument, const StatusPixmap &pixmap)
{
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, StatusPixmap &pixmap)
{
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const StatusToolTip &toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.pixmaps << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, StatusToolTip &toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.pixmaps >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

void registerStatusNotifierValues()
{
    qDBusRegisterMetaType<StatusPixmap>();
    qDBusRegisterMetaType<QList<StatusPixmap>>();
    qDBusRegisterMetaType<StatusToolTip>();
}

QList<StatusPixmap> statusPixmaps(const StatusIcon &icon)
{
    QList<StatusPixmap> pixmaps;
    for (const int side : {16, 22, 24, 32, 48})
        pixmaps.append(StatusPixmap(icon.paint(side)));
    return pixmaps;
}

StatusToolTip statusToolTip(const QString &text)
{
    return {{}, {}, hostLine(text.section(u'\n', 0, 0)), hostMarkup(text.section(u'\n', 1))};
}

} // namespace wrenfold
