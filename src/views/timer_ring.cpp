// SPDX-License-Identifier: MIT
#include "views/timer_ring.h"

#include "look/painting.h"

#include <QPainter>

namespace wrenfold {

namespace {

/// Of the ring's size, which leaves a gap to the focus ring around it.
constexpr qreal besideFocusRing = 0.8;

} // namespace

TimerRing::TimerRing(QWidget *parent)
    : PaintedButton(parent)
    , m_symbol(QStringLiteral("play.fill"))
{
}

void TimerRing::setSymbol(const QString &symbol)
{
    if (symbol == m_symbol)
        return;
    m_symbol = symbol;
    update();
}

void TimerRing::setFraction(qreal fraction)
{
    if (fraction == m_fraction)
        return;
    m_fraction = fraction;
    update();
}

void TimerRing::setColor(Theme::Color color)
{
    if (color == m_color)
        return;
    m_color = color;
    update();
}

QSize TimerRing::sizeHint() const
{
    return {Metrics::ringSize, Metrics::ringSize};
}

void TimerRing::paintEvent(QPaintEvent *)
{
    const Theme &theme = Theme::current();
    QPainter painter(this);
    if (isHovered() || isDown())
        Painting::roundedCard(painter, rect(), width() / 2.0, {theme.ringHover, {}, {}});
    Painting::symbol(painter, rect(), m_symbol, theme.*m_color);
    if (showsFocus()) {
        Painting::focusRing(painter, rect(), width() / 2.0);
        // Both rings may have one colour: side by side they would look like a thicker one.
        const QPointF middle = QRectF(rect()).center();
        painter.translate(middle);
        painter.scale(besideFocusRing, besideFocusRing);
        painter.translate(-middle);
    }
    Painting::ring(painter, rect(), m_fraction, theme.*m_color);
}

} // namespace wrenfold
