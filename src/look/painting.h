// SPDX-License-Identifier: MIT
#pragma once

#include "look/theme.h"

#include <QRectF>
#include <QString>

class QPainter;

namespace wrenfold {

/// What several controls and windows paint alike. Every function leaves the painter as it found it.
namespace Painting {

struct CardColors
{
    QColor fill;
    QColor line;       ///< A one-pixel outline inside the rectangle; none when invalid.
    QColor accentEdge; ///< A strip along the left edge; none when invalid.
};

void roundedCard(QPainter &painter, const QRectF &rect, qreal radius, const CardColors &colors);

/// A dashed outline just inside the rectangle: something may be dropped here.
void dashedOutline(QPainter &painter, const QRectF &rect, qreal radius, const QColor &color);

/// The ring of the keyboard focus, just inside the rectangle.
void focusRing(QPainter &painter, const QRectF &rect, qreal radius);
/// The same on a surface of the accent, away from its edge.
void focusRingOnAccent(QPainter &painter, const QRectF &rect, qreal radius);

/// The symbol in the middle of the rectangle, on whole pixels.
void symbol(QPainter &painter, const QRectF &rect, const QString &name, const QColor &color,
            int size = Metrics::symbolSize);

enum class Check {
    Open,
    Now, ///< Open, and the task in hand.
    Done,
};

/// The circle in front of a task, `size` wide, in the middle of the rectangle.
void check(QPainter &painter, const QRectF &rect, Check check, int size = Metrics::checkSize);

/// The timer's ring in the middle of the rectangle: all around a track, on it from the top clockwise a stretch
/// as long as `fraction` says, 0 to 1.
void ring(QPainter &painter, const QRectF &rect, qreal fraction, const QColor &color);

/// One line of plain text, vertically in the middle. The text is not elided; its bidi controls stay inside. Its
/// direction is that of its first letter, unless one is given.
void text(QPainter &painter, const QRectF &rect, const QString &text, const QFont &font, const QColor &color,
          Qt::Alignment alignment = Qt::AlignLeft, Qt::LayoutDirection direction = Qt::LayoutDirectionAuto);

} // namespace Painting

} // namespace wrenfold
