// SPDX-License-Identifier: MIT
#include "look/symbols.h"

#include <QCache>
#include <QCoreApplication>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

namespace wrenfold {

namespace {

struct Key
{
    QString name;
    QRgb color;
    int pixels; ///< Width in device pixels.
    qreal devicePixelRatio;

    friend bool operator==(const Key &, const Key &) = default;
};

size_t qHash(const Key &key, size_t seed)
{
    return qHashMulti(seed, key.name, key.color, key.pixels, key.devicePixelRatio);
}

using Cache = QCache<Key, QPixmap>;

Cache &cache()
{
    // Some fifty symbols in a few colours; more come only from a change of theme or of screen.
    static Cache pixmaps(400);
    return pixmaps;
}

QPixmap drawn(const QString &name, const QColor &color, int pixels)
{
    QSvgRenderer renderer(QStringLiteral(":/symbols/%1.svg").arg(name));
    Q_ASSERT_X(renderer.isValid(), "Symbols::pixmap", qPrintable(name));
    if (!renderer.isValid())
        return {};
    QPixmap pixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    return pixmap;
}

} // namespace

QPixmap Symbols::pixmap(const QString &name, const QColor &color, int size, qreal devicePixelRatio)
{
    const int pixels = static_cast<int>(std::ceil(size * devicePixelRatio));
    const Key key{name, color.rgba(), pixels, devicePixelRatio};
    if (const QPixmap *kept = cache().object(key))
        return *kept;
    // A pixmap must not outlive the application.
    [[maybe_unused]] static const bool isCleared = (qAddPostRoutine([] { cache().clear(); }), true);
    QPixmap pixmap = drawn(name, color, pixels);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    cache().insert(key, new QPixmap(pixmap));
    return pixmap;
}

} // namespace wrenfold
