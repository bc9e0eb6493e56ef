// SPDX-License-Identifier: MIT
#include "views/application_icon.h"

#include "platform/desktop_entries.h"
#include "platform/regular_file.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>

namespace wrenfold {
namespace {

constexpr qint64 largestFile = 1 << 20;
constexpr int largestSide = 1024; ///< Of what is in a file, in pixels: 4 MiB once it is unpacked.
constexpr int side = 64;          ///< Of what is kept, in pixels: enough for 32 at a scale of 2.

QSize fitted(const QSize &size)
{
    return size.width() > side || size.height() > side ? size.scaled(side, side, Qt::KeepAspectRatio) : size;
}

QImage rasterImage(QByteArray &bytes, const char *format)
{
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, format);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > largestSide || size.height() > largestSide)
        return {};
    reader.setScaledSize(fitted(size).expandedTo({1, 1}));
    return reader.read();
}

/// Whether a drawing can be read on its own. One that shows other files would have them opened, whatever they are.
bool isSelfContained(const QByteArray &bytes)
{
    QXmlStreamReader xml(bytes);
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String("image"))
            return false;
    }
    return !xml.hasError();
}

QImage vectorImage(const QByteArray &bytes)
{
    // Text only: a packed drawing could be a thousand times its file.
    QSvgRenderer renderer;
    if (!isSelfContained(bytes) || !renderer.load(bytes))
        return {};
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

QIcon iconFromFile(const QString &path)
{
    std::optional<RegularFile> file = readRegularFile(path, largestFile, Links::Follow);
    if (!file)
        return {};
    QByteArray &bytes = file->bytes;
    const QImage image = bytes.startsWith("\x89PNG")     ? rasterImage(bytes, "png")
                         : bytes.startsWith("/* XPM */") ? rasterImage(bytes, "xpm")
                                                         : vectorImage(bytes);
    return image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image));
}

QIcon iconFromTheme(QString name)
{
    // Many entries name the file, against the rules.
    for (const QLatin1String suffix : {QLatin1String(".png"), QLatin1String(".svg"), QLatin1String(".xpm")}) {
        if (name.endsWith(suffix))
            name.chop(suffix.size());
    }
    // A name with folders in it would lead out of the theme.
    return name.isEmpty() || name.contains(u'/') ? QIcon() : QIcon::fromTheme(name);
}

} // namespace

QIcon applicationIcon(const QString &path)
{
    const std::optional<DesktopEntry> entry = readDesktopEntry(path);
    if (!entry)
        return {};
    return QFileInfo(entry->icon).isAbsolute() ? iconFromFile(entry->icon) : iconFromTheme(entry->icon);
}

} // namespace wrenfold
