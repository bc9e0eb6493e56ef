// SPDX-License-Identifier: MIT
#include "ai/message_bubble.h"

#include "look/painting.h"

#include <QPainter>
#include <QPainterPath>

namespace wrenfold {

namespace {

constexpr QMargins padding(Metrics::bubblePadding, Metrics::bubbleVerticalPadding, Metrics::bubblePadding,
                           Metrics::bubbleVerticalPadding);

/// A rounded rectangle whose lower corner on the speaker's side is nearly square.
QPainterPath outline(const QRectF &rect, bool isOnRight)
{
    constexpr qreal round = Metrics::bubbleRadius;
    constexpr qreal tail = Metrics::bubbleTailRadius;
    const qreal lowerLeft = isOnRight ? round : tail;
    const qreal lowerRight = isOnRight ? tail : round;
    const auto corner = [](const QPointF &topLeft, qreal radius) {
        return QRectF(topLeft, QSizeF(2 * radius, 2 * radius));
    };
    QPainterPath path(QPointF(rect.left() + round, rect.top()));
    path.arcTo(corner({rect.right() - 2 * round, rect.top()}, round), 90, -90);
    path.arcTo(corner({rect.right() - 2 * lowerRight, rect.bottom() - 2 * lowerRight}, lowerRight), 0, -90);
    path.arcTo(corner({rect.left(), rect.bottom() - 2 * lowerLeft}, lowerLeft), 270, -90);
    path.arcTo(corner(rect.topLeft(), round), 180, -90);
    return path;
}

} // namespace

MessageBubble::MessageBubble(QWidget *parent)
    : SelectableText(parent)
{
    setPadding(padding);
}

void MessageBubble::setMessage(const AIChatMessage &message)
{
    m_message = message;
    const bool isUser = message.role == AIChatMessage::Role::user;
    setColors(isUser ? &Theme::onAccent : &Theme::ink, isUser ? &Theme::onAccent : &Theme::accent,
              isUser ? &Theme::accent : &Theme::onAccent);
    setText(message.text);
    setAccessibleDescription(isUser ? QStringLiteral("自分") : QStringLiteral("AI"));
}

void MessageBubble::paintEvent(QPaintEvent *event)
{
    const Theme &theme = Theme::current();
    const bool isUser = m_message.role == AIChatMessage::Role::user;
    {
        QPainter painter(viewport());
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(isUser ? QPen(Qt::NoPen) : QPen(theme.line));
        painter.setBrush(isUser ? theme.accent : theme.card);
        painter.drawPath(outline(QRectF(viewport()->rect()).adjusted(0.5, 0.5, -0.5, -0.5), isUser));
        if (showsFocus() && isUser)
            Painting::focusRingOnAccent(painter, viewport()->rect(), Metrics::bubbleRadius);
        else if (showsFocus())
            Painting::focusRing(painter, viewport()->rect(), Metrics::bubbleRadius);
    }
    SelectableText::paintEvent(event);
}

} // namespace wrenfold
