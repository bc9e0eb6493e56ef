// SPDX-License-Identifier: MIT
#include "views/application_icon.h"

#include "platform/desktop_entries.h"
#include "platform/regular_file.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>

namespace wrenfold {
namespace {

constexpr qint64 largestFile = 1 << 20;
constexpr int largestSide = 1024; ///< Of what is in a file, in pixels: 4 MiB once it is unpacked.
constexpr int side = 64;          ///< Of what is kept, in pixels: enough for 32 at a scale of 2.

QImage rasterImage(QByteArray &bytes, const char *format)
{
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, format);
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > largestSide || size.height() > largestSide)
        return {};
    const QImage image = reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return size.width() > side || size.height() > side
               ? image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation)
               : image;
}

/// Whether a drawing opens no other file, whatever that is, and does not multiply what it holds beyond measure.
bool isHarmless(const QByteArray &bytes)
{
    constexpr int mostReferences = 16; // Each may draw what holds several others.
    int references = 0;
    QXmlStreamReader xml(bytes);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1String("use"))
            ++references;
        if (xml.name() == QLatin1String("image") || references > mostReferences)
            return false;
    }
    return !xml.hasError();
}

QImage vectorImage(const QByteArray &bytes)
{
    // Text only: a packed drawing could be a thousand times its file.
    QSvgRenderer renderer;
    if (!isHarmless(bytes) || !renderer.load(bytes))
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
    if (name.isEmpty() || name.contains(u'/'))
        return {};
    // Every search ends there, but Qt's does not when the desktop's theme is not installed.
    const QString lastResort = QStringLiteral("hicolor");
    if (QIcon::fallbackThemeName() != lastResort)
        QIcon::setFallbackThemeName(lastResort);
    return QIcon::fromTheme(name);
}

} // namespace

QIcon applicationIcon(const QString &path)
{
    const std::optional<DesktopEntry> entry = readDesktopEntry(path);
    if (!entry)
        return {};
    return entry->icon.startsWith(u'/') ? iconFromFile(entry->icon) : iconFromTheme(entry->icon);
}

} // namespace wrenfold
