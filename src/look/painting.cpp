// SPDX-License-Identifier: MIT
#include "look/painting.h"

#include "look/plain_text.h"
#include "look/symbols.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace wrenfold {

namespace {

/// Saves the painter's state for the life of a scope.
class SavedPainter
{
public:
    explicit SavedPainter(QPainter &painter)
        : m_painter(painter)
    {
        m_painter.save();
        m_painter.setRenderHint(QPainter::Antialiasing);
    }
    ~SavedPainter() { m_painter.restore(); }
    Q_DISABLE_COPY_MOVE(SavedPainter)

private:
    QPainter &m_painter;
};

/// The rectangle with its edges on whole device pixels, so that they are sharp where a screen's scale is no whole number.
QRectF onPixels(const QPainter &painter, const QRectF &rect)
{
    const QTransform toDevice = painter.deviceTransform();
    const QRectF pixels = toDevice.mapRect(rect);
    const QPointF topLeft(std::round(pixels.left()), std::round(pixels.top()));
    const QPointF bottomRight(std::round(pixels.right()), std::round(pixels.bottom()));
    return toDevice.inverted().mapRect(QRectF(topLeft, bottomRight));
}

/// The width of a hairline: about one device-independent pixel, in whole device pixels.
qreal hairline(const QPainter &painter)
{
    const qreal scale = painter.device()->devicePixelRatioF();
    return std::floor(scale) / scale;
}

/// As wide as a focus ring.
void outlineRing(QPainter &painter, const QRectF &rect, qreal radius, const QColor &color)
{
    const SavedPainter saved(painter);
    const qreal width = Theme::current().focusRingWidth;
    const qreal inset = width / 2;
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
}

} // namespace

void Painting::roundedCard(QPainter &painter, const QRectF &wholeRect, qreal radius, const CardColors &colors)
{
    const SavedPainter saved(painter);
    const QRectF rect = onPixels(painter, wholeRect);
    QPainterPath outline;
    outline.addRoundedRect(rect, radius, radius);
    painter.fillPath(outline, colors.fill);
    if (colors.line.isValid()) {
        const qreal width = hairline(painter);
        const qreal inset = width / 2;
        painter.setPen(QPen(colors.line, width));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
    }
    if (colors.accentEdge.isValid()) {
        QPainterPath inside;
        inside.addRoundedRect(rect.adjusted(Metrics::cardAccentWidth, 0, radius, 0), radius, radius);
        painter.fillPath(outline.subtracted(inside), colors.accentEdge);
    }
}

void Painting::dashedOutline(QPainter &painter, const QRectF &rect, qreal radius, const QColor &color)
{
    constexpr qreal width = 1.5;
    const SavedPainter saved(painter);
    painter.setPen(QPen(color, width, Qt::DashLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(width / 2, width / 2, -width / 2, -width / 2), radius, radius);
}

void Painting::focusRing(QPainter &painter, const QRectF &rect, qreal radius)
{
    outlineRing(painter, rect, radius, Theme::current().accent);
}

void Painting::focusRingOnAccent(QPainter &painter, const QRectF &rect, qreal radius)
{
    constexpr qreal distance = 2;
    outlineRing(painter, rect.adjusted(distance, distance, -distance, -distance), radius - distance,
                Theme::current().onAccent);
}

void Painting::symbol(QPainter &painter, const QRectF &rect, const QString &name, const QColor &color,
                      int size)
{
    const QPixmap pixmap = Symbols::pixmap(name, color, size, painter.device()->devicePixelRatioF());
    const QPointF corner = rect.center() - QPointF(size, size) / 2;
    painter.drawPixmap(corner.toPoint(), pixmap);
}

void Painting::check(QPainter &painter, const QRectF &rect, Check check, int size)
{
    const SavedPainter saved(painter);
    const Theme &theme = Theme::current();
    painter.setBrush(Qt::NoBrush);
    painter.translate(rect.center());
    if (check != Check::Done) {
        const qreal radius = (size - Metrics::checkLineWidth) / 2;
        painter.setPen(QPen(check == Check::Now ? theme.accent : theme.tertiaryInk, Metrics::checkLineWidth));
        painter.drawEllipse(QPointF(), radius, radius);
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.green);
    painter.drawEllipse(QPointF(), size / 2.0, size / 2.0);
    painter.setPen(QPen(theme.onAccent, Metrics::checkLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const std::array tick = {QPointF(-0.2, 0.02) * size, QPointF(-0.06, 0.16) * size,
                             QPointF(0.2, -0.14) * size};
    painter.drawPolyline(tick.data(), static_cast<int>(tick.size()));
}

void Painting::ring(QPainter &painter, const QRectF &rect, qreal fraction, const QColor &color)
{
    constexpr int sixteenths = 16; // Qt's measure of angles.
    const SavedPainter saved(painter);
    const QRectF circle(rect.center() - QPointF(Metrics::ringRadius, Metrics::ringRadius),
                        QSizeF(2 * Metrics::ringRadius, 2 * Metrics::ringRadius));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Theme::current().ringTrack, Metrics::ringWidth));
    painter.drawEllipse(circle);
    if (fraction <= 0)
        return;
    painter.setPen(QPen(color, Metrics::ringWidth, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, 90 * sixteenths, -qRound(fraction * 360 * sixteenths));
}

void Painting::text(QPainter &painter, const QRectF &rect, const QString &text, const QFont &font,
                    const QColor &color, Qt::Alignment alignment, Qt::LayoutDirection direction)
{
    const QFontMetricsF metrics(font);
    const QString line = isolated(oneLine(text), direction);
    qreal x = rect.left();
    if (alignment & Qt::AlignHCenter)
        x += (rect.width() - metrics.horizontalAdvance(line)) / 2;
    else if (alignment & Qt::AlignRight)
        x += rect.width() - metrics.horizontalAdvance(line);
    // The font's own middle, so that a taller emoji does not lift the line.
    const qreal baseline = std::round(rect.center().y() + (metrics.ascent() - metrics.descent()) / 2);
    painter.save();
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(QPointF(x, baseline), line);
    painter.restore();
}

} // namespace wrenfold
